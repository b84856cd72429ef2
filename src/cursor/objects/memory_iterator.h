#pragma once
// An iterator of a memory set: it stands on an object by id (0 for none)
// and finds its place in the set's order on each move, so sorting and
// filtering never leave it pointing at a wrong object.

#include "oxdm/cursor/objects/com_object.h"
#include "oxdm/cursor/objects/memory_set.h"

class oxPOMemoryIterator : public PoComObject<IPersistentObject> {
public:
    // REQUIRES: set != nullptr.
    oxPOMemoryIterator(oxPOMemorySet* set, long id) : set_(set), id_(id) {}

    HRESULT Prev(short* moved) override { return Move(-1, "Prev", moved); }
    HRESULT Next(short* moved) override { return Move(1, "Next", moved); }
    HRESULT Current(IUnknown** object) override;
    HRESULT IsEqual(IPersistentObject* other, short* equal) override;
    HRESULT IsLess(IPersistentObject* other, short* less) override;
    HRESULT Clone(IPersistentObject** iterator) override;

    long Id() const { return id_; }

private:
    HRESULT Move(int step, const char* operation, short* moved);
    // The place of `other` (an iterator of this set) in the order, -1 for
    // none; false when `other` isn't one of ours.
    bool PlaceOf(IPersistentObject* other, long* place) const;

    // set_ is counted; id_ is the object stood on, 0 for none.
    ATL::CComPtr<oxPOMemorySet> set_;
    long id_;
};
