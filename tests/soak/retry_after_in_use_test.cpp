// A save refused because another process held the record ("in use"), tried
// again once the record is free. The buffer keeps the edits for that retry;
// the retry must still find out that another program wrote the record in
// between, and must not lose anything the first save did not touch.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <memory>

#include "file_image.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/file_spec.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/data_manager.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_node.h"
#include "soak_run.h"

namespace {

constexpr int kAllRights = 0x0f;

class RetryAfterInUseTest : public ::testing::Test {
protected:
    void SetUp() override {
        ::setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 1);
        dir_ = std::string(OXDM_SOAK_TEST_DIR) + "/retry-" + std::to_string(::getpid());
        SoakOptions options;
        options.processes = 1;
        options.customers = 2;
        options.orders = 2;
        options.lines = 6;
        std::string error;
        ASSERT_TRUE(PrepareSoak(options, dir_, initial_, error)) << error;
        OXSetApp(&app_);
        oxdmDefaultPresenter().Clear();
    }
    void TearDown() override {
        OXSetApp(nullptr);
        std::error_code ignored;
        std::filesystem::remove_all(dir_, ignored);
    }
    oxioFileSpec Spec() const { return oxioFileSpec(SoakFilePath(dir_).c_str()); }
    FileImage OnFile() const {
        oxioStatus::Status status = oxioStatus::Success;
        CString text;
        std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(Spec(), false, status, text);
        FileImage image;
        std::string error;
        EXPECT_TRUE(file && ReadFileImage(*file, image, error)) << error;
        return image;
    }
    // Runs `work` on the record `key` of `table` in a process of its own
    // (attached to `field`, which it may change); `hold` keeps that process
    // alive, holding whatever lock it took, until Release().
    void Elsewhere(short table, const std::string& key, const char* field,
                   const std::function<bool(oxioCursor&, oxAlpha&)>& work, bool hold) {
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t pid = ::fork();
        if (pid == 0) {
            oxioStatus::Status status = oxioStatus::Success;
            CString text;
            std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(Spec(), false, status, text);
            oxioCursor cursor(*file, table, 0);
            oxAlpha wanted(CString(key.c_str())), value;
            cursor.AttachColumn(table == 1 ? "CUSTNO" : "ORDNO", wanted);
            cursor.AttachColumn(field, value);
            const char ok = cursor.FetchEQ(false) == oxioStatus::Success && work(cursor, value) ? 'y' : 'n';
            if (::write(ready[1], &ok, 1) != 1) ::_exit(1);
            if (hold) ::pause();
            ::_exit(0);
        }
        char ok = 0;
        ASSERT_EQ(::read(ready[0], &ok, 1), 1);
        ::close(ready[0]);
        ::close(ready[1]);
        ASSERT_EQ(ok, 'y');
        if (hold) {
            holder_ = pid;
        } else {
            ::waitpid(pid, nullptr, 0);
        }
    }
    // Ends the holding process; a dead process's lock binds nobody.
    void Release() {
        ::kill(holder_, SIGKILL);
        ::waitpid(holder_, nullptr, 0);
    }
    static bool Lock(oxioCursor& cursor, oxAlpha&) { return cursor.Lock() == oxioStatus::Success; }
    static void Set(oxdmBufferedFileDataSource& buffer, const char* column, const char* text) {
        ASSERT_TRUE(buffer.ObserverSetNewValue(buffer.IndexForColumn(column), CString(text), 0, true)) << column;
    }
    static bool Focus(oxdmBufferedFileDataSource& buffer, const char* column, const std::string& key) {
        buffer.SetFindValue(buffer.IndexForColumn(column), CString(key.c_str()));
        return buffer.FindGE() && buffer.NewValueAsString(buffer.IndexForColumn(column)).str() == key;
    }
    static size_t ConflictBoxes() {
        size_t count = 0;
        for (const oxdmShownBox& box : oxdmDefaultPresenter().Boxes())
            if (box.text.Find("Data Conflict") != -1) ++count;
        return count;
    }

    std::string dir_;
    FileImage initial_;
    oxApp app_{"OX"};
    oxTask task_{1, "Soak"};
    pid_t holder_ = 0;
};

}  // namespace

// Another program renames the customer while the first save waits on its
// lock: the retry must ask the conflict question (or at least leave the
// other program's change on file), not write over it unasked.
TEST_F(RetryAfterInUseTest, RetriedCustomerSaveStillDetectsAnotherProgramsWrite) {
    const std::string custno = initial_.customers.begin()->first;
    oxdmQuery query("customers");
    query.SetRoot(Spec(), 1, 0, "cust", kAllRights)->AddAllColumns(true, true, false);
    oxdmDataManager manager(&query, &task_, nullptr);
    oxdmBufferedFileDataSource& customers = *manager.RootBuffer();
    customers.SetWindowSize(5);
    customers.ReQuery();
    ASSERT_TRUE(Focus(customers, "CUSTNO", custno));
    Set(customers, "NAME", "Mine");

    Elsewhere(1, custno, "CITY", Lock, true);
    EXPECT_FALSE(manager.CommitData()) << "the record is locked by another process";
    ASSERT_TRUE(customers.IsRowChanged()) << "the edits are kept for a retry";
    Release();
    Elsewhere(1, custno, "CITY", [](oxioCursor& cursor, oxAlpha& city) {
        city.SetVal(CString("Theirs"));
        return cursor.Update(nullptr, oxioCursor::CheckConflict) == oxioStatus::Success;
    }, false);

    manager.CommitData();
    const bool asked = ConflictBoxes() > 0;
    const bool theirsKept = OnFile().customers.at(custno).city == "Theirs";
    EXPECT_TRUE(asked || theirsKept) << "the retry wrote over another program's change without a question";
}

// The order's total is changed and its save meets a lock; the retry must
// write the order, not delete it (with its lines) and write it anew.
TEST_F(RetryAfterInUseTest, RetriedOrderSaveKeepsTheOrdersLines) {
    const std::string ordno = initial_.lines.begin()->first.first;
    size_t lines = 0;
    for (const auto& [key, line] : initial_.lines) lines += key.first == ordno ? 1 : 0;
    oxdmQuery query("orders");
    oxdmQueryNode* orders = query.SetRoot(Spec(), 2, 0, "orders", kAllRights);
    orders->AddAllColumns(true, true, false);
    orders->AddChildNode(Spec(), 3, "ORDNO=ORDNO", 0, "lines", kAllRights | oxdmQueryNode::StyleCascadedDelete)
        ->AddAllColumns(true, true, false);
    oxdmDataManager manager(&query, &task_, nullptr);
    oxdmBufferedFileDataSource& buffer = *manager.RootBuffer();
    buffer.SetWindowSize(5);
    buffer.ReQuery();
    ASSERT_TRUE(Focus(buffer, "ORDNO", ordno));
    Set(buffer, "TOTAL", "1.00");

    Elsewhere(2, ordno, "CUSTNO", Lock, true);
    EXPECT_FALSE(manager.CommitData()) << "the record is locked by another process";
    ASSERT_TRUE(buffer.IsRowChanged()) << "the edits are kept for a retry";
    Release();

    EXPECT_TRUE(manager.CommitData());
    size_t left = 0;
    for (const auto& [key, line] : OnFile().lines) left += key.first == ordno ? 1 : 0;
    EXPECT_EQ(left, lines) << "the retried save deleted the order's lines";
}
