#include "buffer_callbacks.h"

#include <utility>

#include "oxdm/notify/callback_info.h"
#include "oxdm/notify/callback_mgr.h"

void _oxdmBufferCallbacks::Bind(void* owner, const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr,
                                const CString& nodeLabel, const std::vector<CString>& columnIds) {
    Binding binding{owner, controlMgr, {}, std::vector<ColChains>(columnIds.size())};
    if (const auto* entry = mgr.RowCallbacks().GetCallbacks(nodeLabel)) {
        for (size_t item = 0; item < entry->size(); ++item) {
            const int event = oxdmRowCallbacks::DataSourceEvent(static_cast<int>(item));
            if (event >= 0) binding.rows[static_cast<size_t>(event)] += (*entry)[item];
        }
    }
    for (size_t col = 0; col < columnIds.size(); ++col) {
        const auto* entry = mgr.ColCallbacks().GetCallbacks(columnIds[col]);
        if (!entry) continue;
        for (size_t item = 0; item < entry->size(); ++item) {
            const int event = oxdmColCallbacks::DataSourceEvent(static_cast<int>(item));
            if (event >= 0) binding.cols[col][static_cast<size_t>(event - oxdmDataSource::ColBeforeChange)] += (*entry)[item];
        }
    }
    bindings_.push_back(std::move(binding));
}

void _oxdmBufferCallbacks::Remove(void* owner) {
    std::erase_if(bindings_, [owner](const Binding& binding) { return binding.owner == owner; });
}

int _oxdmBufferCallbacks::Run(int event, const oxdmCallback& chain, oxdmCallbackInfo& info) {
    const int former = std::exchange(running_, event);
    const int answer = chain(&info);
    running_ = former;
    return answer;
}

int _oxdmBufferCallbacks::RaiseRow(oxdmDataSource::Event event, oxdmDSFocusRowMgr* row, oxdmEvent* msg) {
    if (event < 0 || event >= oxdmDataSource::NumRowEvents) return 0;
    if (running_ != -1 && event != oxdmDataSource::RowFilter) return 0;
    // The bindings are copied: a callback may bind or unbind.
    const std::vector<Binding> bindings = bindings_;
    for (const Binding& binding : bindings) {
        const oxdmCallback& chain = binding.rows[static_cast<size_t>(event)];
        if (chain.empty()) continue;
        oxdmCallbackInfo info(row, nullptr, binding.controlMgr, nullptr, oxBase::SmartPtr<oxdmAppEventData>(), msg);
        if (const int answer = Run(event, chain, info)) return answer;
    }
    return 0;
}

int _oxdmBufferCallbacks::RaiseCol(oxdmDataSource::Event event, short col, oxdmDSFocusRowMgr* row,
                                   oxdmDSCellOnFocusRow* cell) {
    if (event < oxdmDataSource::ColBeforeChange || event >= oxdmDataSource::NumEvents || col < 0) return 0;
    if (running_ != -1) return 0;
    const std::vector<Binding> bindings = bindings_;
    for (const Binding& binding : bindings) {
        if (static_cast<size_t>(col) >= binding.cols.size()) continue;
        const oxdmCallback& chain = binding.cols[static_cast<size_t>(col)][static_cast<size_t>(event - oxdmDataSource::ColBeforeChange)];
        if (chain.empty()) continue;
        oxdmCallbackInfo info(row, cell, binding.controlMgr, nullptr, oxBase::SmartPtr<oxdmAppEventData>(), nullptr);
        if (const int answer = Run(event, chain, info)) return answer;
    }
    return 0;
}
