// oxdm-admin on the records of a table: load, dump and generate.
#include <gtest/gtest.h>

#include "admin_run.h"

namespace {

using namespace oxdm::admin::testing;

class AdminTables : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Run("create shop.ord").status, 0); }
    AdminResult Run(const std::string& args) { return RunAdmin(dir, ExamplesDir(), args); }

    TempDir dir;
};

// Customers in the order of their key, with every kind of value the table
// holds and texts that need quoting.
const char kCustomers[] =
    "CUSTNO,NAME,CITY,STATUS,BALANCE,SINCE\r\n"
    "A100,\"Smith, Ann\",Riga,1,1234.50,03/15/2012\r\n"
    "B200,\"Say \"\"hi\"\"\",\"Two\nlines\",2,-17.25,12/31/1999\r\n"
    "C300,Plain,,3,0.00,\r\n";

TEST_F(AdminTables, LoadThenDumpGivesTheSameRows) {
    WriteFile(dir / "in.csv", kCustomers);
    AdminResult load = Run("load shop.ord Customer in.csv");
    ASSERT_EQ(load.status, 0) << load.err;
    EXPECT_NE(load.out.find("Loaded 3 records"), std::string::npos) << load.out;

    ASSERT_EQ(Run("dump shop.ord customer out.csv --no-stamps").status, 0);
    EXPECT_EQ(ReadFile(dir / "out.csv"), kCustomers);

    // With the stamps, which the store filled: the operator is the one named
    // in the environment.
    AdminResult full = RunAdmin(dir, ExamplesDir(), "dump shop.ord 1");
    ASSERT_EQ(full.status, 0);
    EXPECT_EQ(full.out.substr(0, full.out.find("\r\n")), "CUSTNO,NAME,CITY,STATUS,BALANCE,SINCE,OPERID,DSTAMP,TSTAMP");

    // A dump loads into another file as it stands, stamps and all.
    ASSERT_EQ(Run("dump shop.ord 1 full.csv").status, 0);
    ASSERT_EQ(Run("create copy.ord").status, 0);
    ASSERT_EQ(Run("load copy.ord 1 full.csv").status, 0);
    ASSERT_EQ(Run("dump copy.ord 1 copy.csv --no-stamps").status, 0);
    EXPECT_EQ(ReadFile(dir / "copy.csv"), kCustomers);
}

TEST_F(AdminTables, ABadRowLoadsNothingAndNamesLineAndColumn) {
    WriteFile(dir / "bad.csv",
              "CUSTNO,NAME,BALANCE,SINCE,STATUS\n"
              "A1,Ann,10.00,01/02/2020,1\n"
              "A2,Bob,12x,01/02/2020,1\n"            // line 3: BALANCE
              "A3,Cy,1.00,02/30/2020,1\n"            // line 4: SINCE
              "A4,Di,1.00,,7\n"                      // line 5: STATUS beyond the items
              "A5,\"A name far too long for thirty chars\",1,,1\n");  // line 6: NAME
    AdminResult load = Run("load shop.ord Customer bad.csv");
    EXPECT_EQ(load.status, 1);
    EXPECT_NE(load.err.find("bad.csv:3: column 3 (BALANCE): '12x'"), std::string::npos) << load.err;
    EXPECT_NE(load.err.find("bad.csv:4: column 4 (SINCE)"), std::string::npos) << load.err;
    EXPECT_NE(load.err.find("bad.csv:5: column 5 (STATUS)"), std::string::npos) << load.err;
    EXPECT_NE(load.err.find("bad.csv:6: column 2 (NAME)"), std::string::npos) << load.err;
    EXPECT_NE(load.err.find("nothing was loaded"), std::string::npos);
    AdminResult dump = Run("dump shop.ord Customer");
    EXPECT_EQ(dump.out.find("\r\n") + 2, dump.out.size()) << "only the header: " << dump.out;

    struct Case {
        const char* csv;
        const char* where;
    };
    for (Case c : {Case{"CUSTNO,NAME\nA1,Ann\nA2,\"open\n", "x.csv:3: column 2: a quoted field is not closed"},
                   Case{"CUSTNO,NAMEX\nA1,Ann\n", "x.csv:1: column 2: table 1 has no field 'NAMEX'"},
                   Case{"CUSTNO,NAME\nA1,Ann\nA2\n", "x.csv:3: the row has 1 fields"},
                   Case{"CUSTNO,NAME\nA1,Ann\nA2,Bo\na1,Cy\n", "x.csv:4: a record with this key"}}) {
        WriteFile(dir / "x.csv", c.csv);
        AdminResult bad = Run("load shop.ord Customer x.csv");
        EXPECT_EQ(bad.status, 1) << c.csv;
        EXPECT_NE(bad.err.find(c.where), std::string::npos) << bad.err;
        AdminResult after = Run("dump shop.ord Customer");
        EXPECT_EQ(after.out.find("\r\n") + 2, after.out.size()) << c.csv << after.out;
    }
}

TEST_F(AdminTables, UnknownTableListsTheTables) {
    AdminResult run = Run("dump shop.ord Invoices");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("1 Customer, 2 Order, 3 Line, 4 CustomerExtra"), std::string::npos) << run.err;
}

TEST_F(AdminTables, GenerateIsDeterministic) {
    const std::string counts = " --customers 40 --orders 150 --lines 600";
    AdminResult first = Run("generate one.ord" + counts);
    ASSERT_EQ(first.status, 0) << first.err;
    EXPECT_NE(first.out.find("Wrote 40 customers, 150 orders and 600 lines"), std::string::npos) << first.out;
    ASSERT_EQ(Run("generate two.ord" + counts).status, 0);
    for (const char* table : {"Customer", "Order", "Line"}) {
        AdminResult a = Run(std::string("dump one.ord ") + table + " --no-stamps");
        AdminResult b = Run(std::string("dump two.ord ") + table + " --no-stamps");
        ASSERT_EQ(a.status, 0) << a.err;
        EXPECT_EQ(a.out, b.out) << table;
    }
    AdminResult lines = Run("dump one.ord Line --no-stamps");
    EXPECT_EQ(std::count(lines.out.begin(), lines.out.end(), '\n'), 601);
    // Into a file that already holds the sample: refused.
    EXPECT_EQ(Run("generate one.ord" + counts).status, 1);
}

}  // namespace
