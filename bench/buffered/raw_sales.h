#pragma once
// The reference side of the buffer's benchmarks: the least raw SQLite work
// that does the same job on the same record file, one prepared statement per
// job, each row's columns copied out as a screen would.

#include <sqlite3.h>

#include <string>

class RawSales {
public:
    explicit RawSales(const std::string& path);
    ~RawSales();
    RawSales(const RawSales&) = delete;
    RawSales& operator=(const RawSales&) = delete;

    // One seek on the customers' key index: the first customer at or after
    // `key`. Answers false when there is none.
    bool SeekCustomer(const std::string& key);
    // The record id of the customer `key` (0 when missing).
    long long CustomerId(const std::string& key);
    // One write: the city of record `id`, in its own transaction.
    void SetCity(long long id, const std::string& city);
    // A customer screen: the first `window` customers, up to `childWindow`
    // orders of the first and up to `childWindow` lines of its first order.
    void OpenScreen(int window, int childWindow);

private:
    sqlite3_stmt* Prepare(const char* sql);
    // Steps `stmt` through at most `limit` rows, copying each row's columns;
    // answers the text of column `keep` of the first row.
    std::string Rows(sqlite3_stmt* stmt, int limit, int keep);

    // db_ owns the statements, all finalized before it closes.
    sqlite3* db_ = nullptr;
    sqlite3_stmt* seek_ = nullptr;
    sqlite3_stmt* id_ = nullptr;
    sqlite3_stmt* update_ = nullptr;
    sqlite3_stmt* customers_ = nullptr;
    sqlite3_stmt* orders_ = nullptr;
    sqlite3_stmt* lines_ = nullptr;
    std::string copied_;  // the last row's columns, as a screen would keep them
};
