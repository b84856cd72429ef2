#include "oxdm/common/store/bookmark.h"

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "store_file.h"

#include <cassert>

using oxdm::store::FieldValue;
using oxdm::store::oxStoreFile;

struct oxioBookmark::Mark {
    short fileNum = 0;
    short table = 0;
    long long rowid = 0;
    std::vector<FieldValue> key;      // in the cursor's index, for ordering
    std::vector<bool> foldCase;       // per key column: text compared without case
    bool hasContents = false;
    oxdm::store::RowImage contents;
};

namespace {

int CompareText(const std::string& a, const std::string& b, bool fold) {
    if (!fold) return a.compare(b);
    for (size_t i = 0; i < a.size() && i < b.size(); ++i) {
        int x = std::tolower(static_cast<unsigned char>(a[i])), y = std::tolower(static_cast<unsigned char>(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

// Orders two stored values of one column as the store's index does.
int CompareValue(const FieldValue& a, const FieldValue& b, bool fold) {
    if (const auto* x = std::get_if<std::string>(&a))
        if (const auto* y = std::get_if<std::string>(&b)) return CompareText(*x, *y, fold);
    auto number = [](const FieldValue& v) -> double {
        if (const auto* whole = std::get_if<std::int64_t>(&v)) return static_cast<double>(*whole);
        if (const auto* real = std::get_if<double>(&v)) return *real;
        return 0.0;
    };
    double x = number(a), y = number(b);
    return x < y ? -1 : x > y ? 1 : 0;
}

}  // namespace

oxioBookmark::oxioBookmark(oxioCursor& cursor, bool contents) : cursor_(&cursor), mark_(std::make_unique<Mark>()) {
    mark_->fileNum = cursor.File()->FileNum();
    mark_->table = cursor.TableID();
    oxStoreFile* file = nullptr;
    oxdm::store::TableState* state = nullptr;
    if (oxdm::store::Locate(mark_->fileNum, mark_->table, file, state) != 0) return;
    mark_->rowid = state->position.rowid;
    mark_->key = file->KeyOf(mark_->table, cursor.IndexID(), state->position);
    if (const oxdm::store::IndexSpec* index = file->Spec(mark_->table)->Index(cursor.IndexID()))
        for (int column : index->columns) mark_->foldCase.push_back(file->Spec(mark_->table)->columns[column].foldCase);
    if (contents) {
        cursor.SetBuffer();
        mark_->hasContents = true;
        mark_->contents = state->buffer;
    }
}

oxioBookmark::~oxioBookmark() = default;

oxioStatus::Status oxioBookmark::GoTo() {
    oxStoreFile* file = nullptr;
    oxdm::store::TableState* state = nullptr;
    short raw = oxdm::store::Locate(mark_->fileNum, mark_->table, file, state);
    if (raw != 0) return oxioStatus::ConvertToOxio(raw);
    if (mark_->rowid == 0) return oxioStatus::InvalidKey;
    raw = file->Store().Read(mark_->table, mark_->rowid, state->scratch);
    if (raw != 0) return oxioStatus::ConvertToOxio(raw);
    state->TakeScratch();
    cursor_->TakeRecord(*file, state->position.rowid, state->position.version);
    return oxioStatus::Success;
}

oxioStatus::Status oxioBookmark::RestoreContents(bool refresh) {
    if (!mark_->hasContents) return oxioStatus::InvalidKey;
    oxStoreFile* file = nullptr;
    oxdm::store::TableState* state = nullptr;
    short raw = oxdm::store::Locate(mark_->fileNum, mark_->table, file, state);
    if (raw != 0) return oxioStatus::ConvertToOxio(raw);
    state->buffer = mark_->contents;
    if (refresh) cursor_->Refresh();
    return oxioStatus::Success;
}

bool oxioBookmark::operator==(const oxioBookmark& other) const {
    return mark_->fileNum == other.mark_->fileNum && mark_->table == other.mark_->table && mark_->rowid != 0 &&
           mark_->rowid == other.mark_->rowid;
}

bool oxioBookmark::operator<(const oxioBookmark& other) const {
    size_t n = std::min(mark_->key.size(), other.mark_->key.size());
    for (size_t i = 0; i < n; ++i) {
        int order = CompareValue(mark_->key[i], other.mark_->key[i], i < mark_->foldCase.size() && mark_->foldCase[i]);
        if (order != 0) return order < 0;
    }
    return mark_->rowid < other.mark_->rowid;
}
