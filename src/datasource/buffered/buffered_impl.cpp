// The buffer's construction and clean-up, its columns, its tree of child
// buffers, its callbacks and the plain forwards to the cursor node.

#include "oxdm/datasource/buffered/buffered_impl.h"

#include <cassert>

#include "buffer_callbacks.h"
#include "live_column_factory.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/datasource/buffered/buf_focus_row.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/datasource/buffered/role.h"
#include "oxdm/notify/change.h"
#include "oxdm/query/column_base.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_node.h"
#include "oxdm/record/file_manager.h"
#include "oxdm/record/table_def.h"

// One pushed focus row state: the changed flags, clones of the new values
// (owned) and the row's changed flag.
struct oxdmBufferedFileDataSourceImpl::FocusRowState {
    std::vector<bool> changedColumns;
    std::vector<std::unique_ptr<oxData>> newValues;
    bool rowChanged;
};

oxdmBufferedFileDataSourceImpl::oxdmBufferedFileDataSourceImpl(oxdmBufferedFileDataSource* dataSource,
                                                               oxdmBufferedFileDataSource* parent,
                                                               oxdmCursorNode* cursor, bool hasAutoNewRow,
                                                               bool autoNewRow)
    : oxdmDataSourceImplBase(dataSource), dataSource_(dataSource) {
    assert(cursor != nullptr);
    oxdmInstallBufferedSeams();
    Initialize(parent, cursor, hasAutoNewRow, autoNewRow);
}

oxdmBufferedFileDataSourceImpl::oxdmBufferedFileDataSourceImpl(oxdmBufferedFileDataSource* dataSource,
                                                               const oxdmQuery* query, oxTask* task,
                                                               oxdmFileManager* files, bool ownFiles)
    : oxdmDataSourceImplBase(dataSource), dataSource_(dataSource) {
    assert(query != nullptr && query->Root() != nullptr);
    oxdmInstallBufferedSeams();
    if (ownFiles) ownedFiles_.reset(files);
    auto* tree = new oxdmOXIOCursorNode(*query->Root(), task, files);
    ownsCursor_ = true;
    Initialize(nullptr, tree, false, false);
}

oxdmBufferedFileDataSourceImpl::~oxdmBufferedFileDataSourceImpl() { _Cleanup(); }

void oxdmBufferedFileDataSourceImpl::Initialize(oxdmBufferedFileDataSource* parent, oxdmCursorNode* cursor,
                                                bool hasAutoNewRow, bool autoNewRow) {
    role_ = std::make_unique<oxdmBufferedDataSourceRole>();
    dataSource_->SetImpl(this);
    parentBuffer_ = parent;
    cursorNode_ = cursor;
    SupressNotification(true);
    needNewRowPrefills_ = true;
    autoNewRow_ = hasAutoNewRow ? (cursor->CanInsert() && autoNewRow) : cursor->CanInsert();
    canDeleteRow_ = cursor->CanDelete();
    canUpdateRow_ = cursor->CanUpdate();
    focusRowMgr_ = std::make_unique<oxdmBufFileFocusRowMgr>(dataSource_);
    callbacks_ = std::make_unique<_oxdmBufferCallbacks>();
    cursor->First(false);
    if (auto* tree = dynamic_cast<oxdmOXIOCursorNode*>(cursor)) {
        for (oxdmOXIOCursorNode* child : tree->OneToManys()) AddChild(new oxdmBufferedFileDataSource(dataSource_, child));
    }
    std::vector<oxdmColumnBase*> queryColumns;
    cursor->Columns(queryColumns);
    AddColumns(queryColumns);
    SetWindowSize(1);
    _SetFocus(0, SyncChildrenNow);
    SupressNotification(false);
}

void oxdmBufferedFileDataSourceImpl::_Cleanup() {
    reservedKey_.reset();
    callbacks_.reset();
    for (oxdmBufferedFileDataSource* child : childBuffers_) delete child;
    childBuffers_.clear();
    DeleteBuffer();
    focusRowMgr_.reset();
    for (oxdmDSColumnBase* column : columns_) delete column;
    columns_.clear();
    findValues_.clear();
    newValues_.clear();
    oldValues_.clear();
    savedValues_.clear();
    focusBookmark_.reset();
    if (ownsCursor_) delete cursorNode_;
    cursorNode_ = nullptr;
    focusRowStates_.reset();
    role_.reset();
}

// ---------------------------------------------------------------- events

int oxdmBufferedFileDataSourceImpl::DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent* msg) {
    if (const int answer = callbacks_->RaiseRow(event, focusRowMgr_.get(), msg)) return answer;
    return role_->DoHandleRowEvent(event, msg);
}

int oxdmBufferedFileDataSourceImpl::DoHandleColEvent(oxdmDataSource::Event event, short col,
                                                     oxdmDSCellOnFocusRow* cell) {
    if (const int answer = callbacks_->RaiseCol(event, col, focusRowMgr_.get(), cell)) return answer;
    return role_->DoHandleColEvent(event, col, cell);
}

int oxdmBufferedFileDataSourceImpl::RunningEvent() const { return callbacks_ ? callbacks_->Running() : -1; }

void oxdmBufferedFileDataSourceImpl::SetCallbacks(void* owner, const oxdmCallbackMgr& mgr,
                                                  oxdmControlMgr* controlMgr) {
    std::vector<CString> ids;
    for (const oxdmDSColumnBase* column : columns_) ids.push_back(column->ID());
    callbacks_->Bind(owner, mgr, controlMgr, NodeLabel(), ids);
    for (oxdmBufferedFileDataSource* child : childBuffers_) child->SetCallbacks(owner, mgr, controlMgr);
}

void oxdmBufferedFileDataSourceImpl::RemoveCallbacks(void* owner) {
    callbacks_->Remove(owner);
    for (oxdmBufferedFileDataSource* child : childBuffers_) child->RemoveCallbacks(owner);
}

void oxdmBufferedFileDataSourceImpl::SupressNotification(bool suppress) {
    if (dataSource_->IsNotificationSupressed() == suppress) return;
    for (oxdmBufferedFileDataSource* child : childBuffers_) child->SupressNotification(suppress);
    dataSource_->mvcSubject::SupressNotification(suppress);
    if (!suppress) {
        RefreshReadOnly();
        SendAllChanged(0, true);
    }
}

void oxdmBufferedFileDataSourceImpl::SetRole(oxdmBufferedDataSourceRole* role) {
    if (role != nullptr) role_.reset(role);
}

// ---------------------------------------------------------------- columns

short oxdmBufferedFileDataSourceImpl::AddColumn(oxdmDSColumnBase* column) {
    assert(column != nullptr);
    const auto col = static_cast<short>(columns_.size());
    columns_.push_back(column);
    changedColumns_.push_back(false);
    CreateColumnBuffers(column, col);
    for (Row& row : windowRows_) row.push_back(column->CreateData());
    CreateColumnData(column->ID(), col, dataSource_);
    return col;
}

void oxdmBufferedFileDataSourceImpl::CreateColumnBuffers(oxdmDSColumnBase* column, [[maybe_unused]] short col) {
    assert(static_cast<size_t>(col) == newValues_.size());
    findValues_.emplace_back(column->CreateData());
    newValues_.emplace_back(column->CreateData());
    oldValues_.emplace_back(column->CreateData());
    savedValues_.emplace_back(column->CreateData());
}

void oxdmBufferedFileDataSourceImpl::AddColumns(const std::vector<oxdmColumnBase*>& columns) {
    for (const oxdmColumnBase* column : columns) AddColumn(column->BuildColumn(*dataSource_));
}

void oxdmBufferedFileDataSourceImpl::CreateColumnData(const CString& name, short col,
                                                      oxdmBufferedFileDataSource* dataSource) {
    focusRowMgr_->Data().AddColumn(name, new oxdmBufFileCellOnFocusRow(dataSource, col));
    for (oxdmBufferedFileDataSource* child : childBuffers_) child->CreateColumnData(name, col, dataSource);
}

oxdmDSCellOnFocusRow* oxdmBufferedFileDataSourceImpl::ColumnData(short col) {
    return ValidCol(col) ? focusRowMgr_->Data().Column(columns_[static_cast<size_t>(col)]->ID()) : nullptr;
}

oxdmDSCellOnFocusRow* oxdmBufferedFileDataSourceImpl::CellFor(short col) { return ColumnData(col); }

oxdmDSColumnBase* oxdmBufferedFileDataSourceImpl::Column(const CString& id) const {
    const short col = IndexForColumn(id);
    return col < 0 ? nullptr : columns_[static_cast<size_t>(col)];
}

oxdmDSColumnBase* oxdmBufferedFileDataSourceImpl::ColumnForIndex(short col) const {
    return ValidCol(col) ? columns_[static_cast<size_t>(col)] : nullptr;
}

short oxdmBufferedFileDataSourceImpl::IndexForColumn(const CString& name) const {
    for (size_t col = 0; col < columns_.size(); ++col) {
        if (columns_[col]->ID().CompareNoCase(name) == 0) return static_cast<short>(col);
    }
    return -1;
}

CString oxdmBufferedFileDataSourceImpl::ColLabel(short col) {
    return ValidCol(col) ? columns_[static_cast<size_t>(col)]->Label() : CString();
}

CString oxdmBufferedFileDataSourceImpl::ColName(short col) { return ColID(col); }

CString oxdmBufferedFileDataSourceImpl::ColID(short col) {
    return ValidCol(col) ? columns_[static_cast<size_t>(col)]->ID() : CString();
}

void oxdmBufferedFileDataSourceImpl::SetReadOnly(short col, bool readOnly, unsigned long initiator,
                                                 bool notifyInitiator) {
    if (!ValidCol(col)) return;
    columns_[static_cast<size_t>(col)]->SetReadOnly(readOnly);
    dataSource_->Notify(new mvcColChange(col, dataSource_, oxdmDataSource::DSColReadOnlyChanged, initiator,
                                         notifyInitiator),
                        false);
}

bool oxdmBufferedFileDataSourceImpl::IsRequired(short col) const {
    return ValidCol(col) && columns_[static_cast<size_t>(col)]->Required();
}

bool oxdmBufferedFileDataSourceImpl::IsPrefillOn(short col) const {
    return ValidCol(col) && columns_[static_cast<size_t>(col)]->PrefillOn();
}

void oxdmBufferedFileDataSourceImpl::SetPrefillOn(short col, bool on, unsigned long, bool) {
    if (ValidCol(col)) columns_[static_cast<size_t>(col)]->SetPrefillOn(on);
}

const oxData* oxdmBufferedFileDataSourceImpl::DefaultValue(short col) const {
    return ValidCol(col) ? &columns_[static_cast<size_t>(col)]->DefaultValue(false) : nullptr;
}

CString oxdmBufferedFileDataSourceImpl::DefaultValueAsString(short col) {
    const oxData* value = DefaultValue(col);
    return value ? columns_[static_cast<size_t>(col)]->ValueAsString(*value) : CString();
}

void oxdmBufferedFileDataSourceImpl::SetDefaultValue(short col, const oxData* value) {
    if (ValidCol(col) && value != nullptr) columns_[static_cast<size_t>(col)]->SetDefaultValue(*value);
}

void oxdmBufferedFileDataSourceImpl::SetDefaultValue(short col, const CString& text) {
    if (!ValidCol(col)) return;
    oxdmDSColumnBase& column = *columns_[static_cast<size_t>(col)];
    std::unique_ptr<oxData> value(column.DefaultValue(false).Clone());
    if (column.CopyValue(text, *value)) column.SetDefaultValue(*value);
}

// ---------------------------------------------------------------- the tree

oxdmBufferedFileDataSource* oxdmBufferedFileDataSourceImpl::Root() const {
    oxdmBufferedFileDataSource* buffer = dataSource_;
    while (buffer->Parent() != nullptr) buffer = buffer->Parent();
    return buffer;
}

void oxdmBufferedFileDataSourceImpl::AddChild(oxdmBufferedFileDataSource* child) {
    assert(child != nullptr);
    childBuffers_.push_back(child);
    for (short col = 0; col < NumColumns(); ++col) child->CreateColumnData(ColLabel(col), col, dataSource_);
}

oxdmBufferedFileDataSource* oxdmBufferedFileDataSourceImpl::BufferForNode(const oxdmQueryNode& node) const {
    oxdmBufferedFileDataSource* root = Root();
    const auto* tree = dynamic_cast<const oxdmOXIOCursorNode*>(root->Cursor());
    return tree ? _BufferForNode(&node, tree->QueryNode(), root) : nullptr;
}

oxdmBufferedFileDataSource* oxdmBufferedFileDataSourceImpl::BufferForNode(const CString& label) const {
    const auto* tree = dynamic_cast<const oxdmOXIOCursorNode*>(Root()->Cursor());
    if (tree == nullptr) return nullptr;
    const oxdmQueryNode* node = tree->QueryNode()->Root()->Node(label, true, true);
    return node ? BufferForNode(*node) : nullptr;
}

oxdmBufferedFileDataSource* oxdmBufferedFileDataSourceImpl::_BufferForNode(const oxdmQueryNode* target,
                                                                           const oxdmQueryNode* current,
                                                                           oxdmBufferedFileDataSource* buffer) const {
    // Tables are compared by name, so that a node of another query over the
    // same tables finds its buffer here too.
    if (current->Table()->Name() == target->Table()->Name()) return buffer;
    // One-to-one children share the rows of their parent's buffer.
    for (const oxdmQueryNode* child : current->OneToOnes()) {
        if (auto* found = _BufferForNode(target, child, buffer)) return found;
    }
    const auto& manys = current->OneToManys();
    const auto& children = buffer->Children();
    for (size_t i = 0; i < manys.size() && i < children.size(); ++i) {
        if (auto* found = _BufferForNode(target, manys[i], children[i])) return found;
    }
    return nullptr;
}

void oxdmBufferedFileDataSourceImpl::SyncChildren() {
    for (oxdmBufferedFileDataSource* child : childBuffers_) child->impl_->Sync();
}

void oxdmBufferedFileDataSourceImpl::Sync() {
    SetNeedNewRowPrefills(true);
    ReQuery();
}

// ---------------------------------------------------------------- forwards to the cursor

const CString& oxdmBufferedFileDataSourceImpl::NodeLabel() const { return cursorNode_->ID(); }
oxTask* oxdmBufferedFileDataSourceImpl::Task() const { return cursorNode_->Task(); }
oxioFileManager* oxdmBufferedFileDataSourceImpl::GetFileManager() { return cursorNode_->GetFileManager(); }
const oxdmFilter& oxdmBufferedFileDataSourceImpl::Filter() const { return cursorNode_->Filter(); }
short oxdmBufferedFileDataSourceImpl::Index() const { return cursorNode_->Index(); }
void oxdmBufferedFileDataSourceImpl::SetAllowDataConflictOverwrite(bool allow) {
    cursorNode_->SetAllowDataConflictOverwrite(allow);
}
void oxdmBufferedFileDataSourceImpl::Debug(const CString& text, bool a, bool b) { cursorNode_->Debug(text, a, b, 0); }
void oxdmBufferedFileDataSourceImpl::_ClearFileBuffers(oxdmCursorNode* node) { node->ClearFileBuffers(); }

// ---------------------------------------------------------------- focus row states

void oxdmBufferedFileDataSourceImpl::PushFocusRowState() {
    if (!focusRowStates_) focusRowStates_ = std::make_unique<std::vector<std::shared_ptr<FocusRowState>>>();
    auto state = std::make_shared<FocusRowState>();
    state->changedColumns = changedColumns_;
    for (const auto& value : newValues_) state->newValues.emplace_back(value->Clone());
    state->rowChanged = rowChanged_;
    focusRowStates_->push_back(std::move(state));
}

void oxdmBufferedFileDataSourceImpl::PopFocusRowState() {
    if (!focusRowStates_ || focusRowStates_->empty()) return;
    const bool wasChanged = IsRowChanged();
    const std::shared_ptr<FocusRowState> state = focusRowStates_->back();
    focusRowStates_->pop_back();
    changedColumns_ = state->changedColumns;
    rowChanged_ = state->rowChanged;
    for (size_t col = 0; col < newValues_.size() && col < state->newValues.size(); ++col) {
        newValues_[col]->SetVal(*state->newValues[col]);
    }
    SendRowChanged(FocusRow());
    // The state change goes out as clean whatever came back.
    if (IsRowChanged() != wasChanged) SendRowState(false, oxdmRowStateChange::CauseUnspecified, 0, true);
}

void oxdmBufferedFileDataSourceImpl::ClearFocusRowStateStack() {
    if (focusRowStates_) focusRowStates_->clear();
}

// ---------------------------------------------------------------- find values

const oxData* oxdmBufferedFileDataSourceImpl::GetFindValue(short col) const {
    return ValidCol(col) ? findValues_[static_cast<size_t>(col)].get() : nullptr;
}

bool oxdmBufferedFileDataSourceImpl::SetFindValue(short col, const oxData* value) {
    if (!ValidCol(col) || value == nullptr) return false;
    return columns_[static_cast<size_t>(col)]->CopyValue(*value, *findValues_[static_cast<size_t>(col)]);
}

CString oxdmBufferedFileDataSourceImpl::GetFindValueAsString(short col) {
    const oxData* value = GetFindValue(col);
    return value ? columns_[static_cast<size_t>(col)]->ValueAsString(*value) : CString();
}
