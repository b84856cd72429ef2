#pragma once
// oxdmChoicePair: one row of a choice list at the control level, the value
// stored and the text shown.

#include "oxdm/base/cstring.h"

class oxdmChoicePair {
public:
    oxdmChoicePair() = default;
    oxdmChoicePair(const CString& value, const CString& displayValue) : value_(value), displayValue_(displayValue) {}
    oxdmChoicePair(const oxdmChoicePair&) = default;
    oxdmChoicePair& operator=(const oxdmChoicePair&) = default;

    const CString& Value() const { return value_; }
    CString& Value() { return value_; }
    const CString& DisplayValue() const { return displayValue_; }
    CString& DisplayValue() { return displayValue_; }

private:
    CString value_;
    CString displayValue_;
};
