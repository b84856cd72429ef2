#include "store_access.h"

#include <charconv>
#include <variant>

#include "sqlite/sqlite_store.h"
#include "store_file.h"

namespace oxdm::auditlog {

namespace {

std::string ValueText(const store::FieldValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    if (const auto* real = std::get_if<double>(&value)) {
        char buffer[32];
        auto result = std::to_chars(buffer, buffer + sizeof buffer, *real);
        return std::string(buffer, result.ptr);
    }
    return {};
}

}  // namespace

store::SqliteDb* RecordFileDb(short file) {
    store::oxStoreFile* open = store::oxStoreFile::Find(file);
    if (!open) return nullptr;
    auto* sqlite = dynamic_cast<store::SqliteRecordStore*>(&open->Store());
    return sqlite ? &sqlite->db() : nullptr;
}

CString CurrentRecordKey(short file, short table) {
    store::oxStoreFile* open = store::oxStoreFile::Find(file);
    store::TableState* state = open ? open->State(table) : nullptr;
    if (!state || state->position.rowid == 0) return CString();
    const std::vector<store::FieldValue> key = open->KeyOf(table, 0, state->position);
    // A table without key columns is ordered by record number alone: that
    // number is the only name its records have.
    if (key.empty()) return CString("#" + std::to_string(state->position.rowid));
    std::string text;
    for (const store::FieldValue& value : key) {
        if (!text.empty()) text += ", ";
        text += ValueText(value);
    }
    return CString(text);
}


}  // namespace oxdm::auditlog
