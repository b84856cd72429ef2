#pragma once
// oxdmCursorNode: the abstract face of one node of a cursor tree. Data
// sources speak only to it: they move it, read and write its columns and ask
// it to insert, update and delete. The node keeps the current row in typed
// values, one for each column that somebody attached.
//
// Movements return false at an end or on any failure, without telling why.
// Their `children` argument says whether one-to-many children move along;
// one-to-one children always do. Write operations return a status and fill
// `error` with a whole sentence, left empty when the user was told already.
//
// The node is also the target a filter attaches its conditions to.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/values/io_status.h"
#include "oxdm/query/filter_target.h"

class mvcSubject;
class oxData;
class oxdmBufferedFileDataSource;
class oxdmColumnBase;
class oxdmColumnDef;
class oxdmCursorBookmark;
class oxdmFileManager;
class oxdmFilter;
class oxdmQueryNode;
class oxdmRollbackStack;
class oxdmTableDef;
class oxioAttachments;
class oxioBookmark;
class oxioCursor;
class oxTask;

class oxdmCursorNode : public oxdmFilterTarget {
public:
    oxdmCursorNode() = default;
    ~oxdmCursorNode() override;
    oxdmCursorNode(const oxdmCursorNode&) = delete;
    oxdmCursorNode& operator=(const oxdmCursorNode&) = delete;

    // Counts the rows from the first, each Next(children) adding one; the
    // position survives through the bookmark stack. A walk of the table.
    virtual long NumRows(bool children);
    // Attaches a value for `column` unless the node has one already.
    // REQUIRES: column is not null.
    virtual void AddColumn(const oxdmColumnDef* column);
    // A new value for `column`, bound to the node's store; owned by the node
    // once AddColumn keeps it.
    // REQUIRES: column is not null.
    virtual oxData* AttachColumn(const oxdmColumnDef* column);

    virtual bool CanInsert() const = 0;
    virtual bool CanDelete() const = 0;
    // Leaves `result` alone unless the column belongs to a node of other rights.
    virtual void CanUpdate(const CString& columnID, bool& result) const;
    virtual bool CanUpdate() const = 0;
    virtual bool HasCustomFields() const;
    virtual bool CascadedDelete() const;
    virtual bool SuppressDups() const;
    virtual const CString& ID() const = 0;
    virtual CString RowName() const;
    virtual CString RowDescription() const;

    virtual bool First(bool children) = 0;
    virtual bool Prev(bool children) = 0;
    // Moves up to `rows` rows (a negative count moves back); answers the rows
    // moved, signed by the direction asked.
    virtual long Next(long rows, bool children) = 0;
    virtual bool Next(bool children) = 0;
    virtual bool Last(bool children) = 0;
    // Key searches on the key the caller has put into the values.
    virtual bool EQ(bool children) = 0;
    virtual bool GE(bool children) = 0;
    virtual bool GT(bool children) = 0;

    virtual oxioStatus::Status Insert(CString& error, bool checkRights) = 0;
    // flags: 1 writes children with UpdateOrInsert; 2 asks nothing when the
    // row is gone.
    virtual oxioStatus::Status Update(CString& error, int flags, bool checkRights, bool force) = 0;
    virtual oxioStatus::Status InsertOrUpdate(CString& error, bool checkRights) = 0;
    virtual oxioStatus::Status UpdateOrInsert(CString& error, bool checkRights) = 0;
    virtual const std::vector<oxdmColumnDef*>& SortColumns() const = 0;
    virtual void Revert(bool reread) = 0;
    virtual void Refresh(bool oneToOnes, bool oneToManys) = 0;
    virtual bool Delete(CString& error, oxdmRollbackStack* stack, mvcSubject* subject, bool keepPosition) = 0;
    virtual bool DeleteAll(CString& error, oxdmRollbackStack* stack, mvcSubject* subject) = 0;
    virtual double GetRelativePosition() = 0;
    virtual short SetRelativePosition(double position) = 0;
    virtual void StuffSourceKey(bool oneToOnes, bool oneToManys) = 0;
    virtual void Clear(bool oneToOnes, bool oneToManys) = 0;
    virtual void Columns(std::vector<oxdmColumnBase*>& out) const = 0;
    virtual const oxdmFilter& Filter() const = 0;
    virtual void SetFilter(const oxdmFilter& filter) = 0;
    virtual short Index() const = 0;
    virtual void SetIndex(short index) = 0;
    virtual void CommitRollbackStack();
    virtual short Rollback();
    void AttachCondition(short handle) override;
    void DetachCondition() override;
    virtual void AttachRange(short handle);
    virtual void DetachRange();
    virtual oxdmFileManager* GetFileManager();
    // A new object owned by the caller, or null.
    virtual oxioAttachments* CreateAttachments() const;
    oxTask* Task() const override;
    virtual void DoAutoLookup(oxdmBufferedFileDataSource* source, short column, std::vector<oxdmQueryNode*>& nodes);
    virtual void FindLookupNodes(oxdmBufferedFileDataSource* source, short column,
                                 std::vector<oxdmQueryNode*>& nodes);
    virtual void ClearFileBuffers();
    virtual void SetAllowDataConflictOverwrite(bool allow);
    virtual oxdmCursorNode* Node(oxdmQueryNode* node) const;
    virtual oxdmCursorNode* Node(const oxdmTableDef* table) const;
    virtual oxioBookmark* PushBookmark();
    virtual void PopBookmark();
    virtual void PopAllBookmarks(bool children);
    // A bookmark of the current row, owned by the caller.
    virtual oxdmCursorBookmark* CreateBookmark() = 0;
    oxioCursor* DataCursor() const override;
    virtual oxdmCursorNode* Parent() const;
    virtual oxdmColumnDef* FindSourceColumn(const oxdmColumnDef* dest);
    // A tracing hook; does nothing.
    virtual void Debug(const CString& text, bool, bool, short);
    oxdmColumnBase* Column(const CString& id) const override = 0;

    // The value of `column` from the node of the tree that holds its table;
    // a null choice reads as its default (or 1). False, with `out` untouched,
    // for a column no node of the tree holds.
    bool ValueForColumn(const oxdmColumnDef* column, oxData* out) const;
    // Sets the held value; an equal value leaves Changed() alone.
    bool SetValueForColumn(const oxdmColumnDef* column, oxData* value);
    // This node's own value of `column`, or null.
    oxData* DatumForColumn(const oxdmColumnDef* column) const;
    bool Changed() const { return changed_; }

    // The words for a status, "unknown error N occured" outside the table.
    static CString StatusMsg(oxioStatus::Status status);

protected:
    virtual bool _ValueForColumn(const oxdmColumnDef* column, oxData* out) const;
    virtual bool _SetValueForColumn(const oxdmColumnDef* column, oxData* value);
    // Binds a new value to the concrete node's store; nothing here.
    virtual void _AttachColumn(const oxdmColumnDef* column, oxData* value);

    void SetChanged(bool changed) { changed_ = changed; }
    const std::vector<const oxdmColumnDef*>& AttachedColumns() const { return columns_; }
    oxData* AttachedValue(size_t position) const { return values_[position].get(); }

private:
    // The position of `column` among the attached columns, or -1.
    long PositionOf(const oxdmColumnDef* column) const;

    // changed_: a value was set since the row was read. columns_ and values_
    // are parallel: values_[i] is the node's value of columns_[i], owned,
    // never null, and each column appears once.
    bool changed_ = false;
    std::vector<const oxdmColumnDef*> columns_;
    std::vector<std::unique_ptr<oxData>> values_;
};
