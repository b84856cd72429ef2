#include "line_input.h"

#include <cassert>
#include <cstdio>
#include <utility>

LineInput::LineInput(std::istream& in, std::string name, bool echo, std::string prompt)
    : in_(in), name_(std::move(name)), echo_(echo), prompt_(std::move(prompt)) {}

std::optional<std::string> LineInput::Next(bool prompted) {
    if (putBack_) {
        std::optional<std::string> line = std::move(putBack_);
        putBack_.reset();
        return line;
    }
    if (prompted && !prompt_.empty()) {
        std::fputs(prompt_.c_str(), stdout);
        std::fflush(stdout);
    }
    std::string line;
    if (!std::getline(in_, line)) return std::nullopt;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    ++lineNumber_;
    if (echo_) std::printf("%d> %s\n", lineNumber_, line.c_str());
    return line;
}

void LineInput::PutBack(std::string line) {
    assert(lineNumber_ > 0 && !putBack_);
    putBack_ = std::move(line);
}
