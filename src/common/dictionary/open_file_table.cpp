#include "oxdm/common/dictionary/open_file_table.h"

#include <cassert>

#include "oxdm/common/values/io_status.h"

oxOpenFile::oxOpenFile(std::shared_ptr<const oxDictionary> dictionary)
    : dictionary_(std::move(dictionary)) {
    assert(dictionary_);
}

oxOpenFile::~oxOpenFile() = default;

oxOpenFileTable& oxOpenFileTable::Instance() {
    // Never destroyed: files that static objects close during the program's
    // exit must still find their table, whatever the order of destruction.
    static oxOpenFileTable* const table = new oxOpenFileTable;
    return *table;
}

short oxOpenFileTable::Open(std::unique_ptr<oxOpenFile> file, short* fileNum) {
    assert(file && fileNum);
    std::size_t slot = 0;
    while (slot < slots_.size() && slots_[slot]) ++slot;
    if (slot == slots_.size()) {
        if (slots_.size() >= MaxOpenFiles) return oxioStatus::TOO_MANY_OPEN_FILES;
        slots_.emplace_back();
    }
    file->fileNum_ = static_cast<short>(slot + 1);
    *fileNum = file->fileNum_;
    slots_[slot] = std::move(file);
    return oxioStatus::IO_VALID;
}

oxOpenFile* oxOpenFileTable::Find(short fileNum) const {
    if (fileNum < 1 || fileNum > static_cast<short>(slots_.size())) return nullptr;
    return slots_[fileNum - 1].get();
}

short oxOpenFileTable::Close(short fileNum) {
    if (!Find(fileNum)) return oxioStatus::FILE_NOT_FOUND;
    // Take the file out of its slot before destroying it, so that a destructor
    // that looks the table up sees the number free.
    std::unique_ptr<oxOpenFile> file = std::move(slots_[fileNum - 1]);
    file->fileNum_ = 0;
    file.reset();
    return oxioStatus::IO_VALID;
}

short oxOpenFileTable::OpenCount() const {
    short n = 0;
    for (const auto& slot : slots_) n = static_cast<short>(n + (slot ? 1 : 0));
    return n;
}
