// oxdmSTLDataSourceImpl<C>: sorting and finding. Included by
// stl_data_source_impl.cpp only.

#include "insertion_order_sort.h"

template <class C>
void oxdmSTLDataSourceImpl<C>::SetSortFunction(short col, const SortFunction& less) {
    if (!ValidCol(col)) return;
    sortFunctions_[static_cast<size_t>(col)] = less.IsEmpty() ? defaultCompare_ : less;
}

// The order of a straight insertion sort over the stored rows (rows of equal
// keys end up reversed), computed by a merge; the new row stays last.
template <class C>
void oxdmSTLDataSourceImpl<C>::Sort(short col, bool ascending) {
    if (!ValidCol(col)) return;
    sorted_ = true;
    sortCol_ = col;
    sortAscending_ = ascending;
    const long count = TotalRows() - (autoNewRow_ && !rows_.empty() ? 1 : 0);
    sortIndex_.resize(static_cast<size_t>(count));
    for (long i = 0; i < count; ++i) sortIndex_[static_cast<size_t>(i)] = i;
    const SortFunction less = sortFunctions_[static_cast<size_t>(col)];
    const size_t c = static_cast<size_t>(col);
    oxdm_memory::InsertionOrderSort(sortIndex_, [&](long a, long b) {
        const Cell& cellA = rows_[static_cast<size_t>(a)][c];
        const Cell& cellB = rows_[static_cast<size_t>(b)][c];
        return ascending ? less(cellA, cellB) : less(cellB, cellA);
    });
    if (count < TotalRows()) sortIndex_.push_back(count);
    reverseIndex_.assign(sortIndex_.size(), 0);
    for (size_t i = 0; i < sortIndex_.size(); ++i) reverseIndex_[static_cast<size_t>(sortIndex_[i])] = static_cast<long>(i);
    if (HasFocusRow()) {
        _ReloadNewOldData();
        Send(new mvcChange(owner_, oxdmDataSource::DSAllChanged, 0, true));
    }
}

namespace oxdm_memory {

// One column of a find: numerically when both texts are all digits, by
// Compare otherwise. Answers <0, 0, >0.
inline int FindCompare(const CString& cell, const CString& wanted) {
    if (AllDigits(cell) && AllDigits(wanted)) {
        const int a = TextToInt(cell);
        const int b = TextToInt(wanted);
        return a < b ? -1 : (a > b ? 1 : 0);
    }
    return cell.Compare(wanted);
}

}  // namespace oxdm_memory

// Every column, over the shorter of the row and the find values, must pass
// on its own: this is no compound key order.
template <class C>
bool oxdmSTLDataSourceImpl<C>::_RowMatchesFind(const Row& row, FindMode mode) const {
    const size_t cols = std::min(row.size(), findRow_.size());
    for (size_t c = 0; c < cols; ++c) {
        const int order = oxdm_memory::FindCompare(Traits::Text(row[c]), Traits::Text(findRow_[c]));
        if (mode == FindMode::Greater ? order <= 0 : order < 0) return false;
    }
    return true;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::_RowEqualsFind(const Row& row) const {
    const size_t cols = std::min(row.size(), findRow_.size());
    for (size_t c = 0; c < cols; ++c) {
        if (oxdm_memory::FindCompare(Traits::Text(row[c]), Traits::Text(findRow_[c])) != 0) return false;
    }
    return true;
}

template <class C>
void oxdmSTLDataSourceImpl<C>::_FocusFound(long absolute) {
    focusRow_ = absolute;
    SetWindowScroll(oxdmDataSource::ScrollToFocus, 0);
    _ReloadNewOldData();
    Send(new mvcChange(owner_, oxdmDataSource::DSAllChanged, 0, true));
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::_FindCompare(FindMode mode) {
    for (long position = 0; position < TotalRows(); ++position) {
        const long absolute = GetAbsoluteRow(position);
        if (!_RowMatchesFind(rows_[static_cast<size_t>(absolute)], mode)) continue;
        _FocusFound(absolute);
        return true;
    }
    return false;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::FindGT() {
    return _FindCompare(FindMode::Greater);
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::FindGE() {
    return _FindCompare(FindMode::GreaterEqual);
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::FindSubstr(short col, const CString& text) {
    if (!ValidCol(col)) return false;
    const int length = text.GetLength();
    for (long position = 0; position < TotalRows(); ++position) {
        const long absolute = GetAbsoluteRow(position);
        const Row& row = rows_[static_cast<size_t>(absolute)];
        if (!_RowEqualsFind(row)) continue;
        if (Traits::Text(row[static_cast<size_t>(col)]).Left(length).CompareNoCase(text) != 0) continue;
        _FocusFound(absolute);
        return true;
    }
    return false;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::FindRow(bool fromEnd,
                                       CBFunctor1wRet<oxdmDataSource*, oxdmDataSource::CompareRowResult> compare,
                                       bool stayOnFail, oxdmDataSource::Direction direction) {
    if (rows_.empty() || compare.IsEmpty()) return false;
    const long savedTop = windowTop_;
    const long savedFocus = focusRow_;
    const bool forward = direction == oxdmDataSource::DirectionForward;
    if (fromEnd) {
        if (forward) {
            MoveToTop(0, true, false);
        } else {
            MoveToBottom(0, true, false);
        }
    }
    oxdmDataSource::CompareRowResult result = oxdmDataSource::CompareNoMatch;
    for (;;) {
        result = compare(owner_);
        if (result != oxdmDataSource::CompareNoMatch) break;
        const short moved = forward ? MoveDown(1, 0, true, false) : MoveUp(1, 0, true);
        if (moved == 0) break;
    }
    if (result == oxdmDataSource::CompareMatch) return true;
    if (result == oxdmDataSource::CompareAbort || !stayOnFail) {
        windowTop_ = std::clamp(savedTop, 0L, std::max(0L, TotalRows() - 1));
        SetFocusAbsolute(GetRelativeRow(savedFocus), 0, true);
        _UpdateScrollInfo();
    }
    return false;
}
