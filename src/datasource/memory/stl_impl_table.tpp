// oxdmSTLDataSourceImpl<C>: construction, columns, addressing and the
// operations on whole rows. Included by stl_data_source_impl.cpp only.

#include <algorithm>

#include "oxdm/datasource/focus_row_mgr.h"
#include "oxdm/notify/callback_info.h"
#include "oxdm/notify/callback_maps.h"
#include "oxdm/notify/callback_mgr.h"
#include "oxdm/notify/change.h"

template <class C>
oxdmSTLDataSourceImpl<C>::oxdmSTLDataSourceImpl(oxdmDataSource* owner, const C& rows,
                                                const std::vector<CString>& labels, const Row& defaults,
                                                const CString& rowDescription, bool autoNewRow,
                                                SortFunction defaultCompare)
    : oxdmDataSourceImplBase(owner),
      labels_(labels),
      autoNewRow_(autoNewRow),
      rowDescription_(rowDescription),
      rowChains_(oxdmDataSource::NumRowEvents),
      defaultCompare_(std::move(defaultCompare)) {
    for (const Row& row : rows) rows_.push_back(CopyRow(row));
    focusRow_ = rows_.empty() ? -1 : 0;
    if (labels_.empty() && !rows_.empty()) {
        for (size_t col = 0; col < rows_.front().size(); ++col) labels_.push_back(DefaultLabel(static_cast<short>(col)));
    }
    numColumns_ = static_cast<short>(labels_.size());
    defaults_ = CopyRow(defaults);
    PadRow(defaults_);
    for (Row& row : rows_) PadRow(row);
    for (short col = 0; col < numColumns_; ++col) {
        prefill_.push_back(false);
        readOnly_.push_back(false);
        savedRow_.push_back(Traits::Empty());
        findRow_.push_back(Traits::Empty());
        newRow_.push_back(Traits::Empty());
        oldRow_.push_back(Traits::Empty());
        BindColumn(col);
    }
    if (autoNewRow_) _AppendNewRow();
    if (HasFocusRow()) _ReloadNewOldData();
}

template <class C>
oxdmSTLDataSourceImpl<C>::~oxdmSTLDataSourceImpl() {
    for (Row& row : rows_) FreeRow(row);
    FreeRow(newRow_);
    FreeRow(oldRow_);
    FreeRow(findRow_);
    FreeRow(defaults_);
    FreeRow(savedRow_);
}

template <class C>
void oxdmSTLDataSourceImpl<C>::FreeRow(Row& row) {
    for (Cell& cell : row) Traits::Free(cell);
}

template <class C>
typename oxdmSTLDataSourceImpl<C>::Row oxdmSTLDataSourceImpl<C>::CopyRow(const Row& row) {
    Row copy;
    copy.reserve(row.size());
    for (const Cell& cell : row) copy.push_back(Traits::Copy(cell));
    return copy;
}

template <class C>
void oxdmSTLDataSourceImpl<C>::AssignRow(Row& to, const Row& from) {
    Row copy = CopyRow(from);
    FreeRow(to);
    to.swap(copy);
}

template <class C>
void oxdmSTLDataSourceImpl<C>::PadRow(Row& row) const {
    while (row.size() < static_cast<size_t>(numColumns_)) row.push_back(Traits::Empty());
}

// Letters with the least significant first: 0 "A", 25 "Z", 26 "AB", 27 "BB".
template <class C>
CString oxdmSTLDataSourceImpl<C>::DefaultLabel(short col) {
    CString label;
    int i = col;
    do {
        label += static_cast<char>('A' + i % 26);
        i /= 26;
    } while (i != 0);
    return label;
}

template <class C>
void oxdmSTLDataSourceImpl<C>::BindColumn(short) {
    colChains_.emplace_back(oxdmDataSource::NumEvents);
    sortFunctions_.push_back(defaultCompare_);
}

template <class C>
void oxdmSTLDataSourceImpl<C>::Send(mvcChange* change) {
    owner_->Notify(change, false);
}

template <class C>
short oxdmSTLDataSourceImpl<C>::AddColumn(const CString& label, const Cell& defaultValue, bool prefill,
                                          bool readOnly) {
    focusRowMgr_.reset();
    for (Row& row : rows_) {
        PadRow(row);
        row.insert(row.begin() + numColumns_, Traits::Copy(defaultValue));
    }
    newRow_.push_back(Traits::Copy(defaultValue));
    oldRow_.push_back(Traits::Copy(defaultValue));
    labels_.push_back(label);
    defaults_.push_back(Traits::Copy(defaultValue));
    prefill_.push_back(prefill);
    readOnly_.push_back(readOnly);
    findRow_.push_back(Traits::Empty());
    savedRow_.push_back(Traits::Empty());
    BindColumn(numColumns_);
    return numColumns_++;
}

template <class C>
CString oxdmSTLDataSourceImpl<C>::ColLabel(short col) const {
    return ValidCol(col) ? labels_[static_cast<size_t>(col)] : CString();
}

template <class C>
short oxdmSTLDataSourceImpl<C>::IndexForColumn(const CString& name) const {
    for (short col = 0; col < numColumns_; ++col) {
        if (labels_[static_cast<size_t>(col)].CompareNoCase(name) == 0) return col;
    }
    return -1;
}

template <class C>
void oxdmSTLDataSourceImpl<C>::SetReadOnly(short col, bool readOnly, unsigned long initiator,
                                           bool notifyInitiator) {
    if (!ValidCol(col) || readOnly_[static_cast<size_t>(col)] == readOnly) return;
    readOnly_[static_cast<size_t>(col)] = readOnly;
    Send(new mvcColChange(col, owner_, oxdmDataSource::DSColReadOnlyChanged, initiator, notifyInitiator));
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::IsReadOnly(short col) const {
    return ValidCol(col) && readOnly_[static_cast<size_t>(col)];
}

template <class C>
void oxdmSTLDataSourceImpl<C>::SetPrefillOn(short col, bool on) {
    if (ValidCol(col)) prefill_[static_cast<size_t>(col)] = on;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::IsPrefillOn(short col) const {
    return ValidCol(col) && prefill_[static_cast<size_t>(col)];
}

template <class C>
long oxdmSTLDataSourceImpl<C>::GetAbsoluteRow(long relative) const {
    if (relative < 0 || relative >= TotalRows()) return -1;
    return sorted_ ? sortIndex_[static_cast<size_t>(relative)] : relative;
}

template <class C>
long oxdmSTLDataSourceImpl<C>::GetRelativeRow(long absolute) const {
    if (absolute < 0 || absolute >= TotalRows()) return -1;
    return sorted_ ? reverseIndex_[static_cast<size_t>(absolute)] : absolute;
}

template <class C>
long oxdmSTLDataSourceImpl<C>::GetClientRowFromAbs(long absolute) const {
    const long relative = GetRelativeRow(absolute);
    return relative == -1 ? -1 : relative - windowTop_;
}

template <class C>
short oxdmSTLDataSourceImpl<C>::FocusRow() const {
    return focusRow_ == -1 ? -1 : static_cast<short>(GetClientRowFromAbs(focusRow_));
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::IsNewRow() const {
    return HasFocusRow() && autoNewRow_ && focusRow_ == TotalRows() - 1;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::IsNewRow(short clientRow) const {
    const long absolute = GetAbsRowFromClient(clientRow);
    return absolute != -1 && autoNewRow_ && absolute == TotalRows() - 1;
}

template <class C>
typename oxdmSTLDataSourceImpl<C>::Cell oxdmSTLDataSourceImpl<C>::CellValue(long absolute, short col) const {
    if (absolute < 0 || absolute >= TotalRows()) return Traits::Empty();
    return CellAt(rows_[static_cast<size_t>(absolute)], col);
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::SetCellValueAbsolute(long absolute, short col, const CString& text) {
    if (absolute < 0 || absolute >= TotalRows() || !ValidCol(col)) return false;
    return Traits::SetText(rows_[static_cast<size_t>(absolute)][static_cast<size_t>(col)], text);
}

// The new row: per column the saved cell when it is set, else the default.
template <class C>
void oxdmSTLDataSourceImpl<C>::_AppendNewRow() {
    Row row;
    for (short col = 0; col < numColumns_; ++col) {
        const Cell& saved = savedRow_[static_cast<size_t>(col)];
        row.push_back(Traits::Copy(Traits::IsSet(saved) ? saved : defaults_[static_cast<size_t>(col)]));
    }
    rows_.push_back(std::move(row));
    if (sorted_) {
        sortIndex_.push_back(TotalRows() - 1);
        reverseIndex_.push_back(TotalRows() - 1);
    }
    _UpdateScrollInfo();
}

template <class C>
void oxdmSTLDataSourceImpl<C>::_ClearTable() {
    for (Row& row : rows_) FreeRow(row);
    rows_.clear();
    sortIndex_.clear();
    reverseIndex_.clear();
    // Without its indexes the table is in storage order again.
    sorted_ = false;
    windowTop_ = 0;
    focusRow_ = -1;
    rowChanged_ = false;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::DeleteAllRows(unsigned long initiator, bool notifyInitiator) {
    _ClearTable();
    if (autoNewRow_) _AppendNewRow();
    _UpdateScrollInfo();
    Send(new mvcChange(owner_, oxdmDataSource::DSAllChanged, initiator, notifyInitiator));
    return true;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::ReplaceAllRows(const C& table) {
    _ClearTable();
    for (const Row& row : table) {
        rows_.push_back(CopyRow(row));
        PadRow(rows_.back());
    }
    if (!rows_.empty()) {
        const Row& last = rows_.back();
        for (short col = 0; col < numColumns_; ++col) {
            if (!prefill_[static_cast<size_t>(col)]) continue;
            Traits::Free(savedRow_[static_cast<size_t>(col)]);
            savedRow_[static_cast<size_t>(col)] = Traits::Copy(last[static_cast<size_t>(col)]);
        }
        focusRow_ = 0;
    }
    if (autoNewRow_) _AppendNewRow();
    if (HasFocusRow()) _ReloadNewOldData();
    _UpdateScrollInfo();
    Send(new mvcChange(owner_, oxdmDataSource::DSAllChanged, 0, true));
    return true;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::AppendNewRow(const Row& row) {
    _AppendNewRow();
    const long target = TotalRows() - (autoNewRow_ ? 2 : 1);
    _SetFocusAbsolute(GetRelativeRow(target), false);
    const size_t cols = std::min(row.size(), static_cast<size_t>(numColumns_));
    for (size_t col = 0; col < cols; ++col) {
        if (Traits::Text(row[col]).Compare(Traits::Text(newRow_[col])) == 0) continue;
        Traits::Free(newRow_[col]);
        newRow_[col] = Traits::Copy(row[col]);
    }
    AssignRow(rows_[static_cast<size_t>(focusRow_)], newRow_);
    AssignRow(oldRow_, newRow_);
    Send(new mvcChange(owner_, oxdmDataSource::DSAllChanged, 0, true));
    return true;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::SetAutoNewRow(bool on) {
    autoNewRow_ = on;
    if (on) _AppendNewRow();
    return true;
}

template <class C>
void oxdmSTLDataSourceImpl<C>::ReQuery() {
    const int answer = HandleRowEvent(oxdmDataSource::BeforeReQuery, nullptr);
    if (!rows_.empty()) _SetFocusAbsolute(answer == 1 ? TotalRows() - 1 : 0, false);
    Send(new mvcChange(owner_, oxdmDataSource::DSAllChanged, 0, true));
}

template <class C>
int oxdmSTLDataSourceImpl<C>::DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent* msg) {
    if (event < 0 || event >= oxdmDataSource::NumRowEvents) return 0;
    const oxdmCallback& chain = rowChains_[static_cast<size_t>(event)];
    if (chain.empty()) return 0;
    oxdmCallbackInfo info(QueryRow(), nullptr, controlMgr_, nullptr, oxBase::SmartPtr<oxdmAppEventData>(), msg);
    // The chain is copied: a callback may bind again and replace it.
    const oxdmCallback running = chain;
    return running(&info);
}

template <class C>
int oxdmSTLDataSourceImpl<C>::DoHandleColEvent(oxdmDataSource::Event event, short col, oxdmDSCellOnFocusRow* cell) {
    if (!ValidCol(col) || event < oxdmDataSource::ColBeforeChange || event >= oxdmDataSource::NumEvents) return 0;
    const oxdmCallback running = colChains_[static_cast<size_t>(col)][static_cast<size_t>(event)];
    if (running.empty()) return 0;
    oxdmCallbackInfo info(QueryRow(), cell, controlMgr_, nullptr, oxBase::SmartPtr<oxdmAppEventData>(), nullptr);
    return running(&info);
}

template <class C>
void oxdmSTLDataSourceImpl<C>::SetCallbacks(const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr) {
    controlMgr_ = controlMgr;
    // The items a memory table binds, in the order they are bound.
    static constexpr int rowItems[] = {0, 1, 2, 3, 4, 5, 6, 8, 7, 13, 9};
    if (const auto* entry = mgr.RowCallbacks().GetCallbacks(rowDescription_)) {
        for (int item : rowItems) {
            const int event = oxdmRowCallbacks::DataSourceEvent(item);
            if (event < 0 || static_cast<size_t>(item) >= entry->size()) continue;
            rowChains_[static_cast<size_t>(event)] += (*entry)[static_cast<size_t>(item)];
        }
    }
    for (short col = 0; col < numColumns_; ++col) {
        const auto* entry = mgr.ColCallbacks().GetCallbacks(labels_[static_cast<size_t>(col)]);
        if (!entry) continue;
        for (int item = 0; item < 3 && static_cast<size_t>(item) < entry->size(); ++item) {
            const int event = oxdmColCallbacks::DataSourceEvent(item);
            if (event < 0) continue;
            colChains_[static_cast<size_t>(col)][static_cast<size_t>(event)] += (*entry)[static_cast<size_t>(item)];
        }
    }
}

template <class C>
oxdmDSFocusRowMgr* oxdmSTLDataSourceImpl<C>::QueryRow() {
    if (!focusRowMgr_) focusRowMgr_ = std::make_unique<oxdmDSFocusRowMgr>(owner_);
    return focusRowMgr_.get();
}
