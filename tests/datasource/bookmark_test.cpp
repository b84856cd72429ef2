// The contract's values and the bookmark handle.

#include <gtest/gtest.h>

#include <memory>

#include "oxdm/datasource/bookmark.h"
#include "oxdm/datasource/data_source.h"
#include "oxdm/datasource/string_mem_data_source.h"

namespace {

TEST(DataSourceContract, EnumerationsCarryTheirBindingValues) {
    EXPECT_EQ(oxdmDataSource::RowValidate, 0);
    EXPECT_EQ(oxdmDataSource::RowBeforeValidate, 8);
    EXPECT_EQ(oxdmDataSource::FocusRowMoved, 9);
    EXPECT_EQ(oxdmDataSource::RowFilter, 14);
    EXPECT_EQ(oxdmDataSource::ColValidate, 17);
    EXPECT_EQ(oxdmDataSource::DeleteNoPrompt, 776);
    EXPECT_EQ(oxdmDataSource::RevertInstead, 778);
    EXPECT_EQ(oxdmDataSource::ScrollToFocus, 4);
    EXPECT_EQ(oxdmDataSource::CompareAbort, 2);
    EXPECT_EQ(oxdmDataSource::DSRowStateChanged, 6);
    EXPECT_EQ(oxdmDataSource::DSNeedsRefetch, 8);
    EXPECT_EQ(oxdmDSBookmark::EndOfRange, 4);
}

TEST(DSBookmark, AnEmptyHandleAnswersFalseNotInRangeAndNull) {
    oxdmDSBookmark empty;
    oxdmDSBookmark other;
    EXPECT_FALSE(empty == other);
    EXPECT_FALSE(empty < other);
    EXPECT_FALSE(empty.IsValid());
    EXPECT_FALSE(empty.CanMultiSelect());
    EXPECT_FALSE(empty.GotoFirst());
    EXPECT_FALSE(empty.GotoNext());
    EXPECT_FALSE(empty.BeforeRange(0));
    EXPECT_FALSE(empty.AfterRange(other));
    EXPECT_EQ(empty.InRange(0), oxdmDSBookmark::NotInRange);
    EXPECT_FALSE(empty.Delete(0));
    EXPECT_EQ(empty.Split(0), nullptr);
    EXPECT_EQ(empty.MakeRange(other), nullptr);
    EXPECT_EQ(empty.GetC3Range(), 0);
}

TEST(DSBookmark, CopiesShareOneBody) {
    oxdmStringMemDataSource source({{"a"}, {"b"}}, {"K"}, {}, "r", false);
    std::unique_ptr<oxdmDSBookmark> mark(source.GetBookmark(1));
    ASSERT_TRUE(mark);
    oxdmDSBookmark copy = *mark;
    EXPECT_EQ(copy.Impl(), mark->Impl());
    mark.reset();
    EXPECT_TRUE(copy.IsValid());  // the body lives while one copy does
    EXPECT_TRUE(copy.GotoFirst());
    EXPECT_EQ(source.FocusRowAbsolute(), 1);
}

TEST(DSBookmark, BookmarksOfTwoSourcesNeverMeet) {
    oxdmStringMemDataSource one({{"a"}, {"b"}}, {"K"}, {}, "r", false);
    oxdmStringMemDataSource two({{"a"}, {"b"}}, {"K"}, {}, "r", false);
    std::unique_ptr<oxdmDSBookmark> a(one.GetBookmark(0));
    std::unique_ptr<oxdmDSBookmark> b(two.GetBookmark(0));
    std::unique_ptr<oxdmDSBookmark> a2(one.GetFocusRowBookmark());
    EXPECT_TRUE(*a == *a2);
    EXPECT_FALSE(*a == *b);
    EXPECT_FALSE(*a < *b);
    EXPECT_EQ(a->InRange(*b), oxdmDSBookmark::NotInRange);
    EXPECT_EQ(a->MakeRange(*b), nullptr);
    EXPECT_FALSE(one.GoToBookmark(*b, true));
}

}  // namespace
