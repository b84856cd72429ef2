// oxdm-soak: several processes edit one record file at once through data
// managers and buffers, each journaling what it believes it committed; then
// a checker proves from the file that nothing committed was lost or doubled,
// that every data conflict was reported and that no record is half written.
// Prints the figures of the run; the exit code is 0 only for a sound run.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "soak_run.h"

namespace {

// A fresh folder under the system's temporary folder.
std::string TemporaryDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "oxdm-soak-XXXXXX").string();
    return ::mkdtemp(pattern.data()) ? pattern : std::string();
}

void PrintFigures(const SoakOptions& options, const SoakRun& run, const SoakOutcome& outcome) {
    const WorkerFigures& t = outcome.total;
    std::printf("processes %d, edits %lld (%d each), wall time %.2f s, %.0f edits/s\n", options.processes, t.edits,
                options.edits, run.seconds, run.seconds > 0 ? static_cast<double>(t.edits) / run.seconds : 0.0);
    std::printf("committed %lld, conflicts %lld (overwritten %lld, theirs kept %lld, reported only %lld), "
                "retries %lld, given up %lld\n",
                t.committed, t.conflicts, outcome.overwrites, outcome.kept, outcome.notices, t.retries, t.givenUp);
}

}  // namespace

int main(int argc, char** argv) {
    setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 0);
    if (argc == 2 && (std::string(argv[1]) == "--help" || std::string(argv[1]) == "-h")) {
        std::fputs(SoakUsage(), stdout);
        return 0;
    }
    SoakOptions options;
    std::string error;
    if (!ParseSoakOptions(argc, argv, options, error)) {
        std::fprintf(stderr, "oxdm-soak: %s\n%s", error.c_str(), SoakUsage());
        return 2;
    }
    const std::string dir = options.dir.empty() ? TemporaryDir() : options.dir;
    if (dir.empty()) {
        std::fprintf(stderr, "oxdm-soak: cannot make a temporary folder.\n");
        return 2;
    }
    FileImage initial;
    if (!PrepareSoak(options, dir, initial, error)) {
        std::fprintf(stderr, "oxdm-soak: %s\n", error.c_str());
        return 2;
    }
    std::printf("oxdm-soak: seed %llu, %zu customers, %zu orders, %zu lines in %s\n", options.seed,
                initial.customers.size(), initial.orders.size(), initial.lines.size(), SoakFilePath(dir).c_str());
    const SoakRun run = RunSoakProcesses(options, dir, initial);
    const SoakOutcome outcome = CheckSoakRun(options, dir, initial);
    PrintFigures(options, run, outcome);
    if (run.failedProcesses > 0) std::printf("%d process(es) failed\n", run.failedProcesses);
    const size_t shown = std::min<size_t>(outcome.problems.size(), 25);
    for (size_t i = 0; i < shown; ++i) std::printf("  problem: %s\n", outcome.problems[i].c_str());
    if (outcome.problems.size() > shown) std::printf("  ... and %zu more\n", outcome.problems.size() - shown);
    const bool sound = outcome.problems.empty() && run.failedProcesses == 0;
    std::printf("check: %s\n", sound ? "passed" : "FAILED");
    return sound ? 0 : 1;
}
