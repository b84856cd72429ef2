#pragma once
// oxdmRollbackStack: the means of undoing a series of single record writes.
// There is no transaction in the record layer; each write pushes a saved
// image of its record, and a rollback replays the images newest first.
//
//     oxdmRollbackStack stack;
//     if (node->Delete(error, &stack, nullptr, false)) stack.commit();
//     else stack.rollback();
//
// The destructor commits: a stack left alone keeps its changes.

class oxdmRollbackStack {
public:
    enum ChangeType : int { Updated = 0, Inserted = 1, Deleted = 2 };

    oxdmRollbackStack();
    ~oxdmRollbackStack();
    oxdmRollbackStack(const oxdmRollbackStack&) = delete;
    oxdmRollbackStack& operator=(const oxdmRollbackStack&) = delete;

    short isEmpty() const;
    // Remembers a change of the record that table `table` of `file` stands
    // on. With `saveID` 0 the table's buffer is saved now; otherwise the
    // stack takes over that saved image.
    void pushRecord(short file, short table, ChangeType type, short saveID);
    // Forgets the newest entry and its image.
    // REQUIRES: !isEmpty().
    void popRecord();
    // Keeps every change: forgets all entries.
    void commit();
    // Undoes every entry, newest first, and forgets them. Answers the first
    // non-zero raw code met; later entries are undone all the same.
    short rollback();

private:
    struct Entry;
    // Undoes one entry; uses up its image.
    static short Undo(Entry& entry);

    // top_ is the newest entry of a singly linked list, owned, each entry
    // owning the next older one; null when empty. An entry's saveID is 0
    // once its image has been used up.
    Entry* top_ = nullptr;
};
