#pragma once
// The callback registries by key: oxdmCStringCallbackMap (keyed by a node or
// column name, case-sensitive) and oxdmUSHORTCBMap (keyed by a control's user
// id), and their three heirs, which fix the number of slots of an entry and
// name the slots.
//
// An entry holds one functor per slot; chains come only from binding, when
// an object copies its entry's functors into its own chains. Each heir also
// tells which event a slot feeds, so that every object that binds reads one
// table.

#include <cassert>
#include <cstddef>
#include <map>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/base/functor.h"

class oxdmCallbackInfo;

template <class K>
class oxdmKeyedCallbackMap {
public:
    using Functor = CBFunctor1wRet<oxdmCallbackInfo*, int>;
    using Entry = std::vector<Functor>;
    using Map = std::map<K, Entry>;

    explicit oxdmKeyedCallbackMap(unsigned short size) : size(size) {}
    virtual ~oxdmKeyedCallbackMap() = default;

    unsigned short Size() const { return size; }

    // Overwrites slot item of key's entry, making the entry (of Size() empty
    // functors) if there is none.
    // REQUIRES: 0 <= item < Size()
    void SetCallback(const K& key, int item, const Functor& cb);

    // The entry of key, or null.
    const Entry* GetCallbacks(const K& key) const;

    // Inserts every entry of other whose key is not here yet. A key that is
    // here keeps its whole entry, empty slots included: the receiver wins.
    void Merge(const oxdmKeyedCallbackMap& other) { map.insert(other.map.begin(), other.map.end()); }

protected:
    Entry& FindOrAdd(const K& key);
    typename Map::const_iterator find(const K& key) const { return map.find(key); }
    typename Map::const_iterator begin() const { return map.begin(); }
    typename Map::const_iterator end() const { return map.end(); }
    Entry& operator[](const K& key) { return FindOrAdd(key); }

private:
    // Invariant: every entry holds exactly size functors.
    unsigned short size;
    Map map;
};

template <class K>
void oxdmKeyedCallbackMap<K>::SetCallback(const K& key, int item, const Functor& cb) {
    assert(item >= 0 && item < size);
    if (item < 0 || item >= size) return;  // a slot that does not exist takes nothing
    FindOrAdd(key)[static_cast<std::size_t>(item)] = cb;
}

template <class K>
const typename oxdmKeyedCallbackMap<K>::Entry* oxdmKeyedCallbackMap<K>::GetCallbacks(const K& key) const {
    auto it = map.find(key);
    return it == map.end() ? nullptr : &it->second;
}

template <class K>
typename oxdmKeyedCallbackMap<K>::Entry& oxdmKeyedCallbackMap<K>::FindOrAdd(const K& key) {
    auto it = map.find(key);
    if (it == map.end()) it = map.emplace(key, Entry(size)).first;
    return it->second;
}

using oxdmCStringCallbackMap = oxdmKeyedCallbackMap<CString>;
using oxdmUSHORTCBMap = oxdmKeyedCallbackMap<unsigned short>;

// Row callbacks by query node label. Each slot feeds one row event of a data
// source; the mapping is not the identity.
class oxdmRowCallbacks : public oxdmCStringCallbackMap {
public:
    enum Item {
        cbRowValidate = 0,
        cbRowBeforeWrite = 1,
        cbRowAfterWrite = 2,
        cbRowBeforeDelete = 3,
        cbRowAfterDelete = 4,
        cbRowBeforeRevert = 5,
        cbRowAfterRevert = 6,
        cbFocusRowMoved = 7,
        cbRowDirtyChanged = 8,
        cbRowFilter = 9,
        cbRowInsertFailed = 10,
        cbRowUpdateFailed = 11,
        cbRowDeleteFailed = 12,
        cbBeforeReQuery = 13,
    };
    static constexpr unsigned short SlotCount = 14;

    oxdmRowCallbacks() : oxdmCStringCallbackMap(SlotCount) {}

    // The data source row event (oxdmDataSource::Event) that item feeds; -1
    // for an item outside 0 to 13.
    static int DataSourceEvent(int item);
};

// Column callbacks by column name. Items 0 to 2 feed a data source's column
// events, items 3 to 9 the control events of a data control bound to the
// column.
class oxdmColCallbacks : public oxdmCStringCallbackMap {
public:
    enum Item {
        cbColBeforeChange = 0,
        cbColAfterChange = 1,
        cbColValidate = 2,
        cbFocusGained = 3,
        cbFocusLost = 4,
        cbMouseClick = 5,
        cbMouseDblClick = 6,
        cbKeyDown = 7,
        cbKeyPressed = 8,
        cbColChanging = 9,
    };
    static constexpr unsigned short SlotCount = 10;

    oxdmColCallbacks() : oxdmCStringCallbackMap(SlotCount) {}

    // The data source column event that item feeds (15, 16, 17), -1 for the
    // items that go to controls and for items outside 0 to 9.
    static int DataSourceEvent(int item);
    // The oxdmControl::CtrlEvent that item feeds, -1 for the items that go to
    // data sources and for items outside 0 to 9.
    static int ControlEvent(int item);
};

// Control callbacks by a control's user id.
//
// Slot 6 is the key-down slot that nothing reads: a functor set there is
// kept and never bound, and cbKeyPressed (7) leads to the key-pressed
// event. A key-down callback thus cannot be set through this map.
class oxdmCtrlCallbacks : public oxdmUSHORTCBMap {
public:
    enum Item {
        cbBeforeUpdate = 0,
        cbAfterUpdate = 1,
        cbFocusGained = 2,
        cbFocusLost = 3,
        cbMouseClick = 4,
        cbMouseDblClick = 5,
        cbKeyDown = 6,
        cbKeyPressed = 7,
        cbClass0 = 8,
        cbClass1 = 9,
        cbClass2 = 10,
        cbClass3 = 11,
        cbClass4 = 12,
        cbClass5 = 13,
    };
    static constexpr unsigned short SlotCount = 14;

    oxdmCtrlCallbacks() : oxdmUSHORTCBMap(SlotCount) {}

    // The oxdmControl::CtrlEvent that item feeds; -1 for the dead slot 6 and
    // for items outside 0 to 13.
    static int ControlEvent(int item);
};
