#pragma once
// The small values: oxBool, oxChoice, oxSSNum. Each keeps the base Gt
// (neither Lt nor Eq), and each is null at its zero: false, choice 0 (no
// choice), SSN 0.
//
// Text forms:
//   oxBool    "X" for true, "" for false; entry takes X, Y, Yes, T, True, 1,
//             On for true and N, No, F, False, 0, Off or blank for false,
//             in any case.
//   oxChoice  the 1-based index as a decimal number, "" for 0. The words of
//             a choice belong to its column.
//   oxSSNum   999-99-9999 (the country's mask), "" for 0; entry takes nine
//             digits, with or without the dashes or spaces at their places.
//
// Conversions (SetVal of a value or of an oxioXval): each takes its own
// class; oxChoice and oxSSNum take a whole number in their range; oxBool a
// number (true when not zero); every class parses a text value.

#include "oxdm/common/values/data.h"

class oxBool : public oxData {
public:
    explicit oxBool(bool value = false) : value_(value) {}
    ~oxBool() override;

    void ConvertToXval(oxioXval& xval) const override;
    bool IsNull() const override;
    bool Eq(const oxData& other) const override;
    bool Lt(const oxData& other) const override;
    oxData* Clone() const override;
    CString Format() const override;
    bool SetVal(const CString& text, const oxcFormatter* formatter) override;
    bool SetVal(const oxioXval& xval) override;
    using oxData::SetVal;

    bool GetVal() const { return value_; }
    void SetVal(bool value) { value_ = value; }

private:
    bool value_;
};

class oxChoice : public oxData {
public:
    explicit oxChoice(unsigned short value = 0) : value_(value) {}
    ~oxChoice() override;

    void ConvertToXval(oxioXval& xval) const override;
    bool IsNull() const override;
    bool Eq(const oxData& other) const override;
    bool Lt(const oxData& other) const override;
    oxData* Clone() const override;
    CString Format() const override;
    bool SetVal(const CString& text, const oxcFormatter* formatter) override;
    bool SetVal(const oxioXval& xval) override;
    using oxData::SetVal;

    unsigned short GetVal() const { return value_; }
    void SetVal(unsigned short value) { value_ = value; }

private:
    // value_: 1-based index in the column's choice list; 0 is no choice.
    unsigned short value_;
};

class oxSSNum : public oxData {
public:
    static constexpr unsigned long kMax = 999999999UL;

    // REQUIRES: value <= kMax.
    explicit oxSSNum(unsigned long value = 0);
    ~oxSSNum() override;

    void ConvertToXval(oxioXval& xval) const override;
    bool IsNull() const override;
    bool Eq(const oxData& other) const override;
    bool Lt(const oxData& other) const override;
    oxData* Clone() const override;
    CString Format() const override;
    bool SetVal(const CString& text, const oxcFormatter* formatter) override;
    bool SetVal(const oxioXval& xval) override;
    using oxData::SetVal;

    unsigned long GetVal() const { return value_; }

private:
    // value_ <= kMax: nine decimal digits at most.
    unsigned long value_;
};
