#include "sqlite/sqlite_store.h"

#include "oxdm/common/values/io_status.h"
#include "sqlite/process_identity.h"
#include "sqlite/schema.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <ctime>
#include <utility>

namespace oxdm::store {

namespace {

enum class StatementKind : std::uint64_t {
    Probe, Read, Insert, UpdateChecked, UpdatePlain, Delete, Count, CountBefore, Offset
};

// Packs what tells one statement from another into the key of its cache:
// kind 4 bits, table 12, index 12, equal count 6, range 3, direction 1,
// filter 26.
std::uint64_t StatementKey(StatementKind kind, short table, short index = 0, const Probe& probe = {}, int filter = 0) {
    return (static_cast<std::uint64_t>(kind) << 60) | (static_cast<std::uint64_t>(table & 0xfff) << 48) |
           (static_cast<std::uint64_t>(index & 0xfff) << 36) | (static_cast<std::uint64_t>(probe.equalCount & 0x3f) << 30) |
           (static_cast<std::uint64_t>(probe.op) << 27) | (static_cast<std::uint64_t>(probe.descending) << 26) |
           static_cast<std::uint64_t>(filter & 0x3ffffff);
}

std::string Where(const std::string& filterSql) { return filterSql.empty() ? "" : " WHERE " + filterSql; }

}  // namespace

void BindValue(sqlite3_stmt* stmt, int position, const FieldValue& value, ColumnKind kind) {
    switch (kind) {
        case ColumnKind::Text:
            if (const auto* text = std::get_if<std::string>(&value))
                sqlite3_bind_text(stmt, position, text->data(), static_cast<int>(text->size()), SQLITE_STATIC);
            else if (const auto* whole = std::get_if<std::int64_t>(&value))
                sqlite3_bind_text(stmt, position, std::to_string(*whole).c_str(), -1, SQLITE_TRANSIENT);
            else if (const auto* real = std::get_if<double>(&value))
                sqlite3_bind_text(stmt, position, std::to_string(*real).c_str(), -1, SQLITE_TRANSIENT);
            else
                sqlite3_bind_text(stmt, position, "", 0, SQLITE_STATIC);
            return;
        case ColumnKind::Integer:
        case ColumnKind::Real:
            if (const auto* whole = std::get_if<std::int64_t>(&value)) {
                if (kind == ColumnKind::Integer)
                    sqlite3_bind_int64(stmt, position, *whole);
                else
                    sqlite3_bind_double(stmt, position, static_cast<double>(*whole));
            } else if (const auto* real = std::get_if<double>(&value)) {
                if (kind == ColumnKind::Real)
                    sqlite3_bind_double(stmt, position, *real);
                else
                    sqlite3_bind_int64(stmt, position, static_cast<std::int64_t>(*real));
            } else if (const auto* text = std::get_if<std::string>(&value)) {
                double parsed = std::strtod(text->c_str(), nullptr);
                if (kind == ColumnKind::Integer)
                    sqlite3_bind_int64(stmt, position, static_cast<std::int64_t>(parsed));
                else
                    sqlite3_bind_double(stmt, position, parsed);
            } else {
                sqlite3_bind_int64(stmt, position, 0);
            }
            return;
    }
}

std::string CurrentOperator() {
    if (const char* op = std::getenv("OXDM_OPERATOR"); op && *op) return op;
    if (const char* user = std::getenv("USER"); user && *user) return user;
    // Neither variable is set (a service, a container's shell): the name of
    // the account the program runs under still says who it was.
    const passwd* account = ::getpwuid(::geteuid());
    return account && account->pw_name ? account->pw_name : std::string();
}

std::unique_ptr<RecordStore> OpenSqliteStore(const std::string& path, const std::vector<TableSpec>& tables,
                                             OpenMode mode, short& status, std::string& error) {
    bool create = mode == OpenMode::CreateIfMissing;
    std::unique_ptr<SqliteDb> db = SqliteDb::Open(path, create, status, error);
    if (!db) return nullptr;
    status = PrepareSchema(*db, tables, create, error);
    if (status != oxioStatus::IO_VALID) return nullptr;
    return std::make_unique<SqliteRecordStore>(std::move(db), tables);
}

SqliteRecordStore::SqliteRecordStore(std::unique_ptr<SqliteDb> db, std::vector<TableSpec> tables)
    : db_(std::move(db)), tables_(std::move(tables)) {}

const TableSpec* SqliteRecordStore::Table(short table) const {
    for (const TableSpec& spec : tables_)
        if (spec.number == table) return &spec;
    return nullptr;
}

int SqliteRecordStore::RegisterFilters(short table, const std::vector<Filter>& clauses) {
    const TableSpec* spec = Table(table);
    if (!spec) return 0;
    int columns = static_cast<int>(spec->columns.size());
    std::string canonical = std::to_string(table) + ":";
    std::string sql;
    Filter terms;
    for (const Filter& clause : clauses) {
        if (clause.empty()) continue;
        for (const ConditionTerm& term : clause) {
            if (term.column < 0 || term.column >= columns || term.otherColumn >= columns) return 0;
            canonical += std::to_string(term.column) + "," + std::to_string(static_cast<int>(term.op)) + "," +
                         std::to_string(term.otherColumn) + "," + std::to_string(static_cast<int>(term.connector)) +
                         "," + std::to_string(term.constant.index()) + "=";
            std::visit(
                [&canonical](const auto& v) {
                    using T = std::decay_t<decltype(v)>;
                    if constexpr (std::is_same_v<T, std::string>)
                        canonical += std::to_string(v.size()) + ":" + v;
                    else if constexpr (!std::is_same_v<T, std::monostate>)
                        canonical += std::to_string(v);
                },
                term.constant);
            canonical += ";";
            terms.push_back(term);
        }
        canonical += "|";
        sql += (sql.empty() ? "" : " AND ") + FilterSql(*spec, clause);
    }
    if (terms.empty()) return 0;
    auto [it, added] = filterIds_.emplace(canonical, static_cast<int>(filters_.size()) + 1);
    if (added) filters_.push_back({table, "(" + sql + ")", std::move(terms)});
    return it->second;
}

const SqliteRecordStore::FilterEntry* SqliteRecordStore::FilterFor(int id) const {
    if (id <= 0 || id > static_cast<int>(filters_.size())) return nullptr;
    return &filters_[static_cast<size_t>(id - 1)];
}

int SqliteRecordStore::BindFilter(sqlite3_stmt* stmt, int next, const TableSpec& table,
                                  const FilterEntry* filter) const {
    if (!filter) return next;
    for (const ConditionTerm& term : filter->terms)
        if (term.otherColumn < 0) BindValue(stmt, next++, term.constant, table.columns[term.column].kind);
    return next;
}

int SqliteRecordStore::StepRow(sqlite3_stmt* stmt, const TableSpec& table, RowImage& out) const {
    int rc = sqlite3_step(stmt);
    if (rc != SQLITE_ROW) return rc;
    out.rowid = sqlite3_column_int64(stmt, 0);
    out.version = sqlite3_column_int64(stmt, 1);
    out.fields.resize(table.columns.size());
    for (size_t i = 0; i < table.columns.size(); ++i) {
        int column = static_cast<int>(i) + 2;
        switch (table.columns[i].kind) {
            case ColumnKind::Text: {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, column));
                int bytes = sqlite3_column_bytes(stmt, column);
                if (auto* held = std::get_if<std::string>(&out.fields[i]))
                    held->assign(text ? text : "", static_cast<size_t>(bytes));
                else
                    out.fields[i] = std::string(text ? text : "", static_cast<size_t>(bytes));
                break;
            }
            case ColumnKind::Integer:
                out.fields[i] = static_cast<std::int64_t>(sqlite3_column_int64(stmt, column));
                break;
            case ColumnKind::Real:
                out.fields[i] = sqlite3_column_double(stmt, column);
                break;
        }
    }
    return rc;
}

std::vector<std::string> SqliteRecordStore::SeekStatements(const SeekRequest& request) const {
    std::vector<std::string> out;
    const TableSpec* spec = Table(request.table);
    if (!spec || !spec->Index(request.index)) return out;
    const FilterEntry* filter = FilterFor(request.filter);
    int n = static_cast<int>(spec->Index(request.index)->columns.size());
    for (const Probe& probe : ProbesFor(request.kind, n, request.index == 0, static_cast<int>(request.key.size())))
        out.push_back(ProbeSql(*spec, request.index, probe, filter ? filter->sql : std::string()));
    return out;
}

short SqliteRecordStore::Seek(const SeekRequest& request, RowImage& out) {
    const TableSpec* spec = Table(request.table);
    if (!spec || !spec->Index(request.index)) return oxioStatus::INVALID_KEY;
    const FilterEntry* filter = FilterFor(request.filter);
    const std::vector<int>& columns = spec->Index(request.index)->columns;
    int n = static_cast<int>(columns.size());
    bool needsKey = request.kind == SeekKind::Next || request.kind == SeekKind::Prev || request.kind == SeekKind::EQ ||
                    request.kind == SeekKind::GT;
    if (needsKey && static_cast<int>(request.key.size()) < n) return oxioStatus::INVALID_KEY;

    for (const Probe& probe : ProbesFor(request.kind, n, request.index == 0, static_cast<int>(request.key.size()))) {
        SqliteDb::Statement stmt =
            db_->PrepareKeyed(StatementKey(StatementKind::Probe, request.table, request.index, probe, request.filter),
                              [&] { return ProbeSql(*spec, request.index, probe, filter ? filter->sql : ""); });
        if (!stmt) return RawCode(db_->lastError());
        int next = 1;
        for (int i = 0; i < probe.equalCount; ++i)
            BindValue(stmt.get(), next++, request.key[i], spec->columns[columns[i]].kind);
        if (probe.op != RangeOp::None) {
            if (probe.equalCount == n)
                sqlite3_bind_int64(stmt.get(), next++, request.rowid);
            else
                BindValue(stmt.get(), next++, request.key[probe.equalCount], spec->columns[columns[probe.equalCount]].kind);
        }
        BindFilter(stmt.get(), next, *spec, filter);
        int rc = StepRow(stmt.get(), *spec, out);
        if (rc == SQLITE_ROW) return oxioStatus::IO_VALID;
        if (rc != SQLITE_DONE) return RawCode(rc);
    }
    switch (request.kind) {
        case SeekKind::Prev: return oxioStatus::AT_START;
        case SeekKind::Next: return oxioStatus::AT_END;
        case SeekKind::EQ: return oxioStatus::INVALID_KEY;
        default: return oxioStatus::AT_END;
    }
}

short SqliteRecordStore::Read(short table, std::int64_t rowid, RowImage& out) {
    const TableSpec* spec = Table(table);
    if (!spec) return oxioStatus::INVALID_KEY;
    SqliteDb::Statement stmt = db_->PrepareKeyed(StatementKey(StatementKind::Read, table), [&] {
        return "SELECT " + SelectList(*spec) + " FROM " + TableName(table) + " WHERE " + kRowidColumn + " = ?";
    });
    if (!stmt) return RawCode(db_->lastError());
    sqlite3_bind_int64(stmt.get(), 1, rowid);
    int rc = StepRow(stmt.get(), *spec, out);
    if (rc == SQLITE_ROW) return oxioStatus::IO_VALID;
    return rc == SQLITE_DONE ? static_cast<short>(oxioStatus::INVALID_KEY) : RawCode(rc);
}

void SqliteRecordStore::Stamp(const TableSpec& table, RowImage& row) const {
    std::time_t now = std::time(nullptr);
    struct tm local;
    localtime_r(&now, &local);
    row.fields.resize(table.columns.size());
    for (size_t i = 0; i < table.columns.size(); ++i) {
        switch (table.columns[i].stamp) {
            case StampKind::None: break;
            case StampKind::Date:
                row.fields[i] = static_cast<std::int64_t>((local.tm_year + 1900) * 10000 + (local.tm_mon + 1) * 100 +
                                                          local.tm_mday);
                break;
            case StampKind::Time:
                row.fields[i] = static_cast<std::int64_t>(local.tm_hour * 10000 + local.tm_min * 100 + local.tm_sec);
                break;
            case StampKind::Operator:
                row.fields[i] = CurrentOperator();
                break;
        }
    }
}

int SqliteRecordStore::AdvanceStamps(const TableSpec& table, std::int64_t rowid, RowImage& row) {
    int dateColumn = -1, timeColumn = -1;
    for (size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].stamp == StampKind::Date) dateColumn = static_cast<int>(i);
        if (table.columns[i].stamp == StampKind::Time) timeColumn = static_cast<int>(i);
    }
    if (dateColumn < 0 || timeColumn < 0) return SQLITE_OK;
    SqliteDb::Statement stmt = db_->Prepare("SELECT " + QuotedColumn(table.columns[dateColumn]) + ", " +
                                            QuotedColumn(table.columns[timeColumn]) + " FROM " +
                                            TableName(table.number) + " WHERE " + kRowidColumn + " = ?");
    if (!stmt) return db_->lastError();
    sqlite3_bind_int64(stmt.get(), 1, rowid);
    const int rc = sqlite3_step(stmt.get());
    if (rc == SQLITE_DONE) return SQLITE_OK;
    if (rc != SQLITE_ROW) return rc;
    const std::int64_t oldDate = sqlite3_column_int64(stmt.get(), 0), oldTime = sqlite3_column_int64(stmt.get(), 1);
    const auto* newDate = std::get_if<std::int64_t>(&row.fields[static_cast<size_t>(dateColumn)]);
    const auto* newTime = std::get_if<std::int64_t>(&row.fields[static_cast<size_t>(timeColumn)]);
    if (!newDate || !newTime || oldDate <= 0 || std::make_pair(oldDate, oldTime) < std::make_pair(*newDate, *newTime))
        return SQLITE_OK;
    struct tm next = {};
    next.tm_year = static_cast<int>(oldDate / 10000) - 1900;
    next.tm_mon = static_cast<int>(oldDate / 100 % 100) - 1;
    next.tm_mday = static_cast<int>(oldDate % 100);
    next.tm_hour = static_cast<int>(oldTime / 10000);
    next.tm_min = static_cast<int>(oldTime / 100 % 100);
    next.tm_sec = static_cast<int>(oldTime % 100) + 1;
    next.tm_isdst = -1;
    std::mktime(&next);  // carries the second into minutes, hours and days
    row.fields[static_cast<size_t>(dateColumn)] =
        static_cast<std::int64_t>((next.tm_year + 1900) * 10000 + (next.tm_mon + 1) * 100 + next.tm_mday);
    row.fields[static_cast<size_t>(timeColumn)] =
        static_cast<std::int64_t>(next.tm_hour * 10000 + next.tm_min * 100 + next.tm_sec);
    return SQLITE_OK;
}

short SqliteRecordStore::BindRow(sqlite3_stmt* stmt, const TableSpec& table, const RowImage& row) const {
    for (size_t i = 0; i < table.columns.size(); ++i) {
        static const FieldValue blank;
        BindValue(stmt, static_cast<int>(i) + 1, i < row.fields.size() ? row.fields[i] : blank, table.columns[i].kind);
    }
    return static_cast<short>(table.columns.size()) + 1;
}

short SqliteRecordStore::Insert(short table, RowImage& row) {
    const TableSpec* spec = Table(table);
    if (!spec) return oxioStatus::INVALID_KEY;
    Stamp(*spec, row);
    WriteTransaction transaction(*db_);
    if (transaction.begun() != SQLITE_OK) return RawCode(transaction.begun());
    SqliteDb::Statement stmt = db_->PrepareKeyed(StatementKey(StatementKind::Insert, table), [&] {
        std::string names, marks;
        for (const ColumnSpec& column : spec->columns) {
            names += (names.empty() ? "" : ", ") + QuotedColumn(column);
            marks += marks.empty() ? "?" : ", ?";
        }
        return "INSERT INTO " + TableName(table) + "(" + names + ") VALUES(" + marks + ")";
    });
    if (!stmt) return RawCode(db_->lastError());
    BindRow(stmt.get(), *spec, row);
    int rc = sqlite3_step(stmt.get());
    if (rc != SQLITE_DONE) return RawCode(rc);
    row.rowid = sqlite3_last_insert_rowid(db_->handle());
    row.version = 1;
    return RawCode(transaction.Commit());
}

int SqliteRecordStore::OtherHolds(short table, std::int64_t rowid, bool& held) {
    assert(sqlite3_get_autocommit(db_->handle()) == 0);
    held = false;
    SqliteDb::Statement stmt = db_->Prepare(std::string("SELECT pid, start FROM ") + kLockTable +
                                            " WHERE tbl = ? AND rid = ?");
    if (!stmt) return db_->lastError();
    sqlite3_bind_int(stmt.get(), 1, table);
    sqlite3_bind_int64(stmt.get(), 2, rowid);
    int rc = sqlite3_step(stmt.get());
    if (rc == SQLITE_DONE) return SQLITE_OK;
    if (rc != SQLITE_ROW) return rc;
    LockOwner owner{sqlite3_column_int64(stmt.get(), 0), sqlite3_column_int64(stmt.get(), 1)};
    LockOwner self = CurrentProcess();
    if (owner.pid == self.pid && owner.startTime == self.startTime) return SQLITE_OK;
    if (IsAlive(owner)) {
        held = true;
        return SQLITE_OK;
    }
    // The owner died holding the lock: it binds nobody.
    SqliteDb::Statement drop =
        db_->Prepare(std::string("DELETE FROM ") + kLockTable + " WHERE tbl = ? AND rid = ?");
    if (!drop) return db_->lastError();
    sqlite3_bind_int(drop.get(), 1, table);
    sqlite3_bind_int64(drop.get(), 2, rowid);
    rc = sqlite3_step(drop.get());
    return rc == SQLITE_DONE ? SQLITE_OK : rc;
}

short SqliteRecordStore::Update(short table, RowImage& row, bool checkVersion) {
    const TableSpec* spec = Table(table);
    if (!spec) return oxioStatus::INVALID_KEY;
    WriteTransaction transaction(*db_);
    if (transaction.begun() != SQLITE_OK) return RawCode(transaction.begun());
    bool held = false;
    if (int rc = OtherHolds(table, row.rowid, held); rc != SQLITE_OK) return RawCode(rc);
    if (held) return oxioStatus::IN_USE;
    RowImage stamped = row;
    Stamp(*spec, stamped);
    if (int rc = AdvanceStamps(*spec, row.rowid, stamped); rc != SQLITE_OK) return RawCode(rc);
    StatementKind kind = checkVersion ? StatementKind::UpdateChecked : StatementKind::UpdatePlain;
    int rc = SQLITE_DONE;
    std::int64_t version = 0;
    {
        SqliteDb::Statement stmt = db_->PrepareKeyed(StatementKey(kind, table), [&] {
            std::string sets;
            for (const ColumnSpec& column : spec->columns) sets += QuotedColumn(column) + " = ?, ";
            return "UPDATE " + TableName(table) + " SET " + sets + kVersionColumn + " = " + kVersionColumn +
                   " + 1 WHERE " + kRowidColumn + " = ?" +
                   (checkVersion ? std::string(" AND ") + kVersionColumn + " = ?" : "") + " RETURNING " +
                   kVersionColumn;
        });
        if (!stmt) return RawCode(db_->lastError());
        int next = BindRow(stmt.get(), *spec, stamped);
        sqlite3_bind_int64(stmt.get(), next++, row.rowid);
        if (checkVersion) sqlite3_bind_int64(stmt.get(), next, row.version);
        rc = sqlite3_step(stmt.get());
        if (rc == SQLITE_ROW) {
            version = sqlite3_column_int64(stmt.get(), 0);
            rc = sqlite3_step(stmt.get());
            if (rc != SQLITE_DONE) return RawCode(rc);
            rc = SQLITE_ROW;
        }
    }
    if (rc == SQLITE_ROW) {
        if (int done = transaction.Commit(); done != SQLITE_OK) return RawCode(done);
        stamped.version = version;
        row = std::move(stamped);
        return oxioStatus::IO_VALID;
    }
    if (rc != SQLITE_DONE) return RawCode(rc);
    // Nothing was written: the record is gone, or (checked) another writer
    // changed it since it was read.
    if (!checkVersion) return oxioStatus::INVALID_KEY;
    RowImage current;
    short found = Read(table, row.rowid, current);
    return found == oxioStatus::IO_VALID ? static_cast<short>(oxioStatus::INCONSISTENT_KEY) : found;
}

short SqliteRecordStore::Delete(short table, std::int64_t rowid) {
    const TableSpec* spec = Table(table);
    if (!spec) return oxioStatus::INVALID_KEY;
    WriteTransaction transaction(*db_);
    if (transaction.begun() != SQLITE_OK) return RawCode(transaction.begun());
    bool held = false;
    if (int rc = OtherHolds(table, rowid, held); rc != SQLITE_OK) return RawCode(rc);
    if (held) return oxioStatus::IN_USE;
    {
        SqliteDb::Statement stmt = db_->PrepareKeyed(StatementKey(StatementKind::Delete, table), [&] {
            return "DELETE FROM " + TableName(table) + " WHERE " + kRowidColumn + " = ?";
        });
        if (!stmt) return RawCode(db_->lastError());
        sqlite3_bind_int64(stmt.get(), 1, rowid);
        int rc = sqlite3_step(stmt.get());
        if (rc != SQLITE_DONE) return RawCode(rc);
        if (sqlite3_changes(db_->handle()) == 0) return oxioStatus::INVALID_KEY;
    }
    for (const char* side : {kAttachmentTable, kLockTable}) {
        SqliteDb::Statement stmt = db_->Prepare(std::string("DELETE FROM ") + side + " WHERE tbl = ? AND rid = ?");
        if (!stmt) return RawCode(db_->lastError());
        sqlite3_bind_int(stmt.get(), 1, table);
        sqlite3_bind_int64(stmt.get(), 2, rowid);
        if (int rc = sqlite3_step(stmt.get()); rc != SQLITE_DONE) return RawCode(rc);
    }
    return RawCode(transaction.Commit());
}

short SqliteRecordStore::Lock(short table, std::int64_t rowid) {
    if (!Table(table)) return oxioStatus::INVALID_KEY;
    WriteTransaction transaction(*db_);
    if (transaction.begun() != SQLITE_OK) return RawCode(transaction.begun());
    bool held = false;
    if (int rc = OtherHolds(table, rowid, held); rc != SQLITE_OK) return RawCode(rc);
    if (held) return oxioStatus::IN_USE;
    {
        SqliteDb::Statement stmt =
            db_->Prepare(std::string("INSERT OR REPLACE INTO ") + kLockTable + "(tbl, rid, pid, start) VALUES(?, ?, ?, ?)");
        if (!stmt) return RawCode(db_->lastError());
        LockOwner self = CurrentProcess();
        sqlite3_bind_int(stmt.get(), 1, table);
        sqlite3_bind_int64(stmt.get(), 2, rowid);
        sqlite3_bind_int64(stmt.get(), 3, self.pid);
        sqlite3_bind_int64(stmt.get(), 4, self.startTime);
        if (int rc = sqlite3_step(stmt.get()); rc != SQLITE_DONE) return RawCode(rc);
    }
    return RawCode(transaction.Commit());
}

short SqliteRecordStore::Unlock(short table, std::int64_t rowid) {
    SqliteDb::Statement stmt = db_->Prepare(std::string("DELETE FROM ") + kLockTable +
                                            " WHERE tbl = ? AND rid = ? AND pid = ? AND start = ?");
    if (!stmt) return RawCode(db_->lastError());
    LockOwner self = CurrentProcess();
    sqlite3_bind_int(stmt.get(), 1, table);
    sqlite3_bind_int64(stmt.get(), 2, rowid);
    sqlite3_bind_int64(stmt.get(), 3, self.pid);
    sqlite3_bind_int64(stmt.get(), 4, self.startTime);
    int rc = sqlite3_step(stmt.get());
    return rc == SQLITE_DONE ? static_cast<short>(oxioStatus::IO_VALID) : RawCode(rc);
}

short SqliteRecordStore::RelativePosition(short table, short index, int filterId, const RowImage& at,
                                          short& percent) {
    percent = 0;
    const TableSpec* spec = Table(table);
    if (!spec || !spec->Index(index)) return oxioStatus::INVALID_KEY;
    const FilterEntry* filter = FilterFor(filterId);
    std::string filterSql = filter ? filter->sql : "";
    const std::vector<int>& columns = spec->Index(index)->columns;

    std::int64_t total = 0, before = 0;
    {
        SqliteDb::Statement count = db_->PrepareKeyed(StatementKey(StatementKind::Count, table, index, {}, filterId), [&] {
            return "SELECT count(*) FROM " + TableName(table) + Where(filterSql);
        });
        if (!count) return RawCode(db_->lastError());
        BindFilter(count.get(), 1, *spec, filter);
        int rc = sqlite3_step(count.get());
        if (rc != SQLITE_ROW) return RawCode(rc);
        total = sqlite3_column_int64(count.get(), 0);
    }
    {
        // Counting what precedes the record walks the index: this cost grows
        // with the table and is paid only for the scroll thumb.
        SqliteDb::Statement count =
            db_->PrepareKeyed(StatementKey(StatementKind::CountBefore, table, index, {}, filterId), [&] {
                std::string names, marks;
                for (int column : columns) {
                    names += QuotedColumn(spec->columns[column]) + ", ";
                    marks += "?, ";
                }
                std::string where = "(" + names + kRowidColumn + ") < (" + marks + "?)";
                return "SELECT count(*) FROM " + TableName(table) + " WHERE " + where +
                       (filterSql.empty() ? "" : " AND " + filterSql);
            });
        if (!count) return RawCode(db_->lastError());
        int next = 1;
        for (int column : columns) {
            static const FieldValue blank;
            const FieldValue& value = static_cast<size_t>(column) < at.fields.size() ? at.fields[column] : blank;
            BindValue(count.get(), next++, value, spec->columns[column].kind);
        }
        sqlite3_bind_int64(count.get(), next++, at.rowid);
        BindFilter(count.get(), next, *spec, filter);
        int rc = sqlite3_step(count.get());
        if (rc != SQLITE_ROW) return RawCode(rc);
        before = sqlite3_column_int64(count.get(), 0);
    }
    percent = total > 1 ? static_cast<short>(before * 100 / (total - 1)) : 0;
    return oxioStatus::IO_VALID;
}

short SqliteRecordStore::SeekRelative(short table, short index, int filterId, short percent, RowImage& out) {
    const TableSpec* spec = Table(table);
    if (!spec || !spec->Index(index)) return oxioStatus::INVALID_KEY;
    const FilterEntry* filter = FilterFor(filterId);
    std::string filterSql = filter ? filter->sql : "";
    std::int64_t total = 0;
    {
        SqliteDb::Statement count = db_->PrepareKeyed(StatementKey(StatementKind::Count, table, index, {}, filterId), [&] {
            return "SELECT count(*) FROM " + TableName(table) + Where(filterSql);
        });
        if (!count) return RawCode(db_->lastError());
        BindFilter(count.get(), 1, *spec, filter);
        int rc = sqlite3_step(count.get());
        if (rc != SQLITE_ROW) return RawCode(rc);
        total = sqlite3_column_int64(count.get(), 0);
    }
    if (total == 0) return oxioStatus::AT_END;
    int clamped = std::clamp<int>(percent, 0, 100);
    std::int64_t offset = std::min<std::int64_t>(total - 1, (total - 1) * clamped / 100);
    SqliteDb::Statement stmt = db_->PrepareKeyed(StatementKey(StatementKind::Offset, table, index, {}, filterId), [&] {
        std::string sql = ProbeSql(*spec, index, Probe{}, filterSql);
        return sql.substr(0, sql.size() - std::string(" LIMIT 1").size()) + " LIMIT 1 OFFSET ?";
    });
    if (!stmt) return RawCode(db_->lastError());
    int next = BindFilter(stmt.get(), 1, *spec, filter);
    sqlite3_bind_int64(stmt.get(), next, offset);
    int rc = StepRow(stmt.get(), *spec, out);
    if (rc == SQLITE_ROW) return oxioStatus::IO_VALID;
    return rc == SQLITE_DONE ? static_cast<short>(oxioStatus::AT_END) : RawCode(rc);
}

short SqliteRecordStore::ReadAttachments(short table, std::int64_t rowid, std::vector<Attachment>& out) {
    out.clear();
    SqliteDb::Statement stmt = db_->Prepare(std::string("SELECT name, data FROM ") + kAttachmentTable +
                                            " WHERE tbl = ? AND rid = ? ORDER BY seq");
    if (!stmt) return RawCode(db_->lastError());
    sqlite3_bind_int(stmt.get(), 1, table);
    sqlite3_bind_int64(stmt.get(), 2, rowid);
    int rc;
    while ((rc = sqlite3_step(stmt.get())) == SQLITE_ROW) {
        const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(stmt.get(), 0));
        const auto* data = static_cast<const char*>(sqlite3_column_blob(stmt.get(), 1));
        out.push_back({name ? name : "", std::string(data ? data : "", static_cast<size_t>(sqlite3_column_bytes(stmt.get(), 1)))});
    }
    return rc == SQLITE_DONE ? static_cast<short>(oxioStatus::IO_VALID) : RawCode(rc);
}

short SqliteRecordStore::WriteAttachments(short table, std::int64_t rowid, const std::vector<Attachment>& docs) {
    WriteTransaction transaction(*db_);
    if (transaction.begun() != SQLITE_OK) return RawCode(transaction.begun());
    {
        SqliteDb::Statement drop =
            db_->Prepare(std::string("DELETE FROM ") + kAttachmentTable + " WHERE tbl = ? AND rid = ?");
        if (!drop) return RawCode(db_->lastError());
        sqlite3_bind_int(drop.get(), 1, table);
        sqlite3_bind_int64(drop.get(), 2, rowid);
        if (int rc = sqlite3_step(drop.get()); rc != SQLITE_DONE) return RawCode(rc);
    }
    for (size_t seq = 0; seq < docs.size(); ++seq) {
        SqliteDb::Statement add = db_->Prepare(std::string("INSERT INTO ") + kAttachmentTable +
                                               "(tbl, rid, seq, name, data) VALUES(?, ?, ?, ?, ?)");
        if (!add) return RawCode(db_->lastError());
        sqlite3_bind_int(add.get(), 1, table);
        sqlite3_bind_int64(add.get(), 2, rowid);
        sqlite3_bind_int64(add.get(), 3, static_cast<std::int64_t>(seq));
        sqlite3_bind_text(add.get(), 4, docs[seq].name.c_str(), -1, SQLITE_STATIC);
        sqlite3_bind_blob(add.get(), 5, docs[seq].data.data(), static_cast<int>(docs[seq].data.size()), SQLITE_STATIC);
        if (int rc = sqlite3_step(add.get()); rc != SQLITE_DONE) return RawCode(rc);
    }
    return RawCode(transaction.Commit());
}

void SqliteRecordStore::DropCaches() { db_->ReleaseMemory(); }

}  // namespace oxdm::store
