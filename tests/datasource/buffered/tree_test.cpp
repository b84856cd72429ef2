// The tree of buffers: child buffers follow their parent's focus, a child's
// focus row data holds its ancestors' cells, buffers are found by node,
// callbacks and suppression spread over the tree, one-to-one rows are
// looked up when their join column changes, and a column can be re-read.

#include <functional>

#include "oxdm/datasource/bookmark.h"
#include "oxdm/datasource/buffered/role.h"
#include "oxdm/datasource/cell_on_focus_row.h"
#include "oxdm/datasource/focus_row_mgr.h"
#include "tree_fixture.h"

namespace {

class BufferTreeTest : public TreeTest {
protected:
    // Orders ("orders") with their customer joined one-to-one ("customer",
    // its NAME only) and their lines ("lines").
    void BuildOrderTree() {
        query_ = std::make_unique<oxdmQuery>("entry");
        oxdmQueryNode* orders = query_->SetRoot(Spec(), 2, 0, "orders", kAllRights | oxdmQueryNode::StyleCreateFile);
        orders->AddAllColumns(true, true, false);
        oxdmQueryNode* customer = orders->AddChildNode(Spec(), 1, "CUSTNO=CUSTNO", 0, "customer", kAllRights);
        ASSERT_NE(customer, nullptr);
        customer->AddColumns("NAME");
        ASSERT_NE(orders->AddChildNode(Spec(), 3, "ORDNO=ORDNO", 0, "lines", kAllRights), nullptr);
        ASSERT_EQ(orders->OneToOnes().size(), 1u);
        ASSERT_EQ(orders->OneToManys().size(), 1u);
    }
    // The customer tree opened with windows of five rows at every level.
    oxdmBufferedFileDataSource& OpenCustomerTree(int rootRights = kAllRights) {
        BuildCustomerTree();
        query_->Root()->SetStyle(rootRights | oxdmQueryNode::StyleCreateFile);
        oxdmBufferedFileDataSource& customers = OpenTree(5);
        Orders().SetWindowSize(5);
        Lines().SetWindowSize(5);
        customers.ReQuery();
        return customers;
    }
    oxdmBufferedFileDataSource& Orders() const { return *buffer_->Children().at(0); }
    oxdmBufferedFileDataSource& Lines() const { return *Orders().Children().at(0); }
};

// Notes the row events it hears and answers RowBeforeValidate with `answer`.
class NotingRole : public oxdmBufferedDataSourceRole {
public:
    NotingRole(int answer, std::vector<int>* heard) : answer_(answer), heard_(heard) {}
    int DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent*) override {
        if (event != oxdmDataSource::RowBeforeValidate && event != oxdmDataSource::RowValidate) return 0;
        heard_->push_back(event);
        return event == oxdmDataSource::RowBeforeValidate ? answer_ : 0;
    }

private:
    int answer_;
    std::vector<int>* heard_;
};

}  // namespace

// One child buffer per one-to-many node, each requeried exactly once by
// every kind of move of its parent, and showing only the rows of the
// parent's focus row.
TEST_F(BufferTreeTest, EachMoveOfTheParentRequeriesEachChildOnce) {
    SeedSales();
    oxdmBufferedFileDataSource& customers = OpenCustomerTree();
    EXPECT_EQ(Orders().Parent(), &customers);
    EXPECT_EQ(Lines().Root(), &customers);
    const std::unique_ptr<oxdmDSBookmark> first(customers.GetBookmark(0));
    struct Move {
        const char* name;
        std::function<void()> run;
        const char* orders;
        const char* lines;
    };
    const Move moves[] = {
        {"MoveDown", [&] { customers.MoveDown(1, 0, true, true); }, "O3 *", "1 *"},
        {"MoveUp", [&] { customers.MoveUp(1, 0, true); }, "O1 O2 *", "1 2 *"},
        {"SetFocus", [&] { customers.SetFocus(1, 0, true); }, "O3 *", "1 *"},
        {"GoToBookmark", [&] { customers.GoToBookmark(*first, true); }, "O1 O2 *", "1 2 *"},
        {"MoveToBottom", [&] { customers.MoveToBottom(0, true, false); }, "*", "*"},
        {"MoveToTop", [&] { customers.MoveToTop(0, true, true); }, "O1 O2 *", "1 2 *"},
        {"RefetchRow", [&] { customers.RefetchRow(); }, "O1 O2 *", "1 2 *"},
        {"ReQuery", [&] { customers.ReQuery(); }, "O1 O2 *", "1 2 *"},
    };
    for (const Move& move : moves) {
        SCOPED_TRACE(move.name);
        DSRecorder orders(Orders()), lines(Lines());
        move.run();
        EXPECT_EQ(orders.Count(oxdmDataSource::DSAllChanged), 1);
        EXPECT_EQ(lines.Count(oxdmDataSource::DSAllChanged), 1);
        EXPECT_EQ(Rows(Orders(), "ORDNO"), move.orders);
        EXPECT_EQ(Rows(Lines(), "LINENO"), move.lines);
    }

    // A move in a child leaves its parent alone and requeries its own child.
    DSRecorder parent(customers), lines(Lines());
    ASSERT_EQ(Orders().MoveDown(2, 0, true, false), 2);
    ASSERT_TRUE(Orders().IsNewRow());
    EXPECT_EQ(parent.Count(oxdmDataSource::DSAllChanged), 0);
    EXPECT_EQ(lines.Count(oxdmDataSource::DSAllChanged), 1);
    EXPECT_EQ(Rows(Lines(), "LINENO"), "*");
}

// A parent without a row leaves its children nothing that could be saved.
TEST_F(BufferTreeTest, AChildOfAParentWithoutRowsWritesNothing) {
    oxdmBufferedFileDataSource& customers = OpenCustomerTree(kReadOnly);
    EXPECT_FALSE(customers.HasFocusRow());
    EXPECT_EQ(Rows(Orders(), "ORDNO"), "*");
    ASSERT_TRUE(Orders().IsNewRow());
    Type(Orders(), "ORDNO", "O9");
    EXPECT_FALSE(Orders().ValidateRow(0, true));
    ASSERT_FALSE(Boxes().empty());
    EXPECT_EQ(Boxes().back().text.str(), "'Customer number' on the Order is required.");
    EXPECT_EQ(OrderRecords(), "");
}

// A child's focus row data holds its own cells and those of every ancestor,
// each cell bound to the buffer that owns the column.
TEST_F(BufferTreeTest, AChildReadsItsAncestorsCellsByColumnId) {
    SeedSales();
    oxdmBufferedFileDataSource& customers = OpenCustomerTree();
    for (oxdmBufferedFileDataSource* owner : {&customers, &Orders(), &Lines()}) {
        for (short col = 0; col < owner->NumColumns(); ++col) {
            SCOPED_TRACE(owner->NodeLabel().str() + "." + owner->ColID(col).str());
            oxdmDSCellOnFocusRow* cell = Lines().QueryRow()->Data().Column(owner->ColID(col));
            ASSERT_NE(cell, nullptr);
            EXPECT_EQ(cell->NewValue(), owner->NewValue(col));
            if (owner == &Lines()) {
                EXPECT_EQ(Lines().ColumnData(col), cell);
            }
        }
    }
    // A write through the ancestor's cell edits the ancestor.
    oxdmDSCellOnFocusRow* name = Lines().QueryRow()->Data().Column("NAME");
    ASSERT_TRUE(name->SetNewValue(CString("Renamed"), true));
    EXPECT_EQ(Get(customers, "NAME"), "Renamed");
    EXPECT_TRUE(customers.IsRowChanged());
    EXPECT_FALSE(Lines().IsRowChanged());
}

// By node label, by a node of another query over the same tables, and
// through one-to-one nodes, which share their parent's buffer.
TEST_F(BufferTreeTest, BufferForNodeMatchesTablesByName) {
    SeedSales();
    BuildOrderTree();
    oxdmBufferedFileDataSource& orders = OpenTree(5);
    oxdmBufferedFileDataSource* lines = orders.Children().at(0);
    oxdmQuery other("other");
    oxdmQueryNode* otherLines = other.SetRoot(Spec(), 3, 0, "elsewhere", kAllRights);
    struct Case {
        const char* label;
        oxdmBufferedFileDataSource* expected;
    };
    for (const Case& c : {Case{"orders", &orders}, Case{"customer", &orders}, Case{"lines", lines},
                          Case{"nothing", nullptr}}) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(orders.BufferForNode(CString(c.label)), c.expected);
        EXPECT_EQ(lines->BufferForNode(CString(c.label)), c.expected) << "from the child";
    }
    ASSERT_NE(otherLines, nullptr);
    EXPECT_EQ(orders.BufferForNode(*otherLines), lines);
}

// Callbacks bound at the root reach every buffer of the tree by its node
// label; removing the owner's binding removes it everywhere.
TEST_F(BufferTreeTest, CallbacksBoundAtTheRootReachTheChildren) {
    SeedSales();
    oxdmBufferedFileDataSource& customers = OpenCustomerTree();
    std::vector<std::string> log;
    auto note = [&log](const char* what) {
        return oxdmCallbackMgr::Functor([&log, what](oxdmCallbackInfo*) {
            log.emplace_back(what);
            return 0;
        });
    };
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetRowCallback("lines", oxdmRowCallbacks::cbRowValidate, note("lines validate"));
    mgr.SetRowCallback("orders", oxdmRowCallbacks::cbRowValidate, note("orders validate"));
    mgr.SetColCallback("QTY", oxdmColCallbacks::cbColAfterChange, note("qty changed"));
    customers.SetCallbacks(this, mgr, nullptr);

    Type(Lines(), "QTY", "5");
    EXPECT_TRUE(customers.ValidateRow(0, true));
    EXPECT_EQ(log, (std::vector<std::string>{"qty changed", "lines validate"}));

    customers.RemoveCallbacks(this);
    log.clear();
    Type(Lines(), "QTY", "6");
    EXPECT_TRUE(customers.ValidateRow(0, true));
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(Sql("SELECT CAST(QTY AS INTEGER) FROM t3 WHERE ORDNO = 'O1' AND LINENO = 1"), "6");
}

// Suppression goes down the tree; lifting it tells every buffer once.
TEST_F(BufferTreeTest, SuppressionSpreadsOverTheTree) {
    SeedSales();
    oxdmBufferedFileDataSource& customers = OpenCustomerTree();
    DSRecorder parent(customers), lines(Lines());
    customers.SupressNotification(true);
    EXPECT_TRUE(Orders().IsNotificationSupressed());
    EXPECT_TRUE(Lines().IsNotificationSupressed());
    customers.MoveDown(1, 0, true, true);
    EXPECT_TRUE(lines.codes.empty());
    customers.SupressNotification(false);
    customers.SupressNotification(false);
    EXPECT_FALSE(Lines().IsNotificationSupressed());
    EXPECT_EQ(parent.Count(oxdmDataSource::DSAllChanged), 1);
    EXPECT_EQ(lines.Count(oxdmDataSource::DSAllChanged), 1);
}

// A role hears only what no callback answered; a non-zero answer to
// RowBeforeValidate stops the save; a null role leaves the former in place.
TEST_F(BufferTreeTest, TheRoleHearsWhatNoCallbackAnswered) {
    SeedSales();
    oxdmBufferedFileDataSource& customers = OpenCustomerTree();
    std::vector<int> heard;
    Orders().SetRole(new NotingRole(1, &heard));
    Orders().SetRole(nullptr);
    Type(Orders(), "TOTAL", "12");
    EXPECT_FALSE(customers.ValidateRow(0, true));
    EXPECT_EQ(heard, (std::vector<int>{oxdmDataSource::RowBeforeValidate}));

    heard.clear();
    Orders().SetRole(new NotingRole(0, &heard));
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetRowCallback("orders", oxdmRowCallbacks::cbRowValidate,
                       oxdmCallbackMgr::Functor([](oxdmCallbackInfo*) { return 1; }));
    customers.SetCallbacks(this, mgr, nullptr);
    EXPECT_FALSE(customers.ValidateRow(0, true));
    EXPECT_EQ(heard, (std::vector<int>{oxdmDataSource::RowBeforeValidate})) << "the callback took RowValidate";
    EXPECT_EQ(Sql("SELECT CAST(TOTAL AS INTEGER) FROM t2 WHERE ORDNO = 'O1'"), "0");
}

// A changed join column brings the joined customer's columns along, on a
// record and on the new row; other columns look nothing up.
TEST_F(BufferTreeTest, AChangedJoinColumnLooksUpTheOneToOneRow) {
    SeedSales();
    BuildOrderTree();
    oxdmBufferedFileDataSource& orders = OpenTree(5);
    for (bool newRow : {false, true}) {
        SCOPED_TRACE(newRow);
        if (newRow) {
            ASSERT_TRUE(orders.MoveToBottom(0, true, false));
            ASSERT_TRUE(orders.IsNewRow());
        }
        DSRecorder recorder(orders);
        Type(orders, "TOTAL", "7");
        EXPECT_EQ(recorder.Count(oxdmDataSource::DSRowChanged), 0);
        Type(orders, "CUSTNO", "C0002");
        EXPECT_EQ(recorder.Count(oxdmDataSource::DSRowChanged), 1);
        EXPECT_EQ(Get(orders, "NAME"), "Name 2");
        EXPECT_EQ(Get(orders, "CUSTNO"), "C0002") << "the typed value stays";
    }
    Type(orders, "ORDNO", "O4");
    ASSERT_TRUE(orders.ValidateRow(0, true));
    EXPECT_EQ(OrderRecords(), "O1/C0001 O2/C0001 O3/C0002 O4/C0002");
    EXPECT_EQ(CustomerRecords(), "C0001:Name 1 C0002:Name 2");
}

// RefreshColumn re-reads one column from the cursor into all three sets
// and the window, and says so for that column only.
TEST_F(BufferTreeTest, RefreshColumnRereadsOneColumn) {
    Seed(3);
    oxdmBufferedFileDataSource& buffer = Open(5);
    buffer.SetFocus(1, 0, true);
    const short name = buffer.IndexForColumn("NAME");
    Type(buffer, "CITY", "Bergen");
    std::unique_ptr<oxData> theirs(buffer.NewValue(name)->Clone());
    ASSERT_TRUE(theirs->SetVal(CString("Theirs"), nullptr));
    ASSERT_TRUE(buffer.ColumnForIndex(name)->SetValue(*theirs));
    DSRecorder recorder(buffer);
    buffer.RefreshColumn(name);
    EXPECT_EQ(buffer.NewValueAsString(name), "Theirs");
    EXPECT_EQ(buffer.SavedValueAsString(name), "Theirs");
    EXPECT_EQ(buffer.OldValueAsString(name), "Theirs");
    EXPECT_EQ(Window("NAME"), "Name 1 Theirs Name 3 *");
    EXPECT_EQ(Focus("CITY"), "Bergen") << "other columns keep their edits";
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"change " + std::to_string(oxdmDataSource::DSColChanged) +
                                                      " col=" + std::to_string(name)}));
}
