// The command line: each option over the defaults, and each mistake named
// with its argument.
#include <gtest/gtest.h>

#include "console_options.h"

TEST(ConsoleOptions, ReadsEachOption) {
    ConsoleOptions options;
    options.dataDir = "default";
    std::string error;
    ASSERT_TRUE(ParseConsoleOptions({"--fresh", "--window", "12", "--script", "tour.oxs"}, options, error)) << error;
    EXPECT_TRUE(options.fresh);
    EXPECT_EQ(options.windowRows, 12);
    EXPECT_EQ(options.scriptPath, "tour.oxs");
    EXPECT_EQ(options.dataDir, "default") << "an option not given keeps its default";
    EXPECT_FALSE(options.help);
    ASSERT_TRUE(ParseConsoleOptions({"--data", "/tmp/x", "-h"}, options, error));
    EXPECT_EQ(options.dataDir, "/tmp/x");
    EXPECT_TRUE(options.help);
}

TEST(ConsoleOptions, NamesTheArgumentAtFault) {
    struct Case {
        std::vector<std::string> args;
        const char* error;
    };
    const Case cases[] = {
        {{"--fresh", "--verbose"}, "unknown option '--verbose' (argument 2); try --help"},
        {{"--script"}, "option --script needs a value (argument 1)"},
        {{"--data", ""}, "option --data needs a value (argument 1)"},
        {{"--window", "1"}, "option --window wants a number of rows from 2 to 200, not '1' (argument 2)"},
        {{"--window", "201"}, "option --window wants a number of rows from 2 to 200, not '201' (argument 2)"},
        {{"--window", "8x"}, "option --window wants a number of rows from 2 to 200, not '8x' (argument 2)"},
    };
    for (const Case& c : cases) {
        ConsoleOptions options;
        std::string error;
        EXPECT_FALSE(ParseConsoleOptions(c.args, options, error));
        EXPECT_EQ(error, c.error);
        EXPECT_EQ(options.windowRows, 8) << "a bad value changes nothing";
    }
}
