// The page model of a print job.

#include "page_model.h"

#include <algorithm>
#include <cassert>

#include "paper.h"

namespace {

constexpr short kDefaultWidth = 80;
constexpr short kMostWidth = 255;

// Puts text on line from column on, as much of it as fits.
void PlaceFitting(xpLine& line, std::size_t column, const std::string& text) {
    const std::vector<std::string> chars = xpCharacters(text);
    line.Place(column, chars, std::min(chars.size(), line.Width() - column));
}

xpLine Centred(const char* text, std::size_t width) {
    xpLine line(width);
    const std::size_t length = xpCharacters(text).size();
    PlaceFitting(line, length < width ? (width - length) / 2 : 0, text);
    return line;
}

}  // namespace

xp_print_def xpNormalizeDefinition(const xp_print_def& def) {
    xp_print_def out = def;
    out.title1[sizeof out.title1 - 1] = '\0';
    out.title2[sizeof out.title2 - 1] = '\0';
    if (out.orientation != XP_LANDSCAPE) out.orientation = XP_PORTRAIT;
    if (out.paper != XP_PAPER_A4) out.paper = XP_PAPER_LETTER;
    if (out.width <= 0) out.width = kDefaultWidth;
    out.width = std::min(out.width, kMostWidth);
    if (out.page_lines <= 0) out.page_lines = xpDefaultPageLines(out);
    out.line = 0;
    out.page = 1;
    return out;
}

xpPageModel::xpPageModel(const xp_print_def& def)
    : def_(def), current_(static_cast<std::size_t>(def.width)) {
    assert(def.width > 0 && def.page_lines > 0);
}

short xpPageModel::PutField(const xp_field_def& field, const std::string& text) {
    const std::size_t width = current_.Width();
    std::size_t column = 0;
    if (field.column == -1) {
        const std::size_t end = current_.End();
        column = end == 0 ? 0 : end + 1;
    } else if (field.column >= 0) {
        column = static_cast<std::size_t>(field.column);
    } else {
        return XP_BAD_ARGUMENT;
    }
    if (column >= width || field.width < 0) return XP_BAD_ARGUMENT;
    const std::vector<std::string> chars = xpCharacters(text);
    const std::size_t wanted = field.width > 0 ? std::min<std::size_t>(chars.size(), field.width) : chars.size();
    const std::size_t room = std::min(wanted, width - column);
    current_.Place(column, chars, room);
    return room < wanted ? XP_CLIPPED : XP_OK;
}

short xpPageModel::SetLine(short kind, short line) {
    if (kind != 0 || line < 1 || line > kMostHeadings) return XP_BAD_ARGUMENT;
    if (headings_.size() < static_cast<std::size_t>(line)) headings_.resize(line);
    headings_[line - 1] = current_.Text();
    current_.Clear();
    return XP_OK;
}

short xpPageModel::WriteLine(short count, short skip, bool newPage) {
    if (count < 1 || skip < 0) return XP_BAD_ARGUMENT;
    if (newPage) open_ = false;
    for (short i = 0; i < skip; ++i) EmitBlank();
    Emit(current_.Text());
    for (short i = 1; i < count; ++i) EmitBlank();
    current_.Clear();
    return XP_OK;
}

short xpPageModel::LinesLeft() const {
    const short used = PageBegun() ? static_cast<short>(pages_.back().lines.size()) : HeaderLines();
    return static_cast<short>(std::max(0, def_.page_lines - used));
}

xp_print_def xpPageModel::Definition() const {
    xp_print_def def = def_;
    def.line = PageBegun() ? static_cast<short>(pages_.back().lines.size()) : 0;
    def.page = static_cast<short>(pages_.size() + (PageBegun() ? 0 : 1));
    return def;
}

std::vector<xpPage> xpPageModel::Pages() const {
    if (pages_.empty()) return {BeginPage(1)};
    return pages_;
}

xpPage xpPageModel::BeginPage(int number) const {
    const auto width = static_cast<std::size_t>(def_.width);
    xpPage page;
    page.lines.push_back(Centred(def_.title1, width).Text());
    xpLine second = Centred(def_.title2, width);
    const std::string label = "Page " + std::to_string(number);
    PlaceFitting(second, label.size() < width ? width - label.size() : 0, label);
    page.lines.push_back(second.Text());
    page.lines.emplace_back();
    page.lines.insert(page.lines.end(), headings_.begin(), headings_.end());
    return page;
}

bool xpPageModel::PageTakesLine() const {
    return PageBegun() && pages_.back().lines.size() < static_cast<std::size_t>(def_.page_lines);
}

void xpPageModel::Emit(const std::string& line) {
    if (!PageTakesLine()) {
        pages_.push_back(BeginPage(static_cast<int>(pages_.size()) + 1));
        open_ = true;
    }
    pages_.back().lines.push_back(line);
}

void xpPageModel::EmitBlank() {
    if (PageTakesLine()) pages_.back().lines.emplace_back();
}
