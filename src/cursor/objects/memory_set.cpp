#include "oxdm/cursor/objects/memory_set.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "memory_iterator.h"
#include "memory_type_info.h"
#include "oxdm/cursor/objects/po_collections.h"

oxPOMemorySet::oxPOMemorySet(std::shared_ptr<oxPOObjectStorage> database, const std::vector<CString>& sort)
    : database_(std::move(database)), plan_(std::make_shared<oxPOFaultPlan>()) {
    assert(database_ != nullptr);
    for (long id : database_->Ids()) objects_.emplace_back(new oxPOMemoryObject(this, database_, plan_, id));
    SortBy(sort);
}

oxPOMemorySet::~oxPOMemorySet() {
    for (oxPOMemoryObject* object : objects_) object->Detach();
}

bool oxPOMemorySet::Offers(const IID& iid) const { return !plan_->Hides(iid); }

const std::vector<oxPOMemoryObject*>& oxPOMemorySet::View() {
    if (viewValid_) return view_;
    view_.clear();
    for (oxPOMemoryObject* object : objects_)
        if (!filter_ || filter_(*object)) view_.push_back(object);
    std::stable_sort(view_.begin(), view_.end(), [this](const oxPOMemoryObject* a, const oxPOMemoryObject* b) {
        for (long index : sortIndexes_) {
            if (a->Value(index) < b->Value(index)) return true;
            if (b->Value(index) < a->Value(index)) return false;
        }
        // New objects (id 0) after the stored ones.
        if ((a->Id() == 0) != (b->Id() == 0)) return b->Id() == 0;
        return a->Id() < b->Id();
    });
    viewValid_ = true;
    return view_;
}

oxPOMemoryObject* oxPOMemorySet::ObjectOf(long id) const {
    for (oxPOMemoryObject* object : objects_)
        if (object->Id() == id) return object;
    return nullptr;
}

long oxPOMemorySet::PositionOf(long id) {
    const std::vector<oxPOMemoryObject*>& view = View();
    for (size_t i = 0; i < view.size(); ++i)
        if (view[i]->Id() == id) return static_cast<long>(i);
    return -1;
}

HRESULT oxPOMemorySet::IteratorAt(long position, IPersistentObject** iterator) {
    if (iterator == nullptr) return E_POINTER;
    const std::vector<oxPOMemoryObject*>& view = View();
    const bool inside = position >= 0 && position < static_cast<long>(view.size());
    *iterator = new oxPOMemoryIterator(this, inside ? view[static_cast<size_t>(position)]->Id() : 0);
    (*iterator)->AddRef();
    return S_OK;
}

void oxPOMemorySet::Adopt(oxPOMemoryObject* object) {
    if (ObjectOf(object->Id()) == nullptr) objects_.emplace_back(object);
    Invalidate();
}

void oxPOMemorySet::Drop(long id) {
    auto it = std::find_if(objects_.begin(), objects_.end(), [id](oxPOMemoryObject* o) { return o->Id() == id; });
    if (it == objects_.end()) return;
    (*it)->Detach();
    objects_.erase(it);
    Invalidate();
}

int oxPOMemorySet::CompareKey(const oxPOMemoryObject& object, const std::vector<ATL::CComVariant>& key) const {
    for (size_t i = 0; i < key.size(); ++i) {
        const ATL::CComVariant& value = object.Value(sortIndexes_[i]);
        if (value < key[i]) return -1;
        if (key[i] < value) return 1;
    }
    return 0;
}

HRESULT oxPOMemorySet::FindBy(FindKind kind, IPOPairCollection* params, IPersistentObject** iterator, short* found) {
    if (params == nullptr || iterator == nullptr || found == nullptr) return E_POINTER;
    *iterator = nullptr;
    *found = VARIANT_FALSE;
    if (HRESULT hr = plan_->Check("Find")) return hr;
    // The parameter names the sort's properties from the first, in order.
    long count = 0;
    params->Count(&count);
    if (count > static_cast<long>(sort_.size())) return E_INVALIDARG;
    std::vector<ATL::CComVariant> key;
    for (long i = 0; i < count; ++i) {
        ATL::CComPtr<IPOPair> pair;
        CString name;
        ATL::CComVariant value;
        if (FAILED(params->Item(i, &pair)) || FAILED(pair->get_Name(&name)) || FAILED(pair->get_Value(&value)))
            return E_INVALIDARG;
        if (name != sort_[static_cast<size_t>(i)]) {
            PoSetErrorInfo(name + " is not the sort's property " + sort_[static_cast<size_t>(i)]);
            return E_INVALIDARG;
        }
        key.push_back(value);
    }
    const std::vector<oxPOMemoryObject*>& view = View();
    for (size_t i = 0; i < view.size(); ++i) {
        const int order = CompareKey(*view[i], key);
        const bool match = kind == FindKind::EQ ? order == 0 : kind == FindKind::GE ? order >= 0 : order > 0;
        if (kind == FindKind::EQ && order > 0) break;
        if (!match) continue;
        *found = VARIANT_TRUE;
        return IteratorAt(static_cast<long>(i), iterator);
    }
    return S_OK;
}

HRESULT oxPOMemorySet::Find(IPOPairCollection* params, IPersistentObject** iterator, short* found) {
    return FindBy(FindKind::EQ, params, iterator, found);
}

HRESULT oxPOMemorySet::FindGE(IPOPairCollection* params, IPersistentObject** iterator, short* found) {
    return FindBy(FindKind::GE, params, iterator, found);
}

HRESULT oxPOMemorySet::FindGT(IPOPairCollection* params, IPersistentObject** iterator, short* found) {
    return FindBy(FindKind::GT, params, iterator, found);
}

HRESULT oxPOMemorySet::Count(long* count) {
    if (count == nullptr) return E_POINTER;
    *count = static_cast<long>(View().size());
    return S_OK;
}

HRESULT oxPOMemorySet::IsEmpty(short* empty) {
    if (empty == nullptr) return E_POINTER;
    *empty = View().empty() ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT oxPOMemorySet::Begin(IPersistentObject** iterator) {
    if (HRESULT hr = plan_->Check("Begin")) return hr;
    return IteratorAt(0, iterator);
}

HRESULT oxPOMemorySet::End(IPersistentObject** iterator) {
    if (HRESULT hr = plan_->Check("End")) return hr;
    return IteratorAt(static_cast<long>(View().size()) - 1, iterator);
}

HRESULT oxPOMemorySet::GetRelativePosition(IPersistentObject* iterator, double* percent) {
    if (percent == nullptr) return E_POINTER;
    auto* ours = dynamic_cast<oxPOMemoryIterator*>(iterator);
    if (ours == nullptr) return E_INVALIDARG;
    const long place = PositionOf(ours->Id());
    const long count = static_cast<long>(View().size());
    *percent = place < 0 || count < 2 ? 0.0 : 100.0 * static_cast<double>(place) / static_cast<double>(count - 1);
    return S_OK;
}

HRESULT oxPOMemorySet::SetRelativePosition(double percent, IPersistentObject** iterator) {
    if (HRESULT hr = plan_->Check("SetRelativePosition")) return hr;
    const long count = static_cast<long>(View().size());
    const double clamped = std::clamp(percent, 0.0, 100.0);
    return IteratorAt(count == 0 ? 0 : std::lround(clamped / 100.0 * static_cast<double>(count - 1)), iterator);
}

HRESULT oxPOMemorySet::GetSort(IStringCollection** properties) {
    if (properties == nullptr) return E_POINTER;
    *properties = nullptr;
    if (HRESULT hr = plan_->Check("GetSort")) return hr;
    *properties = new oxPOStringCollection(sort_);
    (*properties)->AddRef();
    return S_OK;
}

HRESULT oxPOMemorySet::SetSort(IStringCollection* properties) {
    std::vector<CString> names;
    if (!PoReadStrings(properties, names)) return E_INVALIDARG;
    for (const CString& name : names) {
        if (database_->PropertyIndex(name) < 0) {
            PoSetErrorInfo("there is no property " + name);
            return E_INVALIDARG;
        }
    }
    SortBy(names);
    return S_OK;
}

std::vector<ATL::CComPtr<IUnknown>> oxPOMemorySet::Sinks(const std::map<unsigned long, ATL::CComPtr<IUnknown>>& sinks) {
    std::vector<ATL::CComPtr<IUnknown>> copy;
    for (const auto& [cookie, sink] : sinks) copy.push_back(sink);
    return copy;
}

void oxPOMemorySet::SortBy(const std::vector<CString>& names) {
    sort_ = names;
    sortIndexes_.clear();
    for (const CString& name : names) {
        const long index = database_->PropertyIndex(name);
        assert(index >= 0);
        sortIndexes_.push_back(index);
    }
    Invalidate();
    ATL::CComPtr<IStringCollection> told(new oxPOStringCollection(sort_));
    for (IUnknown* sink : Sinks(sortSinks_))
        if (auto events = PoQuery<ISortingEvents>(sink)) events->OnSortChanged(told);
}

HRESULT oxPOMemorySet::AdviseSort(IUnknown* sink, unsigned long* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("AdviseSort")) return hr;
    *cookie = nextCookie_++;
    sortSinks_[*cookie] = sink;
    return S_OK;
}

HRESULT oxPOMemorySet::UnadviseSort(unsigned long cookie) {
    return sortSinks_.erase(cookie) != 0 ? S_OK : E_INVALIDARG;
}

HRESULT oxPOMemorySet::IsFiltered(short* filtered) {
    if (filtered == nullptr) return E_POINTER;
    *filtered = filter_ ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT oxPOMemorySet::ClearFilter() {
    SetFilter(Filter());
    return S_OK;
}

void oxPOMemorySet::SetFilter(Filter filter) {
    filter_ = std::move(filter);
    Invalidate();
    for (IUnknown* sink : Sinks(filterSinks_))
        if (auto events = PoQuery<IFilteringEvents>(sink)) events->OnFilterChanged();
}

HRESULT oxPOMemorySet::AdviseFilter(IUnknown* sink, unsigned long* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("AdviseFilter")) return hr;
    *cookie = nextCookie_++;
    filterSinks_[*cookie] = sink;
    return S_OK;
}

HRESULT oxPOMemorySet::UnadviseFilter(unsigned long cookie) {
    return filterSinks_.erase(cookie) != 0 ? S_OK : E_INVALIDARG;
}

HRESULT oxPOMemorySet::GetPropertyTypeInfoCollection(IStringCollection* properties,
                                                     IPropertyTypeInfoCollection** collection) {
    if (collection == nullptr) return E_POINTER;
    *collection = nullptr;
    if (HRESULT hr = plan_->Check("GetPropertyTypeInfoCollection")) return hr;
    std::vector<CString> names;
    if (!PoReadStrings(properties, names)) return E_INVALIDARG;
    auto* infos = new oxPOMemoryTypeInfoCollection(plan_);
    ATL::CComPtr<IPropertyTypeInfoCollection> hold(infos);
    for (const CString& name : names) {
        const long index = database_->PropertyIndex(name);
        if (index >= 0) infos->Append(new oxPOMemoryTypeInfo(database_->Properties()[static_cast<size_t>(index)], plan_));
    }
    *collection = hold;
    (*collection)->AddRef();
    return S_OK;
}

HRESULT oxPOMemorySet::Add(IUnknown* object, long* index) {
    if (HRESULT hr = plan_->Check("Add")) return hr;
    auto* ours = dynamic_cast<oxPOMemoryObject*>(object);
    if (ours == nullptr) return E_INVALIDARG;
    if (ours->Id() == 0) {
        if (HRESULT hr = ours->StoreNew(); FAILED(hr)) return hr;
        objects_.emplace_back(ours);
    } else {
        auto it = std::find_if(objects_.begin(), objects_.end(), [ours](oxPOMemoryObject* o) { return o->Id() == ours->Id(); });
        if (it == objects_.end()) objects_.emplace_back(ours);
        else if (*it != ours) {
            (*it)->Detach();
            *it = ours;
        }
    }
    Invalidate();
    if (index != nullptr) *index = PositionOf(ours->Id());
    return S_OK;
}

HRESULT oxPOMemorySet::Remove(IUnknown* object) {
    if (HRESULT hr = plan_->Check("Remove")) return hr;
    auto* ours = dynamic_cast<oxPOMemoryObject*>(object);
    if (ours == nullptr) return E_INVALIDARG;
    const long id = ours->Id();
    if (id == 0) return E_INVALIDARG;
    const bool stored = database_->Erase(id);
    Drop(id);
    if (!stored) {
        PoSetErrorInfo("the object has been deleted by someone else");
        return PO_E_GONE;
    }
    return S_OK;
}

HRESULT oxPOMemorySet::Restore(IUnknown* backup, IUnknown** object) {
    if (HRESULT hr = plan_->Check("Restore")) return hr;
    auto clone = PoQuery<IPOCloneable>(backup);
    if (!clone) return E_INVALIDARG;
    return clone->Clone(object);
}

HRESULT oxPOMemorySet::Create(IUnknown** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (HRESULT hr = plan_->Check("Create")) return hr;
    *object = static_cast<IPOObject*>(new oxPOMemoryObject(this, database_, plan_));
    (*object)->AddRef();
    return S_OK;
}

HRESULT oxPOMemorySet::CreateObject(IUnknown** object) { return Create(object); }

void oxPOMemorySet::Reload() {
    std::vector<ATL::CComPtr<oxPOMemoryObject>> kept;
    for (oxPOMemoryObject* object : objects_) {
        short dirty = VARIANT_FALSE;
        object->IsDirty(&dirty);
        const bool stored = database_->Find(object->Id()) != nullptr;
        if (dirty != VARIANT_FALSE) kept.emplace_back(object);
        else if (stored) {
            object->Reset();
            kept.emplace_back(object);
        } else {
            object->Detach();
        }
    }
    objects_ = std::move(kept);
    for (long id : database_->Ids())
        if (ObjectOf(id) == nullptr) objects_.emplace_back(new oxPOMemoryObject(this, database_, plan_, id));
    Invalidate();
}

HRESULT oxPOMemoryIterator::Move(int step, const char* operation, short* moved) {
    if (moved == nullptr) return E_POINTER;
    *moved = VARIANT_FALSE;
    if (HRESULT hr = set_->CheckFault(operation)) return hr;
    const long place = set_->PositionOf(id_);
    const std::vector<oxPOMemoryObject*>& view = set_->View();
    const long next = place + step;
    if (place < 0 || next < 0 || next >= static_cast<long>(view.size())) return S_OK;
    id_ = view[static_cast<size_t>(next)]->Id();
    *moved = VARIANT_TRUE;
    return S_OK;
}

HRESULT oxPOMemoryIterator::Current(IUnknown** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (HRESULT hr = set_->CheckFault("Current")) return hr;
    oxPOMemoryObject* current = id_ != 0 && set_->PositionOf(id_) >= 0 ? set_->ObjectOf(id_) : nullptr;
    if (current == nullptr) return S_FALSE;
    *object = static_cast<IPOObject*>(current);
    (*object)->AddRef();
    return S_OK;
}

bool oxPOMemoryIterator::PlaceOf(IPersistentObject* other, long* place) const {
    auto* ours = dynamic_cast<oxPOMemoryIterator*>(other);
    if (ours == nullptr || ours->set_.get() != set_.get()) return false;
    *place = set_->PositionOf(ours->id_);
    return true;
}

HRESULT oxPOMemoryIterator::IsEqual(IPersistentObject* other, short* equal) {
    if (equal == nullptr) return E_POINTER;
    long place = 0;
    if (!PlaceOf(other, &place)) return E_INVALIDARG;
    *equal = place == set_->PositionOf(id_) ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT oxPOMemoryIterator::IsLess(IPersistentObject* other, short* less) {
    if (less == nullptr) return E_POINTER;
    long place = 0;
    if (!PlaceOf(other, &place)) return E_INVALIDARG;
    *less = set_->PositionOf(id_) < place ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT oxPOMemoryIterator::Clone(IPersistentObject** iterator) {
    if (iterator == nullptr) return E_POINTER;
    *iterator = nullptr;
    if (HRESULT hr = set_->CheckFault("IteratorClone")) return hr;
    *iterator = new oxPOMemoryIterator(set_, id_);
    (*iterator)->AddRef();
    return S_OK;
}
