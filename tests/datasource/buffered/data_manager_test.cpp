// A customer with orders edited through the data manager as a screen does,
// the record file checked after each step.

#include "buffer_fixture.h"
#include "oxdm/common/shell/box_styles.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/datasource/buffered/data_manager.h"
#include "oxdm/datasource/buffered/role.h"
#include "oxdm/datasource/focus_row_mgr.h"

namespace {

// Refuses every save at its validation.
class RefusingRole : public oxdmBufferedDataSourceRole {
public:
    int DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent*) override {
        return event == oxdmDataSource::RowValidate ? 1 : 0;
    }
};

class DataManagerTest : public BufferTest {
protected:
    // The query of a customer screen: customers with their orders.
    void BuildQuery() {
        query_ = std::make_unique<oxdmQuery>("sales");
        oxdmQueryNode* customers = query_->SetRoot(Spec(), 1, 0, "cust", kAllRights | oxdmQueryNode::StyleCreateFile);
        customers->AddAllColumns(true, true, false);
        oxdmQueryNode* orders = customers->AddChildNode(Spec(), 2, "CUSTNO=CUSTNO", 1, "orders",
                                                     kAllRights | oxdmQueryNode::StyleCascadedDelete);
        ASSERT_NE(orders, nullptr);
        orders->AddAllColumns(true, true, false);
    }
    // Every order on file in key order, "ORDNO/CUSTNO" each.
    std::string OrderRecords() const {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, 2, 0);
        oxdmTableDef* orders = oxdmDictionaryManager::Instance().Table("ord", 2);
        std::unique_ptr<oxData> order(orders->Column("ORDNO")->CreateData());
        std::unique_ptr<oxData> customer(orders->Column("CUSTNO")->CreateData());
        std::string text;
        for (auto status = cursor.FetchFirst(false); status == oxioStatus::Success; status = cursor.FetchNext(false)) {
            cursor.GetColumnData("ORDNO", *order);
            cursor.GetColumnData("CUSTNO", *customer);
            if (!text.empty()) text += ' ';
            text += order->Format().str() + "/" + customer->Format().str();
        }
        return text;
    }
    static std::string Get(oxdmBufferedFileDataSource& buffer, const char* column) {
        return buffer.NewValueAsString(buffer.IndexForColumn(column)).str();
    }
    static void Set(oxdmBufferedFileDataSource& buffer, const char* column, const char* text) {
        ASSERT_TRUE(buffer.ObserverSetNewValue(buffer.IndexForColumn(column), text, 0, true)) << column;
    }
};

}  // namespace

TEST_F(DataManagerTest, NewCustomerWithOrdersThroughTheManager) {
    Seed(2);
    BuildQuery();
    oxdmDataManager manager(query_.get(), &task_, nullptr);
    oxdmBufferedFileDataSource* customers = manager.RootBuffer();
    ASSERT_NE(customers, nullptr);
    oxdmBufferedFileDataSource* orders = customers->BufferForNode(CString("orders"));
    ASSERT_NE(orders, nullptr);
    ASSERT_EQ(customers->Children().size(), 1u);
    EXPECT_EQ(orders, customers->Children()[0]);
    EXPECT_EQ(orders->Parent(), customers);

    // A new customer; an order under it is refused until the customer is on file.
    EXPECT_EQ(manager.AppendRow(nullptr), 1);
    ASSERT_TRUE(customers->IsNewRow());
    Set(*customers, "CUSTNO", "C0003");
    Set(*customers, "NAME", "Newco");
    orders->MoveToBottom(0, true, false);
    ASSERT_TRUE(orders->IsNewRow());
    Set(*orders, "ORDNO", "O1");
    const size_t boxes = Boxes().size();
    EXPECT_FALSE(orders->ValidateRow(0, true));
    ASSERT_EQ(Boxes().size(), boxes + 1);
    EXPECT_EQ(Boxes().back().text.str(), "Cannot save this row until the " + customers->Cursor()->RowName().str() +
                                             " has been added.");
    EXPECT_EQ(OrderRecords(), "");
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0002:Name 2");

    // ReserveKey puts the customer on file; its orders can then be saved,
    // each under it.
    ASSERT_TRUE(customers->ReserveKey());
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0002:Name 2 C0003:Newco");
    orders->MoveToBottom(0, true, false);
    Set(*orders, "ORDNO", "O1");
    EXPECT_EQ(manager.AppendRow(orders->QueryRow()), 1) << "saves O1, then a new row";
    ASSERT_TRUE(orders->IsNewRow());
    Set(*orders, "ORDNO", "O2");
    EXPECT_TRUE(manager.CommitData()) << "the parent's save saves its children";
    EXPECT_EQ(OrderRecords(), "O1/C0003 O2/C0003");
    EXPECT_FALSE(customers->IsKeyReserved());

    // Moving between customers requeries the orders.
    EXPECT_EQ(manager.ReadFirst(nullptr), 1);
    EXPECT_EQ(Get(*customers, "CUSTNO"), "C0001");
    EXPECT_FALSE(orders->HasData() && !orders->IsNewRow(0));
    EXPECT_EQ(manager.ReadLast(nullptr), 1);
    EXPECT_EQ(Get(*customers, "CUSTNO"), "C0003");
    orders->MoveToTop(0, true, true);
    EXPECT_EQ(Get(*orders, "ORDNO"), "O1");

    // A save that the role refuses keeps the row and still answers 1.
    customers->SetRole(new RefusingRole);
    Set(*customers, "NAME", "Changed");
    EXPECT_EQ(manager.ReadPrev(nullptr), 1);
    EXPECT_EQ(Get(*customers, "CUSTNO"), "C0003");
    EXPECT_EQ(Get(*customers, "NAME"), "Changed");
    EXPECT_EQ(manager.RevertRow(nullptr), 1);
    EXPECT_EQ(Get(*customers, "NAME"), "Newco");
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0002:Name 2 C0003:Newco");

    // Deleting the customer takes its orders with it.
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    EXPECT_EQ(manager.DeleteRow(nullptr), 1);
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0002:Name 2");
    EXPECT_EQ(OrderRecords(), "");
}

// Without a query nothing can be done, and deleting says so.
TEST_F(DataManagerTest, ManagerWithoutQueryRefusesEverything) {
    oxdmDataManager manager(nullptr, &task_, nullptr);
    EXPECT_EQ(manager.RootBuffer(), nullptr);
    oxdmDSFocusRowMgr* none = nullptr;
    EXPECT_FALSE(manager.CanReadFirst(none) || manager.CanReadPrev(none) || manager.CanReadNext(none) ||
                 manager.CanReadLast(none) || manager.CanAppendRow(none) || manager.CanDeleteRow(none));
    EXPECT_EQ(manager.ReadNext(none), 1);
    EXPECT_TRUE(manager.CommitData());
    const size_t boxes = Boxes().size();
    EXPECT_EQ(manager.DeleteRow(none), 1);
    ASSERT_EQ(Boxes().size(), boxes + 1);
    EXPECT_EQ(Boxes().back().text.str(), "This row cannot be deleted");
    EXPECT_EQ(Boxes().back().title.str(), "Warning");
    EXPECT_EQ(Boxes().back().style, 0x40u);
}

// Managers made from one another share the root buffer until the last goes.
TEST_F(DataManagerTest, SharedRootBufferLivesUntilTheLastManager) {
    Seed(1);
    BuildQuery();
    oxdmQuery extra("extra");  // outlives the managers' other queries
    auto first = std::make_unique<oxdmDataManager>(query_.get(), &task_, nullptr);
    oxdmDataManager second(first.get(), query_.get());
    EXPECT_EQ(second.RootBuffer(), first->RootBuffer());
    EXPECT_EQ(second.GetOtherQueries(), first->GetOtherQueries());
    first.reset();
    ASSERT_NE(second.RootBuffer(), nullptr);
    EXPECT_TRUE(second.CanAppendRow(nullptr));
    EXPECT_EQ(second.ReadFirst(nullptr), 1);
    EXPECT_EQ(Get(*second.RootBuffer(), "CUSTNO"), "C0001");

    oxdmOtherQueries* others = second.GetOtherQueries();
    extra.SetRoot(Spec(), 1, 0, "people", kAllRights)->AddAllColumns(true, true, false);
    others->AddExtraQuery(&extra);
    EXPECT_EQ(others->BufferForNode("nothing", "people", &task_, nullptr), nullptr);
    oxdmBufferedFileDataSource* byQuery = others->BufferForNode("extra", "people", &task_, nullptr);
    ASSERT_NE(byQuery, nullptr);
    EXPECT_EQ(others->BufferForNode("people", "people", &task_, nullptr), byQuery) << "by its root table's label";
}
