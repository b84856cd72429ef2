#pragma once
// oxOpenFileTable: the process-wide table of open files of the flat face.
// A file number (short, 1 or more) names one oxOpenFile: a dictionary opened
// with xio_open_dictionary, or a data file opened by the record store, which
// derives its own class from oxOpenFile. Either way xio_get_def,
// xio_get_rec_def, xio_get_fld_def, xio_get_key_def, xio_get_item_alpha and
// xio_num answer from the file's Dictionary(), and xio_cls_file closes it
// (destroying the oxOpenFile).
//
// The store registers a data file like this:
//
//     class oxStoreFile : public oxOpenFile { ... };   // its database, buffers
//     short num = 0;
//     short status = oxOpenFileTable::Instance().Open(
//         std::make_unique<oxStoreFile>(dict, ...), &num);
//     ...
//     auto* f = dynamic_cast<oxStoreFile*>(oxOpenFileTable::Instance().Find(num));
//
// Used on one thread only, like the rest of the record layer.

#include <memory>
#include <vector>

#include "oxdm/common/dictionary/dictionary.h"

class oxOpenFile {
public:
    // REQUIRES: dictionary is not null.
    explicit oxOpenFile(std::shared_ptr<const oxDictionary> dictionary);
    virtual ~oxOpenFile();

    oxOpenFile(const oxOpenFile&) = delete;
    oxOpenFile& operator=(const oxOpenFile&) = delete;

    const oxDictionary& Dictionary() const { return *dictionary_; }
    const std::shared_ptr<const oxDictionary>& SharedDictionary() const { return dictionary_; }

    // The number the table gave this file; 0 while it is not in the table.
    short FileNum() const { return fileNum_; }

private:
    friend class oxOpenFileTable;
    // Invariant: dictionary_ is never null; fileNum_ is the slot that owns
    // this object in oxOpenFileTable, or 0.
    std::shared_ptr<const oxDictionary> dictionary_;
    short fileNum_ = 0;
};

class oxOpenFileTable {
public:
    enum { MaxOpenFiles = 255 };

    static oxOpenFileTable& Instance();

    // Takes the file and gives it the lowest free number, stored in *fileNum.
    // Raw status: IO_VALID, or TOO_MANY_OPEN_FILES (the file is then
    // destroyed and *fileNum is left alone).
    // REQUIRES: file and fileNum are not null.
    short Open(std::unique_ptr<oxOpenFile> file, short* fileNum);

    // The open file of that number; null when the number is not open.
    oxOpenFile* Find(short fileNum) const;

    // Destroys the file of that number. Raw status: IO_VALID, or
    // FILE_NOT_FOUND when the number is not open.
    short Close(short fileNum);

    // How many files are open.
    short OpenCount() const;

private:
    oxOpenFileTable() = default;

    // Invariant: slots_[n - 1] owns file number n, or is null when n is free;
    // an owned file's FileNum() is n. The vector only grows, to MaxOpenFiles.
    std::vector<std::unique_ptr<oxOpenFile>> slots_;
};
