#pragma once
// The records of field codes. A field code is a structured text of up to
// five sections, each with a width and followed by a punctuation character;
// codes are numbered by the dictionary that defines them, and the field-code
// functions (xk_*, xc_get_section_def, x_get_tsfield) answer from the codes
// of the dictionaries opened so far.

#include <cstddef>

enum { XK_MAX_SECTIONS = 5 };

// One section of a field code (xc_get_section_def).
struct xc_section_def {
    short width;            // characters of the section; 0 for an unused section
    char punctuation;       // separator that follows the section; 0 for none
    char reserved0;
    short capitals;         // non-zero: letters are upper-cased
    short right_justify;    // non-zero: the text is right-justified in the width
    short digits_only;      // non-zero: only digits are accepted
    char description[41];  // the section's own description; may be empty
    char reserved1[5];
};

// A whole field code (x_get_tsfield).
struct tsfield_def {
    short code;             // the code's number, 1 or more
    short sections;         // number of sections that have a width
    char description[41];   // what the code holds ("Item number")
    char mask[61];          // how a full entry looks ("XXXX-999999")
    char custom_list[256];  // comma-separated list; its first item is the default
    char reserved0[2];
    xc_section_def section[XK_MAX_SECTIONS];
};

static_assert(sizeof(xc_section_def) == 56);
static_assert(offsetof(xc_section_def, capitals) == 4);
static_assert(offsetof(xc_section_def, description) == 10);
static_assert(sizeof(tsfield_def) == 364 + 5 * 56);
static_assert(offsetof(tsfield_def, custom_list) == 106);
static_assert(offsetof(tsfield_def, section) == 364);
