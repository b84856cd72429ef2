#pragma once
// The subcommands of oxdm-admin. Each takes the words after its name and
// answers the program's exit status; output goes to `out`, faults to `err`.

#include <iosfwd>
#include <string>
#include <vector>

namespace oxdm::admin {

enum ExitStatus { kExitOk = 0, kExitFailure = 1, kExitUsage = 2 };

using Words = std::vector<std::string>;

int CheckCommand(const Words& args, std::ostream& out, std::ostream& err);
int CreateCommand(const Words& args, std::ostream& out, std::ostream& err);
int UpgradeCommand(const Words& args, std::ostream& out, std::ostream& err);
int LoadCommand(const Words& args, std::ostream& out, std::ostream& err);
int DumpCommand(const Words& args, std::ostream& out, std::ostream& err);
int GenerateCommand(const Words& args, std::ostream& out, std::ostream& err);
int AuditCommand(const Words& args, std::ostream& out, std::ostream& err);

// The whole command line without the program's name: finds the subcommand
// and runs it; wrong usage prints the usage text to `err`.
int RunAdmin(const Words& args, std::ostream& out, std::ostream& err);

}  // namespace oxdm::admin
