// The record store's cursor against the raw SQLite statements that do the
// same work, in the same run, on one record file per table size:
//
//   First30Next   FetchFirst then 30 FetchNext
//   GEMiddle      FetchGE on a key in the middle
//   Relative50    SetRelativePosition to 50 (the file's move, then FetchCurrent)
//   Last30Prev    FetchLast then 30 FetchPrev
//
// Pair<cursor, raw> runs the cursor's operation and the raw statements in
// turn and reports both times and their ratio. The raw side runs one indexed
// statement per step, as the cursor does; the RawScan side instead steps one
// statement through all 31 rows, the best raw SQLite can do when it may keep
// a statement open between rows. Alone<> times the cursor by itself. Every
// benchmark reports the process's resident memory (rss_kb), so that growth
// with the table would show.

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/store/record_functions.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/text_values.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

const char* kDictionary = R"(
[file]
abbreviation = "bn"
letter = "c"
[[table]]
description = "Bench"
  [[table.field]]
  name = "KEYNO"
  type = "alpha"
  length = 10
  key = true
  [[table.field]]
  name = "NAME"
  type = "alpha"
  length = 30
  [[table.field]]
  name = "AMOUNT"
  type = "numeric"
  length = 10
  decimals = 2
  [[table.field]]
  name = "OPERID"
  type = "alpha"
  length = 8
  operator_stamp = true
  [[table.field]]
  name = "DSTAMP"
  type = "date"
  length = 8
  date_stamp = true
  [[table.field]]
  name = "TSTAMP"
  type = "time"
  length = 6
  time_stamp = true
)";

std::string Key(long n) {
    char key[32];
    std::snprintf(key, sizeof key, "K%07ld", n);
    return key;
}

long ResidentKb() {
    long pages = 0, resident = 0;
    if (FILE* statm = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(statm, "%ld %ld", &pages, &resident) != 2) resident = 0;
        std::fclose(statm);
    }
    return resident * sysconf(_SC_PAGESIZE) / 1024;
}

// One record file of `rows` records, made on first use and kept, with a
// cursor on it and a raw connection beside it.
struct Table {
    explicit Table(long rows) : rows(rows) {
        std::filesystem::path dir = std::filesystem::temp_directory_path() / "oxdm-store-bench";
        std::filesystem::create_directories(dir);
        std::ofstream(dir / "bnc.toml") << kDictionary;
        setenv("OXDM_DICT_PATH", dir.c_str(), 1);
        path = (dir / ("rows" + std::to_string(rows) + ".bnc")).string();
        bool fresh = !std::filesystem::exists(path);
        oxioStatus::Status status;
        CString error;
        file = oxioDataFile::Open(oxioFileSpec(path.c_str()), true, status, error);
        if (!file) {
            std::fprintf(stderr, "%s\n", error.c_str());
            std::exit(1);
        }
        sqlite3_open_v2(path.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        sqlite3_exec(raw, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
        if (fresh) Fill();
        cursor = std::make_unique<oxioCursor>(*file, 1, 0);
        cursor->AttachColumn("KEYNO", key);
        cursor->AttachColumn("NAME", name);
        cursor->AttachColumn("AMOUNT", amount);
    }
    ~Table() {
        for (auto& [sql, stmt] : statements) sqlite3_finalize(stmt);
        sqlite3_close(raw);
    }
    void Fill() {
        sqlite3_exec(raw, "BEGIN", nullptr, nullptr, nullptr);
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(raw, "INSERT INTO t1(KEYNO, NAME, AMOUNT) VALUES(?, ?, ?)", -1, &insert, nullptr);
        for (long n = 0; n < rows; ++n) {
            std::string k = Key(n), v = "Customer number " + std::to_string(n);
            sqlite3_bind_text(insert, 1, k.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_text(insert, 2, v.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_double(insert, 3, n * 0.25);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        sqlite3_exec(raw, "COMMIT", nullptr, nullptr, nullptr);
    }
    sqlite3_stmt* Statement(const std::string& sql) {
        sqlite3_stmt*& stmt = statements[sql];
        if (!stmt) sqlite3_prepare_v3(raw, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr);
        return stmt;
    }
    // Steps `stmt` once and copies its row out, as the cursor does.
    bool Row(sqlite3_stmt* stmt) {
        if (sqlite3_step(stmt) != SQLITE_ROW) return false;
        rawKey.assign(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 2)));
        rawName.assign(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 3)));
        rawAmount = sqlite3_column_double(stmt, 4);
        return true;
    }

    long rows;
    std::string path;
    std::unique_ptr<oxioDataFile> file;
    std::unique_ptr<oxioCursor> cursor;
    oxAlpha key, name;
    oxDouble amount{0, 2};
    sqlite3* raw = nullptr;
    std::map<std::string, sqlite3_stmt*> statements;
    std::string rawKey, rawName;
    double rawAmount = 0;
};

Table& TableOf(long rows) {
    // Never destroyed: the open files must not outlive the process-wide
    // table of open files during the exit's destruction of statics.
    static auto* tables = new std::map<long, std::unique_ptr<Table>>;
    auto& table = (*tables)[rows];
    if (!table) table = std::make_unique<Table>(rows);
    return *table;
}

const char* kColumns = "SELECT _oxdm_rid, _oxdm_ver, KEYNO, NAME, AMOUNT, OPERID, DSTAMP, TSTAMP FROM t1";

// The operations, each once, on a table.
void CursorFirst30Next(Table& t) {
    t.cursor->FetchFirst(false);
    for (int i = 0; i < 30; ++i) t.cursor->FetchNext(false);
    benchmark::DoNotOptimize(t.key.GetVal().c_str());
}

void RawFirst30Next(Table& t) {
    sqlite3_stmt* first = t.Statement(std::string(kColumns) + " ORDER BY KEYNO, _oxdm_rid LIMIT 1");
    sqlite3_stmt* next = t.Statement(std::string(kColumns) + " WHERE KEYNO > ? ORDER BY KEYNO, _oxdm_rid LIMIT 1");
    t.Row(first);
    sqlite3_reset(first);
    for (int i = 0; i < 30; ++i) {
        std::string at = t.rawKey;
        sqlite3_bind_text(next, 1, at.c_str(), -1, SQLITE_STATIC);
        t.Row(next);
        sqlite3_reset(next);
    }
    benchmark::DoNotOptimize(t.rawKey.data());
}

void RawScanFirst31(Table& t) {
    sqlite3_stmt* scan = t.Statement(std::string(kColumns) + " ORDER BY KEYNO, _oxdm_rid LIMIT 31");
    while (t.Row(scan)) {
    }
    sqlite3_reset(scan);
    benchmark::DoNotOptimize(t.rawKey.data());
}

void CursorLast30Prev(Table& t) {
    t.cursor->FetchLast(false);
    for (int i = 0; i < 30; ++i) t.cursor->FetchPrev(false);
    benchmark::DoNotOptimize(t.key.GetVal().c_str());
}

void RawLast30Prev(Table& t) {
    sqlite3_stmt* last = t.Statement(std::string(kColumns) + " ORDER BY KEYNO DESC, _oxdm_rid DESC LIMIT 1");
    sqlite3_stmt* prev =
        t.Statement(std::string(kColumns) + " WHERE KEYNO < ? ORDER BY KEYNO DESC, _oxdm_rid DESC LIMIT 1");
    t.Row(last);
    sqlite3_reset(last);
    for (int i = 0; i < 30; ++i) {
        std::string at = t.rawKey;
        sqlite3_bind_text(prev, 1, at.c_str(), -1, SQLITE_STATIC);
        t.Row(prev);
        sqlite3_reset(prev);
    }
    benchmark::DoNotOptimize(t.rawKey.data());
}

void RawScanLast31(Table& t) {
    sqlite3_stmt* scan = t.Statement(std::string(kColumns) + " ORDER BY KEYNO DESC, _oxdm_rid DESC LIMIT 31");
    while (t.Row(scan)) {
    }
    sqlite3_reset(scan);
    benchmark::DoNotOptimize(t.rawKey.data());
}

void CursorGEMiddle(Table& t) {
    t.key.SetVal(CString(Key(t.rows / 2).c_str()));
    t.cursor->FetchGE(false);
    benchmark::DoNotOptimize(t.name.GetVal().c_str());
}

void RawGEMiddle(Table& t) {
    std::string middle = Key(t.rows / 2);
    sqlite3_stmt* ge = t.Statement(std::string(kColumns) + " WHERE KEYNO >= ? ORDER BY KEYNO, _oxdm_rid LIMIT 1");
    sqlite3_bind_text(ge, 1, middle.c_str(), -1, SQLITE_STATIC);
    t.Row(ge);
    sqlite3_reset(ge);
    benchmark::DoNotOptimize(t.rawName.data());
}

void CursorRelative50(Table& t) {
    xio_set_relative_position(t.file->FileNum(), 1, 0, 50);
    t.cursor->FetchCurrent(false);
    benchmark::DoNotOptimize(t.key.GetVal().c_str());
}

void RawRelative50(Table& t) {
    sqlite3_stmt* count = t.Statement("SELECT count(*) FROM t1");
    sqlite3_stmt* offset = t.Statement(std::string(kColumns) + " ORDER BY KEYNO, _oxdm_rid LIMIT 1 OFFSET ?");
    sqlite3_stmt* read = t.Statement(std::string(kColumns) + " WHERE _oxdm_rid = ?");
    sqlite3_step(count);
    sqlite3_int64 total = sqlite3_column_int64(count, 0);
    sqlite3_reset(count);
    sqlite3_bind_int64(offset, 1, (total - 1) * 50 / 100);
    sqlite3_step(offset);
    sqlite3_int64 rowid = sqlite3_column_int64(offset, 0);
    t.Row(offset);
    sqlite3_reset(offset);
    sqlite3_bind_int64(read, 1, rowid);
    t.Row(read);
    sqlite3_reset(read);
    benchmark::DoNotOptimize(t.rawKey.data());
}

// One operation alone.
template <void (*Operation)(Table&)>
void Alone(benchmark::State& state) {
    Table& t = TableOf(state.range(0));
    for (auto _ : state) Operation(t);
    state.counters["rss_kb"] = static_cast<double>(ResidentKb());
}

// The cursor's operation and raw SQLite's, taking turns, so that both see
// the same load on a shared machine; reports each one's mean time and their
// ratio.
template <void (*CursorOperation)(Table&), void (*RawOperation)(Table&)>
void Pair(benchmark::State& state) {
    Table& t = TableOf(state.range(0));
    using Clock = std::chrono::steady_clock;
    Clock::duration cursor{}, raw{};
    for (auto _ : state) {
        auto start = Clock::now();
        CursorOperation(t);
        auto middle = Clock::now();
        RawOperation(t);
        raw += Clock::now() - middle;
        cursor += middle - start;
    }
    double n = static_cast<double>(state.iterations());
    state.counters["cursor_us"] = std::chrono::duration<double, std::micro>(cursor).count() / n;
    state.counters["raw_us"] = std::chrono::duration<double, std::micro>(raw).count() / n;
    state.counters["ratio"] = std::chrono::duration<double>(cursor) / std::chrono::duration<double>(raw);
    state.counters["rss_kb"] = static_cast<double>(ResidentKb());
}

#define OXDM_SIZES ->Arg(100000)->Arg(1000000)
BENCHMARK(Pair<CursorFirst30Next, RawFirst30Next>) OXDM_SIZES;
BENCHMARK(Pair<CursorGEMiddle, RawGEMiddle>) OXDM_SIZES;
BENCHMARK(Pair<CursorRelative50, RawRelative50>) OXDM_SIZES;
BENCHMARK(Pair<CursorLast30Prev, RawLast30Prev>) OXDM_SIZES;
BENCHMARK(Pair<CursorFirst30Next, RawScanFirst31>) OXDM_SIZES;
BENCHMARK(Pair<CursorLast30Prev, RawScanLast31>) OXDM_SIZES;
BENCHMARK(Alone<CursorFirst30Next>) OXDM_SIZES;
BENCHMARK(Alone<CursorGEMiddle>) OXDM_SIZES;
BENCHMARK(Alone<CursorRelative50>) OXDM_SIZES;
BENCHMARK(Alone<CursorLast30Prev>) OXDM_SIZES;

}  // namespace

BENCHMARK_MAIN();
