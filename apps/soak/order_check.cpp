#include <map>

#include "ownership.h"
#include "soak_check.h"

namespace {

std::string LineName(const LineKey& key) { return key.first + "/" + std::to_string(key.second); }

// The orders and lines as the journals say they must be: the first image
// with every committed change of every process applied in its order.
// Invariant: every line's order is in orders.
class OrderModel {
public:
    explicit OrderModel(const FileImage& initial) : orders_(initial.orders), lines_(initial.lines) {}

    // Applies one journal entry of `process`; a sentence when the entry
    // cannot be applied (the process journaled something impossible).
    std::string Apply(const JournalEntry& entry, int process, int processes) {
        if (const auto* added = std::get_if<LineAdded>(&entry)) return Add(*added, process, processes);
        if (const auto* removed = std::get_if<LineRemoved>(&entry)) return Remove(*removed, process, processes);
        if (const auto* rekeyed = std::get_if<OrderRekeyed>(&entry)) return Renumber(*rekeyed, process, processes);
        return "";
    }
    const std::map<std::string, OrderImage>& Orders() const { return orders_; }
    const std::map<LineKey, LineImage>& Lines() const { return lines_; }

private:
    static std::string NotOwned(const std::string& ordno, int process, int processes) {
        const int owner = OrderOwner(ordno, processes);
        return owner == process ? "" : "order " + ordno + " belongs to process " + std::to_string(owner);
    }
    std::string Add(const LineAdded& added, int process, int processes) {
        const LineKey key{added.ordno, added.lineNo};
        if (std::string why = NotOwned(added.ordno, process, processes); !why.empty()) return why;
        auto order = orders_.find(added.ordno);
        if (order == orders_.end()) return "line " + LineName(key) + " added to an order that does not exist";
        if (lines_.count(key)) return "line " + LineName(key) + " added twice";
        if (added.totalCents != order->second.totalCents + added.line.AmountCents())
            return "the total written with line " + LineName(key) + " is not the old total plus the line";
        lines_[key] = added.line;
        order->second.totalCents = added.totalCents;
        return "";
    }
    std::string Remove(const LineRemoved& removed, int process, int processes) {
        const LineKey key{removed.ordno, removed.lineNo};
        if (std::string why = NotOwned(removed.ordno, process, processes); !why.empty()) return why;
        auto line = lines_.find(key);
        if (line == lines_.end()) return "line " + LineName(key) + " removed but not there";
        OrderImage& order = orders_.at(removed.ordno);
        if (removed.totalCents != order.totalCents - line->second.AmountCents())
            return "the total written without line " + LineName(key) + " is not the old total less the line";
        lines_.erase(line);
        order.totalCents = removed.totalCents;
        return "";
    }
    std::string Renumber(const OrderRekeyed& rekeyed, int process, int processes) {
        for (const std::string& ordno : {rekeyed.from, rekeyed.to})
            if (std::string why = NotOwned(ordno, process, processes); !why.empty()) return why;
        auto order = orders_.find(rekeyed.from);
        if (order == orders_.end()) return "order " + rekeyed.from + " renumbered but not there";
        if (orders_.count(rekeyed.to)) return "order " + rekeyed.from + " renumbered to " + rekeyed.to + ", which exists";
        OrderImage moved = order->second;
        moved.totalCents = 0;
        orders_.erase(order);
        orders_[rekeyed.to] = moved;
        std::erase_if(lines_, [&](const auto& line) { return line.first.first == rekeyed.from; });
        return "";
    }

    std::map<std::string, OrderImage> orders_;
    std::map<LineKey, LineImage> lines_;
};

// Every key of `want` present and equal in `have`, and nothing more.
template <class Key, class Value, class Name, class Describe>
void Compare(const std::map<Key, Value>& want, const std::map<Key, Value>& have, Name name, Describe describe,
             std::vector<std::string>& problems) {
    for (const auto& [key, value] : want) {
        const auto found = have.find(key);
        if (found == have.end())
            problems.push_back(name(key) + " was committed but is not on file: a committed change was lost.");
        else if (!(found->second == value))
            problems.push_back(name(key) + " on file is " + describe(found->second) + " but the journals say " +
                               describe(value) + ".");
    }
    for (const auto& [key, value] : have)
        if (!want.count(key))
            problems.push_back(name(key) + " is on file (" + describe(value) +
                               ") but no committed change leaves it there.");
}

// On file alone: every line has its order, every order's total is its lines' sum.
void CheckConsistent(const FileImage& final, std::vector<std::string>& problems) {
    std::map<std::string, long long> sums;
    for (const auto& [key, line] : final.lines) {
        if (!final.orders.count(key.first)) problems.push_back("Line " + LineName(key) + " has no order on file.");
        sums[key.first] += line.AmountCents();
    }
    for (const auto& [ordno, order] : final.orders)
        if (order.totalCents != sums[ordno])
            problems.push_back("Order " + ordno + " is inconsistent with its lines: its TOTAL is " +
                               std::to_string(order.totalCents) + " cents, its lines add up to " +
                               std::to_string(sums[ordno]) + ".");
}

}  // namespace

void CheckOrders(const FileImage& initial, const std::vector<Journal>& journals, const FileImage& final,
                 int processes, std::vector<std::string>& problems) {
    OrderModel model(initial);
    for (const Journal& journal : journals) {
        for (size_t i = 0; i < journal.entries.size(); ++i) {
            if (std::string why = model.Apply(journal.entries[i], journal.process, processes); !why.empty())
                problems.push_back("Journal of process " + std::to_string(journal.process) + ", entry " +
                                   std::to_string(i + 1) + ": " + why + ".");
        }
    }
    Compare(
        model.Orders(), final.orders, [](const std::string& ordno) { return "Order " + ordno; },
        [](const OrderImage& order) {
            return "customer " + order.custno + ", total " + std::to_string(order.totalCents) + " cents";
        },
        problems);
    Compare(
        model.Lines(), final.lines, [](const LineKey& key) { return "Line " + LineName(key); },
        [](const LineImage& line) {
            return line.item + " x" + std::to_string(line.qty) + " at " + std::to_string(line.priceCents) + " cents";
        },
        problems);
    CheckConsistent(final, problems);
}
