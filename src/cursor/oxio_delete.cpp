// The record cursor node: deleting a row and, for children that cascade,
// everything related to it. With a rollback stack every deleted record's
// image is kept, so that a failure part way can be undone.

#include "oxdm/common/store/bookmark.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/store/record_functions.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/cursor/rollback_stack.h"
#include "oxdm/notify/change.h"
#include "oxdm/notify/subject.h"
#include "oxdm/record/table_def.h"

namespace {

constexpr short kCursorNodeChanged = 7;

}  // namespace

bool oxdmOXIOCursorNode::Delete(CString& error, oxdmRollbackStack* stack, mvcSubject* subject, bool keepPosition) {
    Debug("Delete", false, false, 0);
    if (!keepPosition) return _DoDelete(error, stack, subject);
    oxioCursor* cursor = DataCursor();
    oxioBookmark place(*cursor, true);
    bool result = _DoDelete(error, stack, subject);
    place.GoTo();
    cursor->FetchCurrent(false);
    return result;
}

bool oxdmOXIOCursorNode::_DoDelete(CString& error, oxdmRollbackStack* stack, mvcSubject* subject) {
    // A child whose join no longer matches stands on no related row: the
    // table may still stand on another parent's row, which is not ours to
    // delete.
    if (!IsKeyOK()) return true;
    oxdmRollbackStack* own = rollback_.get();
    const short file = FileNum(), table = Table()->Num();
    short saveA = 0, saveB = 0;
    if (stack != nullptr || own != nullptr) {
        // A failed positioning is not final: the delete itself decides.
        if (_Position(false, own != nullptr) == oxioStatus::Success) {
            if (stack != nullptr) saveA = xio_save_record(file, table);
            if (own != nullptr) saveB = xio_save_record(file, table);
        }
    }
    oxioStatus::Status status = DataCursor()->Delete();
    if (status != oxioStatus::Success) {
        if (saveA > 0) xio_unsave_record(file, saveA);
        if (saveB > 0) xio_unsave_record(file, saveB);
        if (status == oxioStatus::InvalidKey) return true;  // gone already
        error = "Could not delete from '" + Table()->Desc() + "' because " + StatusMsg(status);
        return false;
    }
    if (subject != nullptr) subject->Notify(new oxdmMVCCursorNodeChange(this, subject, kCursorNodeChanged), false);
    if (stack != nullptr && saveA > 0) stack->pushRecord(file, table, oxdmRollbackStack::Deleted, saveA);
    if (own != nullptr && saveB > 0) own->pushRecord(file, table, oxdmRollbackStack::Deleted, saveB);
    bool result = true;
    for (size_t i = 0; i < oneToOnes_.size() && result; ++i)
        if (oneToOnes_[i]->CascadedDelete()) result = oneToOnes_[i]->Delete(error, stack, subject, false);
    for (size_t i = 0; i < oneToManys_.size() && result; ++i)
        if (oneToManys_[i]->CascadedDelete()) result = oneToManys_[i]->DeleteAll(error, stack, subject);
    return result;
}

bool oxdmOXIOCursorNode::DeleteAll(CString& error, oxdmRollbackStack* stack, mvcSubject* subject) {
    for (bool on = First(false); on; on = Next(false))
        if (!Delete(error, stack, subject, false) && stack != nullptr) return false;
    return true;
}
