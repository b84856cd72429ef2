#include "oxdm/common/values/small_values.h"

#include <cassert>
#include <cctype>

#include "number_support.h"
#include "oxdm/common/values/country.h"
#include "oxdm/common/values/xval.h"

namespace {

bool NumbersEqual(const oxData& a, const oxData& b) {
    bool comparable = false;
    const int order = oxvalues::CompareNumbers(a, b, &comparable);
    return comparable && order == 0;
}

bool NumberLess(const oxData& a, const oxData& b) {
    bool comparable = false;
    const int order = oxvalues::CompareNumbers(a, b, &comparable);
    return comparable && order < 0;
}

bool AllDigits(const CString& text) {
    if (text.IsEmpty()) return false;
    for (char ch : text.view()) {
        if (!std::isdigit(static_cast<unsigned char>(ch))) return false;
    }
    return true;
}

}  // namespace

// ---- oxBool ----------------------------------------------------------------

oxBool::~oxBool() = default;

void oxBool::ConvertToXval(oxioXval& xval) const {
    xval.Reset(XV_BOOL, IsNull());
    xval.Edit().number = value_ ? 1.0 : 0.0;
    xval.Edit().whole = value_ ? 1 : 0;
    xval.SetText(Format());
}

bool oxBool::IsNull() const { return !value_; }
bool oxBool::Eq(const oxData& other) const { return NumbersEqual(*this, other); }
bool oxBool::Lt(const oxData& other) const { return NumberLess(*this, other); }
oxData* oxBool::Clone() const { return new oxBool(*this); }
CString oxBool::Format() const { return value_ ? CString("X") : CString(); }

bool oxBool::SetVal(const CString& text, const oxcFormatter* formatter) {
    CString plain;
    if (!PlainText(text, formatter, &plain)) return false;
    plain.Trim();
    static const char* const kTrue[] = {"X", "Y", "YES", "T", "TRUE", "1", "ON"};
    static const char* const kFalse[] = {"", "N", "NO", "F", "FALSE", "0", "OFF"};
    for (const char* word : kTrue) {
        if (plain.CompareNoCase(word) == 0) {
            value_ = true;
            return true;
        }
    }
    for (const char* word : kFalse) {
        if (plain.CompareNoCase(word) == 0) {
            value_ = false;
            return true;
        }
    }
    return false;
}

bool oxBool::SetVal(const oxioXval& xval) {
    if (xval.Kind() == XV_TEXT) return SetVal(xval.Text(), nullptr);
    double number = 0.0;
    if (!oxvalues::NumberFromXval(xval, &number)) return false;
    value_ = number != 0.0;
    return true;
}

// ---- oxChoice --------------------------------------------------------------

oxChoice::~oxChoice() = default;

void oxChoice::ConvertToXval(oxioXval& xval) const {
    xval.Reset(XV_CHOICE, IsNull());
    xval.Edit().number = value_;
    xval.Edit().whole = value_;
    xval.SetText(Format());
}

bool oxChoice::IsNull() const { return value_ == 0; }
bool oxChoice::Eq(const oxData& other) const { return NumbersEqual(*this, other); }
bool oxChoice::Lt(const oxData& other) const { return NumberLess(*this, other); }
oxData* oxChoice::Clone() const { return new oxChoice(*this); }

CString oxChoice::Format() const {
    CString text;
    if (value_ != 0) text.Format("%u", static_cast<unsigned>(value_));
    return text;
}

bool oxChoice::SetVal(const CString& text, const oxcFormatter* formatter) {
    CString plain;
    if (!PlainText(text, formatter, &plain)) return false;
    plain.Trim();
    if (plain.IsEmpty()) {
        value_ = 0;
        return true;
    }
    if (!AllDigits(plain) || plain.GetLength() > 5) return false;
    const unsigned long number = std::stoul(plain.str());
    if (number > 65535UL) return false;
    value_ = static_cast<unsigned short>(number);
    return true;
}

bool oxChoice::SetVal(const oxioXval& xval) {
    if (xval.Kind() == XV_TEXT) return SetVal(xval.Text(), nullptr);
    double number = 0.0;
    if (!oxvalues::NumberFromXval(xval, &number)) return false;
    if (!oxvalues::IsWholeInRange(number, 65535.0)) return false;
    value_ = static_cast<unsigned short>(number);
    return true;
}

// ---- oxSSNum ---------------------------------------------------------------

oxSSNum::oxSSNum(unsigned long value) : value_(value) { assert(value <= kMax); }

oxSSNum::~oxSSNum() = default;

void oxSSNum::ConvertToXval(oxioXval& xval) const {
    xval.Reset(XV_SSNUM, IsNull());
    xval.Edit().number = static_cast<double>(value_);
    xval.Edit().whole = static_cast<long long>(value_);
    xval.SetText(Format());
}

bool oxSSNum::IsNull() const { return value_ == 0; }
bool oxSSNum::Eq(const oxData& other) const { return NumbersEqual(*this, other); }
bool oxSSNum::Lt(const oxData& other) const { return NumberLess(*this, other); }
oxData* oxSSNum::Clone() const { return new oxSSNum(*this); }

CString oxSSNum::Format() const {
    if (value_ == 0) return CString();
    x_country_def country;
    x_get_country_info(&country);
    CString digits;
    digits.Format("%09lu", value_);
    CString text;
    const bool filled = x_fill_mask(country.ssn_mask, digits, &text);
    assert(filled);
    (void)filled;
    return text;
}

bool oxSSNum::SetVal(const CString& text, const oxcFormatter* formatter) {
    CString plain;
    if (!PlainText(text, formatter, &plain)) return false;
    plain.Trim();
    if (plain.IsEmpty()) {
        value_ = 0;
        return true;
    }
    // Nine digits, or 999-99-9999 / 999 99 9999 with both breaks alike.
    if (plain.GetLength() == 11) {
        const char first = plain[3];
        if ((first != '-' && first != ' ') || plain[6] != first) return false;
        plain = plain.Left(3) + plain.Mid(4, 2) + plain.Mid(7);
    }
    if (plain.GetLength() != 9 || !AllDigits(plain)) return false;
    value_ = std::stoul(plain.str());
    return true;
}

bool oxSSNum::SetVal(const oxioXval& xval) {
    if (xval.Kind() == XV_TEXT) return SetVal(xval.Text(), nullptr);
    double number = 0.0;
    if (!oxvalues::NumberFromXval(xval, &number)) return false;
    if (!oxvalues::IsWholeInRange(number, static_cast<double>(kMax))) return false;
    value_ = static_cast<unsigned long>(number);
    return true;
}
