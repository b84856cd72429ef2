// Lines of character cells.

#include "print_line.h"

#include <cassert>

namespace {

// The length of the UTF-8 sequence that begins at text[at], or 1 when no
// well-formed sequence begins there.
std::size_t SequenceLength(const std::string& text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    std::size_t length = 1;
    if (lead >= 0xC2 && lead <= 0xDF) length = 2;
    else if (lead >= 0xE0 && lead <= 0xEF) length = 3;
    else if (lead >= 0xF0 && lead <= 0xF4) length = 4;
    if (at + length > text.size()) return 1;
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80) return 1;
    }
    return length;
}

}  // namespace

std::vector<std::string> xpCharacters(const std::string& text) {
    std::vector<std::string> chars;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = SequenceLength(text, at);
        chars.push_back(text.substr(at, length));
        at += length;
    }
    return chars;
}

void xpLine::Place(std::size_t column, const std::vector<std::string>& chars, std::size_t count) {
    assert(column + count <= cells_.size() && count <= chars.size());
    for (std::size_t i = 0; i < count; ++i) {
        const auto first = static_cast<unsigned char>(chars[i][0]);
        cells_[column + i] = first < 0x20 || first == 0x7f ? std::string(" ") : chars[i];
    }
}

std::size_t xpLine::End() const {
    std::size_t end = cells_.size();
    while (end > 0 && cells_[end - 1] == " ") --end;
    return end;
}

std::string xpLine::Text() const {
    std::string text;
    for (std::size_t i = 0; i < End(); ++i) text += cells_[i];
    return text;
}
