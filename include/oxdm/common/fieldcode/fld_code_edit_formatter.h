#pragma once
// oxFldCodeEditFormatter: the edit formatter of a field code (field_codes.h):
// a structured text of up to five sections, or, for code 9, a free-form
// reference whose form the field's section number decides.
//
// IsValid takes the empty text; any other text goes through the check of
// the code (fld_code_check.h in the sources). A text refused only for its
// punctuation passes on a second try, unformatted and formatted again. The
// display form is the code's format (xk_format_field), the storage form its
// unformatted text (xk_unformat_field).

#include "oxdm/common/fieldcode/edit_formatter.h"

class oxFldCodeEditFormatter : public oxEditFormatter {
public:
    // The code in force is the one loaded when a text is checked, so a
    // formatter may be made before its dictionary is loaded.
    oxFldCodeEditFormatter(short code, unsigned short section);

    short Code() const { return code_; }
    unsigned short Section() const { return section_; }

    bool IsValid(CString& text, oxEditValidateInfo* info) const override;
    CString Format(const CString& text) const override;
    CString Unformat(const CString& text) const override;

    // The longest text that may be typed: the code's width, or for code 9
    // the longest of its section number; 0 when there is no limit.
    int MaxLength() const;

protected:
    char TranslateKey(char key, const CString& text, int caret) const override;
    bool AcceptsPartial(const CString& text) const override;

private:
    // Fixed for the formatter's life; the code need not exist (an unknown
    // code checks nothing and formats nothing).
    short code_;
    unsigned short section_;
};
