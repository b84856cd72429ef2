#pragma once
// The one place that says how values look as text.
//
// Every value class and the flat date and time helpers read this convention
// through x_get_country_info; nothing else hard-codes a separator, an AM/PM
// word or a mask. The convention is the United States one:
//
//   date             MM/DD/YYYY        01/02/2026
//   month and day    MM/DD             01/02
//   month and year   MM/YYYY           01/2026
//   time             h:mm AM           9:05 AM   (seconds shown when not zero)
//   social security  999-99-9999       123-45-6789
//   phone            (999) 999-9999    (555) 010-4477
//   number           -1234.50          (a thousands separator is accepted on entry)
//
// Two-digit years: an operator who types a year of one or two digits, yy,
// means 20yy when yy is below century_pivot (50) and 19yy otherwise, so 26
// is 2026 and 87 is 1987. Four-digit years are taken as they are; three-digit
// years are refused.

#include "oxdm/base/cstring.h"

struct x_country_def {
    char date_separator;       // between month, day and year: '/'
    char time_separator;       // between hours, minutes and seconds: ':'
    char decimal_point;        // '.'
    char thousands_separator;  // ',' accepted (and ignored) in typed numbers
    char am[4];                // "AM"
    char pm[4];                // "PM"
    short century_pivot;       // two-digit years below it are 20yy, others 19yy
    char ssn_mask[16];         // "999-99-9999": each '9' takes one digit
    char phone_mask[16];       // "(999) 999-9999"
};

// Fills *info with the convention above.
// REQUIRES: info != nullptr.
void x_get_country_info(x_country_def* info);

// Places digits into the '9' positions of mask, copying every other mask
// character as it stands. Characters of digits that are not decimal digits
// are skipped, so "555-010-4477" and "5550104477" give the same result.
// Answers false, and leaves out untouched, when the number of digits is not
// the number of '9's of the mask.
// REQUIRES: mask != nullptr, digits != nullptr, out != nullptr.
bool x_fill_mask(const char* mask, const char* digits, CString* out);
