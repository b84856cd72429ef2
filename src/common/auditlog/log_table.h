#pragma once
// The audit log's table inside a record file: its name, its columns and the
// statements that make it, append to it and read it. Writer and reader share
// these so that they can never disagree on the layout.
//
// The table is append-only: triggers refuse every UPDATE and DELETE, so an
// entry, once committed, stays as written.

namespace oxdm::auditlog {

inline constexpr const char* kLogTable = "_oxdm_audit_log";

// Makes the table and its triggers when the file has none yet.
inline constexpr const char* kCreateLogSql =
    "CREATE TABLE IF NOT EXISTS _oxdm_audit_log("
    "seq INTEGER PRIMARY KEY AUTOINCREMENT, time TEXT NOT NULL, operator TEXT NOT NULL, task INTEGER NOT NULL,"
    " tbl INTEGER NOT NULL, tbl_name TEXT NOT NULL, record_key TEXT NOT NULL, label TEXT NOT NULL,"
    " field TEXT NOT NULL, old_value TEXT NOT NULL, new_value TEXT NOT NULL);"
    "CREATE TRIGGER IF NOT EXISTS _oxdm_audit_log_no_update BEFORE UPDATE ON _oxdm_audit_log"
    " BEGIN SELECT RAISE(ABORT, 'the audit log is append-only'); END;"
    "CREATE TRIGGER IF NOT EXISTS _oxdm_audit_log_no_delete BEFORE DELETE ON _oxdm_audit_log"
    " BEGIN SELECT RAISE(ABORT, 'the audit log is append-only'); END;";

// Parameters 1 to 10 in the order of the columns after seq.
inline constexpr const char* kInsertLogSql =
    "INSERT INTO _oxdm_audit_log(time, operator, task, tbl, tbl_name, record_key, label, field, old_value,"
    " new_value) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

// Every column, seq first, in the order written, of the entries that pass
// the filter: 1 a table number or description, 2 a record key, 3 and 4 the
// first and last time; an empty parameter lets every entry through.
inline constexpr const char* kSelectLogSql =
    "SELECT seq, time, operator, task, tbl, tbl_name, record_key, label, field, old_value, new_value"
    " FROM _oxdm_audit_log"
    " WHERE (?1 = '' OR tbl_name = ?1 COLLATE NOCASE OR CAST(tbl AS TEXT) = ?1) AND (?2 = '' OR record_key = ?2)"
    " AND (?3 = '' OR time >= ?3) AND (?4 = '' OR time <= ?4)"
    " ORDER BY seq";

}  // namespace oxdm::auditlog
