#pragma once
// oxData: the typed value of one cell, the root of the value family.
//
// A value is used through oxData* or oxData&. Clone gives the caller a new
// value that it owns and frees through the virtual destructor. Every value
// has a null state: blank text, zero, a null date or time.
//
// The twelve virtual operations below are shared by every value class and
// keep this slot order; a class adds its own operations after them.
//
// Comparisons are meant between values of one family (two texts, two
// numbers, two dates, ...). Across families that cannot be compared, Eq and
// Lt answer false.
//
// Parsing never throws: SetVal answers false for text that is not a value of
// the class, or for a value that cannot be converted, and then leaves the
// value exactly as it was.

#include <iosfwd>

#include "oxdm/base/cstring.h"

class oxioXval;
class oxcFormatter;

class oxData {
public:
    virtual ~oxData();                                            // 1
    virtual void ConvertToXval(oxioXval& xval) const = 0;         // 2
    virtual bool IsNull() const = 0;                              // 3
    virtual bool Eq(const oxData& other) const = 0;               // 4
    virtual bool Lt(const oxData& other) const = 0;               // 5
    // Not Lt and not Eq.
    virtual bool Gt(const oxData& other) const;                   // 6
    virtual oxData* Clone() const = 0;                            // 7
    // Writes Format().
    virtual void Print(std::ostream& os) const;                   // 8
    virtual CString Format() const = 0;                           // 9
    // Parses text; when formatter is given it first turns the typed text
    // into plain text (StorageText). Empty or blank text makes the value null.
    virtual bool SetVal(const CString& text, const oxcFormatter* formatter) = 0;  // 10
    virtual bool SetVal(const oxioXval& xval) = 0;                // 11
    // Default: through the neutral form, oxioXval(other), so each class
    // states its conversions in one place, its SetVal(const oxioXval&).
    virtual bool SetVal(const oxData& other);                     // 12

protected:
    oxData() = default;
    oxData(const oxData&) = default;
    oxData& operator=(const oxData&) = default;

    // The plain text that SetVal(text, formatter) parses: the formatter's
    // storage text, or text itself without one; false when the formatter
    // refuses it.
    static bool PlainText(const CString& text, const oxcFormatter* formatter, CString* plain);
};

std::ostream& operator<<(std::ostream& os, const oxData& value);

// The class name of a value as it is written in code ("oxDate", "oxAlpha"),
// for messages such as "Can't assign type '...'".
CString oxDataClassName(const oxData& value);
