// The buffered layer's side of two seams of lower layers: the factory
// through which query columns make live columns, and the face through which
// the cursor's lookups read a buffer's columns. Both are installed when the
// first buffer is made, and stay for the life of the process.

#include "live_column_factory.h"

#include "oxdm/base/exception.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/cursor/lookup_source.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column_in_cursor.h"
#include "oxdm/datasource/buffered/ds_column_special.h"
#include "oxdm/query/live_columns.h"
#include "oxdm/record/table_def.h"

namespace {

// The data cursor of the node of `table` in the source's tree.
oxioCursor& TableCursor(oxdmBufferedFileDataSource& source, const oxdmTableDef* table) {
    oxdmCursorNode* node = source.Cursor()->Node(table);
    oxioCursor* cursor = node ? node->DataCursor() : nullptr;
    if (cursor == nullptr) {
        throw oxdmException("The cursor tree of " + source.NodeLabel() + " holds no record file of table " +
                            table->Desc() + ".");
    }
    return *cursor;
}

class BufferedLiveColumns : public oxdmLiveColumnFactory {
public:
    oxdmDSColumnBase* NewColumn(const CString& id, oxdmBufferedFileDataSource& source, int style,
                                const oxData* defaultValue) override {
        return new oxdmDSColumnBase(id, source, style, defaultValue);
    }
    oxdmDSColumnBase* NewCursorColumn(const oxdmColumnDef* def, const CString& id, oxdmBufferedFileDataSource& source,
                                      int style, const oxData* defaultValue) override {
        return new oxdmDSColumnInCursor(def, id, source, style, defaultValue);
    }
    oxdmDSColumnBase* NewVoidColumn(const CString& id, oxdmBufferedFileDataSource& source, const oxData* defaultValue,
                                    const CString& fileName) override {
        return new _oxdmVoidColumn(id, source, defaultValue, fileName);
    }
    oxdmDSColumnBase* NewCallbackColumn(const ColumnCB& read, const ColumnCB& write, const CString& id,
                                        oxdmBufferedFileDataSource& source, int style,
                                        const oxData* defaultValue) override {
        return new oxdmDSColumnCallback(read, write, id, source, style, defaultValue);
    }
    oxdmDSColumnBase* NewAttachmentsColumn(const CString& id, oxdmBufferedFileDataSource& source,
                                           const oxdmTableDef* table, int style) override {
        return new oxdmDSColumnAttachments(id, source, TableCursor(source, table), style);
    }
    const oxioDataFile& TableFile(oxdmBufferedFileDataSource& source, const oxdmTableDef* table) override {
        return *TableCursor(source, table).File();
    }
    void SetPrefillValue(oxdmDSColumnBase& column, const oxData& value) override {
        column.SetPrefillValue(value, true);
    }
    void SetChoices(oxdmDSColumnBase& column, const std::vector<CString>& choices) override {
        column.SetChoices(choices);
    }
    void SetAutoHideFilter(oxdmDSColumnBase& column, const oxdmFilter& filter) override {
        column.SetAutoHideFilter(filter, false);
    }
    void SetValueWhenHidden(oxdmDSColumnBase& column, const oxData& value) override {
        column.SetValueWhenHidden(value);
    }
};

class BufferedLookupSource : public oxdmLookupSource {
public:
    const oxdmColumnDef* ColumnDef(oxdmBufferedFileDataSource& source, short column) override {
        const oxdmDSColumnBase* live = source.ColumnForIndex(column);
        return live ? live->OXColumn() : nullptr;
    }
    const oxData* ColumnValue(oxdmBufferedFileDataSource& source, const oxdmColumnDef* def) override {
        for (short col = 0; col < source.NumColumns(); ++col) {
            if (source.ColumnForIndex(col)->OXColumn() == def) return source.NewValue(col);
        }
        return nullptr;
    }
};

}  // namespace

void oxdmInstallBufferedSeams() {
    static BufferedLiveColumns factory;
    static BufferedLookupSource lookup;
    static const bool installed = [] {
        oxdmSetLiveColumnFactory(&factory);
        oxdmSetLookupSource(&lookup);
        return true;
    }();
    (void)installed;
}
