#pragma once
// oxFldCodeData: the value of a field that holds a field code. It is a text
// (oxAlpha) that knows its code and section: Format() gives the code's
// display form, and text set without a formatter is kept unformatted (the
// code's punctuation and trailing blanks dropped) unless the value keeps
// formatted text.

#include "oxdm/common/values/text_values.h"

class oxFldCodeData : public oxAlpha {
public:
    // keepFormatted: text is stored as it is given, not unformatted.
    oxFldCodeData(short code, unsigned short section, bool keepFormatted);
    oxFldCodeData(const oxFldCodeData&) = default;
    oxFldCodeData& operator=(const oxFldCodeData&) = default;

    oxData* Clone() const override;
    CString Format() const override;
    bool SetVal(const CString& text, const oxcFormatter* formatter) override;
    using oxAlpha::SetVal;

    short Code() const { return code_; }
    unsigned short Section() const { return section_; }
    bool KeepFormatted() const { return keepFormatted_; }

private:
    // Fixed for the value's life and kept by copies and Clone.
    short code_;
    unsigned short section_;
    bool keepFormatted_;
};
