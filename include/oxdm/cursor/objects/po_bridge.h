#pragma once
// _oxdmPOCOMBridge: between oxdmPersistentObjectCursor and an object store.
// It turns the store's type information into column definitions, the
// objects' properties into the cursor's values, the cursor's moves into
// iterator moves, and the set's and the focus object's events into redraws
// and requeries of the linked buffer; and it hooks the buffer's callbacks so
// that every edit of a cell is validated by the object and stored in it.
//
// Failures of set-up, validation and finding throw a CString with a whole
// sentence. The two abort results of the store end the task through x_abort
// with the store's own words. The four event handlers catch everything and
// answer 0.
//
// Invariants and ownership:
//   - objectSet, iteratorFind, iteratorPosition are faces of one container,
//     never empty after construction; factory may be empty.
//   - iterator is the cursor's position (empty when the set had no start);
//     focusIterator a clone of it for the focus row, taken on focus moves.
//   - focusObject is the focus row's object while linked (events advised
//     with propertyCookie); backupObject its clone from before the first
//     edit since the focus came or the object was last saved or reset,
//     empty when there was none to take.
//   - properties, types, columnDefs and columns are parallel, one entry per
//     property column; indexOfName maps each name to its position.
//     columnDefs and columns are owned; sortColumns point into columnDefs.
//   - sink is counted; its pointer back to the bridge is cut in the
//     destructor, so a late event finds no bridge.
//   - cursor owns the bridge; link is not owned and must outlive its use.

#include <map>
#include <memory>
#include <vector>

#include "oxdm/base/functor.h"
#include "oxdm/common/values/io_status.h"
#include "oxdm/cursor/objects/com_object.h"

class oxData;
class oxdmBufferedFileDataSource;
class oxdmCallbackInfo;
class oxdmColumnDef;
class oxdmCursorNode;
class oxdmPOBufferLink;
class oxdmPOPropertyColumn;
class _oxdmPOCOMBridge;

// Receives the events of the set and of the focus object for the bridge.
class CPOComBridgeEventSink : public PoComObject<INamedPropertyEvents2, ISortingEvents, IFilteringEvents> {
public:
    explicit CPOComBridgeEventSink(_oxdmPOCOMBridge* bridge) : bridge_(bridge) {}

    HRESULT OnPropertyChanged(const CString& name, const ATL::CComVariant& value) override;
    HRESULT OnPropertyChanging() override;
    HRESULT OnSortChanged(IStringCollection* properties) override;
    HRESULT OnFilterChanged() override;

    void Disconnect() { bridge_ = nullptr; }

private:
    _oxdmPOCOMBridge* bridge_;  // not counted; null once the bridge is gone
};

class _oxdmPOCOMBridge {
public:
    using CreateFunctor = CBFunctor1wRet<oxdmBufferedFileDataSource&, IUnknown*>;
    using FailureFunctor = CBFunctor2<oxdmCallbackInfo*, IUnknown*>;

    // Start-up over `container`. With `properties` empty, their names come
    // from `typeInfo` (an IPropertyTypeInfoCollection, may be null). Every
    // column is attached to `cursor`, each with `style`.
    // REQUIRES: cursor != nullptr.
    _oxdmPOCOMBridge(oxdmCursorNode* cursor, IUnknown* factory, IUnknown* container,
                     const std::vector<CString>& properties, IUnknown* typeInfo, int style,
                     const CreateFunctor& createObject);
    virtual ~_oxdmPOCOMBridge();
    _oxdmPOCOMBridge(const _oxdmPOCOMBridge&) = delete;
    _oxdmPOCOMBridge& operator=(const _oxdmPOCOMBridge&) = delete;

    // Event targets (through the sink).
    virtual HRESULT OnPropertyChanged(const CString& name, const ATL::CComVariant& value);
    virtual HRESULT OnPropertyChanging();
    virtual HRESULT OnSortChanged(IStringCollection* properties);
    virtual HRESULT OnFilterChanged();

    // Navigation; each answers whether the iterator moved (Next(count) the
    // count moved).
    bool First();
    bool Last();
    bool Prev();
    bool Next();
    long Next(long count);
    // Finds by the cursor's values of the sort's properties.
    bool EQ();
    bool GE();
    bool GT();
    double GetRelativePosition();
    // 0 when it moved.
    short SetRelativePosition(double percent);
    // Makes a clone of `iterator` the current one.
    void MoveToIter(IUnknown* iterator);
    // The current iterator (not counted for the caller), or null.
    IPersistentObject* Iterator() const { return iterator; }
    // Whether the current iterator stands on an object.
    bool OnObject();

    // Loads the current object's properties into the cursor's values.
    void Load();
    // Empties the cursor's values.
    void ClearValues();

    ATL::CComPtr<IUnknown> FocusRowObject();
    void BackupFocusRowObject();
    bool SetNewValueToFocusRowObjectProperty(const CString& property, const oxData* value);

    // Writes the focus object; a status (0 success, 20 conflict, 13 gone).
    oxioStatus::Status Save();
    // After a conflict: writes over the other writer's version.
    oxioStatus::Status Overwrite();
    // After a deletion by another: stores the object afresh.
    oxioStatus::Status Reinsert();
    // The focus object takes its stored (or default) values again.
    void ResetObject();
    // Deletes the focus object; the iterator goes to the next (or previous).
    bool Delete();
    // The focus object's own words for its last failure.
    CString ErrorText();

    void ReplacePOSet(IUnknown* container);
    // Links the buffer (null unlinks) and hooks its callbacks.
    void SetBufferLink(oxdmPOBufferLink* link);
    void SetPropertyValidationFailureCB(const FailureFunctor& cb) { propertyFailureCB = cb; }
    void SetObjectValidationFailureCB(const FailureFunctor& cb) { objectFailureCB = cb; }

    const std::vector<oxdmColumnDef*>& SortColumns() const { return sortColumns; }
    const std::vector<oxdmColumnDef*>& ColumnDefs() const { return columnDefs; }
    const std::vector<oxdmPOPropertyColumn*>& Columns() const { return columns; }
    // The store's type number of a column, -1 for a definition not ours.
    int TypeOf(const oxdmColumnDef* column) const;

private:
    // Start-up steps.
    void TakeContainer(IUnknown* container);
    void NamesFromTypeInfo(IUnknown* typeInfo);
    void BuildColumns(int style);
    void ReadSortColumns(IStringCollection* sort);
    void StartIterator();
    void AdviseContainer();
    void UnadviseContainer();

    // Callbacks of the buffer.
    int PropertyValidation(oxdmCallbackInfo* info);
    int StoreProperty(oxdmCallbackInfo* info);
    int ObjectValidation(oxdmCallbackInfo* info);
    int FocusMoved(oxdmCallbackInfo* info);
    int RowReverted(oxdmCallbackInfo* info);

    bool Find(int kind);
    // A new object for the new row.
    ATL::CComPtr<IUnknown> Create();
    void ReleaseFocusObject();
    void AdviseFocusObject();
    // The buffer's requery forgets the focus row's edits: the focus object,
    // when dirty, takes its stored values again.
    void DropEdits();
    oxioStatus::Status StatusOf(HRESULT hr);
    // Puts the iterator on `object`, walking the set from its start (one
    // step per object before it); leaves it when the set doesn't show it.
    void MoveIteratorTo(IUnknown* object);
    // The current iterator's object, or empty.
    ATL::CComPtr<IUnknown> CurrentObject();
    bool IsNewRow() const;

    ATL::CComPtr<IUnknown> focusObject;
    ATL::CComPtr<IUnknown> backupObject;
    ATL::CComPtr<IPersistentObject> focusIterator;
    ATL::CComPtr<IPersistentObject> iterator;
    ATL::CComPtr<IPersistentObjectSet> objectSet;
    ATL::CComPtr<IRelativeIteratorFind> iteratorFind;
    ATL::CComPtr<IRelativeIteratorPosition> iteratorPosition;
    ATL::CComPtr<IPOFactory> factory;
    std::vector<CString> properties;
    std::map<CString, long> indexOfName;
    std::vector<int> types;
    oxdmPOBufferLink* link = nullptr;
    std::vector<oxdmColumnDef*> sortColumns;
    ATL::CComPtr<CPOComBridgeEventSink> sink;
    unsigned long sortCookie = 0;
    unsigned long filterCookie = 0;
    unsigned long propertyCookie = 0;
    ATL::CComPtr<IPropertyTypeInfoCollection> typeInfoCollection;
    std::vector<std::unique_ptr<oxdmColumnDef>> columnDefs_;
    std::vector<oxdmColumnDef*> columnDefs;
    std::vector<std::unique_ptr<oxdmPOPropertyColumn>> columns_;
    std::vector<oxdmPOPropertyColumn*> columns;
    CreateFunctor createObject;
    FailureFunctor propertyFailureCB;
    FailureFunctor objectFailureCB;
    oxdmCursorNode* cursor;
};

// The failure test of every store result: false for success; true for a
// plain failure; on an abort result the store's error text (or "Unknown
// abort.") goes to x_abort, which ends the task.
bool PoFailed(HRESULT hr);
