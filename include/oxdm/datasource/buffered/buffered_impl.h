#pragma once
// oxdmBufferedFileDataSourceImpl: the implementation behind a buffer, the
// data source over one node of a cursor tree. It keeps a bounded window of
// rows copied out of the cursor (one bookmark per row), one focus row with
// three sets of values (saved, old, new), the live columns, the callbacks
// bound to the buffer and the buffers of the node's one-to-many children.
//
// The window is what keeps a table of any size usable: a fill reads only
// the rows asked for (plus one step to learn whether more lie beyond), the
// window never holds more than its size once a fill or a resize is done,
// and every operation that needs a row first goes to it by bookmark, since
// the cursor tree has one position that anyone may have moved.
//
// Invariants:
//   - windowRows_ and windowBookmarks_ have the same length (at most the
//     window size once a fill or a resize has finished); each row has one
//     owned value per column, in column order; a null bookmark marks the
//     new row, which is then the last row and the only such row.
//   - columns_, changedColumns_, findValues_, newValues_, oldValues_ and
//     savedValues_ have one entry per column; all values are owned.
//   - Focus states: none (hasFocus_ false: onNewRow_, rowChanged_ false,
//     focusBookmark_ null), on a record (focusBookmark_ set), on the new
//     row (onNewRow_ true, focusBookmark_ null). A focus with a null
//     bookmark is the new row.
//   - A root owns its cursor tree (ownsCursor_); a child buffer's node is a
//     child node of its parent buffer's node. childBuffers_ are owned.
//   - focusRowStates_ holds the pushed states, dropped on every move.
//   - callbacks_ knows which event is running; the values that NewValue,
//     SavedValue and OldValue answer depend on it.
// Everything runs on the user-interface thread; callbacks may re-enter.

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/base/functor.h"
#include "oxdm/datasource/data_source_impl_base.h"

class oxData;
class oxdmBufferedDataSourceRole;
class oxdmBufferedFileDataSource;
class oxdmCallbackMgr;
class oxdmColumnBase;
class oxdmColumnDef;
class oxdmControlMgr;
class oxdmCursorBookmark;
class oxdmCursorNode;
class oxdmDSBookmark;
class oxdmDSColumnBase;
class oxdmDSFocusRowMgr;
class oxdmEvent;
class oxdmFileManager;
class oxdmFilter;
class oxdmQuery;
class oxdmQueryNode;
class _oxdmBufferCallbacks;
class _oxdmSingleBookmark;
class oxTask;

class oxdmBufferedFileDataSourceImpl : public oxdmDataSourceImplBase {
public:
    using Row = std::vector<oxData*>;
    using RowVisitor = CBFunctor1wRet<const std::vector<oxData*>&, bool>;
    enum SyncChildrenOpt { SyncChildrenNow = 0, NoChildSync = 1 };

    // A child or a root over an existing node (not owned). Without
    // hasAutoNewRow the new row follows the cursor's CanInsert().
    oxdmBufferedFileDataSourceImpl(oxdmBufferedFileDataSource* dataSource, oxdmBufferedFileDataSource* parent,
                                   oxdmCursorNode* cursor, bool hasAutoNewRow, bool autoNewRow);
    // A root: makes a cursor tree over the query's root node and owns it;
    // with ownFiles it owns `files` too. Throws oxdmException when the tree
    // can't be made.
    oxdmBufferedFileDataSourceImpl(oxdmBufferedFileDataSource* dataSource, const oxdmQuery* query, oxTask* task,
                                   oxdmFileManager* files, bool ownFiles);
    ~oxdmBufferedFileDataSourceImpl() override;
    oxdmBufferedFileDataSourceImpl(const oxdmBufferedFileDataSourceImpl&) = delete;
    oxdmBufferedFileDataSourceImpl& operator=(const oxdmBufferedFileDataSourceImpl&) = delete;

    void DoSetFocus(short row) override { _SetFocus(row, SyncChildrenNow); }
    int DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent* msg) override;
    int DoHandleColEvent(oxdmDataSource::Event event, short col, oxdmDSCellOnFocusRow* cell) override;

    // --- the tree, columns and callbacks
    virtual void SupressNotification(bool suppress);
    virtual void SetCallbacks(void* owner, const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr);
    virtual void RemoveCallbacks(void* owner);
    virtual short IndexForColumn(const CString& name) const;
    virtual const CString& NodeLabel() const;
    virtual CString RowDescription();
    virtual short NumColumns() const { return static_cast<short>(columns_.size()); }
    virtual CString ColLabel(short col);
    virtual CString ColName(short col);
    virtual CString ColID(short col);
    virtual bool IsReadOnly(short col) const;
    virtual void SetReadOnly(short col, bool readOnly, unsigned long initiator, bool notifyInitiator);
    virtual bool IsRequired(short col) const;
    virtual bool IsPrefillOn(short col) const;
    virtual void SetPrefillOn(short col, bool on, unsigned long initiator, bool notifyInitiator);
    virtual CString DefaultValueAsString(short col);
    virtual void SetDefaultValue(short col, const CString& text);
    virtual oxdmDSCellOnFocusRow* ColumnData(short col);
    virtual oxdmDSFocusRowMgr* QueryRow() { return focusRowMgr_.get(); }
    virtual oxioFileManager* GetFileManager();

    oxdmBufferedFileDataSource* Root() const;
    oxdmBufferedFileDataSource* Parent() const { return parentBuffer_; }
    // Takes ownership of the child and gives it cells of this buffer's columns.
    void AddChild(oxdmBufferedFileDataSource* child);
    const std::vector<oxdmBufferedFileDataSource*>& Children() const { return childBuffers_; }
    oxdmBufferedFileDataSource* BufferForNode(const oxdmQueryNode& node) const;
    oxdmBufferedFileDataSource* BufferForNode(const CString& label) const;
    oxdmCursorNode* Cursor() const { return cursorNode_; }
    oxTask* Task() const;
    oxdmDSColumnBase* Column(const CString& id) const;
    oxdmDSColumnBase* ColumnForIndex(short col) const;
    // Takes ownership of the column; answers its index.
    short AddColumn(oxdmDSColumnBase* column);
    // Builds and adds a live column for each query column.
    void AddColumns(const std::vector<oxdmColumnBase*>& columns);
    // Makes a cell for `col` of `dataSource` under `name`, here and in
    // every child buffer.
    void CreateColumnData(const CString& name, short col, oxdmBufferedFileDataSource* dataSource);
    const oxData* DefaultValue(short col) const;
    void SetDefaultValue(short col, const oxData* value);
    const oxdmFilter& Filter() const;
    void SetFilter(const oxdmFilter& filter);
    short Index() const;
    void SetIndex(short index);
    bool NeedNewRowPrefills() const { return needNewRowPrefills_; }
    void SetNeedNewRowPrefills(bool need) { needNewRowPrefills_ = need; }
    // Stores the setting; turning it off on the new row requeries, any
    // other change refetches the window.
    void SetAutoNewRow(bool on);
    bool AutoNewRow() const { return autoNewRow_; }
    void SetCanDeleteRow(bool on) { canDeleteRow_ = on; }
    void SetCanUpdateRow(bool on) { canUpdateRow_ = on; }
    void SetAllowDataConflictOverwrite(bool allow);
    bool AllowNullsInFastFind() const { return allowNullsInFastFind_; }
    void SetAllowNullsInFastFind(bool allow) { allowNullsInFastFind_ = allow; }
    // Replaces the role (owned); null is ignored.
    void SetRole(oxdmBufferedDataSourceRole* role);
    void DoAutoLookup(short col);
    void RefreshColumn(short col);
    void Debug(const CString& text, bool a, bool b);

    // --- the window
    virtual bool HasData() const { return !windowRows_.empty(); }
    virtual void SetWindowSize(short rows);
    virtual bool MoreRowsThanWindowSize() const;
    virtual long NumWindowDataRows() const { return static_cast<long>(windowRows_.size()); }
    virtual CString CellValueAsString(short row, short col);
    virtual double WindowScrollPercent() const;
    virtual double SetWindowScrollPercent(double percent);
    virtual short SetWindowScroll(oxdmDataSource::WindowScrollType type, short rows);
    virtual void ReQuery();
    virtual void Clear();
    virtual void FetchNoMore() { fetchNoMore_ = true; }
    virtual void RefetchVisibleRows(unsigned long initiator, bool notifyInitiator, bool children) {
        _RefetchVisibleRows(true, initiator, notifyInitiator, children);
    }
    virtual void AttachRange(short handle);
    virtual void DetachRange();
    virtual void AttachCondition(short handle);
    virtual void DetachCondition();
    void RefetchRow();
    void RefetchRows(unsigned long initiator, bool notifyInitiator) { _RefetchRows(true, initiator, notifyInitiator); }
    // Walks the whole table (the one walk that does), the window untouched;
    // visit answers false to stop. Answers the last answer of visit.
    bool ForAllRows(const RowVisitor& visit, bool filter);
    const oxData* CellValue(short row, short col) const;
    const oxData* ColValue(short col) const;

    // --- the focus row
    virtual bool HasFocusRow() const { return hasFocus_; }
    virtual short FocusRow() const;
    virtual bool IsNewRow() const { return hasFocus_ && onNewRow_; }
    virtual bool IsNewRow(short row) const;
    virtual bool IsRowChanged() const { return hasFocus_ && rowChanged_; }
    virtual bool IsColumnChanged(short col) const;
    virtual void SetRowChanged(bool changed);
    virtual void ObserverSetRowChanged(unsigned long initiator, bool notifyInitiator);
    virtual bool CanMoveUp() const;
    virtual bool CanMoveDown(bool noNewRow) const;
    virtual bool CanMoveToTop(bool noNewRow) const;
    virtual bool CanMoveToBottom(bool noNewRow) const { return CanMoveDown(noNewRow); }
    virtual short MoveUp(short rows, unsigned long initiator, bool notifyInitiator);
    virtual short MoveDown(short rows, unsigned long initiator, bool notifyInitiator, bool noNewRow);
    virtual bool MoveToTop(unsigned long initiator, bool notifyInitiator, bool noNewRow);
    virtual bool MoveToBottom(unsigned long initiator, bool notifyInitiator, bool noNewRow);
    virtual void PushFocusRowState();
    virtual void PopFocusRowState();
    virtual void ClearFocusRowStateStack();
    virtual const oxData* NewValue(short col) const;
    virtual const oxData* SavedValue(short col) const;
    virtual const oxData* OldValue(short col) const;
    virtual CString NewValueAsString(short col);
    virtual CString SavedValueAsString(short col);
    virtual CString OldValueAsString(short col);
    virtual bool IsNewValueNull(short col) const;
    virtual bool SetNewValue(short col, const oxData* value);
    virtual bool SetNewValue(short col, const CString& text);
    virtual CString ObserverNewValueAsString(short col);
    virtual bool ObserverSetNewValue(short col, const CString& text, unsigned long initiator, bool notifyInitiator);
    bool SetColValue(short col, const oxData* value, unsigned long initiator, bool notifyInitiator);
    // Puts the cursor under the focus row; answers whether that worked.
    bool MoveCursorToFocus();
    void SetColumnChanged(short col, bool changed);
    void SetAllColumnsUnchanged();
    void RefreshReadOnly();

    // --- the row lifecycle
    // Saves the focus row, then each child buffer's focus row in order;
    // true when saved or nothing had to be done.
    virtual bool ValidateRow(unsigned long initiator, bool notifyInitiator, bool force);
    virtual bool ValidateColumn(short col);
    virtual bool ValidateColumns(bool changedOnly);
    virtual bool RevertRow(unsigned long initiator, bool notifyInitiator);
    virtual bool CanDeleteRow() const;
    virtual bool DeleteRow(unsigned long initiator, bool notifyInitiator);
    // Deletes every record under the buffer without asking; always true.
    virtual bool DeleteAllRows(unsigned long initiator, bool notifyInitiator);
    virtual bool CanAppendRow() const;
    virtual bool AppendRow();
    // Writes the new row early so that its key is on file for children.
    bool ReserveKey();
    bool UnreserveKey(CString& error);
    bool IsKeyReserved() const { return reservedKey_ != nullptr; }
    virtual void Rollback();
    virtual void CommitRollbackStack();
    // The id of each key column mapped to its text on the focus row.
    std::map<CString, CString> FocusKeyValues() const;

    // --- find values and searches, in the order of the cursor's index
    using CompareRow = CBFunctor1wRet<oxdmDataSource*, oxdmDataSource::CompareRowResult>;
    virtual const oxData* GetFindValue(short col) const;
    virtual bool SetFindValue(short col, const oxData* value);
    // A text that starts a choice of the column stands for that choice.
    virtual bool SetFindValue(short col, const CString& text);
    virtual CString GetFindValueAsString(short col);
    void CopyKeyColumnsToFindValues();
    // Whether the record layer can seek on the column at once.
    bool CanDoFastFind(short col) const;
    // The first row at or after the find values; a find that lands nowhere
    // goes to the bottom and answers false.
    bool FindGE();
    // The same, the found row shown at window row `position`.
    bool FindGE(short position);
    bool FindGT();
    // The incremental search of a list; the window and the focus stay as
    // they were when nothing starts with the text.
    bool FindSubstr(short col, const CString& text);
    // Walks the rows with `compare` (the fallback when no seek will do).
    bool FindRow(bool fromEnd, const CompareRow& compare, bool stayOnFail, oxdmDataSource::Direction direction);

    // --- bookmarks (new handles owned by the caller)
    virtual oxdmDSBookmark* GetBookmark(short row) const;
    virtual oxdmDSBookmark* GetFocusRowBookmark() const;
    virtual bool GoToBookmark(oxdmDSBookmark& bookmark, bool notify);
    // The position of window row `row`; one without place outside the window.
    std::shared_ptr<_oxdmSingleBookmark> SingleBookmark(short row) const;
    bool MoveToSingleBookmark(const _oxdmSingleBookmark& where);
    // The position next to `from`, null when there is none; the cursor is
    // put back.
    std::shared_ptr<_oxdmSingleBookmark> StepSingleBookmark(const _oxdmSingleBookmark& from, bool forward);

    // The event whose callbacks are running now, -1 for none.
    int RunningEvent() const;
    const oxdmBufferedFileDataSource* DataSource() const { return dataSource_; }

protected:
    short BufferDown(short rows, bool fromTop);
    short BufferUp(short rows, bool fromBottom);
    bool CursorFirst(bool filter, bool lock);
    bool CursorLast(bool filter, bool lock);
    long CursorNext(long rows, bool filter, bool lock);
    long CursorPrev(long rows, bool filter, bool lock);
    bool CursorGE(bool filter, bool lock);
    bool CursorGT(bool filter, bool lock);
    short TestScrollUp(short rows) const;
    short TestScrollDown(short rows) const;
    void DeleteBuffer();
    void DeleteBufferRow(short row);
    bool RowAlreadyBuffered() const;
    bool SameSuppressDupsRow(const Row& row) const;
    Row CreateRowData() const;
    bool CopyRowFromCursor(Row& row) const;
    // Fills the row with the prefill values; throws oxdmException when a
    // value can't take its column's prefill.
    void CopyRowFromNew(Row& row) const;
    bool CopyRowToCursor(const Row& row);
    // The focus row's new values to the cursor.
    bool CopyRowToCursor();
    bool CopyData(const Row& from, Row& to) const;
    void _RefetchVisibleRows(bool notify, unsigned long initiator, bool notifyInitiator, bool children);
    void _RefetchRows(bool notify, unsigned long initiator, bool notifyInitiator);
    void _ClearFileBuffers(oxdmCursorNode* node);
    int _QueryCancelPoll();
    // The test operations walk the cursor and put it back: they change
    // nothing of the buffer's own.
    oxdmBufferedFileDataSourceImpl& Self() const { return const_cast<oxdmBufferedFileDataSourceImpl&>(*this); }

    // The internal moves.
    void _SetFocus(short row, SyncChildrenOpt opt);
    void _MoveToRow(short row, SyncChildrenOpt opt);
    void _MoveToCursor(SyncChildrenOpt opt);
    void _MoveToNewRow(SyncChildrenOpt opt);
    void _ClearFocus(SyncChildrenOpt opt);
    short _MoveUp(short rows);
    short _MoveDown(short rows, bool noNewRow);
    bool _MoveToTop(bool noNewRow);
    bool _MoveToBottom(bool noNewRow);
    // The focus record's GoTo; false on the new row or with no focus.
    bool GoToFocusRecord() const;
    // The parent buffer's MoveCursorToFocus, true for a root.
    bool ParentToFocus() const;
    // The window follows the focus when it is one row high.
    void FollowFocus();
    // The cursor's values into the three sets, changes cleared.
    void TakeCursorIntoSets();
    void SendFocusMoved(unsigned long initiator, bool notifyInitiator);
    void SendColChanged(short col, unsigned long initiator, bool notifyInitiator);
    void SendRowChanged(short row);
    void SendAllChanged(unsigned long initiator, bool notifyInitiator);
    void SendRowState(bool dirty, int cause, unsigned long initiator, bool notifyInitiator);
    void GetHiddenState(std::vector<bool>& hidden) const;
    void RefreshHidden(const std::vector<bool>& before);
    // The cell of column `col` by the column's name.
    oxdmDSCellOnFocusRow* CellFor(short col);

    void Initialize(oxdmBufferedFileDataSource* parent, oxdmCursorNode* cursor, bool hasAutoNewRow, bool autoNewRow);
    void CreateColumnBuffers(oxdmDSColumnBase* column, short col);
    void _Cleanup();
    void SyncChildren();
    void Sync();
    bool IsMultiLevel() const { return !childBuffers_.empty(); }
    bool ValidCol(short col) const { return col >= 0 && col < NumColumns(); }

private:
    struct FocusRowState;
    using Values = std::vector<std::unique_ptr<oxData>>;

    // The steps of a program's write of a new value; `copy` puts the value
    // into the new set and answers false when it is refused.
    bool WriteNewValue(short col, const std::function<bool(oxData&)>& copy);
    // Copies `value` into every set of the focus row at `col`.
    void SetAllSets(short col, const oxData& value);
    // The save after its checks; the parent's save is not looked at.
    bool _ValidateRow(unsigned long initiator, bool notifyInitiator, bool force);
    // Whether the save changes the row's place in the order; keyChanged
    // tells whether a key column of an existing row changed.
    bool SortKeyChanged(bool& keyChanged) const;
    // What a successful write leaves: the focus on the written record, the
    // sets taken from the file, a new row below when one is wanted.
    void AfterSave(bool isNew, bool reappend, bool sortChanged, short focusIndex, unsigned long initiator,
                   bool notifyInitiator);
    // A new row at the window's bottom, or can scroll down when full.
    void AppendNewRow();
    // The new values into the cursor's columns when any is changed; throws
    // oxdmException when a column refuses its value.
    void StoreNewValues();
    // The cursor's columns into the new set.
    void CopyCursorIntoNew();
    // The cursor into the new set, saved into old, new into saved.
    void TakeCursorAsSaved();
    void CopyValues(const Values& from, Values& to) const;
    // The repair after the focus record has gone; the cursor stands where
    // it was.
    void _DoDeleteRow(short row);
    // A box titled with the task's caption.
    int Box(const CString& text, unsigned style) const;
    // Raises `event`; when no handler answers, shows `error`.
    void ReportFailure(oxdmDataSource::Event event, oxdmEvent* msg, const CString& error);
    std::shared_ptr<oxdmCursorBookmark> TopBookmark() const;
    // A position on the cursor's row, with the window top of `like`.
    std::shared_ptr<_oxdmSingleBookmark> CursorSingleBookmark(const _oxdmSingleBookmark& like) const;
    // The find values to the cursor's columns.
    bool CopyFindValuesToCursor();
    // The buffer column over a column definition, -1 when none.
    short ColumnForDef(const oxdmColumnDef& def) const;
    // Puts the focus on the seek's row, or at the bottom when there is
    // none (moved tells whether the focus moved); answers whether found.
    bool SeekFindValues(bool greaterOrEqual, bool& moved);
    // FindGE or FindGT with the window brought to the focus.
    bool FindAndShow(bool greaterOrEqual);
    // Seeks with the text, padded by `fill` after each miss, tries + 1
    // times; answers whether a row starting with the text has the focus.
    bool _ImplBestFit(short col, const CString& text, char fill, int tries);
    oxdmBufferedFileDataSource* _BufferForNode(const oxdmQueryNode* target, const oxdmQueryNode* current,
                                               oxdmBufferedFileDataSource* buffer) const;

    oxdmBufferedFileDataSource* parentBuffer_ = nullptr;
    std::vector<oxdmBufferedFileDataSource*> childBuffers_;
    oxdmCursorNode* cursorNode_ = nullptr;
    bool ownsCursor_ = false;
    std::vector<oxdmDSColumnBase*> columns_;
    std::vector<bool> changedColumns_;
    std::vector<Row> windowRows_;
    std::vector<std::shared_ptr<oxdmCursorBookmark>> windowBookmarks_;
    Values findValues_;
    Values newValues_;
    Values oldValues_;
    Values savedValues_;
    bool hasFocus_ = false;
    bool onNewRow_ = false;
    std::shared_ptr<oxdmCursorBookmark> focusBookmark_;
    bool rowChanged_ = false;
    std::unique_ptr<_oxdmBufferCallbacks> callbacks_;
    bool fetchNoMore_ = false;
    std::unique_ptr<oxdmDSFocusRowMgr> focusRowMgr_;
    bool autoNewRow_ = false;
    bool canDeleteRow_ = false;
    bool canUpdateRow_ = false;
    std::unique_ptr<oxdmCursorBookmark> reservedKey_;
    bool needNewRowPrefills_ = true;
    std::unique_ptr<std::vector<std::shared_ptr<FocusRowState>>> focusRowStates_;
    bool allowNullsInFastFind_ = false;
    oxdmBufferedFileDataSource* dataSource_;
    std::unique_ptr<oxdmBufferedDataSourceRole> role_;
    // A root made with a file group owns the manager its tree reads through;
    // it goes after the tree.
    std::unique_ptr<oxdmFileManager> ownedFiles_;
};
