#include "sqlite/sqlite_db.h"

#include "oxdm/common/values/io_status.h"

#include <cassert>

namespace oxdm::store {

short RawCode(int code) {
    switch (code & 0xff) {
        case SQLITE_OK:
        case SQLITE_ROW:
        case SQLITE_DONE:
            return oxioStatus::IO_VALID;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return oxioStatus::IN_USE;
        case SQLITE_CONSTRAINT:
            return oxioStatus::INVALID_KEY;
        case SQLITE_FULL:
            return oxioStatus::NO_ROOM;
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return oxioStatus::WRITE_PROTECT;
        case SQLITE_CANTOPEN:
            return oxioStatus::FILE_NOT_FOUND;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return oxioStatus::CORRUPT_DATA;
        case SQLITE_AUTH:
            return oxioStatus::SECURITY_VIOLATION;
        case SQLITE_IOERR:
            // A file cut short reads as a short read: the data is damaged.
            return code == SQLITE_IOERR_SHORT_READ ? static_cast<short>(oxioStatus::CORRUPT_DATA) : oxioStatus::IO_ERROR;
        default:
            return oxioStatus::IO_ERROR;
    }
}

SqliteDb::Statement::~Statement() {
    if (stmt_) {
        sqlite3_reset(stmt_);
        sqlite3_clear_bindings(stmt_);
    }
}

std::unique_ptr<SqliteDb> SqliteDb::Open(const std::string& path, bool create, short& status, std::string& error) {
    sqlite3* db = nullptr;
    int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (create ? SQLITE_OPEN_CREATE : 0);
    int rc = sqlite3_open_v2(path.c_str(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        error = "Cannot open the record file '" + path + "': " + (db ? sqlite3_errmsg(db) : sqlite3_errstr(rc)) + ".";
        status = RawCode(rc);
        sqlite3_close(db);
        return nullptr;
    }
    sqlite3_extended_result_codes(db, 1);
    sqlite3_busy_timeout(db, 5000);
    std::unique_ptr<SqliteDb> result(new SqliteDb(db, path));
    // Reading the mode touches the header: a file that is not a database
    // answers here rather than at the first fetch.
    rc = result->Exec("PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;");
    if (rc != SQLITE_OK) {
        error = "The record file '" + path + "' cannot be used: " + sqlite3_errmsg(db) + ".";
        status = RawCode(rc);
        return nullptr;
    }
    status = oxioStatus::IO_VALID;
    return result;
}

SqliteDb::~SqliteDb() {
    for (auto& [sql, stmt] : cache_) sqlite3_finalize(stmt);
    for (auto& [key, stmt] : keyed_) sqlite3_finalize(stmt);
    sqlite3_close(db_);
}

int SqliteDb::Exec(const std::string& sql) {
    lastError_ = sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr);
    return lastError_;
}

sqlite3_stmt* SqliteDb::Compile(const std::string& sql) {
    sqlite3_stmt* stmt = nullptr;
    lastError_ = sqlite3_prepare_v3(db_, sql.c_str(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &stmt,
                                    nullptr);
    if (lastError_ != SQLITE_OK) {
        sqlite3_finalize(stmt);
        return nullptr;
    }
    return stmt;
}

SqliteDb::Statement SqliteDb::Prepare(const std::string& sql) {
    auto it = cache_.find(sql);
    if (it != cache_.end()) return Statement(it->second);
    sqlite3_stmt* stmt = Compile(sql);
    if (stmt) cache_.emplace(sql, stmt);
    return Statement(stmt);
}

void SqliteDb::ReleaseMemory() { sqlite3_db_release_memory(db_); }

WriteTransaction::WriteTransaction(SqliteDb& db) : db_(db), begin_(db.Exec("BEGIN IMMEDIATE")) {}

WriteTransaction::~WriteTransaction() {
    if (begin_ == SQLITE_OK && !done_) db_.Exec("ROLLBACK");
}

int WriteTransaction::Commit() {
    assert(begin_ == SQLITE_OK && !done_);
    done_ = true;
    int rc = db_.Exec("COMMIT");
    if (rc != SQLITE_OK) db_.Exec("ROLLBACK");
    return rc;
}

}  // namespace oxdm::store
