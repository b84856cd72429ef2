// Bad command lines and bad journal lines are refused with a sentence that
// names what is wrong and where.

#include <gtest/gtest.h>

#include <fstream>
#include <vector>

#include "journal.h"
#include "soak_options.h"

TEST(SoakInput, BadOptionsNameTheOptionAndTheFault) {
    struct Case {
        std::vector<const char*> args;
        const char* words;
    };
    const Case cases[] = {
        {{"--processes", "0"}, "The value 0 of --processes is out of range"},
        {{"--edits", "12x"}, "The value '12x' of --edits is not a whole number"},
        {{"--seed", "1", "--bogus", "3"}, "Unknown option '--bogus' (argument 3)"},
        {{"--dir"}, "The option --dir needs a value"},
        {{"extra"}, "Unknown argument 'extra'"},
        {{"--processes", "8", "--orders", "5"}, "fewer orders (5) than processes (8)"},
    };
    for (const Case& c : cases) {
        std::vector<const char*> argv{"oxdm-soak"};
        argv.insert(argv.end(), c.args.begin(), c.args.end());
        SoakOptions options;
        std::string error;
        EXPECT_FALSE(ParseSoakOptions(static_cast<int>(argv.size()), argv.data(), options, error)) << c.words;
        EXPECT_NE(error.find(c.words), std::string::npos) << error;
    }
    SoakOptions options;
    std::string error;
    const char* good[] = {"oxdm-soak", "--processes", "3", "--edits", "10", "--seed", "42", "--think-us", "0"};
    ASSERT_TRUE(ParseSoakOptions(9, good, options, error)) << error;
    EXPECT_EQ(options.processes, 3);
    EXPECT_EQ(options.edits, 10);
    EXPECT_EQ(options.seed, 42u);
    EXPECT_EQ(options.thinkMicros, 0);
}

// Every entry reads back as written; a damaged line is named by file and line.
TEST(SoakInput, JournalRoundTripAndDamage) {
    const std::vector<JournalEntry> entries = {
        CustomerCommit{"C0000003", "Bergen", "Riga", "p1-0000007"},
        ConflictSeen{"C0000003", "Bergen", "p0-0000002", ConflictAnswer::Kept},
        CustomerInUse{"C0000004", "Riga"},
        LineAdded{"O000000012", 5, LineImage{"SOAK000042", 3, 1299}, 48750},
        LineRemoved{"O000000012", 2, 31200},
        OrderRekeyed{"O000000012", "R010000001"},
    };
    const std::string path = ::testing::TempDir() + "soak-journal.txt";
    {
        JournalWriter writer(path);
        ASSERT_TRUE(writer.Ok());
        for (const JournalEntry& entry : entries) writer.Write(entry);
        writer.Write(WorkerFigures{10, 5, 1, 2, 0});
    }
    Journal journal;
    std::string error;
    ASSERT_TRUE(ReadJournal(path, 1, journal, error)) << error;
    ASSERT_TRUE(journal.complete);
    ASSERT_EQ(journal.entries.size(), entries.size());
    for (size_t i = 0; i < entries.size(); ++i) EXPECT_EQ(FormatEntry(journal.entries[i]), FormatEntry(entries[i]));
    EXPECT_EQ(journal.figures.retries, 2);

    struct Damage {
        const char* text;
        const char* where;
    };
    for (const Damage& d : {Damage{"cust C0000003 Bergen Riga", ", line 2: malformed 'cust'"},
                            Damage{"line+ O1 x SOAK 1 2 3", ", line 2: malformed 'line+'"},
                            Damage{"drop table", ", line 2: unknown entry 'drop'"},
                            Damage{"end 1 2 3 4 5\ncust a b c", ", line 3: an entry after the closing line"}}) {
        std::ofstream(path) << "rekey O1 R2\n" << d.text << "\n";
        EXPECT_FALSE(ReadJournal(path, 1, journal, error)) << d.text;
        EXPECT_NE(error.find(path + d.where), std::string::npos) << error;
    }
}
