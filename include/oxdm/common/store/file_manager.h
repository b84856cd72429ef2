#pragma once
// oxioFileManager: the owner of the open record files of one task.
//
// Invariant: every file in files_ is open and owned here; it is closed when
// the manager closes or removes it, or when the manager is destroyed.

#include <memory>
#include <vector>

#include "oxdm/base/functor.h"
#include "oxdm/common/store/data_file.h"

class oxTask;

class oxioFileManager {
public:
    enum CreateType { NoCreate = 0, Create = 1 };
    enum RequiredType { Required = 0, Optional = 1 };

    // A file that AllocateAndOpenFile made, owned by the caller, and the
    // status of the open; the file is null when the open failed.
    struct OpenFileStatus {
        oxioDataFile* file = nullptr;
        oxioStatus::Status status = oxioStatus::Success;
    };

    explicit oxioFileManager(short group);
    oxioFileManager(const oxTask* task, short group);
    virtual ~oxioFileManager();
    oxioFileManager(const oxioFileManager&) = delete;
    oxioFileManager& operator=(const oxioFileManager&) = delete;

    // The open file of that number, or the first that matches the spec.
    // A programming fault when there is none: throws oxdmException.
    virtual oxioDataFile& File(short fileNum);
    virtual oxioDataFile& File(const oxioFileSpec& spec);
    // Opens a further file of `spec` and keeps it.
    virtual oxioStatus::Status Open(const oxioFileSpec& spec, CreateType create, RequiredType required,
                                    oxioFile::OpenMode mode, oxioFile::ShareMode share = oxioFile::Shared);

    // Calls `visit` for each open file in the order opened; stops at the
    // first false.
    void ForEach(const CBFunctor1wRet<oxioDataFile*, bool>& visit);
    short TransactionGroup() const { return group_; }
    const oxTask* Task() const { return task_; }

protected:
    // Closes the file and forgets it. Raw-free status: Success, or
    // FileNotFound when the file is not one of this manager's.
    virtual oxioStatus::Status Close(oxioDataFile& file);
    // Closes the file, forgets it and deletes its record file from the disk.
    virtual oxioStatus::Status Remove(oxioDataFile& file);
    // Opens a file that the caller then owns (or hands to Add).
    virtual OpenFileStatus AllocateAndOpenFile(const oxioFileSpec& spec, CreateType create, RequiredType required,
                                               oxioFile::OpenMode mode, oxioFile::ShareMode share, short group,
                                               bool exclusive);
    // Takes ownership of a file made by AllocateAndOpenFile.
    virtual void Add(oxioDataFile& file);

private:
    const oxTask* task_;
    short group_;
    std::vector<std::unique_ptr<oxioDataFile>> files_;
};
