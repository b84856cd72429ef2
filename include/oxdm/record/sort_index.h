#pragma once
// oxdmSortIndex: one index of a table. Index 0 is the table's own key (the
// columns whose key flag is set, in table order); any other index is a key
// of the dictionary, numbered globally, with its definition record.

#include <memory>
#include <vector>

#include "oxdm/common/dictionary/definition_records.h"

class oxdmColumnDef;
class oxdmTableDef;

class oxdmSortIndex {
public:
    // Takes ownership of `def`, which must be null for index 0 only.
    // REQUIRES: table is not null; (index == 0) == (def == nullptr).
    oxdmSortIndex(oxdmTableDef* table, short index, xio_key_def* def);
    ~oxdmSortIndex();
    oxdmSortIndex(const oxdmSortIndex&) = delete;
    oxdmSortIndex& operator=(const oxdmSortIndex&) = delete;

    oxdmTableDef* Table() const { return table_; }
    short Index() const { return index_; }
    const std::vector<oxdmColumnDef*>& Columns() const { return columns_; }
    // Null on index 0.
    const xio_key_def* KeyDef() const { return index_ == 0 ? nullptr : def_.get(); }
    // The column at a position of the key; null outside.
    oxdmColumnDef* operator[](short position) const;

private:
    // table_ is not owned; columns_ are the table's (not owned), resolved
    // at construction; def_ is owned and null exactly on index 0.
    oxdmTableDef* table_;
    short index_;
    std::vector<oxdmColumnDef*> columns_;
    std::unique_ptr<xio_key_def> def_;
};
