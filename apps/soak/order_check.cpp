#include <map>

#include "order_model.h"
#include "soak_check.h"

namespace {

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

OrderModel ReplayOrders(const FileImage& initial, const std::vector<Journal>& journals, int processes,
                        std::vector<std::string>& problems) {
    OrderModel model(initial);
    for (const Journal& journal : journals) {
        for (size_t i = 0; i < journal.entries.size(); ++i) {
            if (std::string why = model.Apply(journal.entries[i], journal.process, processes); !why.empty())
                problems.push_back("Journal of process " + std::to_string(journal.process) + ", entry " +
                                   std::to_string(i + 1) + ": " + why + ".");
        }
    }
    return model;
}

void CheckOrders(const OrderModel& model, const FileImage& final,
                 std::vector<std::string>& problems) {
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
