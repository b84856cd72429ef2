#pragma once
// oxioFile, oxioDataFile, oxioFileInfo: an open record file of the class
// face. The flat face (xio_*) addresses the same file by FileNum().
//
// An oxioDataFile owns its entry in the process-wide table of open files
// while it lives: the entry holds the database, one record buffer for each
// table and the saved record images. Its destructor closes the entry.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/store/file_spec.h"
#include "oxdm/common/values/io_status.h"

class oxioFile {
public:
    enum OpenMode { ReadWrite = 0, ReadOnly = 1 };
    enum ShareMode { Shared = 0, Exclusive = 1 };

    virtual ~oxioFile() = default;
    // The number by which the flat face addresses the file; 0 when closed.
    short FileNum() const { return fileNum_; }

protected:
    oxioFile() = default;
    short fileNum_ = 0;
};

// What an existing record file lacks against its dictionary, per table: the
// fields it does not hold yet (all of them when the table itself is
// missing). An upgrade (Open with create) adds exactly these.
struct oxioMissingFields {
    short table = 0;
    bool wholeTable = false;
    std::vector<CString> fields;
};

class oxioDataFile : public oxioFile {
public:
    // Compares the record file of `spec` with its dictionary without
    // changing either. On failure (no such file, a damaged file, a broken
    // dictionary) answers false with `error` naming the file.
    static bool MissingFields(const oxioFileSpec& spec, std::vector<oxioMissingFields>& missing, CString& error);

    // Opens the record file of `spec`, creating it when `create` is true
    // (and adding the fields that an older file lacks). On failure answers
    // null with the status; `error` gets a sentence naming the file.
    static std::unique_ptr<oxioDataFile> Open(const oxioFileSpec& spec, bool create, oxioStatus::Status& status,
                                              CString& error);
    ~oxioDataFile() override;
    oxioDataFile(const oxioDataFile&) = delete;
    oxioDataFile& operator=(const oxioDataFile&) = delete;

    const oxioFileSpec& Spec() const { return spec_; }

private:
    oxioDataFile(const oxioFileSpec& spec, short fileNum);
    oxioFileSpec spec_;
};

// What the file's definition tells of it.
class oxioFileInfo {
public:
    explicit oxioFileInfo(const oxioFile& file);
    // The application abbreviation of the file's definition.
    CString ApplAbbr() const;
    // The name of the dictionary that describes the file.
    CString Description() const;

private:
    short fileNum_;
};
