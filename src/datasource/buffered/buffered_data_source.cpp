#include "oxdm/datasource/buffered/buffered_data_source.h"

#include "oxdm/base/exception.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/record/file_manager.h"

oxdmBufferedFileDataSource::oxdmBufferedFileDataSource(oxdmBufferedFileDataSource* parent, oxdmCursorNode* cursor) {
    new oxdmBufferedFileDataSourceImpl(this, parent, cursor, false, false);
}

oxdmBufferedFileDataSource::oxdmBufferedFileDataSource(oxdmBufferedFileDataSource* parent, oxdmCursorNode* cursor,
                                                       bool autoNewRow) {
    new oxdmBufferedFileDataSourceImpl(this, parent, cursor, true, autoNewRow);
}

oxdmBufferedFileDataSource::oxdmBufferedFileDataSource(const oxdmQuery* query, oxTask* task, short file) {
    new oxdmBufferedFileDataSourceImpl(this, query, task, new oxdmFileManager(task, file), true);
}

oxdmBufferedFileDataSource::oxdmBufferedFileDataSource(const oxdmQuery* query, oxTask* task, oxdmFileManager* files) {
    new oxdmBufferedFileDataSourceImpl(this, query, task, files, false);
}

oxdmBufferedFileDataSource::~oxdmBufferedFileDataSource() { delete impl_; }

void oxdmBufferedFileDataSource::SetImpl(oxdmDataSourceImplBase* impl) {
    if (auto* buffered = dynamic_cast<oxdmBufferedFileDataSourceImpl*>(impl)) impl_ = buffered;
}

const oxdmFilterColumn& oxdmBufferedFileDataSource::FilterColumn(const CString& id) const {
    const oxdmDSColumnBase* column = Column(id);
    if (column == nullptr) throw oxdmException("The data source " + NodeLabel() + " has no column " + id + ".");
    return *column;
}
