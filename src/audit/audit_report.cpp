// oxdmAuditImpl: the lines of the printed report and the entries of the
// electronic log, for a row saved, reverted or deleted.

#include <cctype>
#include <cstring>

#include "oxdm/audit/audit_impl.h"
#include "oxdm/common/auditlog/audit_setup.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/record/column_def.h"
#include "oxdm/query/query_node.h"
#include "oxdm/record/table_def.h"

namespace {

// Where the report's columns stand and how wide they are.
constexpr short kBlockColumn = 1;
constexpr short kKeyIndent = 1;
constexpr short kCompoundKeyIndent = 3;
constexpr short kKeyDescWidth = 82;
constexpr short kKeyValueWidth = 80;
constexpr short kDescColumn = 4;
constexpr short kDescWidth = 30;
constexpr short kOldColumn = 33;
constexpr short kNewColumn = 62;
constexpr short kNumberWidth = 17;  // an unformatted number
constexpr short kValueWidth = 27;   // anything else
constexpr short kCancelColumn = 2;
// A row's block never begins in the last two lines of a page.
constexpr short kLeastLinesForBlock = 3;

constexpr const char* kAdditionCancelled = "  *** Addition cancelled by operator ***";
constexpr const char* kChangesCancelled = "  *** Changes cancelled by operator ***";

// A zeroed field at `column`, `width` wide, formatted as `def` says (no
// formatting without a definition).
xp_field_def Field(short column, short width, const oxdmColumnDef* def) {
    xp_field_def field;
    std::memset(&field, 0, sizeof field);
    field.column = column;
    field.width = width;
    if (def) {
        const xio_fld_def& fld = def->FldDef();
        field.formatted = fld.formatted;
        field.code = fld.code;
        field.section = static_cast<short>(fld.section);
        field.decimals = fld.decimal;
    }
    return field;
}

// A zeroed text value holding `text` cut to `size` - 1 characters.
x_value_def Value(const CString& text, short size) {
    x_value_def value;
    std::memset(&value, 0, sizeof value);
    value.kind = XV_TEXT;
    oxdmAuditImpl::CopyToAlpha(text, value.text, size);
    return value;
}

short ValueWidth(const oxdmColumnDef* def) {
    if (def && def->Type() == XIO_NUMERIC && def->FldDef().formatted == 0) return kNumberWidth;
    return kValueWidth;
}

// The open file of the node's table, 0 when the node reads none.
short FileOf(oxdmCursorNode* node) {
    oxioCursor* cursor = node ? node->DataCursor() : nullptr;
    return cursor && cursor->File() ? cursor->File()->FileNum() : 0;
}

short KeyColumnCount(const oxdmTableDef* table) {
    short count = 0;
    for (const oxdmColumnDef* column : table->Columns())
        if (column->Key()) ++count;
    return count;
}

}  // namespace

void oxdmAuditImpl::WriteChanges(const CString& label, oxdmBufferedFileDataSource* source) {
    const short commandId = task ? task->ID() : 0;
    for (const auto& [table, columns] : changes) {
        oxdmCursorNode* node = source->Cursor() ? source->Cursor()->Node(table) : nullptr;
        if (node == nullptr) continue;
        const short file = FileOf(node);
        if (print) {
            WriteKeys(label, table, source, node);
            for (const auto& [column, change] : columns) {
                WriteOld(column, change.oldValue);
                WriteNew(column, change.newValue);
            }
        }
        AuditSetup log(commandId, file, 0, table->Num());
        for (const auto& [column, change] : columns)
            log.AddColumnInfo(xio_num(file, 0, 0, column->Name()), change.oldValue, change.newValue);
        log.LogColumnChanges(label);
    }
    ForgetChanges(source);
}

void oxdmAuditImpl::WriteDelete(oxdmBufferedFileDataSource* source, oxdmCursorNode* node) {
    auto* recordNode = dynamic_cast<oxdmOXIOCursorNode*>(node);
    const oxdmTableDef* table = recordNode ? recordNode->QueryNode()->Table() : nullptr;
    // A table whose record definition has no audit mode is not audited.
    if (table == nullptr || table->RecDef().audit_mode == 0) return;
    if (print) WriteKeys("Deleted", table, source, node);
    const short file = FileOf(node);
    AuditSetup log(task ? task->ID() : 0, file, 0, table->Num());
    for (const oxdmColumnDef* column : table->Columns()) {
        const oxData* datum = node->DatumForColumn(column);
        const short index = IndexForOXColumnName(source, column->Name());
        if (datum == nullptr || index < 0) continue;
        const CString value = ValForAudit(source->ColumnForIndex(index), datum);
        if (print) {
            WriteOld(column, value);
            xpWriteLine(printHandle, 1, 0, 0);
        }
        log.AddColumnInfo(xio_num(file, 0, 0, column->Name()), value, "");
    }
    ForgetChanges(source);
    log.LogColumnChanges("deleted");
}

void oxdmAuditImpl::WriteCancel(oxdmBufferedFileDataSource* source) {
    // Without a report the entries stay, and join the next row saved.
    if (!print) return;
    xp_field_def field = Field(kCancelColumn, 0, nullptr);
    x_value_def value = Value(source->IsNewRow() ? kAdditionCancelled : kChangesCancelled, sizeof value.text);
    xpPutField(printHandle, &field, &value);
    xpWriteLine(printHandle, 1, 0, 0);
    ForgetChanges(source);
}

void oxdmAuditImpl::WriteKeys(const CString& label, const oxdmTableDef* table, oxdmBufferedFileDataSource* source,
                              oxdmCursorNode* node) {
    if (!print) return;
    xp_print_def def;
    std::memset(&def, 0, sizeof def);
    xpGetDef(printHandle, &def);
    short newPage = 0;
    if (xpLinesLeft(printHandle) >= kLeastLinesForBlock) {
        xpWriteLine(printHandle, 1, 0, 0);
    } else {
        newPage = 1;
    }
    const short keys = KeyColumnCount(table);
    if (keys < 1) return;
    short indent = kKeyIndent;
    CString caption = label;
    if (!caption.IsEmpty()) caption.SetAt(0, static_cast<char>(std::toupper(static_cast<unsigned char>(caption[0]))));
    if (keys > 1) {
        CString head;
        head.Format("%s %s:", table->Desc().c_str(), caption.c_str());
        xp_field_def field = Field(kBlockColumn, 0, nullptr);
        x_value_def value = Value(head, sizeof value.text);
        xpPutField(printHandle, &field, &value);
        xpWriteLine(printHandle, 1, 0, newPage);
        newPage = 0;
        indent = kCompoundKeyIndent;
    }
    for (const oxdmColumnDef* column : table->Index(0).Columns()) {
        if (!column->Key()) continue;
        const short index = IndexForOXColumnName(source, column->Name());
        const oxData* datum = nullptr;
        if (index < 0) {
            oxdmCursorNode* holder = node ? node : (source ? source->Cursor() : nullptr);
            datum = holder ? holder->DatumForColumn(column) : nullptr;
        } else {
            datum = node ? node->DatumForColumn(column) : source->NewValue(index);
        }
        if (datum) {
            const CString text =
                index < 0 ? ValForAudit(column, datum) : ValForAudit(source->ColumnForIndex(index), datum);
            WriteKey(column, text, indent);
        }
        if (keys == 1) {
            xp_field_def field = Field(-1, 0, nullptr);
            x_value_def value = Value(caption, sizeof value.text);
            xpPutField(printHandle, &field, &value);
        }
        xpWriteLine(printHandle, 1, 0, newPage);
        newPage = 0;
    }
}

void oxdmAuditImpl::WriteKey(const oxdmColumnDef* column, const CString& value, short indent) {
    xp_field_def descField = Field(indent, kKeyDescWidth, nullptr);
    x_value_def desc = Value(column->Desc(true), kKeyDescWidth);
    xpPutField(printHandle, &descField, &desc);
    CString text = value;
    text.TrimLeft();
    xp_field_def valueField = Field(-1, kKeyValueWidth, column);
    x_value_def keyValue = Value(text, kKeyValueWidth);
    xpPutField(printHandle, &valueField, &keyValue);
}

void oxdmAuditImpl::WriteOld(const oxdmColumnDef* column, const CString& value) {
    xp_field_def descField = Field(kDescColumn, kDescWidth, nullptr);
    x_value_def desc = Value(column ? column->Desc(true) : CString("Unknown"), kDescWidth);
    xpPutField(printHandle, &descField, &desc);
    const short width = ValueWidth(column);
    xp_field_def oldField = Field(kOldColumn, width, column);
    x_value_def oldValue = Value(value, width);
    xpPutField(printHandle, &oldField, &oldValue);
}

void oxdmAuditImpl::WriteNew(const oxdmColumnDef* column, const CString& value) {
    const short width = ValueWidth(column);
    xp_field_def newField = Field(kNewColumn, width, column);
    x_value_def newValue = Value(value, width);
    xpPutField(printHandle, &newField, &newValue);
    xpWriteLine(printHandle, 1, 0, 0);
}

void oxdmAuditImpl::ForgetChanges(oxdmBufferedFileDataSource* source) {
    if (source == nullptr) return;
    for (short col = 0; col < source->NumColumns(); ++col) {
        oxdmDSColumnBase* column = source->ColumnForIndex(col);
        const oxdmColumnDef* def = column ? column->OXColumn() : nullptr;
        if (def && def->Table()) changes.erase(def->Table());
    }
}
