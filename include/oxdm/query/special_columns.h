#pragma once
// Query columns that no table field holds: oxdmCallbackQueryColumn, whose
// value the application computes through two callbacks, and
// oxdmAttachmentsQueryColumn, which shows whether the current record has
// attached documents.

#include "oxdm/query/live_columns.h"
#include "oxdm/query/query_column_base.h"

class oxdmCallbackQueryColumn : public oxdmQueryColumnBase {
public:
    using ColumnCB = oxdmLiveColumnFactory::ColumnCB;

    oxdmCallbackQueryColumn(const ColumnCB& read, const ColumnCB& write, const CString& id, int style);

    const ColumnCB& ReadCB() const { return read_; }
    void SetReadCB(const ColumnCB& read) { read_ = read; }
    const ColumnCB& WriteCB() const { return write_; }
    void SetWriteCB(const ColumnCB& write) { write_ = write; }

protected:
    oxdmDSColumnBase* CreateColumn(oxdmBufferedFileDataSource& source) const override;

private:
    ColumnCB read_;
    ColumnCB write_;
};

class oxdmAttachmentsQueryColumn : public oxdmQueryColumnBase {
public:
    // The type of an attachments column.
    static constexpr short kType = 20;

    oxdmAttachmentsQueryColumn(const CString& id, int style) : oxdmQueryColumnBase(id, style) {}
    short Type() const override { return kType; }

protected:
    // REQUIRES: the column has a node.
    oxdmDSColumnBase* CreateColumn(oxdmBufferedFileDataSource& source) const override;
};
