// `expect` lines: checks of how the last command went and of what the
// current buffer shows. A check that fails, or cannot be read, prints the
// line and what was seen, and the program's exit status becomes 1.
#include <cstdio>
#include <string>

#include "buffer_columns.h"
#include "console.h"
#include "console_audit.h"
#include "console_commands.h"
#include "line_input.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "sales_screen.h"
#include "terminal_presenter.h"
#include "text_words.h"

namespace {

std::string YesNo(bool on) { return on ? "yes" : "no"; }

}  // namespace

const char* ExpectHelp() {
    return "  expect status WORDS        the last command ended so (moved, stayed, found, not found, changed,\n"
           "                             saved, unchanged, refused, reverted, deleted, kept, new row, reserved,\n"
           "                             switched, done, failed (exit N), error, ...)\n"
           "  expect error TEXT          a message or box of the last command holds TEXT\n"
           "  expect focus COLUMN VALUE  the focus row's COLUMN shows VALUE (\"\" for empty)\n"
           "  expect rows N              the window of the buffer shows N rows\n"
           "  expect new yes|no          the focus is on the new row\n"
           "  expect changed yes|no      the focus row has unsaved changes\n"
           "  expect buffer NAME         NAME is the buffer worked in\n"
           "  expect audit TEXT          an entry of the audit log holds TEXT (as the audit command shows it)\n";
}

void Console::Expect(const Args& args) {
    const std::string what = Lower(args[0]);
    const std::string wanted = args[1];
    oxdmBufferedFileDataSource& buffer = screen_.Current();
    std::string seen;
    bool met = false;
    if (what == "status") {
        seen = status_;
        met = seen == wanted;
    } else if (what == "error") {
        std::vector<std::string> told = errors_;
        told.insert(told.end(), presenter_.BoxTexts().begin(), presenter_.BoxTexts().end());
        for (const std::string& text : told) {
            if (!seen.empty()) seen += " | ";
            seen += text;
            met = met || (!wanted.empty() && text.find(wanted) != std::string::npos);
        }
        if (told.empty()) seen = "no message";
    } else if (what == "focus") {
        const std::vector<std::string> parts = SplitWords(wanted, 1);
        const short col = parts.size() == 2 ? FindColumn(buffer, parts[0]) : -1;
        if (col < 0) {
            seen = "no column '" + (parts.size() == 2 ? parts[0] : wanted) + "' in " + buffer.NodeLabel().str();
        } else {
            seen = Trimmed(buffer.NewValueAsString(col).str());
            met = seen == (parts[1] == "\"\"" ? std::string() : parts[1]);
        }
    } else if (what == "rows") {
        seen = std::to_string(buffer.NumWindowDataRows());
        met = seen == wanted;
    } else if (what == "new") {
        seen = YesNo(buffer.IsNewRow());
        met = seen == wanted;
    } else if (what == "changed") {
        seen = YesNo(buffer.IsRowChanged());
        met = seen == wanted;
    } else if (what == "audit") {
        std::vector<std::string> lines;
        if (!ReadAuditLines(screen_.RecordPath(), lines, seen)) {
            seen = "an unreadable log: " + seen;
        } else {
            seen = std::to_string(lines.size()) + " entries" + (lines.empty() ? "" : ", the last " + lines.back());
            for (const std::string& line : lines) met = met || (!wanted.empty() && line.find(wanted) != std::string::npos);
        }
    } else if (what == "buffer") {
        seen = buffer.NodeLabel().str();
        met = seen == wanted;
    } else {
        seen = "no check named '" + args[0] + "' (type help expect)";
    }
    if (met) {
        ++met_;
        return;
    }
    ExpectFailed(args[0] + " " + wanted, seen.empty() ? "nothing" : "'" + seen + "'");
}

void Console::ExpectFailed(const std::string& check, const std::string& seen) {
    ++failures_;
    std::printf("FAILED: line %d of %s: expect %s: saw %s\n", input_.LineNumber(), input_.Name().c_str(),
                check.c_str(), seen.c_str());
}
