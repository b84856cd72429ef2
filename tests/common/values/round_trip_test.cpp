// Every value class survives its own text and the neutral record, nulls
// included, and a record copy owns its long text.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/numeric_value.h"
#include "oxdm/common/values/partial_dates.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"
#include "oxdm/common/values/xval.h"

namespace {

// One sample: a value and an empty value of the same class to receive it.
struct Sample {
    std::unique_ptr<oxData> value;
    std::unique_ptr<oxData> blank;
};

std::vector<Sample> Samples() {
    std::vector<Sample> s;
    auto add = [&s](oxData* value, oxData* blank) { s.push_back({std::unique_ptr<oxData>(value), std::unique_ptr<oxData>(blank)}); };
    add(new oxAlpha("Smith, John"), new oxAlpha("x"));
    add(new oxAlpha(""), new oxAlpha("x"));
    add(new oxText(std::string(300, 'm').c_str()), new oxText("x"));
    add(new oxPhone("(555) 010-4477"), new oxPhone("x"));
    add(new oxDouble(-1234.5, 2), new oxDouble(1.0, 2));
    add(new oxDouble(0.0, 3), new oxDouble(7.0, 3));
    add(new oxNumeric(98765.4321, 4), new oxNumeric(1.0, 4));
    add(new oxNumeric(0.0, 2), new oxNumeric(5.0, 2));
    add(new oxBool(true), new oxBool(false));
    add(new oxBool(false), new oxBool(true));
    add(new oxDate(2, 29, 2024), new oxDate(1, 1, 2000));
    add(new oxDate(), new oxDate(1, 1, 2000));
    add(new oxDateMonthDay(2, 29), new oxDateMonthDay(1, 1));
    add(new oxDateMonthDay(), new oxDateMonthDay(1, 1));
    add(new oxDateMonthYear(12, 1999), new oxDateMonthYear(1, 2000));
    add(new oxDateMonthYear(), new oxDateMonthYear(1, 2000));
    add(new oxTime(21, 5, 30), new oxTime(1, 0));
    add(new oxTime(0, 0), new oxTime(1, 0));
    add(new oxTime(), new oxTime(1, 0));
    add(new oxSSNum(12345678), new oxSSNum(1));
    add(new oxSSNum(0), new oxSSNum(1));
    add(new oxChoice(3), new oxChoice(1));
    add(new oxChoice(0), new oxChoice(1));
    return s;
}

TEST(ValuesRoundTrip, ThroughText) {
    for (Sample& s : Samples()) {
        const CString text = s.value->Format();
        SCOPED_TRACE(oxDataClassName(*s.value) + " \"" + text + "\"");
        ASSERT_TRUE(s.blank->SetVal(text, nullptr));
        EXPECT_TRUE(s.blank->Eq(*s.value));
        EXPECT_EQ(s.blank->IsNull(), s.value->IsNull());
        EXPECT_EQ(s.blank->Format(), text);
    }
}

TEST(ValuesRoundTrip, ThroughXvalAndCopiedRecord) {
    for (Sample& s : Samples()) {
        SCOPED_TRACE(oxDataClassName(*s.value) + " \"" + s.value->Format() + "\"");
        const oxioXval xval(*s.value);
        EXPECT_EQ(xval.NullFlag(), s.value->IsNull());
        // A record handed through the flat form, as the store does.
        x_value_def flat;
        x_value_init(&flat);
        x_value_copy(&flat, &xval.GetXval());
        const oxioXval again(flat);
        x_value_free(&flat);
        ASSERT_TRUE(s.blank->SetVal(again));
        EXPECT_TRUE(s.blank->Eq(*s.value));
        EXPECT_EQ(s.blank->IsNull(), s.value->IsNull());
        EXPECT_EQ(s.blank->Format(), s.value->Format());
    }
}

TEST(ValuesRoundTrip, CloneKeepsClassAndContent) {
    for (Sample& s : Samples()) {
        std::unique_ptr<oxData> copy(s.value->Clone());
        EXPECT_EQ(oxDataClassName(*copy), oxDataClassName(*s.value));
        EXPECT_TRUE(copy->Eq(*s.value));
        EXPECT_EQ(copy->Format(), s.value->Format());
    }
}

TEST(ValuesRoundTrip, RecordLayoutOfDateAndTime) {
    const oxioXval date{oxDate(1, 2, 2026)};
    const auto* bytes = reinterpret_cast<const unsigned char*>(&date.GetXval());
    x_date_def rec;
    std::memcpy(&rec, bytes + 96, sizeof rec);
    EXPECT_EQ(rec.year, 2026);
    EXPECT_EQ(rec.month, 1);
    EXPECT_EQ(rec.day, 2);
    EXPECT_STREQ(date.GetXval().text, "01/02/2026");

    const oxioXval time{oxTime(9, 5)};
    x_time_def trec;
    std::memcpy(&trec, reinterpret_cast<const unsigned char*>(&time.GetXval()) + 102, sizeof trec);
    EXPECT_EQ(trec.hour, 9);
    EXPECT_EQ(trec.minute, 5);

    const oxioXval blank{oxAlpha("")};
    EXPECT_EQ(blank.GetXval().text[0], '\0');
}

TEST(ValuesRoundTrip, LongTextIsWholeAndOwnedByEachCopy) {
    const std::string memo = std::string(200, 'a') + "end";
    oxioXval first{oxText(memo.c_str())};
    EXPECT_EQ(std::strlen(first.GetXval().text), XV_TEXT_SIZE - 1);
    {
        oxioXval second(first);
        oxioXval third;
        third = second;
        EXPECT_NE(third.GetXval().long_text, first.GetXval().long_text);
        EXPECT_EQ(third.Text(), CString(memo));
    }
    EXPECT_EQ(first.Text(), CString(memo));
    first = oxioXval{oxAlpha("short")};
    EXPECT_EQ(first.GetXval().long_text, nullptr);
    EXPECT_EQ(first.Text(), CString("short"));
}

TEST(ValuesRoundTrip, HandFilledRecordIsReadByTheReadingClass) {
    x_value_def rec;
    x_value_init(&rec);
    rec.date = x_date_def{2026, 3, 31};
    rec.time = x_time_def{13, 45, 0};
    rec.number = 42.0;
    x_value_set_text(&rec, "Acme", 4);
    const oxioXval xval(rec);
    x_value_free(&rec);

    oxDate date;
    oxTime time;
    oxDouble number(0.0, 1);
    oxChoice choice;
    oxAlpha alpha;
    ASSERT_TRUE(date.SetVal(xval));
    ASSERT_TRUE(time.SetVal(xval));
    ASSERT_TRUE(number.SetVal(xval));
    ASSERT_TRUE(choice.SetVal(xval));
    ASSERT_TRUE(alpha.SetVal(xval));
    EXPECT_EQ(date.Format(), CString("03/31/2026"));
    EXPECT_EQ(time.Format(), CString("1:45 PM"));
    EXPECT_EQ(number.Format(), CString("42.0"));
    EXPECT_EQ(choice.GetVal(), 42);
    EXPECT_EQ(alpha.GetVal(), CString("Acme"));

    // A zero record is a blank date; for a time it is midnight, since the
    // null time is told by the null flag or a negative hour.
    const oxioXval zero;
    oxTime time2(5, 0);
    ASSERT_TRUE(time2.SetVal(zero));
    EXPECT_FALSE(time2.IsNull());
    EXPECT_EQ(time2.Hour(), 0);
    oxDate d(1, 1, 2000);
    ASSERT_TRUE(d.SetVal(zero));
    EXPECT_TRUE(d.IsNull());
}

}  // namespace
