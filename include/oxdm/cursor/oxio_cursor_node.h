#pragma once
// oxdmOXIOCursorNode: the cursor node over record files. A tree of them
// mirrors a query tree: the root walks a table along an index, a one-to-one
// child follows its parent with one related row (blank when there is none,
// as an outer join), and a one-to-many child walks the related rows under
// the parent's current row, depth first. The join is this walking: the
// record layer has none.
//
//     oxdmOXIOCursorNode customers(*query.Root(), task, nullptr);
//     customers.AddColumn(table->Column("NAME"));
//     for (bool on = customers.First(true); on; on = customers.Next(true)) ...
//
// Writing (Insert, Update, Delete, the conflict questions and the rollback
// stacks) is in oxio_writing.cpp and oxio_delete.cpp; reading in
// oxio_reading.cpp.

#include <memory>
#include <vector>

#include "oxdm/cursor/cursor_node.h"
#include "oxdm/query/filter.h"

class oxdmFileManager;
class oxdmOXIOCursorBookmark;
class oxdmTableRelation;
class oxioDataFile;

class oxdmOXIOCursorNode : public oxdmCursorNode {
public:
    // A root. With a null manager the root makes (and owns) one on first
    // need. Throws oxdmException when a file of the tree can't be opened or
    // the query is unusable; no tree exists then.
    oxdmOXIOCursorNode(const oxdmQueryNode& node, oxTask* task, oxdmFileManager* manager);
    // A child, made by its parent.
    oxdmOXIOCursorNode(oxdmOXIOCursorNode* parent, const oxdmQueryNode& node, oxTask* task, short group);
    ~oxdmOXIOCursorNode() override;

    const oxdmQueryNode* QueryNode() const { return queryNode_; }

    // Whether the record under the cursor still exists.
    virtual bool IsRowValid();
    using oxdmCursorNode::Next;
    virtual long Prev(long rows, bool children);
    using oxdmCursorNode::Prev;
    virtual oxdmOXIOCursorNode* Root() const;
    virtual const std::vector<oxdmOXIOCursorNode*>& OneToOnes() const { return oneToOnes_; }
    virtual const std::vector<oxdmOXIOCursorNode*>& OneToManys() const { return oneToManys_; }
    // True on the root; on a child, whether the values of the join match
    // the parent's.
    virtual bool IsKeyOK() const;

    bool CanInsert() const override;
    bool CanDelete() const override;
    void CanUpdate(const CString& columnID, bool& result) const override;
    bool CanUpdate() const override;
    bool HasCustomFields() const override;
    bool CascadedDelete() const override;
    bool SuppressDups() const override;
    const CString& ID() const override;
    CString RowName() const override;
    CString RowDescription() const override;

    bool First(bool children) override;
    bool Prev(bool children) override;
    long Next(long rows, bool children) override;
    bool Next(bool children) override;
    bool Last(bool children) override;
    bool EQ(bool children) override;
    bool GE(bool children) override;
    bool GT(bool children) override;

    oxioStatus::Status Insert(CString& error, bool checkRights) override;
    oxioStatus::Status Update(CString& error, int flags, bool checkRights, bool force) override;
    oxioStatus::Status InsertOrUpdate(CString& error, bool checkRights) override;
    oxioStatus::Status UpdateOrInsert(CString& error, bool checkRights) override;
    const std::vector<oxdmColumnDef*>& SortColumns() const override;
    void Revert(bool reread) override;
    void Refresh(bool oneToOnes, bool oneToManys) override;
    bool Delete(CString& error, oxdmRollbackStack* stack, mvcSubject* subject, bool keepPosition) override;
    bool DeleteAll(CString& error, oxdmRollbackStack* stack, mvcSubject* subject) override;
    double GetRelativePosition() override;
    short SetRelativePosition(double position) override;
    void StuffSourceKey(bool oneToOnes, bool oneToManys) override;
    void Clear(bool oneToOnes, bool oneToManys) override;
    // The query node's columns and those of its one-to-ones, custom fields
    // defined since picked up.
    void Columns(std::vector<oxdmColumnBase*>& out) const override;
    const oxdmFilter& Filter() const override { return filter_; }
    void SetFilter(const oxdmFilter& filter) override;
    short Index() const override { return index_; }
    // REQUIRES: `index` is an index of the table (else oxdmException).
    void SetIndex(short index) override;
    void CommitRollbackStack() override;
    short Rollback() override;
    void AttachCondition(short handle) override;
    void DetachCondition() override;
    void AttachRange(short handle) override;
    void DetachRange() override;
    oxdmFileManager* GetFileManager() override;
    oxioAttachments* CreateAttachments() const override;
    oxTask* Task() const override { return task_; }
    void DoAutoLookup(oxdmBufferedFileDataSource* source, short column, std::vector<oxdmQueryNode*>& nodes) override;
    void FindLookupNodes(oxdmBufferedFileDataSource* source, short column,
                         std::vector<oxdmQueryNode*>& nodes) override;
    void ClearFileBuffers() override;
    void SetAllowDataConflictOverwrite(bool allow) override { allowOverwrite_ = allow; }
    oxdmCursorNode* Node(oxdmQueryNode* node) const override;
    oxdmCursorNode* Node(const oxdmTableDef* table) const override;
    oxioBookmark* PushBookmark() override;
    void PopBookmark() override;
    void PopAllBookmarks(bool children) override;
    oxdmCursorBookmark* CreateBookmark() override;
    oxioCursor* DataCursor() const override;
    oxdmCursorNode* Parent() const override { return parent_; }
    oxdmColumnDef* FindSourceColumn(const oxdmColumnDef* dest) override;
    // This node's query column of that id, or one of its one-to-ones'.
    oxdmColumnBase* Column(const CString& id) const override;

protected:
    void _AttachColumn(const oxdmColumnDef* column, oxData* value) override;
    // The id of the operator who last wrote the record under the cursor, or
    // "someone else" when the table keeps none or the field is blank.
    CString _GetOperatorID();

private:
    friend class oxdmOXIOCursorBookmark;

    void _Initialize();
    const oxdmTableDef* Table() const;
    const oxdmTableRelation* Relation() const;
    short FileNum() const;
    // A table that takes custom fields but keeps no record of its own.
    bool HasNoRecord() const;
    // First on the one-to-ones and, with oneToManys, on the one-to-manys.
    void _SyncChildren(bool oneToManys);
    // Last on the same children.
    void _SyncChildrenLast(bool oneToManys);
    // One step of Next or Prev on this node alone.
    bool _Step(bool forward);
    // Counted moves in either direction.
    long _Walk(long rows, bool forward, bool children);
    bool _KeySearch(oxioStatus::Status status, bool children);
    void _PopOwnBookmark();
    // Stands the table on the record of the row's key; `read` also reads it
    // (xio_rd_record), else only finds it (xio_find_record).
    oxioStatus::Status _Position(bool read, bool readOnIndexZero);
    // The question when a checked write met another writer's change: true
    // when the user's changes are to be written over it.
    bool _TryAgain();
    // The question when the row was deleted by someone else: true to insert
    // it again.
    bool _AskReinsert();
    bool _DoDelete(CString& error, oxdmRollbackStack* stack, mvcSubject* subject);

    // Invariants. queryNode_ outlives the node. The root holds the file
    // manager (fileManager_, owned through ownedManager_ when it made it);
    // children ask the root. file_ belongs to the manager and serves this
    // node's table alone among the node's tree users. cursor_ is made on
    // first need and binds every attached value; bookmarks_ refer to
    // cursor_ and are owned. children_ owns every child; oneToOnes_ and
    // oneToManys_ list them by kind in query order. conditions_ is the
    // handle of filter_ attached to cursor_, 0 for none. rollback_ is set
    // only when the query node asks for a stack. The destructor commits the
    // stacks, releases the table and, on the root, the owned manager last.
    const oxdmQueryNode* queryNode_;
    oxdmFileManager* fileManager_ = nullptr;
    std::unique_ptr<oxdmFileManager> ownedManager_;
    oxioDataFile* file_ = nullptr;
    mutable std::unique_ptr<oxioCursor> cursor_;
    std::vector<std::unique_ptr<oxioBookmark>> bookmarks_;
    oxTask* task_;
    oxdmOXIOCursorNode* parent_;
    std::vector<std::unique_ptr<oxdmOXIOCursorNode>> children_;
    std::vector<oxdmOXIOCursorNode*> oneToOnes_;
    std::vector<oxdmOXIOCursorNode*> oneToManys_;
    oxdmFilter filter_;
    short index_;
    short conditions_ = 0;
    std::shared_ptr<oxdmRollbackStack> rollback_;
    bool allowOverwrite_ = true;
    short group_;
};
