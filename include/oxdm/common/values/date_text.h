#pragma once
// Date and time text: the one formatter and the one parser of dates and
// times, used by oxDate, its month-and-day and month-and-year kinds, oxTime,
// and any layer that shows a date or time record. The separators and AM/PM
// words come from x_get_country_info.
//
// Dates. A record with year 0 is a month and a day; one with day 0 is a month
// and a year; all zero is the null date, shown as "".
//
//   format 0  numeric          01/02/2026, 01/02, 01/2026
//   format 1  short month name Jan 2, 2026, Jan 2, Jan 2026
//   format 2  long month name  January 2, 2026, January 2, January 2026
//   year   0  four digits; 1 two digits (01/02/26); 2 no year (01/02)
//   separator  the character between numeric parts; 0 for the country's
//   dayOfWeek  puts the day's name first: "Friday, 01/02/2026" (full dates)
//
// Entry (xd_parse_date) takes what operators type, parts told by `parts`:
//   full date       1/2/26, 01/02/2026, 1-2-2026, 1.2.2026, 1 2 2026,
//                   010226, 01022026, Jan 2 2026, January 2, 2026,
//                   Friday, January 2, 2026 (the day must match);
//                   month and day alone (1/2, 0102) mean this year
//   month and day   1/2, 01/02, 0102, Jan 2
//   month and year  1/26, 1/2026, 0126, 012026, Jan 2026
// Years of one or two digits follow the country's pivot (see country.h).
// Blank text is the null date. Anything else, and any impossible date
// (2/30/2026), is refused.
//
// Times. A record with a negative hour is the null time, shown as "".
//   option 0  9:05 AM, 9:05:30 AM (seconds only when not zero)
//   option 1  9:05:00 AM (always seconds)
//   option 2  09:05, 21:05:30 (24-hour clock, seconds only when not zero)
// Entry (xd_parse_time): 9a, 9 am, 9:05 pm, 9:05PM, 9:05:30 p.m., 21:05,
// 0905, 2105, 12a (midnight), 12p (noon). Minutes and seconds take two
// digits. With AM/PM the hour is 1-12; without, 0-23. Blank is the null time.

#include "oxdm/common/values/xval.h"

enum xd_date_parts : short {
    XD_FULL_DATE = 0,
    XD_MONTH_DAY = 1,
    XD_MONTH_YEAR = 2,
};

// Room that xd_alpha_date and xd_alpha_time need, terminator included.
inline constexpr short XD_DATE_TEXT_SIZE = 40;
inline constexpr short XD_TIME_TEXT_SIZE = 16;

// Writes the text of *date into text and answers its length. An invalid or
// out-of-range option is taken as 0.
// REQUIRES: date != nullptr; text has XD_DATE_TEXT_SIZE bytes.
short xd_alpha_date(const x_date_def* date, char* text, short format, short year,
                    short separator, bool dayOfWeek);

// Writes the text of *time into text and answers its length.
// REQUIRES: time != nullptr; text has XD_TIME_TEXT_SIZE bytes.
short xd_alpha_time(const x_time_def* time, char* text, short option);

// Parses text into *date (year 0 for month-day entry, day 0 for month-year
// entry). Answers false, leaving *date untouched, for text that is not a date.
// REQUIRES: text != nullptr, date != nullptr.
bool xd_parse_date(const char* text, x_date_def* date, xd_date_parts parts);

// Parses text into *time; false, leaving *time untouched, for text that is
// not a time.
// REQUIRES: text != nullptr, time != nullptr.
bool xd_parse_time(const char* text, x_time_def* time);

// Calendar facts shared by the date classes and the parser.
bool xd_leap_year(int year);
// Days of month in year (February of year 0 has 29: year 0 is a leap year).
// REQUIRES: 1 <= month <= 12.
short xd_month_length(int month, int year);
// True when the record is the null date or a valid date of its parts.
bool xd_valid_date(const x_date_def* date);
