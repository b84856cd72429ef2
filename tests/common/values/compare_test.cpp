// Eq, Lt and Gt within and across the value families.
#include <gtest/gtest.h>

#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/numeric_value.h"
#include "oxdm/common/values/partial_dates.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"

namespace {

// Exactly one of Lt, Eq, Gt holds between comparable values, and the
// reverse comparison agrees.
void ExpectOrder(const oxData& a, const oxData& b, int order) {
    EXPECT_EQ(a.Lt(b), order < 0);
    EXPECT_EQ(a.Eq(b), order == 0);
    EXPECT_EQ(a.Gt(b), order > 0);
}

TEST(ValuesCompare, TextWithAndWithoutCase) {
    oxAlpha lower("smith"), upper("SMITH"), other("Jones");
    ExpectOrder(lower, upper, 1);  // 's' after 'S' by bytes
    ExpectOrder(upper, lower, -1);
    lower.SetCaseSensitive(false);
    ExpectOrder(lower, upper, 0);
    ExpectOrder(lower, other, 1);
    // The left-hand value decides.
    EXPECT_FALSE(upper.Eq(lower));
    // A copy keeps the setting.
    std::unique_ptr<oxData> copy(lower.Clone());
    EXPECT_TRUE(copy->Eq(upper));
    // Any two texts compare, whatever their class.
    ExpectOrder(oxPhone("(555) 010-0000"), oxAlpha("(555) 010-0000"), 0);
    ExpectOrder(oxText("b"), oxAlpha("a"), 1);
}

TEST(ValuesCompare, BlankTextIsNull) {
    EXPECT_TRUE(oxAlpha("").IsNull());
    EXPECT_TRUE(oxAlpha("   ").IsNull());
    EXPECT_FALSE(oxAlpha(" a ").IsNull());
}

TEST(ValuesCompare, NumbersAcrossClasses) {
    ExpectOrder(oxDouble(2.0), oxChoice(2), 0);
    ExpectOrder(oxDouble(2.4, 1), oxChoice(2), 1);
    ExpectOrder(oxChoice(1), oxBool(true), 0);
    ExpectOrder(oxBool(false), oxBool(true), -1);
    ExpectOrder(oxNumeric(1.25, 2), oxDouble(1.25, 2), 0);
    ExpectOrder(oxSSNum(123456789), oxSSNum(123456788), 1);
    ExpectOrder(oxDouble(-1.0), oxDouble(1.0), -1);
}

TEST(ValuesCompare, DoublesAtTheirDecimals) {
    ExpectOrder(oxDouble(0.1 + 0.2, 2), oxDouble(0.3, 2), 0);
    ExpectOrder(oxDouble(1.004, 2), oxDouble(1.0, 2), 0);
    ExpectOrder(oxDouble(1.004, 3), oxDouble(1.0, 2), 1);
}

TEST(ValuesCompare, DatesAndTimesWithNulls) {
    ExpectOrder(oxDate(), oxDate(), 0);
    ExpectOrder(oxDate(), oxDate(1, 1, 1), -1);
    ExpectOrder(oxDate(1, 1, 2026), oxDate(12, 31, 2025), 1);
    ExpectOrder(oxDateMonthDay(1, 2), oxDateMonthDay(1, 2), 0);
    ExpectOrder(oxDateMonthDay(1, 2), oxDateMonthDay(12, 1), -1);
    ExpectOrder(oxTime(), oxTime(0, 0), -1);
    ExpectOrder(oxTime(), oxTime(), 0);
    ExpectOrder(oxTime(13, 0), oxTime(9, 59, 59), 1);
}

TEST(ValuesCompare, UnrelatedClassesAreNeitherEqualNorOrdered) {
    const oxDate date(1, 1, 2026);
    const oxTime time(1, 0);
    const oxAlpha text("01/01/2026");
    const oxDouble number(1.0);
    for (const oxData* a : {static_cast<const oxData*>(&date), static_cast<const oxData*>(&time),
                            static_cast<const oxData*>(&text)}) {
        for (const oxData* b : {static_cast<const oxData*>(&date), static_cast<const oxData*>(&time),
                                static_cast<const oxData*>(&text), static_cast<const oxData*>(&number)}) {
            if (a == b) continue;
            EXPECT_FALSE(a->Eq(*b));
            EXPECT_FALSE(a->Lt(*b));
            EXPECT_FALSE(a->Gt(*b));
        }
    }
}

TEST(ValuesCompare, ClassNamesForMessages) {
    EXPECT_EQ(oxDataClassName(oxDateMonthYear()), CString("oxDateMonthYear"));
    EXPECT_EQ(oxDataClassName(oxAlpha("")), CString("oxAlpha"));
}

}  // namespace
