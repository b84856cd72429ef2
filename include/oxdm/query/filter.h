#pragma once
// oxdmFilter: an expression over the columns of a query, held by column id
// so that it can be kept and copied without an open file. It is a flat chain
// of items read from the left, each joined to all before it by and or or
// (the join of the first item is ignored); there is no grouping.
//
// Two uses share the items. Attached to a cursor node over a record file it
// becomes a condition list that the record layer evaluates while it walks,
// and greater-than and less-than are both sent as code 5 there. Evaluated
// against a data source it is computed in memory from column values, where
// greater-than means greater-than: so the two differ for operator 2.
//
// All failures are oxdmException and arise when a filter is used, not when
// it is built.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/query/filter_target.h"
#include "oxdm/record/conditions.h"

class oxdmFilterItem;

class oxdmFilter {
public:
    // A fixed underlying type: any int may arrive, and one that is not a
    // member is refused when the filter is used.
    enum Op : int { EQ = 0, NE = 1, GT = 2, GE = 3, LT = 4, LE = 5 };
    enum Join : int { And = 0, Or = 1 };

    oxdmFilter();
    oxdmFilter(const CString& column, Op op, const CString& column2);
    oxdmFilter(const CString& column, Op op, const oxData& value);
    oxdmFilter(const oxdmFilter& other);
    oxdmFilter& operator=(const oxdmFilter& other);
    virtual ~oxdmFilter();

    void Clear();
    bool IsEmpty() const;
    void AddItem(Join join, const CString& column, Op op, const CString& column2);
    void AddItem(Join join, const CString& column, Op op, const oxData& value);
    const std::vector<oxdmFilterItem*>& Items() const { return *items_; }

    // Detaches any condition of the node, then, unless empty, makes a
    // condition list of the items, attaches it to the node and answers its
    // handle (0 for an empty filter).
    // REQUIRES: node.DataCursor() is not null (a node over a record file).
    short Attach(oxdmFilterTarget& node);
    void Detach(oxdmFilterTarget& node);
    // The value of the filter against the source's columns; false when empty.
    bool Evaluate(const oxdmFilterSource& source, bool fromFocusRow) const;

protected:
    // Takes ownership.
    void AddItem(oxdmFilterItem* item);
    oxdmConditions BuildCondition(oxdmFilterTarget& node);

private:
    // items_ is owned and never null, and owns each item.
    std::unique_ptr<std::vector<oxdmFilterItem*>> items_;
};

// One comparison of a filter: a column against another column or a value.
class oxdmFilterItem {
public:
    oxdmFilterItem(oxdmFilter::Join join, const CString& left, oxdmFilter::Op op, const CString& right);
    oxdmFilterItem(oxdmFilter::Join join, const CString& left, oxdmFilter::Op op, const oxData& value);
    oxdmFilterItem(const oxdmFilterItem& other);
    oxdmFilterItem& operator=(const oxdmFilterItem&) = delete;
    virtual ~oxdmFilterItem();

    const CString& Left() const { return left_; }
    const CString& Right() const { return right_; }
    oxdmFilter::Op Operator() const { return op_; }
    oxdmFilter::Join JoinOp() const { return join_; }
    // Null when the right side is a column.
    const oxData* Value() const { return value_.get(); }

private:
    // value_ is owned; null exactly when right_ names a column.
    CString left_;
    CString right_;
    oxdmFilter::Op op_;
    oxdmFilter::Join join_;
    std::unique_ptr<oxData> value_;
};
