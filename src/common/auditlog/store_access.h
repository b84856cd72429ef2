#pragma once
// What the audit log needs of an open record file that the record face does
// not offer: the file's own database connection (the log is written on it,
// in a transaction of its own, after the record's write has committed) and
// the key of the record a table stands on. This file and its source are the
// only ones of the layer that know the store's insides.


#include "oxdm/base/cstring.h"

namespace oxdm::store {
class SqliteDb;
}

namespace oxdm::auditlog {

// The database of open record file `file`; null when the number is not an
// open record file kept in SQLite.
store::SqliteDb* RecordFileDb(short file);

// The key values of the record that `table` of `file` stands on, as text
// joined by ", ", or "#<record number>" for a table without key columns;
// empty when it stands on none or there is no such table.
CString CurrentRecordKey(short file, short table);

}  // namespace oxdm::auditlog
