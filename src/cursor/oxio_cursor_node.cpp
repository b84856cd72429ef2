// The record cursor node: construction and destruction, the answers it takes
// from its query node, searching the tree, filters and ranges, the bookmark
// stack and attachments.

#include "oxdm/cursor/oxio_cursor_node.h"

#include <cassert>

#include "oxdm/common/store/attachments.h"
#include "oxdm/common/store/bookmark.h"
#include "oxdm/common/store/conditions.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/oxio_cursor_bookmark.h"
#include "oxdm/cursor/rollback_stack.h"
#include "oxdm/query/query_column_base.h"
#include "oxdm/query/query_node.h"
#include "oxdm/record/file_manager.h"
#include "oxdm/record/table_def.h"
#include "oxdm/record/table_relation.h"

oxdmOXIOCursorNode::oxdmOXIOCursorNode(const oxdmQueryNode& node, oxTask* task, oxdmFileManager* manager)
    : queryNode_(&node),
      fileManager_(manager),
      task_(task),
      parent_(nullptr),
      filter_(node.Filter()),
      index_(static_cast<short>(node.Index())),
      group_(manager != nullptr ? manager->TransactionGroup() : 0) {
    _Initialize();
}

oxdmOXIOCursorNode::oxdmOXIOCursorNode(oxdmOXIOCursorNode* parent, const oxdmQueryNode& node, oxTask* task,
                                       short group)
    : queryNode_(&node),
      task_(task),
      parent_(parent),
      filter_(node.Filter()),
      index_(static_cast<short>(node.Index())),
      group_(group) {
    _Initialize();
}

void oxdmOXIOCursorNode::_Initialize() {
    const oxdmQueryNode& node = *queryNode_;
    file_ = &GetFileManager()->FileForTable(node.FileSpec(), node.Table(),
                                            (node.Style() & oxdmQueryNode::StyleCreateFile) != 0, 0);
    if (node.UseRollbackStack()) rollback_ = std::make_shared<oxdmRollbackStack>();
    conditions_ = filter_.Attach(*this);
    // The join columns are always read, so that the key can be matched.
    if (const oxdmTableRelation* relation = Relation())
        for (oxdmColumnDef* dest : relation->DestColumns()) AddColumn(dest);
    for (bool oneToOne : {true, false}) {
        for (oxdmQueryNode* childNode : oneToOne ? node.OneToOnes() : node.OneToManys()) {
            children_.push_back(std::make_unique<oxdmOXIOCursorNode>(this, *childNode, task_, group_));
            (oneToOne ? oneToOnes_ : oneToManys_).push_back(children_.back().get());
            // The parent always holds what the child's key needs.
            for (oxdmColumnDef* source : childNode->SourceRel()->SourceColumns()) AddColumn(source);
        }
    }
}

oxdmOXIOCursorNode::~oxdmOXIOCursorNode() {
    if (conditions_ > 0) xc_term_conditions(conditions_, true);
    Revert(true);
    PopAllBookmarks(true);
    CommitRollbackStack();
    rollback_.reset();
    cursor_.reset();
    oneToOnes_.clear();
    oneToManys_.clear();
    children_.clear();
    GetFileManager()->ReleaseTable(queryNode_->FileSpec(), queryNode_->Table());
    ownedManager_.reset();
}

const oxdmTableDef* oxdmOXIOCursorNode::Table() const { return queryNode_->Table(); }
const oxdmTableRelation* oxdmOXIOCursorNode::Relation() const { return parent_ ? queryNode_->SourceRel() : nullptr; }
short oxdmOXIOCursorNode::FileNum() const { return file_->FileNum(); }

bool oxdmOXIOCursorNode::HasNoRecord() const {
    const xio_rec_def& rec = Table()->RecDef();
    return rec.custom_fields != 0 && rec.stored_records < 1;
}

oxdmFileManager* oxdmOXIOCursorNode::GetFileManager() {
    if (parent_ != nullptr) return Root()->GetFileManager();
    if (fileManager_ == nullptr) {
        ownedManager_ = std::make_unique<oxdmFileManager>(task_, group_);
        fileManager_ = ownedManager_.get();
    }
    return fileManager_;
}

oxioCursor* oxdmOXIOCursorNode::DataCursor() const {
    if (!cursor_) cursor_ = std::make_unique<oxioCursor>(*file_, Table()->Num(), index_);
    return cursor_.get();
}

void oxdmOXIOCursorNode::_AttachColumn(const oxdmColumnDef* column, oxData* value) {
    DataCursor()->AttachColumn(column->Name(), *value);
}

void oxdmOXIOCursorNode::SetIndex(short index) {
    Table()->Index(index);
    index_ = index;
    // The marks of the stack name positions of the old index's cursor.
    bookmarks_.clear();
    cursor_.reset();
    const std::vector<const oxdmColumnDef*>& columns = AttachedColumns();
    for (size_t i = 0; i < columns.size(); ++i) _AttachColumn(columns[i], AttachedValue(i));
    if (conditions_ > 0) AttachCondition(conditions_);
}

// ---------------------------------------------------------------- answers

bool oxdmOXIOCursorNode::CanInsert() const { return queryNode_->CanInsert(); }
bool oxdmOXIOCursorNode::CanDelete() const { return queryNode_->CanDelete(); }
bool oxdmOXIOCursorNode::CanUpdate() const { return queryNode_->CanUpdate(); }
bool oxdmOXIOCursorNode::SuppressDups() const { return queryNode_->SuppressDups(); }
bool oxdmOXIOCursorNode::CascadedDelete() const { return queryNode_->CascadedDelete(); }
const CString& oxdmOXIOCursorNode::ID() const { return queryNode_->ID(); }
CString oxdmOXIOCursorNode::RowName() const { return Table()->Desc(); }
CString oxdmOXIOCursorNode::RowDescription() const { return Table()->Desc(); }
bool oxdmOXIOCursorNode::HasCustomFields() const { return Table()->RecDef().custom_fields != 0; }

const std::vector<oxdmColumnDef*>& oxdmOXIOCursorNode::SortColumns() const {
    return Table()->Index(Index()).Columns();
}

void oxdmOXIOCursorNode::CanUpdate(const CString& columnID, bool& result) const {
    const oxdmQueryColumnBase* column = Root()->queryNode_->Column(columnID, true, true, true);
    if (column == nullptr || column->Node() == nullptr) return;
    if (column->Node()->ID() != ID()) result = column->Node()->CanUpdate();
}

oxdmColumnBase* oxdmOXIOCursorNode::Column(const CString& id) const {
    return queryNode_->Column(id, true, true, false);
}

void oxdmOXIOCursorNode::Columns(std::vector<oxdmColumnBase*>& out) const {
    queryNode_->Columns(out, true, true, false);
}

// ---------------------------------------------------------------- the tree

oxdmOXIOCursorNode* oxdmOXIOCursorNode::Root() const {
    const oxdmOXIOCursorNode* node = this;
    while (node->parent_ != nullptr) node = node->parent_;
    return const_cast<oxdmOXIOCursorNode*>(node);
}

oxdmCursorNode* oxdmOXIOCursorNode::Node(oxdmQueryNode* node) const {
    if (queryNode_ == node) return const_cast<oxdmOXIOCursorNode*>(this);
    for (const auto* children : {&oneToOnes_, &oneToManys_})
        for (oxdmOXIOCursorNode* child : *children)
            if (oxdmCursorNode* found = child->Node(node)) return found;
    return nullptr;
}

oxdmCursorNode* oxdmOXIOCursorNode::Node(const oxdmTableDef* table) const {
    if (Table() == table) return const_cast<oxdmOXIOCursorNode*>(this);
    for (const auto* children : {&oneToOnes_, &oneToManys_})
        for (oxdmOXIOCursorNode* child : *children)
            if (oxdmCursorNode* found = child->Node(table)) return found;
    return nullptr;
}

oxdmColumnDef* oxdmOXIOCursorNode::FindSourceColumn(const oxdmColumnDef* dest) {
    const oxdmTableRelation* relation = Relation();
    if (relation == nullptr) return nullptr;
    for (size_t i = 0; i < relation->DestColumns().size(); ++i)
        if (relation->DestColumns()[i] == dest) return relation->SourceColumns()[i];
    return nullptr;
}

// ---------------------------------------------------------------- filters

void oxdmOXIOCursorNode::AttachCondition(short handle) {
    DataCursor()->AttachCondition(handle, false, true, oxioCursor::ConnectAnd);
}

void oxdmOXIOCursorNode::DetachCondition() { DataCursor()->DetachCondition(0); }
void oxdmOXIOCursorNode::AttachRange(short handle) { DataCursor()->AttachRange(handle); }
void oxdmOXIOCursorNode::DetachRange() { DataCursor()->DetachRange(); }

void oxdmOXIOCursorNode::SetFilter(const oxdmFilter& filter) {
    if (conditions_ > 0) xc_term_conditions(conditions_, true);
    conditions_ = 0;
    filter_ = filter;
    conditions_ = filter_.Attach(*this);
}

// ---------------------------------------------------------------- files

void oxdmOXIOCursorNode::ClearFileBuffers() {
    DataCursor()->ClearFileBuffers();
    for (oxdmOXIOCursorNode* child : oneToOnes_) child->ClearFileBuffers();
}

oxioAttachments* oxdmOXIOCursorNode::CreateAttachments() const {
    oxioCursor* cursor = DataCursor();
    if (!cursor->AttachmentsExist()) return nullptr;
    auto attachments = std::make_unique<oxioAttachments>(*cursor);
    if (attachments->Fetch(false) != oxioStatus::Success) return nullptr;
    return attachments.release();
}

// ---------------------------------------------------------------- bookmark stack

oxioBookmark* oxdmOXIOCursorNode::PushBookmark() {
    for (const auto* children : {&oneToOnes_, &oneToManys_})
        for (oxdmOXIOCursorNode* child : *children) child->PushBookmark();
    bookmarks_.push_back(std::make_unique<oxioBookmark>(*DataCursor(), true));
    return bookmarks_.back().get();
}

void oxdmOXIOCursorNode::_PopOwnBookmark() {
    Revert(true);
    std::unique_ptr<oxioBookmark> mark = std::move(bookmarks_.back());
    bookmarks_.pop_back();
    // The store keeps a position apart from the buffer's contents: go back
    // to the marked record first, then put the kept contents over it.
    mark->GoTo();
    mark->RestoreContents(true);
}

void oxdmOXIOCursorNode::PopBookmark() {
    if (GetFileManager() != nullptr && !bookmarks_.empty()) _PopOwnBookmark();
    for (const auto* children : {&oneToOnes_, &oneToManys_})
        for (oxdmOXIOCursorNode* child : *children) child->PopBookmark();
}

void oxdmOXIOCursorNode::PopAllBookmarks(bool children) {
    while (!bookmarks_.empty()) _PopOwnBookmark();
    if (!children) return;
    for (const auto* kind : {&oneToOnes_, &oneToManys_})
        for (oxdmOXIOCursorNode* child : *kind) child->PopAllBookmarks(true);
}

oxdmCursorBookmark* oxdmOXIOCursorNode::CreateBookmark() { return new oxdmOXIOCursorBookmark(*this, true, false); }

// ---------------------------------------------------------------- rollback stacks

void oxdmOXIOCursorNode::CommitRollbackStack() {
    if (rollback_ && !rollback_->isEmpty()) rollback_->commit();
    for (const auto* children : {&oneToOnes_, &oneToManys_})
        for (oxdmOXIOCursorNode* child : *children) child->CommitRollbackStack();
}

short oxdmOXIOCursorNode::Rollback() {
    short first = rollback_ ? rollback_->rollback() : 0;
    for (const auto* children : {&oneToOnes_, &oneToManys_})
        for (oxdmOXIOCursorNode* child : *children) {
            short code = child->Rollback();
            if (first == 0) first = code;
        }
    return first;
}
