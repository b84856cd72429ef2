#pragma once
// CSV text as RFC 4180 writes it: fields separated by commas, records ended
// by a line break (CRLF written, CRLF or LF read), a field that holds a
// comma, a quote or a line break written in double quotes with its quotes
// doubled.

#include <string>
#include <string_view>
#include <vector>

namespace oxdm::admin {

struct CsvRecord {
    int line = 0;  // the line the record starts on, from 1
    std::vector<std::string> fields;
};

// The first fault of a text that is not CSV: where it is and what is wrong.
struct CsvFault {
    int line = 0;
    int column = 0;  // the field's place in its record, from 1
    std::string message;
};

// Reads every record of `text` (a leading byte-order mark is skipped). On a
// fault answers false, fills `fault` and leaves `records` with the records
// before it.
bool ParseCsv(std::string_view text, std::vector<CsvRecord>& records, CsvFault& fault);

// One record as CSV text, quoted where it must be, ended by CRLF.
std::string CsvLine(const std::vector<std::string>& fields);

}  // namespace oxdm::admin
