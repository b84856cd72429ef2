#pragma once
// oxdmChildPOBufferedDSRole: the role of a buffer over a persistent object
// cursor. It keeps the focus object's backup before the row is first
// changed or deleted, and marks the row changed when the object says it is
// dirty or was deleted, so that the buffer saves or refetches it. Every
// event answers 0.

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
