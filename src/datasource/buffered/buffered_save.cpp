// Saving and reverting the focus row, and the checks of its columns.

#include <algorithm>
#include <memory>

#include "oxdm/base/exception.h"
#include "oxdm/common/shell/message_box.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/cursor/rollback_stack.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/notify/change.h"
#include "oxdm/notify/event.h"
#include "oxdm/common/store/attachments.h"
#include "oxdm/record/column_def.h"

namespace {
constexpr unsigned kErrorBox = 0x40;
}  // namespace

int oxdmBufferedFileDataSourceImpl::Box(const CString& text, unsigned style) const {
    return oxdmTaskMessageBox(Task(), text, style);
}

void oxdmBufferedFileDataSourceImpl::ReportFailure(oxdmDataSource::Event event, oxdmEvent* msg,
                                                   const CString& error) {
    if (HandleRowEvent(event, msg) == 0) Box(error, kErrorBox);
}

void oxdmBufferedFileDataSourceImpl::CopyValues(const Values& from, Values& to) const {
    for (size_t col = 0; col < columns_.size(); ++col) columns_[col]->CopyValue(*from[col], *to[col]);
}

void oxdmBufferedFileDataSourceImpl::TakeCursorAsSaved() {
    CopyCursorIntoNew();
    CopyValues(savedValues_, oldValues_);
    CopyValues(newValues_, savedValues_);
}

void oxdmBufferedFileDataSourceImpl::StoreNewValues() {
    if (std::find(changedColumns_.begin(), changedColumns_.end(), true) == changedColumns_.end()) return;
    for (size_t col = 0; col < columns_.size(); ++col) {
        oxdmDSColumnBase& column = *columns_[col];
        if (!column.SetValue(*newValues_[col])) {
            throw oxdmException("Can't assign type '" + oxDataClassName(*newValues_[col]) + "' to type '" +
                                oxDataClassName(column.Value(false)) + "'");
        }
    }
}

bool oxdmBufferedFileDataSourceImpl::ValidateRow(unsigned long initiator, bool notifyInitiator, bool force) {
    if (!hasFocus_) return true;
    bool answer = _ValidateRow(initiator, notifyInitiator, force);
    for (oxdmBufferedFileDataSource* child : childBuffers_) {
        if (!answer) break;
        answer = child->ValidateRow(initiator, notifyInitiator);
    }
    return answer;
}

bool oxdmBufferedFileDataSourceImpl::SortKeyChanged(bool& keyChanged) const {
    bool sortChanged = onNewRow_;
    if (!onNewRow_) {
        for (size_t col = 0; col < columns_.size(); ++col) {
            const oxdmColumnDef* def = columns_[col]->OXColumn();
            if (def && def->Key() && changedColumns_[col]) sortChanged = true;
        }
    }
    keyChanged = sortChanged && !onNewRow_;
    if (cursorNode_->Index() != 0 && !onNewRow_) {
        sortChanged = false;
        for (const oxdmColumnDef* def : cursorNode_->SortColumns()) {
            const short col = IndexForColumn(def->Name());
            if (col >= 0 && changedColumns_[static_cast<size_t>(col)]) sortChanged = true;
        }
    }
    return sortChanged;
}

bool oxdmBufferedFileDataSourceImpl::_ValidateRow(unsigned long initiator, bool notifyInitiator, bool force) {
    if (HandleRowEvent(oxdmDataSource::RowBeforeValidate, nullptr) != 0) return false;
    if (!rowChanged_ && !force) return true;
    if (parentBuffer_ && parentBuffer_->IsNewRow() && !parentBuffer_->impl_->IsKeyReserved()) {
        Box("Cannot save this row until the " + parentBuffer_->Cursor()->RowName() + " has been added.", kErrorBox);
        return false;
    }
    if (const int r = HandleRowEvent(oxdmDataSource::RowValidate, nullptr); r != 0) {
        bool result = false;
        if (r == oxdmDataSource::RevertInstead) result = RevertRow(0, true);
        if (!force) return result;
    }
    if (!ValidateColumns(false)) return false;
    const bool isNew = onNewRow_;
    const bool reappend = isNew && autoNewRow_;
    bool keyChanged = false;
    const bool sortChanged = SortKeyChanged(keyChanged);
    const short focusIndex = FocusRow();
    MoveCursorToFocus();
    const int beforeWrite = HandleRowEvent(oxdmDataSource::RowBeforeWrite, nullptr);
    // Only the application that calls itself "SM" may stop a save here.
    if (beforeWrite != 0 && OXGetMainApp() != nullptr && OXGetMainApp()->Code() == "SM") return false;

    oxdmRollbackStack stack;
    CString error;
    std::unique_ptr<oxioAttachments> attachments;
    if (keyChanged) {
        // A record's key is not rewritten in place: the old record goes
        // first, its attachments kept readable for the new one.
        attachments.reset(cursorNode_->CreateAttachments());
        if (!cursorNode_->Delete(error, &stack, nullptr, false) && !error.IsEmpty()) {
            ReportFailure(oxdmDataSource::RowDeleteFailed, nullptr, error);
            return false;
        }
    }
    if (onNewRow_) cursorNode_->Clear(true, IsMultiLevel());
    if (parentBuffer_) parentBuffer_->MoveCursorToFocus();
    // Column 0 is marked so that the values are always written. A save
    // refused because the record is in use keeps the edits for another try;
    // the mark goes back then, so that the try is not taken for a key change.
    const bool firstColumnChanged = changedColumns_[0];
    SetColumnChanged(0, true);
    StoreNewValues();
    cursorNode_->StuffSourceKey(true, false);

    oxioStatus::Status status = oxioStatus::Success;
    oxdmDataSource::Event failEvent = oxdmDataSource::RowInsertFailed;
    bool rowGone = false;
    if (keyChanged) {
        status = cursorNode_->Insert(error, false);
        if (status == oxioStatus::Success) {
            stack.commit();
        } else {
            stack.rollback();
        }
        if (attachments) attachments->Write();
        attachments.reset();
    } else if (!onNewRow_ || reservedKey_) {
        status = cursorNode_->Update(error, 1, false, force);
        rowGone = status == oxioStatus::InvalidKey;
        failEvent = oxdmDataSource::RowUpdateFailed;
    } else {
        status = cursorNode_->Insert(error, false);
    }
    if (status != oxioStatus::Success) {
        if (rowGone) {
            _DoDeleteRow(focusIndex);
        } else if (status != oxioStatus::InUse) {
            // After a conflict the row shows what the other program wrote.
            _ClearFileBuffers(cursorNode_);
            RefetchRow();
        } else {
            SetColumnChanged(0, firstColumnChanged);
        }
        if (!error.IsEmpty()) {
            oxdmEvtDataSource event(status);
            ReportFailure(failEvent, &event, error);
        }
        return false;
    }
    AfterSave(isNew, reappend, sortChanged, focusIndex, initiator, notifyInitiator);
    return true;
}

void oxdmBufferedFileDataSourceImpl::AfterSave(bool isNew, bool reappend, bool sortChanged, short focusIndex,
                                               unsigned long initiator, bool notifyInitiator) {
    const std::shared_ptr<oxdmCursorBookmark> saved(cursorNode_->CreateBookmark());
    if (onNewRow_) {
        SetNeedNewRowPrefills(false);
        for (size_t col = 0; col < columns_.size(); ++col) {
            if (columns_[col]->PrefillFromLast()) columns_[col]->SetPrefillValue(*newValues_[col], false);
        }
    }
    focusBookmark_ = saved;
    onNewRow_ = false;
    reservedKey_.reset();
    if (focusBookmark_->GoTo()) TakeCursorAsSaved();
    SetAllColumnsUnchanged();
    if (focusIndex >= 0 && static_cast<size_t>(focusIndex) < windowBookmarks_.size()) {
        windowBookmarks_[static_cast<size_t>(focusIndex)] = focusBookmark_;
    }
    rowChanged_ = false;
    RefreshReadOnly();
    SendRowState(false, isNew ? oxdmRowStateChange::CauseRowInserted : oxdmRowStateChange::CauseRowValidated,
                 initiator, notifyInitiator);
    HandleRowEvent(oxdmDataSource::RowAfterWrite, nullptr);
    // A handler of the write may have written to the record.
    if (MoveCursorToFocus()) TakeCursorAsSaved();
    ClearFocusRowStateStack();
    if (const short focus = FocusRow(); focus >= 0) CopyRowFromCursor(windowRows_[static_cast<size_t>(focus)]);
    if (sortChanged) {
        dataSource_->Notify(new mvcChange(dataSource_, oxdmDataSource::DSNeedsRefetch, 0, true), false);
    }
    if (reappend) AppendNewRow();
}

void oxdmBufferedFileDataSourceImpl::AppendNewRow() {
    if (!windowBookmarks_.empty() && !windowBookmarks_.back()) return;
    if (windowRows_.size() < static_cast<size_t>(windowSize_)) {
        windowBookmarks_.emplace_back();
        windowRows_.push_back(CreateRowData());
        CopyRowFromNew(windowRows_.back());
    } else {
        canScrollDown_ = true;
    }
}

bool oxdmBufferedFileDataSourceImpl::CanAppendRow() const { return autoNewRow_ && windowSize_ > 1; }

bool oxdmBufferedFileDataSourceImpl::AppendRow() {
    if (!CanAppendRow()) return false;
    AppendNewRow();
    return true;
}

bool oxdmBufferedFileDataSourceImpl::ValidateColumns(bool changedOnly) {
    for (short col = 0; col < NumColumns(); ++col) {
        if (changedOnly && !changedColumns_[static_cast<size_t>(col)]) continue;
        if (!ValidateColumn(col)) return false;
    }
    return true;
}

bool oxdmBufferedFileDataSourceImpl::ValidateColumn(short col) {
    if (!ValidCol(col) || IsReadOnly(col)) return true;
    oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    bool valid = true;
    if (column.Required() && newValues_[static_cast<size_t>(col)]->IsNull()) {
        Box("'" + column.Label() + "' on the " + cursorNode_->RowName() + " is required.", kErrorBox);
        valid = false;
    } else {
        valid = HandleColEvent(oxdmDataSource::ColValidate, col, CellFor(col)) == 0;
    }
    if (!valid) {
        dataSource_->Notify(new mvcColChange(col, dataSource_, oxdmDataSource::DSColInvalid, 0, true), false);
    }
    return valid;
}

bool oxdmBufferedFileDataSourceImpl::RevertRow(unsigned long initiator, bool notifyInitiator) {
    if (onNewRow_ && reservedKey_) {
        if (HandleRowEvent(oxdmDataSource::RowBeforeRevert, nullptr) != 0) return false;
        CString error;
        const bool answer = UnreserveKey(error);
        if (!answer) {
            ReportFailure(oxdmDataSource::RowDeleteFailed, nullptr, error);
        } else {
            _MoveToNewRow(SyncChildrenNow);
            SendAllChanged(initiator, notifyInitiator);
        }
        HandleRowEvent(oxdmDataSource::RowAfterRevert, nullptr);
        return answer;
    }
    if (!rowChanged_) return true;
    if (HandleRowEvent(oxdmDataSource::RowBeforeRevert, nullptr) != 0) return false;
    CopyValues(savedValues_, newValues_);
    CopyValues(savedValues_, oldValues_);
    SetAllColumnsUnchanged();
    rowChanged_ = false;
    if (!onNewRow_) {
        dataSource_->Notify(new mvcRowChange(FocusRow(), dataSource_, oxdmDataSource::DSRowChanged, initiator,
                                             notifyInitiator),
                            false);
        SendRowState(false, oxdmRowStateChange::CauseRowReverted, initiator, notifyInitiator);
    } else {
        _MoveToNewRow(SyncChildrenNow);
        SendAllChanged(initiator, notifyInitiator);
    }
    HandleRowEvent(oxdmDataSource::RowAfterRevert, nullptr);
    return true;
}
