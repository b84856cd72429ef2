#pragma once
// Helpers of the print tests: a fresh output folder per test (also
// OXDM_PRINT_DIR), a clean headless presenter, and short ways to put text
// on a job's line and read the written report back page by page.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "oxdm/common/print/print.h"
#include "oxdm/common/shell/presenter.h"

namespace printtest {

// A report definition with the given size; titles "Orders" and "Audit Report".
inline xp_print_def Definition(short width, short pageLines) {
    xp_print_def def{};
    std::strcpy(def.title1, "Orders");
    std::strcpy(def.title2, "Audit Report");
    def.orientation = XP_PORTRAIT;
    def.width = width;
    def.page_lines = pageLines;
    return def;
}

// Puts text at column with width (0: its own length), unformatted.
inline short Put(short handle, short column, short width, const std::string& text) {
    xp_field_def field{};
    field.column = column;
    field.width = width;
    x_value_def value{};
    x_value_set_text(&value, text.c_str(), text.size());
    const short result = xp_put_field(handle, &field, &value);
    x_value_free(&value);
    return result;
}

inline std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// A page of a text report, as its lines.
using Page = std::vector<std::string>;

// The pages of a report's text form: split at "\f", then into lines.
inline std::vector<Page> Pages(const std::string& text) {
    std::vector<Page> pages(1);
    std::string line;
    for (const char ch : text) {
        if (ch == '\f') {
            pages.emplace_back();
        } else if (ch == '\n') {
            pages.back().push_back(line);
            line.clear();
        } else {
            line += ch;
        }
    }
    return pages;
}

class PrintTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = std::filesystem::temp_directory_path() /
               ("oxdm-print-" + std::to_string(::getpid()) + "-" + info->test_suite_name() + "-" + info->name());
        std::filesystem::remove_all(dir_);
        std::filesystem::create_directories(dir_);
        ::setenv("OXDM_PRINT_DIR", dir_.c_str(), 1);
        oxdmDefaultPresenter().Clear();
    }
    void TearDown() override {
        ::unsetenv("OXDM_PRINT_DIR");
        oxdmDefaultPresenter().Clear();
        if (!HasFailure()) std::filesystem::remove_all(dir_);
    }

    // Opens a job writing to <dir>/report.
    short Open(const xp_print_def& def) {
        const std::string output = (dir_ / "report").string();
        const short handle = xp_open(&def, output.c_str());
        EXPECT_GT(handle, 0);
        return handle;
    }
    // Closes the job of Open and answers the pages of its text form.
    std::vector<Page> CloseAndRead(short handle) {
        EXPECT_EQ(xp_close(handle), XP_OK);
        return Pages(ReadFile(dir_ / "report.txt"));
    }
    // The files in the output folder, by name.
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(dir_)) names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    std::filesystem::path dir_;
};

}  // namespace printtest
