#include "read_counter.h"

#include <dlfcn.h>
#include <sqlite3.h>

namespace {

long g_rows = 0;

}  // namespace

extern "C" int sqlite3_step(sqlite3_stmt* stmt) {
    using Step = int (*)(sqlite3_stmt*);
    static const Step real = reinterpret_cast<Step>(dlsym(RTLD_NEXT, "sqlite3_step"));
    const int rc = real(stmt);
    if (rc == SQLITE_ROW) ++g_rows;
    return rc;
}

long RowsRead() { return g_rows; }
