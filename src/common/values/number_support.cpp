#include "number_support.h"

#include <cassert>
#include <cctype>
#include <cmath>

#include "oxdm/common/values/country.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/numeric_value.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/xval.h"

namespace oxvalues {

namespace {

bool IsDigit(char ch) { return std::isdigit(static_cast<unsigned char>(ch)) != 0; }

double PowerOfTen(short places) {
    double p = 1.0;
    for (short i = 0; i < places; ++i) p *= 10.0;
    return p;
}

}  // namespace

bool SplitDecimal(const CString& text, DecimalText* out) {
    x_country_def country;
    x_get_country_info(&country);
    const std::string& s = text.str();
    std::size_t i = 0;
    *out = DecimalText();
    if (i < s.size() && (s[i] == '-' || s[i] == '+')) out->negative = (s[i++] == '-');
    if (i < s.size() && s[i] == '$') ++i;

    // Whole part: digits, with separators only between groups of three.
    std::string whole;
    int group = 0;
    bool grouped = false;
    for (; i < s.size(); ++i) {
        if (IsDigit(s[i])) {
            whole += s[i];
            ++group;
        } else if (s[i] == country.thousands_separator) {
            if (group == 0 || (grouped && group != 3) || (!grouped && group > 3)) return false;
            grouped = true;
            group = 0;
        } else {
            break;
        }
    }
    if (grouped && group != 3) return false;
    if (i < s.size() && s[i] == country.decimal_point) {
        for (++i; i < s.size() && IsDigit(s[i]); ++i) out->fraction += s[i];
    }
    if (i != s.size()) return false;
    if (whole.empty() && out->fraction.empty()) return false;
    const std::size_t first = whole.find_first_not_of('0');
    out->whole = first == std::string::npos ? std::string() : whole.substr(first);
    return true;
}

double RoundTo(double value, short places) {
    assert(places >= 0 && places <= 15);
    const double scale = PowerOfTen(places);
    // The nudge of a few units in the last place takes a binary value just
    // below a half (2.675 is 2.67499999...) to the half it was typed as.
    const double scaled = value * scale * (1.0 + 1e-12);
    return std::round(scaled) / scale;
}

CString FormatFixed(double value, short places) {
    CString text;
    double shown = RoundTo(value, places);
    if (shown == 0.0) shown = 0.0;  // drops the sign of a negative zero
    text.Format("%.*f", static_cast<int>(places), shown);
    return text;
}

bool NumberOf(const oxData& value, double* number, short* places) {
    *places = 0;
    if (const auto* d = dynamic_cast<const oxDouble*>(&value)) {
        *number = d->GetVal();
        *places = d->Decimals();
    } else if (const auto* n = dynamic_cast<const oxNumeric*>(&value)) {
        *number = n->GetVal();
        *places = n->Decimals();
    } else if (const auto* b = dynamic_cast<const oxBool*>(&value)) {
        *number = b->GetVal() ? 1.0 : 0.0;
    } else if (const auto* c = dynamic_cast<const oxChoice*>(&value)) {
        *number = c->GetVal();
    } else if (const auto* s = dynamic_cast<const oxSSNum*>(&value)) {
        *number = static_cast<double>(s->GetVal());
    } else {
        return false;
    }
    return true;
}

int CompareNumbers(const oxData& a, const oxData& b, bool* comparable) {
    double x = 0, y = 0;
    short px = 0, py = 0;
    *comparable = NumberOf(a, &x, &px) && NumberOf(b, &y, &py);
    if (!*comparable) return 0;
    const short places = px > py ? px : py;
    x = RoundTo(x, places);
    y = RoundTo(y, places);
    return x < y ? -1 : (x > y ? 1 : 0);
}

bool NumberFromXval(const oxioXval& xval, double* number) {
    switch (xval.Kind()) {
        case XV_NONE:
        case XV_DOUBLE:
        case XV_NUMERIC:
        case XV_BOOL:
        case XV_CHOICE:
        case XV_SSNUM:
            *number = xval.GetXval().number;
            return std::isfinite(*number);
        case XV_TEXT:
        case XV_DATE:
        case XV_TIME:
            break;
    }
    return false;
}

bool IsWholeInRange(double number, double max) {
    return number >= 0.0 && number <= max && std::floor(number) == number;
}

}  // namespace oxvalues
