#include "file_upgrade.h"

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "oxdm/common/dictionary/dictionary_loader.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/file_spec.h"
#include "sqlite/schema.h"
#include "sqlite/sqlite_db.h"
#include "table_fields.h"

namespace oxdm::admin {

namespace {

using ColumnsByTable = std::map<short, std::set<std::string>>;

// The columns of each table that the record file holds now; a table it
// lacks is missing from the map. The file is read through the store's own
// engine and its table naming, so the two cannot drift apart.
bool StoredColumns(const CString& path, short tables, ColumnsByTable& out, CString& error) {
    short status = 0;
    std::string message;
    std::unique_ptr<oxdm::store::SqliteDb> db = oxdm::store::SqliteDb::Open(path.str(), false, status, message);
    if (!db) {
        error = CString(message);
        return false;
    }
    for (short t = 1; t <= tables; ++t) {
        oxdm::store::SqliteDb::Statement stmt = db->Prepare("SELECT name FROM pragma_table_info(?)");
        if (!stmt) {
            error.Format("The record file '%s' cannot be read: %s.", path.c_str(), sqlite3_errstr(db->lastError()));
            return false;
        }
        std::string table = oxdm::store::TableName(t);
        sqlite3_bind_text(stmt.get(), 1, table.c_str(), -1, SQLITE_TRANSIENT);
        std::set<std::string> names;
        int rc;
        while ((rc = sqlite3_step(stmt.get())) == SQLITE_ROW)
            names.insert(reinterpret_cast<const char*>(sqlite3_column_text(stmt.get(), 0)));
        if (rc != SQLITE_DONE) {
            error.Format("The record file '%s' cannot be read: %s.", path.c_str(), sqlite3_errstr(rc));
            return false;
        }
        if (!names.empty()) out[t] = std::move(names);
    }
    return true;
}

}  // namespace

bool UpgradeRecordFile(const CString& path, std::ostream& out, CString& error) {
    oxioFileSpec spec(path);
    CString filePath = spec.FilePath();
    if (!std::filesystem::exists(filePath.str())) {
        error.Format("The record file '%s' does not exist; make it with 'create'.", filePath.c_str());
        return false;
    }
    // Opening for creation compiles the dictionary and adds what is missing;
    // the layout is read first, through a handle closed before that.
    std::shared_ptr<const oxDictionary> dictionary;
    if (oxDictionaryLoader::Load(spec.Dictionary(), dictionary, error) != oxioStatus::IO_VALID) return false;
    ColumnsByTable before;
    if (!StoredColumns(filePath, dictionary->TableCount(), before, error)) return false;
    oxioStatus::Status status;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(spec, true, status, error);
    if (!file) return false;

    bool changed = false;
    xio_file_def def{};
    xio_get_def(file->FileNum(), &def, 1);
    for (short t = 1; t <= def.tables; ++t) {
        std::vector<TableField> fields = FieldsOf(file->FileNum(), t);
        auto held = before.find(t);
        CString added;
        for (const TableField& field : fields)
            if (held == before.end() || !held->second.count(field.name.str()))
                added += (added.IsEmpty() ? "" : ", ") + field.name;
        if (added.IsEmpty()) continue;
        changed = true;
        out << "table " << t << " (" << TableDescription(file->FileNum(), t) << "): ";
        if (held == before.end())
            out << "added the table with its fields " << added << "\n";
        else
            out << "added the fields " << added << "\n";
    }
    if (!changed) out << filePath << " is up to date with its dictionary " << spec.Dictionary() << ".\n";
    return true;
}

}  // namespace oxdm::admin
