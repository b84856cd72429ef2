#pragma once
// oxdmBufferedFileDataSource (a "buffer"): the data source over one node of
// a cursor tree, with a scrolling window of rows and one editable focus row.
// It is a thin object: its one field is the implementation it makes in its
// constructor, owns and deletes in its destructor, and every operation
// forwards there (see buffered_impl.h for the state and its invariants).
//
//     oxdmBufferedFileDataSource customers(&query, &task, files);
//     customers.SetWindowSize(30);
//     customers.ReQuery();
//     customers.MoveDown(1, 0, true, false);
//
// A root made from a query builds (and owns) the cursor tree of the query's
// root node; a buffer made over a node is a child, or a root over a tree
// that the caller owns and keeps alive longer than the buffer.

#include <map>
#include <vector>

#include "oxdm/datasource/buffered/buffered_impl.h"
#include "oxdm/datasource/data_source.h"
#include "oxdm/query/filter_target.h"

class oxdmBufferedFileDataSource : public oxdmDataSource, public oxdmFilterSource {
public:
    using WindowScrollType = oxdmDataSource::WindowScrollType;

    // A child (parent not null) or a root over an existing cursor node.
    oxdmBufferedFileDataSource(oxdmBufferedFileDataSource* parent, oxdmCursorNode* cursor);
    oxdmBufferedFileDataSource(oxdmBufferedFileDataSource* parent, oxdmCursorNode* cursor, bool autoNewRow);
    // A root over the query's root node, its files opened in the group
    // `file` of a file manager that the buffer owns. Throws oxdmException
    // when a file can't be opened.
    oxdmBufferedFileDataSource(const oxdmQuery* query, oxTask* task, short file);
    // The same through the caller's file manager (null: the tree makes one).
    oxdmBufferedFileDataSource(const oxdmQuery* query, oxTask* task, oxdmFileManager* files);
    ~oxdmBufferedFileDataSource() override;
    oxdmBufferedFileDataSource(const oxdmBufferedFileDataSource&) = delete;
    oxdmBufferedFileDataSource& operator=(const oxdmBufferedFileDataSource&) = delete;

    void SupressNotification(bool suppress) override { impl_->SupressNotification(suppress); }
    short WindowSize() override { return impl_->WindowSize(); }
    void SetWindowSize(short rows) override { impl_->SetWindowSize(rows); }
    void CacheSetWindowSize(bool cache) override { impl_->CacheSetWindowSize(cache); }
    void ClearLastWindowSizeCache() override { impl_->ClearLastWindowSizeCache(); }
    long NumWindowDataRows() const override { return impl_->NumWindowDataRows(); }
    bool MoreRowsThanWindowSize() const override { return impl_->MoreRowsThanWindowSize(); }
    CString CellValueAsString(short row, short col) override { return impl_->CellValueAsString(row, col); }
    bool CanScrollUp() const override { return impl_->CanScrollUp(); }
    bool CanScrollDown() const override { return impl_->CanScrollDown(); }
    double WindowScrollPercent() const override { return impl_->WindowScrollPercent(); }
    double SetWindowScrollPercent(double percent) override { return impl_->SetWindowScrollPercent(percent); }
    short SetWindowScroll(WindowScrollType type, short rows) override { return impl_->SetWindowScroll(type, rows); }
    oxdmDSBookmark* GetBookmark(short row) const override { return impl_->GetBookmark(row); }
    short FocusRow() const override { return impl_->FocusRow(); }
    void SetFocus(short row, unsigned long initiator, bool notifyInitiator) override {
        impl_->SetFocus(row, initiator, notifyInitiator);
    }
    bool IsNewRow() const override { return impl_->IsNewRow(); }
    bool IsNewRow(short row) const override { return impl_->IsNewRow(row); }
    void SetRowChanged(bool changed) override { impl_->SetRowChanged(changed); }
    CString ColLabel(short col) override { return impl_->ColLabel(col); }
    CString ColName(short col) override { return impl_->ColName(col); }
    CString ColID(short col) override { return impl_->ColID(col); }
    void SetReadOnly(short col, bool readOnly, unsigned long initiator, bool notifyInitiator) override {
        impl_->SetReadOnly(col, readOnly, initiator, notifyInitiator);
    }
    bool IsReadOnly(short col) const override { return impl_->IsReadOnly(col); }
    bool IsRequired(short col) const override { return impl_->IsRequired(col); }
    bool HasData() const override { return impl_->HasData(); }
    short NumColumns() const override { return impl_->NumColumns(); }
    bool HasFocusRow() const override { return impl_->HasFocusRow(); }
    // The buffer only appends.
    bool CanInsertRow() const override { return false; }
    bool InsertRow() override { return false; }
    void ReQuery() override { impl_->ReQuery(); }
    void RefetchVisibleRows(unsigned long initiator, bool notifyInitiator, bool children) override {
        impl_->RefetchVisibleRows(initiator, notifyInitiator, children);
    }
    short IndexForColumn(const CString& name) const override { return impl_->IndexForColumn(name); }
    const CString& NodeLabel() const override { return impl_->NodeLabel(); }
    void AttachRange(short handle) override { impl_->AttachRange(handle); }
    void DetachRange() override { impl_->DetachRange(); }
    void AttachCondition(short handle) override { impl_->AttachCondition(handle); }
    void DetachCondition() override { impl_->DetachCondition(); }
    void SetCancelQueryCallback(CBFunctor0wRet<int>& callback, int argument) override {
        impl_->SetCancelQueryCallback(callback, argument);
    }
    oxdmDSBookmark* GetFocusRowBookmark() const override { return impl_->GetFocusRowBookmark(); }
    CString NewValueAsString(short col) override { return impl_->NewValueAsString(col); }
    CString SavedValueAsString(short col) override { return impl_->SavedValueAsString(col); }
    CString OldValueAsString(short col) override { return impl_->OldValueAsString(col); }
    bool SetNewValue(short col, const CString& text) override { return impl_->SetNewValue(col, text); }
    bool ValidateRow(unsigned long initiator, bool notifyInitiator) override {
        return impl_->ValidateRow(initiator, notifyInitiator, false);
    }
    bool RevertRow(unsigned long initiator, bool notifyInitiator) override {
        return impl_->RevertRow(initiator, notifyInitiator);
    }
    bool IsColumnChanged(short col) const override { return impl_->IsColumnChanged(col); }
    bool IsRowChanged() const override { return impl_->IsRowChanged(); }
    void SetPrefillOn(short col, bool on, unsigned long initiator, bool notifyInitiator) override {
        impl_->SetPrefillOn(col, on, initiator, notifyInitiator);
    }
    bool IsPrefillOn(short col) const override { return impl_->IsPrefillOn(col); }
    CString DefaultValueAsString(short col) override { return impl_->DefaultValueAsString(col); }
    void SetDefaultValue(short col, const CString& text) override { impl_->SetDefaultValue(col, text); }
    bool GoToBookmark(oxdmDSBookmark& bookmark, bool notify) override { return impl_->GoToBookmark(bookmark, notify); }
    bool FindRow(bool fromEnd, CBFunctor1wRet<oxdmDataSource*, CompareRowResult> compare, bool stayOnFail,
                 Direction direction) override {
        return impl_->FindRow(fromEnd, compare, stayOnFail, direction);
    }
    bool CanDoFastFind(short col) const override { return impl_->CanDoFastFind(col); }
    void CopyKeyColumnsToFindValues() override { impl_->CopyKeyColumnsToFindValues(); }
    CString GetFindValueAsString(short col) override { return impl_->GetFindValueAsString(col); }
    bool SetFindValue(short col, const CString& text) override { return impl_->SetFindValue(col, text); }
    bool FindGT() override { return impl_->FindGT(); }
    bool FindGE() override { return impl_->FindGE(); }
    bool FindGE(short position) { return impl_->FindGE(position); }
    bool FindSubstr(short col, const CString& text) override { return impl_->FindSubstr(col, text); }
    bool CanMoveUp() const override { return impl_->CanMoveUp(); }
    bool CanMoveDown(bool noNewRow) const override { return impl_->CanMoveDown(noNewRow); }
    bool CanMoveToTop(bool noNewRow) const override { return impl_->CanMoveToTop(noNewRow); }
    bool CanMoveToBottom(bool noNewRow) const override { return impl_->CanMoveToBottom(noNewRow); }
    short MoveUp(short rows, unsigned long initiator, bool notifyInitiator) override {
        return impl_->MoveUp(rows, initiator, notifyInitiator);
    }
    short MoveDown(short rows, unsigned long initiator, bool notifyInitiator, bool noNewRow) override {
        return impl_->MoveDown(rows, initiator, notifyInitiator, noNewRow);
    }
    bool MoveToTop(unsigned long initiator, bool notifyInitiator, bool noNewRow) override {
        return impl_->MoveToTop(initiator, notifyInitiator, noNewRow);
    }
    bool MoveToBottom(unsigned long initiator, bool notifyInitiator, bool noNewRow) override {
        return impl_->MoveToBottom(initiator, notifyInitiator, noNewRow);
    }
    oxdmDSCellOnFocusRow* ColumnData(short col) override { return impl_->ColumnData(col); }
    oxdmDSFocusRowMgr* QueryRow() override { return impl_->QueryRow(); }
    oxioFileManager* GetFileManager() override { return impl_->GetFileManager(); }
    CString ObserverNewValueAsString(short col) override { return impl_->ObserverNewValueAsString(col); }
    bool ObserverSetNewValue(short col, const CString& text, unsigned long initiator, bool notifyInitiator) override {
        return impl_->ObserverSetNewValue(col, text, initiator, notifyInitiator);
    }
    void ObserverSetRowChanged(unsigned long initiator, bool notifyInitiator) override {
        impl_->ObserverSetRowChanged(initiator, notifyInitiator);
    }
    void Clear() override { impl_->Clear(); }
    void FetchNoMore() override { impl_->FetchNoMore(); }
    CString RowDescription() override { return impl_->RowDescription(); }
    bool IsNewValueNull(short col) const override { return impl_->IsNewValueNull(col); }
    // Accepts only an oxdmBufferedFileDataSourceImpl; anything else is ignored.
    void SetImpl(oxdmDataSourceImplBase* impl) override;
    oxdmDataSourceImplBase* GetImpl() override { return impl_; }

    // The slots a buffer adds.
    virtual bool ValidateRow(unsigned long initiator, bool notifyInitiator, bool force) {
        return impl_->ValidateRow(initiator, notifyInitiator, force);
    }
    bool ValidateColumn(short col) override { return impl_->ValidateColumn(col); }
    virtual bool ValidateColumns(bool changedOnly) { return impl_->ValidateColumns(changedOnly); }
    bool CanDeleteRow() const override { return impl_->CanDeleteRow(); }
    bool DeleteRow(unsigned long initiator, bool notifyInitiator) override {
        return impl_->DeleteRow(initiator, notifyInitiator);
    }
    bool DeleteAllRows(unsigned long initiator, bool notifyInitiator) override {
        return impl_->DeleteAllRows(initiator, notifyInitiator);
    }
    bool CanAppendRow() const override { return impl_->CanAppendRow(); }
    bool AppendRow() override { return impl_->AppendRow(); }
    void Rollback() override { impl_->Rollback(); }
    void CommitRollbackStack() override { impl_->CommitRollbackStack(); }
    bool ReserveKey() { return impl_->ReserveKey(); }
    bool UnreserveKey(CString& error) { return impl_->UnreserveKey(error); }
    bool IsKeyReserved() const { return impl_->IsKeyReserved(); }
    std::map<CString, CString> FocusKeyValues() const { return impl_->FocusKeyValues(); }
    virtual bool SetNewValue(short col, const oxData* value) { return impl_->SetNewValue(col, value); }
    virtual void PushFocusRowState() { impl_->PushFocusRowState(); }
    virtual void PopFocusRowState() { impl_->PopFocusRowState(); }
    virtual void ClearFocusRowStateStack() { impl_->ClearFocusRowStateStack(); }
    virtual bool SetFindValue(short col, const oxData* value) { return impl_->SetFindValue(col, value); }
    virtual void SetCallbacks(void* owner, const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr) {
        impl_->SetCallbacks(owner, mgr, controlMgr);
    }
    virtual void RemoveCallbacks(void* owner) { impl_->RemoveCallbacks(owner); }
    virtual const oxData* NewValue(short col) const { return impl_->NewValue(col); }
    virtual const oxData* SavedValue(short col) const { return impl_->SavedValue(col); }
    virtual const oxData* OldValue(short col) const { return impl_->OldValue(col); }
    virtual const oxData* GetFindValue(short col) const { return impl_->GetFindValue(col); }

    // The filter face: the live column of that id; oxdmException when none.
    const oxdmFilterColumn& FilterColumn(const CString& id) const override;

    oxdmBufferedFileDataSource* Root() const { return impl_->Root(); }
    oxdmBufferedFileDataSource* Parent() const { return impl_->Parent(); }
    void AddChild(oxdmBufferedFileDataSource* child) { impl_->AddChild(child); }
    const std::vector<oxdmBufferedFileDataSource*>& Children() const { return impl_->Children(); }
    oxdmBufferedFileDataSource* BufferForNode(const oxdmQueryNode& node) const { return impl_->BufferForNode(node); }
    oxdmBufferedFileDataSource* BufferForNode(const CString& label) const { return impl_->BufferForNode(label); }
    oxdmCursorNode* Cursor() const { return impl_->Cursor(); }
    oxTask* Task() const { return impl_->Task(); }
    void Debug(const CString& text, bool a, bool b) { impl_->Debug(text, a, b); }
    oxdmDSColumnBase* Column(const CString& id) const { return impl_->Column(id); }
    oxdmDSColumnBase* ColumnForIndex(short col) const { return impl_->ColumnForIndex(col); }
    short AddColumn(oxdmDSColumnBase* column) { return impl_->AddColumn(column); }
    void AddColumns(const std::vector<oxdmColumnBase*>& columns) { impl_->AddColumns(columns); }
    void CreateColumnData(const CString& name, short col, oxdmBufferedFileDataSource* dataSource) {
        impl_->CreateColumnData(name, col, dataSource);
    }
    const oxData* CellValue(short row, short col) const { return impl_->CellValue(row, col); }
    const oxData* ColValue(short col) const { return impl_->ColValue(col); }
    bool MoveCursorToFocus() { return impl_->MoveCursorToFocus(); }
    bool SetColValue(short col, const oxData* value, unsigned long initiator, bool notifyInitiator) {
        return impl_->SetColValue(col, value, initiator, notifyInitiator);
    }
    void DoAutoLookup(short col) { impl_->DoAutoLookup(col); }
    bool ForAllRows(const oxdmBufferedFileDataSourceImpl::RowVisitor& visit, bool filter) {
        return impl_->ForAllRows(visit, filter);
    }
    const oxData* DefaultValue(short col) const { return impl_->DefaultValue(col); }
    void SetDefaultValue(short col, const oxData* value) { impl_->SetDefaultValue(col, value); }
    const oxdmFilter& Filter() const { return impl_->Filter(); }
    void SetFilter(const oxdmFilter& filter) { impl_->SetFilter(filter); }
    short Index() const { return impl_->Index(); }
    void SetIndex(short index) { impl_->SetIndex(index); }
    void RefreshColumn(short col) { impl_->RefreshColumn(col); }
    void RefetchRow() { impl_->RefetchRow(); }
    void RefetchRows(unsigned long initiator, bool notifyInitiator) { impl_->RefetchRows(initiator, notifyInitiator); }
    bool NeedNewRowPrefills() const { return impl_->NeedNewRowPrefills(); }
    void SetNeedNewRowPrefills(bool need) { impl_->SetNeedNewRowPrefills(need); }
    void SetAutoNewRow(bool on) { impl_->SetAutoNewRow(on); }
    void SetCanDeleteRow(bool on) { impl_->SetCanDeleteRow(on); }
    void SetCanUpdateRow(bool on) { impl_->SetCanUpdateRow(on); }
    void SetAllowDataConflictOverwrite(bool allow) { impl_->SetAllowDataConflictOverwrite(allow); }
    bool AllowNullsInFastFind() const { return impl_->AllowNullsInFastFind(); }
    void SetAllowNullsInFastFind(bool allow) { impl_->SetAllowNullsInFastFind(allow); }
    void SetRole(oxdmBufferedDataSourceRole* role) { impl_->SetRole(role); }
    int HandleRowEvent(Event event, oxdmEvent* msg) { return impl_->HandleRowEvent(event, msg); }
    int HandleColEvent(Event event, short col, oxdmDSCellOnFocusRow* cell) {
        return impl_->HandleColEvent(event, col, cell);
    }
    // The event whose callbacks run now, -1 for none.
    int RunningEvent() const { return impl_->RunningEvent(); }

private:
    friend class oxdmBufferedFileDataSourceImpl;
    // Owned; set by the implementation's constructor through SetImpl.
    oxdmBufferedFileDataSourceImpl* impl_ = nullptr;
};
