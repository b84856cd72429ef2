#include "oxdm/notify/subject.h"

#include "oxdm/notify/change.h"
#include "oxdm/notify/change_mgr.h"

mvcSubject::~mvcSubject() {
    // With no registry there is nothing registered on this subject; asking
    // Instance() here would make a registry again after the library ended it.
    if (mvcChangeMgr::_Instance) mvcChangeMgr::_Instance->UnregisterAll(this);
}

void mvcSubject::AddObserver(short event, unsigned long& id, const CBFunctor1<mvcChange*>& cb) {
    mvcChangeMgr::Instance()->Register(this, event, id, cb);
}

void mvcSubject::RemoveObserver(short event, unsigned long id) {
    mvcChangeMgr::Instance()->Unregister(this, event, id);
}

void mvcSubject::Notify(mvcChange* change, bool deferred) {
    if (suppressed) {
        delete change;  // gone for good: nothing remembers that it happened
        return;
    }
    mvcChangeMgr::Instance()->Notify(change, deferred);
}

void mvcSubject::SupressNotification(bool suppress) { suppressed = suppress; }

bool mvcSubject::IsNotificationSupressed() const { return suppressed; }
