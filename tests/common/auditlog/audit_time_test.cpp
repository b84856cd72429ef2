#include <gtest/gtest.h>

#include "oxdm/common/auditlog/audit_log.h"

namespace {

TEST(AuditTime, FillsTheMissingPartAsTheStartOrTheEnd) {
    struct Case {
        const char* text;
        const char* lower;
        const char* upper;
    };
    const Case cases[] = {
        {"2026-03-07", "2026-03-07 00:00:00", "2026-03-07 23:59:59"},
        {"2026-03-07 14:05", "2026-03-07 14:05:00", "2026-03-07 14:05:59"},
        {"2026-03-07T14:05:09", "2026-03-07 14:05:09", "2026-03-07 14:05:09"},
    };
    for (const Case& c : cases) {
        CString lower, upper, error;
        ASSERT_TRUE(oxParseAuditTime(c.text, false, lower, error)) << c.text << ": " << error;
        ASSERT_TRUE(oxParseAuditTime(c.text, true, upper, error)) << c.text << ": " << error;
        EXPECT_EQ(lower.str(), c.lower);
        EXPECT_EQ(upper.str(), c.upper);
    }
}

TEST(AuditTime, RefusesWhatIsNotATimeAndSaysWhy) {
    const char* bad[] = {"", "yesterday", "2026-3-7", "2026-03-07 1405", "2026-03-07 14:05:0", "2026/03/07",
                         "2026-13-01", "2026-02-00", "2026-03-07 24:00", "2026-03-07 10:60"};
    for (const char* text : bad) {
        CString normalized = "untouched", error;
        EXPECT_FALSE(oxParseAuditTime(text, false, normalized, error)) << text;
        EXPECT_EQ(normalized.str(), "untouched") << text;
        EXPECT_NE(error.Find(("'" + std::string(text) + "'").c_str()), -1) << error;
    }
}

}  // namespace
