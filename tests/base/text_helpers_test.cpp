// The in-place text helpers of fixed-width fields.
#include <gtest/gtest.h>

#include <cstring>

#include "oxdm/base/text_helpers.h"

namespace {

TEST(TextHelpers, InsertAndDeleteStayInsideTheText) {
    char text[32] = "ABCDEF";
    x_strins(text, 2, "xy");
    EXPECT_STREQ(text, "ABxyCDEF");
    x_strins(text, 100, "!");
    EXPECT_STREQ(text, "ABxyCDEF!") << "a position past the end appends";
    x_strdel(text, 2, 2);
    EXPECT_STREQ(text, "ABCDEF!");
    x_strdel(text, 5, 50);
    EXPECT_STREQ(text, "ABCDE") << "a count past the end stops at the end";
    x_strdel(text, 9, 1);
    x_strdel(text, -1, 1);
    EXPECT_STREQ(text, "ABCDE");
}

TEST(TextHelpers, CaseHelpers) {
    char text[] = "oRDER  lINE no.";
    x_init_caps(text);
    EXPECT_STREQ(text, "Order  Line No.");
    x_lower_case(text);
    EXPECT_STREQ(text, "order  line no.");
}

struct AbbreviateCase {
    const char* text;
    short width;
    const char* expected;
};

TEST(TextHelpers, AbbreviateDropsInnerVowelsFromTheEndThenCuts) {
    const AbbreviateCase cases[] = {
        {"Customer number", 30, "Customer number"},  // fits: untouched
        {"Customer number", 13, "Customer nmbr"},    // the last word loses its vowels first
        {"Customer number", 11, "Custmr nmbr"},      // then the earlier words
        {"Order date", 8, "Order dt"},
        {"Items", 4, "Itms"},                        // a word's first letter stays even as a vowel
        {"Aaaaaaaa bbbbbbb", 5, "A bbb"},            // cut, and the trailing blank dropped
        {"xyz", 0, ""},
    };
    for (const auto& c : cases) {
        char text[64];
        std::strcpy(text, c.text);
        x_abbreviate(text, c.width, 0x20);
        EXPECT_STREQ(text, c.expected) << c.text << " to " << c.width;
        EXPECT_LE(std::strlen(text), static_cast<size_t>(c.width) > std::strlen(c.text) ? std::strlen(c.text)
                                                                                       : static_cast<size_t>(c.width));
    }
}

TEST(TextHelpers, FillAndAllocate) {
    auto* memory = static_cast<char*>(x_alloc(8, true, true));
    ASSERT_NE(memory, nullptr);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(memory[i], 0);
    x_fill(memory, 7, '*');
    EXPECT_STREQ(memory, "*******");
    x_free(memory);
    x_free(nullptr);
}

}  // namespace
