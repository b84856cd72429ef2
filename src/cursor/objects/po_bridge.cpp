// The object bridge at work: moving, loading, saving, deleting, creating,
// finding, and the events of the set and of the focus object.

#include "oxdm/cursor/objects/po_bridge.h"

#include <cassert>
#include <memory>

#include "oxdm/base/abort.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/cursor/objects/po_buffer_link.h"
#include "oxdm/cursor/objects/po_factory.h"
#include "oxdm/cursor/objects/po_property_column.h"
#include "oxdm/cursor/objects/type_converters.h"
#include "oxdm/record/column_def.h"

bool PoFailed(HRESULT hr) {
    if (hr == E_ABORT || hr == PO_E_ABORT_STORE) {
        CString text;
        if (!PoGetErrorInfo(text) || text.IsEmpty()) text = "Unknown abort.";
        x_abort(0, text.c_str(), nullptr, 0);
    }
    return FAILED(hr);
}

HRESULT CPOComBridgeEventSink::OnPropertyChanged(const CString& name, const ATL::CComVariant& value) {
    return bridge_ != nullptr ? bridge_->OnPropertyChanged(name, value) : S_OK;
}
HRESULT CPOComBridgeEventSink::OnPropertyChanging() {
    return bridge_ != nullptr ? bridge_->OnPropertyChanging() : S_OK;
}
HRESULT CPOComBridgeEventSink::OnSortChanged(IStringCollection* properties) {
    return bridge_ != nullptr ? bridge_->OnSortChanged(properties) : S_OK;
}
HRESULT CPOComBridgeEventSink::OnFilterChanged() { return bridge_ != nullptr ? bridge_->OnFilterChanged() : S_OK; }

_oxdmPOCOMBridge::~_oxdmPOCOMBridge() {
    UnadviseContainer();
    ReleaseFocusObject();
    sink->Disconnect();
}

int _oxdmPOCOMBridge::TypeOf(const oxdmColumnDef* column) const {
    for (size_t i = 0; i < columnDefs.size(); ++i)
        if (columnDefs[i] == column) return types[i];
    return -1;
}

bool _oxdmPOCOMBridge::IsNewRow() const { return link != nullptr && link->IsNewRow(); }

ATL::CComPtr<IUnknown> _oxdmPOCOMBridge::CurrentObject() {
    ATL::CComPtr<IUnknown> object;
    if (iterator && PoFailed(iterator->Current(&object))) object.Release();
    return object;
}

bool _oxdmPOCOMBridge::OnObject() { return static_cast<bool>(CurrentObject()); }

bool _oxdmPOCOMBridge::First() {
    iterator.Release();
    if (PoFailed(objectSet->Begin(&iterator))) throw CString("Error occurred retrieving the beginning of the container.");
    return OnObject();
}

bool _oxdmPOCOMBridge::Last() {
    iterator.Release();
    if (PoFailed(objectSet->End(&iterator))) throw CString("Error occurred retrieving the end of the container.");
    return OnObject();
}

bool _oxdmPOCOMBridge::Prev() {
    short moved = VARIANT_FALSE;
    return iterator && !PoFailed(iterator->Prev(&moved)) && moved != VARIANT_FALSE;
}

bool _oxdmPOCOMBridge::Next() {
    short moved = VARIANT_FALSE;
    return iterator && !PoFailed(iterator->Next(&moved)) && moved != VARIANT_FALSE;
}

long _oxdmPOCOMBridge::Next(long count) {
    long moved = 0;
    if (count >= 0) {
        while (moved < count && Next()) ++moved;
        return moved;
    }
    while (moved > count && Prev()) --moved;
    return moved;
}

double _oxdmPOCOMBridge::GetRelativePosition() {
    double percent = 0.0;
    if (!iterator || PoFailed(iteratorPosition->GetRelativePosition(iterator, &percent))) return 0.0;
    return percent;
}

short _oxdmPOCOMBridge::SetRelativePosition(double percent) {
    ATL::CComPtr<IPersistentObject> moved;
    if (PoFailed(iteratorPosition->SetRelativePosition(percent, &moved)) || !moved) return 1;
    iterator = moved;
    return 0;
}

void _oxdmPOCOMBridge::MoveToIter(IUnknown* position) {
    iterator = PoQuery<IPersistentObject>(position);
}

void _oxdmPOCOMBridge::Load() {
    // The cursor reads whichever row the buffer fetches, not only the focus
    // row: the new row's object stands in only where there is no iterator.
    ATL::CComPtr<IUnknown> object = iterator ? CurrentObject() : IsNewRow() ? FocusRowObject() : nullptr;
    auto props = PoQuery<IPOProperties>(object);
    if (!props) return;
    for (const auto& [name, index] : indexOfName) {
        short readOnly = VARIANT_FALSE;
        ATL::CComVariant value;
        if (PoFailed(props->GetProperty(name, &readOnly, &value))) continue;
        const oxdmColumnDef* column = columnDefs[static_cast<size_t>(index)];
        oxPOTypeConverters::VariantToOXData(types[static_cast<size_t>(index)], value, cursor->DatumForColumn(column));
        if (link != nullptr) link->SetReadOnly(link->IndexForColumn(name), readOnly == VARIANT_TRUE);
    }
}

void _oxdmPOCOMBridge::ClearValues() {
    for (const oxdmColumnDef* column : columnDefs) cursor->DatumForColumn(column)->SetVal(CString(), nullptr);
}

oxioStatus::Status _oxdmPOCOMBridge::StatusOf(HRESULT hr) {
    if (!PoFailed(hr)) return oxioStatus::Success;
    if (hr == PO_E_CONFLICT) return oxioStatus::DataConflict;
    if (hr == PO_E_GONE) return oxioStatus::InvalidKey;
    return oxioStatus::IOError;
}

oxioStatus::Status _oxdmPOCOMBridge::Save() {
    const bool newRow = IsNewRow();
    ATL::CComPtr<IUnknown> object = FocusRowObject();
    auto setEdit = PoQuery<IPOSetEdit>(objectSet);
    HRESULT hr = E_FAIL;
    if (setEdit && newRow) {
        long index = 0;
        hr = setEdit->Add(object, &index);
        if (SUCCEEDED(hr))
            if (auto face = PoQuery<IPOObject>(object)) face->Reset();
    } else if (auto face = PoQuery<IPOObject>(object)) {
        hr = face->Save();
    }
    const oxioStatus::Status status = StatusOf(hr);
    if (status != oxioStatus::Success) return status;
    // What was saved is what a later revert goes back to: the next edit
    // takes the backup afresh.
    backupObject.Release();
    if (newRow && !focusIterator && link != nullptr) link->Refetch();
    // An object stored for the first time (or afresh) stands wherever the
    // set puts it; the buffer takes the saved row's bookmark from the
    // iterator, so the iterator goes there.
    if (PoQuery<IPOObject>(CurrentObject()) != PoQuery<IPOObject>(object)) MoveIteratorTo(object);
    if (newRow && iterator) {
        focusIterator.Release();
        iterator->Clone(&focusIterator);
    }
    return status;
}

void _oxdmPOCOMBridge::MoveIteratorTo(IUnknown* object) {
    const auto wanted = PoQuery<IPOObject>(object);
    ATL::CComPtr<IPersistentObject> walker;
    if (!wanted || PoFailed(objectSet->Begin(&walker)) || !walker) return;
    for (short moved = VARIANT_TRUE; moved != VARIANT_FALSE;) {
        ATL::CComPtr<IUnknown> current;
        if (PoFailed(walker->Current(&current)) || !current) return;
        if (PoQuery<IPOObject>(current) == wanted) {
            iterator = walker;
            return;
        }
        if (PoFailed(walker->Next(&moved))) return;
    }
}

oxioStatus::Status _oxdmPOCOMBridge::Overwrite() {
    auto control = PoQuery<IPOWriteControl>(focusObject);
    if (!control) return oxioStatus::IOError;
    control->SetCheck(false);
    oxioStatus::Status status = StatusOf(control->Reread());
    if (status == oxioStatus::Success) status = Save();
    control->SetCheck(true);
    return status;
}

oxioStatus::Status _oxdmPOCOMBridge::Reinsert() {
    auto control = PoQuery<IPOWriteControl>(focusObject);
    if (!control) return oxioStatus::IOError;
    const oxioStatus::Status status = StatusOf(control->MarkNew());
    return status == oxioStatus::Success ? Save() : status;
}

void _oxdmPOCOMBridge::ResetObject() {
    // The object takes the stored state: a backup of the edits is stale.
    backupObject.Release();
    if (auto face = PoQuery<IPOObject>(focusObject)) PoFailed(face->Reset());
}

CString _oxdmPOCOMBridge::ErrorText() {
    CString text;
    if (auto face = PoQuery<IPOObject>(focusObject)) face->ErrorText(&text);
    if (text.IsEmpty()) PoGetErrorInfo(text);
    return text;
}

bool _oxdmPOCOMBridge::Delete() {
    ATL::CComPtr<IUnknown> object = FocusRowObject();
    ATL::CComPtr<IPersistentObject> after;
    if (iterator && !PoFailed(iterator->Clone(&after))) {
        short moved = VARIANT_FALSE;
        if (PoFailed(after->Next(&moved)) || moved == VARIANT_FALSE) after->Prev(&moved);
    }
    if (link != nullptr && !link->CanDelete()) return false;
    HRESULT hr = E_FAIL;
    if (auto setEdit = PoQuery<IPOSetEdit>(objectSet)) hr = setEdit->Remove(object);
    else if (auto face = PoQuery<IPOObject>(object)) hr = face->Delete();
    // An object that someone else deleted meanwhile is deleted: done.
    if (PoFailed(hr) && hr != PO_E_GONE) return false;
    if (after) iterator = after;
    ReleaseFocusObject();
    return true;
}

ATL::CComPtr<IUnknown> _oxdmPOCOMBridge::Create() {
    ATL::CComPtr<IUnknown> object;
    if (auto setFactory = PoQuery<IPOSetFactory>(objectSet)) {
        if (PoFailed(setFactory->Create(&object)) || !object) throw CString("Could not create persistent object!");
        return object;
    }
    if (createObject && link != nullptr && link->Source() != nullptr) {
        ATL::CComPtr<IUnknown> source = createObject(*link->Source());
        factory = PoQuery<IPOFactory>(source);
    }
    if (!factory || PoFailed(factory->CreateObject(&object)) || !object)
        throw CString("Could not create persistent object!");
    if (auto face = PoQuery<IPOObject>(object)) PoFailed(face->Reset());
    return object;
}

bool _oxdmPOCOMBridge::Find(int kind) {
    auto sorting = PoQuery<ISupportSorting>(objectSet);
    ATL::CComPtr<IStringCollection> sort;
    long count = 0;
    if (!sorting || PoFailed(sorting->GetSort(&sort)) || !sort || PoFailed(sort->get_Count(&count)) || count == 0)
        throw CString("Could not retrieve sorting parameters.");
    ATL::CComPtr<IPOPairCollection> params;
    if (PoFailed(PoCreateInstance(CLSID_POPairCollection, IPOPairCollection::kIID, reinterpret_cast<void**>(&params))))
        throw CString("Could not create the PairCollection COMponent.");
    for (long i = 0; i < count; ++i) {
        ATL::CComPtr<IPOPair> pair;
        if (PoFailed(PoCreateInstance(CLSID_POPair, IPOPair::kIID, reinterpret_cast<void**>(&pair))))
            throw CString("Could not create the Pair COMponent.");
        CString name;
        if (PoFailed(sort->Item(i, &name))) throw CString("Could not retrieve an sort property name.");
        auto column = indexOfName.find(name);
        if (column == indexOfName.end()) throw CString("Out of range column index.");
        if (PoFailed(pair->put_Name(name))) throw CString("Could not put a name in to the find parameter.");
        const size_t at = static_cast<size_t>(column->second);
        ATL::CComVariant value;
        if (!oxPOTypeConverters::OXDataToVariant(types[at], cursor->DatumForColumn(columnDefs[at]), value) ||
            PoFailed(pair->put_Value(value)))
            throw CString("Could not put a value in to the find parameter.");
        long index = 0;
        if (PoFailed(params->Add(pair, &index))) throw CString("Could not add the parameter to the list.");
    }
    ATL::CComPtr<IPersistentObject> found;
    short hit = VARIANT_FALSE;
    HRESULT hr = kind == 0 ? objectSet->Find(params, &found, &hit)
                 : kind == 1 ? iteratorFind->FindGE(params, &found, &hit)
                             : iteratorFind->FindGT(params, &found, &hit);
    if (PoFailed(hr)) throw CString("Error attempting to Find.");
    if (hit == VARIANT_FALSE || !found) return false;
    iterator = found;
    ReleaseFocusObject();
    return true;
}

bool _oxdmPOCOMBridge::EQ() { return Find(0); }
bool _oxdmPOCOMBridge::GE() { return Find(1); }
bool _oxdmPOCOMBridge::GT() { return Find(2); }

HRESULT _oxdmPOCOMBridge::OnPropertyChanged(const CString& name, const ATL::CComVariant& value) {
    try {
        auto it = indexOfName.find(name);
        if (it == indexOfName.end()) return S_OK;
        const size_t at = static_cast<size_t>(it->second);
        oxData* held = cursor->DatumForColumn(columnDefs[at]);
        std::unique_ptr<oxData> taken(held->Clone());
        if (!oxPOTypeConverters::VariantToOXData(types[at], value, taken.get()) || taken->Eq(*held)) return S_OK;
        held->SetVal(*taken);
        if (link != nullptr) link->RefreshCell(link->IndexForColumn(name));
    } catch (...) {
    }
    return S_OK;
}

HRESULT _oxdmPOCOMBridge::OnPropertyChanging() {
    try {
        BackupFocusRowObject();
    } catch (...) {
    }
    return S_OK;
}

void _oxdmPOCOMBridge::DropEdits() {
    auto face = PoQuery<IPOObject>(focusObject);
    short dirty = VARIANT_FALSE;
    if (face && !PoFailed(face->IsDirty(&dirty)) && dirty != VARIANT_FALSE) ResetObject();
}

HRESULT _oxdmPOCOMBridge::OnSortChanged(IStringCollection* sort) {
    try {
        if (sort != nullptr) ReadSortColumns(sort);
        DropEdits();
        if (link != nullptr) link->ReQuery();
    } catch (...) {
    }
    return S_OK;
}

HRESULT _oxdmPOCOMBridge::OnFilterChanged() {
    try {
        DropEdits();
        if (link != nullptr) {
            link->ReQuery();
            if (link->NumWindowDataRows() == 0) link->AppendRow();
        }
    } catch (...) {
    }
    return S_OK;
}
