#pragma once
// Buffers over the customers of the sample dictionary "ord" in a scratch
// record file. Customers are numbered C0001, C0002, ... and written through
// the store's class face; a test chooses how many, their cities, and the
// rights and columns of the query node.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "ds_recorder.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/data.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/notify/callback_mgr.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_node.h"
#include "oxdm/record/column_def.h"
#include "oxdm/record/dictionary_manager.h"
#include "oxdm/record/table_def.h"
#include "record_test_support.h"

class BufferTest : public RecordTestBase {
protected:
    static constexpr int kAllRights = 0x0f;
    static constexpr int kReadOnly = oxdmQueryNode::StyleCanRead | oxdmQueryNode::StyleCanUpdate;

    void SetUp() override {
        RecordTestBase::SetUp();
        ::setenv("OXDM_OPERATOR", "tester", 1);
        app_ = std::make_unique<oxApp>("OX");
        OXSetApp(app_.get());
    }
    void TearDown() override {
        buffer_.reset();
        OXSetApp(nullptr);
        RecordTestBase::TearDown();
    }

    static std::string Key(int n) {
        char text[16];
        std::snprintf(text, sizeof text, "C%04d", n);
        return text;
    }
    std::string Path() const { return (Scratch() / "sales.ord").string(); }
    oxioFileSpec Spec() const { return oxioFileSpec(Path().c_str()); }
    static oxdmTableDef* Customers() { return oxdmDictionaryManager::Instance().Table("ord", 1); }

    std::unique_ptr<oxioDataFile> OpenFile() const {
        oxioStatus::Status status = oxioStatus::IOError;
        CString error;
        std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(Spec(), true, status, error);
        EXPECT_EQ(status, oxioStatus::Success) << error;
        return file;
    }

    // Customers 1..count; the city of customer n is cities[(n-1) % size],
    // "Oslo" when none are given.
    void Seed(int count, const std::vector<const char*>& cities = {}) const {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, 1, 0);
        for (int n = 1; n <= count; ++n) {
            cursor.Clear();
            Set(cursor, "CUSTNO", Key(n));
            Set(cursor, "NAME", "Name " + std::to_string(n));
            Set(cursor, "CITY", cities.empty() ? "Oslo" : cities[static_cast<size_t>(n - 1) % cities.size()]);
            ASSERT_EQ(cursor.Insert(nullptr), oxioStatus::Success) << n;
        }
    }
    // Deletes the record of customer n through a connection of its own.
    void DeleteRecord(int n) const {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, 1, 0);
        std::unique_ptr<oxData> key(Customers()->Column("CUSTNO")->CreateData());
        key->SetVal(CString(Key(n).c_str()), nullptr);
        cursor.AttachColumn("CUSTNO", *key);
        ASSERT_EQ(cursor.FetchEQ(false), oxioStatus::Success);
        ASSERT_EQ(cursor.Delete(), oxioStatus::Success);
    }

    // Every customer record on file in key order, "CUSTNO:NAME" each, read
    // through a connection of its own.
    std::string FileRecords() const {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, 1, 0);
        std::unique_ptr<oxData> key(Customers()->Column("CUSTNO")->CreateData());
        std::unique_ptr<oxData> name(Customers()->Column("NAME")->CreateData());
        std::string text;
        for (auto status = cursor.FetchFirst(false); status == oxioStatus::Success; status = cursor.FetchNext(false)) {
            cursor.GetColumnData("CUSTNO", *key);
            cursor.GetColumnData("NAME", *name);
            if (!text.empty()) text += ' ';
            text += key->Format().str() + ":" + name->Format().str();
        }
        return text;
    }

    // A root buffer over the customers; `columns` (comma separated) picks
    // the query's columns, all of them when empty.
    oxdmBufferedFileDataSource& Open(short window, int rights = kAllRights, const char* columns = "") {
        buffer_.reset();
        query_ = std::make_unique<oxdmQuery>("sales");
        oxdmQueryNode* node = query_->SetRoot(Spec(), 1, 0, "cust", rights | oxdmQueryNode::StyleCreateFile);
        if (*columns) {
            node->AddColumns(columns);
        } else {
            node->AddAllColumns(true, true, false);
        }
        buffer_ = std::make_unique<oxdmBufferedFileDataSource>(query_.get(), &task_, static_cast<oxdmFileManager*>(nullptr));
        buffer_->SetWindowSize(window);
        buffer_->ReQuery();
        return *buffer_;
    }

    // The window as text: the column's text of each row, "*" for the new row.
    std::string Window(const char* column = "CUSTNO") const {
        std::string text;
        const short col = buffer_->IndexForColumn(column);
        for (short row = 0; row < buffer_->NumWindowDataRows(); ++row) {
            if (!text.empty()) text += ' ';
            text += buffer_->IsNewRow(row) ? std::string("*") : buffer_->CellValueAsString(row, col).str();
        }
        return text;
    }
    // The focus row's new value of a column.
    std::string Focus(const char* column = "CUSTNO") const {
        return buffer_->NewValueAsString(buffer_->IndexForColumn(column)).str();
    }
    // Binds one row callback of the buffer's node.
    void BindRow(oxdmRowCallbacks::Item item, const oxdmCallbackMgr::Functor& callback) {
        oxdmCallbackMgr mgr(nullptr);
        mgr.SetRowCallback("cust", item, callback);
        buffer_->SetCallbacks(this, mgr, nullptr);
    }

    static const std::vector<oxdmShownBox>& Boxes() { return oxdmDefaultPresenter().Boxes(); }

    oxTask task_{1, "Sales"};
    std::unique_ptr<oxdmQuery> query_;
    std::unique_ptr<oxdmBufferedFileDataSource> buffer_;

private:
    static void Set(oxioCursor& cursor, const char* name, const std::string& text) {
        std::unique_ptr<oxData> value(Customers()->Column(name)->CreateData());
        ASSERT_TRUE(value->SetVal(CString(text.c_str()), nullptr)) << name;
        ASSERT_TRUE(cursor.SetColumnData(name, *value)) << name;
    }
    std::unique_ptr<oxApp> app_;
};
