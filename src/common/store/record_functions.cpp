#include "oxdm/common/store/record_functions.h"

#include "field_convert.h"
#include "oxdm/common/values/io_status.h"
#include "store_file.h"

#include <cassert>

using oxdm::store::Locate;
using oxdm::store::oxStoreFile;
using oxdm::store::RowImage;
using oxdm::store::SeekKind;
using oxdm::store::SeekRequest;
using oxdm::store::TableState;

namespace {

// Finds the record whose key in `index` equals the buffer's; with `keep`
// it becomes the buffer too.
short FindByBufferKey(short fileNum, short table, short index, bool keep) {
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    if (short raw = Locate(fileNum, table, file, state); raw != oxioStatus::IO_VALID) return raw;
    if (!file->Spec(table)->Index(index)) return oxioStatus::IO_VOID;
    RowImage found;
    short raw = file->Store().Seek(SeekRequest(table, index, SeekKind::EQ, file->KeyOf(table, index, state->buffer)), found);
    if (raw != oxioStatus::IO_VALID) return raw;
    if (keep) state->buffer = found;
    state->position = std::move(found);
    return oxioStatus::IO_VALID;
}

}  // namespace

short xio_rd_record(short fileNum, short table, short index, short mode) {
    if (mode != 1) return FindByBufferKey(fileNum, table, index, true);
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    if (short raw = Locate(fileNum, table, file, state); raw != oxioStatus::IO_VALID) return raw;
    if (state->position.rowid == 0) return oxioStatus::INVALID_KEY;
    RowImage found;
    short raw = file->Store().Read(table, state->position.rowid, found);
    if (raw != oxioStatus::IO_VALID) return raw;
    state->position = found;
    state->buffer = std::move(found);
    return oxioStatus::IO_VALID;
}

short xio_find_record(short fileNum, short table, short index) { return FindByBufferKey(fileNum, table, index, false); }

short xio_get_field(short fileNum, short table, short field, x_value_def* value) {
    assert(value != nullptr);
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    if (short raw = Locate(fileNum, table, file, state); raw != oxioStatus::IO_VALID) return raw;
    int column = file->ColumnOfField(table, field);
    if (column < 0) return oxioStatus::IO_VOID;
    const xio_fld_def& def = file->Field(table, column);
    oxdm::store::XvalFromStored(def.type, def.decimal, state->buffer.fields[static_cast<size_t>(column)], *value);
    return oxioStatus::IO_VALID;
}

short xio_save_record(short fileNum, short table) {
    oxStoreFile* file = oxStoreFile::Find(fileNum);
    return file ? file->Save(table) : 0;
}

short xio_unsave_record(short fileNum, short saveId) {
    oxStoreFile* file = oxStoreFile::Find(fileNum);
    if (!file) return oxioStatus::FILE_NOT_FOUND;
    return file->Unsave(saveId) ? oxioStatus::IO_VALID : oxioStatus::IO_VOID;
}

short xio_restore_record(short fileNum, short saveId, short locate, short) {
    oxStoreFile* file = oxStoreFile::Find(fileNum);
    if (!file) return oxioStatus::FILE_NOT_FOUND;
    const oxStoreFile::SavedImage* saved = file->Saved(saveId);
    if (!saved) return oxioStatus::IO_VOID;
    TableState* state = file->State(saved->table);
    state->buffer = saved->row;
    state->position = saved->row;
    if (locate != 1) return oxioStatus::IO_VALID;
    RowImage found;
    short raw = file->Store().Read(saved->table, saved->row.rowid, found);
    if (raw == oxioStatus::IO_VALID) state->position = std::move(found);
    return raw;
}

short xio_wr_record(short fileNum, short table, short*) {
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    if (short raw = Locate(fileNum, table, file, state); raw != oxioStatus::IO_VALID) return raw;
    RowImage row = state->buffer;
    short raw = file->Store().Insert(table, row);
    if (raw != oxioStatus::IO_VALID) return raw;
    state->position = row;
    state->buffer = std::move(row);
    return oxioStatus::IO_VALID;
}

short xio_rep_record(short fileNum, short table, short*) {
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    if (short raw = Locate(fileNum, table, file, state); raw != oxioStatus::IO_VALID) return raw;
    if (state->position.rowid == 0) return oxioStatus::INVALID_KEY;
    RowImage row = state->buffer;
    row.rowid = state->position.rowid;
    short raw = file->Store().Update(table, row, false);
    if (raw != oxioStatus::IO_VALID) return raw;
    state->position = row;
    state->buffer = std::move(row);
    return oxioStatus::IO_VALID;
}

short xio_del_record(short fileNum, short table) {
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    if (short raw = Locate(fileNum, table, file, state); raw != oxioStatus::IO_VALID) return raw;
    if (state->position.rowid == 0) return oxioStatus::INVALID_KEY;
    return file->Store().Delete(table, state->position.rowid);
}

short xio_lock_record(short fileNum, short table) {
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    if (short raw = Locate(fileNum, table, file, state); raw != oxioStatus::IO_VALID) return raw;
    if (state->position.rowid == 0) return oxioStatus::INVALID_KEY;
    return file->Store().Lock(table, state->position.rowid);
}

short xio_unlock_record(short fileNum, short table, long) {
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    if (short raw = Locate(fileNum, table, file, state); raw != oxioStatus::IO_VALID) return raw;
    if (state->position.rowid == 0) return oxioStatus::IO_VALID;
    return file->Store().Unlock(table, state->position.rowid);
}

short xio_get_relative_position(short fileNum, short table, short index, unsigned long* count) {
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    short percent = 0;
    if (Locate(fileNum, table, file, state) == oxioStatus::IO_VALID && state->position.rowid != 0 &&
        file->Store().RelativePosition(table, index, state->filter, state->position, percent) != oxioStatus::IO_VALID)
        percent = 0;
    if (count) *count = static_cast<unsigned long>(percent);
    return percent;
}

short xio_set_relative_position(short fileNum, short table, short index, short percent) {
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    if (short raw = Locate(fileNum, table, file, state); raw != oxioStatus::IO_VALID) return raw;
    RowImage found;
    short raw = file->Store().SeekRelative(table, index, state->filter, percent, found);
    if (raw != oxioStatus::IO_VALID) return raw;
    state->position = found;
    state->buffer = std::move(found);
    return oxioStatus::IO_VALID;
}
