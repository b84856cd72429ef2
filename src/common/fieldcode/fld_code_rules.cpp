// Reading the section table of a field code.

#include "fld_code_rules.h"

#include <cstring>

#include "oxdm/common/dictionary/field_codes.h"

namespace {

// The form of a free-form code by its section number.
void FreeFormByNumber(oxFldCodeRules& rules) {
    rules.bySection = false;
    rules.fillDecimals = true;
    const unsigned short n = rules.sectionNumber;
    if (n == 0 || n == 8) {
        rules.longest = 25;
        rules.lengthStrict = n == 0;
    } else if (n <= 3) {
        rules.checkOff = true;
        rules.longest = 10;
    } else if (n == 4) {
        rules.longest = 10;
    } else if (n == 5) {
        rules.checkOff = true;
        rules.longest = 5;
    } else if (n == 6) {
        rules.longest = 22;
        rules.digitsOnly = true;
    } else if (n >= 9) {
        for (const xc_section_def& s : rules.section) rules.digitsOnly |= s.digits_only != 0;
        rules.longest = rules.digitsOnly ? 22 : 20;
    }
}

// Whole digits and decimals of a free-form code: the sections up to the one
// followed by a decimal point are whole digits, those after it decimals.
void FreeFormDigits(oxFldCodeRules& rules) {
    bool point = false;
    for (const xc_section_def& s : rules.section) {
        (point ? rules.decimals : rules.wholeDigits) += s.width;
        point |= s.punctuation == '.';
    }
}

}  // namespace

oxFldCodeRules oxFldCodeRules::Read(short code, unsigned short sectionNumber) {
    oxFldCodeRules rules;
    rules.code = code;
    rules.sectionNumber = sectionNumber;
    const bool one = sectionNumber >= 1 && sectionNumber <= XK_MAX_SECTIONS;
    int count = 0;
    const int first = one ? sectionNumber : 1;
    const int last = one ? sectionNumber : int{XK_MAX_SECTIONS};
    for (int s = first; s <= last; ++s) {
        xc_section_def def{};
        if (xc_get_section_def(code, static_cast<short>(s), &def) != 0) continue;
        if (def.width <= 0) def = xc_section_def{};
        rules.section[count++] = def;
    }
    int lastWide = -1;
    for (int i = 0; i < count; ++i) lastWide = rules.section[i].width > 0 ? i : lastWide;
    if (count > 1 && lastWide >= 0) rules.section[lastWide].punctuation = 0;

    if (code == kFreeFormCode) {
        FreeFormByNumber(rules);
        FreeFormDigits(rules);
    }
    return rules;
}

int oxFldCodeRules::WidthSum() const {
    int sum = 0;
    for (const xc_section_def& s : section) sum += s.width;
    return sum;
}

int oxFldCodeRules::Shortest() const {
    const bool fullFirst = !bySection && (sectionNumber == 4 || sectionNumber == 5 ||
                                          sectionNumber == 7 || sectionNumber == 11);
    int sum = 0;
    bool first = true;
    for (const xc_section_def& s : section) {
        if (s.width <= 0) continue;
        sum += first && !fullFirst ? 1 : s.width;
        first = false;
    }
    return sum;
}

char oxFldCodeRules::Punctuation(int index) const {
    return index >= 0 && index < XK_MAX_SECTIONS ? section[index].punctuation : 0;
}

bool oxFldCodeRules::IsPunctuation(char ch) const {
    if (ch == 0) return false;
    for (const xc_section_def& s : section) {
        if (s.punctuation == ch) return true;
    }
    return false;
}
