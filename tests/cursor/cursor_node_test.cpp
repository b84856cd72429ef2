// What the cursor node itself does: status words, attaching columns once,
// reading and writing values through the tree, the changed flag.

#include "cursor_fixture.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/query/column_base.h"

namespace {

TEST(StatusMsgTest, EveryStatusHasItsWordsAndOthersAreUnknown) {
    EXPECT_EQ(oxdmCursorNode::StatusMsg(oxioStatus::Success), "the operation succeeded");
    EXPECT_EQ(oxdmCursorNode::StatusMsg(oxioStatus::InUse), "it is in use by another user");
    EXPECT_EQ(oxdmCursorNode::StatusMsg(oxioStatus::InvalidKey), "the key is invalid or a duplicate");
    EXPECT_EQ(oxdmCursorNode::StatusMsg(oxioStatus::TooManyOpenFiles), "too many files are open");
    for (int status = 0; status <= 19; ++status) {
        CString words = oxdmCursorNode::StatusMsg(static_cast<oxioStatus::Status>(status));
        EXPECT_EQ(words.Find("unknown error"), status == 10 ? 0 : -1) << status;
    }
    // The conflict has no words on purpose; the spelling is the system's own.
    EXPECT_EQ(oxdmCursorNode::StatusMsg(oxioStatus::DataConflict), "unknown error 20 occured");
    EXPECT_EQ(oxdmCursorNode::StatusMsg(oxioStatus::Reserved), "unknown error 10 occured");
    EXPECT_EQ(oxdmCursorNode::StatusMsg(static_cast<oxioStatus::Status>(-3)), "unknown error -3 occured");
    EXPECT_EQ(oxdmCursorNode::StatusMsg(static_cast<oxioStatus::Status>(32000)), "unknown error 32000 occured");
}

class CursorNodeTest : public CursorTest {
protected:
    void SetUp() override {
        CursorTest::SetUp();
        SeedSales();
        BuildQuery();
        Tree();
        ASSERT_TRUE(tree_->First(true));
    }
};

TEST_F(CursorNodeTest, AddingAColumnTwiceKeepsOneValue) {
    const oxdmColumnDef* name = Def(*tree_, "NAME");
    oxData* held = tree_->DatumForColumn(name);
    ASSERT_NE(held, nullptr);
    tree_->AddColumn(name);
    EXPECT_EQ(tree_->DatumForColumn(name), held);
    // The join columns were attached by construction, on both sides.
    EXPECT_NE(tree_->DatumForColumn(Def(*tree_, "CUSTNO")), nullptr);
    EXPECT_NE(Orders()->DatumForColumn(Def(*Orders(), "CUSTNO")), nullptr);
    EXPECT_EQ(Orders()->FindSourceColumn(Def(*Orders(), "CUSTNO")), Def(*tree_, "CUSTNO"));
    EXPECT_EQ(Orders()->FindSourceColumn(Def(*Orders(), "TOTAL")), nullptr);
}

TEST_F(CursorNodeTest, SettingAnEqualValueLeavesTheRowUnchanged) {
    oxAlpha same("Ann"), other("Zed");
    EXPECT_TRUE(tree_->SetValueForColumn(Def(*tree_, "NAME"), &same));
    EXPECT_FALSE(tree_->Changed());
    EXPECT_TRUE(tree_->SetValueForColumn(Def(*tree_, "NAME"), &other));
    EXPECT_TRUE(tree_->Changed());
    EXPECT_FALSE(Lines()->Changed());
    // A column of a node of the tree is set through the root.
    oxAlpha region("West");
    EXPECT_TRUE(tree_->SetValueForColumn(Def(*Extra(), "REGION"), &region));
    EXPECT_TRUE(Extra()->Changed());
    EXPECT_FALSE(tree_->SetValueForColumn(Def(*Extra(), "CREDIT"), &region));  // not attached
    EXPECT_FALSE(tree_->SetValueForColumn(nullptr, &region));
}

TEST_F(CursorNodeTest, ReadingAColumnOutsideTheTreeLeavesTheOutputAlone) {
    oxAlpha out("untouched");
    EXPECT_TRUE(tree_->ValueForColumn(Def(*Orders(), "ORDNO"), &out));
    EXPECT_EQ(out.GetVal(), "O1");
    out.SetVal(CString("untouched"));
    oxdmQuery other("other");
    oxdmQueryNode* lines = other.SetRoot(Spec(), 3, 0, "", 0x0f);
    oxdmOXIOCursorNode lonely(*lines, &task_, nullptr);
    EXPECT_FALSE(lonely.ValueForColumn(Def(*tree_, "NAME"), &out));
    EXPECT_FALSE(lonely.ValueForColumn(nullptr, &out));
    EXPECT_EQ(out.GetVal(), "untouched");
}

TEST_F(CursorNodeTest, ANullChoiceReadsAsItsDefault) {
    oxChoice none(0);
    ASSERT_TRUE(tree_->SetValueForColumn(Def(*tree_, "STATUS"), &none));
    EXPECT_TRUE(tree_->DatumForColumn(Def(*tree_, "STATUS"))->IsNull());
    oxChoice out(3);
    ASSERT_TRUE(tree_->ValueForColumn(Def(*tree_, "STATUS"), &out));
    EXPECT_EQ(out.GetVal(), 1);
}

TEST_F(CursorNodeTest, TheTreeAnswersFromItsQuery) {
    EXPECT_EQ(tree_->ID(), "cust");
    EXPECT_EQ(tree_->RowName(), "Customer");
    EXPECT_EQ(Lines()->Root(), tree_.get());
    EXPECT_EQ(Lines()->Parent(), Orders());
    EXPECT_EQ(tree_->Node(Ord(3)), Lines());
    EXPECT_EQ(tree_->Node(lines_), Lines());
    EXPECT_TRUE(Extra()->HasCustomFields());
    EXPECT_FALSE(tree_->HasCustomFields());
    EXPECT_EQ(Orders()->Task(), &task_);
    EXPECT_EQ(Orders()->GetFileManager(), tree_->GetFileManager());
    orders_->SetCanUpdate(false);
    bool result = true;
    Orders()->AddColumn(Def(*Orders(), "ODATE"));
    orders_->AddColumn("ODATE", 1);
    tree_->CanUpdate("ODATE", result);
    EXPECT_FALSE(result);  // the column belongs to a node without the right
    result = true;
    Orders()->CanUpdate("ODATE", result);
    EXPECT_TRUE(result);  // the node's own column: the caller decides
    std::vector<oxdmColumnBase*> columns;
    Orders()->Columns(columns);
    ASSERT_FALSE(columns.empty());
    EXPECT_EQ(columns[0]->ID(), "ODATE");
    // A node's columns are its own and its one-to-ones', not its details'.
    EXPECT_NE(Orders()->Column("ODATE"), nullptr);
    EXPECT_EQ(tree_->Column("ODATE"), nullptr);
}

}  // namespace
