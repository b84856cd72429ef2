#pragma once
// The columns of a buffer as the operator names them: by the field's name
// in the dictionary ("CUSTNO"), not by the id that makes it unique in the
// query tree ("CUSTNO-1"), and without the hidden stamp fields.

#include <string>
#include <vector>

class oxdmBufferedFileDataSource;

// The name of column `col`: its field's name, else its id.
std::string ColumnName(oxdmBufferedFileDataSource& buffer, short col);
// The column that `name` names, by id or by field name, ignoring case; -1
// when none does.
short FindColumn(oxdmBufferedFileDataSource& buffer, const std::string& name);
// The columns whose field is not hidden, in column order.
std::vector<short> ShownColumns(oxdmBufferedFileDataSource& buffer);
