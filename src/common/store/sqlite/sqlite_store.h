#pragma once
// SqliteRecordStore: a RecordStore over one SQLite database in WAL mode.
//
// Invariants: db_ is open and its schema holds every table of tables_ (with
// every column) for the life of the object. filters_[i] is the filter whose
// id is i + 1 and never changes once registered; filterIds_ maps a filter's
// canonical text to that id, so registering the same filter twice costs
// nothing. Nothing of a table's contents is kept in memory: every read is a
// statement on db_.

#include "record_store.h"
#include "sqlite/seek_sql.h"
#include "sqlite/sqlite_db.h"

#include <map>

namespace oxdm::store {

class SqliteRecordStore final : public RecordStore {
public:
    SqliteRecordStore(std::unique_ptr<SqliteDb> db, std::vector<TableSpec> tables);

    const std::vector<TableSpec>& Tables() const override { return tables_; }
    const TableSpec* Table(short table) const override;
    int RegisterFilters(short table, const std::vector<Filter>& clauses) override;
    short Seek(const SeekRequest& request, RowImage& out) override;
    short Read(short table, std::int64_t rowid, RowImage& out) override;
    short Insert(short table, RowImage& row) override;
    short Update(short table, RowImage& row, bool checkVersion) override;
    short Delete(short table, std::int64_t rowid) override;
    short Lock(short table, std::int64_t rowid) override;
    short Unlock(short table, std::int64_t rowid) override;
    short RelativePosition(short table, short index, int filter, const RowImage& at, short& percent) override;
    short SeekRelative(short table, short index, int filter, short percent, RowImage& out) override;
    short ReadAttachments(short table, std::int64_t rowid, std::vector<Attachment>& out) override;
    short WriteAttachments(short table, std::int64_t rowid, const std::vector<Attachment>& docs) override;
    void DropCaches() override;

    SqliteDb& db() { return *db_; }
    // The SQL text of the probes that a seek runs, for query-plan checks.
    std::vector<std::string> SeekStatements(const SeekRequest& request) const;

private:
    struct FilterEntry {
        short table;
        std::string sql;
        Filter terms;  // every clause's terms, in the order their constants bind
    };

    const FilterEntry* FilterFor(int id) const;
    // Binds the filter's constants from position `next` on; answers the next free position.
    int BindFilter(sqlite3_stmt* stmt, int next, const TableSpec& table, const FilterEntry* filter) const;
    // Steps a SELECT of SelectList columns; ROW fills `out`.
    int StepRow(sqlite3_stmt* stmt, const TableSpec& table, RowImage& out) const;
    // Sets the stamp fields of `row` to now and to this operator.
    void Stamp(const TableSpec& table, RowImage& row) const;
    // After Stamp on a rewrite of record `rowid`: when the record's stored
    // date and time stamps are not older than the new ones (a second write
    // within one second), moves the new time one second past the stored one,
    // so that every write of a record leaves other stamps behind. A reader
    // that kept the stamps of its copy can then tell that the record changed.
    // Answers an SQLite code.
    int AdvanceStamps(const TableSpec& table, std::int64_t rowid, RowImage& row);
    short BindRow(sqlite3_stmt* stmt, const TableSpec& table, const RowImage& row) const;
    // Whether a live process other than this one holds the record (in
    // `held`); a dead owner's lock is removed. Answers an SQLite code.
    // REQUIRES: a write transaction is open on db_.
    int OtherHolds(short table, std::int64_t rowid, bool& held);

    std::unique_ptr<SqliteDb> db_;
    std::vector<TableSpec> tables_;
    std::vector<FilterEntry> filters_;
    std::map<std::string, int> filterIds_;
};

// Binds `value` as column kind `kind` wants it (a blank becomes '' or 0).
void BindValue(sqlite3_stmt* stmt, int position, const FieldValue& value, ColumnKind kind);

}  // namespace oxdm::store
