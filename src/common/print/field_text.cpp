// Formatting the value of a printed field.

#include "field_text.h"

#include <memory>

#include "oxdm/common/dictionary/definition_records.h"
#include "oxdm/common/fieldcode/allocate_formatter.h"

namespace {

// Digits a printed number may have: the most a formatter keeps, so that the
// formatter never refuses a number for its size (the field's width cuts it).
constexpr unsigned short kNumberLength = 30;

// The field type whose formatter suits a value of this kind. A value filled
// by hand (XV_NONE) and every text are alphanumeric.
short FieldTypeFor(short kind) {
    switch (kind) {
        case XV_DOUBLE:
        case XV_NUMERIC: return XIO_NUMERIC;
        case XV_BOOL: return XIO_BOOLEAN;
        case XV_DATE: return XIO_DATE;
        case XV_TIME: return XIO_TIME;
        case XV_SSNUM: return XIO_SSNUM;
        case XV_CHOICE: return XIO_CHOICE;
        default: return XIO_ALPHA;
    }
}

}  // namespace

std::string xpFieldText(const xp_field_def& field, const x_value_def& value) {
    const CString text(x_value_text(&value));
    if (!field.formatted) return text.str();
    xio_fld_def definition{};
    definition.type = FieldTypeFor(value.kind);
    definition.length = definition.type == XIO_NUMERIC ? kNumberLength : static_cast<unsigned short>(text.GetLength());
    definition.code = field.code;
    definition.formatted = 1;
    definition.section = static_cast<unsigned short>(field.section);
    definition.decimal = field.decimals;
    definition.is_signed = 1;
    const std::unique_ptr<oxEditFormatter> formatter(AllocateFormatter(definition));
    return formatter ? formatter->Format(text).str() : text.str();
}
