// Indexes out of range answer false, -1, null or the empty text, and
// change nothing.

#include <gtest/gtest.h>

#include <memory>

#include "ds_recorder.h"
#include "oxdm/datasource/bookmark.h"
#include "oxdm/datasource/oxdata_mem_data_source.h"
#include "oxdm/datasource/string_mem_data_source.h"

namespace {

TEST(MemoryBadInput, ColumnsOutOfRange) {
    oxdmStringMemDataSource source({{"a", "1"}}, {"K", "N"}, {}, "r", false);
    DSRecorder rec(source);
    for (short col : {short(-1), short(2), short(300)}) {
        EXPECT_EQ(source.ColLabel(col), "");
        EXPECT_EQ(source.NewValueAsString(col), "");
        EXPECT_EQ(source.CellValueAsString(0, col), "");
        EXPECT_FALSE(source.SetNewValue(col, "x"));
        EXPECT_FALSE(source.ObserverSetNewValue(col, "x", 0, true));
        EXPECT_FALSE(source.SetFindValue(col, "x"));
        EXPECT_FALSE(source.FindSubstr(col, "x"));
        EXPECT_FALSE(source.IsReadOnly(col));
        EXPECT_FALSE(source.IsPrefillOn(col));
        EXPECT_FALSE(source.IsColumnChanged(col));
        EXPECT_FALSE(source.ValidateColumn(col));
        EXPECT_FALSE(source.SetCellValueAbsolute(0, col, "x"));
        source.SetReadOnly(col, true, 0, true);
        source.SetDefaultValue(col, "x");
        source.Sort(col, true);
        source.SetSortFunction(col, {});
    }
    EXPECT_EQ(source.IndexForColumn("nothing"), -1);
    EXPECT_TRUE(rec.log.empty());
    EXPECT_EQ(source.NewValueAsString(0), "a");
}

TEST(MemoryBadInput, RowsOutOfRange) {
    oxdmStringMemDataSource source({{"a"}, {"b"}}, {"K"}, {}, "r", false);
    source.SetWindowSize(2);
    for (long row : {-5L, -1L, 2L, 40000L}) {
        EXPECT_EQ(source.GetAbsoluteRow(row), -1);
        EXPECT_EQ(source.GetRelativeRow(row), -1);
        EXPECT_EQ(source.GetAbsRowFromClient(row), -1);
        EXPECT_EQ(source.GetCellValueAbsolute(row, 0), "");
        EXPECT_FALSE(source.SetCellValueAbsolute(row, 0, "x"));
        EXPECT_EQ(source.CellValueAsString(static_cast<short>(row), 0), "");
        EXPECT_EQ(source.GetBookmark(static_cast<short>(row)), nullptr);
        EXPECT_FALSE(source.IsNewRow(static_cast<short>(row)));
    }
    source.SetFocusAbsolute(7, 0, true);  // no such row: the focus stays
    EXPECT_EQ(source.FocusRowAbsolute(), 0);
    source.SetFocus(99, 0, true);  // a client row past the end goes to the last
    EXPECT_EQ(source.FocusRowAbsolute(), 1);
    source.SetFocus(-7, 0, true);
    EXPECT_FALSE(source.HasFocusRow());
    EXPECT_FALSE(source.RevertRow(0, true));
    EXPECT_FALSE(source.DeleteRow(0, true));
    EXPECT_EQ(source.GetFocusRowBookmark(), nullptr);
    EXPECT_EQ(source.MoveUp(1, 0, true), 0);
    EXPECT_EQ(source.MoveDown(-3, 0, true, false), 0);
    EXPECT_DOUBLE_EQ(source.SetWindowScrollPercent(-2.0), 0.0);
}

TEST(MemoryBadInput, AStaleBookmarkFailsAndMovesNothing) {
    oxdmStringMemDataSource source({{"a"}, {"b"}, {"c"}}, {"K"}, {}, "r", false);
    std::unique_ptr<oxdmDSBookmark> last(source.GetBookmark(2));
    source.ReplaceAllRows({{"x"}});
    EXPECT_FALSE(last->IsValid());
    EXPECT_FALSE(source.GoToBookmark(*last, true));
    EXPECT_EQ(source.FocusRowAbsolute(), 0);
}

TEST(MemoryBadInput, RaggedRowsArePaddedAndEmptyTablesAnswerQuietly) {
    oxdmStringMemDataSource ragged({{"a"}, {"b", "2", "extra"}}, {"K", "N"}, {}, "r", false);
    EXPECT_EQ(ragged.CellValueAsString(0, 1), "");
    EXPECT_EQ(ragged.CellValueAsString(1, 1), "2");
    ragged.Sort(1, true);
    EXPECT_EQ(ragged.GetAbsoluteRow(0), 0);

    oxdmOXDataMemDataSource empty({}, {}, {}, "r", false);
    EXPECT_EQ(empty.NumColumns(), 0);
    EXPECT_FALSE(empty.FindGE());
    EXPECT_FALSE(empty.MoveToTop(0, true, false));
    EXPECT_FALSE(empty.FindRow(true, CBFunctor1wRet<oxdmDataSource*, oxdmDataSource::CompareRowResult>(), true,
                               oxdmDataSource::DirectionForward));
    EXPECT_TRUE(empty.ValidateRow(0, true));  // nothing changed, nothing to do
    EXPECT_EQ(empty.NewValue(0), nullptr);
    EXPECT_EQ(empty.ColValue(0), nullptr);
}

}  // namespace
