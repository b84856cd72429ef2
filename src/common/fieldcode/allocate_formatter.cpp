// Choosing the edit formatter of a field.

#include "oxdm/common/fieldcode/allocate_formatter.h"

#include <algorithm>

#include "oxdm/common/dictionary/field_codes.h"
#include "oxdm/common/fieldcode/date_time_edit_formatters.h"
#include "oxdm/common/fieldcode/fld_code_edit_formatter.h"
#include "oxdm/common/fieldcode/num_edit_formatter.h"
#include "oxdm/common/fieldcode/phone_edit_formatter.h"
#include "oxdm/common/fieldcode/text_edit_formatters.h"

namespace {

// Room for "12:05:30 PM": a time field this wide shows seconds.
constexpr unsigned short kTimeWithSecondsWidth = 11;
// The width of a date of month and day: "01/02".
constexpr unsigned short kMonthDayWidth = 5;
// Decimal places that a number formatter keeps at most.
constexpr short kMostDecimals = 15;

oxEditFormatter* AlphaFormatter(const xio_fld_def& field) {
    const bool sections = xk_num_sections(field.code) >= 1;
    if ((field.formatted && sections) || field.section != 0 ||
        (field.code == 9 && xk_width(9, 5) != 0)) {
        return new oxFldCodeEditFormatter(field.code, field.section);
    }
    int length = field.length;
    // A code that has no sections here has no width either: 0 sets no cap.
    const short width = xk_width(field.code, static_cast<short>(field.section));
    if (field.formatted && width > 0) length = std::min(length, static_cast<int>(width));
    return new oxStrEditFormatter(length, field.capitalize > 0);
}

oxEditFormatter* NumberFormatter(const xio_fld_def& field) {
    const short decimals = std::clamp<short>(field.decimal, 0, kMostDecimals);
    const short whole = static_cast<short>(std::max(0, static_cast<int>(field.length) - decimals));
    auto* formatter = new oxNumEditFormatter(whole, decimals, field.commas ? unsigned{oxNumEditFormatter::kCommas} : 0u);
    if (field.is_signed == 0) formatter->SetLowerLimit(0.0);
    return formatter;
}

short TimeOption(const xio_fld_def& field) {
    if (field.second_stamp) return oxTimeEditFormatter::kStamp;
    return field.default_width >= kTimeWithSecondsWidth ? oxTimeEditFormatter::kSeconds
                                                        : oxTimeEditFormatter::kHourMinute;
}

}  // namespace

oxEditFormatter* AllocateFormatter(const xio_fld_def& field) {
    switch (field.type) {
        case XIO_ALPHA: return AlphaFormatter(field);
        case XIO_NUMERIC: return NumberFormatter(field);
        case XIO_DATE:
            if (field.month_year) return new oxDateEditFormatter(oxDateEditFormatter::kMonthYear);
            if (field.default_width == kMonthDayWidth) return new oxDateEditFormatter(oxDateEditFormatter::kMonthDay);
            return new oxDateEditFormatter(oxDateEditFormatter::kFullDate);
        case XIO_TIME: return new oxTimeEditFormatter(TimeOption(field));
        case XIO_PHONE: return new oxPhoneEditFormatter(field.default_width);
        case XIO_SSNUM: return new oxSocSecEditFormatter();
        default: return nullptr;
    }
}
