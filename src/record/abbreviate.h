#pragma once
// Shortening a text to a width, for descriptions that must fit a heading.

#include "oxdm/base/cstring.h"

// Shortens `text` to at most `width` characters: first drops the lower-case
// vowels inside words (never a word's first letter), starting with the last
// word, then cuts what is still too long. A text that fits is unchanged.
CString oxdmAbbreviate(const CString& text, int width);
