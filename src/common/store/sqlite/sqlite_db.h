#pragma once
// SqliteDb: one open SQLite connection to a record file, with its cache of
// prepared statements.
//
// Invariants: db_ is open for the whole life of the object; every statement
// in cache_ was prepared on db_ and is finalized before db_ closes. A
// Statement handed out by Prepare is reset when it goes out of scope, so a
// cached statement never holds a read transaction open between calls.
// Errors from SQLite become raw status codes through RawCode.

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

namespace oxdm::store {

// Maps an SQLite result code to a raw status of the record face.
short RawCode(int sqliteCode);

class SqliteDb {
public:
    // A borrowed cached statement, reset and unbound when it is destroyed.
    class Statement {
    public:
        explicit Statement(sqlite3_stmt* stmt) : stmt_(stmt) {}
        Statement(const Statement&) = delete;
        Statement& operator=(const Statement&) = delete;
        Statement(Statement&& other) noexcept : stmt_(other.stmt_) { other.stmt_ = nullptr; }
        ~Statement();
        sqlite3_stmt* get() const { return stmt_; }
        explicit operator bool() const { return stmt_ != nullptr; }

    private:
        sqlite3_stmt* stmt_;
    };

    // Opens `path`; on failure answers null with a raw status and a sentence.
    static std::unique_ptr<SqliteDb> Open(const std::string& path, bool create, short& status, std::string& error);
    ~SqliteDb();
    SqliteDb(const SqliteDb&) = delete;
    SqliteDb& operator=(const SqliteDb&) = delete;

    // Runs statements with no result rows; answers an SQLite result code.
    int Exec(const std::string& sql);
    // The cached statement for `sql`, prepared on first use; empty on error
    // (lastError holds the SQLite code).
    Statement Prepare(const std::string& sql);
    // The same, cached under a caller's numeric key instead of the text; the
    // text is only built by `makeSql` on the first call.
    template <typename MakeSql>
    Statement PrepareKeyed(std::uint64_t key, MakeSql makeSql) {
        auto it = keyed_.find(key);
        if (it != keyed_.end()) return Statement(it->second);
        sqlite3_stmt* stmt = Compile(makeSql());
        if (stmt) keyed_.emplace(key, stmt);
        return Statement(stmt);
    }

    int lastError() const { return lastError_; }
    const std::string& path() const { return path_; }
    sqlite3* handle() const { return db_; }
    // Frees the page cache so that the next read goes to the file.
    void ReleaseMemory();

private:
    SqliteDb(sqlite3* db, std::string path) : db_(db), path_(std::move(path)) {}
    sqlite3_stmt* Compile(const std::string& sql);

    sqlite3* db_;
    std::string path_;
    int lastError_ = SQLITE_OK;
    std::unordered_map<std::string, sqlite3_stmt*> cache_;
    std::unordered_map<std::uint64_t, sqlite3_stmt*> keyed_;
};

// BEGIN IMMEDIATE ... COMMIT, rolled back when not committed.
class WriteTransaction {
public:
    explicit WriteTransaction(SqliteDb& db);
    ~WriteTransaction();
    // The SQLite code of BEGIN; anything but SQLITE_OK means no transaction.
    int begun() const { return begin_; }
    // REQUIRES: the transaction began and was not committed yet.
    int Commit();

private:
    SqliteDb& db_;
    int begin_;
    bool done_ = false;
};

}  // namespace oxdm::store
