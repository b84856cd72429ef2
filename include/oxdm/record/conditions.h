#pragma once
// oxdmConditions: a list of stored conditions (xc_cond_def) that the record
// layer evaluates by itself while it walks a file; and the builders that
// make them.
//
// A list reads left to right with no grouping: each record after the first
// carries the connector (and, or) that joins it to everything before it, so
// (a || b) && c is built by combining from the left.
//
//     oxdmConditionField total(file, 2, "TOTAL"), cust(file, 2, "CUSTNO");
//     oxdmConditions c = (total >= 100.0 || cust == CString("C1")) && total < 500.0;
//     short handle = xc_init_conditions(&init, true);
//     c.Put(handle);
//
// The comparison builders take a field on the left and a double, a text, a
// date record, a time record or another field on the right, and give a
// one-record list. A greater-than is not among them: it is never produced.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/store/conditions.h"
#include "oxdm/common/values/xval.h"

class oxioDataFile;

class oxdmConditions {
public:
    enum LogicalOp { And = 1, Or = 2 };

    oxdmConditions();
    // The list kept behind a handle (see Get).
    explicit oxdmConditions(short handle);
    oxdmConditions(const oxdmConditions& other);
    oxdmConditions& operator=(const oxdmConditions& other);
    ~oxdmConditions();

    bool Empty() const { return list_->empty(); }
    const std::vector<xc_cond_def>& Records() const { return *list_; }

    // Appends every record, in order, to the list behind handle.
    void Put(short handle) const;
    // Appends every record of the list behind handle, read from its start;
    // handle 0 reads nothing.
    void Get(short handle);
    void Add(const xc_cond_def& cond) { list_->push_back(cond); }
    // Appends the records of `right`, the first of them carrying `op`; an
    // empty right list changes nothing.
    void Add(const oxdmConditions& right, LogicalOp op);

private:
    // list_ is owned and never null; copies are deep.
    std::unique_ptr<std::vector<xc_cond_def>> list_;
};

// The field on one side of a comparison: a field of a table of an open file.
class oxdmConditionField {
public:
    // Reads the file's definition for its dictionary name and file code.
    oxdmConditionField(const oxioDataFile& file, short table, const CString& field);
    oxdmConditionField(const oxdmConditionField&) = default;
    oxdmConditionField& operator=(const oxdmConditionField&) = default;

    // The application abbreviation followed by the file's letter ("ord").
    const CString& Dict() const { return dict_; }
    const CString& Field() const { return field_; }
    short Table() const { return table_; }
    short FileCode() const { return fileCode_; }
    short FileNum() const { return fileNum_; }

private:
    CString dict_;
    CString field_;
    short table_;
    short fileCode_;
    short fileNum_;
};

// Builders: operator codes XC_EQUAL, XC_NOT_EQUAL, XC_LESS, XC_LESS_EQUAL,
// XC_GREATER_EQUAL.
oxdmConditions operator==(const oxdmConditionField& left, double right);
oxdmConditions operator!=(const oxdmConditionField& left, double right);
oxdmConditions operator<(const oxdmConditionField& left, double right);
oxdmConditions operator<=(const oxdmConditionField& left, double right);
oxdmConditions operator>=(const oxdmConditionField& left, double right);

oxdmConditions operator==(const oxdmConditionField& left, const CString& right);
oxdmConditions operator!=(const oxdmConditionField& left, const CString& right);
oxdmConditions operator<(const oxdmConditionField& left, const CString& right);
oxdmConditions operator<=(const oxdmConditionField& left, const CString& right);
oxdmConditions operator>=(const oxdmConditionField& left, const CString& right);

oxdmConditions operator==(const oxdmConditionField& left, const x_date_def& right);
oxdmConditions operator!=(const oxdmConditionField& left, const x_date_def& right);
oxdmConditions operator<(const oxdmConditionField& left, const x_date_def& right);
oxdmConditions operator<=(const oxdmConditionField& left, const x_date_def& right);
oxdmConditions operator>=(const oxdmConditionField& left, const x_date_def& right);

oxdmConditions operator==(const oxdmConditionField& left, const x_time_def& right);
oxdmConditions operator!=(const oxdmConditionField& left, const x_time_def& right);
oxdmConditions operator<(const oxdmConditionField& left, const x_time_def& right);
oxdmConditions operator<=(const oxdmConditionField& left, const x_time_def& right);
oxdmConditions operator>=(const oxdmConditionField& left, const x_time_def& right);

oxdmConditions operator==(const oxdmConditionField& left, const oxdmConditionField& right);
oxdmConditions operator!=(const oxdmConditionField& left, const oxdmConditionField& right);
oxdmConditions operator<(const oxdmConditionField& left, const oxdmConditionField& right);
oxdmConditions operator<=(const oxdmConditionField& left, const oxdmConditionField& right);
oxdmConditions operator>=(const oxdmConditionField& left, const oxdmConditionField& right);

// The combiners: a copy of left followed by right, joined by and (1) or or (2).
oxdmConditions operator&&(const oxdmConditions& left, const oxdmConditions& right);
oxdmConditions operator||(const oxdmConditions& left, const oxdmConditions& right);
