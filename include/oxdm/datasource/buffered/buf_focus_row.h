#pragma once
// The focus row of a buffer as controls and callbacks reach it: the cell of
// one column (oxdmBufFileCellOnFocusRow) and the manager of the whole row
// (oxdmBufFileFocusRowMgr), each a typed view over the buffer.
//
// Invariants and ownership: the buffer (buffer_) is not owned and outlives
// both; a cell's column index is an index of that buffer.

#include "oxdm/datasource/cell_on_focus_row.h"
#include "oxdm/datasource/focus_row_mgr.h"

class oxdmBufferedFileDataSource;
class oxdmDSColumnBase;
class oxdmFilter;

class oxdmBufFileCellOnFocusRow : public oxdmDSCellOnFocusRow {
public:
    oxdmBufFileCellOnFocusRow(oxdmBufferedFileDataSource* buffer, short column);

    using oxdmDSCellOnFocusRow::SetDefaultValue;
    using oxdmDSCellOnFocusRow::SetFindValue;
    using oxdmDSCellOnFocusRow::SetNewValue;
    bool SetNewValue(const oxData* value, bool markChanged) override;
    bool SetFindValue(const oxData* value) override;
    void SetDefaultValue(const oxData* value) override;
    const oxData* SavedValue() const override;
    const oxData* OldValue() const override;
    const oxData* NewValue() const override;
    const oxData* GetFindValue() const override;
    const oxData* DefaultValue() const override;
    bool CanProvideContextHelpInfo() const override { return true; }
    // The extension of the column's table file; empty without a table.
    CString FileExt() override;
    // The help folder, the application's code and ".hid".
    CString HelpFile() override;
    void DoAutoLookup() override;
    // The formatter of the cursor node's column of this name, or null.
    oxEditFormatter* AllocateFormatter() const override;

    oxdmDSColumnBase* ActualColumn() const;
    // With moveCursor the cursor first goes to the focus row; then the
    // column is read again.
    void Refresh(bool moveCursor);

private:
    oxdmBufferedFileDataSource* buffer_;
};

class oxdmBufFileFocusRowMgr : public oxdmDSFocusRowMgr {
public:
    explicit oxdmBufFileFocusRowMgr(oxdmBufferedFileDataSource* buffer);

    oxdmBufferedFileDataSource* DataBuf() const { return buffer_; }
    oxdmDSFocusRowMgr* Parent() override;
    oxdmDSFocusRowMgr* Root() override;
    oxdmDSFocusRowMgr* Node(const CString& label) override;
    bool MoveCursorToFocus() const override;
    void Refetch() override;
    void RefetchVisibleRows(bool children) override;
    oxioCursor* DataCursor() override;
    // The buffer's ReserveKey: the new row goes on file early.
    bool ReserveKey() override;
    void ClearFocusRowStateStack() override;
    void PopFocusRowState() override;
    void PushFocusRowState() override;

    void AttachCondition(short handle);
    void AttachRange(short handle);
    const oxdmFilter& Filter() const;
    void SetFilter(const oxdmFilter& filter);
    void SetIndex(short index);
    short Index() const;

private:
    oxdmBufferedFileDataSource* buffer_;
};
