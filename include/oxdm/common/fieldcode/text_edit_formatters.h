#pragma once
// The formatters of plain texts: free text of a length (oxStrEditFormatter),
// social security numbers (oxSocSecEditFormatter).

#include "oxdm/common/fieldcode/edit_formatter.h"

class oxStrEditFormatter : public oxEditFormatter {
public:
    // length: the longest text, 0 for no limit; capitals: letters are
    // upper-cased as they are typed and on leaving.
    // REQUIRES: length >= 0.
    oxStrEditFormatter(int length, bool capitals);

    bool IsValid(CString& text, oxEditValidateInfo* info) const override;
    int Length() const { return length_; }
    bool Capitals() const { return capitals_; }

protected:
    char TranslateKey(char key, const CString& text, int caret) const override;
    bool AcceptsPartial(const CString& text) const override;

private:
    // length_ >= 0, 0 meaning no limit.
    int length_;
    bool capitals_;
};

// Nine digits shown in the country's mask ("123-45-6789"), stored as the
// nine digits.
class oxSocSecEditFormatter : public oxEditFormatter {
public:
    bool IsValid(CString& text, oxEditValidateInfo* info) const override;
    CString Format(const CString& text) const override;
    CString Unformat(const CString& text) const override;

protected:
    char TranslateKey(char key, const CString& text, int caret) const override;
    bool AcceptsPartial(const CString& text) const override;
};
