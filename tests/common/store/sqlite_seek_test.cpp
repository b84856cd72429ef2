// The seek family of the SQLite engine: query plans, order, partial keys,
// long runs of one key value, filters and relative positions.

#include "oxdm/common/values/io_status.h"
#include "store_fixture.h"

#include <chrono>

namespace oxdm::store::testing {
namespace {

// Fills the lines table in one transaction: `orders` orders of `lines` lines,
// item "I<line % items>".
void Fill(SqliteRecordStore& store, int orders, int lines, int items) {
    ASSERT_EQ(store.db().Exec("BEGIN"), SQLITE_OK);
    sqlite3_stmt* stmt = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(store.db().handle(), "INSERT INTO t1(ORDNO, LINENO, ITEM, QTY) VALUES(?, ?, ?, ?)",
                                 -1, &stmt, nullptr),
              SQLITE_OK);
    for (int o = 0; o < orders; ++o)
        for (int l = 0; l < lines; ++l) {
            char ordno[16];
            std::snprintf(ordno, sizeof ordno, "O%05d", o);
            std::string item = "I" + std::to_string(l % items);
            sqlite3_bind_text(stmt, 1, ordno, -1, SQLITE_TRANSIENT);
            sqlite3_bind_int64(stmt, 2, l);
            sqlite3_bind_text(stmt, 3, item.c_str(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_double(stmt, 4, l * 0.5);
            ASSERT_EQ(sqlite3_step(stmt), SQLITE_DONE);
            sqlite3_reset(stmt);
        }
    sqlite3_finalize(stmt);
    ASSERT_EQ(store.db().Exec("COMMIT"), SQLITE_OK);
}

std::vector<std::string> Plan(SqliteRecordStore& store, const std::string& sql) {
    std::vector<std::string> lines;
    sqlite3_stmt* stmt = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(store.db().handle(), ("EXPLAIN QUERY PLAN " + sql).c_str(), -1, &stmt, nullptr),
              SQLITE_OK)
        << sql;
    while (sqlite3_step(stmt) == SQLITE_ROW) lines.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 3)));
    sqlite3_finalize(stmt);
    return lines;
}

TEST(SqliteSeek, EveryProbeIsAnIndexedSeekWithoutSorting) {
    ScratchDir dir;
    auto store = OpenLines(dir.File("plan.oxd"));
    Fill(*store, 20, 20, 5);
    ASSERT_EQ(store->db().Exec("ANALYZE"), SQLITE_OK);
    int filter = store->RegisterFilter(1, {{3, CompareOp::GreaterEqual, -1, 2.0, Connector::None}});
    ASSERT_GT(filter, 0);
    for (short index : {0, 1})
        for (SeekKind kind : {SeekKind::First, SeekKind::Last, SeekKind::Next, SeekKind::Prev, SeekKind::EQ,
                              SeekKind::GE, SeekKind::GT})
            for (int withFilter : {0, filter}) {
                SeekRequest request{1, index, kind, {std::string("O00001"), std::int64_t{3}}, 7, withFilter};
                if (index == 1) request.key = {std::string("I2")};
                std::vector<std::string> statements = store->SeekStatements(request);
                ASSERT_FALSE(statements.empty());
                for (const std::string& sql : statements) {
                    std::vector<std::string> plan = Plan(*store, sql);
                    ASSERT_EQ(plan.size(), 1u) << sql;
                    std::string expected = "t1_k" + std::to_string(index);
                    EXPECT_NE(plan[0].find(expected), std::string::npos) << sql << " -> " << plan[0];
                    EXPECT_EQ(plan[0].find("TEMP B-TREE"), std::string::npos) << sql;
                    bool bounded = kind != SeekKind::First && kind != SeekKind::Last;
                    if (bounded) {
                        EXPECT_EQ(plan[0].rfind("SEARCH", 0), 0u) << sql << " -> " << plan[0];
                    }
                }
            }
}

TEST(SqliteSeek, WalksBothIndexesInOrderWithPartialKeys) {
    ScratchDir dir;
    auto store = OpenLines(dir.File("order.oxd"));
    Fill(*store, 3, 4, 2);
    RowImage row;
    // Forward over the key: O00000/0 .. O00002/3, then at end.
    ASSERT_EQ(store->Seek({1, 0, SeekKind::First}, row), 0);
    std::vector<std::pair<std::string, std::int64_t>> seen;
    do {
        seen.emplace_back(Text(row, 0), Whole(row, 1));
    } while (store->Seek({1, 0, SeekKind::Next, {row.fields[0], row.fields[1]}, row.rowid}, row) == 0);
    ASSERT_EQ(seen.size(), 12u);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(store->Seek({1, 0, SeekKind::Next, {row.fields[0], row.fields[1]}, row.rowid}, row), oxioStatus::AT_END);

    // A partial key: the first line of order O00001.
    ASSERT_EQ(store->Seek({1, 0, SeekKind::GE, {std::string("O00001")}}, row), 0);
    EXPECT_EQ(Text(row, 0), "O00001");
    EXPECT_EQ(Whole(row, 1), 0);
    // A full key between two records, and GT past a whole key.
    ASSERT_EQ(store->Seek({1, 0, SeekKind::GE, {std::string("O00000A"), std::int64_t{0}}}, row), 0);
    EXPECT_EQ(Text(row, 0), "O00001");
    ASSERT_EQ(store->Seek({1, 0, SeekKind::GT, {std::string("O00001"), std::int64_t{3}}}, row), 0);
    EXPECT_EQ(Text(row, 0), "O00002");
    EXPECT_EQ(Whole(row, 1), 0);
    EXPECT_EQ(store->Seek({1, 0, SeekKind::GT, {std::string("O00002"), std::int64_t{3}}}, row), oxioStatus::AT_END);
    EXPECT_EQ(store->Seek({1, 0, SeekKind::EQ, {std::string("O00002"), std::int64_t{9}}}, row), oxioStatus::INVALID_KEY);

    // Backward over the secondary index: items I1 (6 records) then I0, rowid
    // descending within each.
    ASSERT_EQ(store->Seek({1, 1, SeekKind::Last}, row), 0);
    std::vector<std::pair<std::string, std::int64_t>> back;
    do {
        back.emplace_back(Text(row, 2), row.rowid);
    } while (store->Seek({1, 1, SeekKind::Prev, {row.fields[2]}, row.rowid}, row) == 0);
    ASSERT_EQ(back.size(), 12u);
    EXPECT_TRUE(std::is_sorted(back.rbegin(), back.rend()));
    EXPECT_EQ(back.front().first, "I1");
    EXPECT_EQ(store->Seek({1, 1, SeekKind::Prev, {row.fields[2]}, row.rowid}, row), oxioStatus::AT_START);
}

TEST(SqliteSeek, StaysFastWhenOneKeyValueHasAHundredThousandRecords) {
    ScratchDir dir;
    auto store = OpenLines(dir.File("dups.oxd"));
    // One order with 100,000 lines, all of the same item, between two small ones.
    Fill(*store, 1, 100000, 1);
    RowImage row;
    // Start in the middle of the run on both indexes and step both ways.
    auto started = std::chrono::steady_clock::now();
    ASSERT_EQ(store->Seek({1, 0, SeekKind::GE, {std::string("O00000"), std::int64_t{50000}}}, row), 0);
    for (int step = 0; step < 2000; ++step) {
        std::int64_t before = Whole(row, 1);
        ASSERT_EQ(store->Seek({1, 0, SeekKind::Next, {row.fields[0], row.fields[1]}, row.rowid}, row), 0);
        ASSERT_EQ(Whole(row, 1), before + 1);
    }
    for (int step = 0; step < 2000; ++step)
        ASSERT_EQ(store->Seek({1, 0, SeekKind::Prev, {row.fields[0], row.fields[1]}, row.rowid}, row), 0);
    ASSERT_EQ(Whole(row, 1), 50000);
    std::int64_t middle = row.rowid;
    for (int step = 0; step < 2000; ++step) {
        std::int64_t before = row.rowid;
        ASSERT_EQ(store->Seek({1, 1, SeekKind::Next, {row.fields[2]}, row.rowid}, row), 0);
        ASSERT_EQ(row.rowid, before + 1);
    }
    for (int step = 0; step < 2000; ++step)
        ASSERT_EQ(store->Seek({1, 1, SeekKind::Prev, {row.fields[2]}, row.rowid}, row), 0);
    ASSERT_EQ(row.rowid, middle);
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    // A walk over the run would cost some 50,000 rows per step: minutes.
    EXPECT_LT(seconds, 1.0);
}

TEST(SqliteSeek, FiltersReadLeftToRightWithoutGrouping) {
    ScratchDir dir;
    auto store = OpenLines(dir.File("filter.oxd"));
    Fill(*store, 2, 6, 3);  // LINENO 0..5, ITEM I0 I1 I2 I0 I1 I2, QTY = LINENO / 2
    auto collect = [&](int filter) {
        std::vector<std::int64_t> lines;
        RowImage row;
        for (short rc = store->Seek({1, 0, SeekKind::First, {}, 0, filter}, row); rc == 0;
             rc = store->Seek({1, 0, SeekKind::Next, {row.fields[0], row.fields[1]}, row.rowid, filter}, row))
            if (Text(row, 0) == "O00000") lines.push_back(Whole(row, 1));
        return lines;
    };
    // LINENO = 3 OR LINENO = 1 AND ITEM = 'I1' reads as (L=3 OR L=1) AND I1,
    // which keeps line 1 alone (line 3 is I0); grouping the AND first would
    // keep line 3 as well.
    int leftToRight = store->RegisterFilter(1, {{1, CompareOp::Equal, -1, std::int64_t{3}},
                                                {1, CompareOp::Equal, -1, std::int64_t{1}, Connector::Or},
                                                {2, CompareOp::Equal, -1, std::string("I1"), Connector::And}});
    EXPECT_EQ(collect(leftToRight), std::vector<std::int64_t>({1}));
    // Field to field: QTY (= LINENO / 2) below LINENO holds for every line but 0.
    int fieldToField = store->RegisterFilter(1, {{3, CompareOp::Less, 1}});
    EXPECT_EQ(collect(fieldToField), std::vector<std::int64_t>({1, 2, 3, 4, 5}));
    // Every operator against a constant of another type (text against integer).
    int notEqual = store->RegisterFilter(1, {{1, CompareOp::NotEqual, -1, std::string("2")},
                                             {1, CompareOp::LessEqual, -1, 4.0, Connector::And},
                                             {1, CompareOp::GreaterEqual, -1, std::int64_t{1}, Connector::And}});
    EXPECT_EQ(collect(notEqual), std::vector<std::int64_t>({1, 3, 4}));
    int greater = store->RegisterFilter(1, {{1, CompareOp::Greater, -1, std::int64_t{4}}});
    EXPECT_EQ(collect(greater), std::vector<std::int64_t>({5}));
    // The same filter registered twice is one filter; a bad column is refused.
    EXPECT_EQ(store->RegisterFilter(1, {{1, CompareOp::Greater, -1, std::int64_t{4}}}), greater);
    EXPECT_EQ(store->RegisterFilter(1, {{42, CompareOp::Equal}}), 0);
}

TEST(SqliteSeek, RelativePositionRunsFromZeroToAHundred) {
    ScratchDir dir;
    auto store = OpenLines(dir.File("relative.oxd"));
    Fill(*store, 1, 201, 1);
    RowImage row;
    short percent = -1;
    for (short target : {0, 25, 50, 100}) {
        ASSERT_EQ(store->SeekRelative(1, 0, 0, target, row), 0);
        EXPECT_EQ(Whole(row, 1), target * 2);
        ASSERT_EQ(store->RelativePosition(1, 0, 0, row, percent), 0);
        EXPECT_EQ(percent, target);
    }
    ASSERT_EQ(store->SeekRelative(1, 0, 0, 500, row), 0);
    EXPECT_EQ(Whole(row, 1), 200);
    int even = store->RegisterFilter(1, {{1, CompareOp::GreaterEqual, -1, std::int64_t{100}}});
    ASSERT_EQ(store->SeekRelative(1, 0, even, 50, row), 0);
    EXPECT_EQ(Whole(row, 1), 150);
}

}  // namespace
}  // namespace oxdm::store::testing
