// The electronic audit log over a real record file of the sample dictionary
// "ord": what one entry holds, how the reader filters, and that the log
// cannot be rewritten. (A failed write is tested with the audit trail.)

#include <gtest/gtest.h>
#include <pwd.h>
#include <sqlite3.h>
#include <unistd.h>

#include <memory>
#include <string>

#include "oxdm/common/auditlog/audit_log.h"
#include "oxdm/common/auditlog/audit_setup.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/text_values.h"
#include "record_test_support.h"

namespace {

class AuditLogTest : public RecordTestBase {
protected:
    void SetUp() override {
        RecordTestBase::SetUp();
        ::setenv("OXDM_OPERATOR", "auditor", 1);
        oxioStatus::Status status = oxioStatus::IOError;
        CString error;
        file_ = oxioDataFile::Open(oxioFileSpec(Path().c_str()), true, status, error);
        ASSERT_TRUE(file_) << error;
    }
    void TearDown() override {
        file_.reset();
        RecordTestBase::TearDown();
    }

    std::string Path() const { return (Scratch() / "sales.ord").string(); }
    short File() const { return file_->FileNum(); }
    short Field(const char* name) const { return xio_num(File(), 0, 0, name); }

    void AddCustomer(const char* key, const char* city) {
        oxioCursor cursor(*file_, 1, 0);
        cursor.Clear();
        ASSERT_TRUE(cursor.SetColumnData("CUSTNO", oxAlpha(key)));
        ASSERT_TRUE(cursor.SetColumnData("NAME", oxAlpha("Name")));
        ASSERT_TRUE(cursor.SetColumnData("CITY", oxAlpha(city)));
        ASSERT_EQ(cursor.Insert(nullptr), oxioStatus::Success);
    }
    // Logs one "Changed" entry of CITY for the customer last written.
    bool LogCity(short task, const char* before, const char* after) {
        AuditSetup log(task, File(), 0, 1);
        log.AddColumnInfo(Field("CITY"), before, after);
        return log.LogColumnChanges("Changed");
    }
    std::vector<oxAuditLogEntry> Read(const oxAuditLogFilter& filter = {}) const {
        std::vector<oxAuditLogEntry> entries;
        CString error;
        EXPECT_TRUE(oxReadAuditLog(Path().c_str(), filter, entries, error)) << error;
        return entries;
    }
    // Runs SQL on the record file through a connection of its own; answers
    // the SQLite result code.
    int RawSql(const char* sql) const {
        sqlite3* db = nullptr;
        sqlite3_open(Path().c_str(), &db);
        sqlite3_busy_timeout(db, 2000);
        int rc = sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
        sqlite3_close(db);
        return rc;
    }

    std::unique_ptr<oxioDataFile> file_;
};

TEST_F(AuditLogTest, OneEntryPerColumnCarriesWhenWhoWhereAndBothValues) {
    AddCustomer("C0001", "Oslo");
    AuditSetup log(7, File(), 0, 1);
    EXPECT_EQ(log.RecordKey().str(), "C0001");
    log.AddColumnInfo(Field("CITY"), "Oslo", "Bergen");
    log.AddColumnInfo(Field("NAME"), "", "Name");
    ASSERT_TRUE(log.LogColumnChanges("Changed"));
    // The columns were written once: a second call has nothing to add.
    ASSERT_TRUE(log.LogColumnChanges("Changed"));

    const std::vector<oxAuditLogEntry> entries = Read();
    ASSERT_EQ(entries.size(), 2u);
    const oxAuditLogEntry& city = entries[0];
    EXPECT_EQ(city.time.GetLength(), 19) << city.time;
    EXPECT_EQ(city.operatorId.str(), "auditor");
    EXPECT_EQ(city.task, 7);
    EXPECT_EQ(city.table, 1);
    EXPECT_EQ(city.tableName.str(), "Customer");
    EXPECT_EQ(city.recordKey.str(), "C0001");
    EXPECT_EQ(city.label.str(), "Changed");
    EXPECT_EQ(city.column.str(), "CITY");
    EXPECT_EQ(city.oldValue.str(), "Oslo");
    EXPECT_EQ(city.newValue.str(), "Bergen");
    EXPECT_EQ(entries[1].column.str(), "NAME");
    EXPECT_LT(entries[0].sequence, entries[1].sequence);
    EXPECT_TRUE(oxdmDefaultPresenter().Boxes().empty());
}

// Who made a change: $OXDM_OPERATOR, else $USER, else the account's name.
TEST_F(AuditLogTest, TheOperatorFallsBackToTheAccountName) {
    const passwd* account = ::getpwuid(::geteuid());
    ASSERT_NE(account, nullptr);
    const std::string accountName = account->pw_name;
    const char* user = std::getenv("USER");
    const std::string savedUser = user ? user : "";
    struct Case {
        const char* operatorVar;  // null: unset
        const char* userVar;
        std::string expected;
    };
    const Case cases[] = {{"auditor", "clerk", "auditor"}, {nullptr, "clerk", "clerk"}, {"", "", accountName},
                          {nullptr, nullptr, accountName}};
    AddCustomer("C0001", "Oslo");
    for (const Case& c : cases) {
        c.operatorVar ? ::setenv("OXDM_OPERATOR", c.operatorVar, 1) : ::unsetenv("OXDM_OPERATOR");
        c.userVar ? ::setenv("USER", c.userVar, 1) : ::unsetenv("USER");
        ASSERT_TRUE(LogCity(1, "Oslo", "Bergen"));
        EXPECT_EQ(Read().back().operatorId.str(), c.expected) << (c.operatorVar ? c.operatorVar : "(unset)");
    }
    user ? ::setenv("USER", savedUser.c_str(), 1) : ::unsetenv("USER");
}

TEST_F(AuditLogTest, TheReaderFiltersByTableKeyAndTime) {
    AddCustomer("C0001", "Oslo");
    ASSERT_TRUE(LogCity(1, "Oslo", "Bergen"));
    AddCustomer("C0002", "Oslo");
    ASSERT_TRUE(LogCity(2, "Oslo", "Molde"));
    {
        AuditSetup order(3, File(), 0, 2);
        order.AddColumnInfo(Field("ODATE"), "", "2026-01-02");
        ASSERT_TRUE(order.LogColumnChanges("Added"));
    }
    auto tasks = [](const std::vector<oxAuditLogEntry>& entries) {
        std::string text;
        for (const oxAuditLogEntry& entry : entries) text += std::to_string(entry.task);
        return text;
    };
    const CString today = Read()[0].time.Left(10);
    struct Case {
        oxAuditLogFilter filter;
        const char* tasks;
    };
    const Case cases[] = {
        {{}, "123"},
        {{"1", "", "", ""}, "12"},
        {{"cUSTOMER", "", "", ""}, "12"},
        {{"Order", "", "", ""}, "3"},
        {{"9", "", "", ""}, ""},
        {{"", "C0002", "", ""}, "2"},
        {{"1", "C0001", "", ""}, "1"},
        {{"", "", today, today}, "123"},
        {{"", "", "2999-01-01", ""}, ""},
        {{"", "", "", "2000-01-01 12:00"}, ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(tasks(Read(c.filter)), c.tasks)
            << "table '" << c.filter.table << "' key '" << c.filter.key << "' from '" << c.filter.from << "' to '"
            << c.filter.to << "'";

    for (const char* bad : {"noon", "2026-3-07", "2026-13-01", "2026-03-07 24:00", "2026-03-07 10:00:6"}) {
        std::vector<oxAuditLogEntry> entries;
        CString error;
        EXPECT_FALSE(oxReadAuditLog(Path().c_str(), {"", "", bad, ""}, entries, error)) << bad;
        EXPECT_NE(error.Find(("'" + std::string(bad) + "' is not a time").c_str()), -1) << error;
    }
}

TEST_F(AuditLogTest, EntriesCannotBeChangedOrRemoved) {
    AddCustomer("C0001", "Oslo");
    ASSERT_TRUE(LogCity(1, "Oslo", "Bergen"));
    EXPECT_NE(RawSql("UPDATE _oxdm_audit_log SET new_value = 'Paris'"), SQLITE_OK);
    EXPECT_NE(RawSql("DELETE FROM _oxdm_audit_log"), SQLITE_OK);
    const std::vector<oxAuditLogEntry> entries = Read();
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].newValue.str(), "Bergen");
}

TEST_F(AuditLogTest, AFileNeverAuditedHasNoEntriesAndAMissingFileIsNamed) {
    EXPECT_TRUE(Read().empty());
    std::vector<oxAuditLogEntry> entries;
    CString error;
    const std::string missing = (Scratch() / "nothere.ord").string();
    EXPECT_FALSE(oxReadAuditLog(missing.c_str(), {}, entries, error));
    EXPECT_NE(error.Find(("'" + missing + "' does not exist").c_str()), -1) << error;
}

}  // namespace
