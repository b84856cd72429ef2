#pragma once
// oxdmDSFocusRowMgr: a view of one data source's focus row for controls and
// callbacks. Every operation forwards to the data source; the virtual ones
// have the answers of a data source without a parent, a cursor or a state
// stack, and a family with those derives its own manager.
//
// Invariants and ownership: dataSource_ is not owned; the data source owns
// its manager and outlives it.

#include <map>
#include <memory>

#include "oxdm/base/cstring.h"
#include "oxdm/base/functor.h"

class oxdmDataSource;
class oxdmDSCellOnFocusRow;
class oxdmDSBookmark;
class oxioCursor;
class oxioFileManager;

// oxdmDSFocusRowData: the cells of a focus row by column name. Lookups by
// name ignore case; the map's own order (used by ForAllColumns) does not.
//
// Invariants and ownership: every cell is owned and not null; dataSource_
// is not owned.
class oxdmDSFocusRowData {
public:
    explicit oxdmDSFocusRowData(oxdmDataSource* dataSource);
    oxdmDSFocusRowData(const oxdmDSFocusRowData&) = delete;
    oxdmDSFocusRowData& operator=(const oxdmDSFocusRowData&) = delete;
    ~oxdmDSFocusRowData();

    // Takes ownership of the cell; a cell already under the name is deleted.
    // REQUIRES: cell is not null.
    void AddColumn(const CString& name, oxdmDSCellOnFocusRow* cell);
    // The cell whose name equals `name` ignoring case, or null.
    oxdmDSCellOnFocusRow* Column(const CString& name) const;
    oxdmDSCellOnFocusRow* operator[](const CString& name) const { return Column(name); }
    // Calls `visit` on each cell in key order until it answers false.
    void ForAllColumns(const CBFunctor1wRet<oxdmDSCellOnFocusRow*, bool>& visit) const;
    oxdmDataSource* DataSource() const { return dataSource_; }

private:
    std::map<CString, std::unique_ptr<oxdmDSCellOnFocusRow>> cells_;
    oxdmDataSource* dataSource_;
};

class oxdmDSFocusRowMgr {
public:
    explicit oxdmDSFocusRowMgr(oxdmDataSource* dataSource) : data_(dataSource), dataSource_(dataSource) {}
    virtual ~oxdmDSFocusRowMgr() = default;
    oxdmDSFocusRowMgr(const oxdmDSFocusRowMgr&) = delete;
    oxdmDSFocusRowMgr& operator=(const oxdmDSFocusRowMgr&) = delete;

    virtual oxdmDSFocusRowMgr* Parent() { return nullptr; }
    virtual oxdmDSFocusRowMgr* Root() { return this; }
    // Itself when label equals the data source's node label, else null.
    virtual oxdmDSFocusRowMgr* Node(const CString& label);
    virtual bool MoveCursorToFocus() const { return true; }
    virtual int NumWindowDataRows() const;
    virtual void Refetch() {}
    virtual void RefetchVisibleRows(bool children);
    virtual oxioCursor* DataCursor() { return nullptr; }
    virtual bool ReserveKey() { return false; }
    virtual void ClearFocusRowStateStack() {}
    virtual void PopFocusRowState() {}
    virtual void PushFocusRowState() {}

    oxdmDataSource* DataSource() const { return dataSource_; }
    // The cells of the focus row by column name.
    oxdmDSFocusRowData& Data() { return data_; }
    const oxdmDSFocusRowData& Data() const { return data_; }

    void ReQuery();
    void FetchNoMore();
    void Clear();
    bool IsNewRow() const;
    bool IsRowDirty() const;
    bool Seek();
    void SetRowDirty();
    oxioFileManager* GetFileManager() const;
    const CString& NodeLabel() const;
    CString RowDescription() const;
    double WindowScrollPercent() const;
    // A new handle that the caller owns, or null.
    oxdmDSBookmark* GetFocusRowBookmark() const;
    bool CanDeleteRow() const;
    bool CanMoveUp() const;
    bool CanMoveDown(bool noNewRow) const;
    bool CanMoveToTop(bool noNewRow) const;
    bool CanMoveToBottom(bool noNewRow) const;
    bool CanAddRow() const;
    bool DeleteRow();
    bool UpdateRow();
    bool RevertRow();
    short MoveUp(short rows);
    short MoveDown(short rows, bool noNewRow);
    bool MoveToTop(bool noNewRow);
    bool MoveToBottom(bool noNewRow);
    // The focus is on the first row: scrolled to the top and on window row 0.
    bool IsFirstRow() const;
    // The focus is on the last row: scrolled to the bottom and on the last
    // row of the window.
    bool IsLastRow() const;

private:
    oxdmDSFocusRowData data_;
    oxdmDataSource* dataSource_;
};
