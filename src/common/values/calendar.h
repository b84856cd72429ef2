#pragma once
// Day numbers of the proleptic Gregorian calendar, shared by the date text
// and the date values: consecutive dates have consecutive numbers, day 0 is
// 1970-01-01. Month and day may lie outside their ranges: a day of 0 or 32
// counts on from the first of the month, which is how dates are normalized.

namespace oxvalues {

long DaysFromCivil(long year, long month, long day);
// REQUIRES: year, month and day != nullptr.
void CivilFromDays(long days, long* year, long* month, long* day);
// 0 for Sunday ... 6 for Saturday.
int WeekDayOfDays(long days);
// English names: MonthName(1) is "January"; DayName(0) is "Sunday".
// REQUIRES: 1 <= month <= 12; 0 <= day <= 6.
const char* MonthName(int month);
const char* DayName(int day);
// The current local date.
void Today(long* year, long* month, long* day);

}  // namespace oxvalues
