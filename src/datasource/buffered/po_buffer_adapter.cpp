// The buffer's face to the object bridge: each question answered by the
// buffer's own operation.

#include "oxdm/datasource/buffered/po_buffer_adapter.h"

#include <cassert>

#include "oxdm/cursor/objects/po_cursor.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/cell_on_focus_row.h"
#include "oxdm/notify/callback_info.h"
#include "oxdm/notify/change.h"

oxdmPOBufferAdapter::oxdmPOBufferAdapter(oxdmBufferedFileDataSource& buffer, oxdmControlMgr* controlMgr)
    : buffer_(buffer), cursor_(dynamic_cast<oxdmPersistentObjectCursor*>(buffer.Cursor())), controlMgr_(controlMgr) {
    assert(cursor_ != nullptr);
    cursor_->SetDataSource(this);
}

oxdmPOBufferAdapter::~oxdmPOBufferAdapter() {
    cursor_->SetDataSource(nullptr);
    buffer_.RemoveCallbacks(this);
}

const CString& oxdmPOBufferAdapter::NodeLabel() const { return buffer_.NodeLabel(); }

// The bridge's callbacks are bound after whatever the application bound,
// so the application's are asked first.
void oxdmPOBufferAdapter::MergeCallbacks(const oxdmCallbackMgr& callbacks) {
    buffer_.RemoveCallbacks(this);
    buffer_.SetCallbacks(this, callbacks, controlMgr_);
}

// While a column event runs, the focus row's new value is the one being
// entered.
bool oxdmPOBufferAdapter::EditedCell(const oxdmCallbackInfo* info, CString& column, const oxData*& value) const {
    const oxdmDSCellOnFocusRow* cell = info != nullptr ? info->CurrentColumn() : nullptr;
    if (cell == nullptr || cell->Column() < 0 || cell->Column() >= buffer_.NumColumns()) return false;
    column = buffer_.ColID(cell->Column());
    value = buffer_.NewValue(cell->Column());
    return value != nullptr;
}

bool oxdmPOBufferAdapter::IsNewRow() const { return buffer_.IsNewRow(); }

short oxdmPOBufferAdapter::IndexForColumn(const CString& name) const { return buffer_.IndexForColumn(name); }

void oxdmPOBufferAdapter::SetReadOnly(short column, bool readOnly) {
    if (column >= 0) buffer_.SetReadOnly(column, readOnly, 0, false);
}

void oxdmPOBufferAdapter::MoveCursorToFocus() { buffer_.MoveCursorToFocus(); }

void oxdmPOBufferAdapter::RefreshCell(short column) {
    if (column >= 0) buffer_.RefreshColumn(column);
}

void oxdmPOBufferAdapter::SendColInvalid(short column) {
    if (column >= 0)
        buffer_.Notify(new mvcColChange(column, &buffer_, oxdmDataSource::DSColInvalid, 0, true), false);
}

void oxdmPOBufferAdapter::Refetch() { buffer_.RefetchRows(0, false); }

bool oxdmPOBufferAdapter::CanDelete() const { return buffer_.CanDeleteRow(); }

void oxdmPOBufferAdapter::ReQuery() { buffer_.ReQuery(); }

long oxdmPOBufferAdapter::NumWindowDataRows() const { return buffer_.NumWindowDataRows(); }

bool oxdmPOBufferAdapter::AppendRow() { return buffer_.AppendRow(); }
