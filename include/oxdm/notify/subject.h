#pragma once
// mvcSubject: something that can be observed. Every data source is one.
//
// A subject keeps no list of observers: every registration lies in the one
// mvcChangeMgr. The subject only decides whether a change goes there at all
// (its suppression flag). Its destructor removes every registration on it, so
// observers may outlive their subjects.

#include "oxdm/base/functor.h"

class mvcChange;

class mvcSubject {
public:
    mvcSubject() = default;
    // Copying a subject copies the flag and no registrations.
    mvcSubject(const mvcSubject& other) : suppressed(other.suppressed) {}
    mvcSubject& operator=(const mvcSubject& other) {
        suppressed = other.suppressed;
        return *this;
    }
    virtual ~mvcSubject();

    // Register / Unregister on the change manager with this subject.
    virtual void AddObserver(short event, unsigned long& id, const CBFunctor1<mvcChange*>& cb);
    virtual void RemoveObserver(short event, unsigned long id);

    // Takes ownership of change in every case. While suppressed the change is
    // deleted unseen; otherwise it goes to mvcChangeMgr::Notify.
    virtual void Notify(mvcChange* change, bool deferred);

    // The base class only stores and answers the flag; subjects that must
    // refresh their observers after a suppressed stretch override these.
    virtual void SupressNotification(bool suppress);
    virtual bool IsNotificationSupressed() const;

private:
    // suppressed: true while changes are dropped; false after construction.
    bool suppressed = false;
};
