#include <sqlite3.h>

#include <filesystem>
#include <memory>

#include "log_table.h"
#include "oxdm/common/auditlog/audit_log.h"
#include "oxdm/common/store/file_spec.h"

namespace {

struct DbCloser {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};
struct StmtFinalizer {
    void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
};

CString Text(sqlite3_stmt* stmt, int column) {
    const unsigned char* text = sqlite3_column_text(stmt, column);
    return text ? CString(reinterpret_cast<const char*>(text)) : CString();
}

oxAuditLogEntry ReadEntry(sqlite3_stmt* stmt) {
    oxAuditLogEntry entry;
    entry.sequence = sqlite3_column_int64(stmt, 0);
    entry.time = Text(stmt, 1);
    entry.operatorId = Text(stmt, 2);
    entry.task = static_cast<short>(sqlite3_column_int(stmt, 3));
    entry.table = static_cast<short>(sqlite3_column_int(stmt, 4));
    entry.tableName = Text(stmt, 5);
    entry.recordKey = Text(stmt, 6);
    entry.label = Text(stmt, 7);
    entry.column = Text(stmt, 8);
    entry.oldValue = Text(stmt, 9);
    entry.newValue = Text(stmt, 10);
    return entry;
}

}  // namespace

bool oxReadAuditLog(const CString& path, const oxAuditLogFilter& filter, std::vector<oxAuditLogEntry>& entries,
                    CString& error) {
    entries.clear();
    CString from, to;
    if (!filter.from.IsEmpty() && !oxParseAuditTime(filter.from, false, from, error)) return false;
    if (!filter.to.IsEmpty() && !oxParseAuditTime(filter.to, true, to, error)) return false;

    const CString filePath = oxioFileSpec(path).FilePath();
    if (!std::filesystem::exists(filePath.str())) {
        error = "The record file '" + filePath + "' does not exist.";
        return false;
    }
    sqlite3* raw = nullptr;
    int rc = sqlite3_open_v2(filePath.c_str(), &raw, SQLITE_OPEN_READONLY, nullptr);
    std::unique_ptr<sqlite3, DbCloser> db(raw);
    if (rc != SQLITE_OK) {
        error = "The record file '" + filePath + "' cannot be opened: " + sqlite3_errstr(rc) + ".";
        return false;
    }
    sqlite3_busy_timeout(db.get(), 5000);
    sqlite3_stmt* rawStmt = nullptr;
    rc = sqlite3_prepare_v2(db.get(), "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?", -1, &rawStmt,
                            nullptr);
    std::unique_ptr<sqlite3_stmt, StmtFinalizer> exists(rawStmt);
    if (rc == SQLITE_OK) {
        sqlite3_bind_text(exists.get(), 1, oxdm::auditlog::kLogTable, -1, SQLITE_STATIC);
        rc = sqlite3_step(exists.get());
        if (rc == SQLITE_DONE) return true;  // never audited
    }
    std::unique_ptr<sqlite3_stmt, StmtFinalizer> select;
    if (rc == SQLITE_ROW) {
        rc = sqlite3_prepare_v2(db.get(), oxdm::auditlog::kSelectLogSql, -1, &rawStmt, nullptr);
        select.reset(rawStmt);
        const CString* parameters[] = {&filter.table, &filter.key, &from, &to};
        for (int i = 0; i < 4 && rc == SQLITE_OK; ++i)
            rc = sqlite3_bind_text(select.get(), i + 1, parameters[i]->c_str(), -1, SQLITE_STATIC);
    }
    while (rc == SQLITE_OK || rc == SQLITE_ROW) {
        rc = sqlite3_step(select.get());
        if (rc != SQLITE_ROW) break;
        entries.push_back(ReadEntry(select.get()));
    }
    if (rc == SQLITE_DONE) return true;
    error = "The audit log of the record file '" + filePath + "' cannot be read: " + sqlite3_errmsg(db.get()) + ".";
    return false;
}
