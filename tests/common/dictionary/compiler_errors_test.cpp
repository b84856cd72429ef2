// Broken dictionary sources: each fault is reported with the file, the line
// where it stands and what is wrong, and no dictionary is produced.

#include <gtest/gtest.h>

#include <string>

#include "dict_test_support.h"
#include "oxdm/common/dictionary/dictionary_compiler.h"

namespace {

struct BrokenCase {
    const char* what;
    std::string text;
    int line;
    const char* reason;  // a fragment of the message
};

// A valid table of two fields; cases append or change lines after it.
const std::string kTable =
    "[[table]]\n"                  // 1
    "description = \"Customer\"\n"  // 2
    "  [[table.field]]\n"          // 3
    "  name = \"CUSTNO\"\n"         // 4
    "  type = \"alpha\"\n"          // 5
    "  length = 8\n"               // 6
    "  [[table.field]]\n"          // 7
    "  name = \"NAME\"\n"           // 8
    "  type = \"alpha\"\n"          // 9
    "  length = 30\n";             // 10

const BrokenCase kCases[] = {
    {"syntax error", kTable + "  bogus = = 3\n", 11, "syntax error"},
    {"unknown field attribute", kTable + "  colour = \"red\"\n", 11,
     "field NAME: unknown attribute 'colour'"},
    {"unknown top-level section", "[files]\nletter = \"x\"\n" + kTable, 1,
     "unknown attribute 'files'"},
    {"wrong type", kTable + "  hidden = \"yes\"\n", 11,
     "'hidden' must be true, false or an integer, not a string"},
    {"number expected", kTable + "  default_width = 4.5\n", 11,
     "'default_width' must be an integer, not a decimal number"},
    {"duplicate field name",
     kTable + "  [[table.field]]\n  name = \"custno\"\n  type = \"date\"\n", 12,
     "the field name is used twice"},
    {"missing type", kTable + "  [[table.field]]\n  name = \"X\"\n", 11, "'type' is missing"},
    {"unknown type name", kTable + "  [[table.field]]\n  name = \"X\"\n  type = \"money\"\n", 13,
     "unknown type 'money'"},
    {"name too long", kTable + "  [[table.field]]\n  name = \"CUSTOMERNO\"\n  type = 2\n", 12,
     "'name' is longer than 7 characters"},
    {"name with a blank", kTable + "  [[table.field]]\n  name = \"A B\"\n  type = 2\n", 12,
     "must be letters, digits and '_'"},
    {"alpha without length", kTable + "  [[table.field]]\n  name = \"X\"\n  type = 0\n", 11,
     "'length' is missing"},
    {"decimals not below length",
     kTable + "  [[table.field]]\n  name = \"X\"\n  type = 1\n  length = 2\n  decimals = 2\n", 15,
     "'decimals' (2) must be less than 'length' (2)"},
    {"choice without items", kTable + "  [[table.field]]\n  name = \"X\"\n  type = \"choice\"\n",
     11, "a choice field needs 'items'"},
    {"items on an alpha field", kTable + "  items = [\"a\"]\n", 11,
     "'items' belongs to choice fields only"},
    {"choice default past the items",
     kTable + "  [[table.field]]\n  name = \"X\"\n  type = 7\n  items = [\"a\"]\n  default = 2\n",
     15, "'default' 2 is not an item number"},
    {"field code not defined", kTable + "  code = 4\n", 11,
     "field code 4 is not defined in this dictionary"},
    {"bad table number", kTable + "[[table]]\nnumber = 3\ndescription = \"Order\"\n"
                           "  [[table.field]]\n  name = \"A\"\n  type = 2\n", 12,
     "tables are numbered in order; this is table 2"},
    {"table without fields", kTable + "[[table]]\ndescription = \"Empty\"\n", 11,
     "the table has no fields"},
    {"table without description", kTable + "[[table]]\n  [[table.field]]\n  name = \"A\"\n"
                                  "  type = 2\n",
     11, "'description' is missing"},
    {"key naming an unknown field",
     kTable + "[[key]]\ntable = 1\nfields = [\"CUSTNO\", \"CITY\"]\n", 13,
     "table Customer has no field 'CITY'"},
    {"key naming an unknown table", kTable + "[[key]]\ntable = 2\nfields = [\"CUSTNO\"]\n", 12,
     "there is no table 2"},
    {"key without fields", kTable + "[[key]]\ntable = 1\n", 11, "'fields' must be a list"},
    {"key numbered out of order", kTable + "[[key]]\nnumber = 2\ntable = 1\nfields = [\"NAME\"]\n",
     12, "keys are numbered in order"},
    {"abbreviation and letter that do not spell the name",
     "[file]\nabbreviation = \"ab\"\nletter = \"x\"\n" + kTable, 1,
     "spell 'abx', not the dictionary's name 'bad'"},
    {"letter of two characters", "[file]\nletter = \"xy\"\n" + kTable, 2,
     "'letter' must be one character"},
    {"field array written as a table", "[[table]]\ndescription = \"T\"\n[table.field]\nname = \"A\"\n",
     3, "'field' must be written as [[...]] tables"},
    {"code section without width", "[[code]]\nnumber = 1\n  [[code.section]]\n  punctuation = \"-\"\n" +
                                       kTable,
     3, "code 1, section 1: 'width' is missing"},
    {"digit as punctuation", "[[code]]\nnumber = 1\n  [[code.section]]\n  width = 2\n  punctuation = \"7\"\n" +
                                 kTable,
     3, "code 1, section 1: 'punctuation' must be a mark such as '-', '.' or '/', not '7'"},
    {"code number twice", "[[code]]\nnumber = 1\n[[code]]\nnumber = 1\n" + kTable, 4,
     "the code number is used twice"},
    {"six sections", "[[code]]\nnumber = 1\nsection = [{width=1},{width=1},{width=1},{width=1},"
                     "{width=1},{width=1}]\n" + kTable,
     3, "a code has at most 5"},
    {"number out of range", kTable + "  label_break = 70000\n", 11, "'label_break' is 70000, outside 0 to 65535"},
};

}  // namespace

TEST(DictionaryCompilerErrors, EachFaultNamesFileLineAndReason) {
    dicttest::TempDir dir;
    for (const BrokenCase& c : kCases) {
        SCOPED_TRACE(c.what);
        const std::string path = dir.Write("bad.toml", c.text);
        const oxDictCompileResult r = oxDictionaryCompiler::CompileFile(path.c_str());
        EXPECT_FALSE(r.Ok());
        EXPECT_EQ(r.dictionary, nullptr);
        ASSERT_FALSE(r.errors.empty());
        const oxDictError& e = r.errors.front();
        EXPECT_EQ(e.file, path.c_str());
        EXPECT_EQ(e.line, c.line) << e.Text().c_str();
        EXPECT_NE(e.message.Find(c.reason), -1) << e.Text().c_str();
        EXPECT_NE(r.Message().Find((path + ":" + std::to_string(c.line) + ": ").c_str()), -1)
            << r.Message().c_str();
    }
}

TEST(DictionaryCompilerErrors, TheBaseOfTheCasesIsValid) {
    const oxDictCompileResult r = oxDictionaryCompiler::CompileText("bad", kTable.c_str(), "x");
    EXPECT_TRUE(r.Ok()) << r.Message().c_str();
}

TEST(DictionaryCompilerErrors, AllFaultsOfAFileAreReportedInLineOrder) {
    const std::string text = kTable +
                             "  [[table.field]]\n"  // 11
                             "  name = \"NAME\"\n"    // 12
                             "  type = 2\n"          // 13
                             "[[key]]\n"              // 14
                             "table = 1\n"            // 15
                             "fields = [\"NOPE\"]\n"  // 16
                             "[[code]]\n"             // 17
                             "number = 0\n";          // 18
    const oxDictCompileResult r = oxDictionaryCompiler::CompileText("bad", text.c_str(), "b.toml");
    ASSERT_EQ(r.errors.size(), 3u) << r.Message().c_str();
    EXPECT_EQ(r.errors[0].line, 12);
    EXPECT_EQ(r.errors[1].line, 16);
    EXPECT_EQ(r.errors[2].line, 18);
    EXPECT_NE(r.errors[2].message.Find("outside 1 to 32767"), -1);
}

TEST(DictionaryCompilerErrors, AnUnreadableFileHasNoLine) {
    const oxDictCompileResult r = oxDictionaryCompiler::CompileFile("/nonexistent/x.toml");
    ASSERT_EQ(r.errors.size(), 1u);
    EXPECT_EQ(r.errors[0].line, 0);
    EXPECT_EQ(r.errors[0].Text(), "/nonexistent/x.toml: the file cannot be read");
}
