#pragma once
// LineInput: where the console's lines come from, a script file or standard
// input. Commands and the answers to the library's questions are read from
// the same source, one line each, so that a script can hold both.
//
// Invariants: lineNumber_ is the number of the last line handed out (0
// before the first); a line put back is handed out again, with its number,
// before anything else is read. The stream is not owned and must outlive
// this object.

#include <istream>
#include <optional>
#include <string>

class LineInput {
public:
    // `name` names the source in messages ("tour.oxs", "standard input").
    // With echo, every line read is printed after its number, as a script
    // is replayed; `prompt`, when not empty, is printed before each read.
    LineInput(std::istream& in, std::string name, bool echo, std::string prompt);

    // The next line without its end, or nothing at the end of the input.
    // `prompted` false leaves the prompt out, for a caller that asked its
    // own question.
    std::optional<std::string> Next(bool prompted = true);
    // Hands `line` out again on the next call of Next.
    // REQUIRES: a line was read and none is put back yet.
    void PutBack(std::string line);

    int LineNumber() const { return lineNumber_; }
    const std::string& Name() const { return name_; }
    // True when a person types the lines (no echo, a prompt).
    bool Interactive() const { return !prompt_.empty(); }

private:
    std::istream& in_;
    const std::string name_;
    const bool echo_;
    const std::string prompt_;
    int lineNumber_ = 0;
    std::optional<std::string> putBack_;
};
