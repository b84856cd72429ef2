// Finding rows in the order of the cursor's current index: seeks on the find
// values (FindGE, FindGT), the incremental search of a list (FindSubstr),
// walks with a test (FindRow), and the changes of order and of filter that
// requery the buffer.

#include <cassert>
#include <cctype>
#include <memory>

#include "oxdm/common/dictionary/field_codes.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/datasource/bookmark.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/buffered_impl.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/record/column_def.h"

namespace {

CString Upper(CString text) { return text.MakeUpper(); }

bool StartsWith(const CString& text, const CString& start) { return text.Left(start.GetLength()) == start; }

// A seek in a child stands on its parent's key, but the record layer's
// GE and GT run on past the parent's last related row into the next
// parent's rows: a row whose join key no longer matches the parent's is not
// one of the buffer's, and the seek found nothing.
bool InParentRow(const oxdmCursorNode* node) {
    const auto* record = dynamic_cast<const oxdmOXIOCursorNode*>(node);
    return record == nullptr || record->IsKeyOK();
}

bool DigitsOnly(const CString& text) {
    for (int i = 0; i < text.GetLength(); ++i) {
        if (!std::isdigit(static_cast<unsigned char>(text[i]))) return false;
    }
    return true;
}

}  // namespace

// ---------------------------------------------------------------- find values

bool oxdmBufferedFileDataSourceImpl::SetFindValue(short col, const CString& text) {
    if (!ValidCol(col)) return false;
    const oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    CString taken = text;
    if (!text.IsEmpty()) {
        // The user may type the start of a choice: an exact choice wins,
        // otherwise the first choice that starts with the text.
        std::vector<CString> choices;
        column.Choices(choices);
        if (choices.size() > 1) {
            const CString wanted = Upper(text);
            bool prefixSeen = false;
            for (const CString& choice : choices) {
                const CString upper = Upper(choice);
                if (upper == wanted) {
                    taken = choice;
                    break;
                }
                if (!prefixSeen && StartsWith(upper, wanted)) {
                    taken = choice;
                    prefixSeen = true;
                }
            }
        }
    }
    return column.CopyValue(taken, *findValues_[static_cast<size_t>(col)]);
}

void oxdmBufferedFileDataSourceImpl::CopyKeyColumnsToFindValues() {
    for (size_t col = 0; col < columns_.size(); ++col) {
        const oxdmColumnDef* def = columns_[col]->OXColumn();
        if (def != nullptr && def->Key()) columns_[col]->CopyValue(*newValues_[col], *findValues_[col]);
    }
}

bool oxdmBufferedFileDataSourceImpl::CopyFindValuesToCursor() {
    for (size_t col = 0; col < columns_.size(); ++col) {
        if (!columns_[col]->SetValue(*findValues_[col])) return false;
    }
    return true;
}

short oxdmBufferedFileDataSourceImpl::ColumnForDef(const oxdmColumnDef& def) const {
    for (size_t col = 0; col < columns_.size(); ++col) {
        const oxdmColumnDef* own = columns_[col]->OXColumn();
        if (own == &def || (own != nullptr && own->Table() == def.Table() && own->Name() == def.Name())) {
            return static_cast<short>(col);
        }
    }
    return -1;
}

bool oxdmBufferedFileDataSourceImpl::CanDoFastFind(short col) const {
    if (!ValidCol(col)) return false;
    const oxdmColumnDef* def = columns_[static_cast<size_t>(col)]->OXColumn();
    if (def == nullptr) return false;
    const short type = def->Type();
    if (type == 3 || type == 7 || type == 8 || type == 9) return false;
    // Every sort column before this one must have a find value to seek on.
    for (const oxdmColumnDef* sort : cursorNode_->SortColumns()) {
        if (ColumnForDef(*sort) == col) return true;
        const short earlier = ColumnForDef(*sort);
        if (earlier < 0) return false;
        if (!allowNullsInFastFind_ && findValues_[static_cast<size_t>(earlier)]->IsNull()) return false;
    }
    return false;
}

// ---------------------------------------------------------------- seeks

bool oxdmBufferedFileDataSourceImpl::SeekFindValues(bool greaterOrEqual, bool& moved) {
    moved = false;
    cursorNode_->Clear(true, false);
    if (greaterOrEqual && parentBuffer_ != nullptr) {
        // A find in a child stays within its parent's row.
        if (!parentBuffer_->MoveCursorToFocus()) return false;
        cursorNode_->StuffSourceKey(false, false);
    }
    if (CopyFindValuesToCursor() && (greaterOrEqual ? CursorGE(true, false) : CursorGT(true, false)) &&
        InParentRow(cursorNode_)) {
        _MoveToCursor(SyncChildrenNow);
        moved = true;
        return true;
    }
    moved = _MoveToBottom(false);
    return false;
}

bool oxdmBufferedFileDataSourceImpl::FindAndShow(bool greaterOrEqual) {
    bool moved = false;
    const bool found = SeekFindValues(greaterOrEqual, moved);
    if (moved) {
        SetWindowScroll(oxdmDataSource::ScrollToFocus, 0);
        MoveCursorToFocus();
        SendAllChanged(0, true);
        SendFocusMoved(0, true);
    }
    return found;
}

bool oxdmBufferedFileDataSourceImpl::FindGE() { return FindAndShow(true); }

bool oxdmBufferedFileDataSourceImpl::FindGT() { return FindAndShow(false); }

bool oxdmBufferedFileDataSourceImpl::FindGE(short position) {
    bool moved = false;
    const bool found = SeekFindValues(true, moved);
    if (moved) {
        SetWindowScroll(oxdmDataSource::ScrollToFocus, position);
        MoveCursorToFocus();
        RefetchVisibleRows(0, true, false);
        HandleRowEvent(oxdmDataSource::FocusRowMoved, nullptr);
    }
    return found;
}

// ---------------------------------------------------------------- walks

bool oxdmBufferedFileDataSourceImpl::FindRow(bool fromEnd, const CompareRow& compare, bool stayOnFail,
                                             oxdmDataSource::Direction direction) {
    if (!compare) return false;
    const bool forward = direction == oxdmDataSource::DirectionForward;
    std::unique_ptr<oxdmDSBookmark> start(GetFocusRowBookmark());
    bool done = false;
    if (fromEnd) done = forward ? !_MoveToTop(false) : !_MoveToBottom(false);
    int result = oxdmDataSource::CompareNoMatch;
    while (result == oxdmDataSource::CompareNoMatch && !done) {
        result = compare(dataSource_);
        if (result == oxdmDataSource::CompareNoMatch) done = (forward ? _MoveDown(1, false) : _MoveUp(1)) == 0;
    }
    if (result == oxdmDataSource::CompareAbort || (done && !stayOnFail)) {
        if (!start->GotoFirst()) _MoveToTop(false);
    } else {
        SendFocusMoved(0, true);
    }
    return result == oxdmDataSource::CompareMatch;
}

// ---------------------------------------------------------------- the incremental search

bool oxdmBufferedFileDataSourceImpl::FindSubstr(short col, const CString& text) {
    if (!ValidCol(col)) return false;
    const oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    std::unique_ptr<oxData> saved(findValues_[static_cast<size_t>(col)]->Clone());
    std::unique_ptr<oxdmDSBookmark> focus(hasFocus_ ? GetFocusRowBookmark() : nullptr);
    std::unique_ptr<oxdmDSBookmark> top(HasData() ? GetBookmark(0) : nullptr);

    const oxdmColumnDef* def = column.OXColumn();
    const bool formatted = def != nullptr && def->FldDef().formatted != 0;
    int tries = 1;
    char fill = ' ';
    if (formatted) {
        // A code field is zero-filled.
        tries = def->Length() - text.GetLength();
        fill = '0';
    }
    std::unique_ptr<oxData> probe(saved->Clone());
    column.CopyValue(text, *probe);
    // Only digits may be padded.
    if (!formatted && !DigitsOnly(column.ValueAsString(*probe))) tries = 0;

    bool found = _ImplBestFit(col, text, fill, tries);
    if (!found && tries != 0 && formatted && def->FldDef().section == 0 &&
        (def->Code() == 0 || xk_multi_section(def->Code()) == 0)) {
        found = _ImplBestFit(col, text, ' ', tries);
    }
    if (found) {
        SendFocusMoved(0, true);
    } else {
        if (top) {
            GoToBookmark(*top, false);
            SetWindowScroll(oxdmDataSource::ScrollToFocus, 0);
        }
        if (focus) {
            GoToBookmark(*focus, false);
        } else {
            _SetFocus(-1, SyncChildrenNow);
        }
    }
    SetFindValue(col, saved.get());
    return found;
}

bool oxdmBufferedFileDataSourceImpl::_ImplBestFit(short col, const CString& text, char fill, int tries) {
    const oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    CString wanted = Upper(text);
    std::unique_ptr<oxData> probe(findValues_[static_cast<size_t>(col)]->Clone());
    column.CopyValue(text, *probe);
    const CString shown = Upper(column.ValueAsString(*probe));
    auto hits = [&] { return hasFocus_ && StartsWith(Upper(ObserverNewValueAsString(col)), shown); };

    for (; tries >= 0; --tries) {
        SetFindValue(col, probe.get());
        cursorNode_->Clear(true, false);
        CopyFindValuesToCursor();
        if (parentBuffer_ != nullptr && parentBuffer_->MoveCursorToFocus()) cursorNode_->StuffSourceKey(false, false);
        // A seek that lands nowhere is a miss: the focus left over from
        // before proves nothing.
        bool hit = CursorGE(false, false) && InParentRow(cursorNode_);
        if (hit) {
            _MoveToCursor(SyncChildrenNow);
            hit = hits();
        }
        // The filter has its say over a hit.
        while (hit && HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0) {
            if (!cursorNode_->Next(false)) return false;
            _MoveToCursor(SyncChildrenNow);
            hit = hits();
        }
        if (hit) return true;
        wanted += fill;
        column.CopyValue(wanted, *probe);
    }
    return false;
}

// ---------------------------------------------------------------- order and filter

void oxdmBufferedFileDataSourceImpl::SetFilter(const oxdmFilter& filter) {
    cursorNode_->SetFilter(filter);
    ReQuery();
}

void oxdmBufferedFileDataSourceImpl::SetIndex(short index) {
    cursorNode_->SetIndex(index);
    ReQuery();
}

void oxdmBufferedFileDataSourceImpl::AttachRange(short handle) {
    cursorNode_->AttachRange(handle);
    ReQuery();
}

void oxdmBufferedFileDataSourceImpl::DetachRange() {
    cursorNode_->DetachRange();
    ReQuery();
}

void oxdmBufferedFileDataSourceImpl::AttachCondition(short handle) {
    cursorNode_->AttachCondition(handle);
    ReQuery();
}

void oxdmBufferedFileDataSourceImpl::DetachCondition() {
    cursorNode_->DetachCondition();
    ReQuery();
}
