#pragma once
// oxdmDataSource: the one abstraction through which controls, the grid and
// the audit trail see rows: a window of rows and columns, one focus row that
// can be edited, a row life cycle, find and bookmarks.
//
// Rows are addressed by a short window index (0 = top row of the window,
// -1 = none); columns by a short index in the order they were added. The
// pair (initiator, notifyInitiator) that many operations take is handed
// unchanged to the change the operation sends.
//
// The class holds no state beyond the subject's: a concrete data source owns
// one oxdmDataSourceImplBase and forwards to it. The virtual operations below
// stand in their binding order; those with a body are the defaults of the
// contract.

#include "oxdm/base/cstring.h"
#include "oxdm/base/functor.h"
#include "oxdm/notify/subject.h"

class oxdmDSBookmark;
class oxdmDSCellOnFocusRow;
class oxdmDSFocusRowMgr;
class oxdmDataSourceImplBase;
class oxioFileManager;

class oxdmDataSource : public mvcSubject {
public:
    // Row events 0 to 14 (they also index the row callbacks), column events
    // 15 to 17.
    enum Event {
        RowValidate = 0,
        RowBeforeWrite = 1,
        RowAfterWrite = 2,
        RowBeforeDelete = 3,
        RowAfterDelete = 4,
        RowBeforeRevert = 5,
        RowAfterRevert = 6,
        RowDirtyChanged = 7,
        RowBeforeValidate = 8,
        FocusRowMoved = 9,
        RowUpdateFailed = 10,
        RowInsertFailed = 11,
        RowDeleteFailed = 12,
        BeforeReQuery = 13,
        RowFilter = 14,
        ColBeforeChange = 15,
        ColAfterChange = 16,
        ColValidate = 17,
    };
    static constexpr int NumRowEvents = 15;
    static constexpr int NumEvents = 18;

    // Named answers of row events.
    enum RowEventResult {
        DeleteNoPrompt = 776,
        RevertInstead = 778,
    };

    enum WindowScrollType {
        ScrollTop = 0,
        ScrollBottom = 1,
        ScrollUp = 2,
        ScrollDown = 3,
        ScrollToFocus = 4,
    };

    // The answer of the comparer given to FindRow.
    enum CompareRowResult {
        CompareNoMatch = 0,
        CompareMatch = 1,
        CompareAbort = 2,
    };

    // Any value other than DirectionForward searches upward.
    enum Direction {
        DirectionForward = 0,
        DirectionBackward = 1,
    };

    // The answer of the cancel callback; any other non-zero value stops the
    // fetching loops after the step in hand.
    enum CancelQueryReturnVals {
        QueryContinue = 0,
        QueryCancel = 1,
    };

    // The codes of the changes a data source sends to its observers.
    enum ChangeCode : short {
        DSAllChanged = 0,          // mvcChange: the window may all be different
        DSColChanged = 1,          // mvcColChange: a cell of the focus row changed
        DSColInvalid = 2,          // mvcColChange: ValidateColumn failed
        DSColReadOnlyChanged = 3,  // mvcColChange: a column's read-only state may have changed
        DSFocusChanged = 4,        // mvcChange: the focus row moved
        DSRowChanged = 5,          // mvcRowChange: a whole window row must be redrawn
        DSRowStateChanged = 6,     // oxdmRowStateChange: saved or dirty state of the focus row
        DSRowDeleted = 7,          // mvcChange (or a cursor node change): a row was deleted
        DSNeedsRefetch = 8,        // mvcChange: a saved row changed a key of the sort order
    };

    oxdmDataSource() = default;
    ~oxdmDataSource() override = default;

    // AddObserver, RemoveObserver, Notify, SupressNotification and
    // IsNotificationSupressed come from mvcSubject and keep its slots.

    virtual short WindowSize() = 0;
    virtual void SetWindowSize(short rows) = 0;
    virtual void CacheSetWindowSize(bool cache) = 0;
    virtual void ClearLastWindowSizeCache() = 0;
    virtual long NumWindowDataRows() const = 0;
    virtual bool MoreRowsThanWindowSize() const { return false; }
    virtual CString CellValueAsString(short row, short col) = 0;
    virtual bool CanScrollUp() const = 0;
    virtual bool CanScrollDown() const = 0;
    virtual double WindowScrollPercent() const = 0;
    virtual double SetWindowScrollPercent(double percent) = 0;
    virtual short SetWindowScroll(WindowScrollType type, short rows) = 0;
    // A new handle that the caller owns, or null.
    virtual oxdmDSBookmark* GetBookmark(short row) const = 0;
    virtual short FocusRow() const = 0;
    virtual void SetFocus(short row, unsigned long initiator, bool notifyInitiator) = 0;
    virtual bool IsNewRow() const = 0;
    virtual bool IsNewRow(short row) const = 0;
    virtual void SetRowChanged(bool changed) = 0;
    virtual CString ColLabel(short col) = 0;
    virtual CString ColName(short col) = 0;
    virtual CString ColID(short) { return CString(); }
    virtual void SetReadOnly(short col, bool readOnly, unsigned long initiator, bool notifyInitiator) = 0;
    virtual bool IsReadOnly(short col) const = 0;
    virtual bool IsRequired(short) const { return false; }
    virtual bool CanDoFastFind(short) const { return false; }
    virtual bool HasData() const = 0;
    virtual short NumColumns() const = 0;
    virtual bool HasFocusRow() const = 0;
    virtual bool CanInsertRow() const { return false; }
    virtual bool InsertRow() { return false; }
    virtual bool CanAppendRow() const { return true; }
    virtual bool AppendRow() { return false; }
    virtual bool CanDeleteRow() const { return false; }
    virtual bool DeleteRow(unsigned long, bool) { return false; }
    virtual bool DeleteAllRows(unsigned long, bool) { return false; }
    virtual void ReQuery() = 0;
    virtual void RefetchVisibleRows(unsigned long, bool, bool) {}
    virtual short IndexForColumn(const CString& name) const = 0;
    virtual const CString& NodeLabel() const = 0;
    virtual void AttachRange(short) {}
    virtual void DetachRange() {}
    virtual void AttachCondition(short) {}
    virtual void DetachCondition() {}
    virtual bool CanSort(short, bool) const { return false; }
    virtual void Sort(short, bool) {}
    virtual void SetCancelQueryCallback(CBFunctor0wRet<int>& callback, int argument) = 0;
    // A new handle that the caller owns, or null.
    virtual oxdmDSBookmark* GetFocusRowBookmark() const = 0;
    virtual CString NewValueAsString(short col) = 0;
    virtual CString SavedValueAsString(short col) = 0;
    virtual CString OldValueAsString(short col) = 0;
    virtual bool SetNewValue(short col, const CString& text) = 0;
    virtual bool ValidateColumn(short) { return false; }
    virtual bool ValidateRow(unsigned long initiator, bool notifyInitiator) = 0;
    virtual void Rollback() {}
    virtual void CommitRollbackStack() {}
    virtual bool RevertRow(unsigned long initiator, bool notifyInitiator) = 0;
    virtual bool IsColumnChanged(short col) const = 0;
    virtual bool IsRowChanged() const = 0;
    virtual void SetPrefillOn(short col, bool on, unsigned long initiator, bool notifyInitiator) = 0;
    virtual bool IsPrefillOn(short col) const = 0;
    virtual void SetPrefillStyle(short, unsigned long) {}
    virtual unsigned long PrefillStyle(short) const { return 0; }
    virtual CString DefaultValueAsString(short col) = 0;
    virtual void SetDefaultValue(short col, const CString& text) = 0;
    virtual bool GoToBookmark(oxdmDSBookmark& bookmark, bool notify) = 0;
    virtual bool FindRow(bool fromEnd, CBFunctor1wRet<oxdmDataSource*, CompareRowResult> compare, bool stayOnFail,
                         Direction direction) = 0;
    virtual CString GetFindValueAsString(short col) = 0;
    virtual void CopyKeyColumnsToFindValues() {}
    virtual bool SetFindValue(short col, const CString& text) = 0;
    virtual bool FindGT() = 0;
    virtual bool FindGE() = 0;
    virtual bool FindSubstr(short col, const CString& text) = 0;
    virtual bool CanMoveUp() const = 0;
    virtual bool CanMoveDown(bool noNewRow) const = 0;
    virtual bool CanMoveToTop(bool noNewRow) const = 0;
    virtual bool CanMoveToBottom(bool noNewRow) const = 0;
    virtual short MoveUp(short rows, unsigned long initiator, bool notifyInitiator) = 0;
    virtual short MoveDown(short rows, unsigned long initiator, bool notifyInitiator, bool noNewRow) = 0;
    virtual bool MoveToTop(unsigned long initiator, bool notifyInitiator, bool noNewRow) = 0;
    virtual bool MoveToBottom(unsigned long initiator, bool notifyInitiator, bool noNewRow) = 0;
    virtual oxdmDSCellOnFocusRow* ColumnData(short col) = 0;
    virtual oxdmDSFocusRowMgr* QueryRow() = 0;
    virtual oxioFileManager* GetFileManager() { return nullptr; }
    virtual CString ObserverNewValueAsString(short col) = 0;
    virtual bool ObserverSetNewValue(short col, const CString& text, unsigned long initiator,
                                     bool notifyInitiator) = 0;
    virtual void ObserverSetRowChanged(unsigned long initiator, bool notifyInitiator) = 0;
    virtual void Clear() = 0;
    virtual void FetchNoMore() {}
    virtual CString RowDescription() { return CString(); }
    virtual bool IsNewValueNull(short) const { return false; }
    virtual void SetImpl(oxdmDataSourceImplBase* impl) = 0;
    virtual oxdmDataSourceImplBase* GetImpl() { return nullptr; }
};
