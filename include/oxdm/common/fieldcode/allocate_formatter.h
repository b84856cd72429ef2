#pragma once
// AllocateFormatter: the edit formatter that suits a field, chosen by its
// type and the flags of its definition:
//   alpha    a field-code formatter when the field is formatted with a code
//            of sections, names a section, or is of code 9 with a fifth
//            section; else a text formatter of the field's length (capped
//            by the code's width when formatted with a sectionless code)
//   numeric  whole digits (length minus decimals), decimals, commas; no
//            negative numbers when the field is unsigned
//   date     month and year, month and day (default width 5), or full
//   time     hours and minutes; seconds when the width has room for them
//            (11); the 24-hour stamp form on the time stamp
//   phone    the phone formatter of the default width
//   SSN      the social security formatter
// Other types (boolean, choices) have no formatter: the answer is null.

#include "oxdm/common/dictionary/definition_records.h"
#include "oxdm/common/fieldcode/edit_formatter.h"

// The caller owns the result (null for a type without a formatter).
oxEditFormatter* AllocateFormatter(const xio_fld_def& field);
