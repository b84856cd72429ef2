#include "oxdm/cursor/objects/po_cursor.h"

#include <cassert>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/message_box.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/objects/po_cursor_bookmark.h"
#include "oxdm/cursor/objects/po_property_column.h"

namespace {

constexpr unsigned kConflictStyle = 20;  // yes and no, stop sign
constexpr unsigned kDeletedStyle = 49;   // OK and Cancel, exclamation

const char kConflictQuestion[] =
    "Data Conflict Error\r\rWhile you were entering data, the same data was being modified by another program. "
    "Only one instance of the data can be saved. Do you want to save the other program's changes?\r\r"
    "Recommended: click [Yes], and then reenter your changes.\r\r"
    "Click [No] to save your changes but permanently lose the changes made by the other program.";
const char kDeletedQuestion[] =
    "This data has been deleted by someone else.\r"
    "Press OK to attempt to insert it again. Otherwise,\r"
    "press Cancel to lose your changes.";

}  // namespace

oxdmPersistentObjectCursor::oxdmPersistentObjectCursor(IUnknown* factory, IUnknown* container,
                                                       const std::vector<CString>& properties, int style,
                                                       const CString& id)
    : id_(id) {
    Initialize(factory, container, properties, nullptr, style, CreateFunctor());
}

oxdmPersistentObjectCursor::oxdmPersistentObjectCursor(IUnknown* factory, IUnknown* container,
                                                       const std::vector<CString>& properties,
                                                       const CreateFunctor& create, const CString& id)
    : id_(id) {
    Initialize(factory, container, properties, nullptr, 0, create);
}

oxdmPersistentObjectCursor::oxdmPersistentObjectCursor(IUnknown* factory, IUnknown* container,
                                                       IUnknown* typeInfoOwner, const _GUID* iid)
    : id_("PO") {
    ATL::CComPtr<IUnknown> typeInfo;
    if (typeInfoOwner != nullptr)
        typeInfoOwner->QueryInterface(iid != nullptr ? *iid : IPropertyTypeInfoCollection::kIID,
                                      reinterpret_cast<void**>(&typeInfo));
    Initialize(factory, container, {}, typeInfo, 0, CreateFunctor());
}

oxdmPersistentObjectCursor::oxdmPersistentObjectCursor(IUnknown* factory, IUnknown* container,
                                                       IUnknown* typeInfoOwner, const CreateFunctor& create)
    : id_("PO") {
    Initialize(factory, container, {}, PoQuery<IPropertyTypeInfoCollection>(typeInfoOwner), 0, create);
}

oxdmPersistentObjectCursor::~oxdmPersistentObjectCursor() = default;

void oxdmPersistentObjectCursor::Initialize(IUnknown* factory, IUnknown* container,
                                            const std::vector<CString>& properties, IUnknown* typeInfo, int style,
                                            const CreateFunctor& create) {
    bridge_ = std::make_unique<_oxdmPOCOMBridge>(this, factory, container, properties, typeInfo, style, create);
}

bool oxdmPersistentObjectCursor::Moved(bool moved) {
    if (moved) Refresh();
    return moved;
}

bool oxdmPersistentObjectCursor::First(bool) { return Moved(bridge_->First()); }
bool oxdmPersistentObjectCursor::Last(bool) { return Moved(bridge_->Last()); }
bool oxdmPersistentObjectCursor::Prev(bool) { return Moved(bridge_->Prev()); }
bool oxdmPersistentObjectCursor::Next(bool) { return Moved(bridge_->Next()); }

long oxdmPersistentObjectCursor::Next(long rows, bool) {
    const long moved = bridge_->Next(rows);
    if (moved != 0) Refresh();
    return moved;
}

bool oxdmPersistentObjectCursor::EQ(bool) { return !SortColumns().empty() && Moved(bridge_->EQ()); }
bool oxdmPersistentObjectCursor::GE(bool) { return !SortColumns().empty() && Moved(bridge_->GE()); }
bool oxdmPersistentObjectCursor::GT(bool) { return !SortColumns().empty() && Moved(bridge_->GT()); }

double oxdmPersistentObjectCursor::GetRelativePosition() { return bridge_->GetRelativePosition(); }

short oxdmPersistentObjectCursor::SetRelativePosition(double position) {
    const short result = bridge_->SetRelativePosition(position);
    if (result == 0) {
        Refresh();
        if (!bridge_->OnObject()) Last(false);
    }
    return result;
}

void oxdmPersistentObjectCursor::MoveToIter(IUnknown* iterator) {
    bridge_->MoveToIter(iterator);
    Refresh();
}

void oxdmPersistentObjectCursor::Refresh() {
    SetChanged(false);
    bridge_->Load();
}

void oxdmPersistentObjectCursor::Refresh(bool, bool) { Refresh(); }

bool oxdmPersistentObjectCursor::SetNewValueToFocusRowObjectProperty(const CString& property, oxData* value) {
    return bridge_->SetNewValueToFocusRowObjectProperty(property, value);
}

const std::vector<oxdmColumnDef*>& oxdmPersistentObjectCursor::SortColumns() const { return bridge_->SortColumns(); }

bool oxdmPersistentObjectCursor::_DoAgain(oxioStatus::Status status) {
    if (status == oxioStatus::DataConflict) {
        // Yes keeps the other program's data; No saves the user's over it.
        return oxdmTaskMessageBox(nullptr, kConflictQuestion, kConflictStyle) == oxdmBox::IdNo;
    }
    TaskWindowLookup::PreModalDialogCall(nullptr, GetTopmostAppWindow());
    oxdmMessageBox box(kDeletedQuestion, "Data Conflict!", kDeletedStyle);
    TaskWindowLookup::PostModalDialogCall();
    return box.isOk();
}

void oxdmPersistentObjectCursor::Settle() {
    SetChanged(false);
    Refresh();
    bridge_->ResetObject();
}

oxioStatus::Status oxdmPersistentObjectCursor::Save(CString& error, bool force, bool isNew) {
    if (!Changed()) {
        auto object = PoQuery<IPOObject>(bridge_->FocusRowObject());
        short dirty = VARIANT_FALSE;
        if (!object || PoFailed(object->IsDirty(&dirty))) throw CString("Failed to call IsDirty()");
        if (dirty == VARIANT_FALSE && !force) return oxioStatus::Success;
    }
    oxioStatus::Status status = bridge_->Save();
    if (status == oxioStatus::DataConflict || status == oxioStatus::InvalidKey) {
        if (_DoAgain(status)) {
            status = status == oxioStatus::DataConflict ? bridge_->Overwrite() : bridge_->Reinsert();
            if (status == oxioStatus::Success) Settle();
        } else {
            Settle();
            return status;
        }
    }
    if (status != oxioStatus::Success)
        error = CString("Could not ") + (isNew ? "insert" : "update") + " the change(s) because " +
                bridge_->ErrorText();
    else
        SetChanged(false);
    return status;
}

oxioStatus::Status oxdmPersistentObjectCursor::Insert(CString& error, bool) { return Save(error, false, true); }

oxioStatus::Status oxdmPersistentObjectCursor::Update(CString& error, int, bool, bool force) {
    return Save(error, force, false);
}

oxioStatus::Status oxdmPersistentObjectCursor::InsertOrUpdate(CString& error, bool) {
    return Save(error, false, !bridge_->OnObject());
}

oxioStatus::Status oxdmPersistentObjectCursor::UpdateOrInsert(CString& error, bool) {
    return Save(error, false, !bridge_->OnObject());
}

void oxdmPersistentObjectCursor::Revert(bool refresh) {
    if (!Changed()) return;
    if (refresh) Refresh();
    SetChanged(false);
}

bool oxdmPersistentObjectCursor::Delete(CString& error, oxdmRollbackStack*, mvcSubject*, bool) {
    if (bridge_->Delete()) return true;
    error = "Could not delete the data because " + bridge_->ErrorText();
    return false;
}

bool oxdmPersistentObjectCursor::DeleteAll(CString&, oxdmRollbackStack*, mvcSubject*) { return false; }

void oxdmPersistentObjectCursor::Clear(bool, bool) { bridge_->ClearValues(); }

void oxdmPersistentObjectCursor::Columns(std::vector<oxdmColumnBase*>& out) const {
    for (oxdmPOPropertyColumn* column : bridge_->Columns()) out.push_back(column);
}

oxdmColumnBase* oxdmPersistentObjectCursor::Column(const CString& id) const {
    for (oxdmPOPropertyColumn* column : bridge_->Columns())
        if (column->ID().CompareNoCase(id.c_str()) == 0) return column;
    return nullptr;
}

void oxdmPersistentObjectCursor::SetFilter(const oxdmFilter& filter) { filter_ = filter; }

oxdmCursorNode* oxdmPersistentObjectCursor::Node(const oxdmTableDef* table) const {
    return table == nullptr ? const_cast<oxdmPersistentObjectCursor*>(this) : nullptr;
}

oxdmCursorBookmark* oxdmPersistentObjectCursor::CreateBookmark() {
    return new oxdmPersistentObjectCursorBookmark(this, bridge_->Iterator());
}
