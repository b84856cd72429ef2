// The buffer's bookmarks: moving back to a row, ranges over rows of the
// window, and the new row as the last position.

#include <memory>

#include "buffer_fixture.h"
#include "oxdm/datasource/bookmark.h"

TEST_F(BufferTest, BookmarkBringsTheFocusBack) {
    Seed(30);
    oxdmBufferedFileDataSource& buffer = Open(5);
    buffer.SetFocus(3, 0, true);
    std::unique_ptr<oxdmDSBookmark> mark(buffer.GetFocusRowBookmark());
    ASSERT_TRUE(mark->IsValid());
    buffer.SetWindowScroll(oxdmDataSource::ScrollBottom, 0);
    buffer.MoveToBottom(0, true, true);
    ASSERT_EQ(Focus(), "C0030");
    DSRecorder recorder(buffer);
    EXPECT_TRUE(buffer.GoToBookmark(*mark, true));
    EXPECT_EQ(Focus(), "C0004");
    EXPECT_EQ(Window(), "C0001 C0002 C0003 C0004 C0005");
    EXPECT_EQ(recorder.Count(oxdmDataSource::DSFocusChanged), 1);

    // A record that has gone: the bookmark fails and the buffer is on its top row.
    buffer.SetFocus(1, 0, true);
    std::unique_ptr<oxdmDSBookmark> gone(buffer.GetFocusRowBookmark());
    buffer_->MoveToBottom(0, true, true);
    DeleteRecord(2);
    EXPECT_FALSE(buffer.GoToBookmark(*gone, false));
    EXPECT_EQ(Focus(), "C0001");
    // Outside the window there is no position.
    std::unique_ptr<oxdmDSBookmark> outside(buffer.GetBookmark(7));
    EXPECT_FALSE(outside->IsValid());
    EXPECT_FALSE(buffer.GoToBookmark(*outside, false));
}

TEST_F(BufferTest, RangesOverWindowRows) {
    Seed(6);
    oxdmBufferedFileDataSource& buffer = Open(10);
    std::unique_ptr<oxdmDSBookmark> first(buffer.GetBookmark(1));
    std::unique_ptr<oxdmDSBookmark> range(first->MakeRange(4));
    ASSERT_NE(range, nullptr);
    EXPECT_TRUE(range->CanMultiSelect());
    const oxdmDSBookmark::InRangeState states[] = {
        oxdmDSBookmark::NotInRange,  oxdmDSBookmark::StartOfRange, oxdmDSBookmark::InsideRange,
        oxdmDSBookmark::InsideRange, oxdmDSBookmark::EndOfRange,   oxdmDSBookmark::NotInRange,
        oxdmDSBookmark::NotInRange};
    for (short row = 0; row < 7; ++row) EXPECT_EQ(range->InRange(row), states[row]) << row;
    EXPECT_TRUE(range->BeforeRange(0));
    EXPECT_TRUE(range->AfterRange(5));
    EXPECT_TRUE(range->AfterRange(6));  // the new row sorts after every record

    // The iteration delivers every row of the range in order.
    std::string walked;
    for (bool on = range->GotoFirst(); on; on = range->GotoNext()) walked += Focus() + " ";
    EXPECT_EQ(walked, "C0002 C0003 C0004 C0005 ");

    // Deleting from either end shrinks the range; a split leaves two parts.
    EXPECT_TRUE(range->Delete(1));
    EXPECT_EQ(range->InRange(2), oxdmDSBookmark::StartOfRange);
    std::unique_ptr<oxdmDSBookmark> after(range->Split(3));
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(range->InRange(2), oxdmDSBookmark::OnlyRowInRange);
    EXPECT_EQ(after->InRange(4), oxdmDSBookmark::OnlyRowInRange);
    EXPECT_EQ(after->InRange(3), oxdmDSBookmark::NotInRange);

    std::unique_ptr<oxdmDSBookmark> newRow(buffer.GetBookmark(6));
    std::unique_ptr<oxdmDSBookmark> otherNewRow(buffer.GetBookmark(6));
    EXPECT_TRUE(*newRow == *otherNewRow);
    EXPECT_TRUE(*first < *newRow);
    EXPECT_FALSE(*newRow < *first);
    EXPECT_TRUE(buffer.GoToBookmark(*newRow, false));
    EXPECT_TRUE(buffer.IsNewRow());
}
