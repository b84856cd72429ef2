#pragma once
// Record files of the sample dictionary "ord" for the benchmarks: customers
// C0000000, C0000001, ... named "Customer C0000000", ...; every hundredth
// customer has three orders ("O0000000A" to "C") of four lines each. A file
// is made once (record_file.h) and kept in the cache folder for later runs.

#include <filesystem>
#include <string>

inline constexpr int kOrdersPerCustomer = 3;
inline constexpr int kLinesPerOrder = 4;

// The path of the file of `customers` customers in `dir`, made if missing.
// Ends the program with a message when the file cannot be made.
std::string SalesFile(const std::filesystem::path& dir, long customers);

// The customer number of customer n: "C" and seven digits.
std::string CustomerNumber(long n);
