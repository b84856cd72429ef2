// Pages of a report: titles and headings on every page, page breaks, lines
// left, blank lines, and bad handles.
#include "print_test_support.h"

namespace {

using printtest::Page;
using printtest::Put;

class PageLayoutTest : public printtest::PrintTest {
protected:
    // Sets heading lines 1..count, each "Heading <n>".
    static void SetHeadings(short handle, short count) {
        for (short n = 1; n <= count; ++n) {
            ASSERT_EQ(Put(handle, 2, 0, "Heading " + std::to_string(n)), XP_OK);
            ASSERT_EQ(xp_set_line(handle, 0, n), XP_OK);
        }
    }
    static void WriteRow(short handle, const std::string& text, short count = 1, short skip = 0, short newPage = 0) {
        ASSERT_EQ(Put(handle, 0, 0, text), XP_OK);
        ASSERT_EQ(xp_wr_line(handle, count, skip, newPage), XP_OK);
    }
    // The body of a page: what follows its titles, blank line and headings.
    static Page Body(const Page& page, short headings) {
        return Page(page.begin() + std::min<std::size_t>(page.size(), 3 + headings), page.end());
    }
};

TEST_F(PageLayoutTest, EveryPageRepeatsTitlesAndHeadingsAndTakesPageLinesAtMost) {
    struct Case {
        short pageLines, headings, rows;
    };
    for (const Case c : {Case{8, 1, 10}, Case{12, 2, 7}, Case{6, 0, 9}, Case{9, 2, 12}}) {
        SCOPED_TRACE(testing::Message() << "page lines " << c.pageLines << ", headings " << c.headings);
        const short h = Open(printtest::Definition(40, c.pageLines));
        SetHeadings(h, c.headings);
        std::vector<std::string> rows;
        for (short i = 1; i <= c.rows; ++i) {
            rows.push_back("row " + std::to_string(i));
            WriteRow(h, rows.back());
        }
        const std::vector<Page> pages = CloseAndRead(h);
        const std::size_t perPage = c.pageLines - 3 - c.headings;
        ASSERT_EQ(pages.size(), (rows.size() + perPage - 1) / perPage);
        std::vector<std::string> body;
        for (std::size_t p = 0; p < pages.size(); ++p) {
            const Page& page = pages[p];
            ASSERT_GE(page.size(), 3u + c.headings);
            EXPECT_EQ(page[0], std::string(17, ' ') + "Orders");
            EXPECT_EQ(page[1].find("Audit Report"), 14u);
            EXPECT_TRUE(page[1].ends_with("Page " + std::to_string(p + 1))) << page[1];
            EXPECT_EQ(page[1].size(), 40u);
            EXPECT_EQ(page[2], "");
            for (short n = 1; n <= c.headings; ++n) EXPECT_EQ(page[2 + n], "  Heading " + std::to_string(n));
            // Every page but the last is full.
            if (p + 1 < pages.size()) {
                EXPECT_EQ(page.size(), static_cast<std::size_t>(c.pageLines));
            }
            const Page part = Body(page, c.headings);
            body.insert(body.end(), part.begin(), part.end());
        }
        EXPECT_EQ(body, rows);
    }
}

TEST_F(PageLayoutTest, LinesLeftAndTheReadBackDefinitionFollowTheWriting) {
    const short h = Open(printtest::Definition(50, 10));
    SetHeadings(h, 2);
    // A page not begun counts its titles, blank line and two headings.
    EXPECT_EQ(xp_lines_left(h), 5);
    xp_print_def def{};
    ASSERT_EQ(xp_get_def(h, &def), XP_OK);
    EXPECT_EQ(def.line, 0);
    EXPECT_EQ(def.page, 1);
    EXPECT_EQ(def.page_lines, 10);

    WriteRow(h, "one");
    EXPECT_EQ(xp_lines_left(h), 4);
    ASSERT_EQ(xp_get_def(h, &def), XP_OK);
    EXPECT_EQ(def.line, 6);
    WriteRow(h, "two", 3);  // the line and two blank lines
    EXPECT_EQ(xp_lines_left(h), 1);
    WriteRow(h, "three");
    EXPECT_EQ(xp_lines_left(h), 0);
    WriteRow(h, "four");
    EXPECT_EQ(xp_lines_left(h), 4);
    ASSERT_EQ(xp_get_def(h, &def), XP_OK);
    EXPECT_EQ(def.page, 2);
    // A requested break: the page ends at once, the next write begins page 3.
    WriteRow(h, "five", 1, 0, 1);
    ASSERT_EQ(xp_get_def(h, &def), XP_OK);
    EXPECT_EQ(def.page, 3);
    EXPECT_EQ(xp_lines_left(h), 4);

    const std::vector<Page> pages = CloseAndRead(h);
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(Body(pages[0], 2), (Page{"one", "two", "", "", "three"}));
    EXPECT_EQ(Body(pages[1], 2), (Page{"four"}));
    EXPECT_EQ(Body(pages[2], 2), (Page{"five"}));
}

TEST_F(PageLayoutTest, BlankLinesNeverBeginAPageAndHeadingsApplyFromThePageNotYetBegun) {
    const short h = Open(printtest::Definition(30, 6));  // three body lines a page
    WriteRow(h, "a");
    WriteRow(h, "b");
    WriteRow(h, "c", 2);  // fills the page: its blank line is dropped
    // The heading set now belongs to page 2, which has not begun.
    SetHeadings(h, 1);
    WriteRow(h, "d", 1, 1);  // the skipped line would begin page 2: dropped
    WriteRow(h, "e", 1, 2, 1);
    const std::vector<Page> pages = CloseAndRead(h);
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(Body(pages[0], 0), (Page{"a", "b", "c"}));
    EXPECT_EQ(pages[1], (Page{pages[1][0], pages[1][1], "", "  Heading 1", "d"}));
    EXPECT_EQ(Body(pages[2], 1), (Page{"e"}));
}

TEST_F(PageLayoutTest, PagesFilledByHeadingsStillMoveForwardAndAnEmptyReportIsOnePage) {
    const short h = Open(printtest::Definition(30, 4));
    SetHeadings(h, 2);  // titles, blank and headings take 5 of 4 lines
    EXPECT_EQ(xp_lines_left(h), 0);
    WriteRow(h, "first");
    WriteRow(h, "second");
    const std::vector<Page> pages = CloseAndRead(h);
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(Body(pages[0], 2), (Page{"first"}));
    EXPECT_EQ(Body(pages[1], 2), (Page{"second"}));

    const short empty = Open(printtest::Definition(30, 20));
    SetHeadings(empty, 1);
    const std::vector<Page> only = CloseAndRead(empty);
    ASSERT_EQ(only.size(), 1u);
    EXPECT_EQ(only[0], (Page{only[0][0], only[0][1], "", "  Heading 1"}));
}

TEST_F(PageLayoutTest, BadHandlesAndArgumentsAnswerErrorsAndChangeNothing) {
    const short h = Open(printtest::Definition(30, 20));
    const short closed = Open(printtest::Definition(30, 20));
    ASSERT_EQ(xp_close(closed), XP_OK);
    xp_field_def field{};
    x_value_def value{};
    xp_print_def def{};
    for (const short bad : {short{0}, short{-3}, short{999}, closed}) {
        SCOPED_TRACE(bad);
        EXPECT_EQ(xp_put_field(bad, &field, &value), XP_BAD_HANDLE);
        EXPECT_EQ(xp_set_line(bad, 0, 1), XP_BAD_HANDLE);
        EXPECT_EQ(xp_wr_line(bad, 1, 0, 0), XP_BAD_HANDLE);
        EXPECT_EQ(xp_get_def(bad, &def), XP_BAD_HANDLE);
        EXPECT_EQ(xp_lines_left(bad), XP_BAD_HANDLE);
        EXPECT_EQ(xp_close(bad), XP_BAD_HANDLE);
    }
    EXPECT_EQ(xp_open(nullptr, nullptr), 0);

    ASSERT_EQ(Put(h, 0, 0, "kept"), XP_OK);
    EXPECT_EQ(xp_put_field(h, nullptr, &value), XP_BAD_ARGUMENT);
    EXPECT_EQ(xp_put_field(h, &field, nullptr), XP_BAD_ARGUMENT);
    EXPECT_EQ(xp_get_def(h, nullptr), XP_BAD_ARGUMENT);
    EXPECT_EQ(xp_set_line(h, 1, 1), XP_BAD_ARGUMENT);
    EXPECT_EQ(xp_set_line(h, 0, 0), XP_BAD_ARGUMENT);
    EXPECT_EQ(xp_set_line(h, 0, 21), XP_BAD_ARGUMENT);
    EXPECT_EQ(xp_wr_line(h, 0, 0, 0), XP_BAD_ARGUMENT);
    EXPECT_EQ(xp_wr_line(h, 1, -1, 0), XP_BAD_ARGUMENT);
    // The refused calls left the current line alone.
    ASSERT_EQ(xp_wr_line(h, 1, 0, 0), XP_OK);
    const std::vector<Page> pages = CloseAndRead(h);
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].back(), "kept");
}

}  // namespace
