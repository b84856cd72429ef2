#pragma once
// The object model through which persistent objects are reached: interface
// identifiers, result codes, the counted interface base and its smart
// pointer, and the per-thread error text a failing operation leaves behind.
//
// Every operation of a store interface answers an HRESULT: 0 or above is
// success, below 0 a failure. Two failures are aborts of the store
// (PO_E_ABORT_STORE and E_ABORT): whoever sees one ends the task with the
// store's error text. A store tells a write conflict and a vanished object
// by the two codes PO_E_CONFLICT and PO_E_GONE.
//
// Reference counting: an interface pointer handed out by QueryInterface or
// through an out-parameter carries one reference for the receiver, which
// drops it with Release (CComPtr does both). An object deletes itself when
// its count reaches 0.

#include <cstdint>
#include <utility>

#include "oxdm/base/cstring.h"

using HRESULT = long;

// A 128-bit interface or class identifier.
struct _GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    friend bool operator==(const _GUID& a, const _GUID& b) {
        if (a.Data1 != b.Data1 || a.Data2 != b.Data2 || a.Data3 != b.Data3) return false;
        for (int i = 0; i < 8; ++i)
            if (a.Data4[i] != b.Data4[i]) return false;
        return true;
    }
};
using IID = _GUID;
using CLSID = _GUID;

// A 32-bit result code widened to long, so that failure codes stay negative.
constexpr HRESULT PoResult(std::uint32_t code) { return static_cast<HRESULT>(static_cast<std::int32_t>(code)); }

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = PoResult(0x80004001u);
inline constexpr HRESULT E_NOINTERFACE = PoResult(0x80004002u);
inline constexpr HRESULT E_POINTER = PoResult(0x80004003u);
inline constexpr HRESULT E_ABORT = PoResult(0x80004004u);
inline constexpr HRESULT E_FAIL = PoResult(0x80004005u);
inline constexpr HRESULT E_INVALIDARG = PoResult(0x80070057u);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = PoResult(0x80040154u);
// The store gave up and the task must end.
inline constexpr HRESULT PO_E_ABORT_STORE = PoResult(0x80440200u);
// Save: another handle wrote the object since this one read it (status 20).
inline constexpr HRESULT PO_E_CONFLICT = PoResult(0x80440201u);
// Save or delete: the object is no longer in the store (status 13).
inline constexpr HRESULT PO_E_GONE = PoResult(0x80440202u);

constexpr bool SUCCEEDED(HRESULT hr) { return hr >= 0; }
constexpr bool FAILED(HRESULT hr) { return hr < 0; }

// The VARIANT form of true and false.
inline constexpr short VARIANT_TRUE = -1;
inline constexpr short VARIANT_FALSE = 0;

class IUnknown {
public:
    static constexpr IID kIID = {0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

    // Answers this object's face `iid` with a reference in *out, or
    // E_NOINTERFACE with *out null.
    virtual HRESULT QueryInterface(const IID& iid, void** out) = 0;
    virtual unsigned long AddRef() = 0;
    virtual unsigned long Release() = 0;

protected:
    virtual ~IUnknown() = default;
};

class IDispatch : public IUnknown {
public:
    static constexpr IID kIID = {0x00020400, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

    virtual HRESULT GetTypeInfoCount(unsigned* count) = 0;
};

namespace ATL {

// A counted interface pointer: copying adds a reference, dropping releases.
template <class T>
class CComPtr {
public:
    CComPtr() = default;
    CComPtr(T* p) : p_(p) {  // NOLINT: implicit, as interface pointers are passed
        if (p_) p_->AddRef();
    }
    CComPtr(const CComPtr& other) : CComPtr(other.p_) {}
    CComPtr(CComPtr&& other) noexcept : p_(std::exchange(other.p_, nullptr)) {}
    ~CComPtr() { Release(); }
    CComPtr& operator=(const CComPtr& other) {
        CComPtr copy(other);
        std::swap(p_, copy.p_);
        return *this;
    }
    CComPtr& operator=(CComPtr&& other) noexcept {
        std::swap(p_, other.p_);
        return *this;
    }

    // Drops the reference held, if any.
    void Release() {
        if (T* p = std::exchange(p_, nullptr)) p->Release();
    }
    // The address to receive an out-parameter that carries a reference.
    // REQUIRES: the pointer is empty.
    T** operator&() { return &p_; }
    T* operator->() const { return p_; }
    operator T*() const { return p_; }  // NOLINT: implicit, as interface pointers are passed
    T* get() const { return p_; }
    explicit operator bool() const { return p_ != nullptr; }

private:
    T* p_ = nullptr;
};

}  // namespace ATL

// Asks `object` for the face I: empty when it has none (or object is null).
template <class I>
ATL::CComPtr<I> PoQuery(IUnknown* object) {
    ATL::CComPtr<I> face;
    if (object != nullptr) object->QueryInterface(I::kIID, reinterpret_cast<void**>(&face));
    return face;
}

// The error text of the last failing store operation on this thread, as a
// store leaves it (SetErrorInfo) and a caller takes it (GetErrorInfo, which
// clears it). False when there is none.
void PoSetErrorInfo(const CString& text);
bool PoGetErrorInfo(CString& text);
