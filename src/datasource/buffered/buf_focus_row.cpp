#include "oxdm/datasource/buffered/buf_focus_row.h"

#include "oxdm/common/shell/task.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/query/column_base.h"
#include "oxdm/record/column_def.h"
#include "oxdm/record/table_def.h"

oxdmBufFileCellOnFocusRow::oxdmBufFileCellOnFocusRow(oxdmBufferedFileDataSource* buffer, short column)
    : oxdmDSCellOnFocusRow(buffer, column), buffer_(buffer) {}

bool oxdmBufFileCellOnFocusRow::SetNewValue(const oxData* value, bool markChanged) {
    if (markChanged) buffer_->ObserverSetRowChanged(0, true);
    return buffer_->SetNewValue(Column(), value);
}

bool oxdmBufFileCellOnFocusRow::SetFindValue(const oxData* value) { return buffer_->SetFindValue(Column(), value); }

void oxdmBufFileCellOnFocusRow::SetDefaultValue(const oxData* value) { buffer_->SetDefaultValue(Column(), value); }

const oxData* oxdmBufFileCellOnFocusRow::SavedValue() const { return buffer_->SavedValue(Column()); }
const oxData* oxdmBufFileCellOnFocusRow::OldValue() const { return buffer_->OldValue(Column()); }
const oxData* oxdmBufFileCellOnFocusRow::NewValue() const { return buffer_->NewValue(Column()); }
const oxData* oxdmBufFileCellOnFocusRow::GetFindValue() const { return buffer_->GetFindValue(Column()); }
const oxData* oxdmBufFileCellOnFocusRow::DefaultValue() const { return buffer_->DefaultValue(Column()); }

oxdmDSColumnBase* oxdmBufFileCellOnFocusRow::ActualColumn() const { return buffer_->ColumnForIndex(Column()); }

CString oxdmBufFileCellOnFocusRow::FileExt() {
    const oxdmDSColumnBase* column = ActualColumn();
    const oxdmTableDef* table = column ? column->OXColumn()->Table() : nullptr;
    return table ? table->FileExt() : CString();
}

CString oxdmBufFileCellOnFocusRow::HelpFile() {
    // The process has no help folder of its own: the file is looked for
    // beside the program.
    const oxApp* app = OXGetApp();
    return (app ? app->Code() : CString()) + ".hid";
}

void oxdmBufFileCellOnFocusRow::DoAutoLookup() { buffer_->DoAutoLookup(Column()); }

oxEditFormatter* oxdmBufFileCellOnFocusRow::AllocateFormatter() const {
    const oxdmColumnBase* column = buffer_->Cursor()->Column(buffer_->ColName(Column()));
    return column ? column->BuildFormatter() : nullptr;
}

void oxdmBufFileCellOnFocusRow::Refresh(bool moveCursor) {
    if (moveCursor) buffer_->MoveCursorToFocus();
    buffer_->RefreshColumn(Column());
}

oxdmBufFileFocusRowMgr::oxdmBufFileFocusRowMgr(oxdmBufferedFileDataSource* buffer)
    : oxdmDSFocusRowMgr(buffer), buffer_(buffer) {}

oxdmDSFocusRowMgr* oxdmBufFileFocusRowMgr::Parent() {
    return buffer_->Parent() ? buffer_->Parent()->QueryRow() : nullptr;
}

oxdmDSFocusRowMgr* oxdmBufFileFocusRowMgr::Root() {
    oxdmDSFocusRowMgr* row = this;
    while (oxdmDSFocusRowMgr* parent = row->Parent()) row = parent;
    return row;
}

oxdmDSFocusRowMgr* oxdmBufFileFocusRowMgr::Node(const CString& label) {
    oxdmBufferedFileDataSource* buffer = buffer_->BufferForNode(label);
    return buffer ? buffer->QueryRow() : nullptr;
}

bool oxdmBufFileFocusRowMgr::MoveCursorToFocus() const { return buffer_->MoveCursorToFocus(); }
void oxdmBufFileFocusRowMgr::Refetch() { buffer_->RefetchRow(); }
void oxdmBufFileFocusRowMgr::RefetchVisibleRows(bool children) { buffer_->RefetchVisibleRows(0, true, children); }
oxioCursor* oxdmBufFileFocusRowMgr::DataCursor() { return buffer_->Cursor()->DataCursor(); }
bool oxdmBufFileFocusRowMgr::ReserveKey() { return buffer_->ReserveKey(); }
void oxdmBufFileFocusRowMgr::ClearFocusRowStateStack() { buffer_->ClearFocusRowStateStack(); }
void oxdmBufFileFocusRowMgr::PopFocusRowState() { buffer_->PopFocusRowState(); }
void oxdmBufFileFocusRowMgr::PushFocusRowState() { buffer_->PushFocusRowState(); }
void oxdmBufFileFocusRowMgr::AttachCondition(short handle) { buffer_->AttachCondition(handle); }
void oxdmBufFileFocusRowMgr::AttachRange(short handle) { buffer_->AttachRange(handle); }
const oxdmFilter& oxdmBufFileFocusRowMgr::Filter() const { return buffer_->Filter(); }
void oxdmBufFileFocusRowMgr::SetFilter(const oxdmFilter& filter) { buffer_->SetFilter(filter); }
void oxdmBufFileFocusRowMgr::SetIndex(short index) { buffer_->SetIndex(index); }
short oxdmBufFileFocusRowMgr::Index() const { return buffer_->Index(); }
