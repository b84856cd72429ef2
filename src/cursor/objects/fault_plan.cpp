#include "oxdm/cursor/objects/fault_plan.h"

#include <algorithm>

void oxPOFaultPlan::Show(const IID& iid) {
    hidden_.erase(std::remove(hidden_.begin(), hidden_.end(), iid), hidden_.end());
}

HRESULT oxPOFaultPlan::Check(const std::string& operation) const {
    auto it = failures_.find(operation);
    if (it == failures_.end()) return S_OK;
    PoSetErrorInfo(CString("Failed: ") + operation.c_str());
    return it->second;
}

bool oxPOFaultPlan::Hides(const IID& iid) const {
    return std::find(hidden_.begin(), hidden_.end(), iid) != hidden_.end();
}
