#include <map>
#include <set>

#include "ownership.h"
#include "soak_check.h"

namespace {

struct Commit {
    CustomerCommit change;
    int process = 0;
};

// The history of one customer: its first CITY and then each committed
// token in the order the chain of replacements gives.
struct History {
    std::vector<std::string> tokens;
    std::map<std::string, size_t> position;  // token -> index in tokens
};

History FollowChain(const std::string& custno, const std::string& first, const std::vector<Commit>& commits,
                    std::vector<std::string>& problems) {
    std::map<std::string, const Commit*> byPred;
    std::set<std::string> tokens;
    for (const Commit& commit : commits) {
        if (!tokens.insert(commit.change.token).second)
            problems.push_back("Customer " + custno + ": the change " + commit.change.token +
                               " is journaled as committed twice.");
        auto [it, fresh] = byPred.emplace(commit.change.pred, &commit);
        if (!fresh)
            problems.push_back("Customer " + custno + ": the committed changes " + it->second->change.token + " and " +
                               commit.change.token + " both replaced '" + commit.change.pred +
                               "': one was written over without a data conflict being reported.");
    }
    History history;
    history.tokens.push_back(first);
    history.position[first] = 0;
    for (auto next = byPred.find(first); next != byPred.end(); next = byPred.find(history.tokens.back())) {
        const std::string& token = next->second->change.token;
        if (history.position.count(token)) break;  // a cycle; reported below as commits off the chain
        history.position[token] = history.tokens.size();
        history.tokens.push_back(token);
    }
    for (const Commit& commit : commits)
        if (!history.position.count(commit.change.token))
            problems.push_back("Customer " + custno + ": the committed change " + commit.change.token +
                               " (replacing '" + commit.change.pred +
                               "') is not in the record's history: it was lost or replaced something never committed.");
    return history;
}

// Whether every field of the record was written by one and the same write.
void CheckWhole(const std::string& custno, const CustomerImage& onFile, const CustomerImage& first,
                std::vector<std::string>& problems) {
    const long long seq = TokenSequence(onFile.city);
    const bool whole = seq < 0 ? onFile == first
                               : onFile.name == NameForToken(onFile.city) && onFile.status == StatusForSequence(seq);
    if (!whole)
        problems.push_back("Customer " + custno + " is half written: CITY '" + onFile.city + "' with NAME '" +
                           onFile.name + "' and STATUS " + std::to_string(onFile.status) + ".");
}

}  // namespace

void CheckCustomers(const FileImage& initial, const std::vector<Journal>& journals, const FileImage& final,
                    std::vector<std::string>& problems) {
    std::map<std::string, std::vector<Commit>> commits;
    std::map<std::string, std::vector<ConflictSeen>> conflicts;
    for (const Journal& journal : journals) {
        for (const JournalEntry& entry : journal.entries) {
            if (const auto* change = std::get_if<CustomerCommit>(&entry)) commits[change->custno].push_back({*change, journal.process});
            if (const auto* conflict = std::get_if<ConflictSeen>(&entry)) conflicts[conflict->custno].push_back(*conflict);
        }
    }
    for (const auto& [custno, list] : commits)
        if (!initial.customers.count(custno))
            problems.push_back("Customer " + custno + " has committed changes but was not in the file at the start.");
    for (const auto& [custno, first] : initial.customers) {
        const auto onFile = final.customers.find(custno);
        if (onFile == final.customers.end()) {
            problems.push_back("Customer " + custno + " is gone from the file.");
            continue;
        }
        const History history = FollowChain(custno, first.city, commits[custno], problems);
        if (onFile->second.city != history.tokens.back())
            problems.push_back("Customer " + custno + ": the file holds '" + onFile->second.city +
                               "' but the last committed change wrote '" + history.tokens.back() + "'.");
        CheckWhole(custno, onFile->second, first, problems);
        for (const ConflictSeen& conflict : conflicts[custno]) {
            const auto base = history.position.find(conflict.base);
            const auto seen = history.position.find(conflict.seen);
            if (base == history.position.end() || seen == history.position.end() || seen->second <= base->second)
                problems.push_back("Customer " + custno + ": a data conflict was reported (read '" + conflict.base +
                                   "', found '" + conflict.seen + "') but no committed change came in between.");
        }
    }
    for (const auto& [custno, customer] : final.customers)
        if (!initial.customers.count(custno)) problems.push_back("Customer " + custno + " on file was never written by the soak.");
}
