#pragma once
// Record files for the benchmarks, made once and kept: the store creates the
// file with its schema, then the records go in straight through SQLite in one
// transaction (the record layer's inserts are too slow for a million
// records), and the file takes its name only when complete.

#include <sqlite3.h>

#include <functional>
#include <string>

// Ends the program with `what` on standard error.
[[noreturn]] void BenchFail(const std::string& what);

// Makes the record file `path` if it is missing, `fill` writing its records
// on the raw connection it is given. Ends the program when it cannot.
void MakeRecordFile(const std::string& path, const std::function<void(sqlite3*)>& fill);
