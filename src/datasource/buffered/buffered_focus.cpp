// The focus row: its moves, the three sets of values and the writes of a
// program and of a control.

#include <algorithm>
#include <memory>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/message_box.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/notify/change.h"

short oxdmBufferedFileDataSourceImpl::FocusRow() const {
    if (!hasFocus_) return -1;
    if (onNewRow_) {
        return !windowRows_.empty() && !windowBookmarks_.back() ? static_cast<short>(windowRows_.size() - 1) : -1;
    }
    if (!focusBookmark_) return -1;
    for (size_t row = 0; row < windowBookmarks_.size(); ++row) {
        if (windowBookmarks_[row] && windowBookmarks_[row]->EqualTo(focusBookmark_.get())) {
            return static_cast<short>(row);
        }
    }
    return -1;
}

bool oxdmBufferedFileDataSourceImpl::IsNewRow(short row) const {
    if (row < 0 || static_cast<size_t>(row) >= windowBookmarks_.size()) return false;
    return !windowBookmarks_[static_cast<size_t>(row)];
}

bool oxdmBufferedFileDataSourceImpl::IsColumnChanged(short col) const {
    return ValidCol(col) && changedColumns_[static_cast<size_t>(col)];
}

void oxdmBufferedFileDataSourceImpl::SetColumnChanged(short col, bool changed) {
    if (ValidCol(col)) changedColumns_[static_cast<size_t>(col)] = changed;
}

void oxdmBufferedFileDataSourceImpl::SetAllColumnsUnchanged() {
    std::fill(changedColumns_.begin(), changedColumns_.end(), false);
}

bool oxdmBufferedFileDataSourceImpl::GoToFocusRecord() const { return focusBookmark_ && focusBookmark_->GoTo(); }

bool oxdmBufferedFileDataSourceImpl::MoveCursorToFocus() {
    if (focusBookmark_) return focusBookmark_->GoTo();
    if (!reservedKey_) return false;
    cursorNode_->Clear(true, false);
    CopyRowToCursor();
    cursorNode_->StuffSourceKey(true, false);
    return cursorNode_->EQ(false);
}

// ---------------------------------------------------------------- the internal moves

void oxdmBufferedFileDataSourceImpl::_SetFocus(short row, SyncChildrenOpt opt) {
    row = std::clamp<short>(row, -1, static_cast<short>(windowRows_.size() - 1));
    if (row == -1) {
        _ClearFocus(opt);
    } else if (IsNewRow(row)) {
        _MoveToNewRow(opt);
        SendRowChanged(row);
    } else {
        ParentToFocus();
        _MoveToRow(row, opt);
    }
}

void oxdmBufferedFileDataSourceImpl::_MoveToRow(short row, SyncChildrenOpt opt) {
    if (!windowBookmarks_[static_cast<size_t>(row)]->GoTo()) {
        // The record has gone or changed its key under someone else's hand.
        oxdmMessageBox("Someone has changed this data, it will be refreshed.", "Warning", oxdmBox::IconInformation);
        _RefetchVisibleRows(true, 0, true, false);
        return;
    }
    CopyRowToCursor(windowRows_[static_cast<size_t>(row)]);
    _MoveToCursor(opt);
}

void oxdmBufferedFileDataSourceImpl::_MoveToCursor(SyncChildrenOpt opt) {
    cursorNode_->StuffSourceKey(true, IsMultiLevel());
    focusBookmark_.reset(cursorNode_->CreateBookmark());
    TakeCursorIntoSets();
    hasFocus_ = true;
    onNewRow_ = false;
    ClearFocusRowStateStack();
    RefreshReadOnly();
    if (opt == SyncChildrenNow) SyncChildren();
}

void oxdmBufferedFileDataSourceImpl::_MoveToNewRow(SyncChildrenOpt opt) {
    const bool haveLast = CursorLast(true, false);
    const bool prefill = needNewRowPrefills_;
    needNewRowPrefills_ = false;
    ParentToFocus();
    focusBookmark_.reset();
    for (size_t col = 0; col < columns_.size(); ++col) {
        oxdmDSColumnBase& column = *columns_[col];
        if (prefill && column.PrefillFromLast()) {
            column.SetPrefillValue(haveLast ? column.Value(false) : column.DefaultPrefillValue(), false);
        }
        SetAllSets(static_cast<short>(col), column.PrefillValue());
        column.SetValue(*newValues_[col]);
    }
    hasFocus_ = true;
    onNewRow_ = true;
    rowChanged_ = false;
    cursorNode_->Clear(true, true);
    cursorNode_->StuffSourceKey(true, true);
    SetAllColumnsUnchanged();
    RefreshReadOnly();
    ClearFocusRowStateStack();
    if (opt == SyncChildrenNow) SyncChildren();
}

void oxdmBufferedFileDataSourceImpl::_ClearFocus(SyncChildrenOpt opt) {
    // A stub written to hold a key goes with the new row it served; when it
    // has gone already there is nothing left to tell.
    if (reservedKey_) {
        CString error;
        UnreserveKey(error);
        reservedKey_.reset();
    }
    hasFocus_ = false;
    onNewRow_ = false;
    rowChanged_ = false;
    focusBookmark_.reset();
    SetAllColumnsUnchanged();
    if (opt == SyncChildrenNow) SyncChildren();
}

void oxdmBufferedFileDataSourceImpl::FollowFocus() {
    if (windowSize_ == 1) SetWindowScroll(oxdmDataSource::ScrollToFocus, 0);
}

short oxdmBufferedFileDataSourceImpl::_MoveUp(short rows) {
    if (rows < 1) return 0;
    long done = 0;
    if (!focusBookmark_) {
        if (!CursorLast(true, false)) return 0;
        done = 1;
    } else if (!focusBookmark_->GoTo()) {
        return 0;
    }
    if (done < rows) done += CursorPrev(rows - done, true, false);
    _MoveToCursor(SyncChildrenNow);
    FollowFocus();
    return static_cast<short>(done);
}

short oxdmBufferedFileDataSourceImpl::_MoveDown(short rows, bool noNewRow) {
    if (!GoToFocusRecord()) return 0;
    const long moved = CursorNext(rows, true, false);
    if (moved < rows && autoNewRow_ && !noNewRow) {
        _MoveToNewRow(SyncChildrenNow);
        return static_cast<short>(moved + 1);
    }
    if (moved > 0) {
        _MoveToCursor(SyncChildrenNow);
        FollowFocus();
    }
    return static_cast<short>(moved);
}

bool oxdmBufferedFileDataSourceImpl::_MoveToTop(bool noNewRow) {
    if (CursorFirst(true, false)) {
        _MoveToCursor(SyncChildrenNow);
        FollowFocus();
        return true;
    }
    if (!autoNewRow_ || (noNewRow && hasFocus_)) return false;
    _MoveToNewRow(SyncChildrenNow);
    return true;
}

bool oxdmBufferedFileDataSourceImpl::_MoveToBottom(bool noNewRow) {
    if (autoNewRow_ && !(noNewRow && hasFocus_)) {
        _MoveToNewRow(SyncChildrenNow);
        return true;
    }
    if (!CursorLast(true, false)) return false;
    _MoveToCursor(SyncChildrenNow);
    FollowFocus();
    return true;
}

// ---------------------------------------------------------------- the public moves

void oxdmBufferedFileDataSourceImpl::SendFocusMoved(unsigned long initiator, bool notifyInitiator) {
    dataSource_->Notify(new mvcChange(dataSource_, oxdmDataSource::DSFocusChanged, initiator, notifyInitiator), false);
    HandleRowEvent(oxdmDataSource::FocusRowMoved, nullptr);
}

short oxdmBufferedFileDataSourceImpl::MoveUp(short rows, unsigned long initiator, bool notifyInitiator) {
    if (!hasFocus_) return 0;
    const short moved = _MoveUp(rows);
    if (moved > 0) SendFocusMoved(initiator, notifyInitiator);
    return moved;
}

short oxdmBufferedFileDataSourceImpl::MoveDown(short rows, unsigned long initiator, bool notifyInitiator,
                                               bool noNewRow) {
    if (!hasFocus_) return 0;
    ParentToFocus();
    const short moved = _MoveDown(rows, noNewRow);
    if (moved > 0) SendFocusMoved(initiator, notifyInitiator);
    return moved;
}

bool oxdmBufferedFileDataSourceImpl::MoveToBottom(unsigned long initiator, bool notifyInitiator, bool noNewRow) {
    if (!_MoveToBottom(noNewRow)) return false;
    SendFocusMoved(initiator, notifyInitiator);
    return true;
}

bool oxdmBufferedFileDataSourceImpl::MoveToTop(unsigned long initiator, bool notifyInitiator, bool noNewRow) {
    if (_MoveToTop(noNewRow)) {
        SendFocusMoved(initiator, notifyInitiator);
        return true;
    }
    // Controls blank themselves on an empty window.
    if (windowRows_.empty()) {
        dataSource_->Notify(new mvcChange(dataSource_, oxdmDataSource::DSFocusChanged, initiator, notifyInitiator),
                            false);
    }
    return false;
}

bool oxdmBufferedFileDataSourceImpl::CanMoveUp() const {
    if (!hasFocus_) return false;
    oxdmBufferedFileDataSourceImpl& self = Self();
    const std::unique_ptr<oxdmCursorBookmark> back(cursorNode_->CreateBookmark());
    bool answer = false;
    if (!focusBookmark_) {
        answer = self.CursorLast(true, false);
        if (answer && reservedKey_) {
            const std::unique_ptr<oxdmCursorBookmark> here(cursorNode_->CreateBookmark());
            if (reservedKey_->EqualTo(here.get())) answer = self.CursorPrev(1, true, false) > 0;
        }
    } else {
        answer = focusBookmark_->GoTo() && self.CursorPrev(1, true, false) > 0;
    }
    back->GoTo();
    return answer;
}

bool oxdmBufferedFileDataSourceImpl::CanMoveDown(bool noNewRow) const {
    if (!hasFocus_ || !focusBookmark_) return false;
    const std::unique_ptr<oxdmCursorBookmark> back(cursorNode_->CreateBookmark());
    bool answer = false;
    if (focusBookmark_->GoTo()) answer = Self().CursorNext(1, true, false) > 0 || (autoNewRow_ && !noNewRow);
    back->GoTo();
    return answer;
}

bool oxdmBufferedFileDataSourceImpl::CanMoveToTop(bool noNewRow) const {
    const std::unique_ptr<oxdmCursorBookmark> back(cursorNode_->CreateBookmark());
    bool answer = true;
    if (!Self().CursorFirst(true, false)) {
        answer = autoNewRow_ && !noNewRow && !IsNewRow();
    } else if (focusBookmark_) {
        const std::unique_ptr<oxdmCursorBookmark> first(cursorNode_->CreateBookmark());
        answer = !first->EqualTo(focusBookmark_.get());
    }
    back->GoTo();
    return answer;
}

// ---------------------------------------------------------------- the value sets

void oxdmBufferedFileDataSourceImpl::SetAllSets(short col, const oxData& value) {
    const oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    column.CopyValue(value, *savedValues_[static_cast<size_t>(col)]);
    column.CopyValue(value, *oldValues_[static_cast<size_t>(col)]);
    column.CopyValue(value, *newValues_[static_cast<size_t>(col)]);
}

void oxdmBufferedFileDataSourceImpl::TakeCursorIntoSets() {
    for (size_t col = 0; col < columns_.size(); ++col) {
        SetAllSets(static_cast<short>(col), columns_[col]->Value(false));
    }
    SetAllColumnsUnchanged();
    rowChanged_ = false;
}

const oxData* oxdmBufferedFileDataSourceImpl::NewValue(short col) const {
    if (!ValidCol(col)) return nullptr;
    if (RunningEvent() == oxdmDataSource::RowFilter) return &columns_[static_cast<size_t>(col)]->Value(false);
    return newValues_[static_cast<size_t>(col)].get();
}

const oxData* oxdmBufferedFileDataSourceImpl::SavedValue(short col) const {
    if (!ValidCol(col)) return nullptr;
    switch (RunningEvent()) {
        case oxdmDataSource::RowFilter:
            return &columns_[static_cast<size_t>(col)]->Value(false);
        case oxdmDataSource::RowAfterWrite:
            return newValues_[static_cast<size_t>(col)].get();
        default:
            return savedValues_[static_cast<size_t>(col)].get();
    }
}

const oxData* oxdmBufferedFileDataSourceImpl::OldValue(short col) const {
    if (!ValidCol(col)) return nullptr;
    switch (RunningEvent()) {
        case oxdmDataSource::RowFilter:
            return &columns_[static_cast<size_t>(col)]->Value(false);
        case oxdmDataSource::RowValidate:
            return savedValues_[static_cast<size_t>(col)].get();
        default:
            return oldValues_[static_cast<size_t>(col)].get();
    }
}

CString oxdmBufferedFileDataSourceImpl::NewValueAsString(short col) {
    const oxData* value = NewValue(col);
    return value ? columns_[static_cast<size_t>(col)]->ValueAsString(*value) : CString();
}

CString oxdmBufferedFileDataSourceImpl::SavedValueAsString(short col) {
    const oxData* value = SavedValue(col);
    return value ? columns_[static_cast<size_t>(col)]->ValueAsString(*value) : CString();
}

CString oxdmBufferedFileDataSourceImpl::OldValueAsString(short col) {
    const oxData* value = OldValue(col);
    return value ? columns_[static_cast<size_t>(col)]->ValueAsString(*value) : CString();
}

bool oxdmBufferedFileDataSourceImpl::IsNewValueNull(short col) const {
    return ValidCol(col) && newValues_[static_cast<size_t>(col)]->IsNull();
}

// ---------------------------------------------------------------- writes

bool oxdmBufferedFileDataSourceImpl::SetNewValue(short col, const oxData* value) {
    if (!ValidCol(col) || value == nullptr) return false;
    oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    const int running = RunningEvent();
    if (running == oxdmDataSource::RowFilter) return column.SetValue(*value);
    if (running == oxdmDataSource::RowAfterWrite || running == oxdmDataSource::RowAfterDelete) return false;
    if (value->Eq(*newValues_[static_cast<size_t>(col)])) return true;
    return WriteNewValue(col, [&](oxData& to) { return column.CopyValue(*value, to); });
}

bool oxdmBufferedFileDataSourceImpl::SetNewValue(short col, const CString& text) {
    if (!ValidCol(col)) return false;
    oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    const int running = RunningEvent();
    if (running == oxdmDataSource::RowFilter) return column.SetValue(text);
    if (running == oxdmDataSource::RowAfterWrite || running == oxdmDataSource::RowAfterDelete) return false;
    return WriteNewValue(col, [&](oxData& to) { return column.CopyValue(text, to); });
}

bool oxdmBufferedFileDataSourceImpl::WriteNewValue(short col, const std::function<bool(oxData&)>& copy) {
    const auto c = static_cast<size_t>(col);
    std::vector<bool> hidden;
    GetHiddenState(hidden);
    if (!copy(*newValues_[c])) return false;
    SetColumnChanged(col, !newValues_[c]->Eq(*savedValues_[c]));
    DoAutoLookup(col);
    RefreshHidden(hidden);
    SendColChanged(col, 0, true);
    columns_[c]->CopyValue(*newValues_[c], *oldValues_[c]);
    return true;
}

CString oxdmBufferedFileDataSourceImpl::ObserverNewValueAsString(short col) {
    const oxData* value = ColValue(col);
    return value ? columns_[static_cast<size_t>(col)]->ValueAsString(*value) : CString();
}

bool oxdmBufferedFileDataSourceImpl::ObserverSetNewValue(short col, const CString& text, unsigned long initiator,
                                                         bool notifyInitiator) {
    if (!ValidCol(col)) return false;
    const std::unique_ptr<oxData> scratch(newValues_[static_cast<size_t>(col)]->Clone());
    if (!columns_[static_cast<size_t>(col)]->CopyValue(text, *scratch)) return false;
    return SetColValue(col, scratch.get(), initiator, notifyInitiator);
}

bool oxdmBufferedFileDataSourceImpl::SetColValue(short col, const oxData* value, unsigned long initiator,
                                                 bool notifyInitiator) {
    if (!ValidCol(col) || value == nullptr) return false;
    const auto c = static_cast<size_t>(col);
    oxdmDSColumnBase& column = *columns_[c];
    if (column.IsReadOnlyOrHidden(true)) return false;
    if (const oxData* current = NewValue(col); current && value->Eq(*current)) return true;
    std::vector<bool> hidden;
    GetHiddenState(hidden);
    ObserverSetRowChanged(0, true);
    const std::unique_ptr<oxData> kept(newValues_[c]->Clone());
    if (!column.CopyValue(*value, *newValues_[c])) return false;
    oxdmDSCellOnFocusRow* cell = CellFor(col);
    if (HandleColEvent(oxdmDataSource::ColBeforeChange, col, cell) != 0) {
        // Vetoed: the former value comes back; the row stays marked changed.
        column.CopyValue(*kept, *newValues_[c]);
        return false;
    }
    SetColumnChanged(col, !newValues_[c]->Eq(*savedValues_[c]));
    DoAutoLookup(col);
    RefreshHidden(hidden);
    HandleColEvent(oxdmDataSource::ColAfterChange, col, cell);
    SendColChanged(col, initiator, notifyInitiator);
    column.CopyValue(*newValues_[c], *oldValues_[c]);
    return true;
}

void oxdmBufferedFileDataSourceImpl::SetRowChanged(bool changed) {
    if (rowChanged_ == changed) return;
    rowChanged_ = changed;
    SendRowState(changed, oxdmRowStateChange::CauseRowEdited, 0, true);
    HandleRowEvent(oxdmDataSource::RowDirtyChanged, nullptr);
}

void oxdmBufferedFileDataSourceImpl::ObserverSetRowChanged(unsigned long initiator, bool notifyInitiator) {
    if (!hasFocus_ || rowChanged_) return;
    rowChanged_ = true;
    SendRowState(true, oxdmRowStateChange::CauseRowEdited, initiator, notifyInitiator);
    HandleRowEvent(oxdmDataSource::RowDirtyChanged, nullptr);
}

void oxdmBufferedFileDataSourceImpl::GetHiddenState(std::vector<bool>& hidden) const {
    hidden.clear();
    for (const oxdmDSColumnBase* column : columns_) hidden.push_back(column->IsHidden(true));
}

void oxdmBufferedFileDataSourceImpl::RefreshHidden(const std::vector<bool>& before) {
    for (size_t col = 0; col < columns_.size() && col < before.size(); ++col) {
        oxdmDSColumnBase& column = *columns_[col];
        if (column.IsHidden(true) == before[col]) continue;
        const auto c = static_cast<short>(col);
        SetColumnChanged(c, true);
        // A column just hidden or shown reads clean on an existing row.
        if (!IsNewRow()) SetAllSets(c, column.Value(true));
        dataSource_->Notify(new mvcColChange(c, dataSource_, oxdmDataSource::DSColReadOnlyChanged, 0, true), false);
        SendColChanged(c, 0, true);
    }
}

void oxdmBufferedFileDataSourceImpl::RefreshReadOnly() {
    for (short col = 0; col < NumColumns(); ++col) {
        dataSource_->Notify(new mvcColChange(col, dataSource_, oxdmDataSource::DSColReadOnlyChanged, 0, true), false);
    }
}

void oxdmBufferedFileDataSourceImpl::DoAutoLookup(short col) {
    std::vector<oxdmQueryNode*> nodes;
    cursorNode_->FindLookupNodes(dataSource_, col, nodes);
    if (nodes.empty()) return;
    if (!focusBookmark_) {
        cursorNode_->Clear(true, IsMultiLevel());
    } else if (!focusBookmark_->GoTo()) {
        return;
    }
    CopyRowToCursor();
    cursorNode_->DoAutoLookup(dataSource_, col, nodes);
    // The looked-up columns now stand in the row.
    CopyCursorIntoNew();
    SendRowChanged(FocusRow());
}

void oxdmBufferedFileDataSourceImpl::CopyCursorIntoNew() {
    for (size_t col = 0; col < columns_.size(); ++col) {
        columns_[col]->CopyValue(columns_[col]->Value(false), *newValues_[col]);
    }
}

void oxdmBufferedFileDataSourceImpl::RefreshColumn(short col) {
    if (!ValidCol(col)) return;
    if (FocusRow() < 0) SetWindowScroll(oxdmDataSource::ScrollToFocus, -1);
    const oxData& value = columns_[static_cast<size_t>(col)]->Value(false);
    if (const short focus = FocusRow(); focus >= 0) {
        windowRows_[static_cast<size_t>(focus)][static_cast<size_t>(col)]->SetVal(value);
    }
    SetAllSets(col, value);
    SendColChanged(col, 0, true);
}

// ---------------------------------------------------------------- changes sent

void oxdmBufferedFileDataSourceImpl::SendColChanged(short col, unsigned long initiator, bool notifyInitiator) {
    dataSource_->Notify(new mvcColChange(col, dataSource_, oxdmDataSource::DSColChanged, initiator, notifyInitiator),
                        false);
}

void oxdmBufferedFileDataSourceImpl::SendRowChanged(short row) {
    dataSource_->Notify(new mvcRowChange(row, dataSource_, oxdmDataSource::DSRowChanged, 0, true), false);
}

void oxdmBufferedFileDataSourceImpl::SendAllChanged(unsigned long initiator, bool notifyInitiator) {
    dataSource_->Notify(new mvcChange(dataSource_, oxdmDataSource::DSAllChanged, initiator, notifyInitiator), false);
}

void oxdmBufferedFileDataSourceImpl::SendRowState(bool dirty, int cause, unsigned long initiator,
                                                  bool notifyInitiator) {
    dataSource_->Notify(new oxdmRowStateChange(static_cast<oxdmRowStateChange::CauseForChange>(cause), dirty,
                                               dataSource_, oxdmDataSource::DSRowStateChanged, initiator,
                                               notifyInitiator),
                        false);
}
