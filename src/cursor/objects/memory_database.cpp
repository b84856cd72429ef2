#include "oxdm/cursor/objects/memory_database.h"

#include <cassert>

long oxPOMemoryDatabase::Insert(const std::vector<ATL::CComVariant>& values) {
    assert(values.size() == Properties().size());
    const long id = nextId_++;
    records_[id] = Record{values, 1};
    return id;
}

const oxPOMemoryDatabase::Record* oxPOMemoryDatabase::Find(long id) {
    auto it = records_.find(id);
    return it == records_.end() ? nullptr : &it->second;
}

bool oxPOMemoryDatabase::Write(long id, const std::vector<ATL::CComVariant>& values) {
    assert(values.size() == Properties().size());
    auto it = records_.find(id);
    if (it == records_.end()) return false;
    it->second.values = values;
    ++it->second.version;
    return true;
}

bool oxPOMemoryDatabase::Erase(long id) { return records_.erase(id) != 0; }

std::vector<long> oxPOMemoryDatabase::Ids() {
    std::vector<long> ids;
    for (const auto& [id, record] : records_) ids.push_back(id);
    return ids;
}
