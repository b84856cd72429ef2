#pragma once
// _oxdmBufferCallbacks: the callbacks bound to one buffer, by owner, and
// the guard against nesting.
//
// Each SetCallbacks(owner, ...) appends the owner's binding; the chains of
// all bindings are asked in binding order and the first non-zero answer
// stands. While a chain runs, the holder remembers its event: a row event
// raised from inside a callback answers 0 undelivered, RowFilter excepted,
// and the buffer answers values by the event that runs.
//
// Invariants: every binding has one chain per row event and, per column,
// one chain per column event; running_ is -1 when no chain runs.

#include <array>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/datasource/data_source.h"
#include "oxdm/notify/callback.h"

class oxdmCallbackMgr;
class oxdmControlMgr;
class oxdmDSFocusRowMgr;
class oxdmEvent;

class _oxdmBufferCallbacks {
public:
    // Copies the manager's row entry of `nodeLabel` and the column entries
    // of `columnIds` (in column order) into a binding of `owner`.
    void Bind(void* owner, const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr, const CString& nodeLabel,
              const std::vector<CString>& columnIds);
    // Drops every binding of `owner`.
    void Remove(void* owner);
    int RaiseRow(oxdmDataSource::Event event, oxdmDSFocusRowMgr* row, oxdmEvent* msg);
    int RaiseCol(oxdmDataSource::Event event, short col, oxdmDSFocusRowMgr* row, oxdmDSCellOnFocusRow* cell);
    int Running() const { return running_; }

private:
    using ColChains = std::array<oxdmCallback, 3>;
    struct Binding {
        void* owner;
        oxdmControlMgr* controlMgr;
        std::array<oxdmCallback, oxdmDataSource::NumRowEvents> rows;
        std::vector<ColChains> cols;
    };
    // Runs `chain` with the event marked as running.
    int Run(int event, const oxdmCallback& chain, oxdmCallbackInfo& info);

    std::vector<Binding> bindings_;
    int running_ = -1;
};
