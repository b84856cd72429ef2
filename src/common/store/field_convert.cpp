#include "field_convert.h"

#include "oxdm/common/values/data.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace oxdm::store {

namespace {

ColumnKind KindOf(short type) {
    switch (type) {
        case XIO_ALPHA:
        case XIO_PHONE: return ColumnKind::Text;
        case XIO_NUMERIC: return ColumnKind::Real;
        default: return ColumnKind::Integer;
    }
}

std::int64_t DateNumber(const x_date_def& date) { return date.year * 10000LL + date.month * 100LL + date.day; }

std::int64_t TimeNumber(const x_time_def& time) {
    return time.hour < 0 ? -1 : time.hour * 10000LL + time.minute * 100LL + time.second;
}

// A text read as a date or a time through the value classes' own parsing.
std::int64_t ParsedDate(const char* text) {
    oxDate date;
    return date.SetVal(CString(text), nullptr) ? DateNumber(date.Record()) : 0;
}
std::int64_t ParsedTime(const char* text) {
    oxTime time;
    return time.SetVal(CString(text), nullptr) ? TimeNumber(time.Record()) : -1;
}

double Number(const x_value_def& value) {
    if (value.kind == XV_TEXT) return std::strtod(x_value_text(&value), nullptr);
    return value.number;
}

}  // namespace

std::vector<TableSpec> TablesOf(const oxDictionary& dictionary) {
    std::vector<TableSpec> tables;
    for (short t = 1; t <= dictionary.TableCount(); ++t) {
        const xio_rec_def& rec = *dictionary.RecDef(t);
        TableSpec table;
        table.number = t;
        short first = rec.first_field;
        for (short f = first; f < first + rec.field_count; ++f) {
            const xio_fld_def& fld = *dictionary.FldDef(f);
            ColumnSpec column;
            column.name.assign(fld.name, strnlen(fld.name, sizeof fld.name));
            column.kind = KindOf(fld.type);
            if (fld.operator_stamp != 0)
                column.stamp = StampKind::Operator;
            else if (fld.first_stamp != 0)
                column.stamp = StampKind::Date;
            else if (fld.second_stamp != 0)
                column.stamp = StampKind::Time;
            column.foldCase = fld.key != 0 && column.kind == ColumnKind::Text;
            table.columns.push_back(column);
        }
        IndexSpec own{0, {}};
        for (short f : dictionary.KeyFields(t)) own.columns.push_back(f - first);
        table.indexes.push_back(own);
        for (short k : dictionary.KeysOfTable(t)) {
            const xio_key_def& key = *dictionary.KeyDef(k);
            IndexSpec index{k, {}};
            for (short i = 0; i < key.field_count && i < XIO_KEY_MAX_FIELDS; ++i) {
                short f = key.fields[i];
                if (f >= first && f < first + rec.field_count) index.columns.push_back(f - first);
            }
            table.indexes.push_back(index);
        }
        tables.push_back(std::move(table));
    }
    return tables;
}

FieldValue BlankStored(short type) {
    switch (KindOf(type)) {
        case ColumnKind::Text: return std::string();
        case ColumnKind::Real: return 0.0;
        case ColumnKind::Integer: return std::int64_t{type == XIO_TIME ? -1 : 0};
    }
    return {};
}

bool IsBlankStored(short type, const FieldValue& value) {
    if (std::holds_alternative<std::monostate>(value)) return true;
    if (const auto* text = std::get_if<std::string>(&value)) return text->empty();
    if (const auto* real = std::get_if<double>(&value)) return *real == 0.0;
    std::int64_t whole = std::get<std::int64_t>(value);
    return type == XIO_TIME ? whole < 0 : whole == 0;
}

FieldValue StoredFromXval(short type, const x_value_def& value) {
    bool null = (value.flags & XV_NULL) != 0;
    switch (type) {
        case XIO_ALPHA:
        case XIO_PHONE:
            return std::string(x_value_text(&value));
        case XIO_NUMERIC:
            return null ? 0.0 : Number(value);
        case XIO_BOOLEAN:
            return std::int64_t{!null && Number(value) != 0.0};
        case XIO_DATE:
            if (null) return std::int64_t{0};
            if (value.kind == XV_TEXT) return ParsedDate(x_value_text(&value));
            return DateNumber(value.date);
        case XIO_TIME:
            if (null) return std::int64_t{-1};
            if (value.kind == XV_TEXT) return ParsedTime(x_value_text(&value));
            return TimeNumber(value.time);
        default:
            if (null) return std::int64_t{0};
            if (value.kind == XV_SSNUM || value.kind == XV_CHOICE || value.kind == XV_NUMERIC) return value.whole;
            return static_cast<std::int64_t>(std::llround(Number(value)));
    }
}

FieldValue StoredFromData(short type, const oxData& value) {
    oxioXval xval(value);
    return StoredFromXval(type, xval.GetXval());
}

void XvalFromStored(short type, short decimals, const FieldValue& stored, x_value_def& out, bool withText) {
    x_value_init(&out);
    out.decimals = decimals;
    if (const auto* text = std::get_if<std::string>(&stored)) {
        x_value_set_text(&out, text->c_str(), text->size());
        out.number = std::strtod(text->c_str(), nullptr);
        return;
    }
    double number = 0;
    std::int64_t whole = 0;
    if (const auto* real = std::get_if<double>(&stored)) {
        number = *real;
        whole = static_cast<std::int64_t>(std::llround(*real * std::pow(10.0, decimals)));
    } else if (const auto* integer = std::get_if<std::int64_t>(&stored)) {
        number = static_cast<double>(*integer);
        whole = *integer;
    }
    out.number = number;
    out.whole = whole;
    char text[64] = "";
    switch (type) {
        case XIO_DATE:
            out.date = {static_cast<short>(whole / 10000), static_cast<short>(whole / 100 % 100),
                        static_cast<short>(whole % 100)};
            out.flags = whole == 0 ? XV_NULL : 0;
            break;
        case XIO_TIME:
            if (whole < 0)
                out.time = {-1, 0, 0};
            else
                out.time = {static_cast<short>(whole / 10000), static_cast<short>(whole / 100 % 100),
                            static_cast<short>(whole % 100)};
            out.flags = whole < 0 ? XV_NULL : 0;
            break;
        case XIO_NUMERIC:
            if (withText) std::snprintf(text, sizeof text, "%.*f", decimals, number);
            break;
        default:
            if (withText) std::snprintf(text, sizeof text, "%lld", static_cast<long long>(whole));
            break;
    }
    if (text[0]) x_value_set_text(&out, text, std::strlen(text));
}

bool IsText(const oxData& value) { return dynamic_cast<const oxString*>(&value) != nullptr; }

bool LoadData(short type, short decimals, const FieldValue& stored, oxData& value, bool text) {
    // Filled in place: the record of a fresh oxioXval holds nothing to free.
    oxioXval xval;
    XvalFromStored(type, decimals, stored, xval.Edit(), text);
    return value.SetVal(xval);
}

}  // namespace oxdm::store
