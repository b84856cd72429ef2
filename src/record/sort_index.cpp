#include "oxdm/record/sort_index.h"

#include <cassert>

#include "oxdm/record/table_def.h"

oxdmSortIndex::oxdmSortIndex(oxdmTableDef* table, short index, xio_key_def* def)
    : table_(table), index_(index), def_(def) {
    assert(table != nullptr);
    assert((index == 0) == (def == nullptr));
    if (index == 0) {
        for (oxdmColumnDef* column : table->Columns()) {
            if (column->Key()) columns_.push_back(column);
        }
        return;
    }
    const short count = def->field_count;
    for (short i = 0; i < count && i < XIO_KEY_MAX_FIELDS; ++i) {
        const short field = def->fields[i];
        columns_.push_back(table->ColumnByNum(field));
    }
}

oxdmSortIndex::~oxdmSortIndex() = default;

oxdmColumnDef* oxdmSortIndex::operator[](short position) const {
    if (position < 0 || static_cast<size_t>(position) >= columns_.size()) return nullptr;
    return columns_[position];
}
