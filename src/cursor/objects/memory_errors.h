#pragma once
// What a validation of the memory store found: the properties refused and
// their reasons, in property order.

#include <utility>
#include <vector>

#include "oxdm/cursor/objects/com_object.h"

class oxPOMemoryErrors : public PoComObject<IPOValidationErrors> {
public:
    void Append(const CString& property, const CString& reason) { errors_.emplace_back(property, reason); }
    bool Empty() const { return errors_.empty(); }

    HRESULT Count(long* count) override {
        if (count == nullptr) return E_POINTER;
        *count = static_cast<long>(errors_.size());
        return S_OK;
    }
    HRESULT Property(long index, CString* name) override { return Read(index, name, true); }
    HRESULT Message(long index, CString* text) override { return Read(index, text, false); }

private:
    HRESULT Read(long index, CString* out, bool name) {
        if (out == nullptr) return E_POINTER;
        if (index < 0 || index >= static_cast<long>(errors_.size())) return E_INVALIDARG;
        const auto& error = errors_[static_cast<size_t>(index)];
        *out = name ? error.first : error.second;
        return S_OK;
    }

    std::vector<std::pair<CString, CString>> errors_;
};
