#pragma once
// oxdmTableRelation: how a child table joins its parent, as pairs of
// columns (parent column = child column). A relation does not own its
// columns; the dictionary manager owns the relation.

#include <vector>

#include "oxdm/base/cstring.h"

class oxdmColumnDef;
class oxdmTableDef;

class oxdmTableRelation {
public:
    oxdmTableRelation() = default;
    oxdmTableRelation(oxdmColumnDef* source, oxdmColumnDef* dest) { AddColumn(source, dest); }
    virtual ~oxdmTableRelation();
    oxdmTableRelation(const oxdmTableRelation&) = delete;
    oxdmTableRelation& operator=(const oxdmTableRelation&) = delete;

    void AddColumn(oxdmColumnDef* source, oxdmColumnDef* dest);
    const std::vector<oxdmColumnDef*>& SourceColumns() const { return source_; }
    const std::vector<oxdmColumnDef*>& DestColumns() const { return dest_; }

    // Reads pairs from text such as "A=B,C=D" (blanks ignored), A a column
    // of `source`, B of `dest`, and adds them. Answers 1 when the pairs name
    // every column of dest's index `index` (one-to-one), 2 otherwise
    // (one-to-many), 0 for malformed text (pairs read before it are kept).
    // A wrong column name throws the table's oxdmException.
    // REQUIRES: source and dest are not null.
    int ParseString(oxdmTableDef* source, oxdmTableDef* dest, int index, const CString& text);

private:
    // source_ and dest_ are parallel: pair i is (source_[i], dest_[i]).
    std::vector<oxdmColumnDef*> source_;
    std::vector<oxdmColumnDef*> dest_;
};
