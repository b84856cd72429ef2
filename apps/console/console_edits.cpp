// The commands that change rows: typing into a column, saving, reverting,
// deleting, appending and reserving a key.
#include <cstdio>

#include "console.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "sales_screen.h"

void Console::Set(const Args& args) {
    oxdmBufferedFileDataSource& buffer = screen_.Current();
    const short col = Column(args[0]);
    if (col < 0) return;
    const std::string label = buffer.NodeLabel().str();
    if (!buffer.HasFocusRow()) {
        Fail(label + " has no row to type into; append one first");
        return;
    }
    if (buffer.IsReadOnly(col)) {
        Fail(args[0] + " is read-only in this row of " + label);
        return;
    }
    const std::string value = args[1] == "\"\"" ? std::string() : args[1];
    if (!buffer.ObserverSetNewValue(col, CString(value.c_str()), 0, true)) {
        Fail(label + " refused '" + value + "' for " + args[0] + "; the row keeps " +
             buffer.NewValueAsString(col).str());
        return;
    }
    std::printf("   %s = %s\n", args[0].c_str(), buffer.NewValueAsString(col).c_str());
    Done("changed");
}

void Console::Save(const Args&) {
    if (!screen_.SavePending()) {
        Done("refused");
        return;
    }
    Done(screen_.CurrentWatch().Saves() > 0 ? "saved" : "unchanged");
}

void Console::Revert(const Args&) {
    oxdmBufferedFileDataSource& buffer = screen_.Current();
    if (!buffer.IsRowChanged() && !buffer.IsKeyReserved()) {
        Done("unchanged");
        return;
    }
    screen_.Manager().RevertRow(screen_.CurrentRowMgr());
    Done(buffer.IsRowChanged() ? "refused" : "reverted");
}

void Console::Delete(const Args&) {
    screen_.Manager().DeleteRow(screen_.CurrentRowMgr());
    Done(screen_.CurrentWatch().Deletes() > 0 ? "deleted" : "kept");
}

void Console::Append(const Args&) {
    screen_.Manager().AppendRow(screen_.CurrentRowMgr());
    Done(screen_.Current().IsNewRow() ? "new row" : "stayed");
}

void Console::Reserve(const Args&) {
    oxdmBufferedFileDataSource& buffer = screen_.Current();
    if (!buffer.IsNewRow()) {
        Fail("reserve works on the new row of " + buffer.NodeLabel().str() + "; append one first");
        return;
    }
    Done(buffer.ReserveKey() ? "reserved" : "refused");
}
