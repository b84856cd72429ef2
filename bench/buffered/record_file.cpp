#include "record_file.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "oxdm/common/store/data_file.h"

void BenchFail(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(1);
}

void MakeRecordFile(const std::string& path, const std::function<void(sqlite3*)>& fill) {
    if (std::filesystem::exists(path)) return;
    // The extension tells the store the dictionary: keep it last.
    const std::string building = path + ".new" + std::filesystem::path(path).extension().string();
    std::filesystem::remove(building);
    {
        oxioStatus::Status status = oxioStatus::IOError;
        CString error;
        if (!oxioDataFile::Open(oxioFileSpec(building.c_str()), true, status, error)) BenchFail(error.str());
    }
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(building.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
        BenchFail("can't open " + building);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    fill(db);
    if (sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK) BenchFail(sqlite3_errmsg(db));
    sqlite3_exec(db, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    std::filesystem::rename(building, path);
}
