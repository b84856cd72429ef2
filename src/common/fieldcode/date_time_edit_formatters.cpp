// Dates and times through the date and time parsers.

#include "oxdm/common/fieldcode/date_time_edit_formatters.h"

#include <cctype>

#include "oxdm/common/values/date_text.h"

namespace {

// Typed dates and times: "January 2, 2026", "9:05:30 p.m." and the like.
bool IsDateTimeKey(char key) {
    const unsigned char ch = static_cast<unsigned char>(key);
    return std::isalnum(ch) || key == '/' || key == '-' || key == '.' || key == ' ' || key == ',' ||
           key == ':';
}

// The longest date or time text worth typing: a weekday, a long month name,
// a day and a year, or a time with seconds and "p.m.".
constexpr int kLongestDate = XD_DATE_TEXT_SIZE - 1;
constexpr int kLongestTime = XD_TIME_TEXT_SIZE - 1;

xd_date_parts PartsOf(short option) {
    switch (option) {
        case oxDateEditFormatter::kMonthDay: return XD_MONTH_DAY;
        case oxDateEditFormatter::kMonthYear: return XD_MONTH_YEAR;
        default: return XD_FULL_DATE;
    }
}

const char* DateMask(short option) {
    switch (option) {
        case oxDateEditFormatter::kMonthDay: return "MM/DD";
        case oxDateEditFormatter::kMonthYear: return "MM/YYYY";
        default: return "MM/DD/YYYY";
    }
}

// The option of xd_alpha_time that shows a time of this formatter option.
short TimeTextOption(short option) {
    switch (option) {
        case oxTimeEditFormatter::kSeconds: return 1;
        case oxTimeEditFormatter::kStamp: return 2;
        default: return 0;
    }
}

const char* TimeMask(short option) {
    switch (option) {
        case oxTimeEditFormatter::kSeconds: return "HH:MM:SS AM";
        case oxTimeEditFormatter::kStamp: return "HH:MM:SS";
        default: return "HH:MM AM";
    }
}

}  // namespace

oxDateEditFormatter::oxDateEditFormatter(short option)
    : option_(option == kMonthDay || option == kMonthYear ? option : short{kFullDate}) {}

bool oxDateEditFormatter::IsValid(CString& text, oxEditValidateInfo* info) const {
    x_date_def date{};
    if (!xd_parse_date(text, &date, PartsOf(option_))) {
        Refuse(info, "date", "Invalid date.", DateMask(option_), text.GetLength());
        return false;
    }
    text = Format(text);
    return true;
}

CString oxDateEditFormatter::Format(const CString& text) const {
    x_date_def date{};
    if (!xd_parse_date(text, &date, PartsOf(option_))) return text;
    char out[XD_DATE_TEXT_SIZE];
    xd_alpha_date(&date, out, 0, 0, 0, false);
    return out;
}

CString oxDateEditFormatter::Unformat(const CString& text) const { return Format(text); }

char oxDateEditFormatter::TranslateKey(char key, const CString&, int) const {
    return IsDateTimeKey(key) && key != ':' ? key : 0;
}

bool oxDateEditFormatter::AcceptsPartial(const CString& text) const {
    return text.GetLength() <= kLongestDate;
}

oxTimeEditFormatter::oxTimeEditFormatter(short option)
    : option_(option == kSeconds || option == kStamp ? option : short{kHourMinute}) {}

bool oxTimeEditFormatter::IsValid(CString& text, oxEditValidateInfo* info) const {
    x_time_def time{};
    if (!xd_parse_time(text, &time)) {
        Refuse(info, "time", "Invalid time.", TimeMask(option_), text.GetLength());
        return false;
    }
    text = Format(text);
    return true;
}

CString oxTimeEditFormatter::Format(const CString& text) const {
    x_time_def time{};
    if (!xd_parse_time(text, &time)) return text;
    char out[XD_TIME_TEXT_SIZE];
    xd_alpha_time(&time, out, TimeTextOption(option_));
    return out;
}

CString oxTimeEditFormatter::Unformat(const CString& text) const { return Format(text); }

char oxTimeEditFormatter::TranslateKey(char key, const CString&, int) const {
    return IsDateTimeKey(key) && key != '/' && key != '-' && key != ',' ? key : 0;
}

bool oxTimeEditFormatter::AcceptsPartial(const CString& text) const {
    return text.GetLength() <= kLongestTime;
}
