// The row window: filling it by walking the cursor, scrolling, sizing,
// positioning by percentage, requerying and refetching.

#include <algorithm>
#include <cassert>
#include <memory>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/message_box.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/notify/change.h"

namespace {

// Owns a cloned row until it goes.
struct ClonedRow {
    std::vector<oxData*> row;
    ~ClonedRow() {
        for (oxData* value : row) delete value;
    }
};

}  // namespace

void oxdmBufferedFileDataSourceImpl::DeleteBufferRow(short row) {
    assert(row >= 0 && static_cast<size_t>(row) < windowRows_.size());
    for (oxData* value : windowRows_[static_cast<size_t>(row)]) delete value;
    windowRows_.erase(windowRows_.begin() + row);
    windowBookmarks_.erase(windowBookmarks_.begin() + row);
}

void oxdmBufferedFileDataSourceImpl::DeleteBuffer() {
    while (!windowRows_.empty()) DeleteBufferRow(0);
}

short oxdmBufferedFileDataSourceImpl::BufferDown(short rows, bool fromTop) {
    if (rows <= 0) return 0;
    fetchNoMore_ = false;
    bool more = true;
    bool recheckUp = true;
    if (fromTop) {
        recheckUp = false;
        canScrollUp_ = false;
        DeleteBuffer();
        more = CursorFirst(true, false);
    } else {
        ParentToFocus();
    }
    if (!windowRows_.empty()) {
        const std::shared_ptr<oxdmCursorBookmark>& last = windowBookmarks_.back();
        more = last && last->GoTo() && CursorNext(1, true, false) > 0;
    }
    const auto full = [this] { return windowRows_.size() >= static_cast<size_t>(windowSize_); };
    short added = 0;
    while (added < rows && !fetchNoMore_ && more) {
        if (!RowAlreadyBuffered()) {
            if (full()) {
                DeleteBufferRow(0);
                canScrollUp_ = true;
                recheckUp = false;
            }
            windowBookmarks_.emplace_back(cursorNode_->CreateBookmark());
            windowRows_.push_back(CreateRowData());
            CopyRowFromCursor(windowRows_.back());
            ++added;
        }
        if (added < rows) more = CursorNext(1, true, false) > 0;
    }
    if (!more && autoNewRow_ && (windowBookmarks_.empty() || windowBookmarks_.back())) {
        more = true;
        if (added < rows) {
            if (full()) {
                DeleteBufferRow(0);
                canScrollUp_ = true;
                recheckUp = false;
            }
            windowBookmarks_.emplace_back();
            windowRows_.push_back(CreateRowData());
            ++added;
            more = false;
            CopyRowFromNew(windowRows_.back());
        }
    }
    canScrollDown_ = more && full();
    if (recheckUp) canScrollUp_ = TestScrollUp(1) > 0;
    fetchNoMore_ = false;
    return added;
}

short oxdmBufferedFileDataSourceImpl::BufferUp(short rows, bool fromBottom) {
    if (rows <= 0) return 0;
    fetchNoMore_ = false;
    bool more = true;
    bool recheckDown = true;
    short added = 0;
    if (fromBottom) {
        recheckDown = false;
        canScrollDown_ = false;
        DeleteBuffer();
        if (autoNewRow_) {
            windowBookmarks_.emplace_back();
            windowRows_.push_back(CreateRowData());
            ++added;
            CopyRowFromNew(windowRows_.back());
        }
        more = CursorLast(true, false);
    } else {
        ParentToFocus();
        if (!windowRows_.empty()) {
            const std::shared_ptr<oxdmCursorBookmark>& first = windowBookmarks_.front();
            more = first ? first->GoTo() && CursorPrev(1, true, false) > 0 : CursorLast(true, false);
        }
    }
    const auto full = [this] { return windowRows_.size() >= static_cast<size_t>(windowSize_); };
    while (added < rows && !fetchNoMore_ && more) {
        if (!RowAlreadyBuffered()) {
            if (full()) {
                DeleteBufferRow(static_cast<short>(windowRows_.size() - 1));
                canScrollDown_ = true;
                recheckDown = false;
            }
            windowBookmarks_.emplace(windowBookmarks_.begin(), cursorNode_->CreateBookmark());
            windowRows_.insert(windowRows_.begin(), CreateRowData());
            CopyRowFromCursor(windowRows_.front());
            ++added;
        }
        // Stepped even after the last wanted row: can scroll up tells truly
        // whether a record lies above.
        more = CursorPrev(1, true, false) > 0;
    }
    canScrollUp_ = more && full();
    if (recheckDown) canScrollDown_ = TestScrollDown(1) > 0;
    fetchNoMore_ = false;
    return added;
}

short oxdmBufferedFileDataSourceImpl::TestScrollUp(short rows) const {
    if (windowRows_.empty()) return 0;
    oxdmBufferedFileDataSourceImpl& self = Self();
    const std::unique_ptr<oxdmCursorBookmark> back(cursorNode_->CreateBookmark());
    short answer = 0;
    const std::shared_ptr<oxdmCursorBookmark>& first = windowBookmarks_.front();
    if (!first) {
        answer = self.CursorFirst(true, false) ? 1 : 0;
    } else if (first->EqualTo(back.get()) || first->GoTo()) {
        answer = static_cast<short>(self.CursorPrev(rows, true, false));
    }
    back->GoTo();
    return answer;
}

short oxdmBufferedFileDataSourceImpl::TestScrollDown(short rows) const {
    if (windowRows_.empty() || windowRows_.size() < static_cast<size_t>(windowSize_) || !windowBookmarks_.back()) {
        return 0;
    }
    oxdmBufferedFileDataSourceImpl& self = Self();
    const std::unique_ptr<oxdmCursorBookmark> back(cursorNode_->CreateBookmark());
    short answer = 0;
    const std::shared_ptr<oxdmCursorBookmark>& last = windowBookmarks_.back();
    if (last->EqualTo(back.get()) || last->GoTo()) answer = static_cast<short>(self.CursorNext(rows, true, false));
    back->GoTo();
    // The new row can still scroll in.
    if (answer == 0 && autoNewRow_) answer = 1;
    return answer;
}

void oxdmBufferedFileDataSourceImpl::SetWindowSize(short rows) {
    assert(rows >= 0);
    if (cacheSetWindowSize_ && rows == lastSetWindowSize_) return;
    lastSetWindowSize_ = rows;
    windowSize_ = rows;
    const auto size = [this] { return static_cast<short>(windowRows_.size()); };
    if (size() > rows) {
        while (size() > rows) {
            // Keep the focus row: cut below it while it lies above the last row.
            if (FocusRow() < size() - 1) {
                DeleteBufferRow(static_cast<short>(size() - 1));
            } else {
                DeleteBufferRow(0);
            }
        }
        canScrollUp_ = TestScrollUp(1) > 0;
        canScrollDown_ = TestScrollDown(1) > 0;
    } else if (size() < rows) {
        const short missing = static_cast<short>(rows - size());
        const short added = BufferDown(missing, windowRows_.empty());
        if (canScrollUp_ && added < missing) BufferUp(static_cast<short>(missing - added), windowRows_.empty());
    }
}

bool oxdmBufferedFileDataSourceImpl::MoreRowsThanWindowSize() const {
    if (windowRows_.size() < static_cast<size_t>(windowSize_)) return false;
    return canScrollUp_ || canScrollDown_;
}

short oxdmBufferedFileDataSourceImpl::SetWindowScroll(oxdmDataSource::WindowScrollType type, short rows) {
    switch (type) {
        case oxdmDataSource::ScrollTop:
            return BufferDown(windowSize_, true) > 0 ? 1 : 0;
        case oxdmDataSource::ScrollBottom:
            return BufferUp(windowSize_, true) > 0 ? 1 : 0;
        case oxdmDataSource::ScrollUp:
            return canScrollUp_ ? BufferUp(rows, false) : 0;
        case oxdmDataSource::ScrollDown:
            return canScrollDown_ ? BufferDown(rows, false) : 0;
        case oxdmDataSource::ScrollToFocus:
            break;
        default:
            return -1;
    }
    const short focus = FocusRow();
    if (!canScrollUp_ && !canScrollDown_) {
        if (windowSize_ < 2 || focus != -1) return focus;
        ParentToFocus();
        _SetFocus(0, SyncChildrenNow);
        return FocusRow();
    }
    if (focus != -1) {
        if (rows == -1 || rows == focus) return focus;
        if (rows < focus) return static_cast<short>(focus - SetWindowScroll(oxdmDataSource::ScrollDown, focus - rows));
        return static_cast<short>(focus + SetWindowScroll(oxdmDataSource::ScrollUp, rows - focus));
    }
    // The focus row lies outside the window: choose the window row it takes.
    short position = rows;
    if (!focusBookmark_) {
        position = static_cast<short>(windowSize_ - 1);
    } else if (rows == -1) {
        const bool lastIsRecord = !windowRows_.empty() && windowBookmarks_.back();
        if (lastIsRecord) {
            position = focusBookmark_->GreaterThan(windowBookmarks_.back().get()) ? windowSize_ - 1 : 0;
            focusBookmark_->GoTo();
        } else {
            focusBookmark_->GoTo();
            position = WindowScrollPercent() < cursorNode_->GetRelativePosition() ? windowSize_ - 1 : 0;
        }
    }
    if (!focusBookmark_) {
        SetWindowScroll(oxdmDataSource::ScrollBottom, 0);
        return FocusRow();
    }
    DeleteBuffer();
    if (!focusBookmark_->GoTo()) {
        BufferDown(windowSize_, true);
        DoSetFocus(0);
        return FocusRow();
    }
    CursorPrev(position, true, false);
    const short got = BufferDown(windowSize_, false);
    if (got < windowSize_) BufferUp(static_cast<short>(windowSize_ - got), false);
    return FocusRow();
}

double oxdmBufferedFileDataSourceImpl::WindowScrollPercent() const {
    if (!canScrollUp_) return 0.0;
    if (!canScrollDown_) return 1.0;
    double answer = 0.5;
    const std::unique_ptr<oxdmCursorBookmark> back(cursorNode_->CreateBookmark());
    if (!windowRows_.empty() && windowBookmarks_.front() && windowBookmarks_.front()->GoTo()) {
        answer = std::clamp(cursorNode_->GetRelativePosition(), 0.01, 0.99);
    }
    back->GoTo();
    return answer;
}

double oxdmBufferedFileDataSourceImpl::SetWindowScrollPercent(double percent) {
    if (percent == 0.0 || percent == 1.0) {
        SetWindowScroll(percent == 0.0 ? oxdmDataSource::ScrollTop : oxdmDataSource::ScrollBottom, 0);
        return WindowScrollPercent();
    }
    if (cursorNode_->SetRelativePosition(percent) != 0) {
        SetWindowScroll(oxdmDataSource::ScrollTop, 0);
    } else {
        DeleteBuffer();
        const short got = BufferDown(windowSize_, false);
        if (got < windowSize_) BufferUp(static_cast<short>(windowSize_ - got), false);
    }
    if (windowRows_.size() < static_cast<size_t>(windowSize_)) {
        oxdmMessageBox("Couldn't fill buffer", "Warning", oxdmBox::IconInformation);
    }
    return WindowScrollPercent();
}

void oxdmBufferedFileDataSourceImpl::ReQuery() {
    lastCancelAnswer_ = oxdmDataSource::QueryContinue;
    lastSetWindowSize_ = -1;
    const int fromBottom = HandleRowEvent(oxdmDataSource::BeforeReQuery, nullptr) == 1;
    _ClearFocus(NoChildSync);
    SetWindowScroll(fromBottom ? oxdmDataSource::ScrollBottom : oxdmDataSource::ScrollTop, 0);
    short target = -1;
    if (!windowRows_.empty()) target = fromBottom ? static_cast<short>(windowRows_.size() - 1) : 0;
    if (target == -1) {
        _ClearFocus(SyncChildrenNow);
    } else if (IsNewRow(target)) {
        _MoveToNewRow(SyncChildrenNow);
    } else {
        ParentToFocus();
        _MoveToRow(target, SyncChildrenNow);
    }
    SendAllChanged(0, true);
    HandleRowEvent(oxdmDataSource::FocusRowMoved, nullptr);
    lastCancelAnswer_ = oxdmDataSource::QueryContinue;
}

void oxdmBufferedFileDataSourceImpl::Clear() {
    if (!hasFocus_) {
        SetWindowScroll(oxdmDataSource::ScrollTop, 0);
        _SetFocus(0, SyncChildrenNow);
    }
    for (size_t col = 0; col < columns_.size(); ++col) columns_[col]->CopyValue(CString(), *newValues_[col]);
    ClearFocusRowStateStack();
}

// ---------------------------------------------------------------- refetching

void oxdmBufferedFileDataSourceImpl::_RefetchVisibleRows(bool notify, unsigned long initiator, bool notifyInitiator,
                                                         bool children) {
    lastSetWindowSize_ = -1;
    const short top = FocusRow();
    if (top == -1) {
        bool fromTop = true;
        bool more = true;
        if (!windowRows_.empty() && windowBookmarks_.front() && windowBookmarks_.front()->GoTo()) {
            fromTop = false;
            while (more && HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0) more = cursorNode_->Next(true);
        }
        DeleteBuffer();
        if (more) BufferDown(windowSize_, fromTop);
    } else {
        // An edited focus row keeps its edits in the window.
        ClonedRow edits;
        if (rowChanged_) {
            for (const oxData* value : windowRows_[static_cast<size_t>(top)]) edits.row.push_back(value->Clone());
        }
        DeleteBuffer();
        if (!rowChanged_) ClearFocusRowStateStack();
        _ClearFileBuffers(cursorNode_);
        if (!focusBookmark_) {
            rowChanged_ = false;
            SetWindowScroll(oxdmDataSource::ScrollBottom, 0);
        } else if (!focusBookmark_->GoTo()) {
            BufferDown(windowSize_, true);
            _SetFocus(0, SyncChildrenNow);
        } else {
            if (edits.row.empty()) {
                while (HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0 && cursorNode_->Next(true)) {
                }
                TakeCursorIntoSets();
                focusBookmark_.reset(cursorNode_->CreateBookmark());
            }
            SyncChildren();
            GoToFocusRecord();
            if (CursorPrev(top, true, false) < top) CursorFirst(true, false);
            const short got = BufferDown(windowSize_, false);
            if (got < windowSize_) BufferUp(static_cast<short>(windowSize_ - got), false);
            const short focus = FocusRow();
            if (!edits.row.empty() && focus >= 0) CopyData(edits.row, windowRows_[static_cast<size_t>(focus)]);
        }
    }
    if (notify) SendAllChanged(initiator, notifyInitiator);
    if (children) {
        for (oxdmBufferedFileDataSource* child : childBuffers_) {
            child->impl_->_RefetchVisibleRows(notify, initiator, notifyInitiator, true);
        }
    }
}

void oxdmBufferedFileDataSourceImpl::_RefetchRows(bool notify, unsigned long initiator, bool notifyInitiator) {
    _ClearFileBuffers(cursorNode_);
    const short focus = FocusRow();
    // Sizes are read anew: a refetch of the focus row may rebuild the window.
    for (size_t row = 0; row < windowRows_.size(); ++row) {
        if (static_cast<short>(row) == focus && focusBookmark_) {
            RefetchRow();
            continue;
        }
        const std::shared_ptr<oxdmCursorBookmark> bookmark = windowBookmarks_[row];
        if (!bookmark || !bookmark->GoTo()) continue;
        while (HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0 && cursorNode_->Next(true)) {
        }
        if (row < windowRows_.size()) CopyRowFromCursor(windowRows_[row]);
    }
    if (notify) SendAllChanged(initiator, notifyInitiator);
}

void oxdmBufferedFileDataSourceImpl::RefetchRow() {
    if (!focusBookmark_) {
        cursorNode_->Clear(true, IsMultiLevel());
        CopyRowToCursor();
        cursorNode_->StuffSourceKey(true, false);
        cursorNode_->GE(false);
    } else if (!focusBookmark_->GoTo()) {
        _RefetchVisibleRows(true, 0, true, false);
        return;
    }
    while (HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0 && cursorNode_->Next(true)) {
    }
    TakeCursorIntoSets();
    ClearFocusRowStateStack();
    if (focusBookmark_) focusBookmark_.reset(cursorNode_->CreateBookmark());
    const short focus = FocusRow();
    if (focus >= 0) {
        CopyRowFromCursor(windowRows_[static_cast<size_t>(focus)]);
        if (windowBookmarks_[static_cast<size_t>(focus)]) {
            windowBookmarks_[static_cast<size_t>(focus)].reset(cursorNode_->CreateBookmark());
        }
    }
    SyncChildren();
    if (focus >= 0) SendRowChanged(focus);
    SendRowState(false, oxdmRowStateChange::CauseRowRefetched, 0, true);
}

// ---------------------------------------------------------------- values

const oxData* oxdmBufferedFileDataSourceImpl::CellValue(short row, short col) const {
    if (windowRows_.empty() || !ValidCol(col) || row < 0 || static_cast<size_t>(row) >= windowRows_.size()) {
        return nullptr;
    }
    if (row == FocusRow()) return ColValue(col);
    return windowRows_[static_cast<size_t>(row)][static_cast<size_t>(col)];
}

const oxData* oxdmBufferedFileDataSourceImpl::ColValue(short col) const {
    if (!hasFocus_ || windowRows_.empty() || !ValidCol(col)) return nullptr;
    const oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    if (column.IsHidden(true)) return &column.ValueWhenHidden();
    return newValues_[static_cast<size_t>(col)].get();
}

CString oxdmBufferedFileDataSourceImpl::CellValueAsString(short row, short col) {
    if (!ValidCol(col)) return CString();
    const oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    if (IsNewRow(row) && row != FocusRow() && (column.Hide() || column.AutoHide())) {
        return column.ValueAsString(column.ValueWhenHidden());
    }
    const oxData* value = CellValue(row, col);
    return value ? column.ValueAsString(*value) : CString();
}
