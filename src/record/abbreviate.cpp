#include "abbreviate.h"

#include <cstring>

namespace {

bool IsInnerVowel(const CString& text, int pos) {
    const char ch = text[pos];
    return pos > 0 && text[pos - 1] != ' ' && std::strchr("aeiou", ch) != nullptr && ch != '\0';
}

}  // namespace

CString oxdmAbbreviate(const CString& text, int width) {
    CString out(text);
    for (int pos = out.GetLength() - 1; pos > 0 && out.GetLength() > width; --pos) {
        if (IsInnerVowel(out, pos)) out.Delete(pos);
    }
    return out.GetLength() > width ? out.Left(width) : out;
}
