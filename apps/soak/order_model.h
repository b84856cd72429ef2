#pragma once
// The orders and lines as the journals say they must be: the first image
// with every committed change of every process applied in the order it was
// journaled, and the audit log rows each change must have left.

#include <map>
#include <string>
#include <vector>

#include "audit_row.h"
#include "file_image.h"
#include "journal.h"

// "ORDNO/LINENO", how the checker names a line.
std::string LineName(const LineKey& key);

// Invariant: every line's order is in orders_; auditRows_ holds, in the
// order applied, the log rows of every entry applied.
class OrderModel {
public:
    explicit OrderModel(const FileImage& initial) : orders_(initial.orders), lines_(initial.lines) {}

    // Applies one journal entry of `process` (entries other than order and
    // line changes are passed over). Empty when it applied; else a sentence
    // saying why the entry cannot be (the process journaled the impossible),
    // and nothing changes.
    std::string Apply(const JournalEntry& entry, int process, int processes);

    const std::map<std::string, OrderImage>& Orders() const { return orders_; }
    const std::map<LineKey, LineImage>& Lines() const { return lines_; }
    const std::vector<AuditRow>& AuditRows() const { return auditRows_; }

private:
    std::string Add(const LineAdded& added, int process, int processes);
    std::string Remove(const LineRemoved& removed, int process, int processes);
    std::string Renumber(const OrderRekeyed& rekeyed, int process, int processes);
    void AuditTotal(const std::string& ordno, long long from, long long to);

    std::map<std::string, OrderImage> orders_;
    std::map<LineKey, LineImage> lines_;
    std::vector<AuditRow> auditRows_;
};
