// Deleting rows, the repair of the window after a record has gone, and the
// reservation of a new row's key on file.

#include <memory>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/store/attachments.h"
#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/notify/event.h"
#include "oxdm/record/column_def.h"

bool oxdmBufferedFileDataSourceImpl::CanDeleteRow() const {
    if (!hasFocus_) return false;
    if (onNewRow_ && !rowChanged_) return false;
    return canDeleteRow_;
}

bool oxdmBufferedFileDataSourceImpl::DeleteRow(unsigned long initiator, bool notifyInitiator) {
    if (!CanDeleteRow() && !(onNewRow_ && reservedKey_)) return false;
    if (onNewRow_ && !reservedKey_) {
        const bool reverted = RevertRow(0, true);
        if (reverted) SendAllChanged(initiator, notifyInitiator);
        return reverted;
    }
    int r = HandleRowEvent(oxdmDataSource::RowBeforeDelete, nullptr);
    if (IsSilentDelete()) r = oxdmDataSource::DeleteNoPrompt;
    if (r == 0) {
        if (Box("Delete this " + RowDescription() + "?", oxdmBox::YesNo | oxdmBox::IconQuestion) != oxdmBox::IdYes) {
            return false;
        }
    } else if (r != oxdmDataSource::DeleteNoPrompt) {
        return false;
    }
    bool found = false;
    if (!reservedKey_) {
        found = GoToFocusRecord();
    } else {
        cursorNode_->Clear(true, false);
        CopyRowToCursor();
        cursorNode_->StuffSourceKey(true, false);
        found = cursorNode_->EQ(false);
    }
    // A record that is not found has gone already: the delete is done.
    CString error;
    if (found && !cursorNode_->Delete(error, nullptr, dataSource_, true)) {
        ReportFailure(oxdmDataSource::RowDeleteFailed, nullptr, error);
        return false;
    }
    HandleRowEvent(oxdmDataSource::RowAfterDelete, nullptr);
    reservedKey_.reset();
    _DoDeleteRow(FocusRow());
    return true;
}

void oxdmBufferedFileDataSourceImpl::_DoDeleteRow(short row) {
    bool atEnd = false;
    const long moved = CursorNext(1, true, false);
    if (moved < 1) atEnd = !CursorLast(true, false);
    if (windowSize_ == 1 && moved > 0 && CursorPrev(1, true, false) < 1) atEnd = !CursorLast(true, false);
    if (row == -1) {
        if (!atEnd) {
            _MoveToCursor(SyncChildrenNow);
        } else if (!autoNewRow_) {
            _ClearFocus(SyncChildrenNow);
        } else {
            _MoveToBottom(false);
        }
    } else {
        DeleteBufferRow(row);
        short target = row;
        if (canScrollDown_ && BufferDown(1, atEnd) == 1) {
            target = row;
        } else if (canScrollUp_ && BufferUp(1, atEnd) == 1) {
            target = static_cast<short>(row + 1);
        } else if (windowRows_.empty()) {
            target = -1;
        }
        target = std::min<short>(target, static_cast<short>(windowRows_.size() - 1));
        if (target == -1) {
            if (!autoNewRow_) {
                _ClearFocus(SyncChildrenNow);
            } else {
                BufferDown(1, false);
                _MoveToNewRow(SyncChildrenNow);
            }
        } else if (IsNewRow(target)) {
            _MoveToNewRow(SyncChildrenNow);
        } else {
            _MoveToRow(target, SyncChildrenNow);
        }
    }
    canScrollUp_ = TestScrollUp(1) > 0;
    canScrollDown_ = TestScrollDown(1) > 0;
    _RefetchVisibleRows(true, 0, true, false);
    SendFocusMoved(0, true);
}

bool oxdmBufferedFileDataSourceImpl::DeleteAllRows(unsigned long initiator, bool notifyInitiator) {
    xw_start_wait("");
    if (onNewRow_ && !reservedKey_) RevertRow(0, true);
    reservedKey_.reset();
    bool more = CursorFirst(true, false);
    while (more) {
        _SetFocus(0, SyncChildrenNow);
        if (IsNewRow()) break;
        const int r = HandleRowEvent(oxdmDataSource::RowBeforeDelete, nullptr);
        // A handler that refuses comes back to the same row: it must refuse
        // once, or the loop does not end.
        if (r != 0 && r != oxdmDataSource::DeleteNoPrompt) continue;
        CString error;
        GoToFocusRecord();
        more = cursorNode_->Delete(error, nullptr, dataSource_, false);
        if (more) {
            HandleRowEvent(oxdmDataSource::RowAfterDelete, nullptr);
            more = BufferDown(1, true) == 1;
        }
    }
    SetNeedNewRowPrefills(true);
    _MoveToTop(false);
    canScrollUp_ = false;
    canScrollDown_ = TestScrollDown(1) > 0;
    HandleRowEvent(oxdmDataSource::FocusRowMoved, nullptr);
    SendAllChanged(initiator, notifyInitiator);
    xw_stop_wait();
    return true;
}

bool oxdmBufferedFileDataSourceImpl::ReserveKey() {
    const bool hadKey = reservedKey_ != nullptr;
    CString error;
    if (hadKey) {
        // The key may change only while no child buffer holds rows.
        for (oxdmBufferedFileDataSource* child : childBuffers_) {
            if (child->HasData() && (child->CanMoveUp() || child->CanMoveDown(true))) return true;
        }
        reservedKey_->GoTo();
        const std::unique_ptr<oxioAttachments> attachments(cursorNode_->CreateAttachments());
        if (!cursorNode_->Delete(error, nullptr, nullptr, false) && !error.IsEmpty()) {
            ReportFailure(oxdmDataSource::RowDeleteFailed, nullptr, error);
            return false;
        }
    }
    cursorNode_->Clear(true, false);
    CopyRowToCursor();
    cursorNode_->StuffSourceKey(true, false);
    const oxioStatus::Status status = cursorNode_->Insert(error, false);
    if (status == oxioStatus::Success) reservedKey_.reset(cursorNode_->CreateBookmark());
    if (!hadKey) SyncChildren();
    if (status == oxioStatus::Success) {
        reservedKey_->GoTo();
        cursorNode_->StuffSourceKey(true, false);
        TakeCursorAsSaved();
    } else {
        oxdmEvtDataSource event(status);
        ReportFailure(oxdmDataSource::RowInsertFailed, &event, error);
        reservedKey_.reset();
    }
    return reservedKey_ != nullptr;
}

bool oxdmBufferedFileDataSourceImpl::UnreserveKey(CString& error) {
    if (!reservedKey_) return false;
    if (!reservedKey_->GoTo()) {
        error = "Could not find " + NodeLabel();
        return true;
    }
    const bool answer = cursorNode_->Delete(error, nullptr, dataSource_, false);
    if (answer) reservedKey_.reset();
    return answer;
}

void oxdmBufferedFileDataSourceImpl::Rollback() {
    cursorNode_->Rollback();
    ReQuery();
}

void oxdmBufferedFileDataSourceImpl::CommitRollbackStack() { cursorNode_->CommitRollbackStack(); }

void oxdmBufferedFileDataSourceImpl::SetAutoNewRow(bool on) {
    if (autoNewRow_ == on) return;
    autoNewRow_ = on;
    if (!on && IsNewRow()) {
        ReQuery();
    } else {
        RefetchVisibleRows(0, true, false);
    }
}

std::map<CString, CString> oxdmBufferedFileDataSourceImpl::FocusKeyValues() const {
    std::map<CString, CString> keys;
    for (size_t col = 0; col < columns_.size(); ++col) {
        const oxdmColumnDef* def = columns_[col]->OXColumn();
        if (def && def->Key()) keys[columns_[col]->ID()] = Self().ObserverNewValueAsString(static_cast<short>(col));
    }
    return keys;
}

CString oxdmBufferedFileDataSourceImpl::RowDescription() {
    CString text = cursorNode_->RowDescription();
    while (!text.IsEmpty() && text[text.GetLength() - 1] == ':') text = text.Left(text.GetLength() - 1);
    text.MakeLower();
    return text.IsEmpty() ? CString("row") : text;
}

bool oxdmBufferedFileDataSourceImpl::IsReadOnly(short col) const {
    if (!ValidCol(col)) return false;
    const oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    bool canUpdate = canUpdateRow_;
    cursorNode_->CanUpdate(column.ID(), canUpdate);
    if (column.IsReadOnlyOrHidden(true)) return true;
    if (onNewRow_) return false;
    const oxdmColumnDef* def = column.OXColumn();
    const bool key = def && def->Key();
    return !(canUpdate && (!key || column.ChangeableKey()));
}
