// The edit formatter of a field code.

#include "oxdm/common/fieldcode/fld_code_edit_formatter.h"

#include <cctype>

#include "fld_code_check.h"
#include "oxdm/common/dictionary/field_codes.h"

oxFldCodeEditFormatter::oxFldCodeEditFormatter(short code, unsigned short section)
    : code_(code), section_(section) {}

bool oxFldCodeEditFormatter::IsValid(CString& text, oxEditValidateInfo* info) const {
    if (text.IsEmpty()) return true;
    const oxFldCodeRules rules = oxFldCodeRules::Read(code_, section_);
    bool valid = oxFldCodeCheck(rules, text, info);
    if (!valid) {
        // Once more with the punctuation put where the code wants it; the
        // first answer stands when this fails too.
        CString copy = oxFldCodeFormatText(rules, oxFldCodeUnformatText(rules, text));
        oxEditValidateInfo again;
        if (oxFldCodeCheck(rules, copy, &again)) {
            text = copy;
            valid = true;
            if (info) *info = again;
        }
    }
    if (!valid) {
        if (info) info->selEnd = text.GetLength();
        return false;
    }
    if (xk_multi_section(code_) && section_ == 0) {
        text = oxFldCodeFormatText(rules, oxFldCodeUnformatText(rules, text));
    }
    return true;
}

CString oxFldCodeEditFormatter::Format(const CString& text) const {
    return oxFldCodeFormatText(oxFldCodeRules::Read(code_, section_), text);
}

CString oxFldCodeEditFormatter::Unformat(const CString& text) const {
    return oxFldCodeUnformatText(oxFldCodeRules::Read(code_, section_), text);
}

int oxFldCodeEditFormatter::MaxLength() const {
    const oxFldCodeRules rules = oxFldCodeRules::Read(code_, section_);
    if (code_ == oxFldCodeRules::kFreeFormCode && rules.longest > 0) return rules.longest;
    const bool one = section_ >= 1 && section_ <= XK_MAX_SECTIONS;
    if (!one && section_ != 0) return 0;
    return xk_width(code_, static_cast<short>(section_));
}

char oxFldCodeEditFormatter::TranslateKey(char key, const CString& text, int caret) const {
    const char ch = oxEditFormatter::TranslateKey(key, text, caret);
    if (ch == 0) return 0;
    // The section the caret stands in: one more than the separators before it.
    short section = static_cast<short>(section_);
    if (section_ == 0 && code_ != oxFldCodeRules::kFreeFormCode) {
        const oxFldCodeRules rules = oxFldCodeRules::Read(code_, section_);
        section = 1;
        for (int i = 0; i < caret && i < text.GetLength(); ++i) {
            if (rules.IsPunctuation(text[i]) && section < XK_MAX_SECTIONS) ++section;
        }
    }
    const bool capitals = code_ == oxFldCodeRules::kFreeFormCode ? xk_capitals(code_, 0) != 0
                                                                : xk_capitals(code_, section) != 0;
    return capitals ? static_cast<char>(std::toupper(static_cast<unsigned char>(ch))) : ch;
}

bool oxFldCodeEditFormatter::AcceptsPartial(const CString& text) const {
    const int longest = MaxLength();
    return longest == 0 || text.GetLength() <= longest;
}
