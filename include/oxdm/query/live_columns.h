#pragma once
// The seam between query columns and the live columns of the buffered data
// source, which lives in a higher layer.
//
// A query column decides what kind of live column it needs (a plain one, one
// over a cursor field, a void one for a field the data file lacks, one read
// through callbacks, one of attachments) and hands the construction to the
// factory installed here. The buffered data source layer installs its
// factory when it starts; until then BuildColumn throws oxdmException, since
// a query column cannot make a live column on its own.

#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/base/functor.h"

class oxData;
class oxdmBufferedFileDataSource;
class oxdmColumnDef;
class oxdmDSColumnBase;
class oxdmDSColumnCallback;
class oxdmFilter;
class oxdmTableDef;
class oxioDataFile;

class oxdmLiveColumnFactory {
public:
    using ColumnCB = CBFunctor2<oxdmDSColumnCallback&, oxData&>;

    virtual ~oxdmLiveColumnFactory() = default;

    // Each New* answers a new column owned by the caller.
    // oxdmDSColumnBase(id, source, style, defaultValue).
    virtual oxdmDSColumnBase* NewColumn(const CString& id, oxdmBufferedFileDataSource& source, int style,
                                        const oxData* defaultValue) = 0;
    // oxdmDSColumnInCursor(def, id, source, style, defaultValue).
    virtual oxdmDSColumnBase* NewCursorColumn(const oxdmColumnDef* def, const CString& id,
                                              oxdmBufferedFileDataSource& source, int style,
                                              const oxData* defaultValue) = 0;
    // _oxdmVoidColumn(id, source, defaultValue, fileName): a read-only
    // column (style 4) that holds nothing, for a field the file lacks.
    virtual oxdmDSColumnBase* NewVoidColumn(const CString& id, oxdmBufferedFileDataSource& source,
                                            const oxData* defaultValue, const CString& fileName) = 0;
    // oxdmDSColumnCallback(read, write, id, source, style, defaultValue).
    virtual oxdmDSColumnBase* NewCallbackColumn(const ColumnCB& read, const ColumnCB& write, const CString& id,
                                                oxdmBufferedFileDataSource& source, int style,
                                                const oxData* defaultValue) = 0;
    // oxdmDSColumnAttachments(id, source, data cursor of table's node, style).
    virtual oxdmDSColumnBase* NewAttachmentsColumn(const CString& id, oxdmBufferedFileDataSource& source,
                                                   const oxdmTableDef* table, int style) = 0;

    // The open file of the cursor node of `table` in the source's tree,
    // which must hold one.
    virtual const oxioDataFile& TableFile(oxdmBufferedFileDataSource& source, const oxdmTableDef* table) = 0;

    // The settings a new live column takes from its query column.
    virtual void SetPrefillValue(oxdmDSColumnBase& column, const oxData& value) = 0;  // (value, true)
    virtual void SetChoices(oxdmDSColumnBase& column, const std::vector<CString>& choices) = 0;
    virtual void SetAutoHideFilter(oxdmDSColumnBase& column, const oxdmFilter& filter) = 0;  // (filter, false)
    virtual void SetValueWhenHidden(oxdmDSColumnBase& column, const oxData& value) = 0;
};

// Installs the factory (not owned; it must outlive its installation) and
// answers the one it replaces; null uninstalls.
oxdmLiveColumnFactory* oxdmSetLiveColumnFactory(oxdmLiveColumnFactory* factory);
// The factory in force. Throws oxdmException when none is installed.
oxdmLiveColumnFactory& oxdmLiveColumns();

// Tells the operator, once in the life of the process, that a data file
// lacks custom fields of its dictionary: a box titled with the file's name.
// The box's bullets are U+2022 written in UTF-8 (the byte 0x95 of the ANSI
// code page is not a character of UTF-8 text). Answers whether it showed.
bool oxdmVoidColumnNotice(const CString& fileName);
// The text of that box for a file.
CString oxdmVoidColumnText(const CString& fileName);
