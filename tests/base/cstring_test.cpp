// CString: the places where an 8-bit counted string goes wrong: bounds,
// searches that find nothing, replacements that meet their own output, and
// formatting past any fixed buffer.
#include <gtest/gtest.h>

#include "oxdm/base/cstring.h"

namespace {

TEST(CString, ExtractionClampsToTheText) {
    const CString s("Quillfen");
    EXPECT_EQ(s.Left(100), "Quillfen");
    EXPECT_EQ(s.Left(-1), "");
    EXPECT_EQ(s.Right(3), "fen");
    EXPECT_EQ(s.Right(50), "Quillfen");
    EXPECT_EQ(s.Mid(5), "fen");
    EXPECT_EQ(s.Mid(2, 3), "ill");
    EXPECT_EQ(s.Mid(6, 10), "en");
    EXPECT_EQ(s.Mid(20), "");
    EXPECT_EQ(s.Mid(-3, 2), "Qu");
    EXPECT_EQ(s.GetAt(8), '\0');
    EXPECT_EQ(s.GetAt(-1), '\0');
}

TEST(CString, SearchesAnswerMinusOneWhenNothingMatches) {
    const CString s("a,b,,c");
    EXPECT_EQ(s.Find(','), 1);
    EXPECT_EQ(s.Find(',', 2), 3);
    EXPECT_EQ(s.Find(',', 6), -1);
    EXPECT_EQ(s.Find(",,"), 3);
    EXPECT_EQ(s.Find("x"), -1);
    EXPECT_EQ(s.Find("", 6), 6);
    EXPECT_EQ(s.Find(static_cast<const char*>(nullptr)), -1);
    EXPECT_EQ(s.ReverseFind(','), 4);
    EXPECT_EQ(s.FindOneOf("cb"), 2);
    EXPECT_EQ(CString().Find('a'), -1);
}

TEST(CString, ComparisonsAreOrdinalOrCaseFolded) {
    const CString s("Apple");
    EXPECT_LT(s.Compare("apple"), 0);
    EXPECT_EQ(s.CompareNoCase("aPPLE"), 0);
    EXPECT_LT(s.CompareNoCase("applesauce"), 0);
    EXPECT_GT(s.CompareNoCase("APPL"), 0);
    EXPECT_EQ(s.Compare(nullptr), 1);
    EXPECT_TRUE(CString("a") < CString("b"));
    EXPECT_TRUE(CString("Z") < CString("a"));
    EXPECT_TRUE(s == "Apple");
}

TEST(CString, ReplaceDoesNotRescanItsOwnOutput) {
    CString s("aXa");
    EXPECT_EQ(s.Replace("a", "aa"), 2);
    EXPECT_EQ(s, "aaXaa");
    EXPECT_EQ(s.Replace("aa", ""), 2);
    EXPECT_EQ(s, "X");
    EXPECT_EQ(s.Replace("", "y"), 0);
    CString t("a.b.c");
    EXPECT_EQ(t.Replace('.', '/'), 2);
    EXPECT_EQ(t, "a/b/c");
}

TEST(CString, TrimsAndCaseChangesWorkInPlace) {
    CString s("  \t mixed Case \n");
    s.TrimLeft().TrimRight();
    EXPECT_EQ(s, "mixed Case");
    s.MakeUpper();
    EXPECT_EQ(s, "MIXED CASE");
    s.MakeLower();
    EXPECT_EQ(s, "mixed case");
    CString zeros("000120");
    zeros.TrimLeft('0');
    EXPECT_EQ(zeros, "120");
    CString all("xxxx");
    all.TrimRight('x');
    EXPECT_TRUE(all.IsEmpty());
    CString punct("--[name]--");
    punct.TrimLeft("-[").TrimRight("]-");
    EXPECT_EQ(punct, "name");
}

TEST(CString, FormatHasPrintfSemanticsAndNoLengthLimit) {
    CString s;
    s.Format("%s %d %05.1f %c", "row", -7, 3.14159, 'x');
    EXPECT_EQ(s, "row -7 003.1 x");
    const std::string longText(5000, 'z');
    s.Format("[%s]", longText.c_str());
    EXPECT_EQ(s.GetLength(), 5002);
    EXPECT_EQ(s.Right(2), "z]");
    s.AppendFormat("%u", 42u);
    EXPECT_EQ(s.Right(3), "]42");
}

TEST(CString, EmbeddedZerosAreCountedAndEditsClamp) {
    const CString s("ab\0cd", 5);
    EXPECT_EQ(s.GetLength(), 5);
    EXPECT_EQ(s.Find('d'), 4);
    CString t("abc");
    EXPECT_EQ(t.Insert(99, '!'), 4);
    EXPECT_EQ(t, "abc!");
    EXPECT_EQ(t.Delete(1, 100), 1);
    EXPECT_EQ(t, "a");
    CString u("banana");
    EXPECT_EQ(u.Remove('a'), 3);
    EXPECT_EQ(u, "bnn");
    EXPECT_EQ(CString('-', 3) + "x" + CString("y"), "---xy");
    EXPECT_EQ(CString(static_cast<const char*>(nullptr)), "");
}

}  // namespace
