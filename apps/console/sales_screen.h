#pragma once
// SalesScreen: the data of a customer screen, held as a screen holds it:
// a query of customers ("cust") with their orders ("orders") and the
// orders' lines ("lines"), an oxdmDataManager over it whose root buffer is
// the customers and whose child buffers are the orders and the lines, and
// the buffer that the operator is working in.
//
// The screen's audit trail observes the whole tree from the first moment.
//
// Invariants: buffers_ lists the root buffer first, then its descendants
// depth first; current_ indexes buffers_; watches_[i] observes buffers_[i].
// Ownership: the manager owns the buffer tree; query_ outlives the manager
// (it is declared first, so it is destroyed last); the buffers listed are
// the manager's; the audit and the watches go before the manager.

#include <memory>
#include <string>
#include <vector>

#include "buffer_watch.h"
#include "console_audit.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/datasource/buffered/data_manager.h"
#include "oxdm/query/query.h"

class SalesScreen {
public:
    // Opens the screen over the record file at `path`, each buffer with a
    // window of `windowRows`, starts the audit trail (with a printed report
    // at `reportPath` unless it is empty) and fills the customers' window.
    // Throws oxdmException when the file can't be opened.
    SalesScreen(const std::string& path, short windowRows, const std::string& reportPath);
    SalesScreen(const SalesScreen&) = delete;
    SalesScreen& operator=(const SalesScreen&) = delete;

    oxdmDataManager& Manager() { return *manager_; }
    const std::string& RecordPath() const { return path_; }
    oxdmBufferedFileDataSource& Current() const { return *buffers_[current_]; }
    BufferWatch& CurrentWatch() const { return *watches_[current_]; }
    // What the manager's verbs take for the current buffer: null for the
    // root, else the buffer's focus row manager.
    oxdmDSFocusRowMgr* CurrentRowMgr() const;

    // Makes the buffer labelled `name` current; false when there is none.
    bool Switch(const std::string& name);
    // Saves what is pending before a move that the manager has no verb for:
    // the whole tree from the root, or the current child's row.
    bool SavePending();
    // Scrolls the current buffer's window to its focus row when the focus
    // lies outside it, as a grid does after a move.
    void ScrollToFocus();
    // The label of the first buffer, from the root down, whose focus row
    // has unsaved changes; empty when none has.
    std::string FirstChangedBuffer() const;
    // The labels of the buffers, comma separated.
    std::string BufferNames() const;

private:
    const std::string path_;
    std::unique_ptr<oxdmQuery> query_;
    oxTask task_{1, "Sales"};
    std::unique_ptr<oxdmDataManager> manager_;
    std::vector<oxdmBufferedFileDataSource*> buffers_;
    std::vector<std::unique_ptr<BufferWatch>> watches_;
    std::unique_ptr<ConsoleAudit> audit_;
    size_t current_ = 0;
};
