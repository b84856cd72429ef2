#pragma once
// oxPOObjectStorage: where the objects of a memory set persist, shared by
// every set opened on it (each set standing for one program's view). It
// keeps the property definitions and, for each stored object, its values
// and a version that every write raises: a set's object that read version v
// and finds another on saving was written by someone else meanwhile.
//
// Invariants of every storage: a record holds one value per property, in
// property order; ids are positive, never reused; versions start at 1.

#include <functional>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/cursor/objects/com_variant.h"

// A property of the memory store's objects, with what its type information
// tells and the rule that validates a value of it.
struct oxPOPropertySpec {
    CString name;
    int type = 8;  // oxPOPropertyType
    short length = 12;
    short decimals = 0;
    short defaultWidth = 12;
    bool key = false;
    bool readOnly = false;
    std::vector<CString> choices;  // for a choice property
    ATL::CComVariant defaultValue;
    // Refuses a value with a reason; empty accepts everything.
    std::function<bool(const ATL::CComVariant& value, CString& reason)> rule;
};

class oxPOObjectStorage {
public:
    struct Record {
        std::vector<ATL::CComVariant> values;
        long version = 1;
    };

    // REQUIRES: property names are unique and not empty.
    explicit oxPOObjectStorage(std::vector<oxPOPropertySpec> properties);
    virtual ~oxPOObjectStorage() = default;

    const std::vector<oxPOPropertySpec>& Properties() const { return properties_; }
    // The property's position, or -1.
    long PropertyIndex(const CString& name) const;
    // The defaults of every property.
    std::vector<ATL::CComVariant> Defaults() const;

    // Stores a new record and answers its id (0 when the storage failed).
    // REQUIRES: values.size() == Properties().size().
    virtual long Insert(const std::vector<ATL::CComVariant>& values) = 0;
    // The record as stored now, or null when there is none of that id. The
    // record stays valid until the next call on the storage.
    virtual const Record* Find(long id) = 0;
    // Replaces the values and raises the version; false when gone.
    // REQUIRES: values.size() == Properties().size().
    virtual bool Write(long id, const std::vector<ATL::CComVariant>& values) = 0;
    // False when gone.
    virtual bool Erase(long id) = 0;
    // The ids of the stored records, ascending.
    virtual std::vector<long> Ids() = 0;

private:
    std::vector<oxPOPropertySpec> properties_;
};
