#pragma once
// Small helpers over digit masks ("999-99-9999"), shared by the formatters
// of social security and phone numbers.

#include <cctype>

#include "oxdm/base/cstring.h"

namespace oxmask {

inline bool IsDigit(char ch) { return std::isdigit(static_cast<unsigned char>(ch)) != 0; }

inline int DigitCount(const CString& text) {
    int n = 0;
    for (int i = 0; i < text.GetLength(); ++i) n += IsDigit(text[i]) ? 1 : 0;
    return n;
}

// The digits of text, in order.
inline CString Digits(const CString& text) {
    CString out;
    for (int i = 0; i < text.GetLength(); ++i) {
        if (IsDigit(text[i])) out += text[i];
    }
    return out;
}

// The number of digit places ('9') of a mask.
inline int Places(const CString& mask) {
    int n = 0;
    for (int i = 0; i < mask.GetLength(); ++i) n += mask[i] == '9' ? 1 : 0;
    return n;
}

// A character that the mask shows between its digits.
inline bool IsMaskChar(const CString& mask, char ch) { return ch != '9' && ch != 0 && mask.Find(ch) >= 0; }

// The first position of text holding neither a digit, a blank nor a mask
// character, or -1.
inline int ForeignChar(const CString& mask, const CString& text) {
    for (int i = 0; i < text.GetLength(); ++i) {
        const char ch = text[i];
        if (!IsDigit(ch) && ch != ' ' && !IsMaskChar(mask, ch)) return i;
    }
    return -1;
}

}  // namespace oxmask
