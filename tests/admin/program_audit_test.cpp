// oxdm-admin audit: the log written through the library, printed by the
// program as a table and filtered by table, key and time.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "admin_run.h"
#include "oxdm/common/auditlog/audit_setup.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"

namespace {

using namespace oxdm::admin::testing;

class AdminAudit : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(Run("create shop.ord").status, 0);
        WriteFile(dir / "in.csv", "CUSTNO,NAME,CITY\nA100,Ann,Riga\nB200,Bob,Oslo\n");
        ASSERT_EQ(Run("load shop.ord Customer in.csv").status, 0);
        ::setenv("OXDM_DICT_PATH", ExamplesDir().c_str(), 1);
        ::setenv("OXDM_OPERATOR", "clerk", 1);
        oxioStatus::Status status;
        CString error;
        std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(oxioFileSpec((dir / "shop.ord").c_str()), false, status, error);
        ASSERT_TRUE(file) << error;
        // One entry for each customer, logged while the table stands on it.
        oxioCursor cursor(*file, 1, 0);
        const char* cities[] = {"Paris", "Rome"};
        int n = 0;
        for (auto at = cursor.FetchFirst(false); at == oxioStatus::Success; at = cursor.FetchNext(false), ++n) {
            AuditSetup log(4, file->FileNum(), 0, 1);
            log.AddColumnInfo(xio_num(file->FileNum(), 0, 0, "CITY"), n ? "Oslo" : "Riga", cities[n]);
            ASSERT_TRUE(log.LogColumnChanges("Changed"));
        }
    }
    AdminResult Run(const std::string& args) { return RunAdmin(dir, ExamplesDir(), args); }

    TempDir dir;
};

TEST_F(AdminAudit, PrintsTheLogAsATableFilteredByTableKeyAndTime) {
    AdminResult all = Run("audit shop.ord");
    ASSERT_EQ(all.status, 0) << all.err;
    // The heading, a rule, then one row per entry with each cell under its heading.
    const std::string heading = all.out.substr(0, all.out.find('\n'));
    const size_t row = all.out.find("\n", heading.size() + 1) + 1;
    const std::string first = all.out.substr(row, all.out.find('\n', row) - row);
    EXPECT_EQ(first.substr(heading.find("Old value"), 4), "Riga") << all.out;
    for (const char* text : {"clerk", "Customer", "A100", "Changed", "Paris", "B200", "Rome", "2 entries."})
        EXPECT_NE(all.out.find(text), std::string::npos) << text << "\n" << all.out;

    struct Case {
        const char* args;
        const char* shown;
        const char* hidden;
    };
    const Case cases[] = {
        {"--key B200", "Rome", "Paris"},
        {"--table customer --key A100", "Paris", "Rome"},
        {"--table 2", "No audit entries.", "Paris"},
        {"--from 2999-01-01", "No audit entries.", "Rome"},
        {"--to 2000-01-01T10:00", "No audit entries.", "Rome"},
    };
    for (const Case& c : cases) {
        AdminResult result = Run(std::string("audit shop.ord ") + c.args);
        ASSERT_EQ(result.status, 0) << c.args << ": " << result.err;
        EXPECT_NE(result.out.find(c.shown), std::string::npos) << c.args << "\n" << result.out;
        EXPECT_EQ(result.out.find(c.hidden), std::string::npos) << c.args << "\n" << result.out;
    }
}

TEST_F(AdminAudit, BadArgumentsAreNamed) {
    struct Case {
        const char* args;
        int status;
        const char* message;
    };
    const Case cases[] = {
        {"audit shop.ord --from tuesday", 1, "'tuesday' is not a time"},
        {"audit none.ord", 1, "none.ord' does not exist"},
        {"audit shop.ord --who me", 2, "audit has no option '--who'"},
        {"audit shop.ord --key", 2, "--key needs a value"},
        {"audit", 2, "usage: oxdm-admin"},
    };
    for (const Case& c : cases) {
        AdminResult result = Run(c.args);
        EXPECT_EQ(result.status, c.status) << c.args;
        EXPECT_NE(result.err.find(c.message), std::string::npos) << c.args << "\n" << result.err;
    }
}

}  // namespace
