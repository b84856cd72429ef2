#pragma once
// mvcChangeMgr: the one registry of observers of the process, and the
// delivery loop.
//
// Delivery is synchronous and depth-first, in the order of first
// registration; there is no queue. The loop runs on a signed 16-bit index:
// records at position 32,768 and beyond are never reached, neither by a
// delivery nor by Register's search for an existing record. That limit is
// part of the registry's behaviour and stays.

#include <memory>
#include <vector>

#include "oxdm/base/functor.h"
#include "oxdm/base/smart_ptr.h"

class mvcChange;
class mvcSubject;

// One registration: an observer (id) wants cb called for every change with
// this subject and event. Allocated with new, reached through a handle.
struct mvcObserverRecord {
    mvcSubject* subject;  // not owned
    short event;
    unsigned long id;
    CBFunctor1<mvcChange*> cb;
};

// The registry's element: a counted handle, so that the vector shifts handles
// and never copies records, and a record stays alive while its functor runs
// even when it is unregistered from inside that call.
using mvcObserverHandle = oxBase::SmartPtr<mvcObserverRecord>;

class mvcChangeMgr {
public:
    // Makes the singleton at first use.
    static mvcChangeMgr* Instance();
    // Deletes the singleton, if any, with every registration. A later
    // Instance() makes a fresh one whose ids start again at 1.
    static void KillInstance();

    mvcChangeMgr(const mvcChangeMgr&) = delete;
    mvcChangeMgr& operator=(const mvcChangeMgr&) = delete;

    // Gives id a fresh value when it is 0 or not below the next id to hand
    // out, then replaces the functor of the record (subject, event, id) if one
    // is found in the first 32,768 places, or appends a new record.
    void Register(mvcSubject* subject, short event, unsigned long& id, const CBFunctor1<mvcChange*>& cb);
    // Erase every matching record, keeping the order of the others.
    void Unregister(mvcSubject* subject, short event, unsigned long id);
    void UnregisterAll(unsigned long& id);  // sets id to 0
    void UnregisterAll(mvcSubject* subject);

    // Takes ownership of change. Not deferred: delivers it, then deletes it.
    // Deferred: posts it, which does nothing: the change is neither
    // delivered nor freed.
    // REQUIRES: change != nullptr
    void Notify(mvcChange* change, bool deferred);

protected:
    mvcChangeMgr();
    virtual ~mvcChangeMgr();

    // The delivery loop: calls every record whose subject and event match the
    // change, skipping the initiator's records when it is not to be told.
    // REQUIRES: change != nullptr
    void DoNotify(mvcChange* change);

private:
    friend class mvcChangeOperation;  // its Do() is the delivery
    friend class mvcSubject;          // its destructor asks whether a registry exists

    // Invariants: nextId >= 1 and every record's id is below nextId;
    // observers is never null and holds no empty handle. The registry owns
    // the records through their handles. Re-entrant calls (Register,
    // Unregister, Notify) from inside a delivery are allowed.
    unsigned long nextId = 1;
    std::unique_ptr<std::vector<mvcObserverHandle>> observers;

    static mvcChangeMgr* _Instance;
};
