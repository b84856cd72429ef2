#pragma once
// oxPOMemorySet: an object store in memory, offering every face the object
// bridge uses: the container with its find and percent position, sorting by
// named properties and filtering (each with its events), type information
// of the properties, editing of the set, restoring a clone, and making new
// objects. The objects live in memory while the set is open and persist in
// an oxPOObjectStorage: in memory (oxPOMemoryDatabase) or in a table of a
// record file (oxPORecordFileStorage). Two sets opened on one storage, or
// on two storages over one record file, are two programs that share the
// data: what one saves, the other sees conflict with.
//
// Order: by the sort's properties (empty values first, then numbers, then
// texts), ties by id, new objects (id 0) last. The filter hides objects for
// which it answers false. Iterators stand on an object by its id, so they
// survive sorting and filtering; one whose object is hidden or gone stands
// on nothing.
//
// Invariants: objects_ holds the set's live objects, counted, at most one
// per id, every one stored (id > 0) unless added by Add before its first
// save failed; view_ is the visible order of objects_ whenever viewValid_.

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "oxdm/cursor/objects/com_object.h"
#include "oxdm/cursor/objects/fault_plan.h"
#include "oxdm/cursor/objects/object_storage.h"
#include "oxdm/cursor/objects/memory_object.h"

class oxPOMemorySet
    : public PoComObject<IPersistentObjectSet, IRelativeIteratorFind, IRelativeIteratorPosition, PoSortingFace,
                         PoFilteringFace, ISupportPropertyTypeInfo, IPOSetEdit, IPOSetRestore, IPOSetFactory,
                         IPOFactory> {
public:
    using Filter = std::function<bool(const oxPOMemoryObject&)>;

    // A set of every object stored in `database`, sorted by `sort`.
    // REQUIRES: database != nullptr; every name of `sort` is a property.
    oxPOMemorySet(std::shared_ptr<oxPOObjectStorage> database, const std::vector<CString>& sort);

    // IPersistentObjectSet
    HRESULT Find(IPOPairCollection* params, IPersistentObject** iterator, short* found) override;
    HRESULT Count(long* count) override;
    HRESULT IsEmpty(short* empty) override;
    HRESULT Begin(IPersistentObject** iterator) override;
    HRESULT End(IPersistentObject** iterator) override;
    // IRelativeIteratorFind
    HRESULT FindGE(IPOPairCollection* params, IPersistentObject** iterator, short* found) override;
    HRESULT FindGT(IPOPairCollection* params, IPersistentObject** iterator, short* found) override;
    // IRelativeIteratorPosition
    HRESULT GetRelativePosition(IPersistentObject* iterator, double* percent) override;
    HRESULT SetRelativePosition(double percent, IPersistentObject** iterator) override;
    // ISupportSorting: SetSort takes names of properties only, and tells the
    // sort's sinks with the new names.
    HRESULT GetSort(IStringCollection** properties) override;
    HRESULT SetSort(IStringCollection* properties) override;
    HRESULT AdviseSort(IUnknown* sink, unsigned long* cookie) override;
    HRESULT UnadviseSort(unsigned long cookie) override;
    // ISupportFiltering
    HRESULT IsFiltered(short* filtered) override;
    HRESULT ClearFilter() override;
    HRESULT AdviseFilter(IUnknown* sink, unsigned long* cookie) override;
    HRESULT UnadviseFilter(unsigned long cookie) override;
    // ISupportPropertyTypeInfo
    HRESULT GetPropertyTypeInfoCollection(IStringCollection* properties,
                                          IPropertyTypeInfoCollection** collection) override;
    // IPOSetEdit
    HRESULT Add(IUnknown* object, long* index) override;
    HRESULT Remove(IUnknown* object) override;
    // IPOSetRestore: a clone of the backup.
    HRESULT Restore(IUnknown* backup, IUnknown** object) override;
    // IPOSetFactory and IPOFactory: a new object with the defaults.
    HRESULT Create(IUnknown** object) override;
    HRESULT CreateObject(IUnknown** object) override;

    // Sorts by `names` (as SetSort).
    // REQUIRES: every name is a property.
    void SortBy(const std::vector<CString>& names);
    // Shows only the objects `filter` accepts and tells the filter's sinks.
    void SetFilter(Filter filter);
    // Takes in what other sets stored or erased meanwhile: new records join,
    // erased ones leave unless edited here, unedited ones take the stored
    // values.
    void Reload();

    const std::vector<CString>& Sort() const { return sort_; }
    std::shared_ptr<oxPOObjectStorage> Database() const { return database_; }
    // The failures this set and its objects show; see oxPOFaultPlan.
    oxPOFaultPlan& Faults() { return *plan_; }

    // For iterators and objects of this set.
    // The visible objects in order.
    const std::vector<oxPOMemoryObject*>& View();
    // The live object of `id`, or null.
    oxPOMemoryObject* ObjectOf(long id) const;
    // The position of `id` in View(), or -1.
    long PositionOf(long id);
    // A new iterator on View()[position] (on nothing when out of range).
    HRESULT IteratorAt(long position, IPersistentObject** iterator);
    void Invalidate() { viewValid_ = false; }
    // An object of this set was stored by its own Save.
    void Adopt(oxPOMemoryObject* object);
    // An object of this set was erased by its own Delete.
    void Drop(long id);
    HRESULT CheckFault(const char* operation) const { return plan_->Check(operation); }

protected:
    ~oxPOMemorySet() override;
    bool Offers(const IID& iid) const override;

private:
    // How a find compares: equal, at or after, after.
    enum class FindKind { EQ, GE, GT };
    HRESULT FindBy(FindKind kind, IPOPairCollection* params, IPersistentObject** iterator, short* found);
    // Compares the object's sort values with `key` (a prefix of the sort):
    // <0, 0, >0.
    int CompareKey(const oxPOMemoryObject& object, const std::vector<ATL::CComVariant>& key) const;
    // A counted copy of `sinks`, to notify from while they may change.
    static std::vector<ATL::CComPtr<IUnknown>> Sinks(const std::map<unsigned long, ATL::CComPtr<IUnknown>>& sinks);

    std::shared_ptr<oxPOObjectStorage> database_;
    std::shared_ptr<oxPOFaultPlan> plan_;
    std::vector<CString> sort_;
    std::vector<long> sortIndexes_;  // the properties of sort_, by position
    Filter filter_;
    std::vector<ATL::CComPtr<oxPOMemoryObject>> objects_;
    std::vector<oxPOMemoryObject*> view_;
    bool viewValid_ = false;
    std::map<unsigned long, ATL::CComPtr<IUnknown>> sortSinks_;
    std::map<unsigned long, ATL::CComPtr<IUnknown>> filterSinks_;
    unsigned long nextCookie_ = 1;
};
