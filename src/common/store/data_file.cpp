#include "oxdm/common/store/data_file.h"

#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/dictionary/open_file_table.h"
#include "store_file.h"

#include <cstring>

std::unique_ptr<oxioDataFile> oxioDataFile::Open(const oxioFileSpec& spec, bool create, oxioStatus::Status& status,
                                                 CString& error) {
    short fileNum = 0;
    short raw = oxdm::store::oxStoreFile::Open(spec.FilePath(), spec.Dictionary(), create, &fileNum, error);
    status = oxioStatus::ConvertToOxio(raw);
    if (raw != oxioStatus::IO_VALID) return nullptr;
    return std::unique_ptr<oxioDataFile>(new oxioDataFile(spec, fileNum));
}

oxioDataFile::oxioDataFile(const oxioFileSpec& spec, short fileNum) : spec_(spec) { fileNum_ = fileNum; }

oxioDataFile::~oxioDataFile() {
    if (fileNum_ != 0) oxOpenFileTable::Instance().Close(fileNum_);
}

oxioFileInfo::oxioFileInfo(const oxioFile& file) : fileNum_(file.FileNum()) {}

CString oxioFileInfo::ApplAbbr() const {
    xio_file_def def{};
    if (xio_get_def(fileNum_, &def, 1) != 0) return CString();
    return CString(def.appl_abbr, static_cast<int>(strnlen(def.appl_abbr, sizeof def.appl_abbr)));
}

CString oxioFileInfo::Description() const {
    const oxOpenFile* file = oxOpenFileTable::Instance().Find(fileNum_);
    return file ? file->Dictionary().Name() : CString();
}
