#include "oxdm/notify/operation.h"

#include <cassert>

#include "oxdm/notify/change.h"
#include "oxdm/notify/change_mgr.h"

bool mvcOperation::Post() { return mvcOperationEvent::Post(this); }

mvcChangeOperation::mvcChangeOperation(mvcChange* change) : mvcOperation(false, false), change(change) {
    assert(change != nullptr);
}

mvcChangeOperation::~mvcChangeOperation() { delete change; }

void mvcChangeOperation::Do() { mvcChangeMgr::Instance()->DoNotify(change); }

bool mvcOperationEvent::Post(mvcOperation*) { return false; }
