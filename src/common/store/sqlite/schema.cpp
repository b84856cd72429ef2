#include "sqlite/schema.h"

#include "oxdm/common/values/io_status.h"

#include <set>

namespace oxdm::store {

std::string TableName(short table) {
    std::string name = "t";
    name += std::to_string(table);
    return name;
}

std::string QuotedColumn(const ColumnSpec& column) {
    std::string out = "\"";
    for (char ch : column.name) {
        if (ch == '"') out += '"';
        out += ch;
    }
    return out + "\"";
}

std::string SelectList(const TableSpec& table) {
    std::string out = std::string(kRowidColumn) + ", " + kVersionColumn;
    for (const ColumnSpec& column : table.columns) out += ", " + QuotedColumn(column);
    return out;
}

namespace {

std::string ColumnDefinition(const ColumnSpec& column) {
    switch (column.kind) {
        case ColumnKind::Text:
            return QuotedColumn(column) + " TEXT NOT NULL DEFAULT ''" + (column.foldCase ? " COLLATE NOCASE" : "");
        case ColumnKind::Integer:
            return QuotedColumn(column) + " INTEGER NOT NULL DEFAULT 0";
        case ColumnKind::Real:
            return QuotedColumn(column) + " REAL NOT NULL DEFAULT 0";
    }
    return {};
}

std::string IndexName(const TableSpec& table, const IndexSpec& index) {
    return TableName(table.number) + "_k" + std::to_string(index.number);
}

std::string IndexSql(const TableSpec& table, const IndexSpec& index) {
    std::string name = IndexName(table, index);
    std::string sql = std::string("CREATE ") + (index.number == 0 ? "UNIQUE " : "") + "INDEX IF NOT EXISTS " + name +
                      " ON " + TableName(table.number) + "(";
    const std::vector<int>& columns = index.columns;
    for (size_t i = 0; i < columns.size(); ++i) sql += (i ? ", " : "") + QuotedColumn(table.columns[columns[i]]);
    return sql + ")";
}

// The names of the columns that the table holds now, empty when it does not exist.
std::set<std::string> ExistingColumns(SqliteDb& db, short table, int& rc) {
    std::set<std::string> names;
    SqliteDb::Statement stmt = db.Prepare("SELECT name FROM pragma_table_info(?)");
    if (!stmt) {
        rc = db.lastError();
        return names;
    }
    std::string name = TableName(table);
    sqlite3_bind_text(stmt.get(), 1, name.c_str(), -1, SQLITE_TRANSIENT);
    while ((rc = sqlite3_step(stmt.get())) == SQLITE_ROW)
        names.insert(reinterpret_cast<const char*>(sqlite3_column_text(stmt.get(), 0)));
    if (rc == SQLITE_DONE) rc = SQLITE_OK;
    return names;
}

short Fail(SqliteDb& db, int rc, const std::string& what, std::string& error) {
    error = "The record file '" + db.path() + "' " + what + ": " + sqlite3_errstr(rc) + ".";
    return RawCode(rc);
}

}  // namespace

short PrepareSchema(SqliteDb& db, const std::vector<TableSpec>& tables, bool create, std::string& error) {
    std::string sides = std::string("CREATE TABLE IF NOT EXISTS ") + kLockTable +
                        "(tbl INTEGER NOT NULL, rid INTEGER NOT NULL, pid INTEGER NOT NULL, start INTEGER NOT NULL,"
                        " PRIMARY KEY(tbl, rid)) WITHOUT ROWID;"
                        "CREATE TABLE IF NOT EXISTS " +
                        kAttachmentTable +
                        "(tbl INTEGER NOT NULL, rid INTEGER NOT NULL, seq INTEGER NOT NULL, name TEXT NOT NULL,"
                        " data BLOB NOT NULL, PRIMARY KEY(tbl, rid, seq)) WITHOUT ROWID;";
    if (int rc = db.Exec(sides); rc != SQLITE_OK) return Fail(db, rc, "cannot be prepared", error);

    std::set<std::string> indexes;
    {
        SqliteDb::Statement stmt = db.Prepare("SELECT name FROM sqlite_schema WHERE type = 'index'");
        if (!stmt) return Fail(db, db.lastError(), "cannot be read", error);
        int rc;
        while ((rc = sqlite3_step(stmt.get())) == SQLITE_ROW)
            indexes.insert(reinterpret_cast<const char*>(sqlite3_column_text(stmt.get(), 0)));
        if (rc != SQLITE_DONE) return Fail(db, rc, "cannot be read", error);
    }
    for (const TableSpec& table : tables) {
        int rc = SQLITE_OK;
        std::set<std::string> existing = ExistingColumns(db, table.number, rc);
        if (rc != SQLITE_OK) return Fail(db, rc, "cannot be read", error);
        std::string sql;
        if (existing.empty()) {
            if (!create) {
                error = "The record file '" + db.path() + "' has no table " + std::to_string(table.number) + ".";
                return oxioStatus::INCOMPATIBLE_FILE;
            }
            sql = "CREATE TABLE " + TableName(table.number) + "(" + kRowidColumn + " INTEGER PRIMARY KEY, " +
                  kVersionColumn + " INTEGER NOT NULL DEFAULT 1";
            for (const ColumnSpec& column : table.columns) sql += ", " + ColumnDefinition(column);
            sql += ");";
        } else {
            for (const ColumnSpec& column : table.columns) {
                if (existing.count(column.name)) continue;
                if (!create) {
                    error = "The record file '" + db.path() + "' lacks the field " + column.name + " of table " +
                            std::to_string(table.number) + "; it is older than its dictionary.";
                    return oxioStatus::INCOMPATIBLE_FILE;
                }
                sql += "ALTER TABLE " + TableName(table.number) + " ADD COLUMN " + ColumnDefinition(column) + ";";
            }
        }
        for (const IndexSpec& index : table.indexes)
            if (!index.columns.empty() && !indexes.count(IndexName(table, index))) {
                if (!create) {
                    error = "The record file '" + db.path() + "' lacks index " + std::to_string(index.number) +
                            " of table " + std::to_string(table.number) + "; it is older than its dictionary.";
                    return oxioStatus::INCOMPATIBLE_FILE;
                }
                sql += IndexSql(table, index) + ";";
            }
        if (sql.empty()) continue;
        rc = db.Exec("BEGIN IMMEDIATE;" + sql + "COMMIT;");
        if (rc != SQLITE_OK) {
            db.Exec("ROLLBACK");
            return Fail(db, rc, "cannot hold table " + std::to_string(table.number), error);
        }
    }
    return oxioStatus::IO_VALID;
}

short MissingSchema(SqliteDb& db, const std::vector<TableSpec>& tables, std::vector<SchemaGap>& gaps,
                    std::string& error) {
    gaps.clear();
    for (const TableSpec& table : tables) {
        int rc = SQLITE_OK;
        const std::set<std::string> existing = ExistingColumns(db, table.number, rc);
        if (rc != SQLITE_OK) return Fail(db, rc, "cannot be read", error);
        SchemaGap gap{table.number, existing.empty(), {}};
        for (const ColumnSpec& column : table.columns)
            if (!existing.count(column.name)) gap.columns.push_back(column.name);
        if (!gap.columns.empty()) gaps.push_back(std::move(gap));
    }
    return oxioStatus::IO_VALID;
}

}  // namespace oxdm::store
