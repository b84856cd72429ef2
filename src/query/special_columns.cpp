#include "oxdm/query/special_columns.h"

#include <cassert>

#include "oxdm/query/query_node.h"

oxdmCallbackQueryColumn::oxdmCallbackQueryColumn(const ColumnCB& read, const ColumnCB& write, const CString& id,
                                                 int style)
    : oxdmQueryColumnBase(id, style), read_(read), write_(write) {}

oxdmDSColumnBase* oxdmCallbackQueryColumn::CreateColumn(oxdmBufferedFileDataSource& source) const {
    return oxdmLiveColumns().NewCallbackColumn(read_, write_, ID(), source, Style(), &DefaultValue());
}

oxdmDSColumnBase* oxdmAttachmentsQueryColumn::CreateColumn(oxdmBufferedFileDataSource& source) const {
    assert(Node() != nullptr);
    return oxdmLiveColumns().NewAttachmentsColumn(ID(), source, Node()->Table(), Style());
}
