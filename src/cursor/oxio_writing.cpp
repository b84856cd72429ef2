// The record cursor node: inserting and updating a row. A save is a series
// of single record writes: this node's record, then its one-to-one
// children's. One-to-many children are saved by their own buffers.

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/store/record_functions.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/cursor/rollback_stack.h"
#include "oxdm/record/table_def.h"

oxioStatus::Status oxdmOXIOCursorNode::_Position(bool read, bool readOnIndexZero) {
    oxioCursor* cursor = DataCursor();
    const short file = FileNum(), table = Table()->Num();
    auto fetch = [&] {
        return oxioStatus::ConvertToOxio(read ? xio_rd_record(file, table, 0, 0) : xio_find_record(file, table, 0));
    };
    if (cursor->IndexID() == 0) {
        oxioStatus::Status status = cursor->SeekEQ();
        if (status == oxioStatus::Success && readOnIndexZero) status = fetch();
        return status;
    }
    cursor->SetBuffer();
    return fetch();
}

oxioStatus::Status oxdmOXIOCursorNode::Insert(CString& error, bool checkRights) {
    oxioStatus::Status status = oxioStatus::Success;
    if (HasNoRecord() || (checkRights && !CanInsert())) SetChanged(false);
    if (Changed()) status = DataCursor()->Insert(nullptr);
    if (status == oxioStatus::Success) {
        // Pushed also when nothing was written: a rollback then undoes the
        // record the table stands on.
        if (rollback_) rollback_->pushRecord(FileNum(), Table()->Num(), oxdmRollbackStack::Inserted, 0);
        SetChanged(false);
        for (size_t i = 0; i < oneToOnes_.size() && status == oxioStatus::Success; ++i)
            status = oneToOnes_[i]->InsertOrUpdate(error, true);
    } else if (status == oxioStatus::InvalidKey) {
        error = "The " + Table()->Desc() + " already exists.";
    } else {
        error = "Could not insert " + Table()->Desc() + " because " + StatusMsg(status);
    }
    return status;
}

oxioStatus::Status oxdmOXIOCursorNode::InsertOrUpdate(CString& error, bool checkRights) {
    oxioStatus::Status status = Insert(error, checkRights);
    if (status == oxioStatus::Success) return status;
    error.Empty();
    return Update(error, 0, checkRights, false);
}

oxioStatus::Status oxdmOXIOCursorNode::UpdateOrInsert(CString& error, bool checkRights) {
    oxioStatus::Status status = Update(error, 2, checkRights, false);
    if (status == oxioStatus::Success) return status;
    error.Empty();
    return Insert(error, checkRights);
}

oxioStatus::Status oxdmOXIOCursorNode::Update(CString& error, int flags, bool checkRights, bool force) {
    bool report = true;
    oxioStatus::Status status = oxioStatus::Success;
    if (HasNoRecord() || (checkRights && !CanUpdate())) {
        SetChanged(false);
    } else {
        // Custom fields live in a sidecar table; a change there must touch
        // the main record as well.
        for (size_t i = 0; i < oneToOnes_.size() && !Changed(); ++i)
            if (oneToOnes_[i]->HasCustomFields() && oneToOnes_[i]->Changed()) SetChanged(true);
    }
    if (Changed() || force) {
        oxioCursor* cursor = DataCursor();
        const short file = FileNum(), table = Table()->Num();
        status = _Position(true, rollback_ != nullptr);
        const oxioStatus::Status positioned = status;
        if (status == oxioStatus::Success) {
            short save = rollback_ ? xio_save_record(file, table) : 0;
            status = cursor->Lock();
            if (status == oxioStatus::Success) {
                if (Table()->RecDef().custom_fields != 0) {
                    status = cursor->Update(nullptr, oxioCursor::Overwrite);
                } else {
                    status = cursor->Update(nullptr, oxioCursor::CheckConflict);
                    if (status == oxioStatus::DataConflict && _TryAgain()) {
                        status = cursor->Update(nullptr, oxioCursor::Overwrite);
                    } else {
                        // A checked write tells nothing more: the user saw a
                        // question, or nothing went wrong, or the status says it.
                        error.Empty();
                        report = false;
                    }
                }
                cursor->Refresh();
                cursor->Unlock(1);
            }
            if (rollback_) {
                if (status == oxioStatus::Success)
                    rollback_->pushRecord(file, table, oxdmRollbackStack::Updated, save);
                else
                    xio_unsave_record(file, save);
            }
        }
        if (positioned == oxioStatus::InvalidKey && (flags & 2) == 0) {
            // Deleted by someone else since it was read.
            if (_AskReinsert()) {
                status = Insert(error, false);
            } else {
                error.Empty();
                report = false;
            }
        }
    }
    if (status == oxioStatus::Success) {
        SetChanged(false);
        for (size_t i = 0; i < oneToOnes_.size() && status == oxioStatus::Success; ++i)
            status = (flags & 1) == 0 ? oneToOnes_[i]->Update(error, 0, true, false)
                                      : oneToOnes_[i]->UpdateOrInsert(error, true);
    }
    if (status != oxioStatus::Success && report)
        error = "Could not update '" + Table()->Desc() + "' because " + StatusMsg(status);
    return status;
}
