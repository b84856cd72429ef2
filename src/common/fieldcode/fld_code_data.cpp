// The value of a field code.

#include "oxdm/common/fieldcode/fld_code_data.h"

#include "fld_code_check.h"

oxFldCodeData::oxFldCodeData(short code, unsigned short section, bool keepFormatted)
    : oxAlpha(""), code_(code), section_(section), keepFormatted_(keepFormatted) {}

oxData* oxFldCodeData::Clone() const { return new oxFldCodeData(*this); }

CString oxFldCodeData::Format() const {
    return oxFldCodeFormatText(oxFldCodeRules::Read(code_, section_), GetVal());
}

bool oxFldCodeData::SetVal(const CString& text, const oxcFormatter* formatter) {
    CString plain;
    if (!PlainText(text, formatter, &plain)) return false;
    if (!keepFormatted_ && formatter == nullptr) {
        plain = oxFldCodeUnformatText(oxFldCodeRules::Read(code_, section_), plain);
    }
    oxAlpha::SetVal(plain);
    return true;
}
