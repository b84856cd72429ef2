#pragma once
// Field codes: structured texts of up to five sections (a width each, and a
// punctuation character after each but the last), numbered by the dictionary
// that defines them. The functions below take only a code number, so they
// answer from one process-wide set: the codes of every dictionary loaded so
// far (oxDictionaryLoader::Load adds them); a dictionary loaded later
// replaces the codes of the same numbers.
//
// Section 0 means the code as a whole; sections 1 to 5 one section. An
// unknown code, or a section without a width, has width 0 and no texts.
// Functions returning short as a status answer a raw code: IO_VALID, or
// IO_VOID for an unknown code or section.

#include "oxdm/base/cstring.h"
#include "oxdm/common/dictionary/dictionary.h"
#include "oxdm/common/dictionary/field_code_records.h"

class oxFieldCodes {
public:
    // Adds (or replaces) every field code of `dict`.
    static void Register(const oxDictionary& dict);
    // The code of that number; null when no loaded dictionary defines it.
    static const tsfield_def* Find(short code);
};

// The width of a section; for section 0 the whole formatted width, sections
// and the punctuation between them.
short xk_width(short code, short section);
// The number of sections that have a width.
short xk_num_sections(short code);
// Non-zero when the code has more than one section.
short xk_multi_section(short code);
// The punctuation character after a section (0 none); for section 0 that of
// the first section.
short xk_punctuation(short code, short section);
// Non-zero when the section (for section 0, any section) upper-cases letters.
short xk_capitals(short code, short section);
// Non-zero when the section (for section 0, any section) is right-justified.
short xk_right_justify(short code, short section);
// The mask of the code (section 0) or of one section, into `mask` (at least
// 61 bytes). A code without a written mask gets one of 'X' per character.
short xk_mask(short code, short section, char* mask);
// The description of the code, or of the section when it has its own, into
// `text` (at least 41 bytes). `initialCaps` upper-cases the first letter.
short xk_description(short code, short section, char* text, bool initialCaps);
// Rewrites `text` (a buffer of at least 255 bytes) in the code's format: for
// section 0 the characters are laid into the sections by width, joined by the
// punctuation, letters upper-cased where a section asks; for one section,
// letters upper-cased when it asks. A right-justified section left short is
// filled in front to its width, with '0' when it takes digits only and holds
// digits, else with blanks. Code 9 is free-form: any section number is accepted, its text is
// never laid into sections, only upper-cased when a section asks.
short xk_format_field(short code, short section, char* text);
// Rewrites `text` without the code's punctuation and trailing blanks; for
// code 9 (free-form) only the trailing blanks go.
short xk_unformat_field(short code, short section, char* text);
// The code's custom list, comma-separated.
short xk_get_custom_list(short code, CString& list);
// The first item of the code's custom list, its default.
short xk_get_custom_list_default(short code, CString& item);
// One section's record (sections 1 to 5).
short xc_get_section_def(short code, short section, xc_section_def* def);
// The whole code's record.
short x_get_tsfield(short code, tsfield_def* def);
