#include <ostream>

#include "commands.h"

namespace oxdm::admin {

namespace {

const char kUsage[] =
    "usage: oxdm-admin <command> [arguments]\n"
    "\n"
    "  check <dictionary>\n"
    "      Compile a dictionary (a name found on OXDM_DICT_PATH, or the path of its\n"
    "      .toml file) and print every error as file:line: message.\n"
    "  create <record file>\n"
    "      Create a record file from its dictionary, which the file's extension\n"
    "      names (sales.ord is described by ord). The file must not exist.\n"
    "  upgrade <record file>\n"
    "      Add the tables and fields that an older record file lacks from its\n"
    "      dictionary, keeping every record, and print what was added.\n"
    "  load <record file> <table> <csv>\n"
    "      Add the rows of a CSV file (a header row of field names, then one row\n"
    "      per record) to a table, named by number or description. Every row is\n"
    "      checked first: one bad row loads nothing.\n"
    "  dump <record file> <table> [csv] [--no-stamps]\n"
    "      Write a table as CSV, in key order, to a file or standard output;\n"
    "      --no-stamps leaves out the operator, date and time stamps.\n"
    "  generate <record file> [--customers N] [--orders N] [--lines N]\n"
    "      Write the sample customers, orders and lines of the ord dictionary\n"
    "      (10000, 50000 and 200000 by default) into empty tables, creating the\n"
    "      file when it does not exist.\n"
    "  audit <record file> [--table T] [--key K] [--from TIME] [--to TIME]\n"
    "      Print the file's audit log as a table, oldest entry first; only the\n"
    "      entries of a table (number or description), of a record key, from or\n"
    "      to a time (yyyy-mm-dd, yyyy-mm-dd hh:mm or yyyy-mm-dd hh:mm:ss; a date\n"
    "      alone as --to runs to the end of that day).\n"
    "\n"
    "Dictionaries are found on OXDM_DICT_PATH, a colon-separated list of\n"
    "directories (the current directory when unset).\n"
    "Exit status: 0 done, 1 failed, 2 wrong usage.\n";

struct Command {
    const char* name;
    int (*run)(const Words&, std::ostream&, std::ostream&);
};

const Command kCommands[] = {
    {"check", CheckCommand}, {"create", CreateCommand}, {"upgrade", UpgradeCommand},
    {"load", LoadCommand},   {"dump", DumpCommand},     {"generate", GenerateCommand},
    {"audit", AuditCommand},
};

}  // namespace

int RunAdmin(const Words& args, std::ostream& out, std::ostream& err) {
    if (!args.empty() && (args[0] == "help" || args[0] == "--help" || args[0] == "-h")) {
        out << kUsage;
        return kExitOk;
    }
    if (!args.empty())
        for (const Command& command : kCommands)
            if (args[0] == command.name) {
                int status = command.run(Words(args.begin() + 1, args.end()), out, err);
                if (status == kExitUsage) err << kUsage;
                return status;
            }
    if (!args.empty()) err << "oxdm-admin: unknown command '" << args[0] << "'\n";
    err << kUsage;
    return kExitUsage;
}

}  // namespace oxdm::admin
