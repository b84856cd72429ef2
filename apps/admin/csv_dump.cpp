#include <cassert>
#include <memory>
#include <ostream>

#include "csv.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/data.h"
#include "table_csv.h"
#include "table_fields.h"

namespace oxdm::admin {

bool DumpTable(const oxioDataFile& file, short table, bool withStamps, std::ostream& out, CString& error) {
    std::vector<TableField> fields = FieldsOf(file.FileNum(), table);
    assert(!fields.empty());
    oxioCursor cursor(file, table, 0);
    std::vector<std::unique_ptr<oxData>> values;
    std::vector<std::string> row;
    for (const TableField& field : fields) {
        if (field.Stamp() && !withStamps) continue;
        values.push_back(field.NewValue());
        if (!cursor.AttachColumn(field.name, *values.back())) {
            error.Format("The record file has no field %s in table %d; upgrade it to its dictionary.",
                         field.name.c_str(), table);
            return false;
        }
        row.push_back(field.name.str());
    }
    out << CsvLine(row);
    oxioStatus::Status status = cursor.FetchFirst(false);
    for (; status == oxioStatus::Success; status = cursor.FetchNext(false)) {
        for (size_t i = 0; i < values.size(); ++i) row[i] = values[i]->Format().str();
        out << CsvLine(row);
    }
    if (status != oxioStatus::AtEnd) {
        error.Format("Reading table %d stopped with status %d.", table, static_cast<int>(status));
        return false;
    }
    out.flush();
    if (!out) {
        error = "The CSV could not be written.";
        return false;
    }
    return true;
}

}  // namespace oxdm::admin
