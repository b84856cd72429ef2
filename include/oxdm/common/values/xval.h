#pragma once
// x_value_def and oxioXval: the neutral form of a value, the record through
// which values travel to and from the record store and the preferences.
//
// Layout of x_value_def (offsets are fixed; other layers rely on them):
//
//   byte   0  text[96]    the text of an alphanumeric value, zero-terminated;
//                         a zero first byte means blank. Every class writes
//                         its display text here (a date its MM/DD/YYYY, ...).
//                         A text longer than 95 bytes keeps its first 95
//                         here and the whole text in long_text.
//   byte  96  date        x_date_def: the date of a date value
//   byte 102  time        x_time_def: the time of a time value
//   byte 108  kind        short, x_value_kind: which member holds the value
//   byte 110  flags       short, XV_NULL when the value is null
//   byte 112  number      double: the value of a number, a bool (0 or 1), a
//                         choice index or a social security number
//   byte 120  decimals    short: decimal places of a number
//   byte 128  whole       long long: the exact integer behind number (an
//                         oxNumeric's scaled units, a choice, an SSN)
//   byte 136  long_text   char*: the whole text when it is longer than 95
//                         bytes, else null; owned by the record's holder and
//                         freed with x_value_free
//
// A record is either all zero (x_value_init) or was filled through the
// functions below. A record of kind XV_NONE (filled by hand from a stored
// field) is read from the member of the reading class; a zero record is so a
// blank value of every class but oxTime, which reads midnight from it (the
// null time is told by XV_NULL or a negative hour).
//
// Date record: year, month, day. All zero is the null date. A month-and-day
// value has year 0; a month-and-year value has day 0.
// Time record: hour (0-23), minute, second. An hour below 0 is the null time.

#include <cstddef>

#include "oxdm/base/cstring.h"

class oxData;

struct x_date_def {
    short year;
    short month;
    short day;
};

struct x_time_def {
    short hour;
    short minute;
    short second;
};

enum x_value_kind : short {
    XV_NONE = 0,     // filled by hand: the reader takes the member of its class
    XV_TEXT = 1,     // oxString family: text (and long_text)
    XV_DOUBLE = 2,   // oxDouble: number, decimals
    XV_NUMERIC = 3,  // oxNumeric: whole (scaled units), decimals, number
    XV_BOOL = 4,     // oxBool: number 0 or 1
    XV_DATE = 5,     // oxDate family: date
    XV_TIME = 6,     // oxTime: time
    XV_SSNUM = 7,    // oxSSNum: whole, number
    XV_CHOICE = 8,   // oxChoice: whole, number
};

inline constexpr short XV_NULL = 0x0001;  // flags: the value is null

inline constexpr std::size_t XV_TEXT_SIZE = 96;

struct x_value_def {
    char text[XV_TEXT_SIZE];
    x_date_def date;
    x_time_def time;
    short kind;
    short flags;
    double number;
    short decimals;
    long long whole;
    char* long_text;
};

static_assert(offsetof(x_value_def, text) == 0);
static_assert(offsetof(x_value_def, date) == 96);
static_assert(offsetof(x_value_def, time) == 102);
static_assert(offsetof(x_value_def, kind) == 108);
static_assert(offsetof(x_value_def, flags) == 110);
static_assert(offsetof(x_value_def, number) == 112);
static_assert(offsetof(x_value_def, decimals) == 120);
static_assert(offsetof(x_value_def, whole) == 128);
static_assert(offsetof(x_value_def, long_text) == 136);
static_assert(sizeof(x_date_def) == 6 && sizeof(x_time_def) == 6);

// Zeroes *value: a blank record of kind XV_NONE. Does not free anything.
// REQUIRES: value != nullptr.
void x_value_init(x_value_def* value);

// Frees long_text of *value, if any, and zeroes the whole record.
// REQUIRES: value != nullptr, and *value was filled by these functions.
void x_value_free(x_value_def* value);

// Sets the text of *value (freeing any long text it held): the first 95
// bytes in text, the whole in long_text when longer. Other members are left.
// REQUIRES: value != nullptr, text != nullptr.
void x_value_set_text(x_value_def* value, const char* text, std::size_t length);

// The whole text of *value: long_text when set, else text.
// REQUIRES: value != nullptr.
const char* x_value_text(const x_value_def* value);

// Makes *to a deep copy of *from, freeing what *to held.
// REQUIRES: to and from != nullptr, *to was filled by these functions.
void x_value_copy(x_value_def* to, const x_value_def* from);

// oxioXval: an owned x_value_def.
//
// Invariant: rec_ is always a record filled by the functions above; its
// long_text (if any) belongs to this object alone and is freed by the
// destructor. Copies are deep.
class oxioXval {
public:
    oxioXval();                                  // blank record
    explicit oxioXval(const oxData& value);      // value.ConvertToXval(*this)
    explicit oxioXval(const x_value_def& value); // a deep copy of value
    oxioXval(const oxioXval& other);
    oxioXval& operator=(const oxioXval& other);
    ~oxioXval();

    const x_value_def& GetXval() const { return rec_; }

    // Writing, for ConvertToXval: Reset blanks the record and sets its kind
    // and null flag; the value class then fills its members through Edit
    // and its display text through SetText.
    void Reset(x_value_kind kind, bool isNull);
    x_value_def& Edit() { return rec_; }
    void SetText(const CString& text);

    // Reading.
    x_value_kind Kind() const { return static_cast<x_value_kind>(rec_.kind); }
    bool NullFlag() const { return (rec_.flags & XV_NULL) != 0; }
    CString Text() const { return CString(x_value_text(&rec_)); }

private:
    x_value_def rec_;
};
