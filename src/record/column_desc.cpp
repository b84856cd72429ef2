// The two forms of a column's description: the tag form for the label
// machinery and the plain form with field-code descriptions filled in.

#include <cctype>
#include <cstring>
#include <string>

#include "oxdm/base/text_helpers.h"
#include "oxdm/common/dictionary/field_codes.h"
#include "oxdm/record/column_def.h"

namespace {

bool IsDigit(char ch) { return std::isdigit(static_cast<unsigned char>(ch)) != 0; }

constexpr int kMaxDescCopy = 100;
constexpr int kMaxPlainDesc = 25;

// "%12.3 total" becomes "<12.3I> total": the digits and dots behind a '%'
// that a digit follows (the run ends after a third dot) are wrapped as a tag.
CString TagForm(const CString& desc) {
    CString out;
    for (int i = 0; i < desc.GetLength(); ++i) {
        if (desc[i] != '%' || i + 1 >= desc.GetLength() || !IsDigit(desc[i + 1])) {
            out += desc[i];
            continue;
        }
        out += '<';
        int dots = 0;
        int j = i + 1;
        while (j < desc.GetLength() && dots < 3 && (IsDigit(desc[j]) || desc[j] == '.')) {
            if (desc[j] == '.') ++dots;
            out += desc[j++];
        }
        out += "I>";
        i = j - 1;
    }
    return out;
}

// Reads digits at text[*pos] as a number and moves *pos behind them.
int ReadNumber(const CString& text, int* pos) {
    int value = 0;
    while (*pos < text.GetLength() && IsDigit(text[*pos])) value = value * 10 + (text[(*pos)++] - '0');
    return value;
}

// The description with "%%" made "%" and each "%code[.section]" replaced by
// the field code's description in lower case; empty when a code has none.
CString PlainForm(const CString& desc) {
    CString text = desc.Left(kMaxDescCopy);
    int i = 0;
    while (i < text.GetLength()) {
        if (text[i] != '%') { ++i; continue; }
        if (i + 1 < text.GetLength() && text[i + 1] == '%') {
            text.Delete(i);
            ++i;
            continue;
        }
        if (i + 1 >= text.GetLength() || !IsDigit(text[i + 1])) { ++i; continue; }
        int end = i + 1;
        const int code = ReadNumber(text, &end);
        int section = 0;
        if (end + 1 < text.GetLength() && text[end] == '.' && IsDigit(text[end + 1])) {
            ++end;
            section = ReadNumber(text, &end);
        }
        char buffer[64] = {};
        xk_description(static_cast<short>(code), static_cast<short>(section), buffer, false);
        CString replacement(buffer);
        if (replacement.IsEmpty()) return CString();
        std::string lower(replacement.str());
        x_lower_case(lower.data());
        replacement = CString(lower);
        text.Delete(i, end - i);
        text.Insert(i, replacement.c_str());
        i += replacement.GetLength();
    }
    if (text.GetLength() <= kMaxPlainDesc) return text;
    std::string shortened(text.str());
    x_abbreviate(shortened.data(), kMaxPlainDesc, 0x20);
    return CString(shortened.c_str());
}

}  // namespace

CString oxdmColumnDef::Desc(bool expand) const {
    const xio_fld_def& def = FldDef();
    const CString desc(def.description, static_cast<int>(strnlen(def.description, sizeof def.description)));
    if (desc.GetLength() < 2) return desc;
    return expand ? PlainForm(desc) : TagForm(desc);
}
