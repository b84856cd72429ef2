#pragma once
// oxdmPOBufferAdapter: the face a buffer shows to the object bridge of the
// persistent object cursor it stands over. Making one links the bridge to
// the buffer (the bridge then hooks its callbacks into the buffer's, bound
// under this adapter); destroying it unbinds them and unlinks the bridge.
//
//     oxdmPersistentObjectCursor cursor(nullptr, set, {"Name", "City"}, 0);
//     oxdmBufferedFileDataSource buffer(nullptr, &cursor);
//     oxdmPOBufferAdapter link(buffer);
//     buffer.SetRole(new oxdmChildPOBufferedDSRole(...));
//     buffer.ReQuery();
//
// Ownership: buffer_ and cursor_ are not owned and must outlive the
// adapter; controlMgr_ is not owned and may be null.

#include "oxdm/cursor/objects/po_buffer_link.h"

class oxdmPersistentObjectCursor;

class oxdmPOBufferAdapter : public oxdmPOBufferLink {
public:
    // REQUIRES: buffer.Cursor() is an oxdmPersistentObjectCursor.
    explicit oxdmPOBufferAdapter(oxdmBufferedFileDataSource& buffer, oxdmControlMgr* controlMgr = nullptr);
    ~oxdmPOBufferAdapter() override;
    oxdmPOBufferAdapter(const oxdmPOBufferAdapter&) = delete;
    oxdmPOBufferAdapter& operator=(const oxdmPOBufferAdapter&) = delete;

    oxdmBufferedFileDataSource* Source() override { return &buffer_; }
    const CString& NodeLabel() const override;
    oxdmControlMgr* RootControlMgr() override { return controlMgr_; }
    void MergeCallbacks(const oxdmCallbackMgr& callbacks) override;
    bool EditedCell(const oxdmCallbackInfo* info, CString& column, const oxData*& value) const override;
    bool IsNewRow() const override;
    short IndexForColumn(const CString& name) const override;
    void SetReadOnly(short column, bool readOnly) override;
    void MoveCursorToFocus() override;
    void RefreshCell(short column) override;
    void SendColInvalid(short column) override;
    void Refetch() override;
    bool CanDelete() const override;
    void ReQuery() override;
    long NumWindowDataRows() const override;
    bool AppendRow() override;

private:
    oxdmBufferedFileDataSource& buffer_;
    oxdmPersistentObjectCursor* cursor_;
    oxdmControlMgr* controlMgr_;
};
