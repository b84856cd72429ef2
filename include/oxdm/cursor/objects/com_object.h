#pragma once
// PoComObject<Faces...>: the reference count and QueryInterface shared by
// the classes that implement store interfaces. A class derives from it with
// the faces it offers; QueryInterface answers each of them, the bases they
// derive from (IDispatch, IUnknown, INamedPropertyEvents under
// INamedPropertyEvents2), and nothing else.
//
// Two interfaces of one object may name an operation alike (Advise of the
// sorting and of the filtering face): a face class between them renames it
// (PoSortingFace, PoFilteringFace) and declares `using Interface = ...`.
//
// Lifetime: a new object has count 0; the first CComPtr (or AddRef) that
// takes it raises it to 1, and the Release that brings it back to 0 deletes
// it. Objects are made with new only.

#include <tuple>
#include <type_traits>

#include "oxdm/cursor/objects/com.h"
#include "oxdm/cursor/objects/po_interfaces.h"

class PoSortingFace : public ISupportSorting {
public:
    using Interface = ISupportSorting;
    HRESULT Advise(IUnknown* sink, unsigned long* cookie) final { return AdviseSort(sink, cookie); }
    HRESULT Unadvise(unsigned long cookie) final { return UnadviseSort(cookie); }
    virtual HRESULT AdviseSort(IUnknown* sink, unsigned long* cookie) = 0;
    virtual HRESULT UnadviseSort(unsigned long cookie) = 0;
};

class PoFilteringFace : public ISupportFiltering {
public:
    using Interface = ISupportFiltering;
    HRESULT Advise(IUnknown* sink, unsigned long* cookie) final { return AdviseFilter(sink, cookie); }
    HRESULT Unadvise(unsigned long cookie) final { return UnadviseFilter(cookie); }
    virtual HRESULT AdviseFilter(IUnknown* sink, unsigned long* cookie) = 0;
    virtual HRESULT UnadviseFilter(unsigned long cookie) = 0;
};

template <class... Faces>
class PoComObject : public Faces... {
public:
    PoComObject() = default;
    PoComObject(const PoComObject&) = delete;
    PoComObject& operator=(const PoComObject&) = delete;

    HRESULT QueryInterface(const IID& iid, void** out) override {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (Offers(iid)) {
            if (iid == IUnknown::kIID || iid == IDispatch::kIID) *out = First();
            else ((*out == nullptr ? (*out = FaceFor<Faces>(iid)) : nullptr), ...);
        }
        if (*out == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    unsigned long AddRef() override { return ++count_; }
    unsigned long Release() override {
        unsigned long left = --count_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT GetTypeInfoCount(unsigned* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 1;
        return S_OK;
    }

protected:
    virtual ~PoComObject() = default;
    // Whether the object shows the face `iid` at all; a class may hide faces.
    virtual bool Offers(const IID&) const { return true; }

private:
    template <class Face>
    void* FaceFor(const IID& iid) {
        if (iid == Face::kIID) {
            // A face class that renames operations of its interface says
            // which interface it stands for.
            if constexpr (requires { typename Face::Interface; })
                return static_cast<typename Face::Interface*>(static_cast<Face*>(this));
            else
                return static_cast<Face*>(this);
        }
        if constexpr (std::is_base_of_v<INamedPropertyEvents, Face>) {
            if (iid == INamedPropertyEvents::kIID) return static_cast<INamedPropertyEvents*>(static_cast<Face*>(this));
        }
        return nullptr;
    }
    IUnknown* First() {
        using Face = std::tuple_element_t<0, std::tuple<Faces...>>;
        return static_cast<IDispatch*>(static_cast<Face*>(this));
    }

    // The number of references held.
    unsigned long count_ = 0;
};
