#pragma once
// What a filter needs of the objects it works on, which live in higher
// layers: the columns of a data source, to evaluate a filter in memory, and
// a cursor node over a record file, to attach a filter as conditions.
// The buffered data source, its columns and the cursor node take these
// faces on; their operations bear the names they have there.

#include "oxdm/base/cstring.h"

class oxData;
class oxdmColumnBase;
class oxioCursor;
class oxTask;

// One column as a filter evaluates it.
class oxdmFilterColumn {
public:
    virtual ~oxdmFilterColumn() = default;
    // The column's current value, or with fromFocusRow the value of the
    // source's focus row at this column's index.
    virtual const oxData& FilterValue(bool fromFocusRow) const = 0;
    virtual bool EQ(const oxData& a, const oxData& b) const = 0;
    virtual bool NE(const oxData& a, const oxData& b) const = 0;
    virtual bool GE(const oxData& a, const oxData& b) const = 0;
    virtual bool LE(const oxData& a, const oxData& b) const = 0;
    virtual bool GT(const oxData& a, const oxData& b) const = 0;
    virtual bool LT(const oxData& a, const oxData& b) const = 0;
};

// A data source as a filter evaluates it: its columns by id.
class oxdmFilterSource {
public:
    virtual ~oxdmFilterSource() = default;
    // Throws oxdmException for an id the source lacks.
    virtual const oxdmFilterColumn& FilterColumn(const CString& id) const = 0;
};

// A cursor node as a filter attaches to it.
class oxdmFilterTarget {
public:
    virtual ~oxdmFilterTarget() = default;
    virtual void AttachCondition(short handle) = 0;
    virtual void DetachCondition() = 0;
    // The cursor over the node's record file; null for a node over
    // anything else.
    virtual oxioCursor* DataCursor() const = 0;
    virtual oxTask* Task() const = 0;
    // The query column of that id in the node; null when none.
    virtual oxdmColumnBase* Column(const CString& id) const = 0;
};
