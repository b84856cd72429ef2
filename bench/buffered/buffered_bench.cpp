// The row window of a buffer over tables of 10,000 and 1,000,000 customers,
// window of 30: for each operation the time, the records read and the
// resident memory. A program that prints its figures; not run by ctest.
//
//   ReQuery; SetWindowScroll(ScrollBottom); SetWindowScrollPercent(0.5);
//   100 x MoveDown(1); SetWindowScroll(ScrollDown, 30) x 100 (3,000 rows)
//
// Records read are counted at the engine: this program defines sqlite3_step
// (exported, so the library's calls come here too) and counts every row a
// statement returns. The record files are made once, straight through
// SQLite in one transaction, and kept in a cache folder for later runs.
//
// Usage: buffered_bench [cache folder]   (default: the temporary folder)

#include <dlfcn.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_node.h"

namespace {

long g_rows = 0;

}  // namespace

extern "C" int sqlite3_step(sqlite3_stmt* stmt) {
    using Step = int (*)(sqlite3_stmt*);
    static const Step real = reinterpret_cast<Step>(dlsym(RTLD_NEXT, "sqlite3_step"));
    const int rc = real(stmt);
    if (rc == SQLITE_ROW) ++g_rows;
    return rc;
}

namespace {

// Resident memory of this process in KiB.
long ResidentKiB() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmRSS:", 0) == 0) return std::atol(line.c_str() + 6);
    }
    return 0;
}

template <typename Body>
void Measure(const char* what, Body body) {
    const long rows = g_rows;
    const auto start = std::chrono::steady_clock::now();
    body();
    const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    std::printf("  %-38s %10.3f ms %8ld read %8ld KiB\n", what, ms, g_rows - rows, ResidentKiB());
}

// The customers C0000000 ... of a record file of "ord", made once.
std::string CustomerFile(const std::filesystem::path& dir, long customers) {
    const std::string path = (dir / ("customers-" + std::to_string(customers) + ".ord")).string();
    if (std::filesystem::exists(path)) return path;
    const std::string building = path + ".new.ord";
    std::filesystem::remove(building);
    {
        oxioStatus::Status status = oxioStatus::IOError;
        CString error;
        if (!oxioDataFile::Open(oxioFileSpec(building.c_str()), true, status, error)) {
            std::fprintf(stderr, "%s\n", error.c_str());
            std::exit(1);
        }
    }
    sqlite3* raw = nullptr;
    if (sqlite3_open_v2(building.c_str(), &raw, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "can't open %s\n", building.c_str());
        std::exit(1);
    }
    sqlite3_exec(raw, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(raw, "INSERT INTO t1(CUSTNO, NAME, CITY) VALUES(?, ?, 'Oslo')", -1, &insert, nullptr);
    for (long c = 0; c < customers; ++c) {
        char custno[32];
        char name[48];
        std::snprintf(custno, sizeof custno, "C%07ld", c);
        std::snprintf(name, sizeof name, "Customer %s", custno);
        sqlite3_bind_text(insert, 1, custno, -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 2, name, -1, SQLITE_TRANSIENT);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_exec(raw, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_exec(raw, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr);
    sqlite3_close(raw);
    std::filesystem::rename(building, path);
    return path;
}

void Run(const std::filesystem::path& dir, long customers) {
    const std::string path = CustomerFile(dir, customers);
    std::printf("%ld customers, window of 30 (resident at start %ld KiB)\n", customers, ResidentKiB());
    oxTask task(1, "Bench");
    oxdmQuery query("bench");
    oxdmQueryNode* node = query.SetRoot(oxioFileSpec(path.c_str()), 1, 0, "cust", 0x0f);
    node->AddAllColumns(true, true, false);
    oxdmBufferedFileDataSource buffer(&query, &task, static_cast<oxdmFileManager*>(nullptr));
    buffer.SetWindowSize(30);
    Measure("ReQuery", [&] { buffer.ReQuery(); });
    Measure("SetWindowScroll(ScrollBottom)", [&] { buffer.SetWindowScroll(oxdmDataSource::ScrollBottom, 0); });
    Measure("SetWindowScrollPercent(0.5)", [&] { buffer.SetWindowScrollPercent(0.5); });
    buffer.SetFocus(0, 0, true);
    Measure("100 x MoveDown(1)", [&] {
        for (int i = 0; i < 100; ++i) buffer.MoveDown(1, 0, true, false);
    });
    Measure("100 x SetWindowScroll(ScrollDown, 30)", [&] {
        for (int i = 0; i < 100; ++i) buffer.SetWindowScroll(oxdmDataSource::ScrollDown, 30);
    });
    std::printf("  window rows %ld, focus %s\n", buffer.NumWindowDataRows(),
                buffer.NewValueAsString(buffer.IndexForColumn("CUSTNO")).c_str());
}

}  // namespace

int main(int argc, char** argv) {
    const std::filesystem::path dir =
        argc > 1 ? std::filesystem::path(argv[1]) : std::filesystem::temp_directory_path() / "oxdm-buffered-bench";
    std::filesystem::create_directories(dir);
    ::setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 0);
    for (const long customers : {10000L, 1000000L}) Run(dir, customers);
    return 0;
}
