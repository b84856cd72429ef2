#pragma once
// oxdmOXDataMemDataSource: a memory table of typed cells (dates, numbers,
// choices, ...). A cell is an owned oxData* or null; rows handed in are
// cloned, so the caller keeps its own.

#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/datasource/mem_data_source_of.h"

class oxData;

class oxdmOXDataMemDataSource : public _oxdmMemDataSourceOf<std::vector<std::vector<oxData*>>> {
public:
    // The cells of rows and defaults are cloned.
    oxdmOXDataMemDataSource(const std::vector<std::vector<oxData*>>& rows, const std::vector<CString>& labels,
                            const std::vector<oxData*>& defaults, const CString& rowDescription, bool autoNewRow)
        : _oxdmMemDataSourceOf(rows, labels, defaults, rowDescription, autoNewRow) {}
};
