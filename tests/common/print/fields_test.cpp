// Fields on a line: placement at columns, cutting at widths and at the
// line's end, the next free column, and formatting through field codes.
#include <memory>

#include "oxdm/common/dictionary/dictionary_loader.h"
#include "oxdm/common/dictionary/field_codes.h"
#include "oxdm/common/values/io_status.h"
#include "print_test_support.h"

namespace {

using printtest::Put;

class FieldsTest : public printtest::PrintTest {
protected:
    // The one body line of a report of width 30 without headings.
    std::string LineOf(short handle) {
        EXPECT_EQ(xp_wr_line(handle, 1, 0, 0), XP_OK);
        const std::vector<printtest::Page> pages = CloseAndRead(handle);
        EXPECT_EQ(pages.size(), 1u);
        EXPECT_EQ(pages[0].size(), 4u);
        return pages[0].size() == 4 ? pages[0][3] : std::string();
    }
};

TEST_F(FieldsTest, FieldsLandAtTheirColumnsAndNeverPastTheirWidthOrTheLine) {
    struct Field {
        short column, width;
        std::string text;
        short answer;
    };
    struct Case {
        const char* what;
        std::vector<Field> fields;
        std::string line;
    };
    const std::vector<Case> cases = {
        {"own length", {{0, 0, "xyz", XP_OK}}, "xyz"},
        {"cut at the width", {{4, 5, "abcdefgh", XP_OK}}, "    abcde"},
        {"a field writes only its text", {{0, 0, "1234567890", XP_OK}, {3, 6, "ab", XP_OK}}, "123ab67890"},
        {"cut at the line's end", {{27, 0, "overflow", XP_CLIPPED}}, std::string(27, ' ') + "ove"},
        {"next free column on an empty line", {{-1, 0, "first", XP_OK}}, "first"},
        {"next free column is one blank on", {{1, 82, "Order", XP_OK}, {-1, 80, "00012", XP_OK}, {-1, 0, "Changed", XP_OK}},
         " Order 00012 Changed"},
        {"next free column skips blanks a field left", {{0, 0, "ab  ", XP_OK}, {-1, 0, "c", XP_OK}}, "ab c"},
        {"a UTF-8 character takes one column and is never split",
         {{0, 2, "h\xC3\xA9llo", XP_OK}, {3, 0, "\xE2\x82\xAC", XP_OK}, {5, 0, "x", XP_OK}}, "h\xC3\xA9 \xE2\x82\xAC x"},
        {"a byte that isn't UTF-8 is one character", {{0, 2, "\xE9t\xE9", XP_OK}, {3, 0, "x", XP_OK}}, "\xE9t x"},
        {"control characters become blanks", {{0, 0, "a\tb\nc", XP_OK}}, "a b c"},
        {"a column at the line's end is refused", {{0, 0, "keep", XP_OK}, {30, 0, "x", XP_BAD_ARGUMENT}}, "keep"},
        {"a negative column is refused", {{0, 0, "keep", XP_OK}, {-2, 0, "x", XP_BAD_ARGUMENT}}, "keep"},
        {"a negative width is refused", {{0, 0, "keep", XP_OK}, {5, -1, "x", XP_BAD_ARGUMENT}}, "keep"},
        {"a full line leaves no next free column",
         {{0, 0, std::string(29, 'z'), XP_OK}, {-1, 0, "x", XP_BAD_ARGUMENT}}, std::string(29, 'z')},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const short h = Open(printtest::Definition(30, 20));
        for (const Field& f : c.fields) EXPECT_EQ(Put(h, f.column, f.width, f.text), f.answer);
        EXPECT_EQ(LineOf(h), c.line);
    }
}

TEST_F(FieldsTest, FormattedFieldsGoThroughTheFormatterOfTheirCodeAndKind) {
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    ASSERT_EQ(oxDictionaryLoader::Load(OXDM_EXAMPLES_DIR "/ord.toml", dict, error), oxioStatus::IO_VALID)
        << error.c_str();
    struct Case {
        short formatted, code, decimals, kind;
        const char* text;
        const char* printed;
    };
    const Case cases[] = {
        {1, 1, 0, XV_TEXT, "abcd123456", "ABCD-123456"},  // code 1 is AAAA-999999, capitals
        {0, 1, 0, XV_TEXT, "abcd123456", "abcd123456"},   // not formatted: as it is
        {1, 0, 2, XV_DOUBLE, "1234.5", "1234.50"},
        {1, 0, 0, XV_BOOL, "true", "true"},  // no formatter for a Boolean
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const short h = Open(printtest::Definition(30, 20));
        xp_field_def field{};
        field.column = 2;
        field.formatted = c.formatted;
        field.code = c.code;
        field.decimals = c.decimals;
        x_value_def value{};
        x_value_set_text(&value, c.text, std::strlen(c.text));
        value.kind = c.kind;
        EXPECT_EQ(xp_put_field(h, &field, &value), XP_OK);
        x_value_free(&value);
        EXPECT_EQ(LineOf(h), std::string("  ") + c.printed);
    }
}

}  // namespace
