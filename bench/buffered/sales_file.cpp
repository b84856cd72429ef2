#include "sales_file.h"

#include <sqlite3.h>

#include <cstdio>
#include <initializer_list>

#include "record_file.h"

namespace {

// Prepared insert that binds text arguments in order and steps once.
class Insert {
public:
    Insert(sqlite3* db, const char* sql) {
        if (sqlite3_prepare_v2(db, sql, -1, &stmt_, nullptr) != SQLITE_OK) BenchFail(sqlite3_errmsg(db));
    }
    ~Insert() { sqlite3_finalize(stmt_); }
    Insert(const Insert&) = delete;
    Insert& operator=(const Insert&) = delete;

    void Run(std::initializer_list<std::string> values) {
        int i = 0;
        for (const std::string& value : values) sqlite3_bind_text(stmt_, ++i, value.c_str(), -1, SQLITE_TRANSIENT);
        if (sqlite3_step(stmt_) != SQLITE_DONE) BenchFail(sqlite3_errmsg(sqlite3_db_handle(stmt_)));
        sqlite3_reset(stmt_);
    }

private:
    sqlite3_stmt* stmt_ = nullptr;  // owned
};

void Fill(sqlite3* db, long customers) {
    Insert customer(db, "INSERT INTO t1(CUSTNO, NAME, CITY) VALUES(?, ?, 'Oslo')");
    Insert order(db, "INSERT INTO t2(ORDNO, CUSTNO) VALUES(?, ?)");
    Insert line(db, "INSERT INTO t3(ORDNO, LINENO, ITEM, QTY, PRICE) VALUES(?, ?, ?, 2, 9.5)");
    for (long c = 0; c < customers; ++c) {
        const std::string custno = CustomerNumber(c);
        customer.Run({custno, "Customer " + custno});
        if (c % 100 != 0) continue;
        for (int o = 0; o < kOrdersPerCustomer; ++o) {
            const std::string ordno = "O" + custno.substr(1) + static_cast<char>('A' + o);
            order.Run({ordno, custno});
            for (int l = 1; l <= kLinesPerOrder; ++l) line.Run({ordno, std::to_string(l), "ABCD00000" + std::to_string(l)});
        }
    }
}

}  // namespace

std::string CustomerNumber(long n) {
    char text[32];
    std::snprintf(text, sizeof text, "C%07ld", n);
    return text;
}

std::string SalesFile(const std::filesystem::path& dir, long customers) {
    const std::string path = (dir / ("sales-" + std::to_string(customers) + ".ord")).string();
    MakeRecordFile(path, [customers](sqlite3* db) { Fill(db, customers); });
    return path;
}
