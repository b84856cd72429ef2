#include "store_file.h"

#include "field_convert.h"
#include "oxdm/common/dictionary/dictionary_loader.h"
#include "oxdm/common/values/io_status.h"

#include <cassert>

namespace oxdm::store {

oxStoreFile::oxStoreFile(std::shared_ptr<const oxDictionary> dictionary, std::unique_ptr<RecordStore> store)
    : oxOpenFile(std::move(dictionary)), store_(std::move(store)) {
    for (const TableSpec& spec : store_->Tables()) {
        TableState state;
        for (int c = 0; c < static_cast<int>(spec.columns.size()); ++c)
            state.buffer.fields.push_back(BlankStored(Field(spec.number, c).type));
        state.position = state.buffer;
        tables_.push_back(std::move(state));
    }
}

short oxStoreFile::Open(const CString& path, const CString& dict, bool create, short* fileNum, CString& error) {
    assert(fileNum != nullptr);
    std::shared_ptr<const oxDictionary> dictionary;
    short status = oxDictionaryLoader::Load(dict, dictionary, error);
    if (status != oxioStatus::IO_VALID) {
        error = "The record file '" + path + "' cannot be opened: " + error;
        return status;
    }
    std::string message;
    std::unique_ptr<RecordStore> store =
        OpenSqliteStore(path.str(), TablesOf(*dictionary), create ? OpenMode::CreateIfMissing : OpenMode::OpenExisting,
                        status, message);
    if (!store) {
        error = CString(message);
        return status;
    }
    return oxOpenFileTable::Instance().Open(
        std::make_unique<oxStoreFile>(std::move(dictionary), std::move(store)), fileNum);
}

oxStoreFile* oxStoreFile::Find(short fileNum) {
    return dynamic_cast<oxStoreFile*>(oxOpenFileTable::Instance().Find(fileNum));
}

TableState* oxStoreFile::State(short table) {
    if (table < 1 || table > static_cast<short>(tables_.size())) return nullptr;
    return &tables_[static_cast<size_t>(table - 1)];
}

const xio_fld_def& oxStoreFile::Field(short table, int column) const {
    const xio_rec_def* rec = Dictionary().RecDef(table);
    assert(rec && column >= 0 && column < rec->field_count);
    return *Dictionary().FldDef(static_cast<short>(rec->first_field + column));
}

int oxStoreFile::ColumnOfField(short table, short field) const {
    const xio_rec_def* rec = Dictionary().RecDef(table);
    if (!rec || field < rec->first_field || field >= rec->first_field + rec->field_count) return -1;
    return field - rec->first_field;
}

int oxStoreFile::ColumnNamed(short table, const char* name) const {
    short field = Dictionary().FieldNum(table, name);
    return field > 0 ? ColumnOfField(table, field) : -1;
}

std::vector<FieldValue> oxStoreFile::KeyOf(short table, short index, const RowImage& row) const {
    std::vector<FieldValue> key;
    const TableSpec* spec = Spec(table);
    const IndexSpec* order = spec ? spec->Index(index) : nullptr;
    if (!order) return key;
    for (int column : order->columns) key.push_back(row.fields.at(static_cast<size_t>(column)));
    return key;
}

short oxStoreFile::Save(short table) {
    TableState* state = State(table);
    if (!state) return 0;
    for (int tries = 0; tries < 32767; ++tries) {
        short id = nextSave_;
        nextSave_ = nextSave_ == 32767 ? 1 : static_cast<short>(nextSave_ + 1);
        if (saved_.count(id)) continue;
        saved_.emplace(id, SavedImage{table, state->buffer});
        return id;
    }
    return 0;
}

const oxStoreFile::SavedImage* oxStoreFile::Saved(short id) const {
    auto it = saved_.find(id);
    return it == saved_.end() ? nullptr : &it->second;
}

bool oxStoreFile::Unsave(short id) { return saved_.erase(id) > 0; }

short Locate(short fileNum, short table, oxStoreFile*& file, TableState*& state) {
    file = oxStoreFile::Find(fileNum);
    if (!file) return oxioStatus::FILE_NOT_FOUND;
    state = file->State(table);
    return state ? oxioStatus::IO_VALID : oxioStatus::IO_VOID;
}

}  // namespace oxdm::store
