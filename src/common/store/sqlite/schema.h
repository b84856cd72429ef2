#pragma once
// The SQL shape of a record file: names of tables, columns and indexes, and
// the creation or checking of the schema from the table descriptions.
//
// Table number N is the SQL table tN. Every table has the hidden record
// number _oxdm_rid (the rowid) and version _oxdm_ver. Index 0 of a table is
// the UNIQUE index tN_k0 over the key columns; index I > 0 is tN_kI, not
// unique. SQLite appends the rowid to every index entry, so each index is a
// total order on (its columns, rowid).

#include "record_store.h"
#include "sqlite/sqlite_db.h"

#include <string>
#include <vector>

namespace oxdm::store {

inline constexpr const char* kRowidColumn = "_oxdm_rid";
inline constexpr const char* kVersionColumn = "_oxdm_ver";
inline constexpr const char* kLockTable = "_oxdm_locks";
inline constexpr const char* kAttachmentTable = "_oxdm_attachments";

std::string TableName(short table);
// The column's name quoted as an SQL identifier.
std::string QuotedColumn(const ColumnSpec& column);
// "_oxdm_rid", "_oxdm_ver", then every column in table order.
std::string SelectList(const TableSpec& table);

// Creates what is missing (tables, columns, indexes, side tables) when
// `create` is true; otherwise checks that every table and column exists.
// Answers a raw code; `error` names the file and what is wrong.
short PrepareSchema(SqliteDb& db, const std::vector<TableSpec>& tables, bool create, std::string& error);

// What a record file lacks against `tables`: for each table that is missing
// or short of columns, its number and the names of the columns it lacks (a
// missing table lists all of its columns). Answers a raw code.
struct SchemaGap {
    short table = 0;
    bool wholeTable = false;
    std::vector<std::string> columns;
};
short MissingSchema(SqliteDb& db, const std::vector<TableSpec>& tables, std::vector<SchemaGap>& gaps,
                    std::string& error);

}  // namespace oxdm::store
