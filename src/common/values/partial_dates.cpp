#include "oxdm/common/values/partial_dates.h"

oxDateMonthDay::oxDateMonthDay() : oxDate(XD_MONTH_DAY) {}

oxDateMonthDay::oxDateMonthDay(short month, short day) : oxDate(XD_MONTH_DAY, x_date_def{0, month, day}) {}

oxData* oxDateMonthDay::Clone() const { return new oxDateMonthDay(*this); }

oxDateMonthYear::oxDateMonthYear() : oxDate(XD_MONTH_YEAR) {}

oxDateMonthYear::oxDateMonthYear(short month, short year) : oxDate(XD_MONTH_YEAR, x_date_def{year, month, 0}) {}

oxData* oxDateMonthYear::Clone() const { return new oxDateMonthYear(*this); }
