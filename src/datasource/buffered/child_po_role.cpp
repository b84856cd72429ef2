#include "oxdm/datasource/buffered/child_po_role.h"

#include <cassert>

#include "oxdm/cursor/objects/po_cursor.h"
#include "oxdm/datasource/buffered/buffered_impl.h"

oxdmChildPOBufferedDSRole::oxdmChildPOBufferedDSRole(oxdmBufferedFileDataSourceImpl* impl) : impl_(impl) {
    assert(impl_ != nullptr && dynamic_cast<oxdmPersistentObjectCursor*>(impl_->Cursor()) != nullptr);
}

void oxdmChildPOBufferedDSRole::BackupFocusRowObject() {
    static_cast<oxdmPersistentObjectCursor*>(impl_->Cursor())->BackupFocusRowObject();
}

int oxdmChildPOBufferedDSRole::DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent*) {
    switch (event) {
        case oxdmDataSource::RowBeforeDelete:
            BackupFocusRowObject();
            break;
        case oxdmDataSource::RowAfterDelete:
        case oxdmDataSource::RowDirtyChanged:
            impl_->SetRowChanged(true);
            break;
        default:
            break;
    }
    return 0;
}

int oxdmChildPOBufferedDSRole::DoHandleColEvent(oxdmDataSource::Event event, short, oxdmDSCellOnFocusRow*) {
    if (event == oxdmDataSource::ColBeforeChange) BackupFocusRowObject();
    return 0;
}
