// The field-code functions, driven by the codes of loaded dictionaries.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "dict_test_support.h"
#include "oxdm/common/dictionary/dictionary_loader.h"
#include "oxdm/common/dictionary/field_codes.h"
#include "oxdm/common/values/io_status.h"

namespace {

// Code 1 of ord: "Item number", sections of 4 ('-', capitals) and 6
// (right-justified, digits only), mask "AAAA-999999".
class FieldCodes : public ::testing::Test {
protected:
    void SetUp() override {
        std::shared_ptr<const oxDictionary> dict;
        CString error;
        ASSERT_EQ(oxDictionaryLoader::Load(dicttest::kOrdPath, dict, error), oxioStatus::IO_VALID);
    }

    // Loads a one-table dictionary whose [[code]] entries are `codes`.
    static void LoadCodes(const std::string& codes) {
        dicttest::TempDir dir;
        const std::string path = dir.Write(
            "codes.toml", codes + "[[table]]\ndescription = \"T\"\n  [[table.field]]\n"
                                  "  name = \"A\"\n  type = 2\n");
        std::shared_ptr<const oxDictionary> dict;
        CString error;
        ASSERT_EQ(oxDictionaryLoader::Load(path.c_str(), dict, error), oxioStatus::IO_VALID)
            << error.c_str();
    }

    static std::string Format(short code, short section, const char* text) {
        char buffer[255];
        std::strcpy(buffer, text);
        EXPECT_EQ(xk_format_field(code, section, buffer), oxioStatus::IO_VALID);
        return buffer;
    }

    static std::string Unformat(short code, short section, const char* text) {
        char buffer[255];
        std::strcpy(buffer, text);
        EXPECT_EQ(xk_unformat_field(code, section, buffer), oxioStatus::IO_VALID);
        return buffer;
    }
};

}  // namespace

TEST_F(FieldCodes, WidthsAndSections) {
    EXPECT_EQ(xk_num_sections(1), 2);
    EXPECT_NE(xk_multi_section(1), 0);
    EXPECT_EQ(xk_width(1, 1), 4);
    EXPECT_EQ(xk_width(1, 2), 6);
    EXPECT_EQ(xk_width(1, 0), 11);  // 4 + '-' + 6
    EXPECT_EQ(xk_width(1, 3), 0);
    EXPECT_EQ(xk_punctuation(1, 1), '-');
    EXPECT_EQ(xk_punctuation(1, 2), 0);
    EXPECT_NE(xk_capitals(1, 1), 0);
    EXPECT_EQ(xk_capitals(1, 2), 0);
    EXPECT_NE(xk_capitals(1, 0), 0);
    EXPECT_EQ(xk_right_justify(1, 1), 0);
    EXPECT_NE(xk_right_justify(1, 2), 0);
}

TEST_F(FieldCodes, MasksAndDescriptions) {
    char text[61];
    ASSERT_EQ(xk_mask(1, 0, text), oxioStatus::IO_VALID);
    EXPECT_STREQ(text, "AAAA-999999");
    ASSERT_EQ(xk_mask(1, 2, text), oxioStatus::IO_VALID);
    EXPECT_STREQ(text, "999999");
    EXPECT_EQ(xk_mask(1, 4, text), oxioStatus::IO_VOID);
    ASSERT_EQ(xk_description(1, 0, text, false), oxioStatus::IO_VALID);
    EXPECT_STREQ(text, "Item number");
    ASSERT_EQ(xk_description(1, 2, text, false), oxioStatus::IO_VALID);
    EXPECT_STREQ(text, "Item serial");

    LoadCodes("[[code]]\nnumber = 40\ndescription = \"part\"\n"
              "section = [{width = 2, punctuation = \"/\"}, {width = 3}]\n");
    ASSERT_EQ(xk_mask(40, 0, text), oxioStatus::IO_VALID);
    EXPECT_STREQ(text, "XX/XXX");
    ASSERT_EQ(xk_description(40, 1, text, true), oxioStatus::IO_VALID);
    EXPECT_STREQ(text, "Part");  // no section description: the code's
}

TEST_F(FieldCodes, FormatLaysCharactersIntoSections) {
    EXPECT_EQ(Format(1, 0, "abcd123456"), "ABCD-123456");
    EXPECT_EQ(Format(1, 0, "ab-cd-12"), "ABCD-000012");  // right-justified serial
    EXPECT_EQ(Format(1, 0, "abc"), "ABC");
    EXPECT_EQ(Format(1, 0, "abcd1234567890"), "ABCD-1234567890");  // nothing lost
    EXPECT_EQ(Format(1, 1, "ab"), "AB");
    EXPECT_EQ(Format(1, 2, "ab"), "    ab");
    EXPECT_EQ(Format(1, 2, "12"), "000012");
    EXPECT_EQ(Unformat(1, 0, "ABCD-123456  "), "ABCD123456");
    EXPECT_EQ(Format(1, 0, Unformat(1, 0, "ABCD-123456").c_str()), "ABCD-123456");
}

TEST_F(FieldCodes, CodeNineIsFreeForm) {
    LoadCodes("[[code]]\nnumber = 9\n  [[code.section]]\n  width = 4\n  punctuation = \".\"\n"
              "  capitals = true\n  [[code.section]]\n  width = 2\n");
    EXPECT_EQ(Format(9, 0, "ab12.5"), "AB12.5");  // not laid into sections
    EXPECT_EQ(Format(9, 7, "x"), "X");            // any section number
    EXPECT_EQ(Unformat(9, 0, "12.50  "), "12.50");
}

TEST_F(FieldCodes, CustomListAndItsDefault) {
    LoadCodes("[[code]]\nnumber = 41\ncustom_list = [\" North\", \"South\"]\n"
              "[[code]]\nnumber = 42\n");
    CString list;
    ASSERT_EQ(xk_get_custom_list(41, list), oxioStatus::IO_VALID);
    EXPECT_EQ(list, " North,South");
    ASSERT_EQ(xk_get_custom_list_default(41, list), oxioStatus::IO_VALID);
    EXPECT_EQ(list, "North");
    ASSERT_EQ(xk_get_custom_list_default(42, list), oxioStatus::IO_VALID);
    EXPECT_EQ(list, "");
    EXPECT_EQ(xk_num_sections(42), 0);
    EXPECT_EQ(xk_width(42, 0), 0);
}

TEST_F(FieldCodes, RecordsOfSectionsAndCodes) {
    xc_section_def section;
    ASSERT_EQ(xc_get_section_def(1, 2, &section), oxioStatus::IO_VALID);
    EXPECT_EQ(section.width, 6);
    EXPECT_EQ(section.digits_only, 1);
    EXPECT_EQ(xc_get_section_def(1, 0, &section), oxioStatus::IO_VOID);
    EXPECT_EQ(xc_get_section_def(1, 6, &section), oxioStatus::IO_VOID);
    tsfield_def whole;
    ASSERT_EQ(x_get_tsfield(1, &whole), oxioStatus::IO_VALID);
    EXPECT_EQ(whole.code, 1);
    EXPECT_EQ(whole.sections, 2);
    EXPECT_STREQ(whole.mask, "AAAA-999999");
}

TEST_F(FieldCodes, UnknownCodesAnswerNothing) {
    char text[255] = "abc";
    CString list = "x";
    tsfield_def whole;
    EXPECT_EQ(xk_width(999, 0), 0);
    EXPECT_EQ(xk_num_sections(999), 0);
    EXPECT_EQ(xk_multi_section(999), 0);
    EXPECT_EQ(xk_capitals(999, 0), 0);
    EXPECT_EQ(xk_format_field(999, 0, text), oxioStatus::IO_VOID);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(xk_description(999, 0, text, false), oxioStatus::IO_VOID);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(xk_get_custom_list(999, list), oxioStatus::IO_VOID);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(x_get_tsfield(999, &whole), oxioStatus::IO_VOID);
}

TEST_F(FieldCodes, ALaterDictionaryReplacesACodeOfTheSameNumber) {
    LoadCodes("[[code]]\nnumber = 43\nsection = [{width = 2}]\n");
    EXPECT_EQ(xk_width(43, 0), 2);
    LoadCodes("[[code]]\nnumber = 43\nsection = [{width = 5}]\n");
    EXPECT_EQ(xk_width(43, 0), 5);
}
