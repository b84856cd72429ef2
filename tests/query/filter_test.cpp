// Filters: evaluated in memory from the left with no short cut, and
// attached to a cursor over the sample orders as conditions, where operator
// 2 is sent as code 5.

#include <cstring>
#include <functional>
#include <memory>

#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/file_spec.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/query/query.h"
#include "oxdm/query/special_columns.h"
#include "oxdm/record/table_def.h"
#include "ord_data.h"
#include "query_test_support.h"

// A value class that filters do not know (at global scope for its name).
class oxOddValue : public oxData {
public:
    void ConvertToXval(oxioXval&) const override {}
    bool IsNull() const override { return true; }
    bool Eq(const oxData&) const override { return false; }
    bool Lt(const oxData&) const override { return false; }
    oxData* Clone() const override { return new oxOddValue(*this); }
    CString Format() const override { return CString(); }
    bool SetVal(const CString&, const oxcFormatter*) override { return false; }
    bool SetVal(const oxioXval&) override { return false; }
    using oxData::SetVal;
};

namespace {

using Op = oxdmFilter::Op;

CString Failure(const std::function<void()>& f) {
    try {
        f();
    } catch (const oxdmException& e) {
        return e.Message();
    }
    return "no exception";
}

TEST(FilterEvaluateTest, EmptyIsFalseAndOneItemIgnoresItsJoin) {
    ValueSource source;
    source.Set("A", oxDouble(5));
    EXPECT_FALSE(oxdmFilter().Evaluate(source, false));
    oxdmFilter one;
    one.AddItem(static_cast<oxdmFilter::Join>(7), "A", oxdmFilter::EQ, oxDouble(5));
    EXPECT_TRUE(one.Evaluate(source, false));
}

TEST(FilterEvaluateTest, OperatorsCompareTheLeftColumnWithTheValue) {
    ValueSource source;
    source.Set("AMT", oxDouble(10.0, 2));
    auto eval = [&](Op op, double value) { return oxdmFilter("AMT", op, oxDouble(value, 2)).Evaluate(source, false); };
    // Operator 2 keeps values above the value, and only those.
    EXPECT_TRUE(eval(oxdmFilter::GT, 9.99));
    EXPECT_FALSE(eval(oxdmFilter::GT, 10.0));
    EXPECT_FALSE(eval(oxdmFilter::GT, 10.01));
    EXPECT_TRUE(eval(oxdmFilter::GE, 10.0));
    EXPECT_TRUE(eval(oxdmFilter::LT, 10.01));
    EXPECT_FALSE(eval(oxdmFilter::LT, 10.0));
    EXPECT_TRUE(eval(oxdmFilter::LE, 10.0));
    EXPECT_TRUE(eval(oxdmFilter::EQ, 10.0));
    EXPECT_TRUE(eval(oxdmFilter::NE, 3.0));
    EXPECT_EQ(Failure([&] { eval(static_cast<Op>(6), 1.0); }), "Unrecognized filter operator");
}

TEST(FilterEvaluateTest, ThreeItemsJoinedByOrThenAndReadFromTheLeft) {
    ValueSource source;
    source.Set("A", oxDouble(1));
    source.Set("B", oxDouble(2));
    source.Set("C", oxDouble(3));
    oxdmFilter filter("A", oxdmFilter::EQ, oxDouble(1));      // true
    filter.AddItem(oxdmFilter::Or, "B", oxdmFilter::EQ, oxDouble(9));   // false
    filter.AddItem(oxdmFilter::And, "C", oxdmFilter::EQ, oxDouble(9));  // false
    // (true or false) and false; read with precedence it would be true.
    EXPECT_FALSE(filter.Evaluate(source, false));
    filter.AddItem(oxdmFilter::Or, "C", oxdmFilter::EQ, oxDouble(3));
    EXPECT_TRUE(filter.Evaluate(source, false));
}

TEST(FilterEvaluateTest, NoShortCutLateFailuresStillRaise) {
    ValueSource source;
    source.Set("A", oxDouble(1));
    oxdmFilter decided("A", oxdmFilter::NE, oxDouble(1));  // false, and "and" follows
    decided.AddItem(oxdmFilter::And, "MISSING", oxdmFilter::EQ, oxDouble(1));
    EXPECT_EQ(Failure([&] { decided.Evaluate(source, false); }), "No column MISSING");
    oxdmFilter badJoin("A", oxdmFilter::EQ, oxDouble(1));
    badJoin.AddItem(static_cast<oxdmFilter::Join>(2), "A", oxdmFilter::EQ, oxDouble(1));
    EXPECT_EQ(Failure([&] { badJoin.Evaluate(source, false); }), "Unrecognized filter join");
}

TEST(FilterEvaluateTest, FocusRowValuesAndColumnToColumn) {
    ValueSource source;
    source.Set("LO", oxDouble(1), oxDouble(8));
    source.Set("HI", oxDouble(5));
    const oxdmFilter filter("LO", oxdmFilter::LT, CString("HI"));
    EXPECT_TRUE(filter.Evaluate(source, false));
    EXPECT_FALSE(filter.Evaluate(source, true));
    // A choice compares as its index.
    source.Set("KIND", oxChoice(2));
    EXPECT_TRUE(oxdmFilter("KIND", oxdmFilter::GT, oxChoice(1)).Evaluate(source, false));
}

TEST(FilterCopyTest, CopiesAreDeep) {
    oxdmFilter original("A", oxdmFilter::EQ, oxAlpha("x"));
    oxdmFilter copy(original);
    copy.AddItem(oxdmFilter::Or, "B", oxdmFilter::EQ, CString("C"));
    EXPECT_EQ(original.Items().size(), 1u);
    ASSERT_EQ(copy.Items().size(), 2u);
    EXPECT_NE(copy.Items()[0]->Value(), original.Items()[0]->Value());
    EXPECT_EQ(copy.Items()[0]->Value()->Format(), "x");
    EXPECT_EQ(copy.Items()[1]->Value(), nullptr);
    EXPECT_EQ(copy.Items()[1]->Right(), "C");
    copy = original;
    EXPECT_EQ(copy.Items().size(), 1u);
    copy.Clear();
    EXPECT_TRUE(copy.IsEmpty());
}

// A cursor node over the sample orders, as a filter attaches to it.
class OrderNode : public oxdmFilterTarget {
public:
    OrderNode(const oxioDataFile& file, oxdmQueryNode* node, oxTask* task)
        : cursor(file, node->Table()->Num(), 0), node_(node), task_(task) {}
    void AttachCondition(short handle) override {
        attached = handle;
        cursor.AttachCondition(handle, false, true, oxioCursor::ConnectAnd);
    }
    void DetachCondition() override {
        ++detaches;
        cursor.DetachCondition(0);
    }
    oxioCursor* DataCursor() const override { return &cursor; }
    oxTask* Task() const override { return task_; }
    oxdmColumnBase* Column(const CString& id) const override { return node_->Column(id, false, false, false); }

    mutable oxioCursor cursor;
    short attached = 0;
    int detaches = 0;

private:
    oxdmQueryNode* node_;
    oxTask* task_;
};

class FilterAttachTest : public RecordTestBase {
protected:
    void SetUp() override {
        RecordTestBase::SetUp();
        ::setenv("OXDM_OPERATOR", "TESTER", 1);
        file_ = OpenOrdFile((Scratch() / "sales.ord").string());
        WriteOrders(*file_, {{"O1", "C1", 50.0, oxDate(1, 5, 2026)},
                             {"O2", "C2", 150.0, oxDate(2, 5, 2026)},
                             {"O3", "C1", 250.0, oxDate(3, 5, 2026)}});
        orders_ = query_.SetRoot(oxioFileSpec((Scratch() / "sales.ord").string().c_str()), 2, 0, "", 0);
        orders_->AddColumns("ORDNO,CUSTNO,TOTAL,ODATE");
        node_ = std::make_unique<OrderNode>(*file_, orders_, &task_);
    }
    void TearDown() override {
        node_.reset();
        file_.reset();
        RecordTestBase::TearDown();
    }

    std::vector<std::string> Attached(oxdmFilter filter) {
        const short handle = filter.Attach(*node_);
        std::vector<std::string> out = OrderNumbers(node_->cursor);
        filter.Detach(*node_);
        if (handle > 0) xc_term_conditions(handle, true);
        return out;
    }

    oxTask task_{7, "Orders"};
    std::unique_ptr<oxioDataFile> file_;
    oxdmQuery query_{"q"};
    oxdmQueryNode* orders_ = nullptr;
    std::unique_ptr<OrderNode> node_;
};

using Strings = std::vector<std::string>;

TEST_F(FilterAttachTest, OperatorTwoIsSentAsCodeFiveAndDiffersFromEvaluation) {
    oxdmFilter above("TOTAL", oxdmFilter::GT, oxDouble(100.0, 2));
    const short handle = above.Attach(*node_);
    ASSERT_GT(handle, 0);
    EXPECT_EQ(node_->attached, handle);
    EXPECT_EQ(node_->detaches, 1);
    const oxdmConditions sent(handle);
    ASSERT_EQ(sent.Records().size(), 1u);
    EXPECT_EQ(sent.Records()[0].op, XC_LESS);
    EXPECT_EQ(sent.Records()[0].left.table, 2);
    // The record layer thus delivers the orders below 100 ...
    EXPECT_EQ(OrderNumbers(node_->cursor), Strings({"O1"}));
    above.Detach(*node_);
    xc_term_conditions(handle, true);

    // ... while in memory the same filter keeps the order above it.
    ValueSource source;
    source.Set("TOTAL", oxDouble(150.0, 2));
    EXPECT_TRUE(above.Evaluate(source, false));
}

TEST_F(FilterAttachTest, ItemsBecomeConditionsJoinedFromTheLeft) {
    // (TOTAL >= 200 or CUSTNO = C2) and ODATE <= 02/28: O3 passes the first
    // item but not the last, which a reading with precedence would keep.
    oxdmFilter filter("TOTAL", oxdmFilter::GE, oxDouble(200.0, 2));
    filter.AddItem(oxdmFilter::Or, "CUSTNO", oxdmFilter::EQ, oxAlpha("C2"));
    filter.AddItem(oxdmFilter::And, "ODATE", oxdmFilter::LE, oxDate(2, 28, 2026));
    EXPECT_EQ(Attached(filter), Strings({"O2"}));
    EXPECT_EQ(Attached(oxdmFilter("ORDNO", oxdmFilter::NE, CString("CUSTNO"))), Strings({"O1", "O2", "O3"}));
    EXPECT_EQ(Attached(oxdmFilter("TOTAL", oxdmFilter::LE, oxDouble(50.0, 2))), Strings({"O1"}));
}

TEST_F(FilterAttachTest, ValueClassesBecomeTheirConstants) {
    auto first = [&](const oxdmFilter& f) {
        oxdmFilter copy(f);
        const short handle = copy.Attach(*node_);
        const xc_cond_def rec = oxdmConditions(handle).Records().at(0);
        copy.Detach(*node_);
        xc_term_conditions(handle, true);
        return rec;
    };
    double number = 0;
    const xc_cond_def choice = first(oxdmFilter("TOTAL", oxdmFilter::EQ, oxChoice(3)));
    std::memcpy(&number, choice.value, sizeof number);
    EXPECT_EQ(number, 3.0);
    const xc_cond_def flag = first(oxdmFilter("TOTAL", oxdmFilter::EQ, oxBool(true)));
    std::memcpy(&number, flag.value, sizeof number);
    EXPECT_EQ(number, 1.0);
    const xc_cond_def date = first(oxdmFilter("ODATE", oxdmFilter::EQ, oxDate(2, 5, 2026)));
    EXPECT_STREQ(date.text, "02/05/2026");
    const xc_cond_def text = first(oxdmFilter("CUSTNO", oxdmFilter::EQ, oxAlpha("C1")));
    EXPECT_STREQ(text.text, "\"C1\"");
}

TEST_F(FilterAttachTest, FailuresArriveWhenAttached) {
    EXPECT_EQ(oxdmFilter().Attach(*node_), 0);
    EXPECT_EQ(node_->detaches, 1);
    EXPECT_EQ(node_->attached, 0);

    orders_->AddColumn(new oxdmCallbackQueryColumn({}, {}, "CALC", 0));
    EXPECT_EQ(Failure([&] { oxdmFilter("CALC", oxdmFilter::EQ, oxDouble(1)).Attach(*node_); }),
              "Cannot create a condition for a filter that has non-KIF columns");
    EXPECT_EQ(Failure([&] { oxdmFilter("TOTAL", oxdmFilter::EQ, oxOddValue()).Attach(*node_); }),
              "Unsupported filter value: class 'oxOddValue'");
    EXPECT_EQ(Failure([&] { oxdmFilter("TOTAL", static_cast<Op>(9), oxDouble(1)).Attach(*node_); }),
              "Unrecognized filter operator");
    oxdmFilter badJoin("TOTAL", oxdmFilter::EQ, oxDouble(1));
    badJoin.AddItem(static_cast<oxdmFilter::Join>(4), "TOTAL", oxdmFilter::EQ, oxDouble(2));
    EXPECT_EQ(Failure([&] { badJoin.Attach(*node_); }), "Unrecognized filter join");
    EXPECT_EQ(node_->attached, 0);
}

}  // namespace
