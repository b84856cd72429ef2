// Sorting and finding in a memory table, and its bookmarks across a sort.

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "ds_recorder.h"
#include "oxdm/datasource/bookmark.h"
#include "oxdm/datasource/string_mem_data_source.h"

namespace {

using Table = std::vector<std::vector<CString>>;
using Less = CBFunctor2wRet<CString, CString, bool>;

// The straight insertion sort that defines a memory table's order.
std::vector<long> InsertionSort(const Table& rows, short col, bool ascending, const Less& less) {
    std::vector<long> index(rows.size());
    for (size_t i = 0; i < index.size(); ++i) index[i] = static_cast<long>(i);
    for (size_t i = 0; i < index.size(); ++i) {
        const long held = index[i];
        size_t j = i;
        while (j > 0) {
            const CString& above = rows[static_cast<size_t>(index[j - 1])][static_cast<size_t>(col)];
            const CString& mine = rows[static_cast<size_t>(held)][static_cast<size_t>(col)];
            if (ascending ? less(above, mine) : less(mine, above)) break;
            index[j] = index[j - 1];
            --j;
        }
        index[j] = held;
    }
    return index;
}

std::vector<long> DisplayOrder(oxdmStringMemDataSource& source, long rows) {
    std::vector<long> order;
    for (long relative = 0; relative < rows; ++relative) order.push_back(source.GetAbsoluteRow(relative));
    return order;
}

TEST(MemorySort, EqualKeysComeOutReversed) {
    oxdmStringMemDataSource source({{"b", "1"}, {"a", "2"}, {"b", "3"}, {"b", "4"}}, {"K", "N"}, {}, "r", false);
    source.Sort(0, true);
    EXPECT_EQ(DisplayOrder(source, 4), (std::vector<long>{1, 3, 2, 0}));
    source.Sort(0, false);
    EXPECT_EQ(DisplayOrder(source, 4), (std::vector<long>{3, 2, 0, 1}));
}

TEST(MemorySort, MatchesTheInsertionSortOnRandomTables) {
    std::mt19937 random(20240611);
    for (int round = 0; round < 60; ++round) {
        const int rows = static_cast<int>(random() % 200);
        const int spread = 1 + static_cast<int>(random() % 12);  // few distinct keys: many ties
        Table table;
        for (int r = 0; r < rows; ++r) {
            table.push_back({CString(std::to_string(random() % spread)), CString(std::string(1, 'a' + random() % spread))});
        }
        const bool autoNewRow = round % 2 == 0;
        oxdmStringMemDataSource source(table, {"N", "S"}, {}, "r", autoNewRow);
        DSChecker checker(source);
        const short col = static_cast<short>(round % 2);
        const bool ascending = round % 4 < 2;
        const bool numeric = round % 3 == 0;
        Less byText([](CString a, CString b) { return a.Compare(b) < 0; });
        if (numeric) source.SetSortFunction(col, Less([&source](CString a, CString b) { return source.IntCellCompare(a, b); }));
        const Less& less = numeric ? Less([](CString a, CString b) { return atoi(a) < atoi(b); }) : byText;
        source.Sort(col, ascending);
        std::vector<long> expected = InsertionSort(table, col, ascending, less);
        if (autoNewRow) expected.push_back(rows);  // the new row stays last
        EXPECT_EQ(DisplayOrder(source, static_cast<long>(expected.size())), expected) << "round " << round;
        EXPECT_EQ(checker.Failure(), "") << "round " << round;
    }
}

TEST(MemorySort, ABookmarkFindsItsRowAfterASortAndSortKeepsTheNewRowLast) {
    oxdmStringMemDataSource source({{"c"}, {"a"}, {"b"}}, {"K"}, {}, "r", true);
    source.SetWindowSize(4);
    std::unique_ptr<oxdmDSBookmark> mark(source.GetBookmark(0));  // "c"
    source.Sort(0, true);
    EXPECT_TRUE(source.IsNewRow(3));
    source.MoveToTop(0, true, false);
    ASSERT_TRUE(source.GoToBookmark(*mark, true));
    EXPECT_EQ(source.NewValueAsString(0), "c");
    EXPECT_EQ(source.FocusRow(), 2);
}

TEST(MemoryFind, EveryColumnMustPassOnItsOwn) {
    oxdmStringMemDataSource source({{"10", "b"}, {"20", "a"}, {"30", "c"}}, {"N", "S"}, {}, "r", false);
    source.SetWindowSize(3);
    source.SetFindValue(0, "15");
    source.SetFindValue(1, "b");
    EXPECT_TRUE(source.FindGT());  // 20/a is greater in N only; 30/c in both
    EXPECT_EQ(source.FocusRowAbsolute(), 2);
    EXPECT_TRUE(source.FindGE() && source.FocusRowAbsolute() == 2);
    source.SetFindValue(0, "9");  // numeric: 10 > 9 although "10" < "9" as text
    EXPECT_TRUE(source.FindGE());
    EXPECT_EQ(source.FocusRowAbsolute(), 0);
    source.SetFindValue(1, "d");
    EXPECT_FALSE(source.FindGE());
    EXPECT_EQ(source.FocusRowAbsolute(), 0);  // nothing moved
}

TEST(MemoryFind, AnEmptyFindTextIsAllDigitsAndComparesAgainstZero) {
    oxdmStringMemDataSource source({{"0"}, {"5"}}, {"N"}, {}, "r", false);
    EXPECT_TRUE(source.FindGT());
    EXPECT_EQ(source.FocusRowAbsolute(), 1);
}

TEST(MemoryFind, FindSubstrIgnoresCaseAndNeedsEveryColumnEqualToItsFindValue) {
    oxdmStringMemDataSource source({{"1", "Apple"}, {"2", "apricot"}, {"2", "Banana"}}, {"N", "S"}, {}, "r", false);
    source.SetWindowSize(2);
    DSRecorder rec(source);
    source.SetFindValue(0, "2");
    EXPECT_FALSE(source.FindSubstr(1, "AP"));  // the searched column's own find value is empty
    EXPECT_TRUE(rec.log.empty());
    source.SetFindValue(1, "apricot");
    EXPECT_TRUE(source.FindSubstr(1, "AP"));
    EXPECT_EQ(source.FocusRowAbsolute(), 1);
    EXPECT_EQ(rec.log, std::vector<std::string>{"change 0"});
    EXPECT_FALSE(source.FindSubstr(1, "apricots"));
    EXPECT_EQ(source.FocusRowAbsolute(), 1);
}

TEST(MemoryFind, FindRowWalksAndGoesBackOnAbort) {
    oxdmStringMemDataSource source({{"a"}, {"b"}, {"c"}, {"d"}}, {"K"}, {}, "r", false);
    source.SetWindowSize(4);
    source.SetFocusAbsolute(1, 0, true);
    using Compare = CBFunctor1wRet<oxdmDataSource*, oxdmDataSource::CompareRowResult>;
    Compare findC([](oxdmDataSource* ds) {
        return ds->NewValueAsString(0) == "c" ? oxdmDataSource::CompareMatch : oxdmDataSource::CompareNoMatch;
    });
    EXPECT_TRUE(source.FindRow(true, findC, false, oxdmDataSource::DirectionForward));
    EXPECT_EQ(source.FocusRowAbsolute(), 2);
    Compare abortOnB([](oxdmDataSource* ds) {
        return ds->NewValueAsString(0) == "b" ? oxdmDataSource::CompareAbort : oxdmDataSource::CompareNoMatch;
    });
    EXPECT_FALSE(source.FindRow(true, abortOnB, true, oxdmDataSource::DirectionBackward));
    EXPECT_EQ(source.FocusRowAbsolute(), 2);
    Compare never([](oxdmDataSource*) { return oxdmDataSource::CompareNoMatch; });
    EXPECT_FALSE(source.FindRow(false, never, true, oxdmDataSource::DirectionForward));
    EXPECT_EQ(source.FocusRowAbsolute(), 3);  // stays at the end
    EXPECT_FALSE(source.FindRow(true, never, false, oxdmDataSource::DirectionForward));
    EXPECT_EQ(source.FocusRowAbsolute(), 3);  // back where it began
}

TEST(MemoryWindow, ShrinkingKeepsTheFocusVisibleAndScrollFlagsFollow) {
    oxdmStringMemDataSource source({{"a"}, {"b"}, {"c"}, {"d"}, {"e"}}, {"K"}, {}, "r", false);
    source.SetWindowSize(3);
    EXPECT_FALSE(source.CanScrollUp());
    EXPECT_TRUE(source.CanScrollDown());
    source.SetFocus(2, 0, true);
    source.SetWindowSize(2);
    EXPECT_EQ(source.ScrolledRows(), 1);
    EXPECT_EQ(source.FocusRow(), 1);
    EXPECT_TRUE(source.CanScrollUp());
    EXPECT_EQ(source.SetWindowScroll(oxdmDataSource::ScrollBottom, 0), 2);
    EXPECT_DOUBLE_EQ(source.WindowScrollPercent(), 1.0);
    EXPECT_FALSE(source.CanScrollDown());
    EXPECT_EQ(source.CellValueAsString(0, 0), "d");
    source.SetWindowSize(10);
    EXPECT_EQ(source.ScrolledRows(), 0);
    EXPECT_EQ(source.NumWindowDataRows(), 5);
}

TEST(MemoryBookmark, RangesSplitsAndIteration) {
    oxdmStringMemDataSource source({{"a"}, {"b"}, {"c"}, {"d"}}, {"K"}, {}, "r", false);
    source.SetWindowSize(4);
    std::unique_ptr<oxdmDSBookmark> start(source.GetBookmark(0));
    std::unique_ptr<oxdmDSBookmark> range(start->MakeRange(3));
    ASSERT_TRUE(range);
    EXPECT_EQ(range->InRange(0), oxdmDSBookmark::StartOfRange);
    EXPECT_EQ(range->InRange(2), oxdmDSBookmark::InsideRange);
    EXPECT_EQ(range->InRange(3), oxdmDSBookmark::EndOfRange);
    EXPECT_EQ(start->InRange(0), oxdmDSBookmark::OnlyRowInRange);
    std::unique_ptr<oxdmDSBookmark> tail(range->Split(1));
    ASSERT_TRUE(tail);
    EXPECT_EQ(range->InRange(0), oxdmDSBookmark::OnlyRowInRange);
    EXPECT_EQ(tail->InRange(2), oxdmDSBookmark::StartOfRange);
    EXPECT_TRUE(tail->AfterRange(0) == false && tail->BeforeRange(0));
    ASSERT_TRUE(tail->GotoFirst());
    EXPECT_EQ(source.FocusRowAbsolute(), 2);
    EXPECT_TRUE(tail->GotoNext());
    EXPECT_EQ(source.FocusRowAbsolute(), 3);
    EXPECT_FALSE(tail->GotoNext());
    EXPECT_TRUE(*start == *range);
    EXPECT_TRUE(*start < *tail);
}

}  // namespace
