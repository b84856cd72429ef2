// The sales screen over a fresh sample: what the window table marks, and
// what the watch of a buffer counts, as a command sees them.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sstream>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "sales_screen.h"
#include "sample_file.h"
#include "window_table.h"

namespace {

// The lines of a table.
std::vector<std::string> Lines(const std::string& table) {
    std::vector<std::string> lines;
    std::istringstream in(table);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

class ScreenTest : public testing::Test {
protected:
    void SetUp() override {
        dir_ = std::filesystem::temp_directory_path() / ("console-screen-" + std::to_string(getpid()));
        setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 1);
        setenv("XDG_CONFIG_HOME", (dir_ / "config").c_str(), 1);
        OXSetApp(&app_);
        std::string error;
        const std::string path = PrepareSampleFile(dir_.string(), true, error);
        ASSERT_FALSE(path.empty()) << error;
        screen_ = std::make_unique<SalesScreen>(path, 4, "");
    }
    void TearDown() override {
        screen_.reset();
        OXSetApp(nullptr);
        std::filesystem::remove_all(dir_);
    }

    std::filesystem::path dir_;
    oxApp app_{"OX"};
    std::unique_ptr<SalesScreen> screen_;
};

}  // namespace

TEST_F(ScreenTest, TableMarksTheFocusTheChangeAndTheNewRow) {
    oxdmBufferedFileDataSource& customers = screen_->Current();
    std::vector<std::string> lines = Lines(WindowTable(customers));
    ASSERT_EQ(lines.size(), 6u) << "title, names and the window's 4 rows";
    EXPECT_EQ(lines[0], "cust: 4 rows shown, 0%, more below, focus on row 1");
    EXPECT_EQ(lines[1].find("    CUSTNO   NAME "), 0u) << "hidden stamp columns are left out: " << lines[1];
    EXPECT_EQ(lines[2].find(">   C0000001 "), 0u) << lines[2];
    EXPECT_EQ(lines[3].find("    C0000002 "), 0u) << lines[3];

    screen_->Manager().ReadNext(nullptr);
    ASSERT_TRUE(customers.ObserverSetNewValue(customers.IndexForColumn("NAME"), "Typed", 0, true));
    lines = Lines(WindowTable(customers));
    EXPECT_EQ(lines[0], "cust: 4 rows shown, 0%, more below, focus on row 2, changed");
    EXPECT_EQ(lines[3].find(">*  C0000002 Typed "), 0u) << "the focus row shows what was typed: " << lines[3];
    EXPECT_EQ(lines[2].find("    C0000001 "), 0u) << lines[2];

    // The first customer's orders fill less than the window: the new row
    // follows them, marked as such until the focus goes there.
    ASSERT_TRUE(screen_->Switch("orders"));
    oxdmBufferedFileDataSource& orders = screen_->Current();
    screen_->Manager().ReadLast(orders.QueryRow());
    screen_->ScrollToFocus();
    lines = Lines(WindowTable(orders));
    EXPECT_EQ(lines.back(), "    (new row)");
    screen_->Manager().AppendRow(orders.QueryRow());
    lines = Lines(WindowTable(orders));
    EXPECT_NE(lines[0].find("focus on the new row"), std::string::npos) << lines[0];
    EXPECT_EQ(lines.back().substr(0, 2), "> ") << "the new row is the focus row: " << lines.back();
    EXPECT_FALSE(screen_->Switch("nowhere"));
    EXPECT_EQ(screen_->BufferNames(), "cust, orders, lines");
}

// The watch counts what the current buffer reported, and a reset forgets it.
TEST_F(ScreenTest, WatchCountsMovesSavesAndDeletes) {
    oxdmBufferedFileDataSource& customers = screen_->Current();
    BufferWatch& watch = screen_->CurrentWatch();
    watch.Reset();
    screen_->Manager().ReadNext(nullptr);
    screen_->Manager().ReadNext(nullptr);
    EXPECT_EQ(watch.FocusMoves(), 2);
    EXPECT_EQ(watch.Saves(), 0);

    watch.Reset();
    ASSERT_TRUE(customers.ObserverSetNewValue(customers.IndexForColumn("CITY"), "Bergen", 0, true));
    EXPECT_EQ(screen_->FirstChangedBuffer(), "cust");
    EXPECT_TRUE(screen_->SavePending());
    EXPECT_EQ(watch.Saves(), 1);
    EXPECT_EQ(watch.FocusMoves(), 0) << "a save moves nothing";
    EXPECT_EQ(screen_->FirstChangedBuffer(), "");

    // A customer without orders: its delete reports one row (a cascade
    // reports each order and line it takes as well).
    screen_->Manager().AppendRow(nullptr);
    ASSERT_TRUE(customers.ObserverSetNewValue(customers.IndexForColumn("CUSTNO"), "C0000099", 0, true));
    ASSERT_TRUE(customers.ObserverSetNewValue(customers.IndexForColumn("NAME"), "Alone", 0, true));
    watch.Reset();
    EXPECT_TRUE(screen_->SavePending());
    EXPECT_EQ(watch.Saves(), 1);
    watch.Reset();
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    screen_->Manager().DeleteRow(nullptr);
    EXPECT_EQ(watch.Deletes(), 1);
    EXPECT_NE(customers.NewValueAsString(customers.IndexForColumn("CUSTNO")).str(), "C0000099");
}
