// AllocateFormatter: the formatter chosen for each type of field, from the
// fields of the sample dictionary and from definitions made for one branch.

#include <gtest/gtest.h>

#include <memory>

#include "fieldcode_test_support.h"
#include "oxdm/common/fieldcode/allocate_formatter.h"
#include "oxdm/common/fieldcode/date_time_edit_formatters.h"
#include "oxdm/common/fieldcode/fld_code_edit_formatter.h"
#include "oxdm/common/fieldcode/num_edit_formatter.h"
#include "oxdm/common/fieldcode/phone_edit_formatter.h"
#include "oxdm/common/fieldcode/text_edit_formatters.h"

namespace {

class Allocate : public fctest::FieldCodeTest {
protected:
    std::unique_ptr<oxEditFormatter> For(short table, const char* name) const {
        const short field = ord_->FieldNum(table, name);
        EXPECT_GT(field, 0) << name;
        return std::unique_ptr<oxEditFormatter>(AllocateFormatter(*ord_->FldDef(field)));
    }
    static std::unique_ptr<oxEditFormatter> For(const xio_fld_def& field) {
        return std::unique_ptr<oxEditFormatter>(AllocateFormatter(field));
    }
    static xio_fld_def Field(short type) {
        xio_fld_def field{};
        field.type = type;
        return field;
    }
};

template <class T>
const T* As(const std::unique_ptr<oxEditFormatter>& formatter) {
    return dynamic_cast<const T*>(formatter.get());
}

}  // namespace

TEST_F(Allocate, SampleDictionaryFields) {
    const auto item = For(3, "ITEM");
    ASSERT_NE(As<oxFldCodeEditFormatter>(item), nullptr);
    EXPECT_EQ(As<oxFldCodeEditFormatter>(item)->Code(), 1);
    EXPECT_EQ(As<oxFldCodeEditFormatter>(item)->Section(), 0);

    const auto custno = For(1, "CUSTNO");
    ASSERT_NE(As<oxStrEditFormatter>(custno), nullptr);
    EXPECT_EQ(As<oxStrEditFormatter>(custno)->Length(), 8);
    EXPECT_TRUE(As<oxStrEditFormatter>(custno)->Capitals());
    EXPECT_FALSE(As<oxStrEditFormatter>(For(1, "NAME"))->Capitals());

    const auto balance = For(1, "BALANCE");  // signed, 10 long, 2 places, commas
    ASSERT_NE(As<oxNumEditFormatter>(balance), nullptr);
    EXPECT_EQ(As<oxNumEditFormatter>(balance)->WholeDigits(), 8);
    EXPECT_EQ(As<oxNumEditFormatter>(balance)->Decimals(), 2);
    EXPECT_EQ(As<oxNumEditFormatter>(balance)->Options(), oxNumEditFormatter::kCommas);
    EXPECT_FALSE(As<oxNumEditFormatter>(balance)->HasLowerLimit());
    const auto price = For(3, "PRICE");  // unsigned
    ASSERT_NE(As<oxNumEditFormatter>(price), nullptr);
    EXPECT_TRUE(As<oxNumEditFormatter>(price)->HasLowerLimit());
    EXPECT_EQ(As<oxNumEditFormatter>(price)->LowerLimit(), 0.0);

    EXPECT_EQ(As<oxDateEditFormatter>(For(1, "SINCE"))->Option(), oxDateEditFormatter::kFullDate);
    EXPECT_EQ(As<oxTimeEditFormatter>(For(1, "TSTAMP"))->Option(), oxTimeEditFormatter::kStamp);
    EXPECT_EQ(For(1, "STATUS"), nullptr);  // a choice has none
}

TEST_F(Allocate, AlphaFieldCodeOrText) {
    xio_fld_def field = Field(XIO_ALPHA);
    field.length = 20;
    field.code = 1;
    EXPECT_NE(As<oxStrEditFormatter>(For(field)), nullptr);  // not formatted, no section
    field.formatted = 1;
    EXPECT_NE(As<oxFldCodeEditFormatter>(For(field)), nullptr);
    field.formatted = 0;
    field.section = 2;
    EXPECT_EQ(As<oxFldCodeEditFormatter>(For(field))->Section(), 2);

    // Formatted with a code that has no sections: a text of the field's length.
    field = Field(XIO_ALPHA);
    field.length = 12;
    field.code = 42;
    field.formatted = 1;
    EXPECT_EQ(As<oxStrEditFormatter>(For(field))->Length(), 12);

    // Code 9 without a fifth section and unformatted: plain text.
    field = Field(XIO_ALPHA);
    field.length = 9;
    field.code = 9;
    EXPECT_NE(As<oxStrEditFormatter>(For(field)), nullptr);
}

TEST_F(Allocate, DatesTimesAndOthers) {
    xio_fld_def date = Field(XIO_DATE);
    EXPECT_EQ(As<oxDateEditFormatter>(For(date))->Option(), oxDateEditFormatter::kFullDate);
    date.default_width = 5;
    EXPECT_EQ(As<oxDateEditFormatter>(For(date))->Option(), oxDateEditFormatter::kMonthDay);
    date.month_year = 1;  // month-year wins over the width
    EXPECT_EQ(As<oxDateEditFormatter>(For(date))->Option(), oxDateEditFormatter::kMonthYear);

    xio_fld_def time = Field(XIO_TIME);
    time.default_width = 8;
    EXPECT_EQ(As<oxTimeEditFormatter>(For(time))->Option(), oxTimeEditFormatter::kHourMinute);
    time.default_width = 11;
    EXPECT_EQ(As<oxTimeEditFormatter>(For(time))->Option(), oxTimeEditFormatter::kSeconds);

    xio_fld_def phone = Field(XIO_PHONE);
    phone.default_width = 8;
    EXPECT_EQ(As<oxPhoneEditFormatter>(For(phone))->Mask(), "999-9999");
    phone.default_width = 14;
    EXPECT_EQ(As<oxPhoneEditFormatter>(For(phone))->Mask(), "(999) 999-9999");

    EXPECT_NE(As<oxSocSecEditFormatter>(For(Field(XIO_SSNUM))), nullptr);
    for (short type : std::initializer_list<short>{XIO_BOOLEAN, XIO_CHOICE, XIO_CHOICE8, XIO_CHOICE9, 10, -1}) {
        EXPECT_EQ(For(Field(type)), nullptr) << type;
    }
}

TEST_F(Allocate, NumbersOfOddDefinitions) {
    xio_fld_def number = Field(XIO_NUMERIC);
    number.length = 2;
    number.decimal = 5;  // more places than the length
    const auto odd = For(number);
    ASSERT_NE(As<oxNumEditFormatter>(odd), nullptr);
    EXPECT_EQ(As<oxNumEditFormatter>(odd)->WholeDigits(), 0);
    number.decimal = -3;
    EXPECT_EQ(As<oxNumEditFormatter>(For(number))->Decimals(), 0);
}
