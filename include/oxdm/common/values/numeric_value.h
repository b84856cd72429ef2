#pragma once
// oxNumeric: an exact decimal number, held as a whole count of units of
// 10^-decimals (1234.50 at two places is 123450 units). It is read like
// oxDouble: its first own operation is GetVal(bool) returning double.
//
// Text and entry as oxDouble's. Entry with more places than the value keeps
// is rounded, halves away from zero; a number beyond the range of the units
// is refused. A zero is the null number. Any number compares with it.

#include "oxdm/common/values/data.h"

class oxNumeric : public oxData {
public:
    // REQUIRES: 0 <= decimals <= 9.
    explicit oxNumeric(double value = 0.0, short decimals = 0);
    oxNumeric(const oxNumeric&) = default;
    oxNumeric& operator=(const oxNumeric&) = default;
    ~oxNumeric() override;

    void ConvertToXval(oxioXval& xval) const override;
    bool IsNull() const override;
    bool Eq(const oxData& other) const override;
    bool Lt(const oxData& other) const override;
    oxData* Clone() const override;
    CString Format() const override;
    bool SetVal(const CString& text, const oxcFormatter* formatter) override;
    bool SetVal(const oxioXval& xval) override;
    using oxData::SetVal;

    // The value as a double (rounded makes no difference: it is exact at
    // its decimals already).
    virtual double GetVal(bool rounded = false) const;
    // Takes value rounded to this value's decimals; false, leaving the value,
    // when it is out of range or not finite.
    virtual bool SetVal(double value);

    long long Units() const { return units_; }
    short Decimals() const { return decimals_; }

private:
    // units_ * 10^-decimals_ is the value; decimals_ is in 0..9 and fixed
    // for the life of the value (a column's property).
    long long units_ = 0;
    short decimals_;
};
