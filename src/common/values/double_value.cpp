#include "oxdm/common/values/double_value.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdlib>

#include "number_support.h"
#include "oxdm/common/values/xval.h"

using oxvalues::CompareNumbers;

oxDouble::oxDouble(double value, short decimals) : value_(value), decimals_(decimals) {
    assert(decimals >= 0 && decimals <= 15);
    assert(std::isfinite(value));
}

oxDouble::~oxDouble() = default;

void oxDouble::ConvertToXval(oxioXval& xval) const {
    xval.Reset(XV_DOUBLE, IsNull());
    xval.Edit().number = value_;
    xval.Edit().decimals = decimals_;
    xval.SetText(Format());
}

bool oxDouble::IsNull() const { return value_ == 0.0; }

bool oxDouble::Eq(const oxData& other) const {
    bool comparable = false;
    const int order = CompareNumbers(*this, other, &comparable);
    return comparable && order == 0;
}

bool oxDouble::Lt(const oxData& other) const {
    bool comparable = false;
    const int order = CompareNumbers(*this, other, &comparable);
    return comparable && order < 0;
}

oxData* oxDouble::Clone() const { return new oxDouble(*this); }

CString oxDouble::Format() const { return oxvalues::FormatFixed(value_, decimals_); }

bool oxDouble::SetVal(const CString& text, const oxcFormatter* formatter) {
    CString plain;
    if (!PlainText(text, formatter, &plain)) return false;
    plain.Trim();
    if (plain.IsEmpty()) {
        value_ = 0.0;
        return true;
    }
    oxvalues::DecimalText parts;
    if (!oxvalues::SplitDecimal(plain, &parts)) return false;
    const std::string digits = (parts.whole.empty() ? "0" : parts.whole) + "." + parts.fraction + "0";
    const double magnitude = std::strtod(digits.c_str(), nullptr);
    if (!std::isfinite(magnitude)) return false;
    value_ = parts.negative ? -magnitude : magnitude;
    return true;
}

bool oxDouble::SetVal(const oxioXval& xval) {
    if (xval.Kind() == XV_TEXT) return SetVal(xval.Text(), nullptr);
    double number = 0.0;
    if (!oxvalues::NumberFromXval(xval, &number)) return false;
    value_ = number;
    return true;
}

double oxDouble::GetVal(bool rounded) const {
    return rounded ? oxvalues::RoundTo(value_, decimals_) : value_;
}

void oxDouble::SetVal(double value) {
    assert(std::isfinite(value));
    value_ = value;
}

void oxDouble::Round(short places) {
    assert(places >= 0 && places <= 15);
    value_ = oxvalues::RoundTo(value_, places);
}

void oxDouble::SetDecimals(short decimals) {
    assert(decimals >= 0 && decimals <= 15);
    decimals_ = decimals;
}

oxDouble& oxDouble::operator=(const oxDouble& other) {
    value_ = other.value_;
    decimals_ = other.decimals_;
    return *this;
}

oxDouble oxDouble::operator++(int) {
    oxDouble before(*this);
    value_ += 1.0;
    return before;
}

oxDouble& oxDouble::operator++() {
    value_ += 1.0;
    return *this;
}

oxDouble oxDouble::operator--(int) {
    oxDouble before(*this);
    value_ -= 1.0;
    return before;
}

oxDouble& oxDouble::operator--() {
    value_ -= 1.0;
    return *this;
}

oxDouble oxDouble::operator-(const oxDouble& other) const {
    oxDouble result(*this);
    result -= other;
    return result;
}

oxDouble oxDouble::operator-() const { return oxDouble(-value_, decimals_); }

bool oxDouble::operator!() const { return value_ == 0.0; }

oxDouble oxDouble::operator+(const oxDouble& other) const {
    oxDouble result(*this);
    result += other;
    return result;
}

oxDouble oxDouble::operator*(const oxDouble& other) const {
    oxDouble result(*this);
    result *= other;
    return result;
}

oxDouble oxDouble::operator/(const oxDouble& other) const {
    oxDouble result(*this);
    result /= other;
    return result;
}

oxDouble& oxDouble::operator+=(const oxDouble& other) {
    value_ += other.value_;
    decimals_ = std::max(decimals_, other.decimals_);
    return *this;
}

oxDouble& oxDouble::operator-=(const oxDouble& other) {
    value_ -= other.value_;
    decimals_ = std::max(decimals_, other.decimals_);
    return *this;
}

oxDouble& oxDouble::operator*=(const oxDouble& other) {
    value_ *= other.value_;
    decimals_ = std::max(decimals_, other.decimals_);
    return *this;
}

oxDouble& oxDouble::operator/=(const oxDouble& other) {
    value_ = other.value_ == 0.0 ? 0.0 : value_ / other.value_;
    decimals_ = std::max(decimals_, other.decimals_);
    return *this;
}
