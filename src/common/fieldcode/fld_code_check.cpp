// The check of a field code: walk the text, count, compare with the widths,
// pad the sections, and put the text into the code's format.

#include "fld_code_check.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "oxdm/common/dictionary/field_codes.h"

namespace {

constexpr int kFieldTextSize = 255;

// What the walk over a text found.
struct Walk {
    int chars = 0;         // digits, letters and characters counted as letters
    int blanks = 0;        // blanks after the first digit or letter
    int decimals = 0;      // counted characters behind the decimal point
    bool point = false;
    bool letters = false;
    bool punctuation = false;  // a section separator was met
    bool blankOnly = true;
    int section = 0;                        // the present section index
    int sectionChars[XK_MAX_SECTIONS] = {};  // bySection: characters of each
    CString pieces[XK_MAX_SECTIONS];        // bySection: the text of each
    const char* fault = nullptr;
    int place = 0;  // one past the faulty character
};

bool IsBlank(char ch) { return ch == ' '; }
bool IsDigit(char ch) { return std::isdigit(static_cast<unsigned char>(ch)) != 0; }
bool IsLetter(char ch) { return std::isalpha(static_cast<unsigned char>(ch)) != 0; }

void Count(const oxFldCodeRules& rules, Walk& w, char ch) {
    ++w.chars;
    if (w.point) ++w.decimals;
    if (rules.bySection) {
        ++w.sectionChars[w.section];
        w.pieces[w.section] += ch;
    }
}

Walk WalkText(const oxFldCodeRules& rules, const CString& text) {
    Walk w;
    w.section = rules.sectionNumber == 11 ? 1 : 0;
    bool started = false;
    for (int i = 0; i < text.GetLength() && !w.fault; ++i) {
        const char ch = text[i];
        if (!IsBlank(ch)) w.blankOnly = false;
        const auto fault = [&](const char* words) {
            w.fault = words;
            w.place = i + 1;
        };
        if (IsBlank(ch)) {
            if (!started) continue;
            ++w.blanks;
            if (rules.bySection) {
                ++w.sectionChars[w.section];
                w.pieces[w.section] += ch;
            }
        } else if (IsDigit(ch)) {
            started = true;
            Count(rules, w, ch);
        } else if (IsLetter(ch)) {
            started = true;
            w.letters = true;
            Count(rules, w, ch);
        } else if (ch == '.' && !rules.bySection) {
            if (rules.decimals == 0) fault("Invalid character.");
            else if (w.point) fault("Only one decimal point allowed.");
            else w.point = true;
        } else if (!rules.bySection && !rules.digitsOnly && !w.point) {
            started = true;
            w.letters = true;
            Count(rules, w, ch);
        } else if (w.point) {
            fault("Invalid character.");
        } else if (ch == rules.Punctuation(w.section) && w.section + 1 < XK_MAX_SECTIONS) {
            ++w.section;
            w.punctuation = true;
        } else {
            fault("Invalid character.");
        }
    }
    return w;
}

// Blanks, digits and the code's punctuation only.
bool DigitLike(const oxFldCodeRules& rules, const CString& text) {
    for (int i = 0; i < text.GetLength(); ++i) {
        const char ch = text[i];
        if (!IsBlank(ch) && !IsDigit(ch) && !rules.IsPunctuation(ch)) return false;
    }
    return true;
}

// The sections of the walk rebuilt, each short one filled to its width:
// in front with '0' on a digit-like text, behind with blanks otherwise.
CString Padded(const oxFldCodeRules& rules, const Walk& w, bool digitLike) {
    CString out;
    for (int i = 0; i <= w.section && i < XK_MAX_SECTIONS; ++i) {
        CString piece = w.pieces[i];
        const int missing = rules.section[i].width - piece.GetLength();
        if (missing > 0) piece = digitLike ? CString('0', missing) + piece : piece + CString(' ', missing);
        if (i > 0 && rules.Punctuation(i - 1)) out += rules.Punctuation(i - 1);
        out += piece;
    }
    return out;
}

// The section whose description and mask name the field in messages: its
// own section when it covers one, else the whole code.
short MessageSection(const oxFldCodeRules& rules) {
    return rules.sectionNumber >= 1 && rules.sectionNumber <= XK_MAX_SECTIONS
               ? static_cast<short>(rules.sectionNumber)
               : 0;
}

void Wrap(const oxFldCodeRules& rules, const char* fault, oxEditValidateInfo* info) {
    if (info == nullptr) return;
    if (std::strcmp(fault, "Required entry.") == 0) {
        info->message = fault;
        return;
    }
    char description[64] = {};
    char mask[64] = {};
    xk_description(rules.code, MessageSection(rules), description, false);
    xk_mask(rules.code, MessageSection(rules), mask);
    info->message.Format("Incorrect %s format. %s Correct format is %s.", description, fault, mask);
}

// The steps after the walk, on a text that walked without a fault; answers
// the fault's words or null.
const char* Measure(const oxFldCodeRules& rules, const Walk& w, CString& text) {
    if (w.blankOnly) return "Required entry.";
    if (w.decimals > rules.decimals) return "Too many digits after decimal point.";

    int longest = 0;
    int shortest = 0;
    if (!rules.bySection && !rules.digitsOnly && rules.wholeDigits == 0) {
        longest = rules.longest;
        shortest = rules.decimals + 1;
    } else {
        longest = rules.WidthSum() != 0 ? rules.WidthSum() : rules.longest;
        shortest = rules.Shortest();
    }
    const int count = w.chars + (rules.bySection ? 0 : std::max(0, rules.decimals - w.decimals)) +
                      (w.letters ? w.blanks : 0);
    if (count > longest) {
        if (!rules.digitsOnly) return "Too many characters entered.";
        return rules.decimals ? "Too many digits before decimal point." : "Too many digits entered.";
    }
    if (!rules.bySection && count < shortest) {
        const bool loose = !rules.lengthStrict && count >= rules.decimals &&
                           count <= rules.decimals + rules.wholeDigits;
        if (!loose) return rules.digitsOnly ? "Insufficient digits entered." : "Insufficient characters entered.";
    }
    if (!rules.bySection && (w.point || rules.fillDecimals) && rules.decimals > 0) {
        text.TrimRight();
        if (!w.point) text += '.';
        for (int placed = w.decimals; placed < rules.decimals; ++placed) text += '0';
    }
    if (rules.bySection) {
        const bool digitLike = DigitLike(rules, text);
        const char* fault = nullptr;
        if (count < shortest) {
            fault = digitLike ? "Insufficient digits entered." : "Insufficient characters entered.";
        } else if (w.punctuation) {
            for (int i = 0; i < 4 && !fault; ++i) {
                if (w.sectionChars[i] > rules.section[i].width) {
                    fault = digitLike ? "Too many digits entered in section."
                                      : "Too many characters entered in section.";
                }
            }
        }
        if (!fault && w.punctuation) text = Padded(rules, w, digitLike);
        text = oxFldCodeUnformatText(rules, text);
        if (fault) return fault;
    }
    if (!rules.digitsOnly && !rules.bySection) {
        CString trimmed = text;
        trimmed.TrimLeft();
        if (trimmed.IsEmpty() || trimmed[0] == '.') return "Zero entry not allowed.";
    }
    text = oxFldCodeUnformatText(rules, text);
    return nullptr;
}

// Rewrites text through one of the xk_ text functions.
CString Through(short (*rewrite)(short, short, char*), const oxFldCodeRules& rules,
                const CString& text) {
    char buffer[kFieldTextSize + 1] = {};
    std::strncpy(buffer, text, kFieldTextSize - 1);
    rewrite(rules.code, static_cast<short>(rules.sectionNumber), buffer);
    return buffer;
}

}  // namespace

CString oxFldCodeFormatText(const oxFldCodeRules& rules, const CString& text) {
    return Through(xk_format_field, rules, text);
}

CString oxFldCodeUnformatText(const oxFldCodeRules& rules, const CString& text) {
    return Through(xk_unformat_field, rules, text);
}

bool oxFldCodeCheck(const oxFldCodeRules& rules, CString& text, oxEditValidateInfo* info) {
    if (!xk_multi_section(rules.code) || rules.checkOff || text.IsEmpty()) return true;
    if (!rules.bySection && !rules.digitsOnly && rules.decimals == 0) {
        text = oxFldCodeFormatText(rules, text);
        return true;
    }
    // The whole text is kept so that a failure loses nothing typed.
    const CString saved = text;
    const Walk walk = WalkText(rules, text);
    const char* fault = walk.fault ? walk.fault : Measure(rules, walk, text);
    int caret = 1;
    if (fault) {
        text = saved;
        Wrap(rules, fault, info);
        if (walk.fault) caret = walk.place;
        else if (xk_right_justify(rules.code, static_cast<short>(rules.sectionNumber))) caret = text.GetLength();
    } else {
        text = oxFldCodeFormatText(rules, text);
    }
    if (info) info->selStart = info->selEnd = caret;
    return fault == nullptr;
}
