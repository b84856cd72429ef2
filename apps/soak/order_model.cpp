#include "order_model.h"

#include "ownership.h"

namespace {

std::string NotOwned(const std::string& ordno, int process, int processes) {
    const int owner = OrderOwner(ordno, processes);
    return owner == process ? "" : "order " + ordno + " belongs to process " + std::to_string(owner);
}

}  // namespace

std::string LineName(const LineKey& key) { return key.first + "/" + std::to_string(key.second); }

std::string OrderModel::Apply(const JournalEntry& entry, int process, int processes) {
    if (const auto* added = std::get_if<LineAdded>(&entry)) return Add(*added, process, processes);
    if (const auto* removed = std::get_if<LineRemoved>(&entry)) return Remove(*removed, process, processes);
    if (const auto* rekeyed = std::get_if<OrderRekeyed>(&entry)) return Renumber(*rekeyed, process, processes);
    return "";
}

void OrderModel::AuditTotal(const std::string& ordno, long long from, long long to) {
    // A value that does not change is not a changed column.
    if (from != to) auditRows_.push_back({2, ordno, "Changed", "TOTAL", CentsText(from), CentsText(to)});
}

std::string OrderModel::Add(const LineAdded& added, int process, int processes) {
    const LineKey key{added.ordno, added.lineNo};
    if (std::string why = NotOwned(added.ordno, process, processes); !why.empty()) return why;
    auto order = orders_.find(added.ordno);
    if (order == orders_.end()) return "line " + LineName(key) + " added to an order that does not exist";
    if (lines_.count(key)) return "line " + LineName(key) + " added twice";
    if (added.totalCents != order->second.totalCents + added.line.AmountCents())
        return "the total written with line " + LineName(key) + " is not the old total plus the line";
    lines_[key] = added.line;
    const std::string logKey = added.ordno + ", " + std::to_string(added.lineNo);
    auditRows_.push_back({3, logKey, "Added", "LINENO", CentsText(0), CentsText(added.lineNo * 100)});
    auditRows_.push_back({3, logKey, "Added", "ITEM", "", added.line.item});
    auditRows_.push_back({3, logKey, "Added", "QTY", CentsText(0), CentsText(added.line.qty * 100)});
    auditRows_.push_back({3, logKey, "Added", "PRICE", CentsText(0), CentsText(added.line.priceCents)});
    AuditTotal(added.ordno, order->second.totalCents, added.totalCents);
    order->second.totalCents = added.totalCents;
    return "";
}

std::string OrderModel::Remove(const LineRemoved& removed, int process, int processes) {
    const LineKey key{removed.ordno, removed.lineNo};
    if (std::string why = NotOwned(removed.ordno, process, processes); !why.empty()) return why;
    auto line = lines_.find(key);
    if (line == lines_.end()) return "line " + LineName(key) + " removed but not there";
    OrderImage& order = orders_.at(removed.ordno);
    if (removed.totalCents != order.totalCents - line->second.AmountCents())
        return "the total written without line " + LineName(key) + " is not the old total less the line";
    lines_.erase(line);
    // Lines are not an audited table: their deletion leaves no row.
    AuditTotal(removed.ordno, order.totalCents, removed.totalCents);
    order.totalCents = removed.totalCents;
    return "";
}

std::string OrderModel::Renumber(const OrderRekeyed& rekeyed, int process, int processes) {
    for (const std::string& ordno : {rekeyed.from, rekeyed.to})
        if (std::string why = NotOwned(ordno, process, processes); !why.empty()) return why;
    auto order = orders_.find(rekeyed.from);
    if (order == orders_.end()) return "order " + rekeyed.from + " renumbered but not there";
    if (orders_.count(rekeyed.to)) return "order " + rekeyed.from + " renumbered to " + rekeyed.to + ", which exists";
    OrderImage moved = order->second;
    moved.totalCents = 0;
    // The log names the record by the key it was written under.
    auditRows_.push_back({2, rekeyed.to, "Changed", "ORDNO", rekeyed.from, rekeyed.to});
    AuditTotal(rekeyed.to, order->second.totalCents, 0);
    orders_.erase(order);
    orders_[rekeyed.to] = moved;
    std::erase_if(lines_, [&](const auto& line) { return line.first.first == rekeyed.from; });
    return "";
}
