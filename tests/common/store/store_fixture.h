#pragma once
// Shared pieces of the store tests: a scratch directory per test and the
// table shapes the tests use.

#include "record_store.h"
#include "sqlite/sqlite_store.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace oxdm::store::testing {

// A fresh directory, removed with everything in it at the end of the test.
class ScratchDir {
public:
    ScratchDir() {
        std::string pattern = (std::filesystem::temp_directory_path() / "oxdm-store-XXXXXX").string();
        char* made = mkdtemp(pattern.data());
        EXPECT_NE(made, nullptr);
        path_ = pattern;
    }
    ~ScratchDir() { std::filesystem::remove_all(path_); }
    std::string File(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

// Table 1, "lines": key (ORDNO text, LINENO integer); index 1 on ITEM;
// QTY real; then the three stamps.
inline TableSpec LinesTable() {
    TableSpec table;
    table.number = 1;
    table.columns = {{"ORDNO", ColumnKind::Text},    {"LINENO", ColumnKind::Integer},
                     {"ITEM", ColumnKind::Text},     {"QTY", ColumnKind::Real},
                     {"OPER", ColumnKind::Text, StampKind::Operator},
                     {"SDATE", ColumnKind::Integer, StampKind::Date},
                     {"STIME", ColumnKind::Integer, StampKind::Time}};
    table.indexes = {{0, {0, 1}}, {1, {2}}};
    return table;
}

inline RowImage Line(const std::string& ordno, std::int64_t lineno, const std::string& item, double qty) {
    RowImage row;
    row.fields = {ordno, lineno, item, qty, std::monostate{}, std::monostate{}, std::monostate{}};
    return row;
}

inline std::unique_ptr<SqliteRecordStore> OpenLines(const std::string& path) {
    short status = -1;
    std::string error;
    std::unique_ptr<RecordStore> store =
        OpenSqliteStore(path, {LinesTable()}, OpenMode::CreateIfMissing, status, error);
    EXPECT_EQ(status, 0) << error;
    return std::unique_ptr<SqliteRecordStore>(static_cast<SqliteRecordStore*>(store.release()));
}

inline std::string Text(const RowImage& row, size_t field) { return std::get<std::string>(row.fields.at(field)); }
inline std::int64_t Whole(const RowImage& row, size_t field) { return std::get<std::int64_t>(row.fields.at(field)); }

}  // namespace oxdm::store::testing
