#include "oxdm/cursor/objects/memory_database.h"

#include <cassert>

oxPOMemoryDatabase::oxPOMemoryDatabase(std::vector<oxPOPropertySpec> properties)
    : properties_(std::move(properties)) {
    for (size_t i = 0; i < properties_.size(); ++i) {
        assert(!properties_[i].name.IsEmpty());
        assert(PropertyIndex(properties_[i].name) == static_cast<long>(i));
    }
}

long oxPOMemoryDatabase::PropertyIndex(const CString& name) const {
    for (size_t i = 0; i < properties_.size(); ++i)
        if (properties_[i].name == name) return static_cast<long>(i);
    return -1;
}

std::vector<ATL::CComVariant> oxPOMemoryDatabase::Defaults() const {
    std::vector<ATL::CComVariant> values;
    for (const oxPOPropertySpec& property : properties_) values.push_back(property.defaultValue);
    return values;
}

long oxPOMemoryDatabase::Insert(const std::vector<ATL::CComVariant>& values) {
    assert(values.size() == properties_.size());
    const long id = nextId_++;
    records_[id] = Record{values, 1};
    return id;
}

const oxPOMemoryDatabase::Record* oxPOMemoryDatabase::Find(long id) const {
    auto it = records_.find(id);
    return it == records_.end() ? nullptr : &it->second;
}

bool oxPOMemoryDatabase::Write(long id, const std::vector<ATL::CComVariant>& values) {
    assert(values.size() == properties_.size());
    auto it = records_.find(id);
    if (it == records_.end()) return false;
    it->second.values = values;
    ++it->second.version;
    return true;
}

bool oxPOMemoryDatabase::Erase(long id) { return records_.erase(id) != 0; }

std::vector<long> oxPOMemoryDatabase::Ids() const {
    std::vector<long> ids;
    for (const auto& [id, record] : records_) ids.push_back(id);
    return ids;
}
