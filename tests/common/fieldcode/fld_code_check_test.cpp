// The check of field codes on leaving a field: for each code and section
// number, what the operator typed, the verdict, the words and the text the
// edit is left with.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fieldcode_test_support.h"
#include "oxdm/common/fieldcode/fld_code_edit_formatter.h"

namespace {

struct Case {
    short code;
    unsigned short section;
    const char* typed;
    bool valid;
    const char* fault;   // the fault's words; "" when valid
    const char* result;  // the edit's text after the check
};

// The message that wraps a fault of the code and section.
std::string Wrapped(short code, unsigned short section, const std::string& fault) {
    if (fault.empty() || fault == "Required entry.") return fault;
    char description[64] = {};
    char mask[64] = {};
    const short named = section <= 5 ? static_cast<short>(section) : 0;
    xk_description(code, named, description, false);
    xk_mask(code, named, mask);
    return "Incorrect " + std::string(description) + " format. " + fault + " Correct format is " + mask + ".";
}

void RunCases(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(::testing::Message() << "code " << c.code << " section " << c.section << " typed \""
                                          << c.typed << "\"");
        const oxFldCodeEditFormatter formatter(c.code, c.section);
        CString text = c.typed;
        oxEditValidateInfo info;
        EXPECT_EQ(formatter.IsValid(text, &info), c.valid);
        EXPECT_EQ(std::string(text.c_str()), c.result);
        EXPECT_EQ(std::string(c.valid ? "" : info.message.c_str()), Wrapped(c.code, c.section, c.fault));
    }
}

class FieldCodeCheck : public fctest::FieldCodeTest {};

}  // namespace

TEST_F(FieldCodeCheck, ItemNumberWhole) {
    RunCases({
        {1, 0, "", true, "", ""},
        {1, 0, "ABCD-123456", true, "", "ABCD-123456"},
        {1, 0, "abcd-123456", true, "", "ABCD-123456"},
        {1, 0, "ABCD123456", true, "", "ABCD-123456"},
        // Short sections: blanks behind a group, zeros in front of a serial.
        {1, 0, "AB-123456", true, "", "AB  -123456"},
        {1, 0, "ABCD-12", true, "", "ABCD-000012"},
        {1, 0, "123-45678", true, "", "0123-045678"},
        {1, 0, "12-34", false, "Insufficient digits entered.", "12-34"},
        // Punctuation in the wrong place passes once unformatted again.
        {1, 0, "ABCD-123-456", true, "", "ABCD-123456"},
        {1, 0, "ABCDE-12345", true, "", "ABCD-E12345"},
        {1, 0, "ABCD-1234567", false, "Too many characters entered.", "ABCD-1234567"},
        {1, 0, "ABCDE-123456", false, "Too many characters entered.", "ABCDE-123456"},
        {1, 0, "AB*D-123456", false, "Invalid character.", "AB*D-123456"},
        {1, 0, "A", false, "Insufficient characters entered.", "A"},
        {1, 0, "12", false, "Insufficient digits entered.", "12"},
    });
}

TEST_F(FieldCodeCheck, ItemNumberSections) {
    RunCases({
        {1, 1, "abc", true, "", "ABC"},
        {1, 1, "ABCDE", false, "Too many characters entered.", "ABCDE"},
        {1, 1, "AB-C", true, "", "ABC"},
        {1, 2, "12", true, "", "000012"},
        {1, 2, "12-3", true, "", "000123"},
        {1, 2, "1234567", false, "Too many characters entered.", "1234567"},
        {1, 2, "12*3", false, "Invalid character.", "12*3"},
    });
}

TEST_F(FieldCodeCheck, AccountWholeAndLoose) {
    RunCases({
        {9, 0, "12.5", true, "", "12.50"},
        {9, 0, "12", true, "", "12.00"},
        {9, 0, "AB-1", true, "", "AB-1.00"},
        // Blanks only fail the check, but unformatted they are the empty
        // text, which passes on the second try.
        {9, 0, "  ", true, "", ""},
        {1, 0, "   ", true, "", ""},
        {9, 0, "1234567.5", false, "Too many characters entered.", "1234567.5"},
        {9, 0, "1.234", false, "Too many digits after decimal point.", "1.234"},
        {9, 0, "1.2.3", false, "Only one decimal point allowed.", "1.2.3"},
        {9, 0, "12.5*", false, "Invalid character.", "12.5*"},
        {9, 0, ".5", false, "Insufficient characters entered.", ".5"},
        // Section 8 is not strict about length, but a zero is no entry.
        {9, 8, "5", true, "", "5.00"},
        {9, 8, ".5", false, "Zero entry not allowed.", ".5"},
    });
}

TEST_F(FieldCodeCheck, AccountBySectionNumber) {
    RunCases({
        // 1 to 3 and 5: not checked; 4: checked, but nothing to check here.
        {9, 1, "any*thing", true, "", "any*thing"},
        {9, 2, "x", true, "", "x"},
        {9, 3, "12.345", true, "", "12.345"},
        {9, 4, "xyz", true, "", "xyz"},
        {9, 5, "?", true, "", "?"},
        // 6: digits only.
        {9, 6, "123456.7", true, "", "123456.70"},
        {9, 6, "12-3", false, "Invalid character.", "12-3"},
        {9, 6, "123456789", false, "Too many digits before decimal point.", "123456789"},
        {9, 6, ".", false, "Insufficient digits entered.", "."},
        // 7 and 11: the first section's full width is the shortest.
        {9, 7, "12.5", false, "Insufficient characters entered.", "12.5"},
        {9, 7, "123456.5", true, "", "123456.50"},
        {9, 11, "12", false, "Insufficient digits entered.", "12"},
        // 9 and 10: digits only, as the code's section says.
        {9, 9, "1234567.5", false, "Too many digits before decimal point.", "1234567.5"},
        {9, 10, "12", true, "", "12.00"},
    });
}

TEST_F(FieldCodeCheck, CaretOfAFault) {
    struct Caret {
        short code;
        unsigned short section;
        const char* typed;
        int selStart;
    };
    // The fault's place; behind the text on a right-justified code; else 1.
    // The selection always runs to the end of the text.
    for (const Caret& c : std::vector<Caret>{{1, 0, "AB*D-123456", 3},
                                             {1, 0, "ABCD-1234567", 12},
                                             {1, 1, "ABCDE", 1},
                                             {9, 0, "1.2.3", 4},
                                             {9, 0, "1.234", 1}}) {
        SCOPED_TRACE(c.typed);
        CString text = c.typed;
        oxEditValidateInfo info;
        ASSERT_FALSE(oxFldCodeEditFormatter(c.code, c.section).IsValid(text, &info));
        EXPECT_EQ(info.selStart, c.selStart);
        EXPECT_EQ(info.selEnd, text.GetLength());
    }
}

TEST_F(FieldCodeCheck, NoWordsWithoutInfoAndSameVerdict) {
    const oxFldCodeEditFormatter formatter(1, 0);
    for (const char* typed : {"ABCD-123456", "AB*D", "ABCD-1234567", "   "}) {
        CString withInfo = typed;
        CString without = typed;
        oxEditValidateInfo info;
        EXPECT_EQ(formatter.IsValid(withInfo, &info), formatter.IsValid(without, nullptr)) << typed;
        EXPECT_EQ(withInfo, without) << typed;
    }
}

TEST_F(FieldCodeCheck, UnknownCodePassesUnchanged) {
    CString text = "anything at all";
    EXPECT_TRUE(oxFldCodeEditFormatter(77, 0).IsValid(text, nullptr));
    EXPECT_EQ(text, "anything at all");
}
