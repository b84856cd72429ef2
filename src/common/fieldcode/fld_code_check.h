#pragma once
// The check of a typed field code against its section table.

#include "fld_code_rules.h"
#include "oxdm/base/cstring.h"
#include "oxdm/common/fieldcode/edit_formatter.h"

// Checks text against rules. On a pass text is rewritten in the code's
// format (a check that does not apply passes and leaves it); on a failure
// text is put back as it was. With info, a failure's message stands in
// info->message, and info's selection is a caret: the fault's place, behind
// the text after a failure on a right-justified section, otherwise 1.
bool oxFldCodeCheck(const oxFldCodeRules& rules, CString& text, oxEditValidateInfo* info);

// text in the format of rules' code and section (xk_format_field), or
// without it (xk_unformat_field), through a buffer of 255 characters.
CString oxFldCodeFormatText(const oxFldCodeRules& rules, const CString& text);
CString oxFldCodeUnformatText(const oxFldCodeRules& rules, const CString& text);
