// oxdmAuditImpl: the texts of values for the audit, and the print
// primitives.

#include <algorithm>
#include <cassert>
#include <cstring>

#include "oxdm/audit/audit_impl.h"
#include "oxdm/common/values/data.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/record/column_def.h"

namespace {

// The type that oxdmDSColumnBase::Type() answers for a check box column.
constexpr short kCheckBoxColumn = 2;

CString CheckText(const oxData* value) {
    const auto* flag = dynamic_cast<const oxBool*>(value);
    const bool checked = flag ? flag->GetVal() : value->Format() == "true";
    return checked ? "Checked" : "Not Checked";
}

}  // namespace

CString oxdmAuditImpl::ValForAudit(oxdmDSColumnBase* column, const oxData* value) {
    assert(column && value);
    if (column->Type() == kCheckBoxColumn) return CheckText(value);
    return column->ValueAsString(*value);
}

CString oxdmAuditImpl::ValForAudit(const oxdmColumnDef* column, const oxData* value) {
    assert(column && value);
    if (const auto* choices = dynamic_cast<const oxdmChoiceColumnDef*>(column))
        if (const auto* choice = dynamic_cast<const oxChoice*>(value))
            return choices->ChoiceForIndex(static_cast<short>(choice->GetVal()));
    if (dynamic_cast<const oxBool*>(value)) return CheckText(value);
    return value->Format();
}

short oxdmAuditImpl::IndexForOXColumnName(oxdmBufferedFileDataSource* source, const CString& name) {
    if (source == nullptr) return -1;
    for (short col = 0; col < source->NumColumns(); ++col) {
        oxdmDSColumnBase* column = source->ColumnForIndex(col);
        const oxdmColumnDef* def = column ? column->OXColumn() : nullptr;
        if (def && def->Name().CompareNoCase(name) == 0) return col;
    }
    return -1;
}

void oxdmAuditImpl::CopyToAlpha(const CString& text, char* buffer, short size) {
    assert(buffer && size >= 1);
    const size_t length = std::min(static_cast<size_t>(text.GetLength()), static_cast<size_t>(size - 1));
    std::memcpy(buffer, text.c_str(), length);
    buffer[length] = '\0';
}

short oxdmAuditImpl::xpPutField(short handle, xp_field_def* field, x_value_def* value) {
    return xp_put_field(handle, field, value);
}

short oxdmAuditImpl::xpSetLine(short handle, short kind, short line) { return xp_set_line(handle, kind, line); }

short oxdmAuditImpl::xpWriteLine(short handle, short count, short skip, short newPage) {
    return xp_wr_line(handle, count, skip, newPage);
}

short oxdmAuditImpl::xpGetDef(short handle, xp_print_def* def) { return xp_get_def(handle, def); }

short oxdmAuditImpl::xpLinesLeft(short handle) { return xp_lines_left(handle); }
