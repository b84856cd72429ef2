#pragma once
// oxdmPersistentObjectCursor: a cursor node over a set of persistent
// objects, as a flat table: a row is an object, a column one of its named
// properties, the current row the object under the bridge's iterator. The
// table's order is the set's sort; EQ, GE and GT find by the values the node
// holds for the sort's properties. Everything that touches the objects goes
// through the bridge; this class adds the questions of a save that met a
// conflict or a deleted object.
//
// The node is a leaf: no parent, children, file, task, attachments,
// rollback, ranges or conditions. Its changed flag is the row's dirty flag.
//
// Ownership: the node owns its bridge. Failures of set-up and finding are
// thrown as CString (see _oxdmPOCOMBridge).

#include <memory>
#include <vector>

#include "oxdm/cursor/cursor_node.h"
#include "oxdm/cursor/objects/po_bridge.h"
#include "oxdm/query/filter.h"

class oxdmPOPropertyColumn;

class oxdmPersistentObjectCursor : public oxdmCursorNode {
public:
    using CreateFunctor = _oxdmPOCOMBridge::CreateFunctor;
    using FailureFunctor = _oxdmPOCOMBridge::FailureFunctor;

    // Columns of the named properties, each of `style`.
    oxdmPersistentObjectCursor(IUnknown* factory, IUnknown* container, const std::vector<CString>& properties,
                               int style, const CString& id = "PO");
    // The same, with a maker of new objects for when the set can't.
    oxdmPersistentObjectCursor(IUnknown* factory, IUnknown* container, const std::vector<CString>& properties,
                               const CreateFunctor& create, const CString& id = "PO");
    // Columns of every property that the type information owner's face
    // `iid` (an IPropertyTypeInfoCollection; null for that interface) lists.
    oxdmPersistentObjectCursor(IUnknown* factory, IUnknown* container, IUnknown* typeInfoOwner, const _GUID* iid);
    oxdmPersistentObjectCursor(IUnknown* factory, IUnknown* container, IUnknown* typeInfoOwner,
                               const CreateFunctor& create);
    ~oxdmPersistentObjectCursor() override;

    bool CanInsert() const override { return true; }
    bool CanDelete() const override { return true; }
    bool CanUpdate() const override { return true; }
    using oxdmCursorNode::CanUpdate;
    const CString& ID() const override { return id_; }

    bool First(bool children) override;
    bool Prev(bool children) override;
    long Next(long rows, bool children) override;
    bool Next(bool children) override;
    bool Last(bool children) override;
    bool EQ(bool children) override;
    bool GE(bool children) override;
    bool GT(bool children) override;

    oxioStatus::Status Insert(CString& error, bool checkRights) override;
    oxioStatus::Status Update(CString& error, int flags, bool checkRights, bool force) override;
    oxioStatus::Status InsertOrUpdate(CString& error, bool checkRights) override;
    oxioStatus::Status UpdateOrInsert(CString& error, bool checkRights) override;
    const std::vector<oxdmColumnDef*>& SortColumns() const override;
    void Revert(bool refresh) override;
    void Refresh(bool oneToOnes, bool oneToManys) override;
    bool Delete(CString& error, oxdmRollbackStack* stack, mvcSubject* subject, bool keepPosition) override;
    // Not supported: false.
    bool DeleteAll(CString& error, oxdmRollbackStack* stack, mvcSubject* subject) override;
    double GetRelativePosition() override;
    short SetRelativePosition(double position) override;
    void StuffSourceKey(bool, bool) override {}
    void Clear(bool oneToOnes, bool oneToManys) override;
    void Columns(std::vector<oxdmColumnBase*>& out) const override;
    const oxdmFilter& Filter() const override { return filter_; }
    void SetFilter(const oxdmFilter& filter) override;
    short Index() const override { return index_; }
    void SetIndex(short index) override { index_ = index; }
    oxdmCursorNode* Node(const oxdmTableDef* table) const override;
    oxdmCursorBookmark* CreateBookmark() override;
    oxdmColumnBase* Column(const CString& id) const override;

    // Makes a clone of `iterator` current and loads its object.
    void MoveToIter(IUnknown* iterator);
    // Clears the changed flag and loads the current object's values.
    void Refresh();
    void SetDataSource(oxdmPOBufferLink* link) { bridge_->SetBufferLink(link); }
    void SetPropertyValidationFailureCB(const FailureFunctor& cb) { bridge_->SetPropertyValidationFailureCB(cb); }
    void SetObjectValidationFailureCB(const FailureFunctor& cb) { bridge_->SetObjectValidationFailureCB(cb); }
    ATL::CComPtr<IUnknown> FocusRowObject() { return bridge_->FocusRowObject(); }
    bool SetNewValueToFocusRowObjectProperty(const CString& property, oxData* value);
    void ReplacePOSet(IUnknown* container) { bridge_->ReplacePOSet(container); }
    void BackupFocusRowObject() { bridge_->BackupFocusRowObject(); }
    _oxdmPOCOMBridge& Bridge() { return *bridge_; }

protected:
    // Makes the bridge; the constructors' shared body.
    virtual void Initialize(IUnknown* factory, IUnknown* container, const std::vector<CString>& properties,
                            IUnknown* typeInfo, int style, const CreateFunctor& create);

private:
    // The save of the focus object with its questions; `isNew` picks the
    // words of a failure.
    oxioStatus::Status Save(CString& error, bool force, bool isNew);
    // Asks whether to write anyway after status 20 (conflict) or 13 (gone).
    bool _DoAgain(oxioStatus::Status status);
    // Ends a save that the user let go or that went through again.
    void Settle();
    // Refreshes when `moved`; answers it.
    bool Moved(bool moved);

    // id_ names the node; index_ is only stored; filter_ is only stored (the
    // set filters); bridge_ is owned and made by Initialize.
    CString id_;
    short index_ = 0;
    oxdmFilter filter_;
    std::unique_ptr<_oxdmPOCOMBridge> bridge_;
};
