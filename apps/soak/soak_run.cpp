#include "soak_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "oxdm/common/auditlog/audit_log.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/file_spec.h"
#include "sample_data.h"
#include "soak_check.h"
#include "soak_worker.h"

namespace {

std::unique_ptr<oxioDataFile> OpenRecordFile(const std::string& dir, bool create, std::string& error) {
    oxioStatus::Status status = oxioStatus::Success;
    CString text;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(oxioFileSpec(SoakFilePath(dir).c_str()), create, status, text);
    if (!file) error = text.str();
    return file;
}

}  // namespace

std::string SoakFilePath(const std::string& dir) { return dir + "/soak.ord"; }

bool PrepareSoak(const SoakOptions& options, const std::string& dir, FileImage& initial, std::string& error) {
    std::error_code failure;
    std::filesystem::create_directories(dir, failure);
    if (failure) {
        error = "Cannot make the folder " + dir + ": " + failure.message() + ".";
        return false;
    }
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(SoakFilePath(dir) + suffix, failure);
    for (int i = 0; i < kMaxSoakProcesses; ++i) std::filesystem::remove(JournalPath(dir, i), failure);

    std::unique_ptr<oxioDataFile> file = OpenRecordFile(dir, true, error);
    if (!file) return false;
    CString text;
    if (oxGenerateSample(*file, oxSampleCounts{options.customers, options.orders, options.lines}, text) !=
        oxioStatus::Success) {
        error = text.str();
        return false;
    }
    return ReadFileImage(*file, initial, error);
}

SoakRun RunSoakProcesses(const SoakOptions& options, const std::string& dir, const FileImage& initial) {
    SoakRun run;
    std::fflush(nullptr);  // nothing buffered is written twice by the children
    const auto start = std::chrono::steady_clock::now();
    std::vector<pid_t> children;
    for (int index = 0; index < options.processes; ++index) {
        const pid_t pid = ::fork();
        if (pid == 0) {
            const int code = RunSoakProcess(options, dir, index, initial, SoakFilePath(dir));
            std::fflush(nullptr);
            ::_exit(code);
        }
        if (pid < 0) {
            std::perror("oxdm-soak: fork");
            ++run.failedProcesses;
        } else {
            children.push_back(pid);
        }
    }
    for (pid_t pid : children) {
        int status = 0;
        if (::waitpid(pid, &status, 0) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) ++run.failedProcesses;
    }
    run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return run;
}

SoakOutcome CheckSoakRun(const SoakOptions& options, const std::string& dir, const FileImage& initial) {
    SoakOutcome outcome;
    std::string error;
    for (int index = 0; index < options.processes; ++index) {
        Journal journal;
        if (!ReadJournal(JournalPath(dir, index), index, journal, error)) outcome.problems.push_back(error);
        outcome.journals.push_back(journal);
    }
    FileImage final;
    {
        std::unique_ptr<oxioDataFile> file = OpenRecordFile(dir, false, error);
        if (!file || !ReadFileImage(*file, final, error)) {
            outcome.problems.push_back(error);
            return outcome;
        }
    }
    std::vector<oxAuditLogEntry> entries;
    CString text;
    if (!oxReadAuditLog(CString(SoakFilePath(dir).c_str()), oxAuditLogFilter{}, entries, text)) {
        outcome.problems.push_back(text.str());
        return outcome;
    }
    outcome.logged = ComparableAuditRows(entries);
    for (const Journal& journal : outcome.journals) {
        const WorkerFigures& f = journal.figures;
        outcome.total.edits += f.edits;
        outcome.total.committed += f.committed;
        outcome.total.conflicts += f.conflicts;
        outcome.total.retries += f.retries;
        outcome.total.givenUp += f.givenUp;
        for (const JournalEntry& entry : journal.entries) {
            if (const auto* conflict = std::get_if<ConflictSeen>(&entry)) {
                long long& count = conflict->answer == ConflictAnswer::Overwrite ? outcome.overwrites
                                   : conflict->answer == ConflictAnswer::Kept    ? outcome.kept
                                                                                 : outcome.notices;
                ++count;
            }
        }
    }
    for (std::string& problem : CheckSoak(initial, outcome.journals, final, outcome.logged, options.processes))
        outcome.problems.push_back(std::move(problem));
    return outcome;
}
