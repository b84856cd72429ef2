// The flat record face and the conditions face over a record file opened
// through the class face: buffers, saved images and the rollback sequences
// built on them, relative positions, and condition lists evaluated by
// cursors.

#include "face_fixture.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/store/conditions.h"
#include "oxdm/common/store/record_functions.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"

#include <cstring>

namespace oxdm::store::testing {
namespace {

class FlatFaceTest : public LineFileTest {
protected:
    void SetUp() override {
        LineFileTest::SetUp();
        cursor_ = std::make_unique<oxioCursor>(*file_, 1, 0);
        cursor_->AttachColumn("ORDNO", ordno_);
        cursor_->AttachColumn("LINENO", lineno_);
        cursor_->AttachColumn("ITEM", item_);
        cursor_->AttachColumn("QTY", qty_);
        cursor_->AttachColumn("SHIPPED", shipped_);
        cursor_->AttachColumn("AT", at_);
    }
    // Lines A/1..A/n: ITEM I0 on even lines, I1 on odd; QTY the line on odd
    // lines, ten times it on even; shipped on day `line` of January 2026 at
    // `line` o'clock.
    void Fill(int n) {
        for (int line = 1; line <= n; ++line) {
            ordno_.SetVal(CString("A"));
            lineno_.SetVal(static_cast<double>(line));
            item_.SetVal(CString(line % 2 ? "I1" : "I0"));
            qty_.SetVal(line % 2 ? line : line * 10.0);
            shipped_ = oxDate(1, static_cast<short>(line), 2026);
            at_ = oxTime(static_cast<short>(line % 24), 0);
            ASSERT_EQ(cursor_->Insert(nullptr), oxioStatus::Success);
        }
    }
    std::vector<int> Lines() {
        std::vector<int> lines;
        for (oxioStatus::Status s = cursor_->FetchFirst(false); s == oxioStatus::Success; s = cursor_->FetchNext(false))
            lines.push_back(static_cast<int>(lineno_.GetVal()));
        return lines;
    }
    short Fnum() const { return file_->FileNum(); }

    std::unique_ptr<oxioCursor> cursor_;
    oxAlpha ordno_, item_;
    oxDouble lineno_{0, 0}, qty_{0, 2};
    oxDate shipped_;
    oxTime at_;
};

xc_cond_def Condition(const char* field, short op, short connector = 0) {
    xc_cond_def cond{};
    cond.left.kind = XC_OPERAND_FIELD;
    cond.left.table = 1;
    std::strncpy(cond.left.field, field, sizeof cond.left.field);
    cond.op = op;
    cond.connector = connector;
    return cond;
}

xc_cond_def Number(const char* field, short op, double value, short connector = 0, short type = XIO_NUMERIC) {
    xc_cond_def cond = Condition(field, op, connector);
    cond.right.type = type;
    std::memcpy(cond.value, &value, sizeof value);
    std::snprintf(cond.text, sizeof cond.text, "%f", value);
    return cond;
}

xc_cond_def Text(const char* field, short op, const char* text, short type, short connector = 0) {
    xc_cond_def cond = Condition(field, op, connector);
    cond.right.type = type;
    std::strncpy(cond.value, text, sizeof cond.value - 1);
    std::snprintf(cond.text, sizeof cond.text, "\"%s\"", text);
    return cond;
}

short Handle(std::vector<xc_cond_def> conds) {
    xc_init_def init{};
    short handle = xc_init_conditions(&init, true);
    EXPECT_GT(handle, 0);
    for (xc_cond_def& cond : conds) EXPECT_EQ(xc_put_condition(handle, &cond), 0);
    return handle;
}

TEST_F(FlatFaceTest, ConditionsOfEveryRightHandTypeFilterTheWalk) {
    Fill(6);
    auto with = [&](std::vector<xc_cond_def> conds) {
        short handle = Handle(std::move(conds));
        cursor_->AttachCondition(handle, false, true, oxioCursor::ConnectAnd);
        std::vector<int> lines = Lines();
        cursor_->DetachCondition(0);
        xc_term_conditions(handle, true);
        return lines;
    };
    using V = std::vector<int>;
    EXPECT_EQ(with({Number("QTY", XC_GREATER_EQUAL, 3), Number("QTY", XC_LESS, 6, XC_AND)}), V({3, 5}));
    // Left to right: (LINENO = 5 or LINENO = 2) and ITEM = I0 keeps 2 alone.
    EXPECT_EQ(with({Number("LINENO", XC_EQUAL, 5), Number("LINENO", XC_EQUAL, 2, XC_OR),
                    Text("ITEM", XC_EQUAL, "I0", XIO_ALPHA, XC_AND)}),
              V({2}));
    EXPECT_EQ(with({Text("QTY", XC_EQUAL, "40", XIO_NUMERIC)}), V({4}));
    EXPECT_EQ(with({Text("ITEM", XC_NOT_EQUAL, "I1", XIO_ALPHA)}), V({2, 4, 6}));
    xc_cond_def date = Condition("SHIPPED", XC_LESS_EQUAL);
    date.right.type = XIO_DATE;
    x_date_def third{2026, 1, 3};
    std::memcpy(date.value, &third, sizeof third);
    EXPECT_EQ(with({date}), V({1, 2, 3}));
    xc_cond_def time = Condition("AT", XC_GREATER);
    time.right.type = XIO_TIME;
    x_time_def four{4, 0, 0};
    std::memcpy(time.value, &four, sizeof four);
    EXPECT_EQ(with({time}), V({5, 6}));
    // Field to field: LINENO = QTY holds on the odd lines.
    xc_cond_def same = Condition("LINENO", XC_EQUAL);
    same.right.kind = XC_OPERAND_FIELD;
    same.right.table = 1;
    std::strncpy(same.right.field, "QTY", sizeof same.right.field);
    EXPECT_EQ(with({same}), V({1, 3, 5}));
    // By field number, as the condition builders name the field.
    xc_cond_def numbered = Number("", XC_LESS_EQUAL, 2);
    numbered.left.field_num = xio_num(Fnum(), 2, 1, "LINENO");
    ASSERT_GT(numbered.left.field_num, 0);
    EXPECT_EQ(with({numbered}), V({1, 2}));
    // A field the table does not have is left out.
    EXPECT_EQ(with({Number("NOSUCH", XC_EQUAL, 1)}), V({1, 2, 3, 4, 5, 6}));
}

TEST_F(FlatFaceTest, RangeAndConditionsMustBothHold) {
    Fill(6);
    short range = Handle({Number("LINENO", XC_GREATER_EQUAL, 3)});
    short odd = Handle({Text("ITEM", XC_EQUAL, "I1", XIO_ALPHA), Number("LINENO", XC_EQUAL, 2, XC_OR)});
    cursor_->AttachRange(range);
    cursor_->AttachCondition(odd, false, true, oxioCursor::ConnectAnd);
    EXPECT_EQ(Lines(), std::vector<int>({3, 5}));
    cursor_->DetachRange();
    EXPECT_EQ(Lines(), std::vector<int>({1, 2, 3, 5}));
    cursor_->DetachCondition(0);
    EXPECT_EQ(Lines().size(), 6u);
}

TEST_F(FlatFaceTest, ConditionHandlesReadBackInOrderUntilEnded) {
    short handle = Handle({Number("QTY", XC_EQUAL, 1), Number("QTY", XC_EQUAL, 2, XC_OR)});
    xc_cond_def read{};
    ASSERT_EQ(xc_get_condition(handle, &read), 1);
    EXPECT_EQ(read.connector, 0);
    ASSERT_EQ(xc_get_condition(handle, &read), 1);
    EXPECT_EQ(read.connector, XC_OR);
    EXPECT_EQ(xc_get_condition(handle, &read), 0);
    EXPECT_EQ(xc_reset_conditions(handle), 0);
    EXPECT_EQ(xc_get_condition(handle, &read), 1);
    EXPECT_EQ(xc_term_conditions(handle, true), 0);
    EXPECT_EQ(xc_get_condition(handle, &read), 0);
    EXPECT_NE(xc_put_condition(handle, &read), 0);
    EXPECT_NE(xc_term_conditions(handle, true), 0);
}

TEST_F(FlatFaceTest, BufferReadsAndFieldsByNumber) {
    Fill(3);
    short qtyField = xio_num(Fnum(), 2, 1, "QTY");
    short itemField = xio_num(Fnum(), 2, 1, "ITEM");
    ASSERT_GT(qtyField, 0);
    ordno_.SetVal(CString("A"));
    lineno_.SetVal(2.0);
    cursor_->SetBuffer();
    ASSERT_EQ(xio_rd_record(Fnum(), 1, 0, 0), 0);
    x_value_def value;
    ASSERT_EQ(xio_get_field(Fnum(), 1, qtyField, &value), 0);
    EXPECT_EQ(value.number, 20.0);
    x_value_free(&value);
    ASSERT_EQ(xio_get_field(Fnum(), 1, itemField, &value), 0);
    EXPECT_STREQ(x_value_text(&value), "I0");
    x_value_free(&value);
    // By the secondary index: the first I1 is line 1.
    item_.SetVal(CString("I1"));
    cursor_->SetBuffer();
    ASSERT_EQ(xio_rd_record(Fnum(), 1, 1, 0), 0);
    ASSERT_EQ(xio_get_field(Fnum(), 1, qtyField, &value), 0);
    EXPECT_EQ(value.number, 1.0);
    x_value_free(&value);
    // Mode 1 reads the record the table stands on again, after another change.
    lineno_.SetVal(1.0);
    qty_.SetVal(99.0);
    ASSERT_EQ(cursor_->SeekEQ(), oxioStatus::Success);
    ASSERT_EQ(cursor_->Update(nullptr, oxioCursor::Overwrite), oxioStatus::Success);
    ASSERT_EQ(xio_rd_record(Fnum(), 1, 0, 1), 0);
    ASSERT_EQ(xio_get_field(Fnum(), 1, qtyField, &value), 0);
    EXPECT_EQ(value.number, 99.0);
    x_value_free(&value);

    EXPECT_EQ(xio_rd_record(999, 1, 0, 1), oxioStatus::FILE_NOT_FOUND);
    EXPECT_EQ(xio_rd_record(Fnum(), 9, 0, 1), oxioStatus::IO_VOID);
    EXPECT_EQ(xio_get_field(Fnum(), 1, 9999, &value), oxioStatus::IO_VOID);
    lineno_.SetVal(42.0);
    cursor_->SetBuffer();
    EXPECT_EQ(xio_find_record(Fnum(), 1, 0), oxioStatus::INVALID_KEY);
}

TEST_F(FlatFaceTest, SavedImagesUndoAnUpdateAnInsertAndADelete) {
    Fill(2);
    auto qtyOf = [&](int line) {
        ordno_.SetVal(CString("A"));
        lineno_.SetVal(static_cast<double>(line));
        return cursor_->FetchEQ(false) == oxioStatus::Success ? qty_.GetVal() : -1.0;
    };
    // Update: the before-image is saved after reading, then written back.
    ASSERT_EQ(qtyOf(1), 1.0);
    ASSERT_EQ(xio_rd_record(Fnum(), 1, 0, 0), 0);
    short before = xio_save_record(Fnum(), 1);
    ASSERT_GT(before, 0);
    qty_.SetVal(7.0);
    ASSERT_EQ(cursor_->Update(nullptr, oxioCursor::CheckConflict), oxioStatus::Success);
    ASSERT_EQ(qtyOf(1), 7.0);
    ASSERT_EQ(xio_restore_record(Fnum(), before, 1, 0), 0);
    ASSERT_EQ(xio_lock_record(Fnum(), 1), 0);
    ASSERT_EQ(xio_rep_record(Fnum(), 1, nullptr), 0);
    ASSERT_EQ(xio_unlock_record(Fnum(), 1, 1), 0);
    EXPECT_EQ(qtyOf(1), 1.0);

    // Insert: the new record is saved after writing, then deleted.
    ordno_.SetVal(CString("B"));
    lineno_.SetVal(1.0);
    ASSERT_EQ(cursor_->Insert(nullptr), oxioStatus::Success);
    short inserted = xio_save_record(Fnum(), 1);
    ASSERT_EQ(xio_restore_record(Fnum(), inserted, 0, 0), 0);
    ASSERT_EQ(xio_del_record(Fnum(), 1), 0);
    EXPECT_EQ(Lines(), std::vector<int>({1, 2}));

    // Delete: the record is saved before, then written anew.
    ASSERT_EQ(qtyOf(2), 20.0);
    ASSERT_EQ(xio_find_record(Fnum(), 1, 0), 0);
    short deleted = xio_save_record(Fnum(), 1);
    ASSERT_EQ(cursor_->Delete(), oxioStatus::Success);
    EXPECT_EQ(qtyOf(2), -1.0);
    ASSERT_EQ(xio_restore_record(Fnum(), deleted, 0, 0), 0);
    ASSERT_EQ(xio_wr_record(Fnum(), 1, nullptr), 0);
    EXPECT_EQ(qtyOf(2), 20.0);
    // The restore that looks for a deleted record says so, and still restores.
    ASSERT_EQ(xio_del_record(Fnum(), 1), 0);
    EXPECT_EQ(xio_restore_record(Fnum(), deleted, 1, 0), oxioStatus::INVALID_KEY);

    for (short id : {before, inserted, deleted}) EXPECT_EQ(xio_unsave_record(Fnum(), id), 0);
    EXPECT_EQ(xio_unsave_record(Fnum(), before), oxioStatus::IO_VOID);
    EXPECT_EQ(xio_restore_record(Fnum(), before, 0, 0), oxioStatus::IO_VOID);
    EXPECT_NE(inserted, before);
}

TEST_F(FlatFaceTest, RelativePositionsRunFromZeroToAHundred) {
    Fill(101);
    ASSERT_EQ(xio_set_relative_position(Fnum(), 1, 0, 50), 0);
    ASSERT_EQ(cursor_->FetchCurrent(false), oxioStatus::Success);
    EXPECT_EQ(lineno_.GetVal(), 51.0);
    EXPECT_EQ(xio_get_relative_position(Fnum(), 1, 0, nullptr), 50);
    ASSERT_EQ(cursor_->FetchLast(false), oxioStatus::Success);
    EXPECT_EQ(xio_get_relative_position(Fnum(), 1, 0, nullptr), 100);
    ASSERT_EQ(xio_set_relative_position(Fnum(), 1, 0, 0), 0);
    ASSERT_EQ(cursor_->FetchCurrent(false), oxioStatus::Success);
    EXPECT_EQ(lineno_.GetVal(), 1.0);
    // Under conditions the scale covers only the rows that pass.
    short upper = Handle({Number("LINENO", XC_GREATER, 51)});
    cursor_->AttachCondition(upper, false, true, oxioCursor::ConnectAnd);
    ASSERT_EQ(cursor_->FetchFirst(false), oxioStatus::Success);
    EXPECT_EQ(lineno_.GetVal(), 52.0);
    EXPECT_EQ(xio_get_relative_position(Fnum(), 1, 0, nullptr), 0);
    ASSERT_EQ(xio_set_relative_position(Fnum(), 1, 0, 100), 0);
    ASSERT_EQ(cursor_->FetchCurrent(false), oxioStatus::Success);
    EXPECT_EQ(lineno_.GetVal(), 101.0);
}

}  // namespace
}  // namespace oxdm::store::testing
