#include "oxdm/cursor/objects/object_storage.h"

#include <cassert>

oxPOObjectStorage::oxPOObjectStorage(std::vector<oxPOPropertySpec> properties) : properties_(std::move(properties)) {
    for (size_t i = 0; i < properties_.size(); ++i) {
        assert(!properties_[i].name.IsEmpty());
        assert(PropertyIndex(properties_[i].name) == static_cast<long>(i));
    }
}

long oxPOObjectStorage::PropertyIndex(const CString& name) const {
    for (size_t i = 0; i < properties_.size(); ++i)
        if (properties_[i].name == name) return static_cast<long>(i);
    return -1;
}

std::vector<ATL::CComVariant> oxPOObjectStorage::Defaults() const {
    std::vector<ATL::CComVariant> values;
    for (const oxPOPropertySpec& property : properties_) values.push_back(property.defaultValue);
    return values;
}
