#pragma once
// oxPOMemoryObject: one business object of a memory set: the live object a
// program edits. Its edits are its own until Save writes them to the
// database; a set's Add of a clone puts the clone in its place (a revert).
//
// Save checks, unless SetCheck(false), that nobody wrote the object since it
// was read (PO_E_CONFLICT, status 20) and that it is still stored (PO_E_GONE,
// status 13); a value refused by a property's rule, or a storage that can't
// store the object, fails with E_FAIL and the reason in ErrorText.
//
// Events: SetProperty tells every advised sink OnPropertyChanging (when the
// sink offers INamedPropertyEvents2) before, and OnPropertyChanged after; a
// Reset or Reread tells OnPropertyChanged for each value it changes.

#include <map>
#include <memory>
#include <vector>

#include "oxdm/cursor/objects/com_object.h"

class oxPOFaultPlan;
class oxPOObjectStorage;
class oxPOMemorySet;

class oxPOMemoryObject : public PoComObject<IPOObject, IPOProperties, IPOCloneable, IPOWriteControl> {
public:
    // A new object with the defaults; `set` is the set it belongs to.
    oxPOMemoryObject(oxPOMemorySet* set, std::shared_ptr<oxPOObjectStorage> database,
                     std::shared_ptr<oxPOFaultPlan> plan);
    // The stored object `id` as it is now.
    // REQUIRES: the database holds `id`.
    oxPOMemoryObject(oxPOMemorySet* set, std::shared_ptr<oxPOObjectStorage> database,
                     std::shared_ptr<oxPOFaultPlan> plan, long id);

    // IPOObject
    HRESULT Reset() override;
    HRESULT IsNew(short* isNew) override;
    HRESULT Save() override;
    HRESULT Delete() override;
    HRESULT Validate(IUnknown** errors, short* ok) override;
    HRESULT ErrorText(CString* text) override;
    HRESULT IsDirty(short* dirty) override;
    // IPOProperties
    HRESULT GetProperty(const CString& name, short* readOnly, ATL::CComVariant* value) override;
    HRESULT SetProperty(const CString& name, const ATL::CComVariant& value) override;
    HRESULT IsValidValueForProperty(const CString& name, const ATL::CComVariant& value, IUnknown** errors,
                                    short* ok) override;
    HRESULT Advise(IUnknown* sink, unsigned long* cookie) override;
    HRESULT Unadvise(unsigned long cookie) override;
    // IPOCloneable
    HRESULT Clone(IUnknown** object) override;
    // IPOWriteControl
    HRESULT SetCheck(bool check) override;
    HRESULT GetCheck(short* check) override;
    HRESULT MarkNew() override;
    HRESULT Reread() override;

    long Id() const { return id_; }
    const ATL::CComVariant& Value(long property) const { return values_[static_cast<size_t>(property)]; }
    // The value of a property by name; empty for an unknown name.
    ATL::CComVariant Value(const CString& name) const;
    // Stores a new object (Save, and Add of the set); PO_E_* or E_FAIL.
    HRESULT StoreNew();
    // The set is going away.
    void Detach() { set_ = nullptr; }

protected:
    bool Offers(const IID& iid) const override;

private:
    // The reason the first refused property gives, or S_OK; fills errors.
    HRESULT Check(IUnknown** errors);
    HRESULT Fail(HRESULT result, const CString& reason);
    // Takes `values`, telling the sinks of each that changes.
    void Take(const std::vector<ATL::CComVariant>& values);
    void TellChanged(const CString& name, const ATL::CComVariant& value);

    // set_ is the owning set (not counted; null once the set is gone).
    // id_ is 0 for an object never stored (or marked new); readVersion_ the
    // version of the record as last read or written. values_ holds one value
    // per property; edited_ marks those this object changed since it was
    // read. dirty_ is true while edits are unsaved. sinks_ are counted.
    oxPOMemorySet* set_;
    std::shared_ptr<oxPOObjectStorage> database_;
    std::shared_ptr<oxPOFaultPlan> plan_;
    long id_ = 0;
    long readVersion_ = 0;
    std::vector<ATL::CComVariant> values_;
    std::vector<bool> edited_;
    bool dirty_ = false;
    bool check_ = true;
    CString errorText_;
    std::map<unsigned long, ATL::CComPtr<IUnknown>> sinks_;
    unsigned long nextCookie_ = 1;
};
