#include <cassert>
#include <memory>

#include "csv.h"
#include "oxdm/common/store/bookmark.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/data.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/small_values.h"
#include "table_csv.h"
#include "table_fields.h"

namespace oxdm::admin {

namespace {

// Faults past this many are counted, not listed.
constexpr size_t kMaxListed = 20;

const char* TypeWords(short type) {
    switch (type) {
        case XIO_NUMERIC: return "a number";
        case XIO_BOOLEAN: return "a yes/no value";
        case XIO_DATE: return "a date (MM/DD/YYYY)";
        case XIO_TIME: return "a time (such as 9:05 AM)";
        case XIO_SSNUM: return "a social security number (999-99-9999)";
        case XIO_CHOICE:
        case XIO_CHOICE8:
        case XIO_CHOICE9: return "a choice number";
        default: return "a text";
    }
}

// Why `text` cannot go into `field`; empty when it can, `value` then
// holding it.
CString ValueProblem(const TableField& field, const std::string& text, oxData& value) {
    CString problem;
    if (!value.SetVal(CString(text), nullptr)) {
        problem.Format("'%s' is not %s", text.c_str(), TypeWords(field.def.type));
    } else if ((field.def.type == XIO_ALPHA || field.def.type == XIO_PHONE) && text.size() > field.def.length) {
        problem.Format("'%s' is %zu characters long; the field holds %u", text.c_str(), text.size(),
                       static_cast<unsigned>(field.def.length));
    } else if (auto* choice = dynamic_cast<oxChoice*>(&value); choice && choice->GetVal() > field.def.items) {
        problem.Format("%u is not one of the field's %d items", static_cast<unsigned>(choice->GetVal()),
                       field.def.items);
    } else if (auto* number = dynamic_cast<oxDouble*>(&value);
               number && number->GetVal() < 0 && field.def.is_signed == 0) {
        problem.Format("'%s' is negative; the field takes no sign", text.c_str());
    }
    return problem;
}

// One checked row of the CSV: a value for each loaded column.
struct CheckedRow {
    int line;
    std::vector<std::unique_ptr<oxData>> values;
};

// Adds a fault to the list, or counts it once the list is full.
class FaultList {
public:
    FaultList(const CString& csvName, std::vector<CString>& errors) : csvName_(csvName), errors_(errors) {}

    void Add(int line, int column, const CString& field, const CString& message) {
        if (++count_ > kMaxListed) return;
        CString text;
        if (field.IsEmpty())
            text.Format("%s:%d: column %d: %s", csvName_.c_str(), line, column, message.c_str());
        else
            text.Format("%s:%d: column %d (%s): %s", csvName_.c_str(), line, column, field.c_str(), message.c_str());
        errors_.push_back(text);
    }
    void AddLine(int line, const CString& message) {
        if (++count_ > kMaxListed) return;
        CString text;
        text.Format("%s:%d: %s", csvName_.c_str(), line, message.c_str());
        errors_.push_back(text);
    }
    // Ends the list with the number of faults left out.
    void Close() {
        if (count_ <= kMaxListed) return;
        CString text;
        text.Format("%s: %zu more faults not listed", csvName_.c_str(), count_ - kMaxListed);
        errors_.push_back(text);
    }
    bool Empty() const { return count_ == 0; }

private:
    // count_ counts every fault; errors_ holds the first kMaxListed of them.
    const CString& csvName_;
    std::vector<CString>& errors_;
    size_t count_ = 0;
};

// The field of each header column; null for a stamp field, which is read
// past. False when the header names no field, an unknown one or one twice.
bool MapHeader(const CsvRecord& header, const std::vector<TableField>& fields, short table,
               std::vector<const TableField*>& columns, FaultList& faults) {
    std::vector<bool> seen(fields.size(), false);
    for (size_t c = 0; c < header.fields.size(); ++c) {
        CString name(header.fields[c]);
        int column = static_cast<int>(c) + 1;
        size_t f = 0;
        while (f < fields.size() && fields[f].name.CompareNoCase(name) != 0) ++f;
        if (f == fields.size()) {
            CString message;
            message.Format("table %d has no field '%s'", table, name.c_str());
            faults.Add(header.line, column, CString(), message);
        } else if (seen[f]) {
            faults.Add(header.line, column, fields[f].name, "the field is named twice in the header");
        } else {
            seen[f] = true;
        }
        columns.push_back(f < fields.size() && !fields[f].Stamp() ? &fields[f] : nullptr);
    }
    return faults.Empty();
}

// Checks every row; the values of rows without a fault go to `rows`.
void CheckRows(const std::vector<CsvRecord>& records, const std::vector<const TableField*>& columns,
               std::vector<CheckedRow>& rows, FaultList& faults) {
    for (size_t r = 1; r < records.size(); ++r) {
        const CsvRecord& record = records[r];
        if (record.fields.size() != columns.size()) {
            CString message;
            message.Format("the row has %zu fields; the header has %zu", record.fields.size(), columns.size());
            faults.AddLine(record.line, message);
            continue;
        }
        CheckedRow row{record.line, {}};
        for (size_t c = 0; c < columns.size(); ++c) {
            if (!columns[c]) continue;
            std::unique_ptr<oxData> value = columns[c]->NewValue();
            CString problem = ValueProblem(*columns[c], record.fields[c], *value);
            if (!problem.IsEmpty()) faults.Add(record.line, static_cast<int>(c) + 1, columns[c]->name, problem);
            row.values.push_back(std::move(value));
        }
        rows.push_back(std::move(row));
    }
}

// Takes back the records written so far, newest first.
void TakeBack(oxioCursor& cursor, std::vector<std::unique_ptr<oxioBookmark>>& written) {
    for (auto mark = written.rbegin(); mark != written.rend(); ++mark)
        if ((*mark)->GoTo() == oxioStatus::Success) cursor.Delete();
    written.clear();
}

}  // namespace

bool LoadTable(const oxioDataFile& file, short table, std::string_view text, const CString& csvName,
               long long& loaded, std::vector<CString>& errors) {
    std::vector<TableField> fields = FieldsOf(file.FileNum(), table);
    assert(!fields.empty());
    loaded = 0;
    FaultList faults(csvName, errors);
    std::vector<CsvRecord> records;
    CsvFault fault;
    if (!ParseCsv(text, records, fault)) {
        faults.Add(fault.line, fault.column, CString(), CString(fault.message));
        return false;
    }
    if (records.empty()) {
        faults.AddLine(1, "the file is empty; it needs a header row of field names");
        return false;
    }
    std::vector<const TableField*> columns;
    if (!MapHeader(records.front(), fields, table, columns, faults)) {
        faults.Close();
        return false;
    }
    std::vector<CheckedRow> rows;
    CheckRows(records, columns, rows, faults);
    faults.Close();
    if (!faults.Empty()) return false;

    oxioCursor cursor(file, table, 0);
    std::vector<std::unique_ptr<oxioBookmark>> written;
    for (const CheckedRow& row : rows) {
        cursor.Initialize();
        size_t v = 0;
        for (const TableField* column : columns)
            if (column) cursor.SetColumnData(column->name, *row.values[v++]);
        oxioStatus::Status status = cursor.Insert(nullptr);
        if (status != oxioStatus::Success) {
            TakeBack(cursor, written);
            CString message;
            if (status == oxioStatus::InvalidKey)
                message = "a record with this key is already in the table (or earlier in the CSV)";
            else
                message.Format("the record could not be written (status %d)", static_cast<int>(status));
            faults.AddLine(row.line, message);
            return false;
        }
        written.push_back(std::make_unique<oxioBookmark>(cursor, false));
    }
    loaded = static_cast<long long>(written.size());
    return true;
}

}  // namespace oxdm::admin
