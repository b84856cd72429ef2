#pragma once
// Records read, counted where the store reads them: this test program
// defines sqlite3_step (exported, so the library's calls land here) and
// counts every row a statement hands back.

// The rows handed back since the program started.
long RowsRead();

// The rows read while `body` runs.
template <typename Body>
long RowsReadBy(Body body) {
    const long before = RowsRead();
    body();
    return RowsRead() - before;
}
