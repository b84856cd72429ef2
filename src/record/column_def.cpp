#include "oxdm/record/column_def.h"

#include <cstring>

#include "oxdm/base/exception.h"
#include "oxdm/common/dictionary/field_codes.h"
#include "oxdm/common/fieldcode/fld_code_data.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/partial_dates.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"

oxdmColumnDef::oxdmColumnDef(oxdmTableDef* table, const xio_fld_def& def, const CString& name)
    : table_(table), def_(def), name_(name) {}

oxdmColumnDef::~oxdmColumnDef() = default;

CString oxdmColumnDef::Name() const {
    if (!name_.IsEmpty()) return name_;
    return CString(def_.name, static_cast<int>(strnlen(def_.name, sizeof def_.name)));
}

bool oxdmColumnDef::RightJustify() const {
    switch (def_.type) {
        case XIO_NUMERIC:
        case XIO_DATE:
        case XIO_TIME:
            return true;
        case XIO_ALPHA:
            return def_.right_justify != 0;
        default:
            return false;
    }
}

namespace {

// The alpha value of a type-0 field: memo text, field-code text or plain
// text (with the custom list's default). Key columns compare without regard
// to case.
oxString* CreateAlpha(const xio_fld_def& def) {
    oxString* value = nullptr;
    const bool sectioned = xk_num_sections(def.code) >= 1 || (def.code == 9 && xk_width(9, 5) != 0);
    if (def.multi_line != 0) {
        value = new oxText("");
    } else if (def.formatted != 0 && sectioned) {
        value = new oxFldCodeData(def.code, def.section, false);
    } else {
        auto* alpha = new oxAlpha("");
        if (def.has_choices != 0) {
            CString text;
            xk_get_custom_list_default(def.code, text);
            alpha->SetVal(text);
        }
        value = alpha;
    }
    value->SetCaseSensitive(def.key == 0);
    return value;
}

}  // namespace

oxData* oxdmColumnDef::CreateData() const {
    oxData* value = nullptr;
    switch (def_.type) {
        case XIO_ALPHA: value = CreateAlpha(def_); break;
        case XIO_NUMERIC: value = new oxDouble(0.0, Decimal()); break;
        case XIO_BOOLEAN: value = new oxBool(false); break;
        case XIO_DATE:
            if (def_.month_year != 0) value = new oxDateMonthYear();
            else if (DefaultWidth() == 5) value = new oxDateMonthDay();
            else value = new oxDate();
            break;
        case XIO_TIME: value = new oxTime(); break;
        case XIO_PHONE: value = new oxPhone(""); break;
        case XIO_SSNUM: value = new oxSSNum(0); break;
        case XIO_CHOICE:
        case XIO_CHOICE8:
        case XIO_CHOICE9: value = new oxChoice(1); break;
        default: throw oxdmException("Column " + Name() + " has unknown type.");
    }
    if (def_.default_value != 0) {
        CString text;
        text.Format("%d", def_.default_value);
        value->SetVal(text, nullptr);
    }
    return value;
}

void oxdmChoiceColumnDef::Choices(std::vector<CString>& out) const {
    out.insert(out.end(), choices_.begin(), choices_.end());
}

CString oxdmChoiceColumnDef::ChoiceForIndex(short index) const {
    if (index <= 0) return CString();
    if (static_cast<size_t>(index) > choices_.size()) return "<Invalid>";
    return choices_[index - 1];
}

short oxdmChoiceColumnDef::IndexForChoice(const CString& text) const {
    for (size_t i = 0; i < choices_.size(); ++i) {
        if (choices_[i] == text) return static_cast<short>(i + 1);
    }
    return 0;
}
