#pragma once
// The section table of a field code and the five flags that steer its check,
// read afresh before each check from the loaded field codes.
//
// A field of section number 1 to 5 covers that one section; any other number
// covers the whole code. Code 9 is free-form: not checked section by
// section, its decimals filled in, and its section number choosing the form
// (longest text, whether it is checked at all, digits only).

#include "oxdm/common/dictionary/field_code_records.h"

struct oxFldCodeRules {
    // The code 9 of free-form references.
    static constexpr short kFreeFormCode = 9;

    // Reads the table of `code` for a field of `sectionNumber`.
    static oxFldCodeRules Read(short code, unsigned short sectionNumber);

    // The sum of the widths of the table.
    int WidthSum() const;
    // The shortest acceptable count: the widths, the first section with a
    // width counting 1, or its full width on the forms that ask for it.
    int Shortest() const;
    // The punctuation of section index, 0 outside the table.
    char Punctuation(int index) const;
    // Whether ch separates two sections of the table.
    bool IsPunctuation(char ch) const;

    // Invariants: the sections the field covers, in order, then zeros; a
    // section without a width has no punctuation; after a table of several
    // sections the last one with a width has none either (nothing follows it).
    xc_section_def section[XK_MAX_SECTIONS] = {};
    short code = 0;
    unsigned short sectionNumber = 0;
    bool checkOff = false;
    bool digitsOnly = false;
    bool bySection = true;
    bool lengthStrict = true;
    bool fillDecimals = false;
    int longest = 0;      // the longest text the form sets; 0 when it sets none
    int decimals = 0;     // decimal places and whole digits of a free-form
    int wholeDigits = 0;  // code; both 0 when bySection
};
