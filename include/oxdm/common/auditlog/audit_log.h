#pragma once
// Reading the electronic audit log of a record file (written by AuditSetup),
// for the administration tool and for tests.
//
// Each entry is one column of one logged row: when (local time,
// "yyyy-mm-dd hh:mm:ss"), who (the operator id, as in the record stamps),
// the task id, the table (number and description), the record key (the
// key's values as text, joined by ", "), the label ("Added", "Changed",
// "Deleted", "deleted"), the field name, and the old and new value.

#include <vector>

#include "oxdm/base/cstring.h"

struct oxAuditLogEntry {
    long long sequence = 0;  // rises with every entry written to the file
    CString time;
    CString operatorId;
    short task = 0;
    short table = 0;
    CString tableName;
    CString recordKey;
    CString label;
    CString column;
    CString oldValue;
    CString newValue;
};

// Which entries to read; an empty field lets every entry through.
struct oxAuditLogFilter {
    CString table;  // a table number, or its description (case ignored)
    CString key;    // the record key text, exactly
    CString from;   // a time bound as oxParseAuditTime takes it, inclusive
    CString to;     // inclusive: a date alone runs to the end of that day
};

// Reads the entries of the record file at `path` (the default extension
// applies as for oxioFileSpec) that pass `filter`, in the order written. A
// file that was never audited has no entries. False, with `error` naming
// the file or the bound at fault, when the file cannot be read or a time
// bound is not a time.
bool oxReadAuditLog(const CString& path, const oxAuditLogFilter& filter, std::vector<oxAuditLogEntry>& entries,
                    CString& error);

// Turns "yyyy-mm-dd", "yyyy-mm-dd hh:mm" or "yyyy-mm-dd hh:mm:ss" (a 'T'
// may stand for the blank) into the log's full form; the missing part is
// the start of the day or minute, or with `upper` its end. False, with
// `error` saying what is wrong, for anything else.
bool oxParseAuditTime(const CString& text, bool upper, CString& normalized, CString& error);
