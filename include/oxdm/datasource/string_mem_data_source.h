#pragma once
// oxdmStringMemDataSource: a memory table of text cells, for drop-down
// lists, pick lists and small grids.

#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/datasource/mem_data_source_of.h"

class oxdmStringMemDataSource : public _oxdmMemDataSourceOf<std::vector<std::vector<CString>>> {
public:
    // The vectors are copied. Without labels, columns are named "A", "B",
    // ... after the width of the first row. With autoNewRow a new row stands
    // below the rows.
    oxdmStringMemDataSource(const std::vector<std::vector<CString>>& rows, const std::vector<CString>& labels,
                            const std::vector<CString>& defaults, const CString& rowDescription, bool autoNewRow)
        : _oxdmMemDataSourceOf(rows, labels, defaults, rowDescription, autoNewRow) {}
};
