#pragma once
// xpLine: one printed line as a fixed number of character cells. A
// character is a whole UTF-8 sequence, or a single byte where the text is
// not UTF-8, so that columns count what the reader sees and a cut never
// splits a character.

#include <string>
#include <vector>

// The characters of text, in order.
std::vector<std::string> xpCharacters(const std::string& text);

class xpLine {
public:
    explicit xpLine(std::size_t width) : cells_(width, " ") {}

    std::size_t Width() const { return cells_.size(); }
    // Puts the first `count` of chars from column on; control characters
    // become blanks, so that they can't break the columns.
    // REQUIRES: column + count <= Width(), count <= chars.size().
    void Place(std::size_t column, const std::vector<std::string>& chars, std::size_t count);
    // One past the last cell that isn't blank; 0 for a blank line.
    std::size_t End() const;
    // The cells joined, without trailing blanks.
    std::string Text() const;
    void Clear() { cells_.assign(cells_.size(), " "); }

private:
    // Exactly Width() cells, each holding one character.
    std::vector<std::string> cells_;
};
