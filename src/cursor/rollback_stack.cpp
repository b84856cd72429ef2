#include "oxdm/cursor/rollback_stack.h"

#include <cassert>
#include <new>

#include "oxdm/base/abort.h"
#include "oxdm/common/store/record_functions.h"
#include "oxdm/common/values/io_status.h"

struct oxdmRollbackStack::Entry {
    short file;
    short table;
    ChangeType type;
    short saveID;
    Entry* next;
};

oxdmRollbackStack::oxdmRollbackStack() = default;

oxdmRollbackStack::~oxdmRollbackStack() { commit(); }

short oxdmRollbackStack::isEmpty() const { return top_ == nullptr ? 1 : 0; }

void oxdmRollbackStack::pushRecord(short file, short table, ChangeType type, short saveID) {
    if (saveID == 0) saveID = xio_save_record(file, table);
    Entry* entry = new (std::nothrow) Entry{file, table, type, saveID, top_};
    if (entry == nullptr) x_abort(0, "Memory allocation failed", nullptr, 0);
    top_ = entry;
}

void oxdmRollbackStack::popRecord() {
    assert(top_ != nullptr);
    Entry* entry = top_;
    if (entry->saveID != 0) xio_unsave_record(entry->file, entry->saveID);
    top_ = entry->next;
    delete entry;
}

void oxdmRollbackStack::commit() {
    while (top_ != nullptr) popRecord();
}

short oxdmRollbackStack::rollback() {
    short first = 0;
    while (top_ != nullptr) {
        short code = Undo(*top_);
        if (first == 0) first = code;
        popRecord();
    }
    return first;
}

short oxdmRollbackStack::Undo(Entry& entry) {
    short code = 0;
    switch (entry.type) {
        case Updated:
            // The record may have gone since (raw 11): it is written back all the same.
            code = xio_restore_record(entry.file, entry.saveID, 1, 0);
            if (code != oxioStatus::IO_VALID && code != oxioStatus::INVALID_KEY) break;
            code = xio_lock_record(entry.file, entry.table);
            if (code == oxioStatus::IO_VALID) code = xio_rep_record(entry.file, entry.table, nullptr);
            xio_unlock_record(entry.file, entry.table, 1);
            break;
        case Inserted:
            code = xio_restore_record(entry.file, entry.saveID, 0, 0);
            if (code == oxioStatus::IO_VALID) code = xio_del_record(entry.file, entry.table);
            break;
        case Deleted:
            code = xio_restore_record(entry.file, entry.saveID, 0, 0);
            if (code == oxioStatus::IO_VALID) code = xio_wr_record(entry.file, entry.table, nullptr);
            break;
    }
    // The image has served: drop it here (this store's restore keeps it), and
    // mark it used so that the pop does not drop it twice.
    xio_unsave_record(entry.file, entry.saveID);
    entry.saveID = 0;
    return code;
}
