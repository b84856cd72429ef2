#include <algorithm>
#include <map>
#include <optional>

#include "oxdm/common/auditlog/audit_log.h"
#include "ownership.h"
#include "soak_check.h"

namespace {

bool IsNumber(short table, const std::string& field) {
    return (table == 2 && field == "TOTAL") || (table == 3 && (field == "LINENO" || field == "QTY" || field == "PRICE"));
}

// A number's text in cents; the text itself when it is not a number.
std::string Cents(const std::string& text) {
    long long cents = 0;
    return ParseCents(text, cents) ? CentsText(cents) : text;
}

std::string Describe(const AuditRow& row) {
    return "table " + std::to_string(row.table) + ", record '" + row.key + "', " + row.label + " " + row.field +
           " '" + row.oldValue + "' -> '" + row.newValue + "'";
}

}  // namespace

std::vector<AuditRow> ComparableAuditRows(const std::vector<oxAuditLogEntry>& entries) {
    std::vector<AuditRow> rows;
    for (const oxAuditLogEntry& entry : entries) {
        AuditRow row{entry.table,         entry.recordKey.str(), entry.label.str(),
                     entry.column.str(),  entry.oldValue.str(),  entry.newValue.str()};
        if (row.table == 1 && row.field == "STATUS") continue;
        if (row.table == 1 && row.field == "NAME") row.oldValue.clear();
        if (IsNumber(row.table, row.field)) {
            row.oldValue = Cents(row.oldValue);
            row.newValue = Cents(row.newValue);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

void CheckAuditLog(const std::vector<Journal>& journals, const OrderModel& model, const std::vector<AuditRow>& logged,
                   std::vector<std::string>& problems) {
    std::map<AuditRow, int> balance;  // expected minus logged, per row
    for (const Journal& journal : journals) {
        // A save that failed leaves its columns pending in the process's
        // audit trail (nothing is printed, so nothing is dropped); the next
        // saved customer logs them, keeping the old value of the first edit.
        std::optional<std::string> pendingCity;
        for (const JournalEntry& entry : journal.entries) {
            if (const auto* conflict = std::get_if<ConflictSeen>(&entry);
                conflict && conflict->answer != ConflictAnswer::Overwrite && !pendingCity)
                pendingCity = conflict->base;
            if (const auto* refused = std::get_if<CustomerInUse>(&entry); refused && !pendingCity)
                pendingCity = refused->base;
            if (const auto* commit = std::get_if<CustomerCommit>(&entry)) {
                ++balance[AuditRow{1, commit->custno, "Changed", "CITY", pendingCity.value_or(commit->base), commit->token}];
                ++balance[AuditRow{1, commit->custno, "Changed", "NAME", "", NameForToken(commit->token)}];
                pendingCity.reset();
            }
        }
    }
    for (const AuditRow& row : model.AuditRows()) ++balance[row];
    for (const AuditRow& row : logged) --balance[row];
    for (const auto& [row, count] : balance) {
        if (count > 0)
            problems.push_back("The audit log lacks " + std::to_string(count) + " row(s) of a committed change: " +
                               Describe(row) + ".");
        if (count < 0)
            problems.push_back("The audit log holds " + std::to_string(-count) +
                               " row(s) that no committed change made: " + Describe(row) + ".");
    }
}
