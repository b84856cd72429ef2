#pragma once
// _oxdmMemDataSourceOf<C>: the interface object of a memory table over the
// table type C. It owns its implementation, oxdmSTLDataSourceImpl<C>, made
// in the constructor, and forwards every operation to it. Two instances
// exist, and only two: oxdmStringMemDataSource (text cells) and
// oxdmOXDataMemDataSource (typed cells, owned oxData*).
//
// Invariant: impl_ is never null after construction.

#include <memory>
#include <vector>

#include "oxdm/base/functor.h"
#include "oxdm/datasource/mem_data_source.h"

template <class C>
class oxdmSTLDataSourceImpl;

template <class C>
class _oxdmMemDataSourceOf : public oxdmMemDataSource {
public:
    using Table = C;
    using Row = typename C::value_type;
    using Cell = typename Row::value_type;
    using SortFunction = CBFunctor2wRet<Cell, Cell, bool>;

    ~_oxdmMemDataSourceOf() override;

    // The contract.
    short WindowSize() override;
    void SetWindowSize(short rows) override;
    void CacheSetWindowSize(bool cache) override;
    void ClearLastWindowSizeCache() override;
    long NumWindowDataRows() const override;
    CString CellValueAsString(short row, short col) override;
    bool CanScrollUp() const override;
    bool CanScrollDown() const override;
    double WindowScrollPercent() const override;
    double SetWindowScrollPercent(double percent) override;
    short SetWindowScroll(WindowScrollType type, short rows) override;
    oxdmDSBookmark* GetBookmark(short row) const override;
    short FocusRow() const override;
    void SetFocus(short row, unsigned long initiator, bool notifyInitiator) override;
    bool IsNewRow() const override;
    bool IsNewRow(short row) const override;
    void SetRowChanged(bool changed) override;
    CString ColLabel(short col) override;
    CString ColName(short col) override;
    void SetReadOnly(short col, bool readOnly, unsigned long initiator, bool notifyInitiator) override;
    bool IsReadOnly(short col) const override;
    bool HasData() const override;
    short NumColumns() const override;
    bool HasFocusRow() const override;
    bool CanDeleteRow() const override;
    bool DeleteRow(unsigned long initiator, bool notifyInitiator) override;
    bool DeleteAllRows(unsigned long initiator, bool notifyInitiator) override;
    void ReQuery() override;
    short IndexForColumn(const CString& name) const override;
    // A memory table's node label is its row description.
    const CString& NodeLabel() const override;
    bool CanSort(short col, bool ascending) const override;
    void Sort(short col, bool ascending) override;
    void SetCancelQueryCallback(CBFunctor0wRet<int>& callback, int argument) override;
    oxdmDSBookmark* GetFocusRowBookmark() const override;
    CString NewValueAsString(short col) override;
    CString SavedValueAsString(short col) override;
    CString OldValueAsString(short col) override;
    bool SetNewValue(short col, const CString& text) override;
    bool ValidateColumn(short col) override;
    bool ValidateRow(unsigned long initiator, bool notifyInitiator) override;
    bool RevertRow(unsigned long initiator, bool notifyInitiator) override;
    bool IsColumnChanged(short col) const override;
    bool IsRowChanged() const override;
    void SetPrefillOn(short col, bool on, unsigned long initiator, bool notifyInitiator) override;
    bool IsPrefillOn(short col) const override;
    CString DefaultValueAsString(short col) override;
    void SetDefaultValue(short col, const CString& text) override;
    bool GoToBookmark(oxdmDSBookmark& bookmark, bool notify) override;
    bool FindRow(bool fromEnd, CBFunctor1wRet<oxdmDataSource*, CompareRowResult> compare, bool stayOnFail,
                 Direction direction) override;
    CString GetFindValueAsString(short col) override;
    bool SetFindValue(short col, const CString& text) override;
    bool FindGT() override;
    bool FindGE() override;
    bool FindSubstr(short col, const CString& text) override;
    bool CanMoveUp() const override;
    bool CanMoveDown(bool noNewRow) const override;
    bool CanMoveToTop(bool noNewRow) const override;
    bool CanMoveToBottom(bool noNewRow) const override;
    short MoveUp(short rows, unsigned long initiator, bool notifyInitiator) override;
    short MoveDown(short rows, unsigned long initiator, bool notifyInitiator, bool noNewRow) override;
    bool MoveToTop(unsigned long initiator, bool notifyInitiator, bool noNewRow) override;
    bool MoveToBottom(unsigned long initiator, bool notifyInitiator, bool noNewRow) override;
    // A memory table has no cell objects: null.
    oxdmDSCellOnFocusRow* ColumnData(short col) override;
    oxdmDSFocusRowMgr* QueryRow() override;
    CString ObserverNewValueAsString(short col) override;
    bool ObserverSetNewValue(short col, const CString& text, unsigned long initiator, bool notifyInitiator) override;
    void ObserverSetRowChanged(unsigned long initiator, bool notifyInitiator) override;
    // Empties the table, as DeleteAllRows(0, true).
    void Clear() override;
    CString RowDescription() override;
    bool IsNewValueNull(short col) const override;
    // Takes only an implementation of this table type, and owns it.
    void SetImpl(oxdmDataSourceImplBase* impl) override;
    oxdmDataSourceImplBase* GetImpl() override;

    // oxdmMemDataSource.
    long FocusRowAbsolute() override;
    // Appends a row (the cells copied) and puts the focus on it.
    virtual bool AppendNewRow(const Row& row);
    // Replaces the whole table by a copy of table.
    virtual bool ReplaceAllRows(const C& table);
    bool SetAutoNewRow(bool on) override;
    // An empty function puts the default (StringCellCompare) back.
    virtual void SetSortFunction(short col, const SortFunction& less);
    // a before b: text order, case-sensitive; for typed cells their own
    // order, and a null cell is before nothing and after nothing.
    virtual bool StringCellCompare(Cell a, Cell b);
    // atoi(a) < atoi(b) of the texts.
    virtual bool IntCellCompare(Cell a, Cell b);
    // A copy of the table; typed cells are shared, not cloned.
    virtual C GetRawDS();
    long GetAbsoluteRow(long relative) override;
    long GetRelativeRow(long absolute) override;
    long GetAbsRowFromClient(long client) override;
    long GetClientRowFromAbs(long absolute) override;
    // The stored cell (typed: not a copy); empty / null out of range.
    virtual Cell GetCellValueAbsolute(long absolute, short col);
    bool SetCellValueAbsolute(long absolute, short col, const CString& text) override;
    void SetRowDescription(const CString& text) override;
    bool ValidateColumns(bool changedOnly) override;
    void SetCallbacks(const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr) override;

    // Per form. Typed cells are answered as they are held, not as copies.
    // Adds a column at the end, every row taking a copy of defaultValue;
    // answers its index.
    short AddColumn(const CString& label, const Cell& defaultValue, bool prefill, bool readOnly);
    Cell NewValue(short col) const;
    Cell OldValue(short col) const;
    Cell SavedValue(short col) const;
    Cell DefaultValue(short col) const;
    Cell GetFindValue(short col) const;
    // The cell at a display position.
    Cell CellValue(long relative, short col) const;
    // The stored cell of the focus row.
    Cell ColValue(short col) const;
    long ScrolledRows() const;
    long TotalRows() const;
    void SetFocusAbsolute(long relative, unsigned long initiator, bool notifyInitiator);
    int HandleRowEvent(Event event);
    int HandleColEvent(Event event, short col);

protected:
    _oxdmMemDataSourceOf(const C& rows, const std::vector<CString>& labels, const Row& defaults,
                         const CString& rowDescription, bool autoNewRow);

private:
    std::unique_ptr<oxdmSTLDataSourceImpl<C>> impl_;
};
