#pragma once
// The command line of oxdm-console.
//
//     oxdm-console [--data DIR] [--fresh] [--window ROWS] [--script FILE]
//                  [--report PATH | --no-report]

#include <string>
#include <vector>

struct ConsoleOptions {
    std::string dataDir;     // holds sales.ord; made when missing
    bool fresh = false;      // write the sample anew even when it exists
    short windowRows = 8;    // rows in the window of every buffer
    std::string scriptPath;  // empty: commands from standard input
    std::string reportPath;  // the audit report, without extension; empty: <dataDir>/audit-report
    bool noReport = false;   // audit to the log alone
    bool help = false;
};

// Reads `args` (without the program name) over the defaults in `options`.
// False with a sentence in `error` naming the argument at fault.
bool ParseConsoleOptions(const std::vector<std::string>& args, ConsoleOptions& options, std::string& error);

// The usage text, one option a line.
const char* ConsoleUsage();
