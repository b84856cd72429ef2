#pragma once
// A cursor tree over the sample dictionary "ord" in a scratch record file:
// customers (table 1) with their custom fields (table 4, one-to-one on
// CUSTNO), their orders (table 2 on key 1, one-to-many on CUSTNO) and the
// orders' lines (table 3, one-to-many on ORDNO). Records are seeded through
// the store's class face on a connection of the test's own, and other
// programs are played by forked processes with connections of their own.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/query/query.h"
#include "oxdm/record/column_def.h"
#include "oxdm/record/dictionary_manager.h"
#include "oxdm/record/table_def.h"
#include "record_test_support.h"

// One record to seed: the table and its fields by name, as text.
struct Seed {
    short table;
    std::vector<std::pair<const char*, const char*>> fields;
};

class CursorTest : public RecordTestBase {
protected:
    void SetUp() override {
        RecordTestBase::SetUp();
        ::setenv("OXDM_OPERATOR", "tester", 1);
        app_ = std::make_unique<oxApp>("OX");
        OXSetApp(app_.get());
    }
    void TearDown() override {
        tree_.reset();
        OXSetApp(nullptr);
        RecordTestBase::TearDown();
    }

    std::string Path() const { return (Scratch() / "sales.ord").string(); }
    oxioFileSpec Spec() const { return oxioFileSpec(Path().c_str()); }
    static oxdmTableDef* Ord(short table) { return oxdmDictionaryManager::Instance().Table("ord", table); }

    // A connection of the test's own (or of a forked process).
    std::unique_ptr<oxioDataFile> OpenFile() const {
        oxioStatus::Status status = oxioStatus::IOError;
        CString error;
        std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(Spec(), true, status, error);
        EXPECT_EQ(status, oxioStatus::Success) << error;
        return file;
    }

    // Writes each record through a cursor of the class face.
    void Write(const std::vector<Seed>& records) const {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        for (const Seed& record : records) {
            oxioCursor cursor(*file, record.table, 0);
            cursor.Clear();
            for (const auto& [name, text] : record.fields) {
                std::unique_ptr<oxData> value(Ord(record.table)->Column(name)->CreateData());
                ASSERT_TRUE(value->SetVal(CString(text), nullptr)) << name << " " << text;
                ASSERT_TRUE(cursor.SetColumnData(name, *value)) << name;
            }
            ASSERT_EQ(cursor.Insert(nullptr), oxioStatus::Success) << record.fields[0].second;
        }
    }

    // Customers C1 (orders O1 with lines 1 and 2, O2 without lines), C2
    // (nothing), C3 (order O3 with line 1); custom fields for C1 only.
    void SeedSales() const {
        Write({{1, {{"CUSTNO", "C1"}, {"NAME", "Ann"}, {"CITY", "Oslo"}}},
               {1, {{"CUSTNO", "C2"}, {"NAME", "Bob"}, {"CITY", "Rome"}}},
               {1, {{"CUSTNO", "C3"}, {"NAME", "Cid"}, {"CITY", "Oslo"}}},
               {4, {{"CUSTNO", "C1"}, {"REGION", "North"}}},
               {2, {{"ORDNO", "O1"}, {"CUSTNO", "C1"}}},
               {2, {{"ORDNO", "O2"}, {"CUSTNO", "C1"}}},
               {2, {{"ORDNO", "O3"}, {"CUSTNO", "C3"}}},
               {3, {{"ORDNO", "O1"}, {"LINENO", "1"}, {"QTY", "5"}}},
               {3, {{"ORDNO", "O1"}, {"LINENO", "2"}, {"QTY", "7"}}},
               {3, {{"ORDNO", "O3"}, {"LINENO", "1"}, {"QTY", "9"}}}});
    }

    // The number of records of a table, counted through the class face.
    long Count(short table) const {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, table, 0);
        long count = 0;
        for (auto status = cursor.FetchFirst(false); status == oxioStatus::Success; status = cursor.FetchNext(false))
            ++count;
        return count;
    }

    // One field of the record of `key` in table 1, 2 or 4 (keyed by one
    // text column); "<none>" when there is no such record.
    std::string Stored(short table, const char* key, const char* field) const {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, table, 0);
        std::unique_ptr<oxData> keyValue(Ord(table)->Index(0).Columns()[0]->CreateData());
        keyValue->SetVal(CString(key), nullptr);
        cursor.AttachColumn(Ord(table)->Index(0).Columns()[0]->Name(), *keyValue);
        if (cursor.FetchEQ(false) != oxioStatus::Success) return "<none>";
        std::unique_ptr<oxData> value(Ord(table)->Column(field)->CreateData());
        cursor.GetColumnData(field, *value);
        return value->Format().str();
    }

    // The query: customers, their custom fields, orders, lines.
    void BuildQuery(int style = 0x0f, int orderStyle = 0x0f, int lineStyle = 0x0f) {
        customers_ = query_.SetRoot(Spec(), 1, 0, "cust", style | oxdmQueryNode::StyleCreateFile);
        extra_ = customers_->AddChildNode(Spec(), 4, "CUSTNO=CUSTNO", 0, "extra", style);
        orders_ = customers_->AddChildNode(Spec(), 2, "CUSTNO=CUSTNO", 1, "orders", orderStyle);
        lines_ = orders_->AddChildNode(Spec(), 3, "ORDNO=ORDNO", 0, "lines", lineStyle);
        ASSERT_EQ(customers_->OneToOnes().size(), 1u);
        ASSERT_EQ(customers_->OneToManys().size(), 1u);
        ASSERT_EQ(orders_->OneToManys().size(), 1u);
    }

    // The cursor tree of the query, with the columns tests read attached.
    oxdmOXIOCursorNode& Tree() {
        tree_ = std::make_unique<oxdmOXIOCursorNode>(*query_.Root(), &task_, nullptr);
        for (const char* name : {"NAME", "CITY", "STATUS", "OPERID"}) Attach(*tree_, name);
        if (Extra()) Attach(*Extra(), "REGION");
        if (Orders()) Attach(*Orders(), "TOTAL");
        if (Lines()) {
            Attach(*Lines(), "LINENO");
            Attach(*Lines(), "QTY");
        }
        return *tree_;
    }
    oxdmOXIOCursorNode* Extra() const { return Child(tree_.get(), extra_); }
    oxdmOXIOCursorNode* Orders() const { return Child(tree_.get(), orders_); }
    oxdmOXIOCursorNode* Lines() const { return Child(tree_.get(), lines_); }

    static void Attach(oxdmOXIOCursorNode& node, const char* name) {
        node.AddColumn(node.QueryNode()->Table()->Column(name));
    }
    static const oxdmColumnDef* Def(const oxdmOXIOCursorNode& node, const char* name) {
        return node.QueryNode()->Table()->Column(name);
    }
    // The node's value of a column as text; "<none>" when not attached.
    static std::string Get(const oxdmOXIOCursorNode& node, const char* name) {
        const oxData* value = node.DatumForColumn(Def(node, name));
        return value ? value->Format().str() : "<none>";
    }
    static bool Set(oxdmOXIOCursorNode& node, const char* name, const char* text) {
        std::unique_ptr<oxData> value(Def(node, name)->CreateData());
        value->SetVal(CString(text), nullptr);
        return node.SetValueForColumn(Def(node, name), value.get());
    }

    // Runs `body` in a forked process (another program on the same file);
    // answers its exit code.
    static int InChild(const std::function<int()>& body) {
        pid_t pid = fork();
        if (pid == 0) _exit(body());
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 100;
    }

    static const std::vector<oxdmShownBox>& Boxes() { return oxdmDefaultPresenter().Boxes(); }
    static void Answer(int answer) { oxdmDefaultPresenter().QueueAnswer(answer); }

    oxTask task_{1, "Sales"};
    oxdmQuery query_{"sales"};
    oxdmQueryNode* customers_ = nullptr;
    oxdmQueryNode* extra_ = nullptr;
    oxdmQueryNode* orders_ = nullptr;
    oxdmQueryNode* lines_ = nullptr;
    std::unique_ptr<oxdmOXIOCursorNode> tree_;

private:
    static oxdmOXIOCursorNode* Child(oxdmOXIOCursorNode* root, oxdmQueryNode* node) {
        return root && node ? dynamic_cast<oxdmOXIOCursorNode*>(root->Node(node)) : nullptr;
    }
    std::unique_ptr<oxApp> app_;
};
