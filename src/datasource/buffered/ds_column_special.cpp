#include "oxdm/datasource/buffered/ds_column_special.h"

#include "oxdm/common/store/attachments.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/notify/callback_mgr.h"

oxdmDSColumnCallback::oxdmDSColumnCallback(const ColumnCB& read, const ColumnCB& write, const CString& id,
                                           oxdmBufferedFileDataSource& source, int style, const oxData* defaultValue)
    : oxdmDSColumnBase(id, source, style, defaultValue), read_(read), write_(write) {}

oxData* oxdmDSColumnCallback::CurrentVal() const {
    oxData* value = Val();
    if (read_) read_(const_cast<oxdmDSColumnCallback&>(*this), *value);
    return value;
}

oxdmDSColumnAttachments::oxdmDSColumnAttachments(const CString& id, oxdmBufferedFileDataSource& source,
                                                 oxioCursor& cursor, int style)
    : oxdmDSColumnBase(id, source, style, nullptr), attachments_(std::make_unique<oxioAttachments>(cursor)) {
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetRowCallback(source.NodeLabel(), oxdmRowCallbacks::cbRowAfterWrite,
                       makeFunctor(static_cast<oxdmCallbackMgr::Functor*>(nullptr), *this,
                                   &oxdmDSColumnAttachments::RowSaved));
    mgr.SetRowCallback(source.NodeLabel(), oxdmRowCallbacks::cbRowAfterRevert,
                       makeFunctor(static_cast<oxdmCallbackMgr::Functor*>(nullptr), *this,
                                   &oxdmDSColumnAttachments::RowReverted));
    source.SetCallbacks(this, mgr, nullptr);
}

oxdmDSColumnAttachments::~oxdmDSColumnAttachments() = default;

oxData* oxdmDSColumnAttachments::CurrentVal() const {
    oxData* value = Val();
    value->SetVal(oxBool(attachments_->Find()));
    return value;
}

oxData* oxdmDSColumnAttachments::CreateDefaultValue() const { return new oxBool(false); }

int oxdmDSColumnAttachments::RowSaved(oxdmCallbackInfo*) {
    if (needsSaving_) {
        attachments_->Write();
        attachments_->Clear();
        needsSaving_ = false;
    }
    return 0;
}

int oxdmDSColumnAttachments::RowReverted(oxdmCallbackInfo*) {
    if (needsSaving_) {
        attachments_->Clear();
        needsSaving_ = false;
        DataSource().RefreshColumn(DataSource().IndexForColumn(ID()));
    }
    return 0;
}

_oxdmVoidColumn::_oxdmVoidColumn(const CString& id, oxdmBufferedFileDataSource& source, const oxData* defaultValue,
                                 const CString& fileName)
    : oxdmDSColumnBase(id, source, StyleReadOnly, defaultValue), fileName_(fileName) {}
