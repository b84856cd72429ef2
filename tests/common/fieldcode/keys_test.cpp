// Keys typed through each formatter: from a text and a selection, the text
// and caret after the key, or a refusal that changes nothing.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fieldcode_test_support.h"
#include "oxdm/common/fieldcode/date_time_edit_formatters.h"
#include "oxdm/common/fieldcode/fld_code_edit_formatter.h"
#include "oxdm/common/fieldcode/num_edit_formatter.h"
#include "oxdm/common/fieldcode/phone_edit_formatter.h"
#include "oxdm/common/fieldcode/text_edit_formatters.h"

namespace {

struct Key {
    const char* before;
    int selStart;
    int selEnd;
    char key;
    const char* after;  // null: the key is refused
    int caret;
};

void RunKeys(const oxEditFormatter& formatter, const std::vector<Key>& keys) {
    for (const Key& k : keys) {
        SCOPED_TRACE(::testing::Message() << "\"" << k.before << "\" [" << k.selStart << "," << k.selEnd
                                          << "] key " << static_cast<int>(k.key));
        oxEditState state{k.before, k.selStart, k.selEnd};
        const bool accepted = formatter.KeyPressed(k.key, state);
        EXPECT_EQ(accepted, k.after != nullptr);
        if (accepted) {
            EXPECT_EQ(std::string(state.text.c_str()), k.after);
            EXPECT_EQ(state.selStart, k.caret);
            EXPECT_EQ(state.selEnd, k.caret);
        } else {
            EXPECT_EQ(std::string(state.text.c_str()), k.before);
            EXPECT_EQ(state.selStart, k.selStart);
            EXPECT_EQ(state.selEnd, k.selEnd);
        }
    }
}

class Keys : public fctest::FieldCodeTest {};

}  // namespace

TEST(KeysEditing, SelectionBackspaceAndDelete) {
    const oxStrEditFormatter text(0, false);
    RunKeys(text, {
        {"abc", 1, 1, 'x', "axbc", 2},
        {"abc", 2, 0, 'x', "xc", 1},    // a selection given backwards
        {"abc", -5, 99, 'x', "x", 1},   // out of range: held to the text
        {"abc", 1, 1, OX_KEY_BACKSPACE, "bc", 0},
        {"abc", 0, 0, OX_KEY_BACKSPACE, nullptr, 0},
        {"abc", 3, 3, OX_KEY_DELETE, nullptr, 0},
        {"abc", 1, 1, OX_KEY_DELETE, "ac", 1},
        {"abc", 0, 2, OX_KEY_DELETE, "c", 0},
        {"abc", 1, 1, '\t', nullptr, 0},
        {"abc", 1, 1, static_cast<char>(0xe9), nullptr, 0},
    });
}

TEST(KeysByFormatter, TextNumberDateTimeMasks) {
    RunKeys(oxStrEditFormatter(3, true), {{"AB", 2, 2, 'c', "ABC", 3}, {"abc", 3, 3, 'd', nullptr, 0}, {"abc", 0, 3, 'd', "D", 1}});

    oxNumEditFormatter number(4, 2, oxNumEditFormatter::kCommas);
    RunKeys(number, {
        {"", 0, 0, '-', "-", 1},
        {"1234", 4, 4, '5', nullptr, 0},
        {"1234", 4, 4, '.', "1234.", 5},
        {"12.34", 5, 5, '5', nullptr, 0},
        {"12.3", 4, 4, '.', nullptr, 0},
        {"1", 1, 1, ',', "1,", 2},
        {"1", 1, 1, 'x', nullptr, 0},
    });
    number.SetLowerLimit(0.0);
    RunKeys(number, {{"", 0, 0, '-', nullptr, 0}});
    RunKeys(oxNumEditFormatter(4, 0, 0), {{"1", 1, 1, '.', nullptr, 0}, {"1", 1, 1, ',', nullptr, 0}});

    RunKeys(oxDateEditFormatter(0), {{"1", 1, 1, '/', "1/", 2}, {"Jan", 3, 3, ' ', "Jan ", 4}, {"1", 1, 1, ':', nullptr, 0}});
    RunKeys(oxTimeEditFormatter(0), {{"9", 1, 1, ':', "9:", 2}, {"9:05 ", 5, 5, 'p', "9:05 p", 6}, {"9", 1, 1, '/', nullptr, 0}});

    RunKeys(oxSocSecEditFormatter(), {
        {"123-45-678", 10, 10, '9', "123-45-6789", 11},
        {"123-45-6789", 11, 11, '0', nullptr, 0},
        {"123", 3, 3, 'a', nullptr, 0},
    });
    RunKeys(oxPhoneEditFormatter(14), {
        {"", 0, 0, '(', "(", 1},
        {"5550104477", 10, 10, '1', nullptr, 0},
        {"555", 3, 3, 'x', nullptr, 0},
    });
}

TEST_F(Keys, FieldCodeCapitalsBySectionAndWidth) {
    RunKeys(oxFldCodeEditFormatter(1, 0), {
        {"ab", 2, 2, 'c', "abC", 3},        // the group is upper-cased
        {"ABCD-", 5, 5, 'x', "ABCD-x", 6},  // the serial is not
        {"ABCD-123456", 11, 11, '7', nullptr, 0},  // 11 is the code's width
    });
    RunKeys(oxFldCodeEditFormatter(1, 2), {{"12345", 5, 5, '6', "123456", 6}, {"123456", 6, 6, '7', nullptr, 0}});
    RunKeys(oxFldCodeEditFormatter(9, 5), {{"1234", 4, 4, '5', "12345", 5}, {"12345", 5, 5, '6', nullptr, 0}});
}
