#pragma once
// oxPhoneEditFormatter: phone numbers. On leaving, a text of digits (with or
// without the mask's characters) is turned into the phone mask: the
// country's "(999) 999-9999", or, for a field too narrow for it, its local
// part "999-9999". The value keeps the text shown, so the storage form is
// the display form.

#include "oxdm/common/fieldcode/edit_formatter.h"

class oxPhoneEditFormatter : public oxEditFormatter {
public:
    // width: the field's display width; 0 takes the whole mask.
    explicit oxPhoneEditFormatter(int width);
    const CString& Mask() const { return mask_; }

    bool IsValid(CString& text, oxEditValidateInfo* info) const override;
    CString Format(const CString& text) const override;
    CString Unformat(const CString& text) const override;

protected:
    char TranslateKey(char key, const CString& text, int caret) const override;
    bool AcceptsPartial(const CString& text) const override;

private:
    // mask_: '9' for each digit, any other character shown as it stands;
    // digits_ is the number of '9's in it.
    CString mask_;
    int digits_;
};
