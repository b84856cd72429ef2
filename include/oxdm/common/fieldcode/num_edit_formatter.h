#pragma once
// oxNumEditFormatter: numbers of a number of whole digits and decimals,
// optionally shown with thousands separators and held above a lower limit.
//
// Entry takes blanks around the number, a leading '-' (or '$'), thousands
// separators among the whole digits and one decimal point. The display form
// has every decimal place ("1,234.50"); the storage form is the same without
// separators ("1234.50"); the empty text is the empty text in both.

#include "oxdm/common/fieldcode/edit_formatter.h"

class oxNumEditFormatter : public oxEditFormatter {
public:
    enum Options : unsigned {
        kCommas = 1,  // show thousands separators
    };

    // REQUIRES: 0 <= wholeDigits, 0 <= decimals <= 15.
    oxNumEditFormatter(short wholeDigits, short decimals, unsigned options);

    // Refuses numbers below limit.
    void SetLowerLimit(double limit);
    bool HasLowerLimit() const { return hasLowerLimit_; }
    double LowerLimit() const { return lowerLimit_; }
    short WholeDigits() const { return wholeDigits_; }
    short Decimals() const { return decimals_; }
    unsigned Options() const { return options_; }

    bool IsValid(CString& text, oxEditValidateInfo* info) const override;
    CString Format(const CString& text) const override;
    CString Unformat(const CString& text) const override;

protected:
    char TranslateKey(char key, const CString& text, int caret) const override;
    bool AcceptsPartial(const CString& text) const override;

private:
    struct Parsed;
    // Reads text into *out; on a fault answers false with its words and
    // place (one past the character) in *out. complete: the text is an entry
    // as left, not a beginning of one.
    bool Parse(const CString& text, bool complete, Parsed* out) const;
    CString Mask() const;
    CString Compose(const Parsed& number, bool commas) const;

    // wholeDigits_ >= 0, 0 <= decimals_ <= 15; lowerLimit_ only counts when
    // hasLowerLimit_.
    short wholeDigits_;
    short decimals_;
    unsigned options_;
    bool hasLowerLimit_ = false;
    double lowerLimit_ = 0.0;
};
