#include "scale_file.h"

#include <sqlite3.h>

#include <cstdio>

#include "record_file.h"

namespace {

std::string Name(long number) {
    char text[32];
    std::snprintf(text, sizeof text, "Customer %07ld", number);
    return text;
}

void Fill(sqlite3* db, long rows) {
    sqlite3_stmt* insert = nullptr;
    if (sqlite3_prepare_v2(db, "INSERT INTO t1(CUSTNO, NAME, CITY, BALANCE) VALUES(?, ?, ?, ?)", -1, &insert,
                           nullptr) != SQLITE_OK)
        BenchFail(sqlite3_errmsg(db));
    const char* cities[] = {"Oslo", "Bergen", "Tromso", "Stavanger", "Bodo"};
    for (long n = 0; n < rows; ++n) {
        char custno[32];
        std::snprintf(custno, sizeof custno, "C%07ld", n);
        // 387,419 is prime to 10^7, so no two customers share a name.
        const std::string name = Name((n * 387419L + 123L) % 10000000L);
        sqlite3_bind_text(insert, 1, custno, -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 2, name.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 3, cities[n % 5], -1, SQLITE_STATIC);
        sqlite3_bind_double(insert, 4, static_cast<double>(n % 100000) / 4);
        if (sqlite3_step(insert) != SQLITE_DONE) BenchFail(sqlite3_errmsg(db));
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
}

}  // namespace

std::string NameAt(double fraction) {
    // The names are spread evenly over 0 .. 10^7 - 1; "5" after seven digits
    // sorts between two names.
    return Name(static_cast<long>(fraction * 10000000.0)) + "5";
}

std::string ScaleFile(const std::filesystem::path& dir, long rows) {
    const std::string path = (dir / ("customers-" + std::to_string(rows) + ".cus")).string();
    MakeRecordFile(path, [rows](sqlite3* db) { Fill(db, rows); });
    return path;
}
