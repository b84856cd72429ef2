// The interface object of a memory table: every operation forwards to the
// implementation. Compiled once for each of the two table types.

#include "oxdm/datasource/mem_data_source_of.h"

#include "oxdm/datasource/bookmark.h"
#include "stl_data_source_impl.h"

template <class C>
_oxdmMemDataSourceOf<C>::_oxdmMemDataSourceOf(const C& rows, const std::vector<CString>& labels,
                                              const Row& defaults, const CString& rowDescription,
                                              bool autoNewRow) {
    // The default order calls the virtual StringCellCompare, so that a
    // derived table's own order counts.
    SortFunction byText([this](Cell a, Cell b) { return StringCellCompare(a, b); });
    SetImpl(new oxdmSTLDataSourceImpl<C>(this, rows, labels, defaults, rowDescription, autoNewRow, byText));
}

template <class C>
_oxdmMemDataSourceOf<C>::~_oxdmMemDataSourceOf() = default;

template <class C>
void _oxdmMemDataSourceOf<C>::SetImpl(oxdmDataSourceImplBase* impl) {
    auto* mine = dynamic_cast<oxdmSTLDataSourceImpl<C>*>(impl);
    if (mine && mine != impl_.get()) impl_.reset(mine);
}

template <class C>
oxdmDataSourceImplBase* _oxdmMemDataSourceOf<C>::GetImpl() { return impl_.get(); }

template <class C>
short _oxdmMemDataSourceOf<C>::WindowSize() { return impl_->WindowSize(); }

template <class C>
void _oxdmMemDataSourceOf<C>::SetWindowSize(short rows) { impl_->SetWindowSize(rows); }

template <class C>
void _oxdmMemDataSourceOf<C>::CacheSetWindowSize(bool cache) { impl_->CacheSetWindowSize(cache); }

template <class C>
void _oxdmMemDataSourceOf<C>::ClearLastWindowSizeCache() { impl_->ClearLastWindowSizeCache(); }

template <class C>
long _oxdmMemDataSourceOf<C>::NumWindowDataRows() const { return impl_->NumWindowDataRows(); }

template <class C>
CString _oxdmMemDataSourceOf<C>::CellValueAsString(short row, short col) {
    return impl_->CellText(impl_->GetAbsRowFromClient(row), col);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::CanScrollUp() const { return impl_->CanScrollUp(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::CanScrollDown() const { return impl_->CanScrollDown(); }

template <class C>
double _oxdmMemDataSourceOf<C>::WindowScrollPercent() const { return impl_->WindowScrollPercent(); }

template <class C>
double _oxdmMemDataSourceOf<C>::SetWindowScrollPercent(double percent) {
    return impl_->SetWindowScrollPercent(percent);
}

template <class C>
short _oxdmMemDataSourceOf<C>::SetWindowScroll(WindowScrollType type, short rows) {
    return impl_->SetWindowScroll(type, rows);
}

template <class C>
oxdmDSBookmark* _oxdmMemDataSourceOf<C>::GetBookmark(short row) const { return impl_->GetBookmark(row); }

template <class C>
short _oxdmMemDataSourceOf<C>::FocusRow() const { return impl_->FocusRow(); }

template <class C>
void _oxdmMemDataSourceOf<C>::SetFocus(short row, unsigned long initiator, bool notifyInitiator) {
    impl_->SetFocus(row, initiator, notifyInitiator);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::IsNewRow() const { return impl_->IsNewRow(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::IsNewRow(short row) const { return impl_->IsNewRow(row); }

template <class C>
void _oxdmMemDataSourceOf<C>::SetRowChanged(bool changed) { impl_->SetRowChanged(changed); }

template <class C>
CString _oxdmMemDataSourceOf<C>::ColLabel(short col) { return impl_->ColLabel(col); }

template <class C>
CString _oxdmMemDataSourceOf<C>::ColName(short col) { return impl_->ColLabel(col); }

template <class C>
void _oxdmMemDataSourceOf<C>::SetReadOnly(short col, bool readOnly, unsigned long initiator, bool notifyInitiator) {
    impl_->SetReadOnly(col, readOnly, initiator, notifyInitiator);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::IsReadOnly(short col) const { return impl_->IsReadOnly(col); }

template <class C>
bool _oxdmMemDataSourceOf<C>::HasData() const { return impl_->HasData(); }

template <class C>
short _oxdmMemDataSourceOf<C>::NumColumns() const { return impl_->NumColumns(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::HasFocusRow() const { return impl_->HasFocusRow(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::CanDeleteRow() const { return impl_->HasFocusRow(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::DeleteRow(unsigned long initiator, bool notifyInitiator) {
    return impl_->DeleteRow(initiator, notifyInitiator);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::DeleteAllRows(unsigned long initiator, bool notifyInitiator) {
    return impl_->DeleteAllRows(initiator, notifyInitiator);
}

template <class C>
void _oxdmMemDataSourceOf<C>::ReQuery() { impl_->ReQuery(); }

template <class C>
short _oxdmMemDataSourceOf<C>::IndexForColumn(const CString& name) const { return impl_->IndexForColumn(name); }

template <class C>
const CString& _oxdmMemDataSourceOf<C>::NodeLabel() const { return impl_->RowDescription(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::CanSort(short, bool) const { return true; }

template <class C>
void _oxdmMemDataSourceOf<C>::Sort(short col, bool ascending) { impl_->Sort(col, ascending); }

template <class C>
void _oxdmMemDataSourceOf<C>::SetCancelQueryCallback(CBFunctor0wRet<int>& callback, int argument) {
    impl_->SetCancelQueryCallback(callback, argument);
}

template <class C>
oxdmDSBookmark* _oxdmMemDataSourceOf<C>::GetFocusRowBookmark() const { return impl_->GetFocusRowBookmark(); }

template <class C>
CString _oxdmMemDataSourceOf<C>::NewValueAsString(short col) { return oxdm_memory::CellTraits<Cell>::Text(impl_->NewValue(col)); }

template <class C>
CString _oxdmMemDataSourceOf<C>::SavedValueAsString(short col) {
    return oxdm_memory::CellTraits<Cell>::Text(impl_->SavedValue(col));
}

template <class C>
CString _oxdmMemDataSourceOf<C>::OldValueAsString(short col) { return oxdm_memory::CellTraits<Cell>::Text(impl_->OldValue(col)); }

template <class C>
bool _oxdmMemDataSourceOf<C>::SetNewValue(short col, const CString& text) { return impl_->SetNewValue(col, text); }

template <class C>
bool _oxdmMemDataSourceOf<C>::ValidateColumn(short col) { return impl_->ValidateColumn(col); }

template <class C>
bool _oxdmMemDataSourceOf<C>::ValidateRow(unsigned long initiator, bool notifyInitiator) {
    return impl_->ValidateRow(initiator, notifyInitiator);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::RevertRow(unsigned long initiator, bool notifyInitiator) {
    return impl_->RevertRow(initiator, notifyInitiator);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::IsColumnChanged(short col) const { return impl_->IsColumnChanged(col); }

template <class C>
bool _oxdmMemDataSourceOf<C>::IsRowChanged() const { return impl_->IsRowChanged(); }

template <class C>
void _oxdmMemDataSourceOf<C>::SetPrefillOn(short col, bool on, unsigned long, bool) { impl_->SetPrefillOn(col, on); }

template <class C>
bool _oxdmMemDataSourceOf<C>::IsPrefillOn(short col) const { return impl_->IsPrefillOn(col); }

template <class C>
CString _oxdmMemDataSourceOf<C>::DefaultValueAsString(short col) {
    return oxdm_memory::CellTraits<Cell>::Text(impl_->DefaultValue(col));
}

template <class C>
void _oxdmMemDataSourceOf<C>::SetDefaultValue(short col, const CString& text) { impl_->SetDefaultValue(col, text); }

template <class C>
bool _oxdmMemDataSourceOf<C>::GoToBookmark(oxdmDSBookmark& bookmark, bool notify) {
    return impl_->GoToBookmark(bookmark, notify);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::FindRow(bool fromEnd, CBFunctor1wRet<oxdmDataSource*, CompareRowResult> compare,
                                      bool stayOnFail, Direction direction) {
    return impl_->FindRow(fromEnd, compare, stayOnFail, direction);
}

template <class C>
CString _oxdmMemDataSourceOf<C>::GetFindValueAsString(short col) {
    return oxdm_memory::CellTraits<Cell>::Text(impl_->GetFindValue(col));
}

template <class C>
bool _oxdmMemDataSourceOf<C>::SetFindValue(short col, const CString& text) { return impl_->SetFindValue(col, text); }

template <class C>
bool _oxdmMemDataSourceOf<C>::FindGT() { return impl_->FindGT(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::FindGE() { return impl_->FindGE(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::FindSubstr(short col, const CString& text) { return impl_->FindSubstr(col, text); }

template <class C>
bool _oxdmMemDataSourceOf<C>::CanMoveUp() const { return impl_->CanMoveUp(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::CanMoveDown(bool noNewRow) const { return impl_->CanMoveDown(noNewRow); }

template <class C>
bool _oxdmMemDataSourceOf<C>::CanMoveToTop(bool noNewRow) const { return impl_->CanMoveToTop(noNewRow); }

template <class C>
bool _oxdmMemDataSourceOf<C>::CanMoveToBottom(bool noNewRow) const { return impl_->CanMoveToBottom(noNewRow); }

template <class C>
short _oxdmMemDataSourceOf<C>::MoveUp(short rows, unsigned long initiator, bool notifyInitiator) {
    return impl_->MoveUp(rows, initiator, notifyInitiator);
}

template <class C>
short _oxdmMemDataSourceOf<C>::MoveDown(short rows, unsigned long initiator, bool notifyInitiator, bool noNewRow) {
    return impl_->MoveDown(rows, initiator, notifyInitiator, noNewRow);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::MoveToTop(unsigned long initiator, bool notifyInitiator, bool noNewRow) {
    return impl_->MoveToTop(initiator, notifyInitiator, noNewRow);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::MoveToBottom(unsigned long initiator, bool notifyInitiator, bool noNewRow) {
    return impl_->MoveToBottom(initiator, notifyInitiator, noNewRow);
}

template <class C>
oxdmDSCellOnFocusRow* _oxdmMemDataSourceOf<C>::ColumnData(short) { return nullptr; }

template <class C>
oxdmDSFocusRowMgr* _oxdmMemDataSourceOf<C>::QueryRow() { return impl_->QueryRow(); }

template <class C>
CString _oxdmMemDataSourceOf<C>::ObserverNewValueAsString(short col) { return NewValueAsString(col); }

template <class C>
bool _oxdmMemDataSourceOf<C>::ObserverSetNewValue(short col, const CString& text, unsigned long initiator,
                                                  bool notifyInitiator) {
    return impl_->ObserverSetNewValue(col, text, initiator, notifyInitiator);
}

template <class C>
void _oxdmMemDataSourceOf<C>::ObserverSetRowChanged(unsigned long initiator, bool notifyInitiator) {
    impl_->ObserverSetRowChanged(initiator, notifyInitiator);
}

template <class C>
void _oxdmMemDataSourceOf<C>::Clear() { impl_->DeleteAllRows(0, true); }

template <class C>
CString _oxdmMemDataSourceOf<C>::RowDescription() { return impl_->RowDescription(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::IsNewValueNull(short col) const { return impl_->IsNewValueNull(col); }

template <class C>
long _oxdmMemDataSourceOf<C>::FocusRowAbsolute() { return impl_->FocusRowAbsolute(); }

template <class C>
bool _oxdmMemDataSourceOf<C>::AppendNewRow(const Row& row) { return impl_->AppendNewRow(row); }

template <class C>
bool _oxdmMemDataSourceOf<C>::ReplaceAllRows(const C& table) { return impl_->ReplaceAllRows(table); }

template <class C>
bool _oxdmMemDataSourceOf<C>::SetAutoNewRow(bool on) { return impl_->SetAutoNewRow(on); }

template <class C>
void _oxdmMemDataSourceOf<C>::SetSortFunction(short col, const SortFunction& less) {
    impl_->SetSortFunction(col, less);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::StringCellCompare(Cell a, Cell b) { return oxdm_memory::CellTraits<Cell>::Less(a, b); }

template <class C>
bool _oxdmMemDataSourceOf<C>::IntCellCompare(Cell a, Cell b) {
    using Traits = oxdm_memory::CellTraits<Cell>;
    if (!Traits::IsSet(a) || !Traits::IsSet(b)) return false;
    return oxdm_memory::TextToInt(Traits::Text(a)) < oxdm_memory::TextToInt(Traits::Text(b));
}

template <class C>
C _oxdmMemDataSourceOf<C>::GetRawDS() { return impl_->Rows(); }

template <class C>
long _oxdmMemDataSourceOf<C>::GetAbsoluteRow(long relative) { return impl_->GetAbsoluteRow(relative); }

template <class C>
long _oxdmMemDataSourceOf<C>::GetRelativeRow(long absolute) { return impl_->GetRelativeRow(absolute); }

template <class C>
long _oxdmMemDataSourceOf<C>::GetAbsRowFromClient(long client) { return impl_->GetAbsRowFromClient(client); }

template <class C>
long _oxdmMemDataSourceOf<C>::GetClientRowFromAbs(long absolute) { return impl_->GetClientRowFromAbs(absolute); }

template <class C>
typename _oxdmMemDataSourceOf<C>::Cell _oxdmMemDataSourceOf<C>::GetCellValueAbsolute(long absolute, short col) {
    return impl_->CellValue(absolute, col);
}

template <class C>
bool _oxdmMemDataSourceOf<C>::SetCellValueAbsolute(long absolute, short col, const CString& text) {
    return impl_->SetCellValueAbsolute(absolute, col, text);
}

template <class C>
void _oxdmMemDataSourceOf<C>::SetRowDescription(const CString& text) { impl_->SetRowDescription(text); }

template <class C>
bool _oxdmMemDataSourceOf<C>::ValidateColumns(bool changedOnly) { return impl_->ValidateColumns(changedOnly); }

template <class C>
void _oxdmMemDataSourceOf<C>::SetCallbacks(const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr) {
    impl_->SetCallbacks(mgr, controlMgr);
}

template <class C>
short _oxdmMemDataSourceOf<C>::AddColumn(const CString& label, const Cell& defaultValue, bool prefill, bool readOnly) {
    return impl_->AddColumn(label, defaultValue, prefill, readOnly);
}

template <class C>
typename _oxdmMemDataSourceOf<C>::Cell _oxdmMemDataSourceOf<C>::NewValue(short col) const { return impl_->NewValue(col); }

template <class C>
typename _oxdmMemDataSourceOf<C>::Cell _oxdmMemDataSourceOf<C>::OldValue(short col) const { return impl_->OldValue(col); }

template <class C>
typename _oxdmMemDataSourceOf<C>::Cell _oxdmMemDataSourceOf<C>::SavedValue(short col) const {
    return impl_->SavedValue(col);
}

template <class C>
typename _oxdmMemDataSourceOf<C>::Cell _oxdmMemDataSourceOf<C>::DefaultValue(short col) const {
    return impl_->DefaultValue(col);
}

template <class C>
typename _oxdmMemDataSourceOf<C>::Cell _oxdmMemDataSourceOf<C>::GetFindValue(short col) const {
    return impl_->GetFindValue(col);
}

template <class C>
typename _oxdmMemDataSourceOf<C>::Cell _oxdmMemDataSourceOf<C>::CellValue(long relative, short col) const {
    return impl_->CellValue(impl_->GetAbsoluteRow(relative), col);
}

template <class C>
typename _oxdmMemDataSourceOf<C>::Cell _oxdmMemDataSourceOf<C>::ColValue(short col) const {
    return impl_->CellValue(impl_->FocusRowAbsolute(), col);
}

template <class C>
long _oxdmMemDataSourceOf<C>::ScrolledRows() const { return impl_->ScrolledRows(); }

template <class C>
long _oxdmMemDataSourceOf<C>::TotalRows() const { return impl_->TotalRows(); }

template <class C>
void _oxdmMemDataSourceOf<C>::SetFocusAbsolute(long relative, unsigned long initiator, bool notifyInitiator) {
    impl_->SetFocusAbsolute(relative, initiator, notifyInitiator);
}

template <class C>
int _oxdmMemDataSourceOf<C>::HandleRowEvent(Event event) { return impl_->HandleRowEvent(event, nullptr); }

template <class C>
int _oxdmMemDataSourceOf<C>::HandleColEvent(Event event, short col) { return impl_->HandleColEvent(event, col, nullptr); }

template class _oxdmMemDataSourceOf<std::vector<std::vector<CString>>>;
template class _oxdmMemDataSourceOf<std::vector<std::vector<oxData*>>>;
