#pragma once
// The tables and fields of an open record file, as the tool names them on
// its command line and in CSV headers, read through the flat definition
// face of the file's own dictionary.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/dictionary/definition_records.h"

class oxData;

namespace oxdm::admin {

struct TableField {
    CString name;
    xio_fld_def def;

    // A stamp field: the store fills it on every write.
    bool Stamp() const { return def.operator_stamp != 0 || def.first_stamp != 0 || def.second_stamp != 0; }
    // A new value of the class the field's type asks for.
    std::unique_ptr<oxData> NewValue() const;
};

// The table of the open file `fileNum` named by `name`: its number, or its
// description with case ignored. 0 when there is none.
short FindTable(short fileNum, const CString& name);

// The table's description; empty for an unknown table.
CString TableDescription(short fileNum, short table);

// The fields of a table in table order; empty for an unknown table.
std::vector<TableField> FieldsOf(short fileNum, short table);

}  // namespace oxdm::admin
