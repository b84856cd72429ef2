#pragma once
// Counts what the SQLite engine does for this process: rows returned by
// statements, and rows changed by statements that write, each split into
// the record tables (t1, t2, ...) and the rest. The program that
// links engine_counter.cpp defines sqlite3_step itself (exported, so the
// library's calls come there too), so every statement of the library and of
// the program is seen. Statements run through sqlite3_exec are stepped
// inside SQLite and are not seen: the store uses them for BEGIN, COMMIT and
// schema changes only.

struct EngineCount {
    long rowsRead = 0;      // rows returned by statements on the record tables
    long otherRead = 0;     // rows returned by any other statement (schema, locks)
    long rowsWritten = 0;   // rows changed in the record tables
    long lockWrites = 0;    // rows changed in any other table: the store's locks

    EngineCount& operator+=(const EngineCount& more) {
        rowsRead += more.rowsRead;
        otherRead += more.otherRead;
        rowsWritten += more.rowsWritten;
        lockWrites += more.lockWrites;
        return *this;
    }
    EngineCount operator-(const EngineCount& before) const {
        return {rowsRead - before.rowsRead, otherRead - before.otherRead, rowsWritten - before.rowsWritten,
                lockWrites - before.lockWrites};
    }
};

// What has been counted since the program started.
EngineCount EngineCounted();
