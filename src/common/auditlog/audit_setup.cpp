#include "oxdm/common/auditlog/audit_setup.h"

#include <sqlite3.h>

#include <ctime>

#include "log_table.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/message_box.h"
#include "record_store.h"
#include "sqlite/sqlite_db.h"
#include "store_access.h"

using oxdm::store::SqliteDb;

namespace {

CString LocalTimeNow() {
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[24];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return CString(text);
}

// The description of the table, "" when the file does not know it.
CString TableDescription(short file, short table) {
    xio_rec_def def{};
    if (xio_get_rec_def(file, table, &def, 0) != 0) return CString();
    return CString(def.description);
}

// The field's name, or "#<number>" when the dictionary has no such field.
CString FieldName(short file, short field) {
    xio_fld_def def{};
    if (field > 0 && xio_get_fld_def(file, field, &def, 1, true) == 0) return CString(def.name);
    return CString("#" + std::to_string(field));
}

void BindText(sqlite3_stmt* stmt, int position, const CString& text) {
    sqlite3_bind_text(stmt, position, text.c_str(), text.GetLength(), SQLITE_TRANSIENT);
}

// What every entry of one LogColumnChanges shares.
struct Entry {
    short commandId;
    short file;
    short table;
    const CString& recordKey;
    const CString& label;
};

// Appends one entry per column to the log of `db` in one transaction. On
// failure leaves the log as it was and answers false with the reason, read
// before the rollback can overwrite it.
bool AppendEntries(SqliteDb& db, const Entry& entry, const std::vector<AuditSetup::ColumnInfo>& columns,
                   CString& reason) {
    auto fail = [&](int rc) {
        reason = sqlite3_errmsg(db.handle());
        if (reason.IsEmpty() || reason == "not an error") reason = sqlite3_errstr(rc);
        return false;
    };
    if (int rc = db.Exec(oxdm::auditlog::kCreateLogSql); rc != SQLITE_OK) return fail(rc);
    oxdm::store::WriteTransaction transaction(db);
    if (transaction.begun() != SQLITE_OK) return fail(transaction.begun());
    SqliteDb::Statement insert = db.Prepare(oxdm::auditlog::kInsertLogSql);
    if (!insert) return fail(db.lastError());
    const CString time = LocalTimeNow();
    const CString operatorId(oxdm::store::CurrentOperator());
    const CString tableName = TableDescription(entry.file, entry.table);
    sqlite3_stmt* stmt = insert.get();
    for (const AuditSetup::ColumnInfo& column : columns) {
        BindText(stmt, 1, time);
        BindText(stmt, 2, operatorId);
        sqlite3_bind_int(stmt, 3, entry.commandId);
        sqlite3_bind_int(stmt, 4, entry.table);
        BindText(stmt, 5, tableName);
        BindText(stmt, 6, entry.recordKey);
        BindText(stmt, 7, entry.label);
        BindText(stmt, 8, FieldName(entry.file, column.column));
        BindText(stmt, 9, column.oldValue);
        BindText(stmt, 10, column.newValue);
        const int rc = sqlite3_step(stmt);
        if (rc != SQLITE_DONE) return fail(rc);
        sqlite3_reset(stmt);
    }
    const int rc = transaction.Commit();
    return rc == SQLITE_OK || fail(rc);
}

}  // namespace

AuditSetup::AuditSetup(short commandId, short file, short, short table)
    : commandId_(commandId), file_(file), table_(table), recordKey_(oxdm::auditlog::CurrentRecordKey(file, table)) {}

AuditSetup::~AuditSetup() = default;

void AuditSetup::AddColumnInfo(short column, const CString& oldValue, const CString& newValue) {
    columns_.push_back({column, oldValue, newValue});
}

bool AuditSetup::LogColumnChanges(const CString& label) {
    if (columns_.empty()) return true;
    std::vector<ColumnInfo> columns;
    columns.swap(columns_);

    SqliteDb* db = oxdm::auditlog::RecordFileDb(file_);
    CString reason;
    if (!db) {
        reason = "file number " + CString(std::to_string(file_)) + " is not an open record file";
    } else if (AppendEntries(*db, {commandId_, file_, table_, recordKey_, label}, columns, reason)) {
        return true;
    }
    const CString where = db ? CString(db->path()) : CString("file " + std::to_string(file_));
    oxdmTaskMessageBox(nullptr,
                       "The audit log of '" + where + "' could not be written: " + reason + ". The '" + label +
                           "' entry is missing from the log; the change itself has been made.",
                       oxdmBox::IconInformation);
    return false;
}

