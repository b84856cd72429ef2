#pragma once
// oxPOMemoryDatabase: an object storage in memory, for tests and for
// objects that need not outlive the program.
//
// Invariant: records_ holds every stored record by id; nextId_ is above
// every id ever given.

#include <map>

#include "oxdm/cursor/objects/object_storage.h"

class oxPOMemoryDatabase : public oxPOObjectStorage {
public:
    using oxPOObjectStorage::oxPOObjectStorage;

    long Insert(const std::vector<ATL::CComVariant>& values) override;
    const Record* Find(long id) override;
    bool Write(long id, const std::vector<ATL::CComVariant>& values) override;
    bool Erase(long id) override;
    std::vector<long> Ids() override;

private:
    std::map<long, Record> records_;
    long nextId_ = 1;
};
