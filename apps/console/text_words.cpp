#include "text_words.h"

#include <cctype>

namespace {
bool Blank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }
}  // namespace

std::string Trimmed(const std::string& text) {
    size_t begin = 0;
    size_t end = text.size();
    while (begin < end && Blank(text[begin])) ++begin;
    while (end > begin && Blank(text[end - 1])) --end;
    return text.substr(begin, end - begin);
}

std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::vector<std::string> SplitWords(const std::string& line, size_t count) {
    std::vector<std::string> words;
    size_t at = 0;
    while (words.size() < count) {
        while (at < line.size() && Blank(line[at])) ++at;
        if (at == line.size()) break;
        const size_t start = at;
        while (at < line.size() && !Blank(line[at])) ++at;
        words.push_back(line.substr(start, at - start));
    }
    words.push_back(Trimmed(line.substr(at)));
    return words;
}
