#include "calendar.h"

#include <cassert>
#include <ctime>

namespace oxvalues {

namespace {

// Floor division, which C++ division of negatives is not.
long FloorDiv(long a, long b) { return a / b - ((a % b != 0) && ((a < 0) != (b < 0))); }

}  // namespace

long DaysFromCivil(long year, long month, long day) {
    // Bring the month into 1..12 first, then count from March so that the
    // leap day is the last day of the counting year.
    year += FloorDiv(month - 1, 12);
    month = month - 1 - 12 * FloorDiv(month - 1, 12) + 1;
    year -= month <= 2;
    const long era = FloorDiv(year, 400);
    const long yoe = year - era * 400;
    const long doy = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5;
    const long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468 + (day - 1);
}

void CivilFromDays(long days, long* year, long* month, long* day) {
    assert(year != nullptr && month != nullptr && day != nullptr);
    days += 719468;
    const long era = FloorDiv(days, 146097);
    const long doe = days - era * 146097;
    const long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const long mp = (5 * doy + 2) / 153;
    *day = doy - (153 * mp + 2) / 5 + 1;
    *month = mp < 10 ? mp + 3 : mp - 9;
    *year = yoe + era * 400 + (*month <= 2);
}

int WeekDayOfDays(long days) {
    // 1970-01-01 was a Thursday.
    return static_cast<int>(days + 4 - 7 * FloorDiv(days + 4, 7));
}

const char* MonthName(int month) {
    static const char* const kNames[12] = {"January", "February", "March",     "April",   "May",      "June",
                                           "July",    "August",   "September", "October", "November", "December"};
    assert(month >= 1 && month <= 12);
    return kNames[month - 1];
}

const char* DayName(int day) {
    static const char* const kNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                          "Thursday", "Friday", "Saturday"};
    assert(day >= 0 && day <= 6);
    return kNames[day];
}

void Today(long* year, long* month, long* day) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    *year = local.tm_year + 1900;
    *month = local.tm_mon + 1;
    *day = local.tm_mday;
}

}  // namespace oxvalues
