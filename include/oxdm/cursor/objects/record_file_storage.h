#pragma once
// oxPORecordFileStorage: an object storage that keeps its objects in one
// table of a record file, one record per object, so that the objects outlive
// the program and every program that opens the file shares them.
//
// The table holds a numeric field ID, its only key field, for the object's
// id; a numeric field VERSION; and for each property a field of the
// property's name and of the column type its type maps to. The record of
// ID 0 is the storage's own: its VERSION is the last id given, so that ids
// are never reused.
//
//     CString error;
//     auto storage = oxPORecordFileStorage::Open(properties, *file, 1, error);
//     if (!storage) ...;  // error names the file, the table and the field
//     ATL::CComPtr<oxPOMemorySet> set(new oxPOMemorySet(storage, {"Name"}));
//
// Invariants and ownership: the open file is not owned and must outlive the
// storage. cursor_ walks the table by its key with id_, version_ and
// values_ attached; values_ is parallel to Properties(). found_ holds what
// Find handed out, by id.

#include <map>
#include <memory>

#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/cursor/objects/object_storage.h"

class oxioDataFile;

class oxPORecordFileStorage : public oxPOObjectStorage {
public:
    // The storage over table `table` of `file`; null, with `error` naming
    // the file, the table and what is wrong, when the table doesn't fit the
    // properties.
    static std::shared_ptr<oxPORecordFileStorage> Open(std::vector<oxPOPropertySpec> properties,
                                                       const oxioDataFile& file, short table, CString& error);

    long Insert(const std::vector<ATL::CComVariant>& values) override;
    const Record* Find(long id) override;
    bool Write(long id, const std::vector<ATL::CComVariant>& values) override;
    bool Erase(long id) override;
    std::vector<long> Ids() override;

private:
    oxPORecordFileStorage(std::vector<oxPOPropertySpec> properties, const oxioDataFile& file, short table);
    // Reads the record of `id` into the attached values; false when none.
    bool Seek(long id);
    // Sets the attached property values; false when one won't take its value.
    bool Take(const std::vector<ATL::CComVariant>& values);

    oxioCursor cursor_;
    oxDouble id_{0.0, 0};
    oxDouble version_{0.0, 0};
    std::vector<std::unique_ptr<oxData>> values_;
    std::map<long, Record> found_;
};
