#include <gtest/gtest.h>

#include "csv.h"

namespace oxdm::admin {
namespace {

TEST(AdminCsv, WrittenRecordsReadBackWithTheirLines) {
    std::vector<std::vector<std::string>> rows = {
        {"CUSTNO", "NAME", "NOTE"},
        {"C1", "Smith, Ann", "says \"hi\""},
        {"C2", "two\nlines", ""},
        {"C3", "", "crlf\r\ninside"},
        {"C4", "plain", "end"},
    };
    std::string text;
    for (const auto& row : rows) text += CsvLine(row);
    std::vector<CsvRecord> records;
    CsvFault fault;
    ASSERT_TRUE(ParseCsv(text, records, fault)) << fault.message;
    ASSERT_EQ(records.size(), rows.size());
    for (size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(records[i].fields, rows[i]) << "record " << i;
    // The quoted line breaks push the later records down.
    EXPECT_EQ(records[1].line, 2);
    EXPECT_EQ(records[2].line, 3);
    EXPECT_EQ(records[3].line, 5);
    EXPECT_EQ(records[4].line, 7);
}

TEST(AdminCsv, ReadsLineFeedsByteOrderMarkAndAMissingLastBreak) {
    std::vector<CsvRecord> records;
    CsvFault fault;
    ASSERT_TRUE(ParseCsv("\xEF\xBB\xBF" "a,b\n1,\n,2", records, fault));
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0].fields, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(records[1].fields, (std::vector<std::string>{"1", ""}));
    EXPECT_EQ(records[2].fields, (std::vector<std::string>{"", "2"}));
    EXPECT_EQ(records[2].line, 3);
}

TEST(AdminCsv, FaultsNameLineAndColumn) {
    struct Case {
        const char* text;
        int line;
        int column;
        const char* words;
    };
    const Case cases[] = {
        {"a,b\n1,\"open\n2,3\n", 2, 2, "not closed"},
        {"a,b\n1,2\n3,x\"y\n", 3, 2, "quote inside an unquoted field"},
        {"a,b,c\n1,\"q\"z,3\n", 2, 2, "after the closing quote"},
        {"a,b\r1,2\r\n", 1, 2, "carriage return"},
    };
    for (const Case& c : cases) {
        std::vector<CsvRecord> records;
        CsvFault fault;
        EXPECT_FALSE(ParseCsv(c.text, records, fault)) << c.text;
        EXPECT_EQ(fault.line, c.line) << c.text;
        EXPECT_EQ(fault.column, c.column) << c.text;
        EXPECT_NE(fault.message.find(c.words), std::string::npos) << fault.message;
    }
}

}  // namespace
}  // namespace oxdm::admin
