#include "oxdm/record/file_manager.h"

#include <algorithm>

#include "oxdm/base/exception.h"

oxdmFileManager::oxdmFileManager(short group) : oxdmFileManager(nullptr, group) {}

oxdmFileManager::oxdmFileManager(const oxTask* task, short group)
    : oxioFileManager(task, group), searchSpec_(CString(), 0) {}

oxdmFileManager::~oxdmFileManager() = default;

oxioDataFile& oxdmFileManager::FileForTable(const oxioFileSpec& spec, const oxdmTableDef* table, bool create,
                                            short group) {
    searchResult_ = nullptr;
    searchSpec_ = spec;
    searchTable_ = table;
    ForEach(makeFunctor(static_cast<CBFunctor1wRet<oxioDataFile*, bool>*>(nullptr), *this,
                        &oxdmFileManager::FindAvailFile));
    oxioDataFile* file = searchResult_;
    if (file == nullptr) {
        if (AlreadyFailed(spec)) throw oxdmException("Couldn't open file.");
        OpenFileStatus opened = AllocateAndOpenFile(spec, create ? Create : NoCreate, Required, oxioFile::ReadWrite,
                                                    oxioFile::Shared, group, false);
        if (opened.file == nullptr || opened.status != oxioStatus::Success) {
            delete opened.file;
            searchResult_ = nullptr;
            failedSpecs_.push_back(std::make_shared<oxioFileSpec>(spec));
            throw oxdmException("Couldn't open file.");
        }
        file = opened.file;
        Add(*file);
    }
    if (table != nullptr) RegisterTable(table, file);
    return *file;
}

bool oxdmFileManager::FindAvailFile(oxioDataFile* file) {
    if (!searchSpec_.IsMatchingFile(*file) || searchTable_ == nullptr) return true;
    auto entry = registered_.find(file);
    if (entry != registered_.end() &&
        std::find(entry->second.begin(), entry->second.end(), searchTable_) != entry->second.end()) {
        return true;
    }
    searchResult_ = file;
    return false;
}

void oxdmFileManager::ReleaseTable(const oxioFileSpec& spec, const oxdmTableDef* table) {
    searchResult_ = nullptr;
    searchSpec_ = spec;
    searchTable_ = table;
    ForEach(makeFunctor(static_cast<CBFunctor1wRet<oxioDataFile*, bool>*>(nullptr), *this,
                        &oxdmFileManager::FindAndReleaseTable));
}

bool oxdmFileManager::FindAndReleaseTable(oxioDataFile* file) {
    if (!searchSpec_.IsMatchingFile(*file)) return true;
    auto entry = registered_.find(file);
    if (entry == registered_.end()) return true;
    auto user = std::find(entry->second.begin(), entry->second.end(), searchTable_);
    if (user == entry->second.end()) return true;
    entry->second.erase(user);
    return false;
}

void oxdmFileManager::RegisterTable(const oxdmTableDef* table, oxioDataFile* file) {
    registered_[file].push_back(table);
}

bool oxdmFileManager::AlreadyFailed(const oxioFileSpec& spec) const {
    for (const auto& failed : failedSpecs_) {
        if (*failed == spec) return true;
    }
    return false;
}
