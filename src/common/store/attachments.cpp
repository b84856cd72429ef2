#include "oxdm/common/store/attachments.h"

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "store_file.h"

oxioAttachments::oxioAttachments(oxioCursor& cursor) : file_(cursor.File()->FileNum()), table_(cursor.TableID()) {}

oxioAttachments::oxioAttachments(short file, short table) : file_(file), table_(table) {}

oxioStatus::Status oxioAttachments::Fetch(bool) {
    oxdm::store::oxStoreFile* file = nullptr;
    oxdm::store::TableState* state = nullptr;
    short raw = oxdm::store::Locate(file_, table_, file, state);
    if (raw != 0) return oxioStatus::ConvertToOxio(raw);
    if (state->position.rowid == 0) return oxioStatus::InvalidKey;
    std::vector<oxdm::store::RecordStore::Attachment> read;
    raw = file->Store().ReadAttachments(table_, state->position.rowid, read);
    if (raw != 0) return oxioStatus::ConvertToOxio(raw);
    documents_.clear();
    for (const auto& document : read) documents_.push_back({CString(document.name), CString(document.data)});
    return oxioStatus::Success;
}

oxioStatus::Status oxioAttachments::Write() {
    oxdm::store::oxStoreFile* file = nullptr;
    oxdm::store::TableState* state = nullptr;
    short raw = oxdm::store::Locate(file_, table_, file, state);
    if (raw != 0) return oxioStatus::ConvertToOxio(raw);
    if (state->position.rowid == 0) return oxioStatus::InvalidKey;
    std::vector<oxdm::store::RecordStore::Attachment> documents;
    for (const Document& document : documents_) documents.push_back({document.name.str(), document.data.str()});
    return oxioStatus::ConvertToOxio(file->Store().WriteAttachments(table_, state->position.rowid, documents));
}
