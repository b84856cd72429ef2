#pragma once
// oxdmChildPOBufferedDSRole: the role of a buffer over a persistent object
// cursor, for an application to install. It asks for the focus object's
// backup before a cell changes and before a delete, and keeps the row marked
// changed: when the flag is cleared (RowDirtyChanged) or the row's object
// was deleted (RowAfterDelete) it sets it again, because the edits live in
// the object itself until it is saved or reverted. The bridge takes the
// backup on its own before each edit, so a buffer without the role reverts
// as well; the role's requests find it taken. Every event answers 0.

#include "oxdm/datasource/buffered/role.h"

class oxdmBufferedFileDataSourceImpl;

class oxdmChildPOBufferedDSRole : public oxdmBufferedDataSourceRole {
public:
    // REQUIRES: impl != nullptr and its cursor is an oxdmPersistentObjectCursor.
    explicit oxdmChildPOBufferedDSRole(oxdmBufferedFileDataSourceImpl* impl);

    int DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent* msg) override;
    int DoHandleColEvent(oxdmDataSource::Event event, short col, oxdmDSCellOnFocusRow* cell) override;

private:
    void BackupFocusRowObject();

    // Not owned: the buffer owns the role and outlives it.
    oxdmBufferedFileDataSourceImpl* impl_;
};
