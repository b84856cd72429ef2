#include "oxdm/base/text_helpers.h"

#include <cassert>
#include <cctype>
#include <cstdlib>
#include <cstring>

#include "oxdm/base/abort.h"

namespace {

unsigned char U(char ch) { return static_cast<unsigned char>(ch); }

bool IsLowerVowel(char ch) { return ch != '\0' && std::strchr("aeiou", ch) != nullptr; }

}  // namespace

void x_fill(void* target, unsigned count, char ch) {
    assert(target || count == 0);
    if (count) std::memset(target, U(ch), count);
}

void x_strins(char* text, short pos, const char* insert) {
    assert(text && insert);
    const size_t length = std::strlen(text);
    const size_t at = pos < 0 ? 0 : (static_cast<size_t>(pos) > length ? length : static_cast<size_t>(pos));
    const size_t add = std::strlen(insert);
    std::memmove(text + at + add, text + at, length - at + 1);
    std::memcpy(text + at, insert, add);
}

void x_strdel(char* text, short pos, short count) {
    assert(text);
    const size_t length = std::strlen(text);
    if (pos < 0 || static_cast<size_t>(pos) >= length || count <= 0) return;
    const size_t n = static_cast<size_t>(count) > length - pos ? length - pos : static_cast<size_t>(count);
    std::memmove(text + pos, text + pos + n, length - pos - n + 1);
}

void x_lower_case(char* text) {
    assert(text);
    for (; *text; ++text) *text = static_cast<char>(std::tolower(U(*text)));
}

void x_init_caps(char* text) {
    assert(text);
    bool wordStart = true;
    for (; *text; ++text) {
        if (*text == ' ') {
            wordStart = true;
            continue;
        }
        *text = static_cast<char>(wordStart ? std::toupper(U(*text)) : std::tolower(U(*text)));
        wordStart = false;
    }
}

void x_abbreviate(char* text, short width, short separator) {
    assert(text && width >= 0);
    size_t length = std::strlen(text);
    const auto limit = static_cast<size_t>(width);
    for (size_t pos = length; pos-- > 1 && length > limit;) {
        if (IsLowerVowel(text[pos]) && text[pos - 1] != separator) {
            std::memmove(text + pos, text + pos + 1, length - pos);
            --length;
        }
    }
    if (length > limit) {
        text[limit] = '\0';
        for (size_t end = limit; end > 0 && text[end - 1] == separator; --end) text[end - 1] = '\0';
    }
}

void* x_alloc(unsigned size, bool zero, bool fatal) {
    void* memory = zero ? std::calloc(size ? size : 1, 1) : std::malloc(size ? size : 1);
    if (!memory && fatal) x_abort(0, "Memory allocation failed", nullptr, 0);
    return memory;
}

void x_free(void* memory) { std::free(memory); }
