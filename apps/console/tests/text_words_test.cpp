// Splitting a command line into its words and the text after them.
#include <gtest/gtest.h>

#include "text_words.h"

TEST(SplitWords, WordsThenTheRestTrimmed) {
    using Words = std::vector<std::string>;
    struct Case {
        const char* line;
        size_t count;
        Words words;
    };
    const Case cases[] = {
        {"set NAME Ada  Lovelace ", 2, {"set", "NAME", "Ada  Lovelace"}},
        {"  next", 1, {"next", ""}},
        {"find CUSTNO", 2, {"find", "CUSTNO", ""}},
        {"set", 2, {"set", ""}},
        {"", 1, {""}},
        {"expect\tfocus\tNAME x", 2, {"expect", "focus", "NAME x"}},
        {"quit now", 0, {"quit now"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        EXPECT_EQ(SplitWords(c.line, c.count), c.words);
    }
    EXPECT_EQ(Lower("C0000042 Ab"), "c0000042 ab");
    EXPECT_EQ(Trimmed("\t x y \r"), "x y");
}
