#include "oxdm/common/store/file_manager.h"

#include "oxdm/base/exception.h"

#include <algorithm>
#include <filesystem>

oxioFileManager::oxioFileManager(short group) : oxioFileManager(nullptr, group) {}

oxioFileManager::oxioFileManager(const oxTask* task, short group) : task_(task), group_(group) {}

oxioFileManager::~oxioFileManager() = default;

oxioDataFile& oxioFileManager::File(short fileNum) {
    for (const auto& file : files_)
        if (file->FileNum() == fileNum) return *file;
    CString message;
    message.Format("File number %d is not open.", fileNum);
    throw oxdmException(message);
}

oxioDataFile& oxioFileManager::File(const oxioFileSpec& spec) {
    for (const auto& file : files_)
        if (spec.IsMatchingFile(*file)) return *file;
    throw oxdmException("The file '" + spec.Path() + "' is not open.");
}

oxioStatus::Status oxioFileManager::Open(const oxioFileSpec& spec, CreateType create, RequiredType required,
                                         oxioFile::OpenMode mode, oxioFile::ShareMode share) {
    OpenFileStatus opened = AllocateAndOpenFile(spec, create, required, mode, share, group_, false);
    if (opened.file) Add(*opened.file);
    return opened.status;
}

void oxioFileManager::ForEach(const CBFunctor1wRet<oxioDataFile*, bool>& visit) {
    // The visitor may open files: walk by position over a list that may grow.
    for (size_t i = 0; i < files_.size(); ++i)
        if (!visit(files_[i].get())) return;
}

oxioStatus::Status oxioFileManager::Close(oxioDataFile& file) {
    auto it = std::find_if(files_.begin(), files_.end(), [&](const auto& held) { return held.get() == &file; });
    if (it == files_.end()) return oxioStatus::FileNotFound;
    files_.erase(it);
    return oxioStatus::Success;
}

oxioStatus::Status oxioFileManager::Remove(oxioDataFile& file) {
    std::string path = file.Spec().FilePath().str();
    oxioStatus::Status status = Close(file);
    if (status != oxioStatus::Success) return status;
    std::error_code error;
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path + suffix, error);
    return oxioStatus::Success;
}

oxioFileManager::OpenFileStatus oxioFileManager::AllocateAndOpenFile(const oxioFileSpec& spec, CreateType create,
                                                                     RequiredType, oxioFile::OpenMode,
                                                                     oxioFile::ShareMode, short, bool) {
    OpenFileStatus result;
    CString error;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(spec, create == Create, result.status, error);
    result.file = file.release();
    return result;
}

void oxioFileManager::Add(oxioDataFile& file) { files_.emplace_back(&file); }
