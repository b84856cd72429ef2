#include "oxdm/cursor/objects/com_variant.h"

#include <cassert>

namespace ATL {

const CString& CComVariant::Text() const {
    assert(vt == VT_BSTR);
    return text_;
}

std::int32_t CComVariant::Long() const {
    assert(vt == VT_I4);
    return long_;
}

double CComVariant::Double() const {
    assert(vt == VT_R8 || vt == VT_DATE);
    return double_;
}

bool CComVariant::Bool() const {
    assert(vt == VT_BOOL);
    return bool_ != VARIANT_FALSE;
}

IUnknown* CComVariant::Object() const {
    assert(vt == VT_UNKNOWN);
    return object_.get();
}

bool CComVariant::AsNumber(double* out) const {
    switch (vt) {
        case VT_I4: *out = long_; return true;
        case VT_R8:
        case VT_DATE: *out = double_; return true;
        case VT_BOOL: *out = bool_; return true;
        default: return false;
    }
}

namespace {
// The rank of a kind in the sort order: empty, numbers, texts, the rest.
int Rank(const CComVariant& v) {
    double ignored;
    if (v.vt == VT_EMPTY) return 0;
    if (v.AsNumber(&ignored)) return 1;
    if (v.vt == VT_BSTR) return 2;
    return 3;
}
}  // namespace

bool CComVariant::operator==(const CComVariant& other) const {
    if (vt != other.vt) return false;
    switch (vt) {
        case VT_EMPTY: return true;
        case VT_I4: return long_ == other.long_;
        case VT_R8:
        case VT_DATE: return double_ == other.double_;
        case VT_BOOL: return bool_ == other.bool_;
        case VT_BSTR: return text_ == other.text_;
        case VT_UNKNOWN: return object_.get() == other.object_.get();
    }
    return false;
}

bool CComVariant::operator<(const CComVariant& other) const {
    const int rank = Rank(*this), otherRank = Rank(other);
    if (rank != otherRank) return rank < otherRank;
    double a = 0, b = 0;
    if (rank == 1 && AsNumber(&a) && other.AsNumber(&b)) return a < b;
    if (rank == 2) return text_.Compare(other.text_.c_str()) < 0;
    return false;
}

}  // namespace ATL
