#pragma once
// A whole soak run in three steps, so that a test can come between them:
// prepare the record file, run the processes, check the outcome.
//
//     FileImage initial;
//     if (!PrepareSoak(options, dir, initial, error)) ...
//     SoakRun run = RunSoakProcesses(options, dir, initial);
//     SoakOutcome outcome = CheckSoakRun(options, dir, initial);

#include <string>
#include <vector>

#include "audit_row.h"
#include "file_image.h"
#include "journal.h"
#include "soak_options.h"

// The record file of a soak run in `dir`.
std::string SoakFilePath(const std::string& dir);

// Makes `dir`, writes the sample data into a fresh record file there (any
// former file and journals are removed) and reads it into `initial`; false
// with a sentence in `error`. No connection to the file stays open.
bool PrepareSoak(const SoakOptions& options, const std::string& dir, FileImage& initial, std::string& error);

struct SoakRun {
    double seconds = 0;        // wall time from the first fork to the last exit
    int failedProcesses = 0;   // processes that did not exit with 0
};

// Forks the options' number of processes, each making its edits, and waits
// for all of them.
SoakRun RunSoakProcesses(const SoakOptions& options, const std::string& dir, const FileImage& initial);

struct SoakOutcome {
    std::vector<std::string> problems;  // empty: the run is proven sound
    std::vector<Journal> journals;
    std::vector<AuditRow> logged;       // the audit log, as the check compares it
    WorkerFigures total;                // the sum of every process's figures
    long long overwrites = 0, kept = 0, notices = 0;  // the conflicts by answer
};

// Reads the file, its audit log and every journal in `dir` and checks them against `initial`.
SoakOutcome CheckSoakRun(const SoakOptions& options, const std::string& dir, const FileImage& initial);
