// Phone numbers: the exit check that turns digits into the phone mask.

#include "oxdm/common/fieldcode/phone_edit_formatter.h"

#include "mask_text.h"
#include "oxdm/common/values/country.h"

namespace {

// The country's phone mask, or its local part (from the first digit place
// after the last blank) when width is too narrow for the whole mask.
CString PhoneMask(int width) {
    x_country_def country;
    x_get_country_info(&country);
    const CString mask = country.phone_mask;
    if (width <= 0 || width >= mask.GetLength()) return mask;
    const int blank = mask.ReverseFind(' ');
    return blank >= 0 ? mask.Mid(blank + 1) : mask;
}

}  // namespace

oxPhoneEditFormatter::oxPhoneEditFormatter(int width)
    : mask_(PhoneMask(width)), digits_(oxmask::Places(mask_)) {}

bool oxPhoneEditFormatter::IsValid(CString& text, oxEditValidateInfo* info) const {
    if (text.IsEmpty()) return true;
    const int foreign = oxmask::ForeignChar(mask_, text);
    if (foreign >= 0) {
        Refuse(info, "phone number", "Invalid character.", mask_, foreign + 1);
        return false;
    }
    const int digits = oxmask::DigitCount(text);
    if (digits == 0) {
        // Blanks and mask characters only: nothing was entered.
        text.Empty();
        return true;
    }
    if (digits != digits_) {
        Refuse(info, "phone number",
               digits < digits_ ? "Insufficient digits entered." : "Too many digits entered.", mask_,
               text.GetLength());
        return false;
    }
    text = Format(text);
    return true;
}

CString oxPhoneEditFormatter::Format(const CString& text) const {
    CString out;
    return x_fill_mask(mask_, text, &out) ? out : text;
}

CString oxPhoneEditFormatter::Unformat(const CString& text) const { return Format(text); }

char oxPhoneEditFormatter::TranslateKey(char key, const CString&, int) const {
    return oxmask::IsDigit(key) || key == ' ' || oxmask::IsMaskChar(mask_, key) ? key : 0;
}

bool oxPhoneEditFormatter::AcceptsPartial(const CString& text) const {
    return oxmask::DigitCount(text) <= digits_ && text.GetLength() <= mask_.GetLength() + 2;
}
