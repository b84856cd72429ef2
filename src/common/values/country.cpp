#include "oxdm/common/values/country.h"

#include <cassert>
#include <cctype>
#include <cstring>

void x_get_country_info(x_country_def* info) {
    assert(info != nullptr);
    std::memset(info, 0, sizeof *info);
    info->date_separator = '/';
    info->time_separator = ':';
    info->decimal_point = '.';
    info->thousands_separator = ',';
    std::strcpy(info->am, "AM");
    std::strcpy(info->pm, "PM");
    info->century_pivot = 50;
    std::strcpy(info->ssn_mask, "999-99-9999");
    std::strcpy(info->phone_mask, "(999) 999-9999");
}

bool x_fill_mask(const char* mask, const char* digits, CString* out) {
    assert(mask != nullptr && digits != nullptr && out != nullptr);
    CString plain;
    for (const char* p = digits; *p != '\0'; ++p) {
        if (std::isdigit(static_cast<unsigned char>(*p))) plain += *p;
    }
    int slots = 0;
    for (const char* m = mask; *m != '\0'; ++m) slots += (*m == '9');
    if (slots != plain.GetLength()) return false;

    CString result;
    int next = 0;
    for (const char* m = mask; *m != '\0'; ++m) result += (*m == '9') ? plain[next++] : *m;
    *out = result;
    return true;
}
