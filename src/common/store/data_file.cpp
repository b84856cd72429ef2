#include "oxdm/common/store/data_file.h"

#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/dictionary/open_file_table.h"
#include "field_convert.h"
#include "oxdm/common/dictionary/dictionary_loader.h"
#include "sqlite/schema.h"
#include "store_file.h"

#include <cstring>
#include <filesystem>

std::unique_ptr<oxioDataFile> oxioDataFile::Open(const oxioFileSpec& spec, bool create, oxioStatus::Status& status,
                                                 CString& error) {
    short fileNum = 0;
    short raw = oxdm::store::oxStoreFile::Open(spec.FilePath(), spec.Dictionary(), create, &fileNum, error);
    status = oxioStatus::ConvertToOxio(raw);
    if (raw != oxioStatus::IO_VALID) return nullptr;
    return std::unique_ptr<oxioDataFile>(new oxioDataFile(spec, fileNum));
}

bool oxioDataFile::MissingFields(const oxioFileSpec& spec, std::vector<oxioMissingFields>& missing, CString& error) {
    missing.clear();
    const CString path = spec.FilePath();
    if (!std::filesystem::exists(path.str())) {
        error.Format("The record file '%s' does not exist.", path.c_str());
        return false;
    }
    std::shared_ptr<const oxDictionary> dictionary;
    if (oxDictionaryLoader::Load(spec.Dictionary(), dictionary, error) != oxioStatus::IO_VALID) return false;
    short status = 0;
    std::string message;
    std::unique_ptr<oxdm::store::SqliteDb> db = oxdm::store::SqliteDb::Open(path.str(), false, status, message);
    std::vector<oxdm::store::SchemaGap> gaps;
    if (!db || oxdm::store::MissingSchema(*db, oxdm::store::TablesOf(*dictionary), gaps, message) != oxioStatus::IO_VALID) {
        error = CString(message);
        return false;
    }
    for (const auto& gap : gaps) {
        oxioMissingFields entry{gap.table, gap.wholeTable, {}};
        for (const std::string& column : gap.columns) entry.fields.push_back(CString(column));
        missing.push_back(std::move(entry));
    }
    return true;
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
