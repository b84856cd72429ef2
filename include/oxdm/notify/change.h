#pragma once
// mvcChange and its four kinds: the small heap objects a subject sends to its
// observers to tell what happened to it.
//
// A change is made with new by the subject and handed to the subject's
// Notify (or put in an mvcChangeList). From then on it belongs to the
// notification path: it lives exactly as long as its delivery, and an
// observer copies what it wants to keep. Changes are not copyable.

class mvcSubject;
class oxdmCursorNode;

class mvcChange {
public:
    // initiator: the observer id of whoever caused the change, 0 for nobody in
    // particular. notifyInitiator false skips the initiator's own
    // registrations for this change.
    mvcChange(mvcSubject* subject, short event, unsigned long initiator, bool notifyInitiator)
        : subject(subject), event(event), initiator(initiator), notifyInitiator(notifyInitiator) {}
    virtual ~mvcChange() = default;

    mvcChange(const mvcChange&) = delete;
    mvcChange& operator=(const mvcChange&) = delete;

    // Hands this change to its subject's (virtual) Notify. Afterwards the
    // change must be taken for destroyed.
    // REQUIRES: Subject() != nullptr
    virtual void Notify(bool deferred);

    mvcSubject* Subject() const { return subject; }
    short Event() const { return event; }
    unsigned long Initiator() const { return initiator; }
    bool NotifyInitiator() const { return notifyInitiator; }

private:
    // Fields never change after construction. subject is not owned.
    mvcSubject* subject;
    short event;
    unsigned long initiator;
    bool notifyInitiator;
};

// A change that concerns one row (a window row index, -1 for none).
class mvcRowChange : public mvcChange {
public:
    mvcRowChange(short row, mvcSubject* subject, short event, unsigned long initiator, bool notifyInitiator)
        : mvcChange(subject, event, initiator, notifyInitiator), row(row) {}

    short Row() const { return row; }

private:
    short row;
};

// A change that concerns one column (a column index, -1 for none).
class mvcColChange : public mvcChange {
public:
    mvcColChange(short col, mvcSubject* subject, short event, unsigned long initiator, bool notifyInitiator)
        : mvcChange(subject, event, initiator, notifyInitiator), col(col) {}

    short Col() const { return col; }

private:
    short col;
};

// The focus row's state changed: it became dirty or clean, for the cause told.
class oxdmRowStateChange : public mvcChange {
public:
    enum CauseForChange : int {
        CauseUnspecified = 0,
        CauseRowReverted = 1,
        CauseRowInserted = 2,
        CauseRowValidated = 3,
        CauseRowEdited = 4,
        CauseRowRefetched = 5,
    };

    oxdmRowStateChange(CauseForChange cause, bool dirty, mvcSubject* subject, short event,
                       unsigned long initiator, bool notifyInitiator)
        : mvcChange(subject, event, initiator, notifyInitiator), dirty(dirty), cause(cause) {}
    // The same with CauseUnspecified.
    oxdmRowStateChange(bool dirty, mvcSubject* subject, short event, unsigned long initiator,
                       bool notifyInitiator)
        : oxdmRowStateChange(CauseUnspecified, dirty, subject, event, initiator, notifyInitiator) {}

    bool Dirty() const { return dirty; }
    CauseForChange Cause() const { return cause; }

private:
    bool dirty;
    CauseForChange cause;
};

// Something happened at one cursor node (a row deleted there). Nobody in
// particular caused it: the initiator is 0 and everyone is told.
class oxdmMVCCursorNodeChange : public mvcChange {
public:
    oxdmMVCCursorNodeChange(oxdmCursorNode* cursor, mvcSubject* subject, short event)
        : mvcChange(subject, event, 0, true), cursor(cursor) {}

    oxdmCursorNode* Cursor() const { return cursor; }

private:
    oxdmCursorNode* cursor;  // not owned
};
