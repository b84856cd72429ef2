#include "oxdm/notify/change.h"

#include <cassert>

#include "oxdm/notify/subject.h"

void mvcChange::Notify(bool deferred) {
    assert(subject != nullptr);
    subject->Notify(this, deferred);
}
