#pragma once
// oxdmTableDef: one table of a dictionary, with its columns in field order
// and its indexes by number.
//
// Columns and indexes are owned and never removed: RefreshColumns only
// appends and overwrites definitions, so pointers to them stay valid.

#include <map>
#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/dictionary/definition_records.h"
#include "oxdm/record/column_def.h"
#include "oxdm/record/sort_index.h"

class oxdmTableDef {
public:
    oxdmTableDef(const CString& dict, short num, const xio_rec_def& rec);
    virtual ~oxdmTableDef();
    oxdmTableDef(const oxdmTableDef&) = delete;
    oxdmTableDef& operator=(const oxdmTableDef&) = delete;

    short Num() const { return num_; }
    const CString& FileExt() const { return dict_; }
    const xio_rec_def& RecDef() const { return rec_; }
    CString Name() const;
    CString Desc() const { return Name(); }

    // By name, ignoring case. Throws oxdmException
    // ("'NAME' is not a column in table 'DESC'.") when absent.
    oxdmColumnDef* Column(const CString& name) const;
    oxdmColumnDef* operator[](const CString& name) const { return Column(name); }
    // By field number of the dictionary; null outside the table.
    oxdmColumnDef* ColumnByNum(short field) const;
    const std::vector<oxdmColumnDef*>& Columns() const { return columns_; }
    // Throws oxdmException ("N is not an index for table 'DESC'") when absent.
    oxdmSortIndex& Index(short index) const;
    const std::map<short, oxdmSortIndex*>& Indexes() const { return indexes_; }

    // Takes ownership.
    void AddColumn(oxdmColumnDef* column);
    // Takes ownership; an index of a number already present replaces it.
    void AddIndex(oxdmSortIndex* index);

    // Catches up with fields defined after the import (custom fields and
    // field-code format changes): appends new columns and overwrites the
    // definitions of changed ones. False, with nothing changed, when the
    // dictionary cannot be opened.
    bool RefreshColumns();

private:
    // Finds a column by name without throwing; null when absent.
    oxdmColumnDef* FindColumn(const CString& name) const;

    // columns_ owns its elements, in field order then the order appended;
    // indexes_ owns its values; rec_ is the table's whole record.
    std::vector<oxdmColumnDef*> columns_;
    std::map<short, oxdmSortIndex*> indexes_;
    short num_;
    CString dict_;
    xio_rec_def rec_;
};

// A new column for field `def` of `table` as the import makes it: a choice
// column with its item texts read from open file `file` for types 7 to 9,
// otherwise a plain column. Owned by the caller.
oxdmColumnDef* oxdmNewImportedColumn(oxdmTableDef* table, short file, short field, const xio_fld_def& def);
