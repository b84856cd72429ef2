#pragma once
// The seam between the record layer's faces (oxioCursor, xio_*) and the
// storage engine that keeps the records. The faces speak only to
// RecordStore; the SQLite engine lives in sqlite/, and another engine can
// take its place without the faces changing.
//
// Every operation answers a raw status code (oxioStatus::Raw), 0 on success,
// and never throws for a failure of the file: damage, a missing file or a
// conflict is a code. A version-checked write that lost the race answers
// INCONSISTENT_KEY, which oxioStatus::ConvertToOxio makes DataConflict (20).

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace oxdm::store {

// How a column keeps its values. Every column is NOT NULL: a blank value is
// the empty text or zero, so comparisons never meet a NULL.
enum class ColumnKind { Text, Integer, Real };

// Fields that the store fills on every write: a date stamp with the local
// date as yyyymmdd, a time stamp with the local time as hhmmss, an operator
// stamp with CurrentOperator().
enum class StampKind { None, Date, Time, Operator };

struct ColumnSpec {
    std::string name;
    ColumnKind kind = ColumnKind::Text;
    StampKind stamp = StampKind::None;
    bool foldCase = false;  // text compared without regard to case (key fields)
};

// One order of a table: its number (0 for the table's own key, else the
// dictionary's key number) and its column positions in order.
struct IndexSpec {
    short number = 0;
    std::vector<int> columns;
};

// One table of a record file. Index 0 is the table's key (unique) and comes
// first; every further index is a secondary order and may repeat. An empty
// index 0 means the table is ordered by record number alone.
struct TableSpec {
    short number = 0;
    std::vector<ColumnSpec> columns;
    std::vector<IndexSpec> indexes;

    // The index numbered `number`, null when the table has none.
    const IndexSpec* Index(short number) const {
        for (const IndexSpec& index : indexes)
            if (index.number == number) return &index;
        return nullptr;
    }
};

// A value as the store keeps it: monostate is the column's blank.
using FieldValue = std::variant<std::monostate, std::int64_t, double, std::string>;

// A record as read from or written to a table. rowid and version identify
// what was read: version rises by one with every write of the record.
struct RowImage {
    std::int64_t rowid = 0;
    std::int64_t version = 0;
    std::vector<FieldValue> fields;
};

enum class CompareOp : short { Equal = 1, GreaterEqual = 2, LessEqual = 3, Greater = 4, Less = 5, NotEqual = 6 };
enum class Connector : short { None = 0, And = 1, Or = 2 };

// One comparison of a filter. The right side is another column when
// otherColumn >= 0, else the constant. The connector joins it to what came
// before; a filter reads left to right with no grouping.
struct ConditionTerm {
    ConditionTerm() = default;
    ConditionTerm(int column, CompareOp op, int otherColumn = -1, FieldValue constant = {},
                  Connector connector = Connector::None)
        : column(column), op(op), otherColumn(otherColumn), constant(std::move(constant)), connector(connector) {}

    int column = 0;
    CompareOp op = CompareOp::Equal;
    int otherColumn = -1;
    FieldValue constant;
    Connector connector = Connector::None;
};
using Filter = std::vector<ConditionTerm>;

enum class SeekKind {
    First,
    Last,
    Next,  // after (key, rowid)
    Prev,  // before (key, rowid)
    EQ,    // first record whose key equals key
    GE,    // first record whose key prefix is not below key (key may be partial)
    GT,    // first record whose key is above key
};

struct SeekRequest {
    SeekRequest() = default;
    SeekRequest(short table, short index, SeekKind kind, std::vector<FieldValue> key = {}, std::int64_t rowid = 0,
                int filter = 0)
        : table(table), index(index), kind(kind), key(std::move(key)), rowid(rowid), filter(filter) {}

    short table = 0;
    short index = 0;
    SeekKind kind = SeekKind::First;
    std::vector<FieldValue> key;  // the index's key values (GE: a prefix)
    std::int64_t rowid = 0;       // Next and Prev: the record they start from
    int filter = 0;               // from RegisterFilter, 0 for none
};

// Process-wide owner of a record lock, compared across processes.
struct LockOwner {
    std::int64_t pid = 0;
    std::int64_t startTime = 0;  // the process's start time, against pid reuse
};

class RecordStore {
public:
    virtual ~RecordStore() = default;

    virtual const std::vector<TableSpec>& Tables() const = 0;
    // The table numbered `table`, null when there is none.
    virtual const TableSpec* Table(short table) const = 0;

    // Compiles a filter on one table once, for every later seek; answers its
    // id (> 0), or 0 when the filter is empty or names a column that does not
    // exist. Each clause reads left to right; the clauses are joined by AND.
    virtual int RegisterFilters(short table, const std::vector<Filter>& clauses) = 0;
    int RegisterFilter(short table, const Filter& filter) { return RegisterFilters(table, std::vector<Filter>{filter}); }

    // Positions by the request and reads the record found; one indexed seek.
    virtual short Seek(const SeekRequest& request, RowImage& out) = 0;
    // Reads the record `rowid` again; raw INVALID_KEY when it is gone.
    virtual short Read(short table, std::int64_t rowid, RowImage& out) = 0;

    // Writes `row` as a new record and fills its rowid, version and stamps.
    virtual short Insert(short table, RowImage& row) = 0;
    // Rewrites record row.rowid. With checkVersion, answers INCONSISTENT_KEY when the
    // record's version on disk is not row.version. Fills version and stamps.
    virtual short Update(short table, RowImage& row, bool checkVersion) = 0;
    virtual short Delete(short table, std::int64_t rowid) = 0;

    virtual short Lock(short table, std::int64_t rowid) = 0;
    virtual short Unlock(short table, std::int64_t rowid) = 0;

    // The position of `rowid` in the order of `index` on the 0 to 100 scale.
    virtual short RelativePosition(short table, short index, int filter, const RowImage& at, short& percent) = 0;
    // The record at `percent` of the way through the order of `index`.
    virtual short SeekRelative(short table, short index, int filter, short percent, RowImage& out) = 0;

    // Attached documents of one record, in the order they were written.
    struct Attachment {
        std::string name;
        std::string data;
    };
    virtual short ReadAttachments(short table, std::int64_t rowid, std::vector<Attachment>& out) = 0;
    virtual short WriteAttachments(short table, std::int64_t rowid, const std::vector<Attachment>& docs) = 0;

    // Drops every cache of the engine so that the next read goes to the file.
    virtual void DropCaches() = 0;
};

enum class OpenMode { OpenExisting, CreateIfMissing };

// Opens (or creates) a record file holding `tables`. On failure answers null
// and sets status to the raw code; `error` gets a sentence naming the file.
std::unique_ptr<RecordStore> OpenSqliteStore(const std::string& path, const std::vector<TableSpec>& tables,
                                             OpenMode mode, short& status, std::string& error);

// The operator id written into operator stamps: $OXDM_OPERATOR, else $USER,
// else the name of the program's account.
std::string CurrentOperator();

}  // namespace oxdm::store
