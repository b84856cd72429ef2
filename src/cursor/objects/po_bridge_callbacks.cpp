// The object bridge and its buffer: the callbacks it hooks, the focus row's
// object with its events, and its backup.

#include "oxdm/common/shell/task.h"
#include "oxdm/cursor/objects/po_bridge.h"
#include "oxdm/cursor/objects/po_buffer_link.h"
#include "oxdm/cursor/objects/type_converters.h"
#include "oxdm/notify/callback_mgr.h"

void _oxdmPOCOMBridge::SetBufferLink(oxdmPOBufferLink* buffer) {
    link = buffer;
    if (link == nullptr) return;
    using Functor = oxdmCallbackMgr::Functor;
    oxdmCallbackMgr callbacks(link->RootControlMgr());
    for (const CString& name : properties) {
        callbacks.SetColCallback(name, oxdmColCallbacks::cbColBeforeChange,
                                 Functor([this](oxdmCallbackInfo* info) { return PropertyValidation(info); }));
        callbacks.SetColCallback(name, oxdmColCallbacks::cbColAfterChange,
                                 Functor([this](oxdmCallbackInfo* info) { return StoreProperty(info); }));
    }
    const CString& node = link->NodeLabel();
    callbacks.SetRowCallback(node, oxdmRowCallbacks::cbRowValidate,
                             Functor([this](oxdmCallbackInfo* info) { return ObjectValidation(info); }));
    callbacks.SetRowCallback(node, oxdmRowCallbacks::cbFocusRowMoved,
                             Functor([this](oxdmCallbackInfo* info) { return FocusMoved(info); }));
    callbacks.SetRowCallback(node, oxdmRowCallbacks::cbRowAfterRevert,
                             Functor([this](oxdmCallbackInfo* info) { return RowReverted(info); }));
    link->MergeCallbacks(callbacks);
}

void _oxdmPOCOMBridge::ReleaseFocusObject() {
    if (propertyCookie != 0)
        if (auto props = PoQuery<IPOProperties>(focusObject)) props->Unadvise(propertyCookie);
    propertyCookie = 0;
    focusObject.Release();
}

void _oxdmPOCOMBridge::AdviseFocusObject() {
    if (auto props = PoQuery<IPOProperties>(focusObject))
        if (PoFailed(props->Advise(static_cast<INamedPropertyEvents2*>(sink.get()), &propertyCookie)))
            propertyCookie = 0;
}

ATL::CComPtr<IUnknown> _oxdmPOCOMBridge::FocusRowObject() {
    if (!focusObject) {
        if (IsNewRow()) {
            focusObject = Create();
        } else {
            if (link != nullptr) link->MoveCursorToFocus();
            ReleaseFocusObject();
            focusObject = CurrentObject();
        }
        AdviseFocusObject();
    }
    return focusObject;
}

void _oxdmPOCOMBridge::BackupFocusRowObject() {
    if (backupObject) return;
    ATL::CComPtr<IUnknown> object = FocusRowObject();
    auto cloneable = PoQuery<IPOCloneable>(object);
    if (!cloneable || !PoQuery<IPOSetEdit>(objectSet)) return;
    if (PoFailed(cloneable->Clone(&backupObject)) || !backupObject) {
        backupObject.Release();
        throw CString("Unable to Clone FocusRowObject!");
    }
}

bool _oxdmPOCOMBridge::SetNewValueToFocusRowObjectProperty(const CString& property, const oxData* value) {
    auto it = indexOfName.find(property);
    if (it == indexOfName.end()) return false;
    const oxApp* main = OXGetMainApp();
    if (main != nullptr && main->Code() == "SM" && backupObject && !focusObject) focusObject = CurrentObject();
    auto props = PoQuery<IPOProperties>(focusObject ? focusObject : FocusRowObject());
    ATL::CComVariant variant;
    if (!props || !oxPOTypeConverters::OXDataToVariant(types[static_cast<size_t>(it->second)], value, variant))
        return false;
    return !PoFailed(props->SetProperty(property, variant));
}

int _oxdmPOCOMBridge::PropertyValidation(oxdmCallbackInfo* info) {
    CString name;
    const oxData* value = nullptr;
    auto it = indexOfName.end();
    if (!link->EditedCell(info, name, value) || (it = indexOfName.find(name)) == indexOfName.end()) return 0;
    BackupFocusRowObject();
    ATL::CComVariant variant;
    oxPOTypeConverters::OXDataToVariant(types[static_cast<size_t>(it->second)], value, variant);
    auto props = PoQuery<IPOProperties>(FocusRowObject());
    ATL::CComPtr<IUnknown> errors;
    short ok = VARIANT_FALSE;
    if (!props || PoFailed(props->IsValidValueForProperty(name, variant, &errors, &ok)))
        throw CString("IsValidValueForProperty Failed!");
    if (ok == VARIANT_FALSE && propertyFailureCB) propertyFailureCB(info, errors);
    return ok == VARIANT_FALSE ? 1 : 0;
}

int _oxdmPOCOMBridge::StoreProperty(oxdmCallbackInfo* info) {
    CString name;
    const oxData* value = nullptr;
    if (link->EditedCell(info, name, value)) SetNewValueToFocusRowObjectProperty(name, value);
    return 0;
}

int _oxdmPOCOMBridge::ObjectValidation(oxdmCallbackInfo* info) {
    auto face = PoQuery<IPOObject>(FocusRowObject());
    short dirty = VARIANT_FALSE;
    if (!face || PoFailed(face->IsDirty(&dirty)) || dirty != VARIANT_TRUE) return 0;
    ATL::CComPtr<IUnknown> errors;
    short ok = VARIANT_FALSE;
    if (PoFailed(face->Validate(&errors, &ok)) || ok != VARIANT_FALSE || !errors) return 0;
    if (objectFailureCB) objectFailureCB(info, errors);
    if (auto found = PoQuery<IPOValidationErrors>(errors)) {
        long count = 0;
        found->Count(&count);
        for (long i = 0; i < count; ++i) {
            CString property;
            if (PoFailed(found->Property(i, &property)) || indexOfName.count(property) == 0) continue;
            link->SendColInvalid(link->IndexForColumn(property));
            break;
        }
    }
    return 1;
}

int _oxdmPOCOMBridge::FocusMoved(oxdmCallbackInfo*) {
    backupObject.Release();
    ReleaseFocusObject();
    ATL::CComPtr<IUnknown> object = FocusRowObject();
    if (IsNewRow()) {
        if (auto face = PoQuery<IPOObject>(object)) PoFailed(face->Reset());
    } else {
        focusIterator.Release();
        if (iterator) iterator->Clone(&focusIterator);
    }
    return 0;
}

int _oxdmPOCOMBridge::RowReverted(oxdmCallbackInfo* info) {
    auto setEdit = PoQuery<IPOSetEdit>(objectSet);
    auto restore = PoQuery<IPOSetRestore>(objectSet);
    if (!setEdit || !restore || !backupObject) return FocusMoved(info);
    ReleaseFocusObject();
    ATL::CComPtr<IUnknown> restored;
    if (PoFailed(restore->Restore(backupObject, &restored)) || !restored) return FocusMoved(info);
    backupObject.Release();
    focusObject = restored;
    AdviseFocusObject();
    if (IsNewRow()) {
        if (auto face = PoQuery<IPOObject>(focusObject)) PoFailed(face->Reset());
        return 0;
    }
    long index = 0;
    if (PoFailed(setEdit->Add(focusObject, &index))) throw CString("Could not add object to set!");
    // The buffer read the row before the backup stood in again: show it.
    Load();
    for (const CString& name : properties) link->RefreshCell(link->IndexForColumn(name));
    return 0;
}
