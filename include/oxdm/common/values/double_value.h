#pragma once
// oxDouble: a number held as a double, with the count of decimal places it
// is shown with. A zero is the null number.
//
// Text: fixed point with the value's decimals, "-1234.50"; entry accepts a
// sign, thousands separators, a leading '$' and a decimal point.
//
// Comparisons and equality look at both values rounded to the larger of the
// two decimal counts, so 0.1 + 0.2 equals 0.3 at two places. Any number
// compares with an oxDouble: oxNumeric, oxChoice, oxBool, oxSSNum.
//
// Arithmetic results carry the larger decimal count of their operands. A
// quotient by zero is zero: the value layer has no infinity, and a zero
// divisor typed by an operator must not poison a column.

#include "oxdm/common/values/data.h"

class oxDouble : public oxData {
public:
    oxDouble(double value = 0.0, short decimals = 0);  // NOLINT: a double is a number value
    oxDouble(const oxDouble&) = default;
    ~oxDouble() override;

    void ConvertToXval(oxioXval& xval) const override;
    bool IsNull() const override;
    bool Eq(const oxData& other) const override;
    bool Lt(const oxData& other) const override;
    oxData* Clone() const override;
    CString Format() const override;
    bool SetVal(const CString& text, const oxcFormatter* formatter) override;
    bool SetVal(const oxioXval& xval) override;
    using oxData::SetVal;

    // The value; rounded to its decimals when rounded is true.
    virtual double GetVal(bool rounded = false) const;
    virtual void SetVal(double value);
    // Rounds the value to places decimals, halves away from zero.
    // REQUIRES: 0 <= places <= 15.
    virtual void Round(short places);
    // Copies the value and the decimal count.
    virtual oxDouble& operator=(const oxDouble& other);
    virtual oxDouble operator++(int);
    virtual oxDouble& operator++();
    virtual oxDouble operator--(int);
    virtual oxDouble& operator--();
    virtual oxDouble operator-(const oxDouble& other) const;
    virtual oxDouble operator-() const;
    // True for zero.
    virtual bool operator!() const;
    virtual oxDouble operator+(const oxDouble& other) const;
    virtual oxDouble operator*(const oxDouble& other) const;
    virtual oxDouble operator/(const oxDouble& other) const;
    virtual oxDouble& operator+=(const oxDouble& other);
    virtual oxDouble& operator-=(const oxDouble& other);
    virtual oxDouble& operator*=(const oxDouble& other);
    virtual oxDouble& operator/=(const oxDouble& other);

    short Decimals() const { return decimals_; }
    void SetDecimals(short decimals);

private:
    // value_ is any finite double; decimals_ is in 0..15 and only changes how
    // the value is shown and compared, never the stored value.
    double value_;
    short decimals_;
};
