#pragma once
// oxPOMemoryDatabase: where the objects of the memory store persist, shared
// by every set opened on it (each set standing for one program's view).
// It keeps the property definitions and, for each stored object, its values
// and a version that every write raises: a set's object that read version v
// and finds another on saving was written by someone else meanwhile.
//
// Invariants: every record holds one value per property, in property order;
// ids are positive, never reused; versions start at 1.

#include <functional>
#include <map>
#include <memory>
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

class oxPOMemoryDatabase {
public:
    struct Record {
        std::vector<ATL::CComVariant> values;
        long version = 1;
    };

    // REQUIRES: property names are unique and not empty.
    explicit oxPOMemoryDatabase(std::vector<oxPOPropertySpec> properties);

    const std::vector<oxPOPropertySpec>& Properties() const { return properties_; }
    // The property's position, or -1.
    long PropertyIndex(const CString& name) const;
    // The defaults of every property.
    std::vector<ATL::CComVariant> Defaults() const;

    // Stores a new record and answers its id.
    // REQUIRES: values.size() == Properties().size().
    long Insert(const std::vector<ATL::CComVariant>& values);
    // The record, or null when there is none of that id.
    const Record* Find(long id) const;
    // Replaces the values and raises the version; false when gone.
    // REQUIRES: values.size() == Properties().size().
    bool Write(long id, const std::vector<ATL::CComVariant>& values);
    // False when gone.
    bool Erase(long id);
    // The ids of the stored records, ascending.
    std::vector<long> Ids() const;

private:
    std::vector<oxPOPropertySpec> properties_;
    std::map<long, Record> records_;
    long nextId_ = 1;
};
