// Condition lists: the records the builders make on the sample dictionary,
// the combiners, handles, and the store evaluating what was built.

#include <cstring>

#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/record/conditions.h"
#include "ord_data.h"
#include "record_test_support.h"

namespace {

class ConditionsTest : public RecordTestBase {
protected:
    void SetUp() override {
        RecordTestBase::SetUp();
        ::setenv("OXDM_OPERATOR", "TESTER", 1);
        file_ = OpenOrdFile((Scratch() / "sales.ord").string());
        ASSERT_NE(file_, nullptr);
    }
    void TearDown() override {
        file_.reset();
        RecordTestBase::TearDown();
    }

    oxdmConditionField Order(const char* field) const { return oxdmConditionField(*file_, 2, field); }
    static CString Text(const char* bytes, size_t width) { return CString(bytes, static_cast<int>(strnlen(bytes, width))); }

    // The order numbers delivered by a cursor on Order with `conds` attached.
    std::vector<std::string> Walk(const oxdmConditions& conds) {
        xc_init_def init{};
        init.file = file_->FileNum();
        init.table = 2;
        const short handle = xc_init_conditions(&init, true);
        conds.Put(handle);
        oxioCursor cursor(*file_, 2, 0);
        cursor.AttachCondition(handle, false, true, oxioCursor::ConnectAnd);
        std::vector<std::string> out = OrderNumbers(cursor);
        cursor.DetachCondition(0);
        xc_term_conditions(handle, true);
        return out;
    }

    std::unique_ptr<oxioDataFile> file_;
};

TEST_F(ConditionsTest, FieldNamesItsFileFromTheDefinition) {
    const oxdmConditionField total = Order("TOTAL");
    EXPECT_EQ(total.Dict(), "ord");
    EXPECT_EQ(total.FileCode(), 1);
    EXPECT_EQ(total.FileNum(), file_->FileNum());
    EXPECT_EQ(total.Table(), 2);
    EXPECT_EQ(total.Field(), "TOTAL");
}

TEST_F(ConditionsTest, NumericConstantFillsBothHeadersValueAndText) {
    const oxdmConditions c = Order("TOTAL") >= 100.5;
    ASSERT_EQ(c.Records().size(), 1u);
    const xc_cond_def& rec = c.Records()[0];
    EXPECT_EQ(rec.left.kind, XC_OPERAND_FIELD);
    EXPECT_EQ(rec.left.table, 2);
    EXPECT_EQ(Text(rec.left.field, sizeof rec.left.field), "TOTAL");
    EXPECT_EQ(Text(rec.left.appl, 2), "or");
    EXPECT_EQ(rec.left.letter[0], 'd');
    EXPECT_EQ(rec.left.file_code, 1);
    EXPECT_EQ(rec.left.field_num, xio_num(file_->FileNum(), 2, 2, "TOTAL"));
    EXPECT_EQ(rec.left.type, XIO_NUMERIC);
    EXPECT_EQ(rec.right.kind, 0);
    EXPECT_EQ(rec.right.type, XIO_NUMERIC);
    double value = 0;
    std::memcpy(&value, rec.value, sizeof value);
    EXPECT_EQ(value, 100.5);
    EXPECT_EQ(Text(rec.text, sizeof rec.text), "100.500000");
    EXPECT_EQ(rec.op, XC_GREATER_EQUAL);
    EXPECT_EQ(rec.connector, 0);

    EXPECT_EQ((Order("TOTAL") == 1.0).Records()[0].op, XC_EQUAL);
    EXPECT_EQ((Order("TOTAL") != 1.0).Records()[0].op, XC_NOT_EQUAL);
    EXPECT_EQ((Order("TOTAL") < 1.0).Records()[0].op, XC_LESS);
    EXPECT_EQ((Order("TOTAL") <= 1.0).Records()[0].op, XC_LESS_EQUAL);
}

TEST_F(ConditionsTest, ChoiceConstantShowsItsItemAndOtherTypesNothing) {
    const xc_cond_def status = (oxdmConditionField(*file_, 1, "STATUS") == 2.0).Records()[0];
    EXPECT_EQ(Text(status.text, sizeof status.text), "On hold");
    double value = 0;
    std::memcpy(&value, status.value, sizeof value);
    EXPECT_EQ(value, 2.0);
    // A number against a date field carries no constant at all.
    const xc_cond_def odd = (Order("ODATE") == 3.0).Records()[0];
    EXPECT_EQ(odd.right.type, XIO_DATE);
    EXPECT_EQ(odd.value[0], 0);
    EXPECT_EQ(odd.text[0], 0);
}

TEST_F(ConditionsTest, TextConstantKeepsFiftyOneCharacters) {
    const CString sixty(std::string(50, 'a') + "bcdefghijk");
    const xc_cond_def rec = (Order("CUSTNO") == sixty).Records()[0];
    EXPECT_EQ(Text(rec.value, sizeof rec.value), sixty.Left(51));
    EXPECT_EQ(CString(rec.text, sizeof rec.text), "\"" + sixty.Left(51));
    const xc_cond_def shortText = (Order("CUSTNO") == CString("C1")).Records()[0];
    EXPECT_EQ(Text(shortText.text, sizeof shortText.text), "\"C1\"");
    EXPECT_EQ(shortText.right.type, XIO_ALPHA);
}

TEST_F(ConditionsTest, DateTimeAndFieldConstants) {
    const x_date_def date{2026, 3, 9};
    const xc_cond_def d = (Order("ODATE") <= date).Records()[0];
    x_date_def stored{};
    std::memcpy(&stored, d.value, sizeof stored);
    EXPECT_EQ(stored.year, 2026);
    EXPECT_EQ(stored.day, 9);
    EXPECT_EQ(Text(d.text, sizeof d.text), "03/09/2026");

    const xc_cond_def t = (Order("TSTAMP") == x_time_def{14, 5, 0}).Records()[0];
    EXPECT_EQ(Text(t.text, sizeof t.text), "2:05 PM");

    const xc_cond_def f = (Order("ORDNO") != Order("CUSTNO")).Records()[0];
    EXPECT_EQ(f.right.kind, XC_OPERAND_FIELD);
    EXPECT_EQ(Text(f.right.field, sizeof f.right.field), "CUSTNO");
    EXPECT_EQ(f.right.field_num, xio_num(file_->FileNum(), 2, 2, "CUSTNO"));
    EXPECT_EQ(f.text[0], 0);
}

TEST_F(ConditionsTest, CombinersConnectTheRightListsFirstRecord) {
    const oxdmConditions empty;
    EXPECT_TRUE(empty.Empty());
    oxdmConditions a = Order("TOTAL") >= 1.0;
    a.Add(empty, oxdmConditions::Or);
    ASSERT_EQ(a.Records().size(), 1u);
    EXPECT_EQ(a.Records()[0].connector, 0);

    const oxdmConditions both = (Order("TOTAL") >= 1.0 || Order("TOTAL") == 5.0) && Order("CUSTNO") == CString("C1");
    ASSERT_EQ(both.Records().size(), 3u);
    EXPECT_EQ(both.Records()[0].connector, 0);
    EXPECT_EQ(both.Records()[1].connector, oxdmConditions::Or);
    EXPECT_EQ(both.Records()[2].connector, oxdmConditions::And);

    // Copies are deep.
    oxdmConditions copy(both);
    copy.Add(a, oxdmConditions::And);
    EXPECT_EQ(both.Records().size(), 3u);
    EXPECT_EQ(copy.Records().size(), 4u);
}

TEST_F(ConditionsTest, HandlesKeepOrderAndConnectors) {
    xc_init_def init{};
    const short first = xc_init_conditions(&init, true);
    const short second = xc_init_conditions(&init, true);
    oxdmConditions().Put(first);
    EXPECT_TRUE(oxdmConditions(first).Empty());

    const oxdmConditions list = Order("TOTAL") >= 1.0 || Order("CUSTNO") == CString("C9");
    list.Put(first);
    const oxdmConditions read(first);
    read.Put(second);
    oxdmConditions again;
    again.Get(second);
    again.Get(0);
    ASSERT_EQ(again.Records().size(), 2u);
    EXPECT_EQ(std::memcmp(&again.Records()[0], &list.Records()[0], sizeof(xc_cond_def)), 0);
    EXPECT_EQ(std::memcmp(&again.Records()[1], &list.Records()[1], sizeof(xc_cond_def)), 0);
    xc_term_conditions(first, true);
    xc_term_conditions(second, true);
}

TEST_F(ConditionsTest, StoreEvaluatesBuiltConditionsLeftToRight) {
    WriteOrders(*file_, {{"O1", "C1", 50.0, oxDate(1, 5, 2026)},
                         {"O2", "C2", 150.0, oxDate(2, 5, 2026)},
                         {"O3", "C1", 250.0, oxDate(3, 5, 2026)},
                         {"O4", "C3", 600.0, oxDate(4, 5, 2026)},
                         {"O5", "C2", 20.0, oxDate(5, 5, 2026)}});
    using V = std::vector<std::string>;
    EXPECT_EQ(Walk(Order("TOTAL") >= 150.0), V({"O2", "O3", "O4"}));
    // (TOTAL >= 150 or CUSTNO = C2) and TOTAL < 500: read from the left.
    EXPECT_EQ(Walk((Order("TOTAL") >= 150.0 || Order("CUSTNO") == CString("C2")) && Order("TOTAL") < 500.0),
              V({"O2", "O3", "O5"}));
    EXPECT_EQ(Walk(Order("ODATE") <= x_date_def{2026, 2, 5}), V({"O1", "O2"}));
    EXPECT_EQ(Walk(Order("CUSTNO") != CString("C1")), V({"O2", "O4", "O5"}));
    EXPECT_EQ(Walk(Order("ORDNO") == Order("CUSTNO")), V());
}

}  // namespace
