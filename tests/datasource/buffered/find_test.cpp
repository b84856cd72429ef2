// Finding rows: seeks on find values, the incremental search, walks with a
// test, find values typed as the start of a choice.

#include "tree_fixture.h"

namespace {
using Result = oxdmDataSource::CompareRowResult;
}  // namespace

// A seek lands on the first row at (or after) the find value; one past the
// last record goes to the new row and answers false.
TEST_F(BufferTest, FindGEAndFindGTLandOnTheSeekRow) {
    struct Case {
        const char* value;
        bool greater;
        bool found;
        const char* focus;  // "*" for the new row
    };
    const Case cases[] = {
        {"C0003", false, true, "C0003"}, {"C0003", true, true, "C0004"}, {"C00025", false, true, "C0003"},
        {"C0005", true, false, "*"},     {"C0009", false, false, "*"},
    };
    Seed(5);
    oxdmBufferedFileDataSource& buffer = Open(3);
    const short col = buffer.IndexForColumn("CUSTNO");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value);
        buffer.MoveToTop(0, true, false);
        ASSERT_TRUE(buffer.SetFindValue(col, CString(c.value)));
        DSRecorder recorder(buffer);
        EXPECT_EQ(c.greater ? buffer.FindGT() : buffer.FindGE(), c.found);
        EXPECT_EQ(buffer.IsNewRow() ? std::string("*") : Focus(), c.focus);
        EXPECT_GE(buffer.FocusRow(), 0) << "the window shows the found row";
        EXPECT_EQ(recorder.Count(oxdmDataSource::DSFocusChanged), 1);
    }
}

// The incremental search finds the first row that starts with the text in
// any case; a miss leaves the focus and the find value as they were.
TEST_F(BufferTest, FindSubstrFindsAPrefixAndAMissChangesNothing) {
    Seed(12);
    oxdmBufferedFileDataSource& buffer = Open(4);
    const short col = buffer.IndexForColumn("CUSTNO");
    buffer.SetFindValue(col, CString("C0002"));
    buffer.MoveDown(1, 0, true, true);

    EXPECT_TRUE(buffer.FindSubstr(col, "c001"));
    EXPECT_EQ(Focus(), "C0010");
    EXPECT_EQ(buffer.GetFindValueAsString(col).str(), "C0002");

    buffer.MoveToTop(0, true, true);
    buffer.MoveDown(2, 0, true, true);
    const std::string window = Window();
    EXPECT_FALSE(buffer.FindSubstr(col, "X"));
    EXPECT_EQ(Focus(), "C0003");
    EXPECT_EQ(Window(), window);
    EXPECT_EQ(buffer.GetFindValueAsString(col).str(), "C0002");

    // An empty text matches the first row at once.
    EXPECT_TRUE(buffer.FindSubstr(col, ""));
    EXPECT_EQ(Focus(), "C0001");
}

// FindRow walks in either direction; without stayOnFail a miss and an abort
// go back to the start, with it a miss stays at the end of the walk.
TEST_F(BufferTest, FindRowWalksBothWaysAndReturnsOnFailure) {
    struct Case {
        bool fromEnd;
        oxdmDataSource::Direction direction;
        const char* wanted;  // a row matching, "" none, "abort" aborts on C0004
        bool stayOnFail;
        bool found;
        const char* focus;
        int focusChanges;
    };
    const Case cases[] = {
        {true, oxdmDataSource::DirectionForward, "C0004", false, true, "C0004", 1},
        {true, oxdmDataSource::DirectionBackward, "C0002", false, true, "C0002", 1},
        {false, oxdmDataSource::DirectionBackward, "C0003", false, false, "C0002", 0},
        {true, oxdmDataSource::DirectionForward, "", false, false, "C0002", 0},
        {true, oxdmDataSource::DirectionForward, "", true, false, "*", 1},
        {true, oxdmDataSource::DirectionBackward, "", true, false, "C0001", 1},
        {true, oxdmDataSource::DirectionForward, "abort", true, false, "C0002", 0},
    };
    Seed(5);
    oxdmBufferedFileDataSource& buffer = Open(3);
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.wanted) + (c.direction ? " backward" : " forward"));
        buffer.MoveToTop(0, true, true);
        buffer.MoveDown(1, 0, true, true);
        int compared = 0;
        auto compare = [&](oxdmDataSource* source) {
            ++compared;
            if (source->IsNewRow()) return oxdmDataSource::CompareNoMatch;
            const std::string key = source->NewValueAsString(source->IndexForColumn("CUSTNO")).str();
            if (std::string(c.wanted) == "abort") {
                return key == "C0004" ? oxdmDataSource::CompareAbort : oxdmDataSource::CompareNoMatch;
            }
            return key == c.wanted ? oxdmDataSource::CompareMatch : oxdmDataSource::CompareNoMatch;
        };
        DSRecorder recorder(buffer);
        EXPECT_EQ(buffer.FindRow(c.fromEnd, CBFunctor1wRet<oxdmDataSource*, Result>(compare), c.stayOnFail, c.direction),
                  c.found);
        EXPECT_EQ(buffer.IsNewRow() ? std::string("*") : Focus(), c.focus);
        EXPECT_EQ(recorder.Count(oxdmDataSource::DSFocusChanged), c.focusChanges);
        EXPECT_GT(compared, 0);
    }
}

// A find value typed as the start of a choice takes that choice; an exact
// choice in other case wins over an earlier prefix.
TEST_F(BufferTest, SetFindValueTakesTheChoiceATextStarts) {
    Seed(1);
    oxdmBufferedFileDataSource& buffer = Open(1);
    const short col = buffer.IndexForColumn("STATUS");
    const std::pair<const char*, const char*> cases[] = {{"o", "On hold"}, {"CLOSED", "Closed"}, {"ac", "Active"}};
    for (const auto& [typed, choice] : cases) {
        EXPECT_TRUE(buffer.SetFindValue(col, CString(typed))) << typed;
        EXPECT_EQ(buffer.GetFindValueAsString(col).str(), choice) << typed;
    }
    EXPECT_TRUE(buffer.CanDoFastFind(buffer.IndexForColumn("CUSTNO")));
    EXPECT_FALSE(buffer.CanDoFastFind(col)) << "a choice is never sought at once";
    EXPECT_FALSE(buffer.CanDoFastFind(buffer.IndexForColumn("NAME"))) << "not a sort column";

    buffer.MoveToTop(0, true, true);
    buffer.CopyKeyColumnsToFindValues();
    EXPECT_EQ(buffer.GetFindValueAsString(buffer.IndexForColumn("CUSTNO")).str(), "C0001");
    EXPECT_EQ(buffer.GetFindValueAsString(buffer.IndexForColumn("NAME")).str(), "") << "not a key column";
}

// A find in a child stays within its parent's row: a value past the
// parent's last order goes to the new row and answers false, as a find past
// the table's end does in the root, though the next customer's order
// follows it in the index. The incremental search misses it the same way.
TEST_F(TreeTest, FindInAChildStaysWithinItsParentsRow) {
    struct Case {
        const char* value;
        bool greater;
        bool found;
        const char* focus;  // "*" for the new row
    };
    const Case cases[] = {
        {"O15", false, true, "O2"}, {"O1", true, true, "O2"}, {"O25", false, false, "*"}, {"O2", true, false, "*"},
    };
    SeedSales();
    BuildCustomerTree();
    oxdmBufferedFileDataSource& orders = *OpenTree(3).Children().at(0);
    orders.SetWindowSize(3);
    const short col = Field(orders, "ORDNO");
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.value) + (c.greater ? " GT" : " GE"));
        orders.MoveToTop(0, true, false);
        orders.CopyKeyColumnsToFindValues();
        ASSERT_TRUE(orders.SetFindValue(col, CString(c.value)));
        EXPECT_EQ(c.greater ? orders.FindGT() : orders.FindGE(), c.found);
        EXPECT_EQ(orders.IsNewRow() ? std::string("*") : Get(orders, "ORDNO"), c.focus);
        EXPECT_EQ(Rows(orders, "ORDNO"), "O1 O2 *") << "the window holds the customer's orders only";
    }
    orders.MoveToTop(0, true, false);
    EXPECT_FALSE(orders.FindSubstr(col, "O3"));
    EXPECT_EQ(Get(orders, "ORDNO"), "O1");
}
