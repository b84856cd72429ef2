#include "scale_file.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>

#include "oxdm/common/store/data_file.h"

namespace {

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(1);
}

std::string Name(long number) {
    char text[32];
    std::snprintf(text, sizeof text, "Customer %07ld", number);
    return text;
}

void Fill(sqlite3* db, long rows) {
    sqlite3_stmt* insert = nullptr;
    if (sqlite3_prepare_v2(db, "INSERT INTO t1(CUSTNO, NAME, CITY, BALANCE) VALUES(?, ?, ?, ?)", -1, &insert,
                           nullptr) != SQLITE_OK)
        Fail(sqlite3_errmsg(db));
    const char* cities[] = {"Oslo", "Bergen", "Tromso", "Stavanger", "Bodo"};
    for (long n = 0; n < rows; ++n) {
        char custno[32];
        std::snprintf(custno, sizeof custno, "C%07ld", n);
        // 387,419 is prime to 10^7, so the names are a permutation.
        const std::string name = Name((n * 387419L + 123L) % 10000000L);
        sqlite3_bind_text(insert, 1, custno, -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 2, name.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 3, cities[n % 5], -1, SQLITE_STATIC);
        sqlite3_bind_double(insert, 4, static_cast<double>(n % 100000) / 4);
        if (sqlite3_step(insert) != SQLITE_DONE) Fail(sqlite3_errmsg(db));
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
    if (std::filesystem::exists(path)) return path;
    const std::string building = path + ".new.cus";
    std::filesystem::remove(building);
    {
        oxioStatus::Status status = oxioStatus::IOError;
        CString error;
        if (!oxioDataFile::Open(oxioFileSpec(building.c_str()), true, status, error)) Fail(error.str());
    }
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(building.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) Fail("can't open " + building);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    Fill(db, rows);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_exec(db, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    std::filesystem::rename(building, path);
    return path;
}
