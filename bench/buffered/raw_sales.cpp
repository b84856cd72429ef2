#include "raw_sales.h"

#include <cstdio>
#include <initializer_list>

#include "record_file.h"

RawSales::RawSales(const std::string& path) {
    if (sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) BenchFail("can't open " + path);
    // The store's durability: a commit writes the log without waiting for the disk.
    sqlite3_exec(db_, "PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr);
    seek_ = Prepare("SELECT * FROM t1 WHERE CUSTNO >= ? ORDER BY CUSTNO, _oxdm_rid LIMIT 1");
    id_ = Prepare("SELECT _oxdm_rid FROM t1 WHERE CUSTNO = ?");
    update_ = Prepare("UPDATE t1 SET CITY = ?, _oxdm_ver = _oxdm_ver + 1 WHERE _oxdm_rid = ?");
    customers_ = Prepare("SELECT * FROM t1 ORDER BY CUSTNO, _oxdm_rid LIMIT ?");
    orders_ = Prepare("SELECT * FROM t2 WHERE CUSTNO = ? ORDER BY CUSTNO, ORDNO, _oxdm_rid LIMIT ?");
    lines_ = Prepare("SELECT * FROM t3 WHERE ORDNO = ? ORDER BY ORDNO, LINENO, _oxdm_rid LIMIT ?");
}

RawSales::~RawSales() {
    for (sqlite3_stmt* stmt : {seek_, id_, update_, customers_, orders_, lines_}) sqlite3_finalize(stmt);
    sqlite3_close(db_);
}

sqlite3_stmt* RawSales::Prepare(const char* sql) {
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v3(db_, sql, -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr) != SQLITE_OK)
        BenchFail(std::string(sql) + ": " + sqlite3_errmsg(db_));
    return stmt;
}

std::string RawSales::Rows(sqlite3_stmt* stmt, int limit, int keep) {
    std::string first;
    for (int row = 0; row < limit && sqlite3_step(stmt) == SQLITE_ROW; ++row) {
        copied_.clear();
        for (int col = 0; col < sqlite3_column_count(stmt); ++col) {
            const unsigned char* text = sqlite3_column_text(stmt, col);
            copied_ += text ? reinterpret_cast<const char*>(text) : "";
            copied_ += '\t';
        }
        if (row == 0) {
            const unsigned char* text = sqlite3_column_text(stmt, keep);
            first = text ? reinterpret_cast<const char*>(text) : "";
        }
    }
    sqlite3_reset(stmt);
    return first;
}

bool RawSales::SeekCustomer(const std::string& key) {
    sqlite3_bind_text(seek_, 1, key.c_str(), -1, SQLITE_TRANSIENT);
    return !Rows(seek_, 1, 0).empty();
}

long long RawSales::CustomerId(const std::string& key) {
    sqlite3_bind_text(id_, 1, key.c_str(), -1, SQLITE_TRANSIENT);
    const long long id = sqlite3_step(id_) == SQLITE_ROW ? sqlite3_column_int64(id_, 0) : 0;
    sqlite3_reset(id_);
    return id;
}

void RawSales::SetCity(long long id, const std::string& city) {
    sqlite3_bind_text(update_, 1, city.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_int64(update_, 2, id);
    if (sqlite3_step(update_) != SQLITE_DONE) std::fprintf(stderr, "update: %s\n", sqlite3_errmsg(db_));
    sqlite3_reset(update_);
}

void RawSales::OpenScreen(int window, int childWindow) {
    sqlite3_bind_int(customers_, 1, window);
    // Column 2 is the first column of the dictionary: the customer number,
    // the order number.
    const std::string customer = Rows(customers_, window, 2);
    sqlite3_bind_text(orders_, 1, customer.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_int(orders_, 2, childWindow);
    const std::string order = Rows(orders_, childWindow, 2);
    sqlite3_bind_text(lines_, 1, order.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_int(lines_, 2, childWindow);
    Rows(lines_, childWindow, 2);
}
