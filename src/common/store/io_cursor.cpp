#include "oxdm/common/store/io_cursor.h"

#include "condition_lists.h"
#include "field_convert.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/values/data.h"
#include "store_file.h"

#include <cassert>

using oxdm::store::FieldValue;
using oxdm::store::oxStoreFile;
using oxdm::store::RowImage;
using oxdm::store::SeekKind;
using oxdm::store::SeekRequest;
using oxdm::store::TableState;

namespace {

oxioStatus::Status Converted(short raw) { return oxioStatus::ConvertToOxio(raw); }

bool IsBlank(const FieldValue& value) {
    if (std::holds_alternative<std::monostate>(value)) return true;
    if (const auto* text = std::get_if<std::string>(&value)) return text->empty();
    if (const auto* whole = std::get_if<std::int64_t>(&value)) return *whole == 0;
    return std::get<double>(value) == 0.0;
}

// Whether the stamp fields (date, time, operator) that `written` carries
// differ from those of `read`. A blank stamp in `written` claims nothing (a
// new row that never saw the record) and is passed over.
bool StampsDiffer(const oxdm::store::TableSpec& table, const RowImage& written, const RowImage& read) {
    for (size_t c = 0; c < table.columns.size() && c < written.fields.size() && c < read.fields.size(); ++c) {
        if (table.columns[c].stamp == oxdm::store::StampKind::None || IsBlank(written.fields[c])) continue;
        if (written.fields[c] != read.fields[c]) return true;
    }
    return false;
}

// The open file and table state of a cursor; null when the file was closed
// under it or the table does not exist.
struct Target {
    oxStoreFile* file = nullptr;
    TableState* state = nullptr;
    explicit operator bool() const { return state != nullptr; }
};

Target Reach(const oxioDataFile* file, short table) {
    Target target;
    target.file = oxStoreFile::Find(file->FileNum());
    if (target.file) target.state = target.file->State(table);
    return target;
}

}  // namespace

oxioCursor::oxioCursor(const oxioDataFile& file, short table, short index)
    : file_(&file), table_(table), index_(index) {}

oxioCursor::~oxioCursor() {
    if (lockedRowid_ != 0) Unlock(1);
}

void oxioCursor::TakeRecord(oxStoreFile& file, long long rowid, long long version) {
    readRowid_ = rowid;
    readVersion_ = version;
    RefreshFrom(file);
}

oxioStatus::Status oxioCursor::Fetch(Seek seek, bool lock) {
    Target target = Reach(file_, table_);
    if (!target) return oxioStatus::FileNotFound;
    TableState& state = *target.state;
    oxStoreFile& file = *target.file;
    if ((seek == Seek::Next || seek == Seek::Prev) && state.position.rowid == 0)
        seek = seek == Seek::Next ? Seek::First : Seek::Last;

    SeekRequest request(table_, index_, SeekKind::First);
    request.filter = filter_;
    switch (seek) {
        case Seek::First: request.kind = SeekKind::First; break;
        case Seek::Last: request.kind = SeekKind::Last; break;
        case Seek::Next:
        case Seek::Prev:
            request.kind = seek == Seek::Next ? SeekKind::Next : SeekKind::Prev;
            request.key = file.KeyOf(table_, index_, state.position);
            request.rowid = state.position.rowid;
            break;
        case Seek::EQ:
        case Seek::GE:
        case Seek::GT: {
            request.kind = seek == Seek::EQ ? SeekKind::EQ : seek == Seek::GE ? SeekKind::GE : SeekKind::GT;
            // Only the key goes into the buffer: what the seek finds replaces the rest.
            SetKeyInBuffer(file);
            request.key = file.KeyOf(table_, index_, state.buffer);
            if (seek == Seek::GE) {
                // A partial key: the blank key columns at the end are not given.
                const oxdm::store::IndexSpec* order = file.Spec(table_)->Index(index_);
                while (order && !request.key.empty() &&
                       oxdm::store::IsBlankStored(file.Field(table_, order->columns[request.key.size() - 1]).type,
                                                  request.key.back()))
                    request.key.pop_back();
            }
            break;
        }
    }
    short raw = file.Store().Seek(request, state.scratch);
    if (raw != oxioStatus::IO_VALID) return Converted(raw);
    state.TakeScratch();
    state.filter = filter_;
    TakeRecord(file, state.position.rowid, state.position.version);
    return lock ? Lock() : oxioStatus::Success;
}

oxioStatus::Status oxioCursor::FetchFirst(bool lock) { return Fetch(Seek::First, lock); }
oxioStatus::Status oxioCursor::FetchLast(bool lock) { return Fetch(Seek::Last, lock); }
oxioStatus::Status oxioCursor::FetchNext(bool lock) { return Fetch(Seek::Next, lock); }
oxioStatus::Status oxioCursor::FetchPrev(bool lock) { return Fetch(Seek::Prev, lock); }
oxioStatus::Status oxioCursor::FetchEQ(bool lock) { return Fetch(Seek::EQ, lock); }
oxioStatus::Status oxioCursor::FetchGE(bool lock) { return Fetch(Seek::GE, lock); }
oxioStatus::Status oxioCursor::FetchGT(bool lock) { return Fetch(Seek::GT, lock); }

oxioStatus::Status oxioCursor::FetchCurrent(bool lock) {
    Target target = Reach(file_, table_);
    if (!target) return oxioStatus::FileNotFound;
    TableState& state = *target.state;
    if (state.position.rowid == 0) return oxioStatus::InvalidKey;
    short raw = target.file->Store().Read(table_, state.position.rowid, state.scratch);
    if (raw != oxioStatus::IO_VALID) return Converted(raw);
    state.TakeScratch();
    TakeRecord(*target.file, state.position.rowid, state.position.version);
    return lock ? Lock() : oxioStatus::Success;
}

oxioStatus::Status oxioCursor::SeekEQ() {
    Target target = Reach(file_, table_);
    if (!target) return oxioStatus::FileNotFound;
    TableState& state = *target.state;
    // The key of the attached values over the buffer, leaving the buffer alone.
    const oxdm::store::IndexSpec* index = target.file->Spec(table_)->Index(index_);
    if (!index) return oxioStatus::InvalidKey;
    std::vector<FieldValue> key = target.file->KeyOf(table_, index_, state.buffer);
    const std::vector<int>& columns = index->columns;
    for (const Attached& attached : attached_)
        for (size_t i = 0; i < columns.size(); ++i)
            if (columns[i] == attached.column)
                key[i] = oxdm::store::StoredFromData(target.file->Field(table_, attached.column).type, *attached.value);
    SeekRequest request(table_, index_, SeekKind::EQ, std::move(key));
    request.filter = filter_;
    short raw = target.file->Store().Seek(request, state.scratch);
    if (raw != oxioStatus::IO_VALID) return Converted(raw);
    std::swap(state.position, state.scratch);
    return oxioStatus::Success;
}

oxioStatus::Status oxioCursor::Insert(short*) {
    Target target = Reach(file_, table_);
    if (!target) return oxioStatus::FileNotFound;
    TableState& state = *target.state;
    SetBuffer();
    RowImage row = state.buffer;
    short raw = target.file->Store().Insert(table_, row);
    if (raw != oxioStatus::IO_VALID) return Converted(raw);
    state.position = row;
    state.buffer = std::move(row);
    TakeRecord(*target.file, state.position.rowid, state.position.version);
    return oxioStatus::Success;
}

oxioStatus::Status oxioCursor::Update(short*, UpdateMethod method) {
    Target target = Reach(file_, table_);
    if (!target) return oxioStatus::FileNotFound;
    TableState& state = *target.state;
    if (state.position.rowid == 0) return oxioStatus::InvalidKey;
    bool check = method == CheckConflict;
    // The record under the key is not the one this cursor read: someone
    // deleted that one and wrote another.
    if (check && readRowid_ != state.position.rowid) return oxioStatus::DataConflict;
    SetBuffer();
    // A caller that keeps its own copy of a row (a buffered data source)
    // re-reads the record before writing and hands back the stamps it saw
    // when it first read the row: stamps that differ from the record as
    // read now mean someone else wrote it in between. The version check of
    // the write catches a change since this cursor's own read.
    if (check && StampsDiffer(*target.file->Spec(table_), state.buffer, state.position))
        return oxioStatus::DataConflict;
    RowImage row = state.buffer;
    row.rowid = state.position.rowid;
    row.version = check ? readVersion_ : state.position.version;
    short raw = target.file->Store().Update(table_, row, check);
    if (raw != oxioStatus::IO_VALID) return Converted(raw);
    state.position = row;
    state.buffer = std::move(row);
    TakeRecord(*target.file, state.position.rowid, state.position.version);
    return oxioStatus::Success;
}

oxioStatus::Status oxioCursor::Delete() {
    Target target = Reach(file_, table_);
    if (!target) return oxioStatus::FileNotFound;
    if (target.state->position.rowid == 0) return oxioStatus::InvalidKey;
    return Converted(target.file->Store().Delete(table_, target.state->position.rowid));
}

oxioStatus::Status oxioCursor::Lock() {
    Target target = Reach(file_, table_);
    if (!target) return oxioStatus::FileNotFound;
    long long rowid = target.state->position.rowid;
    if (rowid == 0) return oxioStatus::InvalidKey;
    short raw = target.file->Store().Lock(table_, rowid);
    if (raw != oxioStatus::IO_VALID) return Converted(raw);
    if (lockedRowid_ != 0 && lockedRowid_ != rowid) target.file->Store().Unlock(table_, lockedRowid_);
    lockedRowid_ = rowid;
    return oxioStatus::Success;
}

oxioStatus::Status oxioCursor::Unlock(long) {
    if (lockedRowid_ == 0) return oxioStatus::Success;
    Target target = Reach(file_, table_);
    if (!target) return oxioStatus::FileNotFound;
    short raw = target.file->Store().Unlock(table_, lockedRowid_);
    lockedRowid_ = 0;
    return Converted(raw);
}

bool oxioCursor::Locked() { return lockedRowid_ != 0; }

oxioStatus::Status oxioCursor::TableLockMode(long mode) {
    tableLockMode_ = mode;
    return oxioStatus::Success;
}

void oxioCursor::Initialize() {
    Clear();
    if (Target target = Reach(file_, table_)) target.state->position = target.state->buffer;
    readRowid_ = readVersion_ = 0;
}

void oxioCursor::Clear() {
    Target target = Reach(file_, table_);
    if (!target) return;
    RowImage& buffer = target.state->buffer;
    for (size_t c = 0; c < buffer.fields.size(); ++c)
        buffer.fields[c] = oxdm::store::BlankStored(target.file->Field(table_, static_cast<int>(c)).type);
    buffer.rowid = buffer.version = 0;
    Refresh();
}

void oxioCursor::Refresh() {
    if (Target target = Reach(file_, table_)) RefreshFrom(*target.file);
}

void oxioCursor::RefreshFrom(oxStoreFile& file) {
    const TableState& state = *file.State(table_);
    for (const Attached& attached : attached_) {
        const xio_fld_def& field = file.Field(table_, attached.column);
        oxdm::store::LoadData(field.type, field.decimal, state.buffer.fields[attached.column], *attached.value,
                              attached.text);
    }
}

void oxioCursor::SetKeyInBuffer(oxStoreFile& file) {
    const oxdm::store::IndexSpec* index = file.Spec(table_)->Index(index_);
    if (!index) return;
    TableState& state = *file.State(table_);
    for (const Attached& attached : attached_)
        for (int column : index->columns)
            if (column == attached.column)
                state.buffer.fields[attached.column] =
                    oxdm::store::StoredFromData(file.Field(table_, attached.column).type, *attached.value);
}

void oxioCursor::SetBuffer() {
    Target target = Reach(file_, table_);
    if (!target) return;
    for (const Attached& attached : attached_)
        target.state->buffer.fields[attached.column] =
            oxdm::store::StoredFromData(target.file->Field(table_, attached.column).type, *attached.value);
}

bool oxioCursor::GetColumnData(const CString& column, oxData& value) const {
    Target target = Reach(file_, table_);
    if (!target) return false;
    int c = target.file->ColumnNamed(table_, column);
    if (c < 0) return false;
    const xio_fld_def& field = target.file->Field(table_, c);
    return oxdm::store::LoadData(field.type, field.decimal, target.state->buffer.fields[c], value,
                                 oxdm::store::IsText(value));
}

bool oxioCursor::SetColumnData(const CString& column, const oxData& value) {
    Target target = Reach(file_, table_);
    if (!target) return false;
    int c = target.file->ColumnNamed(table_, column);
    if (c < 0) return false;
    target.state->buffer.fields[c] = oxdm::store::StoredFromData(target.file->Field(table_, c).type, value);
    return true;
}

bool oxioCursor::AttachColumn(const CString& column, oxData& value) {
    Target target = Reach(file_, table_);
    if (!target) return false;
    int c = target.file->ColumnNamed(table_, column);
    if (c < 0) return false;
    for (const Attached& attached : attached_)
        if (attached.column == c && attached.value == &value) return true;
    attached_.push_back({c, &value, oxdm::store::IsText(value)});
    return true;
}

void oxioCursor::AttachCondition(short conditions, bool, bool, ConditionConnector) {
    conditions_ = conditions;
    RebuildFilter();
}

void oxioCursor::DetachCondition(short) {
    conditions_ = 0;
    RebuildFilter();
}

void oxioCursor::AttachRange(short range) {
    range_ = range;
    RebuildFilter();
}

void oxioCursor::DetachRange() {
    range_ = 0;
    RebuildFilter();
}

void oxioCursor::RebuildFilter() {
    filter_ = 0;
    Target target = Reach(file_, table_);
    if (!target) return;
    std::vector<oxdm::store::Filter> clauses;
    clauses.push_back(oxdm::store::CompileConditions(range_, *target.file, table_));
    clauses.push_back(oxdm::store::CompileConditions(conditions_, *target.file, table_));
    filter_ = target.file->Store().RegisterFilters(table_, clauses);
}

void oxioCursor::ClearFileBuffers() {
    if (Target target = Reach(file_, table_)) target.file->Store().DropCaches();
}

bool oxioCursor::AttachmentsExist() const {
    Target target = Reach(file_, table_);
    if (!target || target.state->position.rowid == 0) return false;
    std::vector<oxdm::store::RecordStore::Attachment> documents;
    return target.file->Store().ReadAttachments(table_, target.state->position.rowid, documents) ==
               oxioStatus::IO_VALID &&
           !documents.empty();
}
