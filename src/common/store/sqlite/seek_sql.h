#pragma once
// The statements of the seek family.
//
// A seek is answered by a chain of probes, each an indexed seek with an
// equality prefix and one range comparison:
//
//   k1 = ? AND ... AND k(e) = ? AND k(e+1) > ?  ORDER BY k1..kn, rowid LIMIT 1
//
// SQLite runs a row-value comparison (k1,k2,rowid) > (?,?,?) as a seek on k1
// followed by a filter, which walks every record with an equal k1; these
// probes stay logarithmic however often a key value repeats. "Next" tries
// the deepest probe first (same key, later rowid) and widens one column at a
// time until a probe finds a record or the shallowest one fails.

#include "record_store.h"

#include <array>
#include <string>
#include <vector>

namespace oxdm::store {

enum class RangeOp : char { None, Greater, GreaterEqual, Less, LessEqual };

// One probe: `equalCount` leading index columns bound to equal; then `op`
// on the next column (on the rowid when equalCount is the index's length);
// rows ordered forward or, when `descending`, backward.
struct Probe {
    int equalCount = 0;
    RangeOp op = RangeOp::None;
    bool descending = false;
};

// The probes of one seek, in the order to try them: one per key column at
// most, and one for the rowid.
class ProbeList {
public:
    void push_back(const Probe& probe) { items_[static_cast<size_t>(count_++)] = probe; }
    const Probe* begin() const { return items_.data(); }
    const Probe* end() const { return items_.data() + count_; }

private:
    std::array<Probe, 32> items_{};
    int count_ = 0;
};

// REQUIRES: indexLength < 32.
// The probes that answer a seek. `keyCount` is the number of key values
// given (GE may give a prefix).
ProbeList ProbesFor(SeekKind kind, int indexLength, bool uniqueIndex, int keyCount);

// REQUIRES: table.Index(index) exists.
// The SELECT text of one probe on `index` of `table`, with `filterSql`
// (already parenthesised, or empty) joined by AND. Placeholders come in the
// order: equal values, the range value, then the filter's constants.
std::string ProbeSql(const TableSpec& table, short index, const Probe& probe, const std::string& filterSql);

// The WHERE text of a filter, read left to right with no grouping; its
// constants are bound in term order. Empty for an empty filter.
std::string FilterSql(const TableSpec& table, const Filter& filter);

}  // namespace oxdm::store
