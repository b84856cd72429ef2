#pragma once
// AuditSetup: the electronic audit log of one row of one table.
//
//     AuditSetup log(task->ID(), file, 0, table);
//     log.AddColumnInfo(xio_num(file, 0, 0, "CITY"), "Oslo", "Bergen");
//     log.LogColumnChanges("Changed");
//
// The log is an append-only table of the record file itself (see
// audit_log.h for its rows and how to read them). The record key is taken
// when the object is made: the key of the table's current record, as the
// record layer last read or wrote it. LogColumnChanges writes every column
// added since the last call in one transaction of its own; a write that
// fails is told to the operator through the presenter, naming the file and
// the reason, and never touches the records themselves.

#include <vector>

#include "oxdm/base/cstring.h"

class AuditSetup {
public:
    // `file` is an open record file's number and `table` one of its tables;
    // a file number that is none is reported when the columns are logged.
    // The third argument is not used.
    AuditSetup(short commandId, short file, short, short table);
    virtual ~AuditSetup();
    AuditSetup(const AuditSetup&) = delete;
    AuditSetup& operator=(const AuditSetup&) = delete;

    // Adds one column (a field number of the file's dictionary) with its
    // value before and after.
    void AddColumnInfo(short column, const CString& oldValue, const CString& newValue);
    // Writes the columns added since the last call under `label` ("Added",
    // "Changed", ...) and forgets them. Answers false when the log could not
    // be written; the operator has been told then. No columns: writes
    // nothing and answers true.
    bool LogColumnChanges(const CString& label);

    const CString& RecordKey() const { return recordKey_; }

    // One column waiting to be logged.
    struct ColumnInfo {
        short column;
        CString oldValue;
        CString newValue;
    };

private:
    // commandId_, file_ and table_ never change; recordKey_ is the key text
    // taken at construction, empty when the table stood on no record;
    // columns_ are those added since the last LogColumnChanges, in order.
    short commandId_;
    short file_;
    short table_;
    CString recordKey_;
    std::vector<ColumnInfo> columns_;
};
