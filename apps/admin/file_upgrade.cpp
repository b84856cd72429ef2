#include "file_upgrade.h"

#include <filesystem>

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/file_spec.h"
#include "table_fields.h"

namespace oxdm::admin {

bool UpgradeRecordFile(const CString& path, std::ostream& out, CString& error) {
    oxioFileSpec spec(path);
    CString filePath = spec.FilePath();
    if (!std::filesystem::exists(filePath.str())) {
        error.Format("The record file '%s' does not exist; make it with 'create'.", filePath.c_str());
        return false;
    }
    // The gaps are read first, through a handle closed before the upgrade.
    std::vector<oxioMissingFields> missing;
    if (!oxioDataFile::MissingFields(spec, missing, error)) return false;
    oxioStatus::Status status;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(spec, true, status, error);
    if (!file) return false;

    for (const oxioMissingFields& gap : missing) {
        CString added;
        for (const CString& field : gap.fields) added += (added.IsEmpty() ? "" : ", ") + field;
        out << "table " << gap.table << " (" << TableDescription(file->FileNum(), gap.table) << "): "
            << (gap.wholeTable ? "added the table with its fields " : "added the fields ") << added << "\n";
    }
    if (missing.empty()) out << filePath << " is up to date with its dictionary " << spec.Dictionary() << ".\n";
    return true;
}

}  // namespace oxdm::admin
