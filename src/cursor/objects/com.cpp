// The per-thread error text of the store and the small collections.

#include "oxdm/cursor/objects/com.h"

#include <optional>

#include "oxdm/cursor/objects/po_collections.h"

namespace {
thread_local std::optional<CString> errorInfo;
}  // namespace

void PoSetErrorInfo(const CString& text) { errorInfo = text; }

bool PoGetErrorInfo(CString& text) {
    if (!errorInfo) return false;
    text = *errorInfo;
    errorInfo.reset();
    return true;
}

HRESULT oxPOStringCollection::Item(long index, CString* text) {
    if (text == nullptr) return E_POINTER;
    if (index < 0 || index >= static_cast<long>(values_.size())) return E_INVALIDARG;
    *text = values_[static_cast<size_t>(index)];
    return S_OK;
}

HRESULT oxPOStringCollection::get_Count(long* count) {
    if (count == nullptr) return E_POINTER;
    *count = static_cast<long>(values_.size());
    return S_OK;
}

HRESULT oxPOStringCollection::Add(const CString& text) {
    values_.push_back(text);
    return S_OK;
}

HRESULT oxPOPair::put_Name(const CString& name) {
    name_ = name;
    return S_OK;
}

HRESULT oxPOPair::get_Name(CString* name) {
    if (name == nullptr) return E_POINTER;
    *name = name_;
    return S_OK;
}

HRESULT oxPOPair::put_Value(const ATL::CComVariant& value) {
    value_ = value;
    return S_OK;
}

HRESULT oxPOPair::get_Value(ATL::CComVariant* value) {
    if (value == nullptr) return E_POINTER;
    *value = value_;
    return S_OK;
}

HRESULT oxPOPairCollection::Count(long* count) {
    if (count == nullptr) return E_POINTER;
    *count = static_cast<long>(pairs_.size());
    return S_OK;
}

HRESULT oxPOPairCollection::Item(long index, IPOPair** pair) {
    if (pair == nullptr) return E_POINTER;
    if (index < 0 || index >= static_cast<long>(pairs_.size())) return E_INVALIDARG;
    *pair = pairs_[static_cast<size_t>(index)];
    (*pair)->AddRef();
    return S_OK;
}

HRESULT oxPOPairCollection::Clear() {
    pairs_.clear();
    return S_OK;
}

HRESULT oxPOPairCollection::Add(IPOPair* pair, long* index) {
    if (pair == nullptr) return E_POINTER;
    pairs_.emplace_back(pair);
    if (index != nullptr) *index = static_cast<long>(pairs_.size()) - 1;
    return S_OK;
}

bool PoReadStrings(IStringCollection* collection, std::vector<CString>& out) {
    long count = 0;
    if (collection == nullptr || FAILED(collection->get_Count(&count))) return false;
    for (long i = 0; i < count; ++i) {
        CString text;
        if (FAILED(collection->Item(i, &text))) return false;
        out.push_back(text);
    }
    return true;
}
