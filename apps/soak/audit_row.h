#pragma once
// One column of one logged row of the electronic audit log, in the form the
// checker compares: numbers as whole cents, so that "1,234.50", "1234.5"
// and a blank zero compare as they should.

#include <string>
#include <tuple>

struct AuditRow {
    short table = 0;
    std::string key;    // the record key as the log writes it ("O000000001, 3")
    std::string label;  // "Changed", "Added", ...
    std::string field;
    std::string oldValue, newValue;
    auto Tie() const { return std::tie(table, key, label, field, oldValue, newValue); }
    bool operator<(const AuditRow& other) const { return Tie() < other.Tie(); }
    bool operator==(const AuditRow& other) const { return Tie() == other.Tie(); }
};

// A number of cents as the checker writes it in an AuditRow.
inline std::string CentsText(long long cents) { return std::to_string(cents) + "c"; }
