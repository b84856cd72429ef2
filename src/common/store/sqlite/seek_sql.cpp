#include "sqlite/seek_sql.h"

#include "sqlite/schema.h"

#include <cassert>

namespace oxdm::store {

ProbeList ProbesFor(SeekKind kind, int n, bool unique, int keyCount) {
    assert(n < 32);
    ProbeList probes;
    switch (kind) {
        case SeekKind::First:
            probes.push_back({0, RangeOp::None, false});
            break;
        case SeekKind::Last:
            probes.push_back({0, RangeOp::None, true});
            break;
        case SeekKind::EQ:
            probes.push_back({n, RangeOp::None, false});
            break;
        case SeekKind::Next:
        case SeekKind::Prev: {
            bool back = kind == SeekKind::Prev;
            RangeOp op = back ? RangeOp::Less : RangeOp::Greater;
            // Under a unique key no other record shares the whole key, so
            // the rowid probe can only miss.
            if (!unique || n == 0) probes.push_back({n, op, back});
            for (int e = n - 1; e >= 0; --e) probes.push_back({e, op, back});
            break;
        }
        case SeekKind::GT:
            for (int e = n - 1; e >= 0; --e) probes.push_back({e, RangeOp::Greater, false});
            break;
        case SeekKind::GE: {
            int m = std::min(keyCount, n);
            if (m == 0) {
                probes.push_back({0, RangeOp::None, false});
                break;
            }
            probes.push_back({m - 1, RangeOp::GreaterEqual, false});
            for (int e = m - 2; e >= 0; --e) probes.push_back({e, RangeOp::Greater, false});
            break;
        }
    }
    return probes;
}

namespace {

const char* OpText(RangeOp op) {
    switch (op) {
        case RangeOp::Greater: return " > ?";
        case RangeOp::GreaterEqual: return " >= ?";
        case RangeOp::Less: return " < ?";
        case RangeOp::LessEqual: return " <= ?";
        case RangeOp::None: break;
    }
    return "";
}

const char* CompareText(CompareOp op) {
    switch (op) {
        case CompareOp::Equal: return " = ";
        case CompareOp::GreaterEqual: return " >= ";
        case CompareOp::LessEqual: return " <= ";
        case CompareOp::Greater: return " > ";
        case CompareOp::Less: return " < ";
        case CompareOp::NotEqual: return " <> ";
    }
    return " = ";
}

}  // namespace

std::string ProbeSql(const TableSpec& table, short index, const Probe& probe, const std::string& filterSql) {
    assert(table.Index(index) != nullptr);
    const std::vector<int>& columns = table.Index(index)->columns;
    assert(probe.equalCount <= static_cast<int>(columns.size()));
    std::string where;
    auto add = [&where](const std::string& term) { where += (where.empty() ? "" : " AND ") + term; };
    for (int i = 0; i < probe.equalCount; ++i) add(QuotedColumn(table.columns[columns[i]]) + " = ?");
    if (probe.op != RangeOp::None) {
        bool onRowid = probe.equalCount == static_cast<int>(columns.size());
        add((onRowid ? std::string(kRowidColumn) : QuotedColumn(table.columns[columns[probe.equalCount]])) +
            OpText(probe.op));
    }
    if (!filterSql.empty()) add(filterSql);

    std::string dir = probe.descending ? " DESC" : "";
    std::string order;
    for (int column : columns) order += QuotedColumn(table.columns[column]) + dir + ", ";
    order += kRowidColumn + dir;
    return "SELECT " + SelectList(table) + " FROM " + TableName(table.number) + (where.empty() ? "" : " WHERE " + where) +
           " ORDER BY " + order + " LIMIT 1";
}

std::string FilterSql(const TableSpec& table, const Filter& filter) {
    std::string sql;
    for (const ConditionTerm& term : filter) {
        std::string right = term.otherColumn >= 0 ? QuotedColumn(table.columns[term.otherColumn]) : "?";
        std::string test = QuotedColumn(table.columns[term.column]) + CompareText(term.op) + right;
        if (sql.empty())
            sql = "(" + test + ")";
        else
            sql = "(" + sql + (term.connector == Connector::Or ? " OR " : " AND ") + test + ")";
    }
    return sql;
}

}  // namespace oxdm::store
