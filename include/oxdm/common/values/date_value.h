#pragma once
// oxDate: a calendar date, null by default; and its two partial kinds,
// oxDateMonthDay and oxDateMonthYear (partial_dates.h).
//
// Text is xd_alpha_date's and entry is xd_parse_date's (date_text.h): the
// US form MM/DD/YYYY. A null date is shown as "" and sorts before every date.
//
// The three kinds share this class's state; `parts_` says which fields mean
// something. A month-and-day value keeps year 0 (a leap year, so 02/29
// exists) and its arithmetic wraps round the year; a month-and-year value
// keeps day 1 and shows no day.
//
// Conversions: any date kind takes a full date (keeping its own parts), and
// each kind takes its own kind; a month-and-day and a month-and-year do not
// convert into each other or into a full date. Text values are parsed.

#include "oxdm/common/values/data.h"
#include "oxdm/common/values/date_text.h"

class oxDate : public oxData {
public:
    enum DayOfWeek {
        NoDay = -1,  // a null date, or a date without a year or a day
        Sunday = 0,
        Monday,
        Tuesday,
        Wednesday,
        Thursday,
        Friday,
        Saturday,
    };
    enum FormatOption { Numeric = 0, ShortAlpha = 1, LongAlpha = 2 };
    enum YearOption { FourDigitYear = 0, TwoDigitYear = 1, NoYear = 2 };

    oxDate();  // null
    // A date from its fields, brought into range by Normalize: oxDate(2, 30,
    // 2026) is 03/02/2026, oxDate(13, 1, 2025) is 01/01/2026.
    // REQUIRES: the normalized year is in 1..9999.
    oxDate(short month, short day, short year);
    oxDate(const oxDate&) = default;
    oxDate& operator=(const oxDate&) = default;
    ~oxDate() override;

    void ConvertToXval(oxioXval& xval) const override;
    bool IsNull() const override;
    bool Eq(const oxData& other) const override;
    bool Lt(const oxData& other) const override;
    bool Gt(const oxData& other) const override;
    oxData* Clone() const override;
    CString Format() const override;
    bool SetVal(const CString& text, const oxcFormatter* formatter) override;
    bool SetVal(const oxioXval& xval) override;
    using oxData::SetVal;

    // Brings month and day into range, carrying into the year: month 13 is
    // January of the next year, day 0 the last day of the month before.
    virtual void Normalize();
    // Moves the date by months (the day kept, or cut to the month's last
    // day), then by days. A null date stays null. A month-and-year value
    // moves by months only; a month-and-day value wraps round its year. A
    // full date that would leave the years 1..9999 is left unchanged.
    virtual const oxDate& Offset(short days, short months = 0);
    // Today (local time), in this value's parts.
    virtual const oxDate& SetCurrent();
    virtual unsigned short Month() const;  // 1-12, 0 when null
    virtual unsigned short Day() const;    // 1-31, 0 when null
    virtual unsigned short Year() const;   // 0 when null or month-and-day
    // Days in this date's month; 0 when null.
    virtual unsigned short MonthLength() const;
    virtual DayOfWeek WeekDay();
    // Sets text to the English name of WeekDay() ("Friday"), "" for NoDay.
    virtual void AlphaDayOfWeek(CString& text) const;
    // 1 when this date lies between first and last, both included, in either
    // order; 0 otherwise, and 0 when any of the three is null.
    virtual short Between(const oxDate& first, const oxDate& last) const;
    virtual CString Format(FormatOption option, YearOption year, bool dayOfWeek);

    // The date record of this value (year 0 for month-and-day, day 0 for
    // month-and-year, all zero when null).
    x_date_def Record() const;

protected:
    // A null value of the given parts.
    explicit oxDate(xd_date_parts parts);
    // A value of the given parts from rec.
    // REQUIRES: rec suits parts (see TakeRecord).
    oxDate(xd_date_parts parts, const x_date_def& rec);

private:
    // WeekDay() without changing anything (WeekDay is not const by its
    // place in the interface).
    DayOfWeek WeekDayOf() const;
    // A day count: consecutive dates have consecutive numbers.
    long DayNumber() const;
    void SetFromDayNumber(long days);
    // Takes the record if it is the null date, or a valid date of which
    // parts_ can be made: a full date fits every kind (a month-and-day value
    // drops its year, a month-and-year value its day), a month-and-day or
    // month-and-year record only its own kind.
    bool TakeRecord(const x_date_def& rec);

    // parts_ is fixed for the life of the value. When null_ the fields are
    // 0. Otherwise month_ is 1..12, day_ is 1..xd_month_length(month_,
    // year_), year_ is 1..9999 for full and month-year values and 0 for
    // month-day values, and day_ is 1 for month-year values.
    xd_date_parts parts_;
    bool null_ = true;
    short year_ = 0;
    short month_ = 0;
    short day_ = 0;
};
