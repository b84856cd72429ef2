// Calendar arithmetic of oxDate and its partial kinds, and the date and
// time text options.
#include <gtest/gtest.h>

#include "oxdm/common/values/date_text.h"
#include "oxdm/common/values/partial_dates.h"

namespace {

CString Text(const oxDate& date) { return date.Format(); }

TEST(ValuesDate, NullByDefault) {
    oxDate date;
    EXPECT_TRUE(date.IsNull());
    EXPECT_EQ(date.Format(), CString(""));
    EXPECT_EQ(date.WeekDay(), oxDate::NoDay);
    EXPECT_EQ(date.MonthLength(), 0);
    date.Offset(10, 1);
    EXPECT_TRUE(date.IsNull());
    CString name("x");
    date.AlphaDayOfWeek(name);
    EXPECT_EQ(name, CString(""));
}

TEST(ValuesDate, OffsetAcrossMonthAndYearEnds) {
    EXPECT_EQ(Text(oxDate(1, 31, 2026).Offset(1)), CString("02/01/2026"));
    EXPECT_EQ(Text(oxDate(12, 31, 2025).Offset(1)), CString("01/01/2026"));
    EXPECT_EQ(Text(oxDate(1, 1, 2026).Offset(-1)), CString("12/31/2025"));
    EXPECT_EQ(Text(oxDate(2, 28, 2024).Offset(1)), CString("02/29/2024"));
    EXPECT_EQ(Text(oxDate(2, 28, 2025).Offset(1)), CString("03/01/2025"));
    EXPECT_EQ(Text(oxDate(1, 1, 2024).Offset(366)), CString("01/01/2025"));
    EXPECT_EQ(Text(oxDate(3, 1, 2000).Offset(-1)), CString("02/29/2000"));
    EXPECT_EQ(Text(oxDate(3, 1, 1900).Offset(-1)), CString("02/28/1900"));
    // Months keep the day, or cut it to the end of the month.
    EXPECT_EQ(Text(oxDate(1, 31, 2024).Offset(0, 1)), CString("02/29/2024"));
    EXPECT_EQ(Text(oxDate(1, 31, 2025).Offset(0, 1)), CString("02/28/2025"));
    EXPECT_EQ(Text(oxDate(11, 15, 2025).Offset(0, 3)), CString("02/15/2026"));
    EXPECT_EQ(Text(oxDate(1, 15, 2026).Offset(0, -13)), CString("12/15/2024"));
    EXPECT_EQ(Text(oxDate(1, 31, 2026).Offset(1, 1)), CString("03/01/2026"));
    // Beyond the years a date can hold, the date stays.
    EXPECT_EQ(Text(oxDate(12, 31, 9999).Offset(1)), CString("12/31/9999"));
    EXPECT_EQ(Text(oxDate(1, 1, 1).Offset(0, -1)), CString("01/01/0001"));
}

TEST(ValuesDate, NormalizeCarries) {
    EXPECT_EQ(Text(oxDate(2, 30, 2026)), CString("03/02/2026"));
    EXPECT_EQ(Text(oxDate(13, 1, 2025)), CString("01/01/2026"));
    EXPECT_EQ(Text(oxDate(3, 0, 2024)), CString("02/29/2024"));
    EXPECT_EQ(Text(oxDate(0, 1, 2026)), CString("12/01/2025"));
    EXPECT_EQ(Text(oxDate(1, 400, 2026)), CString("02/04/2027"));
}

TEST(ValuesDate, MonthLengthAndLeapYears) {
    EXPECT_EQ(oxDate(2, 1, 2024).MonthLength(), 29);
    EXPECT_EQ(oxDate(2, 1, 2023).MonthLength(), 28);
    EXPECT_EQ(oxDate(2, 1, 1900).MonthLength(), 28);
    EXPECT_EQ(oxDate(2, 1, 2000).MonthLength(), 29);
    EXPECT_EQ(oxDate(4, 1, 2026).MonthLength(), 30);
    EXPECT_EQ(oxDate(12, 1, 2026).MonthLength(), 31);
    EXPECT_EQ(oxDateMonthDay(2, 1).MonthLength(), 29);
    EXPECT_EQ(oxDateMonthYear(2, 2023).MonthLength(), 28);
}

TEST(ValuesDate, WeekDays) {
    oxDate date(1, 2, 2026);
    EXPECT_EQ(date.WeekDay(), oxDate::Friday);
    CString name;
    date.AlphaDayOfWeek(name);
    EXPECT_EQ(name, CString("Friday"));
    EXPECT_EQ(oxDate(1, 1, 1970).WeekDay(), oxDate::Thursday);
    EXPECT_EQ(oxDate(2, 29, 2000).WeekDay(), oxDate::Tuesday);
    EXPECT_EQ(oxDate(12, 31, 1899).WeekDay(), oxDate::Sunday);
    EXPECT_EQ(oxDate(7, 4, 1776).WeekDay(), oxDate::Thursday);
    // Seven days on is the same week day, across a year end.
    oxDate walk(12, 28, 2025);
    const oxDate::DayOfWeek start = walk.WeekDay();
    walk.Offset(7);
    EXPECT_EQ(walk.WeekDay(), start);
    EXPECT_EQ(oxDateMonthDay(1, 2).WeekDay(), oxDate::NoDay);
}

TEST(ValuesDate, Between) {
    const oxDate low(1, 1, 2026), high(1, 31, 2026);
    EXPECT_EQ(oxDate(1, 15, 2026).Between(low, high), 1);
    EXPECT_EQ(oxDate(1, 1, 2026).Between(low, high), 1);
    EXPECT_EQ(oxDate(1, 31, 2026).Between(low, high), 1);
    EXPECT_EQ(oxDate(1, 15, 2026).Between(high, low), 1);
    EXPECT_EQ(oxDate(12, 31, 2025).Between(low, high), 0);
    EXPECT_EQ(oxDate(2, 1, 2026).Between(low, high), 0);
    EXPECT_EQ(oxDate().Between(low, high), 0);
    EXPECT_EQ(oxDate(1, 15, 2026).Between(oxDate(), high), 0);
}

TEST(ValuesDate, MonthDayWrapsRoundItsYear) {
    oxDateMonthDay md(12, 31);
    md.Offset(1);
    EXPECT_EQ(md.Format(), CString("01/01"));
    EXPECT_EQ(md.Year(), 0);
    md.Offset(-1);
    EXPECT_EQ(md.Format(), CString("12/31"));
    oxDateMonthDay leap(2, 28);
    leap.Offset(1);
    EXPECT_EQ(leap.Format(), CString("02/29"));
    oxDateMonthDay cut(3, 31);
    cut.Offset(0, -1);
    EXPECT_EQ(cut.Format(), CString("02/29"));

    oxDateMonthYear my(11, 2025);
    my.Offset(40, 2);  // days do not move a month-and-year
    EXPECT_EQ(my.Format(), CString("01/2026"));
    EXPECT_EQ(my.Day(), 1);
}

TEST(ValuesDate, SetCurrentKeepsTheKind) {
    oxDate today;
    today.SetCurrent();
    EXPECT_FALSE(today.IsNull());
    EXPECT_GE(today.Year(), 2024);
    oxDateMonthDay md;
    md.SetCurrent();
    EXPECT_EQ(md.Month(), today.Month());
    EXPECT_EQ(md.Day(), today.Day());
    EXPECT_EQ(md.Year(), 0);
    oxDateMonthYear my;
    my.SetCurrent();
    EXPECT_EQ(my.Year(), today.Year());
    EXPECT_EQ(my.Format().GetLength(), 7);
}

TEST(ValuesDate, FormatOptions) {
    oxDate date(1, 2, 2026);
    EXPECT_EQ(date.Format(oxDate::Numeric, oxDate::FourDigitYear, false), CString("01/02/2026"));
    EXPECT_EQ(date.Format(oxDate::Numeric, oxDate::TwoDigitYear, false), CString("01/02/26"));
    EXPECT_EQ(date.Format(oxDate::Numeric, oxDate::NoYear, false), CString("01/02"));
    EXPECT_EQ(date.Format(oxDate::ShortAlpha, oxDate::FourDigitYear, false), CString("Jan 2, 2026"));
    EXPECT_EQ(date.Format(oxDate::LongAlpha, oxDate::FourDigitYear, true), CString("Friday, January 2, 2026"));
    EXPECT_EQ(date.Format(oxDate::LongAlpha, oxDate::NoYear, false), CString("January 2"));
    oxDateMonthYear my(9, 2026);
    EXPECT_EQ(my.Format(oxDate::LongAlpha, oxDate::FourDigitYear, true), CString("September 2026"));
    oxDateMonthDay md(9, 7);
    EXPECT_EQ(md.Format(oxDate::ShortAlpha, oxDate::FourDigitYear, false), CString("Sep 7"));

    // Every option's text is read back as the same date.
    for (auto option : {oxDate::Numeric, oxDate::ShortAlpha, oxDate::LongAlpha}) {
        for (bool weekDay : {false, true}) {
            oxDate back;
            ASSERT_TRUE(back.SetVal(date.Format(option, oxDate::FourDigitYear, weekDay), nullptr));
            EXPECT_TRUE(back.Eq(date));
        }
    }
}

TEST(ValuesDate, FlatTextHelpers) {
    char text[XD_DATE_TEXT_SIZE];
    const x_date_def date{2026, 1, 2};
    EXPECT_EQ(xd_alpha_date(&date, text, 0, 0, 0, false), 10);
    EXPECT_STREQ(text, "01/02/2026");
    xd_alpha_date(&date, text, 0, 0, '-', false);
    EXPECT_STREQ(text, "01-02-2026");
    xd_alpha_date(&date, text, 9, 9, 0, false);  // unknown options are the defaults
    EXPECT_STREQ(text, "01/02/2026");
    const x_date_def bad{2026, 2, 30};
    EXPECT_EQ(xd_alpha_date(&bad, text, 0, 0, 0, false), 0);
    EXPECT_STREQ(text, "");

    char ttext[XD_TIME_TEXT_SIZE];
    const x_time_def time{21, 5, 0};
    xd_alpha_time(&time, ttext, 0);
    EXPECT_STREQ(ttext, "9:05 PM");
    xd_alpha_time(&time, ttext, 1);
    EXPECT_STREQ(ttext, "9:05:00 PM");
    xd_alpha_time(&time, ttext, 2);
    EXPECT_STREQ(ttext, "21:05");
    const x_time_def null{-1, 0, 0};
    EXPECT_EQ(xd_alpha_time(&null, ttext, 0), 0);
    EXPECT_STREQ(ttext, "");

    x_date_def parsed{1, 1, 1};
    EXPECT_FALSE(xd_parse_date("nonsense", &parsed, XD_FULL_DATE));
    EXPECT_EQ(parsed.year, 1);
}

}  // namespace
