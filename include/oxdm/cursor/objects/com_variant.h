#pragma once
// ATL::CComVariant: the small value a property travels in between a store
// and the bridge: empty, a boolean (VARIANT_TRUE or VARIANT_FALSE), a 32-bit
// integer, a double, a date (days since 12/30/1899, the fraction being the
// time of day), a text, or an interface pointer (counted).

#include <cstdint>

#include "oxdm/base/cstring.h"
#include "oxdm/cursor/objects/com.h"

enum VARENUM : unsigned short {
    VT_EMPTY = 0,
    VT_I4 = 3,
    VT_R8 = 5,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_BOOL = 11,
    VT_UNKNOWN = 13,
};

namespace ATL {

class CComVariant {
public:
    CComVariant() = default;
    CComVariant(const char* text) : vt(VT_BSTR), text_(text) {}  // NOLINT: implicit like the original
    CComVariant(const CString& text) : vt(VT_BSTR), text_(text) {}  // NOLINT
    CComVariant(std::int32_t value) : vt(VT_I4), long_(value) {}  // NOLINT
    CComVariant(double value, VARENUM kind = VT_R8) : vt(kind), double_(value) {}  // NOLINT
    explicit CComVariant(bool value) : vt(VT_BOOL), bool_(value ? VARIANT_TRUE : VARIANT_FALSE) {}
    explicit CComVariant(IUnknown* object) : vt(VT_UNKNOWN), object_(object) {}

    void Clear() { *this = CComVariant(); }
    bool IsEmpty() const { return vt == VT_EMPTY; }

    // REQUIRES (each): vt is the kind read.
    const CString& Text() const;
    std::int32_t Long() const;
    double Double() const;  // VT_R8 or VT_DATE
    bool Bool() const;
    IUnknown* Object() const;

    // A number of any numeric kind (VT_I4, VT_R8, VT_DATE, VT_BOOL as -1/0);
    // false for the others.
    bool AsNumber(double* out) const;

    // Same kind and same value.
    bool operator==(const CComVariant& other) const;
    // Order for sorting: empty first, then numbers (numeric kinds compare
    // by value), then texts (byte order), then the rest.
    bool operator<(const CComVariant& other) const;

    VARENUM vt = VT_EMPTY;

private:
    // Only the member that vt names means something.
    CString text_;
    std::int32_t long_ = 0;
    double double_ = 0.0;
    short bool_ = VARIANT_FALSE;
    CComPtr<IUnknown> object_;
};

}  // namespace ATL
