#pragma once
// xpPageModel: the pages of one print job as lines of text, with no output.
//
// A page is laid out as:
//   line 1           title1, centred
//   line 2           title2, centred, "Page n" at the right
//   line 3           blank
//   lines 4..        the heading lines in force when the page began
//   then             the body lines written to it
// A page begins when the first line is written to it, so headings set
// before that apply to it. A page takes at most page_lines lines, except
// that a page always takes at least one body line (a page whose titles and
// headings fill it still moves forward). A blank line that would begin a
// page is dropped: spacing never opens a page.

#include <string>
#include <vector>

#include "oxdm/common/print/print.h"
#include "print_line.h"

struct xpPage {
    std::vector<std::string> lines;  // every line of the page, titles first; no trailing blanks
};

class xpPageModel {
public:
    // REQUIRES: def.width and def.page_lines are positive (xpNormalizeDefinition made them so).
    explicit xpPageModel(const xp_print_def& def);

    // Places text on the current line as field says (column, width); the text
    // is cut at the field's width and at the line's end. Answers XP_OK,
    // XP_CLIPPED or XP_BAD_ARGUMENT (column out of range; nothing changes).
    short PutField(const xp_field_def& field, const std::string& text);
    // Makes the current line heading line `line` (from 1) and clears it.
    // XP_BAD_ARGUMENT for an unknown kind or a line out of 1..kMostHeadings.
    short SetLine(short kind, short line);
    // Writes skip blank lines, the current line, count - 1 blank lines.
    // XP_BAD_ARGUMENT for count < 1 or skip < 0 (nothing changes).
    short WriteLine(short count, short skip, bool newPage);
    short LinesLeft() const;
    // The definition with page_lines, line and page as they stand.
    xp_print_def Definition() const;
    // Every page begun so far; when none was, one page of titles and headings.
    std::vector<xpPage> Pages() const;

    static constexpr short kMostHeadings = 20;

private:
    bool PageBegun() const { return !pages_.empty() && open_; }
    short HeaderLines() const { return static_cast<short>(3 + headings_.size()); }
    // The open page has room for another line.
    bool PageTakesLine() const;
    xpPage BeginPage(int number) const;
    // Appends one line, beginning a page when none is open or the open one is full.
    void Emit(const std::string& line);
    // One blank line, unless it would begin a page.
    void EmitBlank();

    // def_ is fixed after construction: width and page_lines positive.
    // current_ has def_.width cells. headings_ holds the
    // heading lines by number - 1 (unset ones blank). pages_ holds every
    // begun page; open_ says whether the last one still takes lines (false
    // before the first write and after a requested page break).
    xp_print_def def_;
    xpLine current_;
    std::vector<std::string> headings_;
    std::vector<xpPage> pages_;
    bool open_ = false;
};

// Fills in the defaults of a definition (width 80, portrait, the paper's
// page lines) and zero-terminates its titles. Width is limited to 255.
xp_print_def xpNormalizeDefinition(const xp_print_def& def);
