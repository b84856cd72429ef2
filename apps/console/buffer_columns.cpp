#include "buffer_columns.h"

#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/record/column_def.h"
#include "text_words.h"

std::string ColumnName(oxdmBufferedFileDataSource& buffer, short col) {
    const oxdmColumnDef* def = buffer.ColumnForIndex(col)->OXColumn();
    return def ? def->Name().str() : buffer.ColName(col).str();
}

short FindColumn(oxdmBufferedFileDataSource& buffer, const std::string& name) {
    const short byId = buffer.IndexForColumn(CString(name.c_str()));
    if (byId >= 0) return byId;
    for (short col = 0; col < buffer.NumColumns(); ++col)
        if (Lower(ColumnName(buffer, col)) == Lower(name)) return col;
    return -1;
}

std::vector<short> ShownColumns(oxdmBufferedFileDataSource& buffer) {
    std::vector<short> shown;
    for (short col = 0; col < buffer.NumColumns(); ++col) {
        const oxdmColumnDef* def = buffer.ColumnForIndex(col)->OXColumn();
        if (def == nullptr || def->FldDef().hidden == 0) shown.push_back(col);
    }
    return shown;
}
