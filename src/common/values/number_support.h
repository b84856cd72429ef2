#pragma once
// What the number classes (oxDouble, oxNumeric, oxBool, oxChoice, oxSSNum)
// share: the reading of typed numbers, fixed-point text, rounding, the
// comparison of any two numbers, and the reading of a number from the
// neutral form.

#include <string>

#include "oxdm/base/cstring.h"

class oxData;
class oxioXval;

namespace oxvalues {

// A typed number split into its parts: "-$1,234.5" is negative, "1234", "5".
struct DecimalText {
    bool negative = false;
    std::string whole;     // digits, without leading zeros ("0" kept as "")
    std::string fraction;  // digits after the decimal point
};

// Splits text (already trimmed) into *out. Accepts an optional sign, an
// optional '$' after it, digits with thousands separators in groups of
// three, and an optional decimal point with digits. At least one digit.
// Answers false for anything else, leaving *out unspecified.
bool SplitDecimal(const CString& text, DecimalText* out);

// value rounded to places decimals, halves away from zero, tolerant of the
// binary error of the value (2.675 rounds to 2.68).
// REQUIRES: 0 <= places <= 15.
double RoundTo(double value, short places);

// value in fixed point with places decimals; never "-0.00".
CString FormatFixed(double value, short places);

// Reads a number value (oxDouble, oxNumeric, oxBool as 0 or 1, oxChoice,
// oxSSNum): its value and its decimal places. False for other classes.
bool NumberOf(const oxData& value, double* number, short* places);

// <0, 0, >0 as a against b, both rounded to the larger of their places;
// *comparable is false (and the answer 0) unless both are numbers.
int CompareNumbers(const oxData& a, const oxData& b, bool* comparable);

// The number in a neutral form of a number kind (double, numeric, bool,
// choice, SSN) or of kind none. False for text, date and time forms.
bool NumberFromXval(const oxioXval& xval, double* number);

// True when number is a whole number in 0..max.
bool IsWholeInRange(double number, double max);

}  // namespace oxvalues
