// Free text of a length, and social security numbers.

#include "oxdm/common/fieldcode/text_edit_formatters.h"

#include <cassert>
#include <cctype>

#include "mask_text.h"
#include "oxdm/common/values/country.h"

namespace {

CString SsnMask() {
    x_country_def country;
    x_get_country_info(&country);
    return country.ssn_mask;
}

}  // namespace

oxStrEditFormatter::oxStrEditFormatter(int length, bool capitals)
    : length_(length), capitals_(capitals) {
    assert(length >= 0);
}

bool oxStrEditFormatter::IsValid(CString& text, oxEditValidateInfo* info) const {
    if (length_ > 0 && text.GetLength() > length_) {
        Refuse(info, "text", "Too many characters entered.", CString('X', length_), length_);
        if (info) info->selEnd = text.GetLength();
        return false;
    }
    if (capitals_) text.MakeUpper();
    return true;
}

char oxStrEditFormatter::TranslateKey(char key, const CString& text, int caret) const {
    const char ch = oxEditFormatter::TranslateKey(key, text, caret);
    return capitals_ ? static_cast<char>(std::toupper(static_cast<unsigned char>(ch))) : ch;
}

bool oxStrEditFormatter::AcceptsPartial(const CString& text) const {
    return length_ == 0 || text.GetLength() <= length_;
}

bool oxSocSecEditFormatter::IsValid(CString& text, oxEditValidateInfo* info) const {
    if (text.IsEmpty()) return true;
    const CString mask = SsnMask();
    const int foreign = oxmask::ForeignChar(mask, text);
    if (foreign >= 0) {
        Refuse(info, "social security number", "Invalid character.", mask, foreign + 1);
        return false;
    }
    const int digits = oxmask::DigitCount(text);
    if (digits != oxmask::Places(mask)) {
        Refuse(info, "social security number",
               digits < oxmask::Places(mask) ? "Insufficient digits entered." : "Too many digits entered.",
               mask, text.GetLength());
        return false;
    }
    text = Format(text);
    return true;
}

CString oxSocSecEditFormatter::Format(const CString& text) const {
    CString out;
    return x_fill_mask(SsnMask(), text, &out) ? out : text;
}

CString oxSocSecEditFormatter::Unformat(const CString& text) const {
    CString masked;
    return x_fill_mask(SsnMask(), text, &masked) ? oxmask::Digits(masked) : text;
}

char oxSocSecEditFormatter::TranslateKey(char key, const CString&, int) const {
    return oxmask::IsDigit(key) || key == ' ' || oxmask::IsMaskChar(SsnMask(), key) ? key : 0;
}

bool oxSocSecEditFormatter::AcceptsPartial(const CString& text) const {
    const CString mask = SsnMask();
    return oxmask::DigitCount(text) <= oxmask::Places(mask) && text.GetLength() <= mask.GetLength();
}
