// oxdm-console: a terminal front end over the sample sales file. It drives
// the library as a screen does, through a data manager and its buffers,
// and takes its commands from standard input or a script (see
// docs/console.md).
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "console.h"
#include "console_options.h"
#include "line_input.h"
#include "oxdm/base/exception.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/notify/change_mgr.h"
#include "sales_screen.h"
#include "sample_file.h"
#include "terminal_presenter.h"

namespace {

constexpr int kExitUsage = 2;

// Runs the console over an input; the program's exit status.
int RunOn(std::istream& in, const std::string& name, bool script, const ConsoleOptions& options,
          const std::string& path) {
    const bool person = !script && isatty(STDIN_FILENO);
    LineInput input(in, name, !person, person ? "oxdm> " : "");
    TerminalPresenter presenter(input);
    oxdmSetPresenter(&presenter);
    int status = kExitUsage;
    try {
        const std::string report =
            options.noReport ? std::string()
                             : !options.reportPath.empty() ? options.reportPath : options.dataDir + "/audit-report";
        SalesScreen screen(path, options.windowRows, report);
        Console::Setting setting{options.dataDir, options.windowRows,
                                 script ? std::filesystem::path(name).parent_path().string() : std::string()};
        status = Console(screen, input, presenter, setting).Run();
    } catch (const oxdmException& fault) {
        std::printf("error: can't open the sales screen over %s: %s\n", path.c_str(), fault.Message().c_str());
    }
    oxdmSetPresenter(nullptr);
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    ConsoleOptions options;
    options.dataDir = OXDM_CONSOLE_DATA_DIR;
    std::string error;
    if (!ParseConsoleOptions(std::vector<std::string>(argv + 1, argv + argc), options, error)) {
        std::fprintf(stderr, "oxdm-console: %s\n", error.c_str());
        return kExitUsage;
    }
    if (options.help) {
        std::fputs(ConsoleUsage(), stdout);
        return 0;
    }
    // The sample dictionary is found on OXDM_DICT_PATH; by default, in the
    // source tree's examples/.
    setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 0);
    // The console keeps its settings (auditing on, printed) beside its
    // data, never in the operator's own preferences.
    setenv("XDG_CONFIG_HOME", (std::filesystem::path(options.dataDir) / "config").c_str(), 1);
    oxApp app("OX");
    OXSetApp(&app);
    int status = kExitUsage;
    const std::string path = PrepareSampleFile(options.dataDir, options.fresh, error);
    if (path.empty()) {
        std::printf("error: %s\n", error.c_str());
    } else if (options.scriptPath.empty()) {
        status = RunOn(std::cin, "standard input", false, options, path);
    } else {
        std::ifstream script(options.scriptPath);
        if (script) {
            status = RunOn(script, options.scriptPath, true, options, path);
        } else {
            std::printf("error: can't read the script %s\n", options.scriptPath.c_str());
        }
    }
    OXSetApp(nullptr);
    mvcChangeMgr::KillInstance();
    return status;
}
