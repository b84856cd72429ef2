// The exit check, display form and storage form of the formatters of
// numbers, dates, times, social security and phone numbers, texts, and the
// value of a field code.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fieldcode_test_support.h"
#include "oxdm/common/fieldcode/date_time_edit_formatters.h"
#include "oxdm/common/fieldcode/fld_code_data.h"
#include "oxdm/common/fieldcode/fld_code_edit_formatter.h"
#include "oxdm/common/fieldcode/num_edit_formatter.h"
#include "oxdm/common/fieldcode/phone_edit_formatter.h"
#include "oxdm/common/fieldcode/text_edit_formatters.h"
#include "oxdm/common/values/small_values.h"

namespace {

struct Exit {
    const char* typed;
    bool valid;
    const char* message;  // "" when valid
    const char* result;
};

void RunExits(const oxEditFormatter& formatter, const std::vector<Exit>& cases) {
    for (const Exit& c : cases) {
        SCOPED_TRACE(c.typed);
        CString text = c.typed;
        oxEditValidateInfo info;
        EXPECT_EQ(formatter.IsValid(text, &info), c.valid);
        EXPECT_EQ(std::string(info.message.c_str()), c.message);
        EXPECT_EQ(std::string(text.c_str()), c.result);
    }
}

oxNumEditFormatter Money() {
    oxNumEditFormatter money(8, 2, oxNumEditFormatter::kCommas);
    money.SetLowerLimit(0.0);
    return money;
}

}  // namespace

TEST(NumberFormatter, ExitCheck) {
    const char* mask = " Correct format is 99,999,999.99.";
    RunExits(Money(), {
        {"", true, "", ""},
        {"1234.5", true, "", "1,234.50"},
        {" $1,234 ", true, "", "1,234.00"},
        {"007", true, "", "7.00"},
        {"-5", false, (std::string("Incorrect number format. Entry below the lower limit.") + mask).c_str(), "-5"},
        {"1.234", false, (std::string("Incorrect number format. Too many digits after decimal point.") + mask).c_str(), "1.234"},
        {"123456789", false, (std::string("Incorrect number format. Too many digits before decimal point.") + mask).c_str(), "123456789"},
        {"1.2.3", false, (std::string("Incorrect number format. Only one decimal point allowed.") + mask).c_str(), "1.2.3"},
        {"12a", false, (std::string("Incorrect number format. Invalid character.") + mask).c_str(), "12a"},
        {"-", false, (std::string("Incorrect number format. Insufficient digits entered.") + mask).c_str(), "-"},
    });
}

TEST(NumberFormatter, DisplayAndStorageForms) {
    const oxNumEditFormatter money(8, 2, oxNumEditFormatter::kCommas);
    EXPECT_EQ(money.Format("-1234567.5"), "-1,234,567.50");
    EXPECT_EQ(money.Unformat("-1,234,567.50"), "-1234567.50");
    EXPECT_EQ(money.Format("-0"), "0.00");  // a zero has no sign
    EXPECT_EQ(money.Format("not a number"), "not a number");
    const oxNumEditFormatter whole(4, 0, 0);
    EXPECT_EQ(whole.Format("1234"), "1234");
    EXPECT_FALSE(whole.Format("1.5") == "1.5" && whole.Unformat("1.5") != "1.5");
    CString text = "1.5";
    EXPECT_FALSE(whole.IsValid(text, nullptr));  // no decimal point without places
}

TEST(DateTimeFormatters, ExitCheckByOption) {
    RunExits(oxDateEditFormatter(0), {
        {"1/2/26", true, "", "01/02/2026"},
        {"January 2, 2026", true, "", "01/02/2026"},
        {"", true, "", ""},
        {"2/30/2026", false, "Incorrect date format. Invalid date. Correct format is MM/DD/YYYY.", "2/30/2026"},
    });
    RunExits(oxDateEditFormatter(7), {{"1/2", true, "", "01/02"},
                                      {"13/2", false, "Incorrect date format. Invalid date. Correct format is MM/DD.", "13/2"}});
    RunExits(oxDateEditFormatter(12), {{"1/26", true, "", "01/2026"}});
    RunExits(oxTimeEditFormatter(0), {
        {"9:05 pm", true, "", "9:05 PM"},
        {"25:00", false, "Incorrect time format. Invalid time. Correct format is HH:MM AM.", "25:00"},
    });
    RunExits(oxTimeEditFormatter(1), {{"9:05 pm", true, "", "9:05:00 PM"}});
    RunExits(oxTimeEditFormatter(3), {{"9:05:30 pm", true, "", "21:05:30"}});
    EXPECT_EQ(oxDateEditFormatter(99).Option(), oxDateEditFormatter::kFullDate);
    EXPECT_EQ(oxTimeEditFormatter(2).Option(), oxTimeEditFormatter::kHourMinute);
}

TEST(MaskFormatters, SocialSecurityAndPhone) {
    const oxSocSecEditFormatter ssn;
    RunExits(ssn, {
        {"123456789", true, "", "123-45-6789"},
        {"123 45 6789", true, "", "123-45-6789"},
        {"12345678", false, "Incorrect social security number format. Insufficient digits entered. Correct format is 999-99-9999.", "12345678"},
        {"12345678x", false, "Incorrect social security number format. Invalid character. Correct format is 999-99-9999.", "12345678x"},
    });
    EXPECT_EQ(ssn.Unformat("123-45-6789"), "123456789");
    oxSSNum number;
    EXPECT_TRUE(number.SetVal("123 45 6789", &ssn));
    EXPECT_EQ(number.GetVal(), 123456789UL);
    EXPECT_FALSE(number.SetVal("1234", &ssn));
    EXPECT_EQ(number.GetVal(), 123456789UL);

    RunExits(oxPhoneEditFormatter(14), {
        {"5550104477", true, "", "(555) 010-4477"},
        {"555-010-4477", true, "", "(555) 010-4477"},
        {"(   )    -    ", true, "", ""},
        {"555010447", false, "Incorrect phone number format. Insufficient digits entered. Correct format is (999) 999-9999.", "555010447"},
        {"555 CALL NOW", false, "Incorrect phone number format. Invalid character. Correct format is (999) 999-9999.", "555 CALL NOW"},
    });
    RunExits(oxPhoneEditFormatter(8), {{"0104477", true, "", "010-4477"}});
}

TEST(TextFormatter, LengthAndCapitals) {
    RunExits(oxStrEditFormatter(3, true), {
        {"ab", true, "", "AB"},
        {"abcd", false, "Incorrect text format. Too many characters entered. Correct format is XXX.", "abcd"},
    });
    RunExits(oxStrEditFormatter(0, false), {{std::string(300, 'x').c_str(), true, "", std::string(300, 'x').c_str()}});
}

class FieldCodeValue : public fctest::FieldCodeTest {};

TEST_F(FieldCodeValue, StoredUnformattedShownFormatted) {
    oxFldCodeData item(1, 0, false);
    EXPECT_TRUE(item.SetVal("ABCD-123456", nullptr));
    EXPECT_EQ(item.GetVal(), "ABCD123456");
    EXPECT_EQ(item.Format(), "ABCD-123456");

    const oxFldCodeEditFormatter formatter(1, 0);
    EXPECT_TRUE(item.SetVal("wxyz-12", &formatter));
    EXPECT_EQ(item.GetVal(), "WXYZ000012");
    EXPECT_FALSE(item.SetVal("AB*D", &formatter));  // refused: the value stays
    EXPECT_EQ(item.GetVal(), "WXYZ000012");

    std::unique_ptr<oxData> copy(item.Clone());
    const auto* same = dynamic_cast<const oxFldCodeData*>(copy.get());
    ASSERT_NE(same, nullptr);
    EXPECT_EQ(same->Code(), 1);
    EXPECT_TRUE(same->Eq(item));

    oxFldCodeData kept(1, 0, true);
    EXPECT_TRUE(kept.SetVal("ABCD-123456", nullptr));
    EXPECT_EQ(kept.GetVal(), "ABCD-123456");
}
