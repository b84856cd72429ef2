#pragma once
// oxcFormatter: what a value needs of an edit formatter when it parses text.
//
// Edit formatters live in a higher layer (the field-code and edit-formatter
// family); a value only asks one question of them: turn the text as the
// operator typed it (with mask characters, section punctuation and the like)
// into the text that the value's own parser takes. A formatter that answers
// false refuses the entry, and the value stays as it was.

#include "oxdm/base/cstring.h"

class oxcFormatter {
public:
    virtual ~oxcFormatter() = default;

    // Sets *storage to the plain text for typed and answers true, or answers
    // false when typed is not acceptable (then *storage is unspecified).
    // REQUIRES: storage != nullptr.
    virtual bool StorageText(const CString& typed, CString* storage) const = 0;
};
