#pragma once
// The text values: oxString (abstract text), oxAlpha (field text), oxText
// (long memo text) and oxPhone (a phone number kept as the text shown).
//
// A text value is null when its text is empty. Comparisons are by bytes, or
// with ASCII letters folded to one case when the left-hand value is not case
// sensitive; any two values of the oxString family compare by their texts.
// Texts are case sensitive unless SetCaseSensitive(false) is called.
//
// Conversions: SetVal(const oxData&) and SetVal(const oxioXval&) take the
// display text of any value (x_value_def always carries it), so a text can
// receive a number, a date or a choice as it would be shown.

#include "oxdm/common/values/data.h"

class oxString : public oxData {
public:
    ~oxString() override;
    bool IsNull() const override;
    bool Eq(const oxData& other) const override;
    bool Lt(const oxData& other) const override;
    bool Gt(const oxData& other) const override;
    CString Format() const override;

    const CString& GetVal() const { return value_; }
    bool CaseSensitive() const { return caseSensitive_; }
    void SetCaseSensitive(bool caseSensitive) { caseSensitive_ = caseSensitive; }

protected:
    explicit oxString(const CString& value) : value_(value) {}
    oxString(const oxString&) = default;
    oxString& operator=(const oxString&) = default;

    void Assign(const CString& value) { value_ = value; }

private:
    // <0, 0, >0 as this text against other's, folding case unless this value
    // is case sensitive; answers false in *comparable for a non-text other.
    int Compare(const oxData& other, bool* comparable) const;

    // value_: the text, may be empty (the null text). caseSensitive_ decides
    // how this value compares with others; copies keep it.
    CString value_;
    bool caseSensitive_ = true;
};

class oxAlpha : public oxString {
public:
    oxAlpha(const char* value = "");  // NOLINT: implicit, as a text literal is an alpha
    oxAlpha(const CString& value);    // NOLINT
    oxAlpha(const oxAlpha&) = default;
    oxAlpha& operator=(const oxAlpha&) = default;

    void ConvertToXval(oxioXval& xval) const override;
    oxData* Clone() const override;
    bool SetVal(const CString& text, const oxcFormatter* formatter) override;
    bool SetVal(const oxioXval& xval) override;
    using oxData::SetVal;
    // Plain assignment of text, as SetVal(text, nullptr) without the answer.
    void SetVal(const CString& text) { Assign(text); }
};

class oxText : public oxAlpha {
public:
    explicit oxText(const char* value = "") : oxAlpha(value) {}
    oxData* Clone() const override;
};

class oxPhone : public oxAlpha {
public:
    explicit oxPhone(const char* value = "") : oxAlpha(value) {}
    oxData* Clone() const override;
};
