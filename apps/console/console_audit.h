#pragma once
// ConsoleAudit: the audit trail of the console's screen. Auditing is held
// on for the whole run, so every row saved, reverted or deleted through the
// screen's buffers goes to the record file's electronic log. With a report
// path the console runs its own print job (it needs no hub to confirm one)
// and the printed report is written to <path>.pdf and <path>.txt when the
// audit ends.
//
// Invariants: printHandle_ is the open print job while reportPath_ is not
// empty, 0 otherwise. Ownership: audit_ is the only handle on its trail
// (present until the destructor ends it), so the trail ends with this
// object; the task, query and buffers must outlive it.

#include <optional>
#include <string>
#include <vector>

#include "oxdm/audit/audit.h"

class oxdmBufferedFileDataSource;
class oxdmQuery;
class oxTask;
struct oxAuditLogEntry;

class ConsoleAudit {
public:
    // Starts auditing the buffer tree under `root`; an empty `reportPath`
    // audits to the log alone.
    ConsoleAudit(oxTask& task, const oxdmQuery& query, oxdmBufferedFileDataSource& root, std::string reportPath);
    // Ends the trail and writes the report, printing where it went.
    ~ConsoleAudit();
    ConsoleAudit(const ConsoleAudit&) = delete;
    ConsoleAudit& operator=(const ConsoleAudit&) = delete;

private:
    std::string reportPath_;
    short printHandle_ = 0;
    std::optional<oxdmAudit> audit_;
};

// One entry of the log as a line: sequence, time, operator, table, key,
// label and the column with its old and new value.
std::string AuditLine(const oxAuditLogEntry& entry);
// The log of the record file at `path` as lines, in the order written;
// false with a sentence in `error` when it can't be read.
bool ReadAuditLines(const std::string& path, std::vector<std::string>& lines, std::string& error);
