#include "oxdm/cursor/objects/record_file_storage.h"

#include <cassert>
#include <cmath>

#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"
#include "oxdm/cursor/objects/type_converters.h"

namespace {

constexpr long kCounterId = 0;  // the record whose VERSION is the last id given

// A value of the class that a field of `columnType` is read into.
std::unique_ptr<oxData> ValueFor(short columnType, short decimals) {
    switch (columnType) {
        case XIO_ALPHA: return std::make_unique<oxAlpha>("");
        case XIO_NUMERIC: return std::make_unique<oxDouble>(0.0, decimals);
        case XIO_BOOLEAN: return std::make_unique<oxBool>();
        case XIO_DATE: return std::make_unique<oxDate>();
        case XIO_TIME: return std::make_unique<oxTime>();
        case XIO_PHONE: return std::make_unique<oxPhone>();
        case XIO_SSNUM: return std::make_unique<oxSSNum>();
        default: return std::make_unique<oxChoice>();
    }
}

bool SameColumnType(short field, short wanted) {
    const auto choice = [](short type) { return type >= XIO_CHOICE && type <= XIO_CHOICE9; };
    return field == wanted || (choice(field) && choice(wanted));
}

// Checks that `name` is a field of `table` of type `type` and key or not as
// `key` says; else a sentence naming what is wrong.
bool CheckField(short file, short table, const CString& name, short type, bool key, CString& error) {
    const short number = xio_num(file, 2, table, name.c_str());
    xio_fld_def def{};
    if (number <= 0 || xio_get_fld_def(file, number, &def, 1, true) != 0) {
        error = "has no field " + name;
        return false;
    }
    if (!SameColumnType(def.type, type)) {
        error.Format("has the field %s of type %d where type %d is needed", name.c_str(), def.type, type);
        return false;
    }
    if ((def.key != 0) != key) {
        error = "has the field " + name + (key ? " outside its key" : " in its key");
        return false;
    }
    return true;
}

// Checks the table's layout against the properties; else a sentence.
bool CheckTable(short file, short table, const std::vector<oxPOPropertySpec>& properties, CString& error) {
    xio_rec_def rec{};
    if (xio_get_rec_def(file, table, &rec, 0) != 0) {
        error = "does not exist";
        return false;
    }
    if (!CheckField(file, table, "ID", XIO_NUMERIC, true, error) ||
        !CheckField(file, table, "VERSION", XIO_NUMERIC, false, error))
        return false;
    for (const oxPOPropertySpec& property : properties) {
        const short type = oxPOTypeConverters::ChooseOXType(property.type);
        if (type < 0) {
            error.Format("can't hold the property %s of type %d", property.name.c_str(), property.type);
            return false;
        }
        if (!CheckField(file, table, property.name, type, false, error)) return false;
    }
    return true;
}

}  // namespace

std::shared_ptr<oxPORecordFileStorage> oxPORecordFileStorage::Open(std::vector<oxPOPropertySpec> properties,
                                                                   const oxioDataFile& file, short table,
                                                                   CString& error) {
    CString why;
    if (!CheckTable(file.FileNum(), table, properties, why)) {
        error.Format("The table %d of %s %s.", table, file.Spec().Path().c_str(), why.c_str());
        return nullptr;
    }
    return std::shared_ptr<oxPORecordFileStorage>(new oxPORecordFileStorage(std::move(properties), file, table));
}

oxPORecordFileStorage::oxPORecordFileStorage(std::vector<oxPOPropertySpec> properties, const oxioDataFile& file,
                                             short table)
    : oxPOObjectStorage(std::move(properties)), cursor_(file, table, 0) {
    bool attached = cursor_.AttachColumn("ID", id_) && cursor_.AttachColumn("VERSION", version_);
    for (const oxPOPropertySpec& property : Properties()) {
        values_.push_back(ValueFor(oxPOTypeConverters::ChooseOXType(property.type), property.decimals));
        attached = cursor_.AttachColumn(property.name, *values_.back()) && attached;
    }
    assert(attached);  // CheckTable found every field
    (void)attached;
}

bool oxPORecordFileStorage::Seek(long id) {
    cursor_.Clear();
    id_.SetVal(static_cast<double>(id));
    return cursor_.FetchEQ(false) == oxioStatus::Success;
}

bool oxPORecordFileStorage::Take(const std::vector<ATL::CComVariant>& values) {
    assert(values.size() == values_.size());
    for (size_t i = 0; i < values.size(); ++i)
        if (!oxPOTypeConverters::VariantToOXData(Properties()[i].type, values[i], values_[i].get())) return false;
    return true;
}

long oxPORecordFileStorage::Insert(const std::vector<ATL::CComVariant>& values) {
    long id = 1;
    if (Seek(kCounterId)) {
        id = std::lround(version_.GetVal()) + 1;
        version_.SetVal(static_cast<double>(id));
        if (cursor_.Update(nullptr, oxioCursor::Overwrite) != oxioStatus::Success) return 0;
    } else {
        cursor_.Clear();
        id_.SetVal(static_cast<double>(kCounterId));
        version_.SetVal(static_cast<double>(id));
        if (cursor_.Insert(nullptr) != oxioStatus::Success) return 0;
    }
    cursor_.Clear();
    id_.SetVal(static_cast<double>(id));
    version_.SetVal(1.0);
    if (!Take(values) || cursor_.Insert(nullptr) != oxioStatus::Success) return 0;
    return id;
}

const oxPOObjectStorage::Record* oxPORecordFileStorage::Find(long id) {
    if (id == kCounterId || !Seek(id)) {
        found_.erase(id);
        return nullptr;
    }
    Record& record = found_[id];
    record.version = std::lround(version_.GetVal());
    record.values.resize(values_.size());
    for (size_t i = 0; i < values_.size(); ++i)
        oxPOTypeConverters::OXDataToVariant(Properties()[i].type, values_[i].get(), record.values[i]);
    return &record;
}

bool oxPORecordFileStorage::Write(long id, const std::vector<ATL::CComVariant>& values) {
    if (id == kCounterId || !Seek(id)) return false;
    version_.SetVal(version_.GetVal() + 1.0);
    return Take(values) && cursor_.Update(nullptr, oxioCursor::Overwrite) == oxioStatus::Success;
}

bool oxPORecordFileStorage::Erase(long id) {
    found_.erase(id);
    return id != kCounterId && Seek(id) && cursor_.Delete() == oxioStatus::Success;
}

std::vector<long> oxPORecordFileStorage::Ids() {
    std::vector<long> ids;
    cursor_.Clear();
    for (auto status = cursor_.FetchFirst(false); status == oxioStatus::Success; status = cursor_.FetchNext(false))
        if (const long id = std::lround(id_.GetVal()); id != kCounterId) ids.push_back(id);
    return ids;
}
