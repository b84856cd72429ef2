#pragma once
// A table of a record file as CSV: a header row of field names, then one
// row per record in the order of the table's key. Values are written and
// read in the value classes' text forms: numbers "1234.50", dates
// "MM/DD/YYYY", times "9:05 AM", choices by item number, yes/no "X" or "".

#include <iosfwd>
#include <string_view>
#include <vector>

#include "oxdm/base/cstring.h"

class oxioDataFile;

namespace oxdm::admin {

// Writes every record of `table`; stamp fields are left out when
// `withStamps` is false. False with a sentence in `error` when a read fails.
// REQUIRES: `table` is a table of `file`.
bool DumpTable(const oxioDataFile& file, short table, bool withStamps, std::ostream& out, CString& error);

// Adds the records of CSV `text` (named `csvName` in messages) to `table`,
// all or nothing: every row is checked before the first is written, and a
// write that fails takes back the rows written before it. The header names
// fields of the table in any order and case; fields left out are blank,
// stamp fields are filled by the store whatever the CSV says. On failure
// answers false with one line per fault in `errors`, each naming the CSV
// file, line and column.
// REQUIRES: `table` is a table of `file`.
bool LoadTable(const oxioDataFile& file, short table, std::string_view text, const CString& csvName,
               long long& loaded, std::vector<CString>& errors);

}  // namespace oxdm::admin
