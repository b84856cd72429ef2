#pragma once
// mvcOperation and its kinds: a thin command wrapper around one delivery. An
// operation carries no grouping or nesting behaviour.

#include "oxdm/notify/event.h"

class mvcChange;

class mvcOperation {
public:
    mvcOperation(bool undoable, bool redoable) : undoable(undoable), redoable(redoable) {}
    virtual ~mvcOperation() = default;
    mvcOperation(const mvcOperation&) = delete;
    mvcOperation& operator=(const mvcOperation&) = delete;

    // Do, Undo and Commit do nothing here; Redo does it again.
    virtual void Do() {}
    virtual void Undo() {}
    virtual void Redo() { Do(); }
    virtual void Commit() {}

    bool IsUndoable() const { return undoable; }
    bool IsRedoable() const { return redoable; }
    // Hands the operation to mvcOperationEvent::Post, which does nothing:
    // answers false and the operation stays with whoever holds it.
    bool Post();

private:
    // Fixed at construction.
    bool undoable;
    bool redoable;
};

// The delivery of one change. Owns the change: the destructor deletes it.
class mvcChangeOperation : public mvcOperation {
public:
    // REQUIRES: change != nullptr
    explicit mvcChangeOperation(mvcChange* change);
    ~mvcChangeOperation() override;

    // Delivers the change through mvcChangeMgr's delivery loop.
    void Do() override;

private:
    mvcChange* change;  // owned
};

// An operation as a window message (lParam). Posting one is not built: there
// is no message queue in the library, so Post does nothing.
class mvcOperationEvent : public oxdmEvent {
public:
    mvcOperationEvent() = default;

    mvcOperation* Operation() const { return reinterpret_cast<mvcOperation*>(lParam); }

    // Does nothing and answers false; the operation is neither run nor freed.
    static bool Post(mvcOperation* operation);
};
