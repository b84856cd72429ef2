// A customer with orders and lines edited end to end through the data
// manager, as a screen with a customer form and two grids does it. After
// every scenario the record file is read with SQLite itself and compared
// with what the scenario must leave: no record lost, none doubled, none
// half written, no lock left behind.

#include <sys/wait.h>
#include <unistd.h>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/datasource/buffered/data_manager.h"
#include "oxdm/datasource/focus_row_mgr.h"
#include "tree_fixture.h"

namespace {

// What the record file holds, in the forms of TreeTest's readers.
struct FileState {
    std::string customers;
    std::string orders;
    std::string lines;
};

const FileState kSeeded{"C0001:Name 1 C0002:Name 2", "O1/C0001 O2/C0001 O3/C0002", "O1/1 O1/2 O3/1"};

class OrderEntryTest : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        SeedSales();
        BuildCustomerTree();
    }

    // The screen: a manager over the customer tree, the customer form one
    // row high, the order and line grids five rows each.
    std::unique_ptr<oxdmDataManager> OpenScreen() {
        auto manager = std::make_unique<oxdmDataManager>(query_.get(), &task_, nullptr);
        customers_ = manager->RootBuffer();
        orders_ = customers_->Children().at(0);
        lines_ = orders_->Children().at(0);
        orders_->SetWindowSize(5);
        lines_->SetWindowSize(5);
        customers_->ReQuery();
        return manager;
    }

    void ExpectFile(const FileState& expected) const {
        EXPECT_EQ(CustomerRecords(), expected.customers);
        EXPECT_EQ(OrderRecords(), expected.orders);
        EXPECT_EQ(LineRecords(), expected.lines);
        EXPECT_EQ(HalfWritten(), "");
    }

    std::string Total(const char* order) const {
        return Sql(std::string("SELECT CAST(TOTAL AS INTEGER) FROM t2 WHERE ORDNO = '") + order + "'");
    }

    // From a process of its own, run by another operator: sets the total of
    // an order with the store's conflict check, or deletes the order when
    // `total` is null. True when it did.
    bool ChangeOrderElsewhere(const char* order, const char* total) const {
        const pid_t pid = fork();
        if (pid == 0) {
            ::setenv("OXDM_OPERATOR", "other", 1);
            std::unique_ptr<oxioDataFile> file = OpenFile();
            oxioCursor cursor(*file, 2, 0);
            const oxdmTableDef* orders = oxdmDictionaryManager::Instance().Table("ord", 2);
            std::unique_ptr<oxData> key(orders->Column("ORDNO")->CreateData());
            std::unique_ptr<oxData> value(orders->Column("TOTAL")->CreateData());
            key->SetVal(CString(order), nullptr);
            cursor.AttachColumn("ORDNO", *key);
            cursor.AttachColumn("TOTAL", *value);
            if (cursor.FetchEQ(false) != oxioStatus::Success) _exit(1);
            if (total == nullptr) _exit(cursor.Delete() == oxioStatus::Success ? 0 : 2);
            value->SetVal(CString(total), nullptr);
            _exit(cursor.Update(nullptr, oxioCursor::CheckConflict) == oxioStatus::Success ? 0 : 2);
        }
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    // The buffers of the screen; the manager owns them.
    oxdmBufferedFileDataSource* customers_ = nullptr;
    oxdmBufferedFileDataSource* orders_ = nullptr;
    oxdmBufferedFileDataSource* lines_ = nullptr;
};

}  // namespace

// A new customer: its order is refused until the customer is on file;
// ReserveKey puts it there; its orders and a line are then saved, each
// under its parent, with one save of the screen.
TEST_F(OrderEntryTest, NewCustomerWithOrdersAndLines) {
    std::unique_ptr<oxdmDataManager> manager = OpenScreen();
    EXPECT_EQ(manager->AppendRow(nullptr), 1);
    ASSERT_TRUE(customers_->IsNewRow());
    Type(*customers_, "CUSTNO", "C0003");
    Type(*customers_, "NAME", "Newco");

    ASSERT_TRUE(orders_->IsNewRow());
    Type(*orders_, "ORDNO", "O7");
    const size_t boxes = Boxes().size();
    EXPECT_FALSE(orders_->ValidateRow(0, true));
    ASSERT_EQ(Boxes().size(), boxes + 1);
    EXPECT_EQ(Boxes().back().text.str(), "Cannot save this row until the Customer has been added.");
    ExpectFile(kSeeded);

    ASSERT_TRUE(customers_->QueryRow()->ReserveKey());
    ExpectFile({"C0001:Name 1 C0002:Name 2 C0003:Newco", kSeeded.orders, kSeeded.lines});
    ASSERT_TRUE(orders_->IsNewRow()) << "the orders follow the reserved key";
    Type(*orders_, "ORDNO", "O7");
    EXPECT_EQ(manager->AppendRow(orders_->QueryRow()), 1) << "saves O7 and goes to a new order";
    ASSERT_TRUE(orders_->IsNewRow());
    Type(*orders_, "ORDNO", "O8");
    // Entering the line grid puts the order's key on file first, so that the
    // new line inherits it.
    ASSERT_TRUE(orders_->QueryRow()->ReserveKey());
    ExpectFile({"C0001:Name 1 C0002:Name 2 C0003:Newco", kSeeded.orders + " O7/C0003 O8/C0003", kSeeded.lines});
    ASSERT_TRUE(lines_->IsNewRow());
    EXPECT_EQ(Get(*lines_, "ORDNO"), "O8");
    Type(*lines_, "LINENO", "1");
    Type(*lines_, "ITEM", "ABCD-000008");
    Type(*customers_, "CITY", "Tromso");

    EXPECT_TRUE(manager->CommitData());
    EXPECT_FALSE(customers_->IsKeyReserved() || orders_->IsKeyReserved());
    ExpectFile({"C0001:Name 1 C0002:Name 2 C0003:Newco", kSeeded.orders + " O7/C0003 O8/C0003",
                "O1/1 O1/2 O3/1 O8/1"});
    EXPECT_EQ(Sql("SELECT CITY FROM t1 WHERE CUSTNO = 'C0003'"), "Tromso") << "the stub was updated, not doubled";

    // Back and forth: each customer shows its own orders.
    EXPECT_EQ(manager->ReadFirst(nullptr), 1);
    EXPECT_EQ(Get(*orders_, "ORDNO"), "O1");
    EXPECT_EQ(manager->ReadLast(nullptr), 1);
    EXPECT_EQ(Get(*customers_, "CUSTNO"), "C0003");
    EXPECT_EQ(Get(*orders_, "ORDNO"), "O7");
}

// An order typed while its new customer had no key on file has no customer
// number: the customer is saved, the order refused, and nothing of it
// reaches the file.
TEST_F(OrderEntryTest, AnOrderTypedBeforeItsCustomerHadAKeyIsRefused) {
    std::unique_ptr<oxdmDataManager> manager = OpenScreen();
    EXPECT_EQ(manager->AppendRow(nullptr), 1);
    Type(*customers_, "CUSTNO", "C0004");
    Type(*customers_, "NAME", "Fourth");
    Type(*orders_, "ORDNO", "O9");
    EXPECT_EQ(manager->ReadFirst(nullptr), 1);
    ASSERT_FALSE(Boxes().empty());
    EXPECT_EQ(Boxes().back().text.str(), "'Customer number' on the Order is required.");
    EXPECT_EQ(Get(*customers_, "CUSTNO"), "C0004") << "the screen stays";
    ExpectFile({"C0001:Name 1 C0002:Name 2 C0004:Fourth", kSeeded.orders, kSeeded.lines});
}

// One save of the screen writes the customer, then its order, then the
// order's line, each announced in that order.
TEST_F(OrderEntryTest, TheParentIsSavedBeforeItsChildren) {
    std::unique_ptr<oxdmDataManager> manager = OpenScreen();
    std::vector<std::string> written;
    oxdmCallbackMgr mgr(nullptr);
    for (const char* node : {"cust", "orders", "lines"}) {
        mgr.SetRowCallback(node, oxdmRowCallbacks::cbRowAfterWrite,
                           oxdmCallbackMgr::Functor([&written, node](oxdmCallbackInfo*) {
                               written.emplace_back(node);
                               return 0;
                           }));
    }
    manager->SetupDataCallbacks(mgr, nullptr);
    Type(*lines_, "QTY", "3");
    Type(*orders_, "TOTAL", "30");
    Type(*customers_, "CITY", "Bergen");
    EXPECT_EQ(manager->ReadNext(nullptr), 1);
    EXPECT_EQ(written, (std::vector<std::string>{"cust", "orders", "lines"}));
    EXPECT_EQ(Get(*customers_, "CUSTNO"), "C0002");
    ExpectFile(kSeeded);
    EXPECT_EQ(Sql("SELECT c.CITY, CAST(o.TOTAL AS INTEGER), CAST(l.QTY AS INTEGER) FROM t1 c, t2 o, t3 l"
                  " WHERE c.CUSTNO = 'C0001' AND o.ORDNO = 'O1' AND l.ORDNO = 'O1' AND l.LINENO = 1"),
              "Bergen/30/3");
}

// A key written early goes again when the new row is given up, whether by
// reverting it or by a requery that leaves it.
TEST_F(OrderEntryTest, AGivenUpReservationLeavesNoStub) {
    for (bool revert : {true, false}) {
        SCOPED_TRACE(revert ? "revert" : "requery");
        std::unique_ptr<oxdmDataManager> manager = OpenScreen();
        EXPECT_EQ(manager->AppendRow(nullptr), 1);
        Type(*customers_, "CUSTNO", "C0005");
        Type(*customers_, "NAME", "Passing");
        ASSERT_TRUE(customers_->ReserveKey());
        ExpectFile({"C0001:Name 1 C0002:Name 2 C0005:Passing", kSeeded.orders, kSeeded.lines});
        if (revert) {
            EXPECT_EQ(manager->RevertRow(nullptr), 1);
            EXPECT_TRUE(customers_->IsNewRow());
        } else {
            customers_->ReQuery();
        }
        EXPECT_FALSE(customers_->IsKeyReserved());
        ExpectFile(kSeeded);
    }
}

// A changed order number deletes the old order and inserts the new one.
// When the insert fails (the number is taken) the rollback brings the old
// order back with the lines its delete took along, and the row is read
// again.
TEST_F(OrderEntryTest, KeyChangeOfAnExistingOrder) {
    struct Case {
        short row;
        const char* number;
        bool saved;
        const char* focus;
        FileState file;
    };
    const Case cases[] = {
        {1, "O5", true, "O5", {kSeeded.customers, "O1/C0001 O3/C0002 O5/C0001", kSeeded.lines}},
        {0, "O3", false, "O1", kSeeded},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.number);
        std::unique_ptr<oxdmDataManager> manager = OpenScreen();
        orders_->SetFocus(c.row, 0, true);
        Type(*orders_, "ORDNO", c.number);
        oxdmDefaultPresenter().Clear();
        EXPECT_EQ(manager->CommitData(), c.saved);
        EXPECT_EQ(Boxes().size(), c.saved ? 0u : 1u);
        EXPECT_EQ(Get(*orders_, "ORDNO"), c.focus);
        EXPECT_FALSE(orders_->IsRowChanged());
        ExpectFile(c.file);
        if (c.saved) {
            Type(*orders_, "ORDNO", "O2");
            ASSERT_TRUE(manager->CommitData());
            ExpectFile(kSeeded);
        }
    }
}

// Another program changes an order while the screen edits it. Yes keeps
// their total and the screen stays on the customer; No writes ours and the
// screen moves on. Either way exactly one version is on file.
TEST_F(OrderEntryTest, ConflictWithASecondProcess) {
    struct Case {
        int answer;
        const char* total;
        const char* customer;
    };
    for (const Case& c : {Case{oxdmBox::IdYes, "99", "C0001"}, Case{oxdmBox::IdNo, "11", "C0002"}}) {
        SCOPED_TRACE(c.answer);
        std::unique_ptr<oxdmDataManager> manager = OpenScreen();
        Type(*orders_, "TOTAL", "11");
        ASSERT_TRUE(ChangeOrderElsewhere("O1", "99"));
        oxdmDefaultPresenter().Clear();
        oxdmDefaultPresenter().QueueAnswer(c.answer);
        EXPECT_EQ(manager->ReadNext(nullptr), 1);
        ASSERT_EQ(Boxes().size(), 1u);
        EXPECT_NE(Boxes()[0].text.Find("Data Conflict Error"), -1) << Boxes()[0].text;
        EXPECT_EQ(Get(*customers_, "CUSTNO"), c.customer);
        EXPECT_EQ(Total("O1"), c.total);
        ExpectFile(kSeeded);
        EXPECT_EQ(Sql("SELECT OPERID FROM t2 WHERE ORDNO = 'O1'"), c.answer == oxdmBox::IdYes ? "other" : "tester");
        manager.reset();
        ASSERT_TRUE(ChangeOrderElsewhere("O1", "0"));
    }
}

// Another program deletes the order being edited. Declined, the order
// leaves the grid, the focus goes to the row that follows (here the new
// row) and the screen stays; accepted, it is written again, once, and the
// screen moves on.
TEST_F(OrderEntryTest, OrderDeletedByASecondProcess) {
    struct Case {
        int answer;
        const char* grid;
        const char* customer;
        FileState file;
    };
    const Case cases[] = {
        {oxdmBox::IdCancel, "O1 *", "C0001", {kSeeded.customers, "O1/C0001 O3/C0002", kSeeded.lines}},
        {oxdmBox::IdOK, "O3 *", "C0002", kSeeded},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.answer);
        std::unique_ptr<oxdmDataManager> manager = OpenScreen();
        orders_->SetFocus(1, 0, true);
        Type(*orders_, "TOTAL", "11");
        ASSERT_TRUE(ChangeOrderElsewhere("O2", nullptr));
        oxdmDefaultPresenter().Clear();
        oxdmDefaultPresenter().QueueAnswer(c.answer);
        EXPECT_EQ(manager->ReadNext(nullptr), 1);
        EXPECT_EQ(Boxes().size(), 1u);
        EXPECT_EQ(Get(*customers_, "CUSTNO"), c.customer);
        EXPECT_EQ(Rows(*orders_, "ORDNO"), c.grid);
        ExpectFile(c.file);
        manager.reset();
        if (c.answer == oxdmBox::IdCancel) Insert(2, {{"ORDNO", "O2"}, {"CUSTNO", "C0001"}});
    }
    EXPECT_EQ(Total("O2"), "11") << "the accepted rewrite keeps the user's edit";
}

// Deleting a customer takes its orders and their lines, and nothing else;
// deleting an order takes its lines; declining deletes nothing.
TEST_F(OrderEntryTest, DeletionWithCascades) {
    struct Case {
        const char* what;
        bool order;
        int answer;
        FileState file;
    };
    const Case cases[] = {
        {"customer declined", false, oxdmBox::IdNo, kSeeded},
        {"order", true, oxdmBox::IdYes, {kSeeded.customers, "O2/C0001 O3/C0002", "O3/1"}},
        {"customer", false, oxdmBox::IdYes, {"C0002:Name 2", "O3/C0002", "O3/1"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        std::unique_ptr<oxdmDataManager> manager = OpenScreen();
        oxdmDefaultPresenter().Clear();
        oxdmDefaultPresenter().QueueAnswer(c.answer);
        EXPECT_EQ(manager->DeleteRow(c.order ? orders_->QueryRow() : nullptr), 1);
        ASSERT_EQ(Boxes().size(), 1u);
        EXPECT_EQ(Boxes()[0].text.str(), c.order ? "Delete this order?" : "Delete this customer?");
        ExpectFile(c.file);
    }
    std::unique_ptr<oxdmDataManager> manager = OpenScreen();
    EXPECT_EQ(Get(*customers_, "CUSTNO"), "C0002");
    EXPECT_EQ(Get(*orders_, "ORDNO"), "O3");
    EXPECT_EQ(Get(*lines_, "ORDNO"), "O3");
}
