// oxDouble's rounding, decimals and arithmetic, and oxNumeric's exactness.
#include <gtest/gtest.h>

#include <sstream>

#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/numeric_value.h"

namespace {

TEST(ValuesNumber, RoundingHalvesAwayFromZero) {
    struct Case {
        double value;
        short places;
        double rounded;
    } cases[] = {{2.675, 2, 2.68}, {-2.675, 2, -2.68}, {1.005, 2, 1.01}, {0.5, 0, 1.0},
                 {-0.5, 0, -1.0},  {2.5, 0, 3.0},      {1234.5678, 3, 1234.568}, {0.125, 2, 0.13},
                 {1.4999, 0, 1.0}};
    for (const Case& c : cases) {
        oxDouble d(c.value, 4);
        d.Round(c.places);
        EXPECT_DOUBLE_EQ(d.GetVal(), c.rounded) << c.value << " at " << c.places;
    }
}

TEST(ValuesNumber, DecimalsShapeTextNotValue) {
    oxDouble d(1234.5678, 2);
    EXPECT_EQ(d.Format(), CString("1234.57"));
    EXPECT_DOUBLE_EQ(d.GetVal(), 1234.5678);
    EXPECT_DOUBLE_EQ(d.GetVal(true), 1234.57);
    d.SetDecimals(0);
    EXPECT_EQ(d.Format(), CString("1235"));
    EXPECT_EQ(oxDouble(-0.001, 2).Format(), CString("0.00"));
    std::ostringstream os;
    os << oxDouble(-3.5, 1);
    EXPECT_EQ(os.str(), "-3.5");
}

TEST(ValuesNumber, ArithmeticCarriesTheLargerDecimals) {
    const oxDouble a(10.0, 1), b(4.0, 3);
    EXPECT_DOUBLE_EQ((a + b).GetVal(), 14.0);
    EXPECT_EQ((a + b).Decimals(), 3);
    EXPECT_DOUBLE_EQ((a - b).GetVal(), 6.0);
    EXPECT_DOUBLE_EQ((a * b).GetVal(), 40.0);
    EXPECT_DOUBLE_EQ((a / b).GetVal(), 2.5);
    EXPECT_DOUBLE_EQ((-a).GetVal(), -10.0);
    EXPECT_EQ((-a).Decimals(), 1);
    EXPECT_DOUBLE_EQ((a / oxDouble(0.0)).GetVal(), 0.0);
    EXPECT_TRUE(!oxDouble(0.0));
    EXPECT_FALSE(!a);

    oxDouble c(1.0, 2);
    EXPECT_DOUBLE_EQ((c++).GetVal(), 1.0);
    EXPECT_DOUBLE_EQ(c.GetVal(), 2.0);
    EXPECT_DOUBLE_EQ((++c).GetVal(), 3.0);
    EXPECT_DOUBLE_EQ((c--).GetVal(), 3.0);
    EXPECT_DOUBLE_EQ((--c).GetVal(), 1.0);
    c += oxDouble(0.5, 1);
    c -= 0.25;
    c *= 4.0;
    c /= 2.0;
    EXPECT_DOUBLE_EQ(c.GetVal(), 2.5);
    c = oxDouble(7.0, 4);
    EXPECT_EQ(c.Decimals(), 4);
    c.SetVal(8.0);
    EXPECT_EQ(c.Format(), CString("8.0000"));
}

TEST(ValuesNumber, NumericIsExactAtItsPlaces) {
    oxNumeric sum(0.0, 2);
    for (int i = 0; i < 10; ++i) {
        oxNumeric step(0.0, 2);
        ASSERT_TRUE(step.SetVal(CString("0.10"), nullptr));
        ASSERT_TRUE(sum.SetVal(sum.GetVal() + step.GetVal()));
    }
    EXPECT_EQ(sum.Units(), 100);
    EXPECT_EQ(sum.Format(), CString("1.00"));

    oxNumeric big(0.0, 2);
    ASSERT_TRUE(big.SetVal(CString("9999999999999999.99"), nullptr));
    EXPECT_EQ(big.Units(), 999999999999999999LL);
    EXPECT_EQ(big.Format(), CString("9999999999999999.99"));
    EXPECT_FALSE(big.SetVal(1e300));
    EXPECT_EQ(big.Units(), 999999999999999999LL);

    // The neutral form keeps the units exactly, also at other places.
    oxNumeric fine(0.0, 4);
    ASSERT_TRUE(fine.SetVal(oxNumeric(-12.35, 2)));
    EXPECT_EQ(fine.Units(), -123500);
    oxNumeric coarse(0.0, 1);
    ASSERT_TRUE(coarse.SetVal(oxNumeric(-12.35, 2)));
    EXPECT_EQ(coarse.Units(), -124);
}

}  // namespace
