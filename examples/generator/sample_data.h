#pragma once
// The sample data of the "ord" dictionary (examples/ord.toml): customers,
// their orders and the order lines, written through the record layer's class
// face. The data depend on the counts alone: the same counts give the same
// records on every machine (stamp fields aside, which the store fills).
//
//     oxSampleCounts counts;                      // 10,000 / 50,000 / 200,000
//     CString error;
//     if (oxGenerateSample(*file, counts, error) != oxioStatus::Success) ...

#include "oxdm/base/cstring.h"
#include "oxdm/common/values/io_status.h"

class oxioDataFile;

struct oxSampleCounts {
    long long customers = 10000;
    long long orders = 50000;
    long long lines = 200000;
};

// The limits the key widths of "ord" put on the counts.
inline constexpr long long kSampleMaxCustomers = 9999999;  // CUSTNO "C" + 7 digits
inline constexpr long long kSampleMaxOrders = 999999999;   // ORDNO "O" + 9 digits
inline constexpr long long kSampleMaxLinesPerOrder = 9999;  // LINENO numeric 4

// Why the counts cannot be generated, as a sentence; empty when they can.
CString oxSampleCountsProblem(const oxSampleCounts& counts);

// Writes the sample into `file`, a record file of the "ord" dictionary whose
// Customer, Order and Line tables are empty. Answers Success, or a status with
// a sentence in `error`: bad counts and a file that is not empty or not of
// "ord" write nothing; a failed write stops where it happened.
oxioStatus::Status oxGenerateSample(const oxioDataFile& file, const oxSampleCounts& counts, CString& error);
