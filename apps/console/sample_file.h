#pragma once
// The record file behind the console's screen: sales.ord in a data folder,
// holding the sample customers, orders and lines of the "ord" dictionary.

#include <string>

// The sample's size: enough customers to scroll through, few enough to
// generate in a moment.
inline constexpr long long kConsoleCustomers = 50;
inline constexpr long long kConsoleOrders = 200;
inline constexpr long long kConsoleLines = 800;

// Makes `dataDir` and sales.ord in it with the sample when the file is
// missing, or always with `fresh` (which drops the file first). Answers the
// file's path, or an empty text with a sentence in `error`.
std::string PrepareSampleFile(const std::string& dataDir, bool fresh, std::string& error);
