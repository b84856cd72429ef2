// oxdmSTLDataSourceImpl<C>: the focus row and its edit buffers: moving,
// editing, saving, reverting and deleting. Included by
// stl_data_source_impl.cpp only.

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/message_box.h"
#include "oxdm/notify/change_list.h"

// Moves the focus to a display position without telling anyone but the
// observers of the prefilled cells (when notify). Unsaved edits are dropped.
template <class C>
void oxdmSTLDataSourceImpl<C>::_SetFocusAbsolute(long relative, bool notify) {
    if (relative == -1) {
        focusRow_ = -1;
        rowChanged_ = false;
        return;
    }
    const long absolute = GetAbsoluteRow(relative);
    if (absolute == -1) return;  // no such row: the focus stays where it is
    focusRow_ = absolute;
    mvcChangeList changes;
    const bool doPrefill = relative >= 1 && IsNewRow();
    for (Cell& cell : newRow_) Traits::Free(cell);
    for (Cell& cell : oldRow_) Traits::Free(cell);
    Row& row = rows_[static_cast<size_t>(focusRow_)];
    for (short col = 0; col < numColumns_; ++col) {
        const size_t c = static_cast<size_t>(col);
        if (!doPrefill) {
            const Cell& source = IsNewRow() ? defaults_[c] : row[c];
            newRow_[c] = Traits::Copy(source);
            oldRow_[c] = Traits::Copy(source);
            continue;
        }
        if (!prefill_[c]) continue;
        const Cell above = rows_[static_cast<size_t>(GetAbsoluteRow(relative - 1))][c];
        newRow_[c] = Traits::Copy(above);
        oldRow_[c] = Traits::Copy(above);
        Traits::Free(row[c]);
        row[c] = Traits::Copy(above);
        if (notify) changes.push_back(new mvcColChange(col, owner_, oxdmDataSource::DSColChanged, 0, true));
    }
    if (notify) changes.Notify(false);
    rowChanged_ = false;
}

// The edit buffers take the focus row again: its cells, or the defaults on
// the new row.
template <class C>
void oxdmSTLDataSourceImpl<C>::_ReloadNewOldData() {
    if (!HasFocusRow()) return;
    const Row& source = IsNewRow() ? defaults_ : rows_[static_cast<size_t>(focusRow_)];
    for (short col = 0; col < numColumns_; ++col) {
        const size_t c = static_cast<size_t>(col);
        Traits::Free(newRow_[c]);
        Traits::Free(oldRow_[c]);
        newRow_[c] = Traits::Copy(source[c]);
        oldRow_[c] = Traits::Copy(source[c]);
    }
}

template <class C>
void oxdmSTLDataSourceImpl<C>::SetFocusAbsolute(long relative, unsigned long initiator, bool notifyInitiator) {
    _SetFocusAbsolute(relative, true);
    Send(new mvcChange(owner_, oxdmDataSource::DSFocusChanged, initiator, notifyInitiator));
    HandleRowEvent(oxdmDataSource::FocusRowMoved, nullptr);
}

template <class C>
void oxdmSTLDataSourceImpl<C>::DoSetFocus(short clientRow) {
    const long last = TotalRows() - 1 - windowTop_;
    long row = clientRow > last ? last : clientRow;
    if (row < -1) row = -1;
    _SetFocusAbsolute(row == -1 ? -1 : row + windowTop_, true);
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::SetNewValue(short col, const CString& text) {
    if (!ValidCol(col)) return false;
    Cell& cell = newRow_[static_cast<size_t>(col)];
    if (Traits::Text(cell).Compare(text) == 0) return true;
    if (!Traits::SetText(cell, text)) return false;
    Send(new mvcColChange(col, owner_, oxdmDataSource::DSColChanged, 0, true));
    AssignRow(oldRow_, newRow_);
    return true;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::ObserverSetNewValue(short col, const CString& text, unsigned long initiator,
                                                   bool notifyInitiator) {
    if (!ValidCol(col) || readOnly_[static_cast<size_t>(col)]) return false;
    if (Traits::Text(newRow_[static_cast<size_t>(col)]).Compare(text) == 0) return true;
    ObserverSetRowChanged(0, true);
    Cell former = Traits::Copy(newRow_[static_cast<size_t>(col)]);
    if (!Traits::SetText(newRow_[static_cast<size_t>(col)], text)) {
        Traits::Free(former);
        return false;
    }
    if (HandleColEvent(oxdmDataSource::ColBeforeChange, col, nullptr) != 0) {
        Traits::Free(newRow_[static_cast<size_t>(col)]);
        newRow_[static_cast<size_t>(col)] = former;
        return false;
    }
    Traits::Free(former);
    HandleColEvent(oxdmDataSource::ColAfterChange, col, nullptr);
    Send(new mvcColChange(col, owner_, oxdmDataSource::DSColChanged, initiator, notifyInitiator));
    return true;
}

template <class C>
void oxdmSTLDataSourceImpl<C>::SetRowChanged(bool changed) {
    if (rowChanged_ == changed) return;
    rowChanged_ = changed;
    HandleRowEvent(oxdmDataSource::RowDirtyChanged, nullptr);
    Send(new oxdmRowStateChange(oxdmRowStateChange::CauseRowEdited, changed, owner_,
                                oxdmDataSource::DSRowStateChanged, 0, true));
}

template <class C>
void oxdmSTLDataSourceImpl<C>::ObserverSetRowChanged(unsigned long initiator, bool notifyInitiator) {
    if (rowChanged_) return;
    rowChanged_ = true;
    HandleRowEvent(oxdmDataSource::RowDirtyChanged, nullptr);
    Send(new oxdmRowStateChange(oxdmRowStateChange::CauseRowEdited, true, owner_, oxdmDataSource::DSRowStateChanged,
                                initiator, notifyInitiator));
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::IsColumnChanged(short col) const {
    if (!ValidCol(col)) return false;
    const size_t c = static_cast<size_t>(col);
    return Traits::Text(newRow_[c]).Compare(Traits::Text(oldRow_[c])) != 0;
}

template <class C>
void oxdmSTLDataSourceImpl<C>::SetDefaultValue(short col, const CString& text) {
    if (!ValidCol(col)) return;
    const size_t c = static_cast<size_t>(col);
    if (!Traits::SetText(defaults_[c], text)) return;
    if (!IsNewRow() || rowChanged_) return;
    Traits::Free(newRow_[c]);
    Traits::Free(oldRow_[c]);
    newRow_[c] = Traits::Copy(defaults_[c]);
    oldRow_[c] = Traits::Copy(defaults_[c]);
    Send(new mvcColChange(col, owner_, oxdmDataSource::DSColChanged, 0, true));
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::SetFindValue(short col, const CString& text) {
    return ValidCol(col) && Traits::SetText(findRow_[static_cast<size_t>(col)], text);
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::ValidateColumn(short col) {
    if (!ValidCol(col)) return false;
    if (HandleColEvent(oxdmDataSource::ColValidate, col, nullptr) == 0) return true;
    Send(new mvcColChange(col, owner_, oxdmDataSource::DSColInvalid, 0, true));
    return false;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::ValidateColumns(bool changedOnly) {
    for (short col = 0; col < numColumns_; ++col) {
        if (changedOnly && !IsColumnChanged(col)) continue;
        if (!ValidateColumn(col)) return false;
    }
    return true;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::ValidateRow(unsigned long initiator, bool notifyInitiator) {
    if (HandleRowEvent(oxdmDataSource::RowBeforeValidate, nullptr) != 0) return false;
    if (!rowChanged_) return true;
    if (!HasFocusRow()) return false;
    const int answer = HandleRowEvent(oxdmDataSource::RowValidate, nullptr);
    if (answer == oxdmDataSource::RevertInstead) {
        RevertRow(0, true);
        return true;
    }
    if (answer != 0) return false;
    if (!ValidateColumns(false)) return false;
    const bool wasNewRow = IsNewRow();
    AssignRow(rows_[static_cast<size_t>(focusRow_)], newRow_);
    AssignRow(oldRow_, newRow_);
    rowChanged_ = false;
    if (wasNewRow) {
        for (short col = 0; col < numColumns_; ++col) {
            const size_t c = static_cast<size_t>(col);
            if (!prefill_[c]) continue;
            Traits::Free(savedRow_[c]);
            savedRow_[c] = Traits::Copy(rows_[static_cast<size_t>(focusRow_)][c]);
        }
    }
    HandleRowEvent(oxdmDataSource::RowAfterWrite, nullptr);
    Send(new oxdmRowStateChange(oxdmRowStateChange::CauseRowValidated, false, owner_,
                                oxdmDataSource::DSRowStateChanged, initiator, notifyInitiator));
    if (wasNewRow) _AppendNewRow();
    return true;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::RevertRow(unsigned long initiator, bool notifyInitiator) {
    if (!HasFocusRow()) return false;
    HandleRowEvent(oxdmDataSource::RowBeforeRevert, nullptr);  // its answer does not count
    _SetFocusAbsolute(GetRelativeRow(focusRow_), false);
    if (IsNewRow()) {
        Send(new mvcChange(owner_, oxdmDataSource::DSAllChanged, 0, true));
    } else {
        const short client = static_cast<short>(GetClientRowFromAbs(focusRow_));
        Send(new mvcRowChange(client, owner_, oxdmDataSource::DSRowChanged, initiator, notifyInitiator));
        Send(new oxdmRowStateChange(oxdmRowStateChange::CauseRowReverted, false, owner_,
                                    oxdmDataSource::DSRowStateChanged, initiator, notifyInitiator));
    }
    HandleRowEvent(oxdmDataSource::RowAfterRevert, nullptr);
    return true;
}

template <class C>
void oxdmSTLDataSourceImpl<C>::_EraseStorageRow(long absolute) {
    const size_t a = static_cast<size_t>(absolute);
    FreeRow(rows_[a]);
    rows_.erase(rows_.begin() + absolute);
    if (!sorted_) return;
    const long position = reverseIndex_[a];
    sortIndex_.erase(sortIndex_.begin() + position);
    reverseIndex_.erase(reverseIndex_.begin() + absolute);
    for (long& entry : sortIndex_) {
        if (entry > absolute) --entry;
    }
    for (long& entry : reverseIndex_) {
        if (entry > position) --entry;
    }
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::DeleteRow(unsigned long initiator, bool notifyInitiator) {
    if (!HasFocusRow()) return false;
    int answer = HandleRowEvent(oxdmDataSource::RowBeforeDelete, nullptr);
    if (IsSilentDelete()) answer = oxdmDataSource::DeleteNoPrompt;
    if (answer == 0) {
        const CString question = "Delete this " + rowDescription_ + "?";
        if (oxdmTaskMessageBox(nullptr, question, oxdmBox::YesNo | oxdmBox::IconQuestion) != oxdmBox::IdYes) {
            return false;
        }
    } else if (answer != oxdmDataSource::DeleteNoPrompt) {
        return false;
    }
    Send(new mvcChange(owner_, oxdmDataSource::DSRowDeleted, initiator, notifyInitiator));
    if (!HasFocusRow()) return false;  // an observer took the focus away
    if (IsNewRow()) {
        RevertRow(0, true);
    } else {
        const long position = GetRelativeRow(focusRow_);
        _EraseStorageRow(focusRow_);
        if (windowTop_ != 0 && windowTop_ + windowSize_ > TotalRows()) --windowTop_;
        const long target = position < TotalRows() ? position : TotalRows() - 1;
        focusRow_ = GetAbsoluteRow(target);
        _ReloadNewOldData();
        rowChanged_ = false;
        _UpdateScrollInfo();
        HandleRowEvent(oxdmDataSource::RowAfterDelete, nullptr);
        Send(new mvcChange(owner_, oxdmDataSource::DSAllChanged, 0, true));
    }
    HandleRowEvent(oxdmDataSource::FocusRowMoved, nullptr);
    return true;
}
