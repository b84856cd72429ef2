#pragma once
// Dates and times typed in any form that the date and time parsers take
// (date_text.h), shown and stored in the country's form.

#include "oxdm/common/fieldcode/edit_formatter.h"

class oxDateEditFormatter : public oxEditFormatter {
public:
    enum Option : short {
        kFullDate = 0,    // 01/02/2026
        kMonthDay = 7,    // 01/02
        kMonthYear = 12,  // 01/2026
    };
    // Any other option is taken as kFullDate.
    explicit oxDateEditFormatter(short option);
    short Option() const { return option_; }

    bool IsValid(CString& text, oxEditValidateInfo* info) const override;
    CString Format(const CString& text) const override;
    CString Unformat(const CString& text) const override;

protected:
    char TranslateKey(char key, const CString& text, int caret) const override;
    bool AcceptsPartial(const CString& text) const override;

private:
    // option_ is one of the three Option values.
    short option_;
};

class oxTimeEditFormatter : public oxEditFormatter {
public:
    enum Option : short {
        kHourMinute = 0,  // 9:05 AM (seconds only when not zero)
        kSeconds = 1,     // 9:05:00 AM
        kStamp = 3,       // 21:05:30: the 24-hour form of a time stamp
    };
    // Any other option is taken as kHourMinute.
    explicit oxTimeEditFormatter(short option);
    short Option() const { return option_; }

    bool IsValid(CString& text, oxEditValidateInfo* info) const override;
    CString Format(const CString& text) const override;
    CString Unformat(const CString& text) const override;

protected:
    char TranslateKey(char key, const CString& text, int caret) const override;
    bool AcceptsPartial(const CString& text) const override;

private:
    // option_ is one of the three Option values.
    short option_;
};
