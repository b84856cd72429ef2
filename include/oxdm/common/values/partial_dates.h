#pragma once
// oxDateMonthDay and oxDateMonthYear: dates of which only the month and the
// day, or the month and the year, mean something. They share oxDate's state
// and operations (see date_value.h); their text is MM/DD and MM/YYYY.

#include "oxdm/common/values/date_value.h"

class oxDateMonthDay : public oxDate {
public:
    oxDateMonthDay();  // null
    // REQUIRES: 1 <= month <= 12, 1 <= day <= days of month in a leap year.
    oxDateMonthDay(short month, short day);
    oxData* Clone() const override;
};

class oxDateMonthYear : public oxDate {
public:
    oxDateMonthYear();  // null
    // REQUIRES: 1 <= month <= 12, 1 <= year <= 9999.
    oxDateMonthYear(short month, short year);
    oxData* Clone() const override;
};
