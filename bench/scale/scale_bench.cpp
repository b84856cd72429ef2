// The scale benchmark: the same screen operations (screen_stack.h) over the
// same record file of 1,000,000 customers with each stack this build has:
// the raw SQLite floor, the library's buffered data source and, when built
// with Qt, QSqlTableModel and QSqlQueryModel. Each session of each stack
// runs in a fresh process of its own (stack_child.h), so that every stack
// starts cold in its own memory while the file stays in the operating
// system's cache; the peak resident memory of a session is its process's.
// A first round warms that cache and is not counted; the stacks take turns
// in a rotating order. Prints a Markdown table: median milliseconds, their
// ratio to the floor, peak resident memory, and the name each stack showed
// at the top after each operation (the same for all when they agree).
//
// Usage: scale_bench [runs] [cache folder]     (defaults: 5, the temporary folder)
//        scale_bench --session <stack> <file> <run>   (one session; used by the above)

#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "median.h"
#include "scale_file.h"
#include "stack_child.h"

namespace {

constexpr long kRows = 1000000;

// What the sessions of one stack gave.
struct StackFigures {
    std::map<std::string, std::vector<double>> ms;  // by operation
    std::map<std::string, std::string> topName;     // by operation, of the last session
    long peakKiB = 0;                               // the highest of the sessions
    long beforeOpenKiB = 0;
};

// Runs one session in a child process and adds what it printed.
void RunSession(const std::string& stack, const std::string& path, int run, StackFigures* figures) {
    int out[2];
    if (pipe(out) != 0) std::exit(1);
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(out[1], STDOUT_FILENO);
        close(out[0]);
        close(out[1]);
        const std::string number = std::to_string(run);
        execl("/proc/self/exe", "scale_bench", "--session", stack.c_str(), path.c_str(), number.c_str(), nullptr);
        _exit(127);
    }
    close(out[1]);
    FILE* lines = fdopen(out[0], "r");
    char buffer[256];
    while (std::fgets(buffer, sizeof buffer, lines)) {
        char op[32], rest[128] = "";
        double value = 0;
        if (std::sscanf(buffer, "%31s %lf %127[^\n]", op, &value, rest) < 2) continue;
        if (std::string(op) == "rss_before_open") {
            figures->beforeOpenKiB = static_cast<long>(value);
        } else {
            figures->ms[op].push_back(value);
            figures->topName[op] = rest;
        }
    }
    std::fclose(lines);
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "the session of %s failed\n", stack.c_str());
        std::exit(1);
    }
    figures->peakKiB = std::max(figures->peakKiB, usage.ru_maxrss);
}

void PrintTable(const std::vector<std::string>& stacks, std::map<std::string, StackFigures>& figures, int runs) {
    std::printf("Median of %d sessions, milliseconds (ratio to the floor)\n\n| operation |", runs);
    for (const std::string& stack : stacks) std::printf(" %s |", stack.c_str());
    std::printf(" top row shown |\n|---|");
    for (size_t i = 0; i < stacks.size(); ++i) std::printf("---:|");
    std::printf("---|\n");
    std::map<std::string, double> total;
    for (const std::string& op : kOperations) {
        const double floor = Median(figures["floor"].ms[op]);
        std::printf("| %s |", op.c_str());
        std::map<std::string, std::string> stacksByName;  // the stacks that showed each name
        for (const std::string& stack : stacks) {
            const double ms = Median(figures[stack].ms[op]);
            total[stack] += ms;
            std::printf(stack == "floor" ? " %.2f |" : " %.2f (%.3g×) |", ms, ms / floor);
            std::string& shown = stacksByName[figures[stack].topName[op]];
            shown += (shown.empty() ? "" : ", ") + stack;
        }
        std::string names;
        for (const auto& [name, which] : stacksByName)
            names += (names.empty() ? "" : "; ") + (stacksByName.size() > 1 ? which + ": " : "") + name;
        std::printf(" %s |\n", names.c_str());
    }
    std::printf("| the session (sum) |");
    for (const std::string& stack : stacks)
        std::printf(stack == "floor" ? " %.2f |" : " %.2f (%.3g×) |", total[stack], total[stack] / total["floor"]);
    std::printf(" |\n");
    std::printf("| peak resident MiB |");
    for (const std::string& stack : stacks) {
        const double mib = static_cast<double>(figures[stack].peakKiB) / 1024;
        const double floor = static_cast<double>(figures["floor"].peakKiB) / 1024;
        std::printf(stack == "floor" ? " %.1f |" : " %.1f (%.3g×) |", mib, mib / floor);
    }
    std::printf(" |\n| resident before opening, MiB |");
    for (const std::string& stack : stacks) std::printf(" %.1f |", static_cast<double>(figures[stack].beforeOpenKiB) / 1024);
    std::printf(" |\n");
}

}  // namespace

int main(int argc, char** argv) {
    ::setenv("OXDM_DICT_PATH", OXDM_SCALE_DICT_DIR, 0);
    if (argc == 5 && std::string(argv[1]) == "--session") return RunStackSession(argv[2], argv[3], std::atoi(argv[4]));
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    const std::filesystem::path dir =
        argc > 2 ? std::filesystem::path(argv[2]) : std::filesystem::temp_directory_path() / "oxdm-scale-bench";
    std::filesystem::create_directories(dir);
    const std::string path = ScaleFile(dir, kRows);
    // Held for the whole run, as another user of the file would hold it:
    // the file's log then lives on between sessions, and no session pays
    // for making it anew on its first write.
    sqlite3* keeper = nullptr;
    sqlite3_open_v2(path.c_str(), &keeper, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_exec(keeper, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
    const std::vector<std::string> stacks = StackNames();
    std::map<std::string, StackFigures> figures;
    for (int run = 0; run <= runs; ++run) {
        for (size_t i = 0; i < stacks.size(); ++i) {
            const std::string& stack = stacks[(i + static_cast<size_t>(run)) % stacks.size()];
            StackFigures warmup;
            RunSession(stack, path, run, run == 0 ? &warmup : &figures[stack]);
        }
    }
    sqlite3_close(keeper);
    PrintTable(stacks, figures, runs);
    return 0;
}
