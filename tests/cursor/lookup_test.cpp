// Orders with their customer as a one-to-one child: an unchanged row still
// saves its one-to-ones, and a changed join column makes the child follow
// (the lookup), through a stand-in for the data source's columns.

#include <map>

#include "cursor_fixture.h"
#include "oxdm/cursor/lookup_source.h"

namespace {

// Columns 0.. of a stand-in data source: the table columns given, whose
// values are those the cursor tree holds.
class TreeColumns : public oxdmLookupSource {
public:
    TreeColumns(oxdmCursorNode& tree, std::vector<const oxdmColumnDef*> columns)
        : tree_(tree), columns_(std::move(columns)) {
        former_ = oxdmSetLookupSource(this);
    }
    ~TreeColumns() override { oxdmSetLookupSource(former_); }

    const oxdmColumnDef* ColumnDef(oxdmBufferedFileDataSource&, short column) override {
        return column >= 0 && column < static_cast<short>(columns_.size()) ? columns_[column] : nullptr;
    }
    const oxData* ColumnValue(oxdmBufferedFileDataSource&, const oxdmColumnDef* def) override {
        oxdmCursorNode* node = tree_.Node(def->Table());
        return node ? node->DatumForColumn(def) : nullptr;
    }
    oxdmBufferedFileDataSource* Source() { return reinterpret_cast<oxdmBufferedFileDataSource*>(&tag_); }

private:
    oxdmCursorNode& tree_;
    std::vector<const oxdmColumnDef*> columns_;
    oxdmLookupSource* former_;
    char tag_ = 0;
};

class LookupTest : public CursorTest {
protected:
    void SetUp() override {
        CursorTest::SetUp();
        SeedSales();
        oxdmQueryNode* orders = query_.SetRoot(Spec(), 2, 0, "orders", 0x0f);
        customer_ = orders->AddChildNode(Spec(), 1, "CUSTNO=CUSTNO", 0, "customer", 0x0f);
        ASSERT_EQ(orders->OneToOnes().size(), 1u);
        tree_ = std::make_unique<oxdmOXIOCursorNode>(*orders, &task_, nullptr);
        Attach(*tree_, "ORDNO");
        Attach(*tree_, "TOTAL");
        Attach(Customer(), "NAME");
        ASSERT_TRUE(tree_->First(true));  // O1 of C1
    }
    oxdmOXIOCursorNode& Customer() { return *tree_->OneToOnes()[0]; }
    oxdmQueryNode* customer_ = nullptr;
};

TEST_F(LookupTest, AnUnchangedRowStillSavesItsOneToOnes) {
    EXPECT_EQ(Get(Customer(), "NAME"), "Ann");
    ASSERT_TRUE(Set(Customer(), "NAME", "Anna"));
    EXPECT_FALSE(tree_->Changed());
    CString error;
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::Success) << error;
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Anna");
    EXPECT_FALSE(Customer().Changed());
}

TEST_F(LookupTest, InsertOfARowWritesAChangedOneToOneOrUpdatesIt) {
    ASSERT_TRUE(Set(*tree_, "ORDNO", "O9"));
    Set(Customer(), "NAME", "Ann again");
    CString error;
    // The customer exists: its insert fails quietly and it is updated.
    EXPECT_EQ(tree_->Insert(error, true), oxioStatus::Success) << error;
    EXPECT_EQ(Stored(2, "O9", "CUSTNO"), "C1");
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Ann again");
}

TEST_F(LookupTest, AChangedJoinColumnMakesTheOneToOneFollow) {
    const oxdmColumnDef* custno = Def(*tree_, "CUSTNO");
    TreeColumns columns(*tree_, {Def(*tree_, "TOTAL"), custno});
    std::vector<oxdmQueryNode*> nodes;
    tree_->FindLookupNodes(columns.Source(), 1, nodes);
    EXPECT_TRUE(nodes.empty());  // the customer stands on C1 already
    tree_->FindLookupNodes(columns.Source(), 0, nodes);
    EXPECT_TRUE(nodes.empty());  // no child joins on TOTAL

    ASSERT_TRUE(Set(*tree_, "CUSTNO", "C2"));
    tree_->FindLookupNodes(columns.Source(), 1, nodes);
    ASSERT_EQ(nodes.size(), 1u);
    EXPECT_EQ(nodes[0], customer_);
    tree_->DoAutoLookup(columns.Source(), 1, nodes);
    EXPECT_EQ(Get(Customer(), "NAME"), "Bob");
    EXPECT_EQ(Get(Customer(), "CUSTNO"), "C2");

    // Without the data source's face nothing can be found.
    oxdmLookupSource* face = oxdmSetLookupSource(nullptr);
    Set(*tree_, "CUSTNO", "C3");
    nodes.clear();
    tree_->FindLookupNodes(columns.Source(), 1, nodes);
    EXPECT_TRUE(nodes.empty());
    oxdmSetLookupSource(face);
}

}  // namespace
