#pragma once
// The seam between the cursor's lookups and the buffered data source, which
// lives in a higher layer. When the user changes a column that a one-to-one
// child joins on, the cursor asks the data source, through the face
// installed here, for the column's definition and for the values of the
// columns that stand for given table columns (by definition rather than by
// name: a join's two sides usually bear the same name). The buffered data source layer installs its face when it starts;
// until then FindLookupNodes finds nothing.

#include "oxdm/base/cstring.h"

class oxData;
class oxdmBufferedFileDataSource;
class oxdmColumnDef;

class oxdmLookupSource {
public:
    virtual ~oxdmLookupSource() = default;
    // The dictionary column behind the source's column `column`; null when
    // there is no such column or it stands for no table column.
    virtual const oxdmColumnDef* ColumnDef(oxdmBufferedFileDataSource& source, short column) = 0;
    // The current value of the source's column over `def`; null when none.
    virtual const oxData* ColumnValue(oxdmBufferedFileDataSource& source, const oxdmColumnDef* def) = 0;
};

// Installs the face (not owned; it must outlive its installation) and
// answers the one it replaces; null uninstalls.
oxdmLookupSource* oxdmSetLookupSource(oxdmLookupSource* face);
// The face in force, or null.
oxdmLookupSource* oxdmCurrentLookupSource();
