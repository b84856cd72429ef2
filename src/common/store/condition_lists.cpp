#include "condition_lists.h"

#include "field_convert.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/io_status.h"
#include "oxdm/common/values/text_values.h"
#include "store_file.h"

#include <cassert>
#include <cstring>

namespace oxdm::store {

ConditionLists& ConditionLists::Instance() {
    static ConditionLists lists;
    return lists;
}

short ConditionLists::Create(const xc_init_def& init) {
    for (int tries = 0; tries < 32767; ++tries) {
        short handle = nextHandle_;
        nextHandle_ = nextHandle_ == 32767 ? 1 : static_cast<short>(nextHandle_ + 1);
        if (handles_.count(handle)) continue;
        handles_[handle].init = init;
        return handle;
    }
    return 0;
}

ConditionLists::List* ConditionLists::Find(short handle) {
    auto it = handles_.find(handle);
    return it == handles_.end() ? nullptr : &it->second;
}

void ConditionLists::Destroy(short handle) { handles_.erase(handle); }

namespace {

// The column that an operand header names: by field number when it has
// one of this table, else by name.
int OperandColumn(const xc_operand_def& operand, const oxStoreFile& file, short table) {
    if (operand.kind != XC_OPERAND_FIELD) return -1;
    if (operand.table != 0 && operand.table != table) return -1;
    int column = operand.field_num > 0 ? file.ColumnOfField(table, operand.field_num) : -1;
    if (column >= 0) return column;
    char name[sizeof operand.field + 1] = {};
    std::memcpy(name, operand.field, sizeof operand.field);
    return name[0] ? file.ColumnNamed(table, name) : -1;
}

template <typename T>
T Read(const char* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// The constant of a record as the stored value of a field of `type`. A text
// constant is shown in double quotes; any other takes the form the right
// header's type tells.
FieldValue Constant(const xc_cond_def& cond, short type) {
    char text[sizeof cond.value + 1] = {};
    std::memcpy(text, cond.value, sizeof cond.value);
    if (cond.text[0] == '"') return StoredFromData(type, oxAlpha(text));
    switch (cond.right.type) {
        case XIO_NUMERIC:
        case XIO_CHOICE:
        case XIO_CHOICE8:
        case XIO_CHOICE9:
            return StoredFromData(type, oxDouble(Read<double>(cond.value)));
        case XIO_BOOLEAN:
            return StoredFromData(type, oxDouble(Read<short>(cond.value)));
        case XIO_DATE:
        case XIO_TIME: {
            // The record as the value layer carries it, with its display text.
            x_value_def record;
            x_value_init(&record);
            char shown[sizeof cond.text + 1] = {};
            std::memcpy(shown, cond.text, sizeof cond.text);
            x_value_set_text(&record, shown, std::strlen(shown));
            if (cond.right.type == XIO_DATE) {
                record.kind = XV_DATE;
                record.date = Read<x_date_def>(cond.value);
                if (record.date.year == 0 && record.date.month == 0 && record.date.day == 0) record.flags = XV_NULL;
            } else {
                record.kind = XV_TIME;
                record.time = Read<x_time_def>(cond.value);
                if (record.time.hour < 0) record.flags = XV_NULL;
            }
            FieldValue stored = StoredFromXval(type, record);
            x_value_free(&record);
            return stored;
        }
        case XIO_ALPHA:
        case XIO_PHONE:
            return StoredFromData(type, oxAlpha(text));
        default:
            return BlankStored(type);
    }
}

}  // namespace

Filter CompileConditions(short handle, const oxStoreFile& file, short table) {
    Filter filter;
    ConditionLists::List* list = ConditionLists::Instance().Find(handle);
    if (!list) return filter;
    for (const xc_cond_def& cond : list->records) {
        int column = OperandColumn(cond.left, file, table);
        if (column < 0 || cond.op < XC_EQUAL || cond.op > XC_NOT_EQUAL) continue;
        ConditionTerm term;
        term.column = column;
        term.op = static_cast<CompareOp>(cond.op);
        term.connector = filter.empty() ? Connector::None : cond.connector == XC_OR ? Connector::Or : Connector::And;
        if (cond.right.kind == XC_OPERAND_FIELD) {
            term.otherColumn = OperandColumn(cond.right, file, table);
            if (term.otherColumn < 0) continue;
        } else {
            term.constant = Constant(cond, file.Field(table, column).type);
        }
        filter.push_back(std::move(term));
    }
    return filter;
}

}  // namespace oxdm::store

short xc_init_conditions(xc_init_def* init, bool) {
    assert(init != nullptr);
    return oxdm::store::ConditionLists::Instance().Create(*init);
}

short xc_put_condition(short handle, xc_cond_def* cond) {
    assert(cond != nullptr);
    oxdm::store::ConditionLists::List* list = oxdm::store::ConditionLists::Instance().Find(handle);
    if (!list) return oxioStatus::IO_VOID;
    list->records.push_back(*cond);
    return oxioStatus::IO_VALID;
}

short xc_get_condition(short handle, xc_cond_def* cond) {
    assert(cond != nullptr);
    oxdm::store::ConditionLists::List* list = oxdm::store::ConditionLists::Instance().Find(handle);
    if (!list || list->next >= list->records.size()) return 0;
    *cond = list->records[list->next++];
    return 1;
}

short xc_reset_conditions(short handle) {
    oxdm::store::ConditionLists::List* list = oxdm::store::ConditionLists::Instance().Find(handle);
    if (!list) return oxioStatus::IO_VOID;
    list->next = 0;
    return oxioStatus::IO_VALID;
}

short xc_term_conditions(short handle, bool) {
    if (!oxdm::store::ConditionLists::Instance().Find(handle)) return oxioStatus::IO_VOID;
    oxdm::store::ConditionLists::Instance().Destroy(handle);
    return oxioStatus::IO_VALID;
}
