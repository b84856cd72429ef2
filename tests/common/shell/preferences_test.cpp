// Per-user preferences: values survive a reload, the file is replaced
// atomically, and a damaged file is reported, set aside and started afresh.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "oxdm/common/shell/global_data.h"
#include "oxdm/common/shell/preferences.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/values/xval.h"

namespace fs = std::filesystem;

namespace {

class PreferencesTest : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = fs::temp_directory_path() / ("oxdm-prefs-" + std::to_string(::getpid()) + "-" +
                                            ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(dir_);
        ::setenv("XDG_CONFIG_HOME", dir_.c_str(), 1);
        xpref_reload();
        oxdmDefaultPresenter().Clear();
    }
    void TearDown() override {
        xpref_reload();
        fs::remove_all(dir_);
        oxdmDefaultPresenter().Clear();
    }
    fs::path File() const { return dir_ / "oxdm" / "preferences.toml"; }
    void Write(const std::string& text) {
        fs::create_directories(File().parent_path());
        std::ofstream(File()) << text;
        xpref_reload();
    }

    fs::path dir_;
};

TEST_F(PreferencesTest, MissingFileAndValuesGiveNothing) {
    unsigned char buffer[4] = {9, 9, 9, 9};
    EXPECT_EQ(xpref_get_data(1, "Software\\Quillfen\\Grid\\", "Width", buffer, 4), 0);
    EXPECT_EQ(buffer[0], 9) << "the caller's default stands";
    EXPECT_EQ(xpref_get_value(2, "General", "Audit Trail", 1, nullptr), 0);
    EXPECT_FALSE(fs::exists(File())) << "reading never creates the file";
}

TEST_F(PreferencesTest, ValuesOfEveryKindSurviveAReload) {
    const unsigned char width[4] = {0x2c, 0x01, 0, 0};
    const char* key = "Software\\Quillfen\\Orders\\Line no.\\";
    ASSERT_EQ(xpref_put_data(1, key, "Width", width, 4), 0);
    ASSERT_EQ(xpref_put_string(1, "Software\\Quillfen\\Orders\\nFrozenCols\\", "FrozenCols", "2"), 0);
    ASSERT_EQ(xpref_put_value(2, "General", "Audit Trail", 2), 0);
    xpref_reload();

    unsigned char read[8] = {};
    EXPECT_EQ(xpref_get_data(1, key, "Width", read, 8), 4);
    EXPECT_EQ(0, std::memcmp(read, width, 4));
    char frozen[8] = {};
    EXPECT_EQ(xpref_get_data(1, "Software\\Quillfen\\Orders\\nFrozenCols\\", "FrozenCols",
                             reinterpret_cast<unsigned char*>(frozen), 8),
              1);
    EXPECT_STREQ(frozen, "2");
    x_value_def value;
    x_value_init(&value);
    EXPECT_EQ(xpref_get_value(2, "General", "Audit Trail", 1, &value), 2);
    EXPECT_EQ(value.number, 2.0);
    EXPECT_STREQ(x_value_text(&value), "2");
    x_value_free(&value);
    EXPECT_EQ(xpref_get_value(1, "General", "Audit Trail", 1, nullptr), 0) << "scopes are apart";
    EXPECT_EQ(xpref_get_value(1, "Software\\Quillfen\\Orders\\nFrozenCols\\", "FrozenCols", 1, nullptr), 0)
        << "a text is not a number";
}

TEST_F(PreferencesTest, ShortBufferTakesWhatFitsAndNoMore) {
    const unsigned char data[6] = {1, 2, 3, 4, 5, 6};
    ASSERT_EQ(xpref_put_data(1, "K", "N", data, 6), 0);
    unsigned char buffer[5] = {0, 0, 0, 0, 0xEE};
    EXPECT_EQ(xpref_get_data(1, "K", "N", buffer, 4), 4);
    EXPECT_EQ(buffer[3], 4);
    EXPECT_EQ(buffer[4], 0xEE);
}

TEST_F(PreferencesTest, WritingLeavesNoTemporaryFileBehind) {
    ASSERT_EQ(xpref_put_string(1, "K", "N", "v"), 0);
    ASSERT_EQ(xpref_put_string(1, "K", "N", "w"), 0);
    int files = 0;
    for (const auto& entry : fs::directory_iterator(File().parent_path())) {
        (void)entry;
        ++files;
    }
    EXPECT_EQ(files, 1);
}

TEST_F(PreferencesTest, DamagedFileIsReportedSetAsideAndReplaced) {
    Write("[user.\"K\"]\nWidth = { data = \"2c01\" }\n[application.General\n\"Audit Trail\" = 2\n");
    EXPECT_EQ(xpref_get_value(2, "General", "Audit Trail", 1, nullptr), 0);

    const auto& boxes = oxdmDefaultPresenter().Boxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_NE(boxes[0].text.Find(File().c_str()), -1) << boxes[0].text;
    EXPECT_NE(boxes[0].text.Find("line 3"), -1) << boxes[0].text;

    bool setAside = false;
    for (const auto& entry : fs::directory_iterator(File().parent_path()))
        setAside |= entry.path().filename().string().starts_with("preferences.toml.corrupt-");
    EXPECT_TRUE(setAside);
    EXPECT_FALSE(fs::exists(File()));

    ASSERT_EQ(xpref_put_value(2, "General", "Audit Trail", 2), 0);
    xpref_reload();
    EXPECT_EQ(xpref_get_value(2, "General", "Audit Trail", 1, nullptr), 2);
    EXPECT_EQ(oxdmDefaultPresenter().Boxes().size(), 1u) << "the fresh file is sound";
}

TEST_F(PreferencesTest, ValueOfTheWrongShapeCountsAsDamage) {
    Write("[user.K]\nWidth = { data = \"zz\" }\n");
    unsigned char buffer[2];
    EXPECT_EQ(xpref_get_data(1, "K", "Width", buffer, 2), 0);
    ASSERT_EQ(oxdmDefaultPresenter().Boxes().size(), 1u);
    EXPECT_NE(oxdmDefaultPresenter().Boxes()[0].text.Find("hexadecimal"), -1);

    Write("[nobody.K]\nWidth = 1\n");
    EXPECT_EQ(xpref_get_value(1, "K", "Width", 1, nullptr), 0);
    ASSERT_EQ(oxdmDefaultPresenter().Boxes().size(), 2u);
    EXPECT_NE(oxdmDefaultPresenter().Boxes()[1].text.Find("unknown scope 'nobody'"), -1);
}

// The audit settings follow the preferences; printing needs auditing on; an
// override holds against refreshes until it is stopped.
TEST_F(PreferencesTest, AuditSettingsFollowPreferencesUnlessOverridden) {
    oxdmGlobalData* global = oxdmGlobalData::Instance();
    struct Case {
        long audit, print;
        bool auditing, printing;
    } cases[] = {{0, 2, false, false}, {1, 2, false, false}, {2, 0, true, false}, {2, 1, true, false}, {2, 2, true, true}};
    for (const Case& c : cases) {
        ASSERT_EQ(xpref_put_value(2, "General", "Audit Trail", c.audit), 0);
        ASSERT_EQ(xpref_put_value(2, "General", "Print Audit Trail", c.print), 0);
        global->RefreshAuditing();
        EXPECT_EQ(global->Auditing(), c.auditing) << c.audit << "/" << c.print;
        EXPECT_EQ(global->PrintAudit(), c.printing) << c.audit << "/" << c.print;
    }

    global->OverrideAuditing(false);
    global->RefreshAuditing();
    EXPECT_FALSE(global->Auditing()) << "the override holds against the preference";
    global->StopAuditOverride();
    EXPECT_TRUE(global->Auditing()) << "stopping the override reads the preference again";
    EXPECT_TRUE(global->PrintAudit());
    oxdmGlobalData::KillInstance();
}

}  // namespace
