#include "file_image.h"

#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/data.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/record/column_def.h"
#include "oxdm/record/dictionary_manager.h"
#include "oxdm/record/table_def.h"

namespace {

// One cursor over a table with a value attached to each named field.
// Invariant: values_[i] is attached to the field names[i] for the cursor's life.
class TableReader {
public:
    TableReader(const oxioDataFile& file, short table, std::vector<const char*> names)
        : cursor_(file, table, 0), table_(table), names_(std::move(names)) {
        oxdmTableDef* def = oxdmDictionaryManager::Instance().Table("ord", table);
        for (const char* name : names_) {
            const oxdmColumnDef* column = def ? def->Column(name) : nullptr;
            values_.emplace_back(column ? column->CreateData() : nullptr);
            if (!values_.back() || !cursor_.AttachColumn(name, *values_.back())) {
                error_ = "The record file has no field " + std::string(name) + " in table " + std::to_string(table) +
                         "; it is not a file of the ord dictionary.";
                values_.back().reset();
            }
        }
    }
    const std::string& Error() const { return error_; }
    oxioStatus::Status First() { return cursor_.FetchFirst(false); }
    oxioStatus::Status Next() { return cursor_.FetchNext(false); }
    std::string Text(size_t i) const { return values_[i]->Format().str(); }
    const oxData& Value(size_t i) const { return *values_[i]; }
    // A sentence for a field whose text is not what it should be.
    std::string Bad(size_t i, const std::string& record) const {
        return "Table " + std::to_string(table_) + ", record " + record + ": the field " + names_[i] + " holds '" +
               Text(i) + "', which is not a number.";
    }

private:
    oxioCursor cursor_;
    short table_;
    std::vector<const char*> names_;
    std::vector<std::unique_ptr<oxData>> values_;
    std::string error_;
};

bool ReadWhole(const TableReader& reader, size_t i, const std::string& record, long long& out, std::string& error) {
    long long cents = 0;
    if (!ParseCents(reader.Text(i), cents) || cents % 100 != 0) {
        error = reader.Bad(i, record);
        return false;
    }
    out = cents / 100;
    return true;
}

bool ReadMoney(const TableReader& reader, size_t i, const std::string& record, long long& out, std::string& error) {
    if (ParseCents(reader.Text(i), out)) return true;
    error = reader.Bad(i, record);
    return false;
}

// Failure statuses other than the end of the table.
bool Failed(oxioStatus::Status status, short table, std::string& error) {
    if (status == oxioStatus::Success || status == oxioStatus::AtEnd) return false;
    error = "Reading table " + std::to_string(table) + " failed with status " + std::to_string(status) + ".";
    return true;
}

}  // namespace

bool ParseCents(const std::string& text, long long& cents) {
    std::string plain;
    for (char c : text)
        if (c != ',' && c != ' ') plain += c;
    if (plain.empty()) {
        cents = 0;
        return true;
    }
    char* end = nullptr;
    const double value = std::strtod(plain.c_str(), &end);
    if (end == plain.c_str() || *end != '\0') return false;
    cents = std::llround(value * 100.0);
    return true;
}

bool ReadFileImage(const oxioDataFile& file, FileImage& image, std::string& error) {
    image = FileImage{};
    TableReader customers(file, 1, {"CUSTNO", "NAME", "CITY", "STATUS"});
    TableReader orders(file, 2, {"ORDNO", "CUSTNO", "TOTAL"});
    TableReader lines(file, 3, {"ORDNO", "LINENO", "ITEM", "QTY", "PRICE"});
    for (const TableReader* reader : {&customers, &orders, &lines}) {
        if (!reader->Error().empty()) {
            error = reader->Error();
            return false;
        }
    }
    oxioStatus::Status status;
    for (status = customers.First(); status == oxioStatus::Success; status = customers.Next()) {
        const auto* choice = dynamic_cast<const oxChoice*>(&customers.Value(3));
        image.customers[customers.Text(0)] =
            CustomerImage{customers.Text(1), customers.Text(2), choice ? choice->GetVal() : -1};
    }
    if (Failed(status, 1, error)) return false;
    for (status = orders.First(); status == oxioStatus::Success; status = orders.Next()) {
        OrderImage order{orders.Text(1), 0};
        if (!ReadMoney(orders, 2, orders.Text(0), order.totalCents, error)) return false;
        image.orders[orders.Text(0)] = order;
    }
    if (Failed(status, 2, error)) return false;
    for (status = lines.First(); status == oxioStatus::Success; status = lines.Next()) {
        const std::string record = lines.Text(0) + "/" + lines.Text(1);
        long long lineNo = 0;
        LineImage line{lines.Text(2), 0, 0};
        if (!ReadWhole(lines, 1, record, lineNo, error) || !ReadWhole(lines, 3, record, line.qty, error) ||
            !ReadMoney(lines, 4, record, line.priceCents, error))
            return false;
        image.lines[{lines.Text(0), lineNo}] = line;
    }
    return !Failed(status, 3, error);
}
