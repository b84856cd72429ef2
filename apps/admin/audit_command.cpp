// audit: the electronic audit log of a record file, as a table.
#include <algorithm>
#include <array>
#include <ostream>

#include "commands.h"
#include "oxdm/common/auditlog/audit_log.h"

namespace oxdm::admin {

namespace {

constexpr size_t kColumns = 9;
using Row = std::array<std::string, kColumns>;

const Row kHeading = {"Time", "Operator", "Task", "Table", "Key", "Label", "Field", "Old value", "New value"};

Row RowOf(const oxAuditLogEntry& entry) {
    return {entry.time.str(),     entry.operatorId.str(), std::to_string(entry.task),
            entry.tableName.str(), entry.recordKey.str(), entry.label.str(),
            entry.column.str(),    entry.oldValue.str(),  entry.newValue.str()};
}

// Every column as wide as its widest cell, two blanks apart, no trailing blanks.
void PrintTable(const std::vector<Row>& rows, std::ostream& out) {
    std::array<size_t, kColumns> widths{};
    for (const Row& row : rows)
        for (size_t c = 0; c < kColumns; ++c) widths[c] = std::max(widths[c], row[c].size());
    auto print = [&](const Row& row) {
        std::string line;
        for (size_t c = 0; c < kColumns; ++c) {
            if (c > 0) line += "  ";
            line += row[c];
            if (c + 1 < kColumns) line.append(widths[c] - row[c].size(), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << "\n";
    };
    print(rows[0]);
    Row rule;
    for (size_t c = 0; c < kColumns; ++c) rule[c] = std::string(widths[c], '-');
    print(rule);
    for (size_t i = 1; i < rows.size(); ++i) print(rows[i]);
}

}  // namespace

int AuditCommand(const Words& args, std::ostream& out, std::ostream& err) {
    std::string path;
    oxAuditLogFilter filter;
    const std::pair<const char*, CString*> options[] = {
        {"--table", &filter.table}, {"--key", &filter.key}, {"--from", &filter.from}, {"--to", &filter.to}};
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i].rfind("--", 0) != 0) {
            if (!path.empty()) return kExitUsage;
            path = args[i];
            continue;
        }
        auto option = std::find_if(std::begin(options), std::end(options),
                                   [&](const auto& known) { return args[i] == known.first; });
        if (option == std::end(options)) {
            err << "oxdm-admin: audit has no option '" << args[i] << "'.\n";
            return kExitUsage;
        }
        if (i + 1 == args.size()) {
            err << "oxdm-admin: " << args[i] << " needs a value.\n";
            return kExitUsage;
        }
        *option->second = CString(args[++i]);
    }
    if (path.empty()) return kExitUsage;

    std::vector<oxAuditLogEntry> entries;
    CString error;
    if (!oxReadAuditLog(CString(path), filter, entries, error)) {
        err << "oxdm-admin: " << error << "\n";
        return kExitFailure;
    }
    if (entries.empty()) {
        out << "No audit entries.\n";
        return kExitOk;
    }
    std::vector<Row> rows{kHeading};
    for (const oxAuditLogEntry& entry : entries) rows.push_back(RowOf(entry));
    PrintTable(rows, out);
    out << entries.size() << (entries.size() == 1 ? " entry" : " entries") << ".\n";
    return kExitOk;
}

}  // namespace oxdm::admin
