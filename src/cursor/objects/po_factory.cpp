#include "oxdm/cursor/objects/po_factory.h"

#include <vector>

#include "oxdm/cursor/objects/po_collections.h"

namespace {

struct Registration {
    CLSID clsid;
    PoClassCreator creator;
};

IUnknown* NewPairCollection() { return static_cast<IPOPairCollection*>(new oxPOPairCollection); }
IUnknown* NewPair() { return static_cast<IPOPair*>(new oxPOPair); }
IUnknown* NewStringCollection() { return static_cast<IStringCollection*>(new oxPOStringCollection); }

// The classes known, the library's own first.
std::vector<Registration>& Registry() {
    static std::vector<Registration> registry = {
        {CLSID_POPairCollection, &NewPairCollection},
        {CLSID_POPair, &NewPair},
        {CLSID_POStringCollection, &NewStringCollection},
    };
    return registry;
}

}  // namespace

PoClassCreator PoRegisterClass(const CLSID& clsid, PoClassCreator creator) {
    std::vector<Registration>& registry = Registry();
    for (auto it = registry.begin(); it != registry.end(); ++it) {
        if (!(it->clsid == clsid)) continue;
        PoClassCreator former = it->creator;
        if (creator != nullptr) it->creator = creator;
        else registry.erase(it);
        return former;
    }
    if (creator != nullptr) registry.push_back({clsid, creator});
    return nullptr;
}

HRESULT PoCreateInstance(const CLSID& clsid, const IID& iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    for (const Registration& entry : Registry()) {
        if (!(entry.clsid == clsid)) continue;
        IUnknown* object = entry.creator();
        if (object == nullptr) return E_FAIL;
        object->AddRef();
        HRESULT hr = object->QueryInterface(iid, out);
        object->Release();
        return hr;
    }
    return REGDB_E_CLASSNOTREG;
}
