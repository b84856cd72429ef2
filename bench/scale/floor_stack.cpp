// The floor: the raw SQLite keyset queries on the name index, each a seek
// and a walk of 30 index entries, but the middle, which needs a count and an
// offset walk. A save is one UPDATE of the record by its id.

#include <sqlite3.h>

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstdlib>

#include "screen_stack.h"

namespace {

constexpr const char* kColumns = "SELECT _oxdm_rid, CUSTNO, NAME, CITY, BALANCE, SINCE FROM t1 ";

class FloorStack : public ScreenStack {
public:
    ~FloorStack() override {
        for (sqlite3_stmt* stmt : {first_, last_, count_, offset_, from_, fromRow_, update_}) sqlite3_finalize(stmt);
        sqlite3_close(db_);
    }

    void Open(const std::string& path) override {
        if (sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) Fail("open");
        // The store's durability: a commit writes the log without waiting for the disk.
        sqlite3_exec(db_, "PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr);
        const std::string columns = kColumns;
        first_ = Prepare(columns + "ORDER BY NAME, _oxdm_rid LIMIT 30");
        last_ = Prepare(columns + "ORDER BY NAME DESC, _oxdm_rid DESC LIMIT 30");
        count_ = Prepare("SELECT count(*) FROM t1");
        offset_ = Prepare(columns + "ORDER BY NAME, _oxdm_rid LIMIT 30 OFFSET ?");
        from_ = Prepare(columns + "WHERE NAME >= ? ORDER BY NAME, _oxdm_rid LIMIT 30");
        fromRow_ = Prepare(columns + "WHERE (NAME, _oxdm_rid) >= (?, ?) ORDER BY NAME, _oxdm_rid LIMIT 30");
        update_ = Prepare("UPDATE t1 SET CITY = ?, _oxdm_ver = _oxdm_ver + 1 WHERE _oxdm_rid = ?");
        Show(first_);
    }
    void Last() override {
        Show(last_);
        std::reverse(shown_.begin(), shown_.end());
    }
    void Middle() override {
        long long rows = 0;
        if (sqlite3_step(count_) == SQLITE_ROW) rows = sqlite3_column_int64(count_, 0);
        sqlite3_reset(count_);
        sqlite3_bind_int64(offset_, 1, rows / 2);
        Show(offset_);
    }
    void Find(const std::string& name) override {
        sqlite3_bind_text(from_, 1, name.c_str(), -1, SQLITE_TRANSIENT);
        Show(from_);
    }
    void Save(const std::string& city) override {
        sqlite3_bind_text(update_, 1, city.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_int64(update_, 2, topId_);
        if (sqlite3_step(update_) != SQLITE_DONE) Fail("update");
        sqlite3_reset(update_);
        sqlite3_bind_text(fromRow_, 1, topName_.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_int64(fromRow_, 2, topId_);
        Show(fromRow_);
    }

private:
    [[noreturn]] void Fail(const char* what) {
        std::fprintf(stderr, "floor %s: %s\n", what, sqlite3_errmsg(db_));
        std::exit(1);
    }
    sqlite3_stmt* Prepare(const std::string& sql) {
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v3(db_, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr) != SQLITE_OK) Fail("prepare");
        return stmt;
    }
    // Shows the rows of `stmt` and keeps the id and name of the first.
    void Show(sqlite3_stmt* stmt) {
        assert(stmt != nullptr);
        shown_.clear();
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            std::string row;
            for (int col = 1; col < sqlite3_column_count(stmt); ++col) {
                const unsigned char* text = sqlite3_column_text(stmt, col);
                row += (col > 1 ? "\t" : "") + std::string(text ? reinterpret_cast<const char*>(text) : "");
            }
            if (shown_.empty()) {
                topId_ = sqlite3_column_int64(stmt, 0);
                topName_ = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 2));
            }
            shown_.push_back(std::move(row));
        }
        sqlite3_reset(stmt);
    }

    // db_ owns the statements, all finalized before it closes.
    sqlite3* db_ = nullptr;
    sqlite3_stmt *first_ = nullptr, *last_ = nullptr, *count_ = nullptr, *offset_ = nullptr, *from_ = nullptr,
                 *fromRow_ = nullptr, *update_ = nullptr;
    long long topId_ = 0;   // the record id of the first row shown
    std::string topName_;   // and its name
};

}  // namespace

std::unique_ptr<ScreenStack> MakeFloorStack() { return std::make_unique<FloorStack>(); }
