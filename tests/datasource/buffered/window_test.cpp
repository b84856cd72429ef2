// The row window: filling, scrolling, sizing and positioning, checked
// against the plain list of keys the table holds, and the records each
// operation reads.

#include <algorithm>

#include "buffer_fixture.h"
#include "read_counter.h"

namespace {

// The keys from..to (1-based, inclusive), "*" appended for the new row.
std::string Keys(int from, int to, bool newRow = false) {
    std::string text;
    for (int n = from; n <= to; ++n) text += (text.empty() ? "" : " ") + std::string("C") + std::to_string(10000 + n).substr(1);
    if (newRow) text += text.empty() ? "*" : " *";
    return text;
}

}  // namespace

TEST_F(BufferTest, EmptyTableHoldsOnlyTheNewRowWhenThereIsOne) {
    Seed(0);
    for (const int rights : {kAllRights, kReadOnly}) {
        oxdmBufferedFileDataSource& buffer = Open(5, rights);
        const bool newRow = rights == kAllRights;
        SCOPED_TRACE(newRow ? "with a new row" : "without");
        EXPECT_EQ(Window(), newRow ? "*" : "");
        EXPECT_EQ(buffer.HasData(), newRow);
        EXPECT_EQ(buffer.HasFocusRow(), newRow);
        EXPECT_EQ(buffer.IsNewRow(), newRow);
        EXPECT_EQ(buffer.FocusRow(), newRow ? 0 : -1);
        EXPECT_FALSE(buffer.CanScrollUp());
        EXPECT_FALSE(buffer.CanScrollDown());
        EXPECT_EQ(buffer.MoveToTop(0, true, false), newRow);
    }
}

TEST_F(BufferTest, TableOfExactlyTheWindowSize) {
    Seed(5);
    oxdmBufferedFileDataSource& buffer = Open(5);
    EXPECT_EQ(Window(), Keys(1, 5));
    // The new row lies beyond the window and can still scroll in.
    EXPECT_TRUE(buffer.CanScrollDown());
    EXPECT_EQ(buffer.SetWindowScroll(oxdmDataSource::ScrollDown, 1), 1);
    EXPECT_EQ(Window(), Keys(2, 5, true));
    EXPECT_FALSE(buffer.CanScrollDown());
    EXPECT_TRUE(buffer.CanScrollUp());
    EXPECT_EQ(buffer.FocusRow(), -1);
    EXPECT_TRUE(buffer.HasFocusRow());

    Open(5, kReadOnly);
    EXPECT_EQ(Window(), Keys(1, 5));
    EXPECT_EQ(buffer_->SetWindowScroll(oxdmDataSource::ScrollDown, 1), 0);
    EXPECT_EQ(Window(), Keys(1, 5));
    EXPECT_EQ(buffer_->SetWindowScroll(static_cast<oxdmDataSource::WindowScrollType>(5), 0), -1);
}

// Each scroll checked against the table's order: the window is always a run
// of consecutive rows, and the scroll answers say what lies beyond it.
TEST_F(BufferTest, ScrollsFollowTheTableOrder) {
    Seed(40);
    oxdmBufferedFileDataSource& buffer = Open(7);
    struct Step {
        oxdmDataSource::WindowScrollType type;
        short rows;
        short answer;
        int first;  // key of window row 0; 0 when it is the new row
    };
    const Step steps[] = {
        {oxdmDataSource::ScrollDown, 3, 3, 4},   {oxdmDataSource::ScrollDown, 10, 10, 14},
        {oxdmDataSource::ScrollUp, 2, 2, 12},    {oxdmDataSource::ScrollUp, 20, 11, 1},
        {oxdmDataSource::ScrollUp, 1, 0, 1},     {oxdmDataSource::ScrollBottom, 0, 1, 35},
        {oxdmDataSource::ScrollDown, 1, 0, 35},  {oxdmDataSource::ScrollUp, 4, 4, 31},
        {oxdmDataSource::ScrollTop, 0, 1, 1},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(std::to_string(step.type) + " by " + std::to_string(step.rows));
        EXPECT_EQ(buffer.SetWindowScroll(step.type, step.rows), step.answer);
        const int last = step.first + 6;
        EXPECT_EQ(Window(), last > 40 ? Keys(step.first, 40, true) : Keys(step.first, last));
        EXPECT_EQ(buffer.CanScrollUp(), step.first > 1);
        EXPECT_EQ(buffer.CanScrollDown(), last <= 40);
        EXPECT_EQ(buffer.MoreRowsThanWindowSize(), true);
    }
    EXPECT_EQ(buffer.WindowScrollPercent(), 0.0);
    const double percent = buffer.SetWindowScrollPercent(0.5);
    EXPECT_GT(percent, 0.3);
    EXPECT_LT(percent, 0.7);
    EXPECT_EQ(buffer.NumWindowDataRows(), 7);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(BufferTest, ShrinkingTheWindowKeepsTheFocusRow) {
    Seed(12);
    for (const short focus : {1, 8}) {
        oxdmBufferedFileDataSource& buffer = Open(10);
        buffer.SetFocus(focus, 0, true);
        const std::string key = Focus();
        buffer.SetWindowSize(3);
        SCOPED_TRACE(key);
        EXPECT_EQ(buffer.NumWindowDataRows(), 3);
        ASSERT_GE(buffer.FocusRow(), 0);
        EXPECT_EQ(buffer.CellValueAsString(buffer.FocusRow(), 0).str(), key);
        EXPECT_EQ(buffer.CanScrollUp(), focus > 2);
        EXPECT_TRUE(buffer.CanScrollDown());
        buffer.SetWindowSize(20);
        EXPECT_EQ(Window(), Keys(1, 12, true));
    }
}

TEST_F(BufferTest, FocusRecordOutsideTheWindow) {
    Seed(30);
    oxdmBufferedFileDataSource& buffer = Open(5);
    buffer.SetFocus(2, 0, true);
    buffer.SetWindowScroll(oxdmDataSource::ScrollDown, 10);
    EXPECT_EQ(buffer.FocusRow(), -1);
    EXPECT_TRUE(buffer.HasFocusRow());
    EXPECT_EQ(Focus(), "C0003");
    // Wanted anywhere: it comes back at the top, since it lies above.
    EXPECT_EQ(buffer.SetWindowScroll(oxdmDataSource::ScrollToFocus, -1), 0);
    EXPECT_EQ(Window(), Keys(3, 7));
    // Wanted on row 3 of the window: only two rows lie above it.
    EXPECT_EQ(buffer.SetWindowScroll(oxdmDataSource::ScrollToFocus, 3), 2);
    EXPECT_EQ(Window(), Keys(1, 5));
}

TEST_F(BufferTest, FetchNoMoreFromTheRowFilterStopsOneFillOnly) {
    Seed(20);
    oxdmBufferedFileDataSource& buffer = Open(8);
    // The filter reads the row under the cursor through NewValue.
    std::vector<std::string> keys;
    bool stopped = false;
    BindRow(oxdmRowCallbacks::cbRowFilter, oxdmCallbackMgr::Functor([&](oxdmCallbackInfo*) {
                keys.push_back(Focus());  // the row under the cursor
                const int n = std::stoi(keys.back().substr(1));
                if (n == 9 && !stopped) {
                    stopped = true;
                    buffer.FetchNoMore();
                }
                return n % 2;
            }));
    buffer.ReQuery();
    EXPECT_EQ(Window(), "C0002 C0004 C0006 C0008");
    EXPECT_TRUE(std::find(keys.begin(), keys.end(), "C0009") != keys.end());
    // The flag does not outlive the fill.
    buffer.SetWindowSize(12);
    EXPECT_EQ(Window(), "C0002 C0004 C0006 C0008 C0010 C0012 C0014 C0016 C0018 C0020 *");
}

TEST_F(BufferTest, GoneRecordIsReportedAndTheWindowRefetched) {
    Seed(6);
    oxdmBufferedFileDataSource& buffer = Open(6);
    DeleteRecord(3);
    buffer.SetFocus(2, 0, true);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, "Someone has changed this data, it will be refreshed.");
    EXPECT_EQ(Boxes()[0].title, "Warning");
    EXPECT_EQ(Window(), "C0001 C0002 C0004 C0005 C0006 *");
    EXPECT_EQ(Focus(), "C0001");
}

// A window reads the rows asked for and one step beyond, whatever the size
// of the table: the same count over 60 records and over 600.
TEST_F(BufferTest, RowsReadDoNotGrowWithTheTable) {
    struct Counts {
        long requery, down, bottom, up, move, percent;
    };
    auto measure = [this](int records) {
        Seed(records);
        oxdmBufferedFileDataSource* buffer = nullptr;
        Counts counts{};
        counts.requery = RowsReadBy([&] { buffer = &Open(10); });
        counts.down = RowsReadBy([&] { buffer->SetWindowScroll(oxdmDataSource::ScrollDown, 10); });
        counts.bottom = RowsReadBy([&] { buffer->SetWindowScroll(oxdmDataSource::ScrollBottom, 0); });
        counts.up = RowsReadBy([&] { buffer->SetWindowScroll(oxdmDataSource::ScrollUp, 5); });
        buffer->SetFocus(3, 0, true);
        counts.move = RowsReadBy([&] { buffer->MoveDown(1, 0, true, false); });
        counts.percent = RowsReadBy([&] { buffer->SetWindowScrollPercent(0.5); });
        return counts;
    };
    const Counts small = measure(60);
    buffer_.reset();
    std::filesystem::remove(Path());
    const Counts large = measure(600);
    EXPECT_EQ(small.requery, large.requery);
    EXPECT_EQ(small.down, large.down);
    EXPECT_EQ(small.bottom, large.bottom);
    EXPECT_EQ(small.up, large.up);
    EXPECT_EQ(small.move, large.move);
    EXPECT_EQ(small.percent, large.percent);
    // Ten rows asked for: a few reads of bookkeeping beyond them, no walk.
    EXPECT_LE(large.down, 10 + 4);
    EXPECT_LE(large.bottom, 10 + 4);
    EXPECT_LE(large.up, 5 + 4);
    EXPECT_LE(large.move, 4);
}
