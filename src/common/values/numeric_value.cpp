#include "oxdm/common/values/numeric_value.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "number_support.h"
#include "oxdm/common/values/xval.h"

namespace {

constexpr long long kPowers[] = {1LL,      10LL,      100LL,      1000LL,      10000LL,
                                 100000LL, 1000000LL, 10000000LL, 100000000LL, 1000000000LL};

// The largest magnitude of units kept: 18 digits, so that a sum of two still
// fits a long long.
constexpr long long kMaxUnits = 999999999999999999LL;

// units at from places, expressed at to places, halves away from zero; false
// when the result is beyond kMaxUnits.
bool Rescale(long long units, short from, short to, long long* out) {
    if (units > kMaxUnits || units < -kMaxUnits) return false;
    if (from == to) {
        *out = units;
        return true;
    }
    if (from > to) {
        const long long divisor = kPowers[from - to];
        const long long magnitude = (units < 0 ? -units : units);
        const long long rounded = (magnitude + divisor / 2) / divisor;
        *out = units < 0 ? -rounded : rounded;
        return true;
    }
    const long long factor = kPowers[to - from];
    if ((units < 0 ? -units : units) > kMaxUnits / factor) return false;
    *out = units * factor;
    return true;
}

}  // namespace

oxNumeric::oxNumeric(double value, short decimals) : decimals_(decimals) {
    assert(decimals >= 0 && decimals <= 9);
    const bool taken = SetVal(value);
    assert(taken);
    (void)taken;
}

oxNumeric::~oxNumeric() = default;

void oxNumeric::ConvertToXval(oxioXval& xval) const {
    xval.Reset(XV_NUMERIC, IsNull());
    xval.Edit().number = GetVal();
    xval.Edit().decimals = decimals_;
    xval.Edit().whole = units_;
    xval.SetText(Format());
}

bool oxNumeric::IsNull() const { return units_ == 0; }

bool oxNumeric::Eq(const oxData& other) const {
    bool comparable = false;
    const int order = oxvalues::CompareNumbers(*this, other, &comparable);
    return comparable && order == 0;
}

bool oxNumeric::Lt(const oxData& other) const {
    bool comparable = false;
    const int order = oxvalues::CompareNumbers(*this, other, &comparable);
    return comparable && order < 0;
}

oxData* oxNumeric::Clone() const { return new oxNumeric(*this); }

CString oxNumeric::Format() const {
    const long long magnitude = units_ < 0 ? -units_ : units_;
    CString text;
    if (units_ < 0) text += '-';
    text.AppendFormat("%lld", magnitude / kPowers[decimals_]);
    if (decimals_ > 0) {
        text.AppendFormat(".%0*lld", static_cast<int>(decimals_), magnitude % kPowers[decimals_]);
    }
    return text;
}

bool oxNumeric::SetVal(const CString& text, const oxcFormatter* formatter) {
    CString plain;
    if (!PlainText(text, formatter, &plain)) return false;
    plain.Trim();
    if (plain.IsEmpty()) {
        units_ = 0;
        return true;
    }
    oxvalues::DecimalText parts;
    if (!oxvalues::SplitDecimal(plain, &parts)) return false;
    // Keep at most one digit past this value's places, for the rounding.
    const std::size_t kept = std::min<std::size_t>(parts.fraction.size(), decimals_ + 1);
    const std::string digits = parts.whole + parts.fraction.substr(0, kept);
    if (digits.size() > 18) return false;
    long long units = 0;
    for (char ch : digits) units = units * 10 + (ch - '0');
    if (!Rescale(units, static_cast<short>(kept), decimals_, &units)) return false;
    units_ = parts.negative ? -units : units;
    return true;
}

bool oxNumeric::SetVal(const oxioXval& xval) {
    if (xval.Kind() == XV_TEXT) return SetVal(xval.Text(), nullptr);
    const x_value_def& rec = xval.GetXval();
    if (xval.Kind() == XV_NUMERIC && rec.decimals >= 0 && rec.decimals <= 9) {
        long long units = 0;
        if (!Rescale(rec.whole, rec.decimals, decimals_, &units)) return false;
        units_ = units;
        return true;
    }
    double number = 0.0;
    if (!oxvalues::NumberFromXval(xval, &number)) return false;
    return SetVal(number);
}

double oxNumeric::GetVal(bool) const {
    return static_cast<double>(units_) / static_cast<double>(kPowers[decimals_]);
}

bool oxNumeric::SetVal(double value) {
    if (!std::isfinite(value)) return false;
    const double scaled = oxvalues::RoundTo(value, decimals_) * static_cast<double>(kPowers[decimals_]);
    if (std::fabs(scaled) > static_cast<double>(kMaxUnits)) return false;
    units_ = std::llround(scaled);
    return true;
}
