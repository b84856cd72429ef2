// What operators type: accepted forms give the right value, refused forms
// answer false and leave the value as it was.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "oxdm/common/values/country.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/formatter.h"
#include "oxdm/common/values/numeric_value.h"
#include "oxdm/common/values/partial_dates.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"

namespace {

// Refusals leave the value alone: checks every text against a copy.
void ExpectRefused(const oxData& start, std::initializer_list<const char*> texts) {
    for (const char* text : texts) {
        std::unique_ptr<oxData> value(start.Clone());
        EXPECT_FALSE(value->SetVal(CString(text), nullptr)) << "accepted \"" << text << "\"";
        EXPECT_EQ(value->Format(), start.Format()) << "changed by \"" << text << "\"";
    }
}

void ExpectAccepted(oxData& value, std::initializer_list<const char*> texts, const char* shown) {
    for (const char* text : texts) {
        value.SetVal(CString(""), nullptr);
        EXPECT_TRUE(value.SetVal(CString(text), nullptr)) << "refused \"" << text << "\"";
        EXPECT_EQ(value.Format(), CString(shown)) << "from \"" << text << "\"";
    }
}

TEST(ValuesEntry, DatesAsOperatorsTypeThem) {
    oxDate date;
    ExpectAccepted(date, {"1/2/26", "01/02/2026", "1-2-2026", "1.2.2026", "1 2 2026", "010226", "01022026",
                          " 1/2/2026 ", "Jan 2 2026", "january 2, 2026", "Friday, January 2, 2026", "JAN 02 26"},
                   "01/02/2026");
    ExpectAccepted(date, {"12/31/87", "123187"}, "12/31/1987");
    ExpectAccepted(date, {"2/29/2024"}, "02/29/2024");
    ExpectAccepted(date, {"6/7/49"}, "06/07/2049");
    ExpectAccepted(date, {"6/7/50"}, "06/07/1950");
}

TEST(ValuesEntry, DateWithoutYearIsThisYear) {
    oxDate today;
    today.SetCurrent();
    oxDate date;
    ASSERT_TRUE(date.SetVal(CString("3/4"), nullptr));
    EXPECT_EQ(date.Year(), today.Year());
    EXPECT_EQ(date.Month(), 3);
    EXPECT_EQ(date.Day(), 4);
}

TEST(ValuesEntry, NotDatesAreRefused) {
    ExpectRefused(oxDate(7, 4, 1990), {"2/30/2026", "2/29/2025", "13/1/2026", "0/1/2026", "1/0/2026", "1/2/026",
                                       "1/2/20266", "abc", "1/2/2026x", "1//", "1:2:2026", "0102026", "Monday, January 2, 2026",
                                       "Janx 2 2026", "Ja 2 2026", "1/2/3/4", "99999999"});
    // A blank entry is the null date, not a refusal.
    oxDate date(7, 4, 1990);
    EXPECT_TRUE(date.SetVal(CString("  "), nullptr));
    EXPECT_TRUE(date.IsNull());
}

TEST(ValuesEntry, PartialDates) {
    oxDateMonthDay md;
    ExpectAccepted(md, {"2/29", "02/29", "0229", "Feb 29"}, "02/29");
    ExpectRefused(oxDateMonthDay(1, 1), {"2/30", "1/2/2026", "13/1", "12"});
    oxDateMonthYear my;
    ExpectAccepted(my, {"1/26", "1/2026", "0126", "012026", "Jan 2026", "january 26"}, "01/2026");
    ExpectRefused(oxDateMonthYear(1, 2000), {"13/2026", "1/2/2026", "1/026", "Feb", "0/2026"});
}

TEST(ValuesEntry, Times) {
    oxTime time;
    ExpectAccepted(time, {"9a", "9 am", "9A", "9:00 AM", "9:00", "09:00", "900", "0900", "9 a.m."}, "9:00 AM");
    ExpectAccepted(time, {"9:05 pm", "9:05PM", "21:05", "2105", "905p"}, "9:05 PM");
    ExpectAccepted(time, {"12a", "12:00 am", "0:00", "0000"}, "12:00 AM");
    ExpectAccepted(time, {"12p", "12:00"}, "12:00 PM");
    ExpectAccepted(time, {"9:05:30 p.m.", "210530"}, "9:05:30 PM");
    ExpectRefused(oxTime(8, 15), {"13pm", "0am", "24:00", "9:60", "9:5", "9:05:7", "noon", "pm", "9:05 xm",
                                  "9::05", "1234567", "9.05", "-9"});
}

TEST(ValuesEntry, Numbers) {
    oxDouble d(0.0, 2);
    ExpectAccepted(d, {"1234.5", "1,234.50", "$1234.5", "+1234.5", " 1234.50 ", "001234.5"}, "1234.50");
    ExpectAccepted(d, {"-.5", "-0.5", "-$0.50"}, "-0.50");
    ExpectRefused(oxDouble(3.25, 2), {"abc", "1.2.3", "12,34", "1,2345", ",123", "1e5", "--1", "1-", "$", "."});
    EXPECT_TRUE(d.SetVal(CString(""), nullptr));
    EXPECT_TRUE(d.IsNull());

    oxNumeric n(0.0, 2);
    ExpectAccepted(n, {"12.345", "12.3450", "12.35"}, "12.35");
    ExpectAccepted(n, {"-12.345"}, "-12.35");
    ExpectRefused(oxNumeric(1.5, 2), {"1e3", "12a", "1234567890123456789"});
}

TEST(ValuesEntry, SmallValues) {
    oxBool b;
    for (const char* yes : {"X", "x", "Y", "yes", "T", "true", "1", "On"}) {
        b.SetVal(false);
        EXPECT_TRUE(b.SetVal(CString(yes), nullptr));
        EXPECT_TRUE(b.GetVal()) << yes;
    }
    for (const char* no : {"", "N", "no", "F", "FALSE", "0", "off"}) {
        b.SetVal(true);
        EXPECT_TRUE(b.SetVal(CString(no), nullptr));
        EXPECT_FALSE(b.GetVal()) << no;
    }
    ExpectRefused(oxBool(true), {"maybe", "2", "yes!"});

    oxSSNum ssn;
    ExpectAccepted(ssn, {"123-45-6789", "123456789", "123 45 6789"}, "123-45-6789");
    ExpectAccepted(ssn, {"001-02-0003"}, "001-02-0003");
    ExpectRefused(oxSSNum(111223333), {"123-45-678", "1234567890", "123-456789", "123 45-6789", "12a-45-6789"});

    oxChoice choice;
    ExpectAccepted(choice, {"3", " 3 ", "003"}, "3");
    ExpectRefused(oxChoice(2), {"-1", "65536", "1.5", "two"});
}

// Turns typed digits of a phone into the mask, as an edit formatter would.
class PhoneDigits : public oxcFormatter {
public:
    bool StorageText(const CString& typed, CString* storage) const override {
        x_country_def country;
        x_get_country_info(&country);
        return x_fill_mask(country.phone_mask, typed, storage);
    }
};

TEST(ValuesEntry, FormatterDecidesTheStorageText) {
    const PhoneDigits formatter;
    oxPhone phone("(555) 010-4477");
    ASSERT_TRUE(phone.SetVal(CString("555.123.9876"), &formatter));
    EXPECT_EQ(phone.GetVal(), CString("(555) 123-9876"));
    EXPECT_FALSE(phone.SetVal(CString("123"), &formatter));
    EXPECT_EQ(phone.GetVal(), CString("(555) 123-9876"));

    oxDate date(1, 1, 2000);
    EXPECT_FALSE(date.SetVal(CString("1/2/26"), &formatter));
    EXPECT_EQ(date.Format(), CString("01/01/2000"));
}

TEST(ValuesEntry, ConversionsBetweenClasses) {
    oxDate date(5, 6, 2007);
    EXPECT_FALSE(date.SetVal(oxTime(9, 0)));
    EXPECT_FALSE(date.SetVal(oxDouble(3.0)));
    EXPECT_FALSE(date.SetVal(oxAlpha("not a date")));
    EXPECT_EQ(date.Format(), CString("05/06/2007"));
    EXPECT_TRUE(date.SetVal(oxAlpha("1/2/26")));
    EXPECT_EQ(date.Format(), CString("01/02/2026"));

    oxDateMonthDay md;
    EXPECT_TRUE(md.SetVal(oxDate(12, 25, 2020)));
    EXPECT_EQ(md.Format(), CString("12/25"));
    oxDate full(1, 1, 2000);
    EXPECT_FALSE(full.SetVal(md));
    oxDateMonthYear my;
    EXPECT_FALSE(my.SetVal(md));
    EXPECT_TRUE(my.SetVal(oxDate(12, 25, 2020)));
    EXPECT_EQ(my.Format(), CString("12/2020"));

    oxChoice choice(1);
    EXPECT_TRUE(choice.SetVal(oxDouble(4.0)));
    EXPECT_EQ(choice.GetVal(), 4);
    EXPECT_FALSE(choice.SetVal(oxDouble(4.5, 1)));
    EXPECT_FALSE(choice.SetVal(oxDouble(-1.0)));
    EXPECT_FALSE(choice.SetVal(oxDate(1, 1, 2000)));
    EXPECT_EQ(choice.GetVal(), 4);

    oxSSNum ssn(5);
    EXPECT_FALSE(ssn.SetVal(oxDouble(1e10)));
    EXPECT_EQ(ssn.GetVal(), 5UL);

    oxAlpha alpha("x");
    EXPECT_TRUE(alpha.SetVal(oxDouble(2.5, 2)));
    EXPECT_EQ(alpha.GetVal(), CString("2.50"));

    oxDouble d(0.0, 1);
    EXPECT_TRUE(d.SetVal(oxNumeric(7.25, 2)));
    EXPECT_DOUBLE_EQ(d.GetVal(), 7.25);
    EXPECT_EQ(d.Decimals(), 1);  // the receiver keeps its own places
    EXPECT_FALSE(d.SetVal(oxTime(1, 2)));

    oxTime time(1, 2);
    EXPECT_FALSE(time.SetVal(oxDate(1, 1, 2000)));
    EXPECT_EQ(time.Format(), CString("1:02 AM"));
}

// Random typing never crashes a parser, and whatever is refused leaves the
// value as it was; whatever is accepted reads back as itself.
TEST(ValuesEntry, RandomTypingIsRefusedOrReadBack) {
    std::vector<std::unique_ptr<oxData>> values;
    values.emplace_back(new oxDate(7, 4, 1990));
    values.emplace_back(new oxDateMonthDay(7, 4));
    values.emplace_back(new oxDateMonthYear(7, 1990));
    values.emplace_back(new oxTime(8, 15));
    values.emplace_back(new oxDouble(3.25, 2));
    values.emplace_back(new oxNumeric(3.25, 2));
    values.emplace_back(new oxBool(true));
    values.emplace_back(new oxChoice(2));
    values.emplace_back(new oxSSNum(111223333));
    const std::string alphabet = std::string("0123456789/-.,: $+apmAPMJanFeb") + char(0xff);
    std::mt19937 random(12345);
    for (int round = 0; round < 3000; ++round) {
        std::string typed;
        const int length = static_cast<int>(random() % 12);
        for (int i = 0; i < length; ++i) typed += alphabet[random() % alphabet.size()];
        for (const auto& start : values) {
            std::unique_ptr<oxData> value(start->Clone());
            if (value->SetVal(CString(typed), nullptr)) {
                std::unique_ptr<oxData> again(start->Clone());
                ASSERT_TRUE(again->SetVal(value->Format(), nullptr)) << typed;
                EXPECT_TRUE(again->Eq(*value)) << typed;
            } else {
                EXPECT_EQ(value->Format(), start->Format()) << typed;
            }
        }
    }
}

}  // namespace
