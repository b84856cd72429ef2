#pragma once
// The record file of the scale benchmark: `rows` customers of the dictionary
// "cus" (cus.toml), customer n numbered "C" and seven digits, named
// "Customer " and seven other digits (n times 387,419 plus 123, modulo 10^7:
// no two alike, spread evenly, in an order other than the numbers'). Made once (record_file.h) and kept
// in the cache folder.

#include <filesystem>
#include <string>

// The path of the file in `dir`, made if missing. Ends the program with a
// message when it cannot be made.
std::string ScaleFile(const std::filesystem::path& dir, long rows);

// The name of a customer that sorts after `fraction` of all names and is
// held by none: the screens' find looks for it and lands on the next one.
std::string NameAt(double fraction);
