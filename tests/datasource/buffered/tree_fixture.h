#pragma once
// Buffers over trees of the sample dictionary "ord": customers, their
// orders and the order lines, in a scratch record file. Records are seeded
// through the store's class face; the file is read back with plain SQLite,
// apart from the library, so that what a test expects on file is checked
// against what is really there.

#include <sqlite3.h>

#include <initializer_list>
#include <string>
#include <utility>

#include "buffer_fixture.h"

class TreeTest : public BufferTest {
protected:
    using Fields = std::initializer_list<std::pair<const char*, const char*>>;

    // One record of `table`, written by a connection of its own.
    void Insert(short table, Fields fields) const {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, table, 0);
        cursor.Clear();
        const oxdmTableDef* def = oxdmDictionaryManager::Instance().Table("ord", table);
        for (const auto& [name, text] : fields) {
            std::unique_ptr<oxData> value(def->Column(name)->CreateData());
            ASSERT_TRUE(value->SetVal(CString(text), nullptr)) << name;
            ASSERT_TRUE(cursor.SetColumnData(name, *value)) << name;
        }
        ASSERT_EQ(cursor.Insert(nullptr), oxioStatus::Success) << table;
    }

    // Two customers; C0001 has orders O1 (two lines) and O2, C0002 has O3
    // (one line).
    void SeedSales() const {
        Seed(2);
        Insert(2, {{"ORDNO", "O1"}, {"CUSTNO", "C0001"}});
        Insert(2, {{"ORDNO", "O2"}, {"CUSTNO", "C0001"}});
        Insert(2, {{"ORDNO", "O3"}, {"CUSTNO", "C0002"}});
        Insert(3, {{"ORDNO", "O1"}, {"LINENO", "1"}, {"ITEM", "ABCD-000001"}});
        Insert(3, {{"ORDNO", "O1"}, {"LINENO", "2"}, {"ITEM", "ABCD-000002"}});
        Insert(3, {{"ORDNO", "O3"}, {"LINENO", "1"}, {"ITEM", "ABCD-000003"}});
    }

    // The query of a customer screen: customers ("cust"), their orders
    // ("orders", by customer) and each order's lines ("lines"); deletes
    // cascade down the tree.
    void BuildCustomerTree() {
        query_ = std::make_unique<oxdmQuery>("sales");
        oxdmQueryNode* customers = query_->SetRoot(Spec(), 1, 0, "cust", kAllRights | oxdmQueryNode::StyleCreateFile);
        customers->AddAllColumns(true, true, false);
        oxdmQueryNode* orders = customers->AddChildNode(Spec(), 2, "CUSTNO=CUSTNO", 1, "orders",
                                                        kAllRights | oxdmQueryNode::StyleCascadedDelete);
        ASSERT_NE(orders, nullptr);
        orders->AddAllColumns(true, true, false);
        oxdmQueryNode* lines = orders->AddChildNode(Spec(), 3, "ORDNO=ORDNO", 0, "lines",
                                                    kAllRights | oxdmQueryNode::StyleCascadedDelete);
        ASSERT_NE(lines, nullptr);
        lines->AddAllColumns(true, true, false);
    }
    // The root buffer over the query made last, its window `window` rows.
    oxdmBufferedFileDataSource& OpenTree(short window) {
        buffer_ = std::make_unique<oxdmBufferedFileDataSource>(query_.get(), &task_,
                                                               static_cast<oxdmFileManager*>(nullptr));
        buffer_->SetWindowSize(window);
        buffer_->ReQuery();
        return *buffer_;
    }

    // The buffer's column over the field `name` of its own table (ids are
    // made unique over the tree, so a child's ORDNO may be "ORDNO-1").
    static short Field(const oxdmBufferedFileDataSource& buffer, const char* name) {
        for (short col = 0; col < buffer.NumColumns(); ++col) {
            const oxdmColumnDef* def = buffer.ColumnForIndex(col)->OXColumn();
            if (def != nullptr && def->Name().CompareNoCase(name) == 0) return col;
        }
        ADD_FAILURE() << "no field " << name << " in " << buffer.NodeLabel().str();
        return -1;
    }
    static std::string Get(oxdmBufferedFileDataSource& buffer, const char* field) {
        return buffer.NewValueAsString(Field(buffer, field)).str();
    }
    static void Type(oxdmBufferedFileDataSource& buffer, const char* field, const char* text) {
        ASSERT_TRUE(buffer.ObserverSetNewValue(Field(buffer, field), text, 0, true)) << field;
    }

    // The window of a buffer: the column's text of each row, "*" for the new row.
    static std::string Rows(oxdmBufferedFileDataSource& buffer, const char* column) {
        std::string text;
        const short col = Field(buffer, column);
        for (short row = 0; row < buffer.NumWindowDataRows(); ++row) {
            if (!text.empty()) text += ' ';
            text += buffer.IsNewRow(row) ? std::string("*") : buffer.CellValueAsString(row, col).str();
        }
        return text;
    }

    // The rows a query over the record file answers: columns joined by '/',
    // rows by ' '. Read with SQLite itself through a connection of its own.
    std::string Sql(const std::string& query) const {
        sqlite3* db = nullptr;
        std::string text;
        if (sqlite3_open_v2(Path().c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
            ADD_FAILURE() << "cannot open " << Path();
            sqlite3_close(db);
            return text;
        }
        sqlite3_busy_timeout(db, 2000);
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(db, query.c_str(), -1, &stmt, nullptr) != SQLITE_OK) {
            ADD_FAILURE() << sqlite3_errmsg(db) << " in " << query;
        }
        while (stmt != nullptr && sqlite3_step(stmt) == SQLITE_ROW) {
            if (!text.empty()) text += ' ';
            for (int col = 0; col < sqlite3_column_count(stmt); ++col) {
                const auto* cell = reinterpret_cast<const char*>(sqlite3_column_text(stmt, col));
                text += (col ? "/" : "") + std::string(cell ? cell : "");
            }
        }
        sqlite3_finalize(stmt);
        sqlite3_close(db);
        return text;
    }
    // Customers "CUSTNO:NAME", orders "ORDNO/CUSTNO", lines "ORDNO/LINENO",
    // each in key order.
    std::string CustomerRecords() const { return Sql("SELECT CUSTNO || ':' || NAME FROM t1 ORDER BY CUSTNO"); }
    std::string OrderRecords() const { return Sql("SELECT ORDNO, CUSTNO FROM t2 ORDER BY ORDNO"); }
    std::string LineRecords() const {
        return Sql("SELECT ORDNO, CAST(LINENO AS INTEGER) FROM t3 ORDER BY ORDNO, LINENO");
    }
    // Records with a blank key or without the stamps every write leaves,
    // and record locks left behind: all of these are faults.
    std::string HalfWritten() const {
        return Sql("SELECT 'customer ' || CUSTNO FROM t1 WHERE CUSTNO = '' OR NAME = '' OR OPERID = ''"
                   " UNION ALL SELECT 'order ' || ORDNO FROM t2 WHERE ORDNO = '' OR CUSTNO = '' OR OPERID = ''"
                   " UNION ALL SELECT 'line ' || ORDNO FROM t3 WHERE ORDNO = '' OR OPERID = ''"
                   " UNION ALL SELECT 'lock ' || tbl FROM _oxdm_locks");
    }
};
