#include "oxdm/query/filter.h"

#include <cassert>

#include "oxdm/base/exception.h"
#include "oxdm/common/store/conditions.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/numeric_value.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"
#include "oxdm/common/values/xval.h"
#include "oxdm/query/table_column.h"
#include "oxdm/record/table_def.h"

oxdmFilterItem::oxdmFilterItem(oxdmFilter::Join join, const CString& left, oxdmFilter::Op op, const CString& right)
    : left_(left), right_(right), op_(op), join_(join) {}

oxdmFilterItem::oxdmFilterItem(oxdmFilter::Join join, const CString& left, oxdmFilter::Op op, const oxData& value)
    : left_(left), op_(op), join_(join), value_(value.Clone()) {}

oxdmFilterItem::oxdmFilterItem(const oxdmFilterItem& other)
    : left_(other.left_),
      right_(other.right_),
      op_(other.op_),
      join_(other.join_),
      value_(other.value_ ? other.value_->Clone() : nullptr) {}

oxdmFilterItem::~oxdmFilterItem() = default;

oxdmFilter::oxdmFilter() : items_(std::make_unique<std::vector<oxdmFilterItem*>>()) {}

oxdmFilter::oxdmFilter(const CString& column, Op op, const CString& column2) : oxdmFilter() {
    AddItem(And, column, op, column2);
}

oxdmFilter::oxdmFilter(const CString& column, Op op, const oxData& value) : oxdmFilter() {
    AddItem(And, column, op, value);
}

oxdmFilter::oxdmFilter(const oxdmFilter& other) : oxdmFilter() { *this = other; }

oxdmFilter& oxdmFilter::operator=(const oxdmFilter& other) {
    if (this == &other) return *this;
    Clear();
    for (const oxdmFilterItem* item : *other.items_) AddItem(new oxdmFilterItem(*item));
    return *this;
}

oxdmFilter::~oxdmFilter() { Clear(); }

void oxdmFilter::Clear() {
    for (oxdmFilterItem* item : *items_) delete item;
    items_->clear();
}

bool oxdmFilter::IsEmpty() const { return items_->empty(); }

void oxdmFilter::AddItem(Join join, const CString& column, Op op, const CString& column2) {
    AddItem(new oxdmFilterItem(join, column, op, column2));
}

void oxdmFilter::AddItem(Join join, const CString& column, Op op, const oxData& value) {
    AddItem(new oxdmFilterItem(join, column, op, value));
}

void oxdmFilter::AddItem(oxdmFilterItem* item) { items_->push_back(item); }

namespace {

[[noreturn]] void BadJoin() { throw oxdmException("Unrecognized filter join"); }
[[noreturn]] void BadOperator() { throw oxdmException("Unrecognized filter operator"); }

// The field of a filter column on the node's record file.
oxdmConditionField FieldOf(oxdmFilterTarget& node, const CString& id) {
    const auto* column = dynamic_cast<const oxdmTableColumnQueryColumn*>(node.Column(id));
    if (column == nullptr) throw oxdmException("Cannot create a condition for a filter that has non-KIF columns");
    return oxdmConditionField(*node.DataCursor()->File(), column->Column()->Table()->Num(), column->Name());
}

// The builder of the item's operator for a right side of any type.
// Greater-than goes to the record layer as code 5, as less-than does.
template <class Right>
oxdmConditions Compare(const oxdmConditionField& left, oxdmFilter::Op op, const Right& right) {
    switch (op) {
        case oxdmFilter::EQ: return left == right;
        case oxdmFilter::NE: return left != right;
        case oxdmFilter::GT: return left < right;
        case oxdmFilter::GE: return left >= right;
        case oxdmFilter::LT: return left < right;
        case oxdmFilter::LE: return left <= right;
    }
    BadOperator();
}

oxdmConditions ItemCondition(oxdmFilterTarget& node, const oxdmFilterItem& item) {
    const oxdmConditionField left = FieldOf(node, item.Left());
    const oxData* value = item.Value();
    if (value == nullptr) return Compare(left, item.Operator(), FieldOf(node, item.Right()));
    if (dynamic_cast<const oxDate*>(value) != nullptr) {
        return Compare(left, item.Operator(), oxioXval(*value).GetXval().date);
    }
    if (dynamic_cast<const oxTime*>(value) != nullptr) {
        return Compare(left, item.Operator(), oxioXval(*value).GetXval().time);
    }
    if (const auto* text = dynamic_cast<const oxString*>(value)) return Compare(left, item.Operator(), text->GetVal());
    double number = 0.0;
    if (const auto* d = dynamic_cast<const oxDouble*>(value)) {
        number = d->GetVal(true);
    } else if (const auto* choice = dynamic_cast<const oxChoice*>(value)) {
        number = choice->GetVal();
    } else if (const auto* flag = dynamic_cast<const oxBool*>(value)) {
        number = flag->GetVal() ? 1.0 : 0.0;
    } else if (const auto* n = dynamic_cast<const oxNumeric*>(value)) {
        number = n->GetVal(true);
    } else if (const auto* ssn = dynamic_cast<const oxSSNum*>(value)) {
        number = static_cast<double>(ssn->GetVal());
    } else {
        throw oxdmException("Unsupported filter value: class '" + oxDataClassName(*value) + "'");
    }
    return Compare(left, item.Operator(), number);
}

bool ItemTruth(const oxdmFilterSource& source, const oxdmFilterItem& item, bool fromFocusRow) {
    const oxdmFilterColumn& column = source.FilterColumn(item.Left());
    const oxData& left = column.FilterValue(fromFocusRow);
    const oxData& right =
        item.Value() != nullptr ? *item.Value() : source.FilterColumn(item.Right()).FilterValue(fromFocusRow);
    switch (item.Operator()) {
        case oxdmFilter::EQ: return column.EQ(left, right);
        case oxdmFilter::NE: return column.NE(left, right);
        case oxdmFilter::GT: return column.GT(left, right);
        case oxdmFilter::GE: return column.GE(left, right);
        case oxdmFilter::LT: return column.LT(left, right);
        case oxdmFilter::LE: return column.LE(left, right);
    }
    BadOperator();
}

}  // namespace

oxdmConditions oxdmFilter::BuildCondition(oxdmFilterTarget& node) {
    oxdmConditions conditions;
    for (size_t i = 0; i < items_->size(); ++i) {
        const oxdmFilterItem& item = *(*items_)[i];
        const oxdmConditions one = ItemCondition(node, item);
        if (i == 0) {
            conditions = one;
        } else if (item.JoinOp() == And) {
            conditions = conditions && one;
        } else if (item.JoinOp() == Or) {
            conditions = conditions || one;
        } else {
            BadJoin();
        }
    }
    return conditions;
}

void oxdmFilter::Detach(oxdmFilterTarget& node) { node.DetachCondition(); }

short oxdmFilter::Attach(oxdmFilterTarget& node) {
    Detach(node);
    if (IsEmpty()) return 0;
    oxioCursor* cursor = node.DataCursor();
    assert(cursor != nullptr);
    xc_init_def init{};
    init.task = node.Task() != nullptr ? node.Task()->ID() : 0;
    init.file = cursor->File()->FileNum();
    init.table = cursor->TableID();
    const oxdmConditions conditions = BuildCondition(node);
    const short handle = xc_init_conditions(&init, true);
    conditions.Put(handle);
    node.AttachCondition(handle);
    return handle;
}

bool oxdmFilter::Evaluate(const oxdmFilterSource& source, bool fromFocusRow) const {
    bool result = false;
    for (size_t i = 0; i < items_->size(); ++i) {
        const oxdmFilterItem& item = *(*items_)[i];
        const bool truth = ItemTruth(source, item, fromFocusRow);
        if (i == 0) {
            result = truth;
        } else if (item.JoinOp() == And) {
            result = result && truth;
        } else if (item.JoinOp() == Or) {
            result = result || truth;
        } else {
            BadJoin();
        }
    }
    return result;
}
