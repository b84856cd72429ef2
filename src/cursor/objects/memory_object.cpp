#include "oxdm/cursor/objects/memory_object.h"

#include <cassert>

#include "memory_errors.h"
#include "oxdm/cursor/objects/fault_plan.h"
#include "oxdm/cursor/objects/object_storage.h"
#include "oxdm/cursor/objects/memory_set.h"

oxPOMemoryObject::oxPOMemoryObject(oxPOMemorySet* set, std::shared_ptr<oxPOObjectStorage> database,
                                   std::shared_ptr<oxPOFaultPlan> plan)
    : set_(set), database_(std::move(database)), plan_(std::move(plan)) {
    values_ = database_->Defaults();
    edited_.assign(values_.size(), false);
}

oxPOMemoryObject::oxPOMemoryObject(oxPOMemorySet* set, std::shared_ptr<oxPOObjectStorage> database,
                                   std::shared_ptr<oxPOFaultPlan> plan, long id)
    : oxPOMemoryObject(set, std::move(database), std::move(plan)) {
    const oxPOObjectStorage::Record* record = database_->Find(id);
    assert(record != nullptr);
    id_ = id;
    readVersion_ = record->version;
    values_ = record->values;
}

bool oxPOMemoryObject::Offers(const IID& iid) const { return !plan_->Hides(iid); }

ATL::CComVariant oxPOMemoryObject::Value(const CString& name) const {
    const long index = database_->PropertyIndex(name);
    return index < 0 ? ATL::CComVariant() : Value(index);
}

HRESULT oxPOMemoryObject::Fail(HRESULT result, const CString& reason) {
    errorText_ = reason;
    PoSetErrorInfo(reason);
    return result;
}

void oxPOMemoryObject::TellChanged(const CString& name, const ATL::CComVariant& value) {
    // A counted copy: a sink may advise or unadvise while it is told.
    std::vector<ATL::CComPtr<IUnknown>> sinks;
    for (const auto& [cookie, sink] : sinks_) sinks.push_back(sink);
    for (IUnknown* sink : sinks)
        if (auto events = PoQuery<INamedPropertyEvents>(sink)) events->OnPropertyChanged(name, value);
}

void oxPOMemoryObject::Take(const std::vector<ATL::CComVariant>& values) {
    const std::vector<oxPOPropertySpec>& specs = database_->Properties();
    for (size_t i = 0; i < values.size(); ++i) {
        if (values_[i] == values[i]) continue;
        values_[i] = values[i];
        TellChanged(specs[i].name, values[i]);
    }
    if (set_ != nullptr) set_->Invalidate();
}

HRESULT oxPOMemoryObject::Reset() {
    if (HRESULT hr = plan_->Check("Reset")) return hr;
    const oxPOObjectStorage::Record* record = id_ > 0 ? database_->Find(id_) : nullptr;
    if (record != nullptr) readVersion_ = record->version;
    Take(record != nullptr ? record->values : database_->Defaults());
    edited_.assign(values_.size(), false);
    dirty_ = false;
    return S_OK;
}

HRESULT oxPOMemoryObject::IsNew(short* isNew) {
    if (isNew == nullptr) return E_POINTER;
    *isNew = id_ == 0 ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT oxPOMemoryObject::Check(IUnknown** errors) {
    ATL::CComPtr<oxPOMemoryErrors> found(new oxPOMemoryErrors);
    const std::vector<oxPOPropertySpec>& specs = database_->Properties();
    for (size_t i = 0; i < specs.size(); ++i) {
        CString reason;
        if (specs[i].rule && !specs[i].rule(values_[i], reason)) found->Append(specs[i].name, reason);
    }
    if (found->Empty()) return S_OK;
    if (errors != nullptr) {
        *errors = static_cast<IPOValidationErrors*>(found.get());
        (*errors)->AddRef();
    }
    CString reason;
    found->Message(0, &reason);
    errorText_ = reason;
    return E_FAIL;
}

HRESULT oxPOMemoryObject::StoreNew() {
    if (HRESULT hr = Check(nullptr); FAILED(hr)) return Fail(hr, errorText_);
    const long id = database_->Insert(values_);
    const oxPOObjectStorage::Record* record = id > 0 ? database_->Find(id) : nullptr;
    if (record == nullptr) return Fail(E_FAIL, "the object could not be stored");
    id_ = id;
    readVersion_ = record->version;
    edited_.assign(values_.size(), false);
    dirty_ = false;
    return S_OK;
}

HRESULT oxPOMemoryObject::Save() {
    if (HRESULT hr = plan_->Check("Save")) return hr;
    if (id_ == 0) {
        HRESULT hr = StoreNew();
        if (SUCCEEDED(hr) && set_ != nullptr) set_->Adopt(this);
        return hr;
    }
    const oxPOObjectStorage::Record* record = database_->Find(id_);
    if (record == nullptr) return Fail(PO_E_GONE, "the object has been deleted by someone else");
    if (check_ && record->version != readVersion_)
        return Fail(PO_E_CONFLICT, "the object was changed by someone else");
    if (HRESULT hr = Check(nullptr); FAILED(hr)) return Fail(hr, errorText_);
    record = database_->Write(id_, values_) ? database_->Find(id_) : nullptr;
    if (record == nullptr) return Fail(PO_E_GONE, "the object has been deleted by someone else");
    readVersion_ = record->version;
    edited_.assign(values_.size(), false);
    dirty_ = false;
    return S_OK;
}

HRESULT oxPOMemoryObject::Delete() {
    if (HRESULT hr = plan_->Check("Delete")) return hr;
    if (id_ == 0) return Fail(E_FAIL, "the object was never stored");
    if (!database_->Erase(id_)) return Fail(PO_E_GONE, "the object has been deleted by someone else");
    if (set_ != nullptr) set_->Drop(id_);
    return S_OK;
}

HRESULT oxPOMemoryObject::Validate(IUnknown** errors, short* ok) {
    if (errors == nullptr || ok == nullptr) return E_POINTER;
    *errors = nullptr;
    if (HRESULT hr = plan_->Check("Validate")) return hr;
    *ok = SUCCEEDED(Check(errors)) ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT oxPOMemoryObject::ErrorText(CString* text) {
    if (text == nullptr) return E_POINTER;
    *text = errorText_;
    return S_OK;
}

HRESULT oxPOMemoryObject::IsDirty(short* dirty) {
    if (dirty == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("IsDirty")) return hr;
    *dirty = dirty_ ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT oxPOMemoryObject::GetProperty(const CString& name, short* readOnly, ATL::CComVariant* value) {
    if (readOnly == nullptr || value == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("GetProperty")) return hr;
    const long index = database_->PropertyIndex(name);
    if (index < 0) return Fail(E_INVALIDARG, "there is no property " + name);
    *readOnly = database_->Properties()[static_cast<size_t>(index)].readOnly ? VARIANT_TRUE : VARIANT_FALSE;
    *value = values_[static_cast<size_t>(index)];
    return S_OK;
}

HRESULT oxPOMemoryObject::SetProperty(const CString& name, const ATL::CComVariant& value) {
    if (HRESULT hr = plan_->Check("SetProperty")) return hr;
    const long index = database_->PropertyIndex(name);
    if (index < 0) return Fail(E_INVALIDARG, "there is no property " + name);
    const size_t at = static_cast<size_t>(index);
    if (database_->Properties()[at].readOnly) return Fail(E_FAIL, name + " can't be changed");
    // A counted copy: a sink may advise or unadvise while it is told.
    std::vector<ATL::CComPtr<IUnknown>> sinks;
    for (const auto& [cookie, sink] : sinks_) sinks.push_back(sink);
    for (IUnknown* sink : sinks)
        if (auto events = PoQuery<INamedPropertyEvents2>(sink)) events->OnPropertyChanging();
    if (values_[at] == value) return S_OK;
    values_[at] = value;
    edited_[at] = true;
    dirty_ = true;
    if (set_ != nullptr) set_->Invalidate();
    TellChanged(name, value);
    return S_OK;
}

HRESULT oxPOMemoryObject::IsValidValueForProperty(const CString& name, const ATL::CComVariant& value,
                                                  IUnknown** errors, short* ok) {
    if (errors == nullptr || ok == nullptr) return E_POINTER;
    *errors = nullptr;
    if (HRESULT hr = plan_->Check("IsValidValueForProperty")) return hr;
    const long index = database_->PropertyIndex(name);
    if (index < 0) return Fail(E_INVALIDARG, "there is no property " + name);
    const oxPOPropertySpec& spec = database_->Properties()[static_cast<size_t>(index)];
    CString reason;
    *ok = VARIANT_TRUE;
    if (spec.rule && !spec.rule(value, reason)) {
        *ok = VARIANT_FALSE;
        ATL::CComPtr<oxPOMemoryErrors> found(new oxPOMemoryErrors);
        found->Append(name, reason);
        *errors = static_cast<IPOValidationErrors*>(found.get());
        (*errors)->AddRef();
    }
    return S_OK;
}

HRESULT oxPOMemoryObject::Advise(IUnknown* sink, unsigned long* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("AdviseObject")) return hr;
    *cookie = nextCookie_++;
    sinks_[*cookie] = sink;
    return S_OK;
}

HRESULT oxPOMemoryObject::Unadvise(unsigned long cookie) { return sinks_.erase(cookie) != 0 ? S_OK : E_INVALIDARG; }

HRESULT oxPOMemoryObject::Clone(IUnknown** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (HRESULT hr = plan_->Check("Clone")) return hr;
    auto* copy = new oxPOMemoryObject(set_, database_, plan_);
    copy->id_ = id_;
    copy->readVersion_ = readVersion_;
    copy->values_ = values_;
    copy->edited_ = edited_;
    copy->dirty_ = dirty_;
    copy->check_ = check_;
    *object = static_cast<IPOObject*>(copy);
    (*object)->AddRef();
    return S_OK;
}

HRESULT oxPOMemoryObject::SetCheck(bool check) {
    check_ = check;
    return S_OK;
}

HRESULT oxPOMemoryObject::GetCheck(short* check) {
    if (check == nullptr) return E_POINTER;
    *check = check_ ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT oxPOMemoryObject::MarkNew() {
    if (HRESULT hr = plan_->Check("MarkNew")) return hr;
    id_ = 0;
    readVersion_ = 0;
    return S_OK;
}

HRESULT oxPOMemoryObject::Reread() {
    if (HRESULT hr = plan_->Check("Reread")) return hr;
    const oxPOObjectStorage::Record* record = database_->Find(id_);
    if (record == nullptr) return Fail(PO_E_GONE, "the object has been deleted by someone else");
    readVersion_ = record->version;
    std::vector<ATL::CComVariant> values = record->values;
    for (size_t i = 0; i < values.size(); ++i)
        if (edited_[i]) values[i] = values_[i];
    Take(values);
    return S_OK;
}
