#include "console_options.h"

#include <charconv>

namespace {

constexpr short kMaxWindowRows = 200;

bool ParseRows(const std::string& text, short& rows) {
    int value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || value < 2 || value > kMaxWindowRows) return false;
    rows = static_cast<short>(value);
    return true;
}

}  // namespace

bool ParseConsoleOptions(const std::vector<std::string>& args, ConsoleOptions& options, std::string& error) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--fresh") {
            options.fresh = true;
            continue;
        }
        if (arg == "--no-report") {
            options.noReport = true;
            continue;
        }
        if (arg == "--help" || arg == "-h") {
            options.help = true;
            continue;
        }
        if (arg != "--data" && arg != "--window" && arg != "--script" && arg != "--report") {
            error = "unknown option '" + arg + "' (argument " + std::to_string(i + 1) + "); try --help";
            return false;
        }
        if (i + 1 == args.size() || args[i + 1].empty()) {
            error = "option " + arg + " needs a value (argument " + std::to_string(i + 1) + ")";
            return false;
        }
        const std::string& value = args[++i];
        if (arg == "--data") {
            options.dataDir = value;
        } else if (arg == "--script") {
            options.scriptPath = value;
        } else if (arg == "--report") {
            options.reportPath = value;
        } else if (!ParseRows(value, options.windowRows)) {
            error = "option --window wants a number of rows from 2 to " + std::to_string(kMaxWindowRows) + ", not '" +
                    value + "' (argument " + std::to_string(i + 1) + ")";
            return false;
        }
    }
    if (options.noReport && !options.reportPath.empty()) {
        error = "options --report and --no-report exclude each other";
        return false;
    }
    return true;
}

const char* ConsoleUsage() {
    return "usage: oxdm-console [options]\n"
           "  --data DIR      the folder of the sample file sales.ord (made, with the sample, when missing)\n"
           "  --fresh         write the sample anew, dropping what the file held\n"
           "  --window ROWS   rows in the window of each buffer (2 to 200, default 8)\n"
           "  --script FILE   read commands from FILE, echoing each, instead of standard input\n"
           "  --report PATH   write the audit report to PATH.pdf and PATH.txt (default DIR/audit-report)\n"
           "  --no-report     write no audit report; the record file's audit log is kept all the same\n"
           "  --help          this text\n"
           "Type 'help' at the prompt for the commands.\n";
}
