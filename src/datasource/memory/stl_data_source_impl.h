#pragma once
// oxdmSTLDataSourceImpl<C>: the memory table behind oxdmStringMemDataSource
// (C = vector of rows of CString) and oxdmOXDataMemDataSource (C = vector of
// rows of owned oxData*). All rows are in memory: the window is an offset,
// and the focus row is edited in a buffer, then saved into the table or
// reverted from it.
//
// Three kinds of row number:
//   client row   short, window index, 0 = top row of the window;
//   relative row long, display position, 0 = first in the sorted order;
//   absolute row long, index in rows_ (storage order).
//
// Invariants:
//   - every row of rows_, and newRow_, oldRow_, findRow_, defaults_,
//     savedRow_, labels_, prefill_, readOnly_, colChains_, sortFunctions_
//     hold at least numColumns_ entries (rows given wider are kept whole);
//   - with sorted_, sortIndex_ and reverseIndex_ are inverse permutations of
//     0 .. rows_.size()-1; without it both are empty and display order is
//     storage order;
//   - with autoNewRow_ the last storage row is the new row, and stays last in
//     display order;
//   - focusRow_ is -1 or a storage row; rowChanged_ says that newRow_ holds
//     edits not yet saved;
//   - 0 <= windowTop_, and windowTop_ < rows_.size() unless the table is
//     empty.
// Ownership: typed cells belong to the vector holding them (the table, each
// edit buffer, the defaults); the focus row manager is owned; owner_ and
// controlMgr_ are not.
// Re-entrancy: callbacks and observers may call back into the data source;
// every loop re-reads the sizes it walks.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/base/functor.h"
#include "oxdm/datasource/data_source_impl_base.h"
#include "oxdm/notify/callback.h"
#include "mem_cell_traits.h"

class oxdmCallbackMgr;
class oxdmControlMgr;
class oxdmDSBookmark;
class oxdmDSFocusRowMgr;

template <class C>
class oxdmSTLDataSourceImpl : public oxdmDataSourceImplBase {
public:
    using Table = C;
    using Row = typename C::value_type;
    using Cell = typename Row::value_type;
    using Traits = oxdm_memory::CellTraits<Cell>;
    using SortFunction = CBFunctor2wRet<Cell, Cell, bool>;

    // The given vectors are copied (typed cells cloned). defaultCompare is
    // the sort function every column starts with and goes back to.
    oxdmSTLDataSourceImpl(oxdmDataSource* owner, const C& rows, const std::vector<CString>& labels,
                          const Row& defaults, const CString& rowDescription, bool autoNewRow,
                          SortFunction defaultCompare);
    ~oxdmSTLDataSourceImpl() override;
    oxdmSTLDataSourceImpl(const oxdmSTLDataSourceImpl&) = delete;
    oxdmSTLDataSourceImpl& operator=(const oxdmSTLDataSourceImpl&) = delete;

    // oxdmDataSourceImplBase
    void DoSetFocus(short clientRow) override;
    int DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent* msg) override;
    int DoHandleColEvent(oxdmDataSource::Event event, short col, oxdmDSCellOnFocusRow* cell) override;

    // Columns.
    short AddColumn(const CString& label, const Cell& defaultValue, bool prefill, bool readOnly);
    short NumColumns() const { return numColumns_; }
    CString ColLabel(short col) const;
    short IndexForColumn(const CString& name) const;
    void SetReadOnly(short col, bool readOnly, unsigned long initiator, bool notifyInitiator);
    bool IsReadOnly(short col) const;
    void SetPrefillOn(short col, bool on);
    bool IsPrefillOn(short col) const;
    const CString& RowDescription() const { return rowDescription_; }
    void SetRowDescription(const CString& text) { rowDescription_ = text; }

    // Addressing; an index out of range answers -1.
    long GetAbsoluteRow(long relative) const;
    long GetRelativeRow(long absolute) const;
    long GetAbsRowFromClient(long client) const { return GetAbsoluteRow(client + windowTop_); }
    long GetClientRowFromAbs(long absolute) const;
    long TotalRows() const { return static_cast<long>(rows_.size()); }
    long ScrolledRows() const { return windowTop_; }
    long FocusRowAbsolute() const { return focusRow_; }
    short FocusRow() const;
    bool HasFocusRow() const { return focusRow_ != -1; }
    bool HasData() const { return !rows_.empty(); }
    bool IsNewRow() const;
    bool IsNewRow(short clientRow) const;

    // Cells; null / the empty text out of range. Typed cells are not copies.
    Cell CellValue(long absolute, short col) const;
    Cell NewValue(short col) const { return CellAt(newRow_, col); }
    Cell OldValue(short col) const { return CellAt(oldRow_, col); }
    Cell SavedValue(short col) const { return CellAt(savedRow_, col); }
    Cell DefaultValue(short col) const { return CellAt(defaults_, col); }
    Cell GetFindValue(short col) const { return CellAt(findRow_, col); }
    CString CellText(long absolute, short col) const { return Traits::Text(CellValue(absolute, col)); }
    bool SetCellValueAbsolute(long absolute, short col, const CString& text);
    bool IsNewValueNull(short col) const { return Traits::IsNull(NewValue(col)); }
    const C& Rows() const { return rows_; }

    // The focus row and its edit buffers.
    void SetFocusAbsolute(long relative, unsigned long initiator, bool notifyInitiator);
    bool SetNewValue(short col, const CString& text);
    bool ObserverSetNewValue(short col, const CString& text, unsigned long initiator, bool notifyInitiator);
    void SetRowChanged(bool changed);
    void ObserverSetRowChanged(unsigned long initiator, bool notifyInitiator);
    bool IsRowChanged() const { return rowChanged_; }
    bool IsColumnChanged(short col) const;
    void SetDefaultValue(short col, const CString& text);
    bool SetFindValue(short col, const CString& text);
    bool ValidateColumn(short col);
    bool ValidateColumns(bool changedOnly);
    bool ValidateRow(unsigned long initiator, bool notifyInitiator);
    bool RevertRow(unsigned long initiator, bool notifyInitiator);

    // Rows.
    bool DeleteRow(unsigned long initiator, bool notifyInitiator);
    bool DeleteAllRows(unsigned long initiator, bool notifyInitiator);
    bool ReplaceAllRows(const C& table);
    bool AppendNewRow(const Row& row);
    bool SetAutoNewRow(bool on);
    void ReQuery();

    // The window.
    void SetWindowSize(short rows);
    long NumWindowDataRows() const;
    short SetWindowScroll(oxdmDataSource::WindowScrollType type, short rows);
    double WindowScrollPercent() const;
    double SetWindowScrollPercent(double percent);

    // Moves of the focus; the answers of MoveUp and MoveDown count the rows
    // moved.
    bool CanMoveUp() const;
    bool CanMoveDown(bool noNewRow) const;
    bool CanMoveToTop(bool noNewRow) const;
    bool CanMoveToBottom(bool noNewRow) const;
    short MoveUp(short rows, unsigned long initiator, bool notifyInitiator);
    short MoveDown(short rows, unsigned long initiator, bool notifyInitiator, bool noNewRow);
    bool MoveToTop(unsigned long initiator, bool notifyInitiator, bool noNewRow);
    bool MoveToBottom(unsigned long initiator, bool notifyInitiator, bool noNewRow);

    // Sort and find.
    void Sort(short col, bool ascending);
    // An empty function puts the column's default back.
    void SetSortFunction(short col, const SortFunction& less);
    bool FindGT();
    bool FindGE();
    bool FindSubstr(short col, const CString& text);
    bool FindRow(bool fromEnd, CBFunctor1wRet<oxdmDataSource*, oxdmDataSource::CompareRowResult> compare,
                 bool stayOnFail, oxdmDataSource::Direction direction);

    // Bookmarks; each handle is new and belongs to the caller.
    oxdmDSBookmark* GetBookmark(short clientRow) const;
    oxdmDSBookmark* GetFocusRowBookmark() const;
    bool GoToBookmark(oxdmDSBookmark& bookmark, bool notify);
    // The move of a bookmark's iteration: the focus to a display position.
    void BookmarkSetFocus(long relative, bool notify);

    // Callbacks and the focus row view.
    void SetCallbacks(const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr);
    oxdmDSFocusRowMgr* QueryRow();

private:
    enum class FindMode { Greater, GreaterEqual };

    static Cell CellAt(const Row& row, short col) {
        return col >= 0 && static_cast<size_t>(col) < row.size() ? row[static_cast<size_t>(col)] : Traits::Empty();
    }
    bool ValidCol(short col) const { return col >= 0 && col < numColumns_; }
    static void FreeRow(Row& row);
    static Row CopyRow(const Row& row);
    static void AssignRow(Row& to, const Row& from);
    void PadRow(Row& row) const;

    static CString DefaultLabel(short col);
    void BindColumn(short col);
    void _AppendNewRow();
    void _SetFocusAbsolute(long relative, bool notify);
    void _ReloadNewOldData();
    void _UpdateScrollInfo();
    void _FocusFound(long absolute);
    bool _FindCompare(FindMode mode);
    bool _RowMatchesFind(const Row& row, FindMode mode) const;
    bool _RowEqualsFind(const Row& row) const;
    void _EraseStorageRow(long absolute);
    void _ClearTable();
    void Send(mvcChange* change);

    C rows_;
    std::vector<long> sortIndex_;
    std::vector<long> reverseIndex_;
    bool sorted_ = false;
    short sortCol_ = -1;
    bool sortAscending_ = true;
    Row newRow_;
    Row oldRow_;
    Row findRow_;
    std::vector<CString> labels_;
    Row defaults_;
    Row savedRow_;
    std::vector<bool> prefill_;
    std::vector<bool> readOnly_;
    long windowTop_ = 0;
    long focusRow_ = -1;
    short numColumns_ = 0;
    bool rowChanged_ = false;
    bool autoNewRow_ = false;
    CString rowDescription_;
    oxdmControlMgr* controlMgr_ = nullptr;
    std::unique_ptr<oxdmDSFocusRowMgr> focusRowMgr_;
    std::vector<oxdmCallback> rowChains_;
    std::vector<std::vector<oxdmCallback>> colChains_;
    std::vector<SortFunction> sortFunctions_;
    SortFunction defaultCompare_;
};
