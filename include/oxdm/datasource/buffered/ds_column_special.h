#pragma once
// The live columns that read no table field: a column read through the
// application's callback, a column that tells whether the record under the
// cursor has attached documents, and the void column that stands in for a
// custom field the data file lacks.

#include <memory>

#include "oxdm/base/functor.h"
#include "oxdm/datasource/buffered/ds_column.h"

class oxdmCallbackInfo;
class oxioAttachments;
class oxioCursor;

// Reads its value through `read`, called with the column and its scratch
// value on every read. The write function is kept for the application; the
// column never calls it. Both functors are copies held by value.
class oxdmDSColumnCallback : public oxdmDSColumnBase {
public:
    using ColumnCB = CBFunctor2<oxdmDSColumnCallback&, oxData&>;

    oxdmDSColumnCallback(const ColumnCB& read, const ColumnCB& write, const CString& id,
                         oxdmBufferedFileDataSource& source, int style, const oxData* defaultValue);

    using oxdmDSColumnBase::operator=;
    const ColumnCB& ReadCB() const { return read_; }
    void SetReadCB(const ColumnCB& read) { read_ = read; }
    const ColumnCB& WriteCB() const { return write_; }
    void SetWriteCB(const ColumnCB& write) { write_ = write; }

protected:
    oxData* CurrentVal() const override;

private:
    ColumnCB read_;
    ColumnCB write_;
};

// An oxBool: whether the record under the cursor has attachments. It binds
// itself to the buffer's RowAfterWrite and RowAfterRevert callbacks to write
// or drop what was attached while the row was edited.
//
// Invariants: attachments_ is owned and never null; needsSaving_ is set by
// NeedsSaving() and cleared when the row is saved or reverted.
class oxdmDSColumnAttachments : public oxdmDSColumnBase {
public:
    // REQUIRES: `cursor` outlives the column.
    oxdmDSColumnAttachments(const CString& id, oxdmBufferedFileDataSource& source, oxioCursor& cursor, int style);
    ~oxdmDSColumnAttachments() override;

    using oxdmDSColumnBase::operator=;
    oxioAttachments& Attachments() const { return *attachments_; }
    void NeedsSaving() { needsSaving_ = true; }

protected:
    oxData* CurrentVal() const override;
    oxData* CreateDefaultValue() const override;

private:
    int RowSaved(oxdmCallbackInfo* info);
    int RowReverted(oxdmCallbackInfo* info);

    std::unique_ptr<oxioAttachments> attachments_;
    bool needsSaving_ = false;
};

// A read-only column that holds nothing: what a buffer gets for a custom
// field that its data file lacks.
class _oxdmVoidColumn : public oxdmDSColumnBase {
public:
    _oxdmVoidColumn(const CString& id, oxdmBufferedFileDataSource& source, const oxData* defaultValue,
                    const CString& fileName);

    using oxdmDSColumnBase::operator=;
    const CString& FileName() const { return fileName_; }

private:
    CString fileName_;
};
