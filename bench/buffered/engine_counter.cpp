#include "engine_counter.h"

#include <dlfcn.h>
#include <sqlite3.h>

#include <cctype>
#include <cstring>
#include <initializer_list>
#include <strings.h>

namespace {

EngineCount g_count;

// True for INSERT, UPDATE, DELETE and REPLACE: the statements after which
// sqlite3_changes tells their own rows.
bool ChangesRows(const char* sql) {
    while (*sql && std::isspace(static_cast<unsigned char>(*sql))) ++sql;
    for (const char* verb : {"INSERT", "UPDATE", "DELETE", "REPLACE"}) {
        if (strncasecmp(sql, verb, std::strlen(verb)) == 0) return true;
    }
    return false;
}

// True when `sql` names a record table: the store calls table n "t<n>".
bool OnRecordTable(const char* sql) {
    for (const char* at = sql; (at = std::strchr(at, 't')) != nullptr; ++at) {
        const bool starts = at == sql || std::isspace(static_cast<unsigned char>(at[-1])) || at[-1] == '"';
        if (starts && std::isdigit(static_cast<unsigned char>(at[1]))) return true;
    }
    return false;
}

}  // namespace

extern "C" int sqlite3_step(sqlite3_stmt* stmt) {
    using Step = int (*)(sqlite3_stmt*);
    static const Step real = reinterpret_cast<Step>(dlsym(RTLD_NEXT, "sqlite3_step"));
    const int rc = real(stmt);
    const char* sql = sqlite3_sql(stmt);
    if (sql == nullptr) return rc;
    if (rc == SQLITE_ROW) {
        ++(OnRecordTable(sql) ? g_count.rowsRead : g_count.otherRead);
    } else if (rc == SQLITE_DONE && !sqlite3_stmt_readonly(stmt)) {
        if (ChangesRows(sql)) {
            const int changed = sqlite3_changes(sqlite3_db_handle(stmt));
            (OnRecordTable(sql) ? g_count.rowsWritten : g_count.lockWrites) += changed;
        }
    }
    return rc;
}

EngineCount EngineCounted() { return g_count; }
