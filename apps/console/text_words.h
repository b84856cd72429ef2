#pragma once
// Small text helpers of the console: trimming, case and splitting a command
// line into its first words and the rest.

#include <string>
#include <vector>

std::string Trimmed(const std::string& text);
std::string Lower(std::string text);

// The first `count` words of `line` (split at blanks) and, as one more
// element, the rest of the line after them with its outer blanks trimmed.
// Fewer words than `count` give fewer elements and an empty rest.
// `SplitWords("set NAME Ada Lovelace", 2)` is {"set", "NAME", "Ada Lovelace"}.
std::vector<std::string> SplitWords(const std::string& line, size_t count);
