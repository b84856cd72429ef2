// Numbers of whole digits and decimals.

#include "oxdm/common/fieldcode/num_edit_formatter.h"

#include <cassert>
#include <cstdlib>

#include "mask_text.h"

// A number as read from a text: its parts, or the fault that stopped it.
struct oxNumEditFormatter::Parsed {
    bool negative = false;
    CString whole;     // whole digits, without leading zeros
    CString fraction;  // digits after the point
    const char* fault = nullptr;  // words of the fault; null when read
    int place = 0;                // one past the character at fault
};

oxNumEditFormatter::oxNumEditFormatter(short wholeDigits, short decimals, unsigned options)
    : wholeDigits_(wholeDigits), decimals_(decimals), options_(options) {
    assert(wholeDigits >= 0 && decimals >= 0 && decimals <= 15);
}

void oxNumEditFormatter::SetLowerLimit(double limit) {
    hasLowerLimit_ = true;
    lowerLimit_ = limit;
}

bool oxNumEditFormatter::Parse(const CString& text, bool complete, Parsed* out) const {
    const auto fail = [out](const char* fault, int place) {
        out->fault = fault;
        out->place = place;
        return false;
    };
    const int length = text.GetLength();
    int i = 0;
    while (i < length && text[i] == ' ') ++i;
    int end = length;
    while (end > i && text[end - 1] == ' ') --end;
    for (int lead = 0; lead < 2 && i < end; ++lead) {
        if (text[i] == '-' && !out->negative) out->negative = true, ++i;
        else if (text[i] == '$') ++i;
    }
    bool point = false;
    bool digits = false;
    for (; i < end; ++i) {
        const char ch = text[i];
        if (oxmask::IsDigit(ch)) {
            digits = true;
            if (point) out->fraction += ch;
            else if (!out->whole.IsEmpty() || ch != '0') out->whole += ch;
        } else if (ch == ',' && !point) {
            continue;
        } else if (ch == '.') {
            if (decimals_ == 0) return fail("Invalid character.", i + 1);
            if (point) return fail("Only one decimal point allowed.", i + 1);
            point = true;
        } else {
            return fail("Invalid character.", i + 1);
        }
        if (out->whole.GetLength() > wholeDigits_) return fail("Too many digits before decimal point.", i + 1);
        if (out->fraction.GetLength() > decimals_) return fail("Too many digits after decimal point.", i + 1);
    }
    if (!complete) return true;
    if (!digits && (out->negative || point)) return fail("Insufficient digits entered.", length);
    if (hasLowerLimit_ && digits) {
        const double value = std::strtod(Compose(*out, false), nullptr);
        if (value < lowerLimit_) return fail("Entry below the lower limit.", length);
    }
    return true;
}

CString oxNumEditFormatter::Compose(const Parsed& number, bool commas) const {
    CString whole = number.whole.IsEmpty() ? CString("0") : number.whole;
    if (commas) {
        for (int at = whole.GetLength() - 3; at > 0; at -= 3) whole.Insert(at, ',');
    }
    // A zero is shown without its sign.
    const bool zero = number.whole.IsEmpty() && number.fraction.FindOneOf("123456789") < 0;
    CString out = number.negative && !zero ? CString("-") : CString();
    out += whole;
    if (decimals_ > 0) {
        CString fraction = number.fraction;
        while (fraction.GetLength() < decimals_) fraction += '0';
        out += '.';
        out += fraction;
    }
    return out;
}

CString oxNumEditFormatter::Mask() const {
    Parsed nines;
    nines.whole = CString('9', wholeDigits_ > 0 ? wholeDigits_ : 1);
    nines.fraction = CString('9', decimals_);
    return Compose(nines, (options_ & kCommas) != 0);
}

bool oxNumEditFormatter::IsValid(CString& text, oxEditValidateInfo* info) const {
    Parsed number;
    if (!Parse(text, true, &number)) {
        Refuse(info, "number", number.fault, Mask(), number.place);
        return false;
    }
    text = Format(text);
    return true;
}

CString oxNumEditFormatter::Format(const CString& text) const {
    Parsed number;
    if (!Parse(text, true, &number)) return text;
    if (number.whole.IsEmpty() && number.fraction.IsEmpty() && text.Find('0') < 0) return CString();
    return Compose(number, (options_ & kCommas) != 0);
}

CString oxNumEditFormatter::Unformat(const CString& text) const {
    Parsed number;
    if (!Parse(text, true, &number)) return text;
    if (number.whole.IsEmpty() && number.fraction.IsEmpty() && text.Find('0') < 0) return CString();
    return Compose(number, false);
}

char oxNumEditFormatter::TranslateKey(char key, const CString&, int) const {
    const bool sign = key == '-' && (!hasLowerLimit_ || lowerLimit_ < 0);
    const bool point = key == '.' && decimals_ > 0;
    const bool comma = key == ',' && (options_ & kCommas) != 0;
    return oxmask::IsDigit(key) || sign || point || comma || key == '$' || key == ' ' ? key : 0;
}

bool oxNumEditFormatter::AcceptsPartial(const CString& text) const {
    Parsed number;
    return Parse(text, false, &number);
}
