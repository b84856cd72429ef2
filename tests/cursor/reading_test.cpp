// Walking a cursor tree: outer joins, depth-first order both ways, ends,
// counted moves, key searches, filters, indexes, bookmarks of rows and the
// bookmark stack, revert and relative position.

#include "cursor_fixture.h"
#include "oxdm/base/exception.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/cursor/oxio_cursor_bookmark.h"
#include "oxdm/query/filter.h"

namespace {

class ReadingTest : public CursorTest {
protected:
    void SetUp() override {
        CursorTest::SetUp();
        SeedSales();
        BuildQuery();
    }
    // The row the tree stands on: customer, order, line number.
    std::string Row() {
        return Get(*tree_, "CUSTNO") + "/" + Get(*Orders(), "ORDNO") + "/" + Get(*Lines(), "LINENO");
    }
    std::vector<std::string> Walk(bool forward) {
        std::vector<std::string> rows;
        for (bool on = forward ? tree_->First(true) : tree_->Last(true); on;
             on = forward ? tree_->Next(true) : tree_->Prev(true))
            rows.push_back(Row());
        return rows;
    }
    const std::vector<std::string> kDepthFirst{"C1/O1/1", "C1/O1/2", "C1/O2/0", "C2//0", "C3/O3/1"};
};

TEST_F(ReadingTest, OneToManyChildrenAreWalkedDepthFirstAndRowsWithoutDetailsStayRows) {
    Tree();
    EXPECT_EQ(Walk(true), kDepthFirst);
    std::vector<std::string> backwards(kDepthFirst.rbegin(), kDepthFirst.rend());
    EXPECT_EQ(Walk(false), backwards);
    // Without children only the root moves, and its details are not read.
    std::vector<std::string> roots;
    for (bool on = tree_->First(false); on; on = tree_->Next(false)) roots.push_back(Get(*tree_, "CUSTNO"));
    EXPECT_EQ(roots, (std::vector<std::string>{"C1", "C2", "C3"}));
}

TEST_F(ReadingTest, AOneToOneChildIsAnOuterJoin) {
    Tree();
    ASSERT_TRUE(tree_->First(false));
    EXPECT_EQ(Get(*Extra(), "REGION"), "North");
    ASSERT_TRUE(tree_->Next(false));
    EXPECT_EQ(Get(*tree_, "NAME"), "Bob");
    EXPECT_EQ(Get(*Extra(), "REGION"), "");  // C2 has no custom fields: blank, still a row
    EXPECT_FALSE(Extra()->IsKeyOK());
}

TEST_F(ReadingTest, EndsStayOnTheLastAndFirstRow) {
    Tree();
    ASSERT_TRUE(tree_->Last(true));
    EXPECT_EQ(Row(), "C3/O3/1");
    EXPECT_FALSE(tree_->Next(true));
    EXPECT_EQ(Row(), "C3/O3/1");
    EXPECT_TRUE(tree_->IsRowValid());
    ASSERT_TRUE(tree_->Prev(false));
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C2");
    ASSERT_TRUE(tree_->First(true));
    EXPECT_FALSE(tree_->Prev(true));
    EXPECT_EQ(Row(), "C1/O1/1");
    EXPECT_TRUE(tree_->Next(true));
    EXPECT_EQ(Row(), "C1/O1/2");
}

TEST_F(ReadingTest, CountedMovesAnswerRowsMovedSignedByDirection) {
    Tree();
    ASSERT_TRUE(tree_->First(true));
    EXPECT_EQ(tree_->Next(3, true), 3);
    EXPECT_EQ(Row(), "C2//0");
    EXPECT_EQ(tree_->Next(-2, true), -2);
    EXPECT_EQ(Row(), "C1/O1/2");
    EXPECT_EQ(tree_->Prev(5, true), 1);
    EXPECT_EQ(Row(), "C1/O1/1");
    EXPECT_EQ(tree_->Prev(-10, true), -4);
    EXPECT_EQ(Row(), "C3/O3/1");
    EXPECT_EQ(tree_->Next(0, true), 0);
    EXPECT_EQ(Row(), "C3/O3/1");
}

TEST_F(ReadingTest, ChildMovesNoFurtherWhenItsParentsKeyNoLongerMatches) {
    Tree();
    ASSERT_TRUE(tree_->First(true));
    ASSERT_TRUE(Set(*tree_, "CUSTNO", "C3"));  // the parent's key, edited in place
    EXPECT_FALSE(Orders()->IsKeyOK());
    EXPECT_FALSE(Orders()->Next(false));
    EXPECT_EQ(Get(*Orders(), "ORDNO"), "O1");
}

TEST_F(ReadingTest, KeySearchesUseTheKeyInTheValuesAndSyncTheChildren) {
    Tree();
    ASSERT_TRUE(Set(*tree_, "CUSTNO", "C3"));
    ASSERT_TRUE(tree_->EQ(true));
    EXPECT_EQ(Row(), "C3/O3/1");
    EXPECT_EQ(Get(*tree_, "NAME"), "Cid");
    Set(*tree_, "CUSTNO", "C15");
    ASSERT_TRUE(tree_->GE(false));
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C2");
    Set(*tree_, "CUSTNO", "C2");
    ASSERT_TRUE(tree_->GT(false));
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C3");
    Set(*tree_, "CUSTNO", "C9");
    EXPECT_FALSE(tree_->EQ(false));
    EXPECT_FALSE(tree_->GT(false));
}

TEST_F(ReadingTest, RevertRereadsAChangedRowAndLowersTheFlag) {
    Tree();
    ASSERT_TRUE(tree_->First(true));
    ASSERT_TRUE(Set(*tree_, "NAME", "Changed"));
    ASSERT_TRUE(Set(*Lines(), "QTY", "99"));
    EXPECT_TRUE(tree_->Changed());
    tree_->Revert(true);
    EXPECT_FALSE(tree_->Changed());
    EXPECT_FALSE(Lines()->Changed());
    EXPECT_EQ(Get(*tree_, "NAME"), "Ann");
    EXPECT_EQ(Get(*Lines(), "QTY"), "5");
    // Without a reread the values stay as edited, only the flag drops.
    Set(*tree_, "NAME", "Kept");
    tree_->Revert(false);
    EXPECT_FALSE(tree_->Changed());
    EXPECT_EQ(Get(*tree_, "NAME"), "Kept");
}

TEST_F(ReadingTest, BookmarksNameRowsOfTheTree) {
    Tree();
    ASSERT_TRUE(tree_->First(true));
    std::unique_ptr<oxdmCursorBookmark> first(tree_->CreateBookmark());
    ASSERT_TRUE(tree_->Next(false));
    std::unique_ptr<oxdmCursorBookmark> second(tree_->CreateBookmark());
    std::unique_ptr<oxdmCursorBookmark> copy(second->Clone());
    EXPECT_TRUE(first->LessThan(second.get()));
    EXPECT_FALSE(first->GreaterThan(second.get()));
    EXPECT_TRUE(second->GreaterThan(first.get()));
    EXPECT_TRUE(second->EqualTo(copy.get()));
    EXPECT_FALSE(second->GreaterThan(copy.get()));
    EXPECT_FALSE(second->LessThan(copy.get()));

    ASSERT_TRUE(tree_->Last(true));
    ASSERT_TRUE(first->GoTo());
    EXPECT_EQ(Get(*tree_, "NAME"), "Ann");
    EXPECT_EQ(Get(*Extra(), "REGION"), "North");  // one-to-ones come along
    EXPECT_TRUE(tree_->Next(false));
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C2");  // and the walk goes on from there
}

TEST_F(ReadingTest, BookmarkOfAGoneRowFailsAndLeavesTheChildClearedWithItsKey) {
    Tree();
    ASSERT_TRUE(tree_->First(true));
    ASSERT_TRUE(Orders()->Next(false));  // C1's second order, O2
    oxdmOXIOCursorBookmark mark(*Orders(), true, false);
    ASSERT_EQ(InChild([&] {
                  std::unique_ptr<oxioDataFile> file = OpenFile();
                  oxioCursor cursor(*file, 2, 0);
                  oxAlpha ordno("O2");
                  cursor.AttachColumn("ORDNO", ordno);
                  return cursor.FetchEQ(false) == oxioStatus::Success && cursor.Delete() == oxioStatus::Success ? 0
                                                                                                                : 1;
              }),
              0);
    ASSERT_TRUE(Orders()->First(false));
    EXPECT_FALSE(mark.GoTo());
    EXPECT_EQ(Get(*Orders(), "ORDNO"), "");
    EXPECT_EQ(Get(*Orders(), "CUSTNO"), "C1");
}

TEST_F(ReadingTest, BookmarkTakenWithoutMatchingKeyEqualsNothing) {
    Tree();
    ASSERT_TRUE(tree_->First(true));
    Set(*tree_, "CUSTNO", "C2");
    oxdmOXIOCursorBookmark stray(*Orders(), true, false);
    EXPECT_FALSE(stray.EqualTo(&stray));
    EXPECT_FALSE(stray.LessThan(&stray));
    // GoTo looks the row up by the stuffed key: C2 has no order.
    EXPECT_FALSE(stray.GoTo());
}

TEST_F(ReadingTest, CountingKeepsThePositionAndCountsDetailsWhenAsked) {
    Tree();
    ASSERT_TRUE(tree_->First(true));
    ASSERT_TRUE(tree_->Next(false));
    EXPECT_EQ(tree_->NumRows(false), 3);
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C2");
    EXPECT_EQ(tree_->NumRows(true), 5);
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C2");
    ASSERT_TRUE(tree_->Next(false));
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C3");
}

TEST_F(ReadingTest, FilterOfTheQueryNodeAndSetFilterSkipRows) {
    customers_->AddColumns("NAME,CITY");
    customers_->SetFilter(oxdmFilter("CITY", oxdmFilter::EQ, oxAlpha("Oslo")));
    Tree();
    EXPECT_EQ(tree_->NumRows(false), 2);
    tree_->SetFilter(oxdmFilter("NAME", oxdmFilter::EQ, oxAlpha("Bob")));
    ASSERT_TRUE(tree_->First(false));
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C2");
    EXPECT_FALSE(tree_->Next(false));
    tree_->SetFilter(oxdmFilter());
    EXPECT_EQ(tree_->NumRows(false), 3);
}

TEST_F(ReadingTest, SetIndexRebindsTheValuesToTheNewOrder) {
    oxdmQuery orders("orders");
    oxdmQueryNode* root = orders.SetRoot(Spec(), 2, 0, "ord", 0x0f);
    oxdmOXIOCursorNode node(*root, &task_, nullptr);
    Attach(node, "ORDNO");
    Attach(node, "CUSTNO");
    ASSERT_TRUE(node.Last(false));
    EXPECT_EQ(Get(node, "ORDNO"), "O3");
    node.SetIndex(1);
    EXPECT_EQ(node.Index(), 1);
    ASSERT_EQ(node.SortColumns().size(), 2u);
    Set(node, "CUSTNO", "C1");
    Set(node, "ORDNO", "");
    ASSERT_TRUE(node.GE(false));
    EXPECT_EQ(Get(node, "ORDNO"), "O1");
    EXPECT_THROW(node.SetIndex(9), oxdmException);
}

TEST_F(ReadingTest, RelativePositionMovesTheRootAndSyncsItsOneToOnes) {
    Tree();
    EXPECT_EQ(tree_->SetRelativePosition(1.0), 0);
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C3");
    EXPECT_EQ(Get(*Extra(), "REGION"), "");
    EXPECT_GT(tree_->GetRelativePosition(), 0.5);
    EXPECT_EQ(tree_->SetRelativePosition(0.0), 0);
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C1");
    EXPECT_EQ(Get(*Extra(), "REGION"), "North");
    // A child sent outside its parent's orders can't step back in from
    // there: it is left cleared, at the start.
    ASSERT_TRUE(tree_->Last(true));  // C3, order O3
    EXPECT_EQ(Orders()->SetRelativePosition(0.0), oxioStatus::AtStart);
    EXPECT_EQ(Get(*Orders(), "ORDNO"), "");
}

}  // namespace
