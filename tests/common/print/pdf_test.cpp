// The PDF form of a report is a real document: poppler reads back its page
// count, paper size and text, and renders its first page to a non-blank PNG.
#include <cairo.h>

#include <cstdio>
#include <cstdint>
#include <memory>

#include "print_test_support.h"

namespace {

using printtest::Put;

bool HaveTool(const char* name) {
    return std::system(("command -v " + std::string(name) + " >/dev/null 2>&1").c_str()) == 0;
}

// The standard output of a shell command.
std::string Output(const std::string& command) {
    std::string out;
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    if (!pipe) return out;
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe.get())) > 0;) out.append(buffer, n);
    return out;
}

// The share of dark pixels in a PNG, -1 when it can't be read.
double DarkShare(const std::string& path) {
    cairo_surface_t* image = cairo_image_surface_create_from_png(path.c_str());
    double share = -1;
    if (cairo_surface_status(image) == CAIRO_STATUS_SUCCESS && cairo_image_surface_get_format(image) != CAIRO_FORMAT_A8) {
        const int width = cairo_image_surface_get_width(image);
        const int height = cairo_image_surface_get_height(image);
        long dark = 0;
        for (int y = 0; y < height; ++y) {
            const auto* row = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(image) +
                                                                y * cairo_image_surface_get_stride(image));
            for (int x = 0; x < width; ++x) dark += (row[x] & 0xFF) < 128;  // the blue channel of grey ink
        }
        share = static_cast<double>(dark) / (static_cast<double>(width) * height);
    }
    cairo_surface_destroy(image);
    return share;
}

using PdfTest = printtest::PrintTest;

TEST_F(PdfTest, TheReportRendersAsARealPdfOfTheRightPagesPaperAndText) {
    if (!HaveTool("pdftoppm") || !HaveTool("pdftotext") || !HaveTool("pdfinfo")) {
        GTEST_SKIP() << "poppler-utils (pdftoppm, pdftotext, pdfinfo) is not installed";
    }
    xp_print_def def = printtest::Definition(87, 0);
    def.orientation = XP_LANDSCAPE;
    def.paper = XP_PAPER_A4;
    const short h = Open(def);
    ASSERT_EQ(Put(h, 4, 0, "Field Name"), XP_OK);
    ASSERT_EQ(Put(h, 33, 0, "Old Value"), XP_OK);
    ASSERT_EQ(Put(h, 62, 0, "New Value"), XP_OK);
    ASSERT_EQ(xp_set_line(h, 0, 2), XP_OK);
    const short perPage = xp_lines_left(h);
    ASSERT_GT(perPage, 10);
    const int rows = 2 * perPage + 5;  // three pages
    for (int i = 1; i <= rows; ++i) {
        ASSERT_EQ(Put(h, 4, 30, "Customer " + std::to_string(i)), XP_OK);
        ASSERT_EQ(Put(h, 33, 27, "old " + std::to_string(i)), XP_OK);
        ASSERT_EQ(Put(h, 62, 27, "new " + std::to_string(i)), XP_OK);
        ASSERT_EQ(xp_wr_line(h, 1, 0, 0), XP_OK);
    }
    ASSERT_EQ(xp_close(h), XP_OK);
    const std::string pdf = (dir_ / "report.pdf").string();

    const std::string info = Output("pdfinfo '" + pdf + "'");
    EXPECT_NE(info.find("Pages:           3"), std::string::npos) << info;
    EXPECT_NE(info.find("841.89 x 595.2"), std::string::npos) << info;  // A4 on its side

    // The text read back from the PDF, page by page, as the text form has it.
    const std::string text = Output("pdftotext -layout '" + pdf + "' -");
    const auto pdfPages = printtest::Pages(text);
    const auto txtPages = printtest::Pages(printtest::ReadFile(dir_ / "report.txt"));
    ASSERT_EQ(txtPages.size(), 3u);
    ASSERT_GE(pdfPages.size(), 3u);  // pdftotext ends the last page with a form feed too
    for (std::size_t p = 0; p < 3; ++p) {
        std::string pdfPage;
        for (const std::string& line : pdfPages[p]) pdfPage += line + "\n";
        for (const char* word : {"Orders", "Audit Report", "Field Name", "New Value"}) {
            EXPECT_NE(pdfPage.find(word), std::string::npos) << "page " << p + 1 << ": " << word;
        }
        EXPECT_NE(pdfPage.find("Page " + std::to_string(p + 1)), std::string::npos);
        const std::string last = txtPages[p].back();
        EXPECT_NE(pdfPage.find(last.substr(last.find_first_not_of(' '), 12)), std::string::npos) << last;
    }

    // Page 1 as a picture: a real image with ink on it, and only page 1 made.
    const std::string prefix = (dir_ / "page").string();
    ASSERT_EQ(std::system(("pdftoppm -png -r 50 -f 1 -l 1 '" + pdf + "' '" + prefix + "'").c_str()), 0);
    const std::string png = prefix + "-1.png";
    ASSERT_TRUE(std::filesystem::exists(png));
    EXPECT_FALSE(std::filesystem::exists(prefix + "-2.png"));
    const double dark = DarkShare(png);
    EXPECT_GT(dark, 0.001) << "the page is blank or unreadable";
    EXPECT_LT(dark, 0.5) << "the page is mostly ink";
}

}  // namespace
