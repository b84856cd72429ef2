#include "table_fields.h"

#include <cstdlib>
#include <cstring>

#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/values/data.h"
#include "oxdm/record/column_def.h"

namespace oxdm::admin {

std::unique_ptr<oxData> TableField::NewValue() const {
    return std::unique_ptr<oxData>(oxdmColumnDef(nullptr, def).CreateData());
}

short FindTable(short fileNum, const CString& name) {
    xio_file_def file{};
    if (xio_get_def(fileNum, &file, 1) != 0) return 0;
    short tables = file.tables;
    char* end = nullptr;
    long number = std::strtol(name.c_str(), &end, 10);
    if (!name.IsEmpty() && *end == '\0') return number >= 1 && number <= tables ? static_cast<short>(number) : 0;
    for (short t = 1; t <= tables; ++t)
        if (TableDescription(fileNum, t).CompareNoCase(name) == 0) return t;
    return 0;
}

CString TableDescription(short fileNum, short table) {
    xio_rec_def rec{};
    if (xio_get_rec_def(fileNum, table, &rec, 1) != 0) return CString();
    return CString(rec.description, static_cast<int>(strnlen(rec.description, sizeof rec.description)));
}

std::vector<TableField> FieldsOf(short fileNum, short table) {
    std::vector<TableField> fields;
    xio_rec_def rec{};
    if (xio_get_rec_def(fileNum, table, &rec, 1) != 0) return fields;
    for (short f = rec.first_field; f < rec.first_field + rec.field_count; ++f) {
        TableField field{};
        if (xio_get_fld_def(fileNum, f, &field.def, 1, true) != 0) continue;
        field.name = CString(field.def.name, static_cast<int>(strnlen(field.def.name, sizeof field.def.name)));
        fields.push_back(field);
    }
    return fields;
}

}  // namespace oxdm::admin
