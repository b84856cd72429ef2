// The commands that move the focus: the manager's verbs, pages, a place by
// percentage and the finds.
#include <charconv>

#include "console.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "sales_screen.h"

void Console::First(const Args&) {
    screen_.Manager().ReadFirst(screen_.CurrentRowMgr());
    MoveDone();
}

void Console::Prev(const Args&) {
    screen_.Manager().ReadPrev(screen_.CurrentRowMgr());
    MoveDone();
}

void Console::Next(const Args&) {
    screen_.Manager().ReadNext(screen_.CurrentRowMgr());
    MoveDone();
}

void Console::Last(const Args&) {
    screen_.Manager().ReadLast(screen_.CurrentRowMgr());
    MoveDone();
}

void Console::PageUp(const Args&) {
    oxdmBufferedFileDataSource& buffer = screen_.Current();
    if (screen_.SavePending()) buffer.MoveUp(buffer.WindowSize(), 0, true);
    MoveDone();
}

void Console::PageDown(const Args&) {
    oxdmBufferedFileDataSource& buffer = screen_.Current();
    if (screen_.SavePending()) buffer.MoveDown(buffer.WindowSize(), 0, true, true);
    MoveDone();
}

// As a scroll thumb dropped at N% and a click on the window's top row.
void Console::Percent(const Args& args) {
    std::string text = args[0];
    if (!text.empty() && text.back() == '%') text.pop_back();
    int percent = -1;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), percent);
    if (ec != std::errc() || end != text.data() + text.size() || percent < 0 || percent > 100) {
        Fail("percent wants a whole number from 0 to 100, not '" + args[0] + "'");
        return;
    }
    oxdmBufferedFileDataSource& buffer = screen_.Current();
    if (screen_.SavePending()) {
        buffer.SetWindowScrollPercent(percent / 100.0);
        if (buffer.NumWindowDataRows() > 0) buffer.SetFocus(0, 0, true);
    }
    MoveDone();
}

void Console::Find(const Args& args) {
    const short col = Column(args[0]);
    if (col < 0) return;
    oxdmBufferedFileDataSource& buffer = screen_.Current();
    // The columns before this one in the buffer's order come from the
    // focus row: in orders, the customer's number. Only find values are
    // set before the checks, so a refused find changes no row.
    buffer.CopyKeyColumnsToFindValues();
    if (!buffer.SetFindValue(col, CString(args[1].c_str()))) {
        Fail("'" + args[1] + "' is not a value of " + args[0]);
        return;
    }
    if (!buffer.CanDoFastFind(col)) {
        Fail(args[0] + " does not order " + buffer.NodeLabel().str() + "; find by a column of its key, or use prefix");
        return;
    }
    if (!screen_.SavePending()) {
        Done("stayed");
        return;
    }
    Done(buffer.FindGE() ? "found" : "not found");
}

void Console::Prefix(const Args& args) {
    const short col = Column(args[0]);
    if (col < 0) return;
    if (!screen_.SavePending()) {
        Done("stayed");
        return;
    }
    Done(screen_.Current().FindSubstr(col, CString(args[1].c_str())) ? "found" : "not found");
}
