// oxdm-admin on dictionaries and whole record files: check, create, upgrade,
// and its answers to wrong usage.
#include <gtest/gtest.h>

#include "admin_run.h"

namespace {

using namespace oxdm::admin::testing;

TEST(AdminProgram, WrongUsageAnswersTwoWithTheUsage) {
    TempDir dir;
    for (const char* args : {"", "frobnicate", "check", "check a b", "load x.ord 1", "generate x.ord --customers",
                             "generate x.ord --orders -3", "generate x.ord --lines 12x"}) {
        AdminResult run = RunAdmin(dir, ExamplesDir(), args);
        EXPECT_EQ(run.status, 2) << args;
        EXPECT_NE(run.err.find("usage: oxdm-admin"), std::string::npos) << args;
    }
    AdminResult help = RunAdmin(dir, ExamplesDir(), "--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("generate <record file>"), std::string::npos);
}

TEST(AdminProgram, CheckPassesTheSampleAndListsEveryFaultOfABrokenDictionary) {
    TempDir dir;
    AdminResult good = RunAdmin(dir, ExamplesDir(), "check ord");
    EXPECT_EQ(good.status, 0) << good.out << good.err;
    EXPECT_NE(good.out.find("no errors (4 tables"), std::string::npos) << good.out;

    WriteFile(dir / "bad.toml",
              "[file]\n"                           // 1
              "abbreviation = \"ba\"\n"            // 2
              "letter = \"d\"\n"                   // 3
              "[[table]]\n"                        // 4
              "description = \"T\"\n"              // 5
              "  [[table.field]]\n"                // 6
              "  name = \"A\"\n"                   // 7
              "  type = \"choice\"\n"              // 8
              "  length = 2\n"                     // 9
              "  [[table.field]]\n"                // 10
              "  name = \"B\"\n"                   // 11
              "  type = \"alpha\"\n"               // 12
              "  length = 4\n"                     // 13
              "  colour = 3\n");                   // 14
    AdminResult bad = RunAdmin(dir, dir.path().string(), "check bad");
    EXPECT_EQ(bad.status, 1);
    std::string path = dir / "bad.toml";
    // Both faults, each with the file and its line.
    EXPECT_NE(bad.out.find(path + ":6:"), std::string::npos) << bad.out;
    EXPECT_NE(bad.out.find(path + ":14:"), std::string::npos) << bad.out;

    AdminResult missing = RunAdmin(dir, dir.path().string(), "check nothere");
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.err.find("nothere"), std::string::npos);
}

TEST(AdminProgram, CreateMakesTheFileOnceAndRefusesAnUnknownDictionary) {
    TempDir dir;
    AdminResult first = RunAdmin(dir, ExamplesDir(), "create sales.ord");
    EXPECT_EQ(first.status, 0) << first.err;
    EXPECT_TRUE(std::filesystem::exists(dir / "sales.ord"));
    AdminResult again = RunAdmin(dir, ExamplesDir(), "create sales.ord");
    EXPECT_EQ(again.status, 1);
    EXPECT_NE(again.err.find("already exists"), std::string::npos) << again.err;
    AdminResult unknown = RunAdmin(dir, ExamplesDir(), "create sales.zzz");
    EXPECT_EQ(unknown.status, 1);
    EXPECT_FALSE(std::filesystem::exists(dir / "sales.zzz"));
}

// An earlier "ord": Customer without STATUS, BALANCE, SINCE and the stamps,
// and no other table.
const char kOlderOrd[] =
    "[file]\nabbreviation = \"or\"\nletter = \"d\"\ncode = 1\n"
    "[[table]]\ndescription = \"Customer\"\n"
    "  [[table.field]]\n  name = \"CUSTNO\"\n  type = \"alpha\"\n  length = 8\n  key = true\n"
    "  [[table.field]]\n  name = \"NAME\"\n  type = \"alpha\"\n  length = 30\n"
    "  [[table.field]]\n  name = \"CITY\"\n  type = \"alpha\"\n  length = 20\n";

TEST(AdminProgram, UpgradeAddsTheMissingFieldsAndKeepsEveryRecord) {
    TempDir dir;
    std::filesystem::create_directory(dir.path() / "old");
    WriteFile(dir / "old/ord.toml", kOlderOrd);
    std::string old = dir / "old";
    ASSERT_EQ(RunAdmin(dir, old, "create shop.ord").status, 0);
    WriteFile(dir / "in.csv", "CUSTNO,NAME,CITY\r\nC1,Ann,Riga\r\nC2,\"Bo, Jr\",Oulu\r\nC3,Cy,\r\n");
    ASSERT_EQ(RunAdmin(dir, old, "load shop.ord Customer in.csv").status, 0);

    // The current dictionary refuses the older file until it is upgraded.
    EXPECT_EQ(RunAdmin(dir, ExamplesDir(), "dump shop.ord 1").status, 1);
    AdminResult up = RunAdmin(dir, ExamplesDir(), "upgrade shop.ord");
    ASSERT_EQ(up.status, 0) << up.err;
    EXPECT_NE(up.out.find("table 1 (Customer): added the fields STATUS, BALANCE, SINCE, OPERID, DSTAMP, TSTAMP"),
              std::string::npos)
        << up.out;
    EXPECT_NE(up.out.find("table 3 (Line): added the table"), std::string::npos) << up.out;

    AdminResult dump = RunAdmin(dir, ExamplesDir(), "dump shop.ord Customer --no-stamps");
    ASSERT_EQ(dump.status, 0) << dump.err;
    EXPECT_EQ(dump.out,
              "CUSTNO,NAME,CITY,STATUS,BALANCE,SINCE\r\n"
              "C1,Ann,Riga,,0.00,\r\n"
              "C2,\"Bo, Jr\",Oulu,,0.00,\r\n"
              "C3,Cy,,,0.00,\r\n");

    AdminResult again = RunAdmin(dir, ExamplesDir(), "upgrade shop.ord");
    EXPECT_EQ(again.status, 0);
    EXPECT_NE(again.out.find("up to date"), std::string::npos) << again.out;
    EXPECT_EQ(RunAdmin(dir, ExamplesDir(), "upgrade none.ord").status, 1);
}

}  // namespace
