#pragma once
// oxPOFaultPlan: the failures a memory store is told to show, for testing
// what its callers do with them: an operation named here answers the given
// HRESULT (leaving the error text "Failed: <operation>") every time until
// cleared, and a face named here is not offered by the store's objects.
// One plan is shared by a set and everything the set hands out.

#include <map>
#include <string>
#include <vector>

#include "oxdm/cursor/objects/com.h"

class oxPOFaultPlan {
public:
    void Fail(const std::string& operation, HRESULT result) { failures_[operation] = result; }
    void Heal(const std::string& operation) { failures_.erase(operation); }
    void Hide(const IID& iid) { hidden_.push_back(iid); }
    void Show(const IID& iid);

    // The injected failure of `operation`, or S_OK.
    HRESULT Check(const std::string& operation) const;
    bool Hides(const IID& iid) const;

private:
    std::map<std::string, HRESULT> failures_;
    std::vector<IID> hidden_;
};
