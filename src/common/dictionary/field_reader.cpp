// Reading one field of a dictionary source into its xio_fld_def.

#include <cctype>
#include <cstddef>
#include <cstring>

#include "source_parts.h"

namespace {

enum class AttrKind { Flag, Number };

// The attributes of a field that are a single short of the record.
struct ShortAttr {
    std::string_view key;
    std::size_t offset;
    AttrKind kind;
    long long low;
    long long high;
};

constexpr long long kMaxShort = 32767;
constexpr long long kMaxUShort = 65535;

constexpr ShortAttr kShortAttrs[] = {
    {"length", offsetof(xio_fld_def, length), AttrKind::Number, 1, kMaxUShort},
    {"key", offsetof(xio_fld_def, key), AttrKind::Flag, 0, 0},
    {"code", offsetof(xio_fld_def, code), AttrKind::Number, 0, kMaxShort},
    {"formatted", offsetof(xio_fld_def, formatted), AttrKind::Flag, 0, 0},
    {"section", offsetof(xio_fld_def, section), AttrKind::Number, 0, kMaxShort},
    {"label_break", offsetof(xio_fld_def, label_break), AttrKind::Number, 0, kMaxUShort},
    {"default_width", offsetof(xio_fld_def, default_width), AttrKind::Number, 0, kMaxUShort},
    {"min_head_width", offsetof(xio_fld_def, min_head_width), AttrKind::Number, 0, kMaxUShort},
    {"hidden", offsetof(xio_fld_def, hidden), AttrKind::Flag, 0, 0},
    {"protected", offsetof(xio_fld_def, protect), AttrKind::Flag, 0, 0},
    {"required", offsetof(xio_fld_def, required), AttrKind::Flag, 0, 0},
    {"multi_line", offsetof(xio_fld_def, multi_line), AttrKind::Flag, 0, 0},
    {"right_justify", offsetof(xio_fld_def, right_justify), AttrKind::Flag, 0, 0},
    {"capitalize", offsetof(xio_fld_def, capitalize), AttrKind::Flag, 0, 0},
    {"has_choices", offsetof(xio_fld_def, has_choices), AttrKind::Flag, 0, 0},
    {"operator_stamp", offsetof(xio_fld_def, operator_stamp), AttrKind::Flag, 0, 0},
    {"decimals", offsetof(xio_fld_def, decimal), AttrKind::Number, 0, kMaxShort},
    {"signed", offsetof(xio_fld_def, is_signed), AttrKind::Flag, 0, 0},
    {"commas", offsetof(xio_fld_def, commas), AttrKind::Flag, 0, 0},
    {"zero_shown", offsetof(xio_fld_def, zero_shown), AttrKind::Flag, 0, 0},
    {"month_year", offsetof(xio_fld_def, month_year), AttrKind::Flag, 0, 0},
    {"date_stamp", offsetof(xio_fld_def, first_stamp), AttrKind::Flag, 0, 0},
    {"time_stamp", offsetof(xio_fld_def, second_stamp), AttrKind::Flag, 0, 0},
    {"default", offsetof(xio_fld_def, default_value), AttrKind::Number, -32768, kMaxShort},
    {"help", offsetof(xio_fld_def, help), AttrKind::Flag, 0, 0},
};

struct TypeName {
    std::string_view name;
    short type;
};

constexpr TypeName kTypeNames[] = {
    {"alpha", XIO_ALPHA}, {"numeric", XIO_NUMERIC}, {"boolean", XIO_BOOLEAN},
    {"date", XIO_DATE},   {"time", XIO_TIME},       {"phone", XIO_PHONE},
    {"ssn", XIO_SSNUM},   {"choice", XIO_CHOICE},
};

bool IsChoice(short type) { return type >= XIO_CHOICE && type <= XIO_CHOICE9; }

bool ValidName(const char* name) {
    if (!std::isalpha(static_cast<unsigned char>(name[0])) && name[0] != '_') return false;
    for (const char* p = name; *p; ++p) {
        if (!std::isalnum(static_cast<unsigned char>(*p)) && *p != '_') return false;
    }
    return true;
}

// The type attribute: a name of kTypeNames or a number 0 to 9.
bool ReadType(oxSourceReader& reader, const toml::table& tbl, const CString& context,
              short& type) {
    const toml::node* node = tbl.get("type");
    if (!node) {
        reader.Error(oxSourceReader::Line(tbl, 0), context, "'type' is missing");
        return false;
    }
    if (node->is_integer()) {
        const auto v = reader.Integer(tbl, "type", XIO_ALPHA, XIO_CHOICE9, context);
        if (v) type = static_cast<short>(*v);
        return v.has_value();
    }
    if (const auto* s = node->as_string()) {
        for (const TypeName& t : kTypeNames) {
            if (s->get() == t.name) {
                type = t.type;
                return true;
            }
        }
        reader.Error(oxSourceReader::Line(*node, 0), context,
                     CString("unknown type '") + s->get().c_str() +
                         "' (alpha, numeric, boolean, date, time, phone, ssn, choice or 0 to 9)");
        return false;
    }
    reader.Error(oxSourceReader::Line(*node, 0), context,
                 CString("'type' must be a string or an integer, not ") +
                     oxSourceReader::TypeName(*node));
    return false;
}

// Copies a text into a fixed buffer when it fits; reports it otherwise.
bool PutItemText(oxSourceReader& reader, const toml::node& node, const CString& context,
                 const char* what, const toml::node* value, std::size_t size, CString& out) {
    const auto* s = value ? value->as_string() : nullptr;
    if (!s) {
        reader.Error(oxSourceReader::Line(value ? *value : node, oxSourceReader::Line(node, 0)),
                     context, CString("item ") + what + " must be a string");
        return false;
    }
    if (s->get().size() > size - 1) {
        CString msg;
        msg.Format("item %s '%s' is longer than %d characters", what, s->get().c_str(),
                   static_cast<int>(size - 1));
        reader.Error(oxSourceReader::Line(*value, 0), context, msg);
        return false;
    }
    out = s->get().c_str();
    return true;
}

// The items of a choice field: texts, or tables { code = "A", text = "Active" }.
void ReadItems(oxSourceReader& reader, const toml::table& tbl, const CString& context,
               std::vector<oxDictItem>& items) {
    const toml::node* node = tbl.get("items");
    if (!node) return;
    const auto* arr = node->as_array();
    if (!arr) {
        reader.Error(oxSourceReader::Line(*node, 0), context,
                     CString("'items' must be an array, not ") + oxSourceReader::TypeName(*node));
        return;
    }
    for (const toml::node& entry : *arr) {
        oxDictItem item;
        if (const auto* t = entry.as_table()) {
            reader.CheckKnown(*t, {"code", "text"}, context);
            if (t->get("code") && !PutItemText(reader, entry, context, "code", t->get("code"),
                                               XIO_ITEM_CODE_SIZE, item.code)) {
                continue;
            }
            if (!PutItemText(reader, entry, context, "text", t->get("text"), XIO_ITEM_TEXT_SIZE,
                             item.text)) {
                continue;
            }
        } else if (!PutItemText(reader, entry, context, "text", &entry, XIO_ITEM_TEXT_SIZE,
                                item.text)) {
            continue;
        }
        items.push_back(item);
    }
}

}  // namespace

bool oxSameFieldName(const char* a, const char* b) {
    for (; *a && *b; ++a, ++b) {
        if (std::toupper(static_cast<unsigned char>(*a)) !=
            std::toupper(static_cast<unsigned char>(*b))) {
            return false;
        }
    }
    return *a == *b;
}

void oxReadFieldDef(oxSourceReader& reader, const toml::table& tbl, const CString& context,
                    const std::vector<tsfield_def>& codes, xio_fld_def& out,
                    std::vector<oxDictItem>& items) {
    std::memset(&out, 0, sizeof out);
    reader.CheckKnown(tbl,
                      {"name", "description", "type", "items", "length", "key", "code",
                       "formatted", "section", "label_break", "default_width", "min_head_width",
                       "hidden", "protected", "required", "multi_line", "right_justify",
                       "capitalize", "has_choices", "operator_stamp", "decimals", "signed",
                       "commas", "zero_shown", "month_year", "date_stamp", "time_stamp",
                       "default", "help"},
                      context);
    const int line = oxSourceReader::Line(tbl, 0);

    if (!tbl.get("name")) {
        reader.Error(line, context, "'name' is missing");
    } else if (reader.Text(tbl, "name", out.name, sizeof out.name, context) &&
               !ValidName(out.name)) {
        reader.Error(oxSourceReader::LineOf(tbl, "name"), context,
                     CString("'name' \"") + out.name +
                         "\" must be letters, digits and '_', not starting with a digit");
    }
    reader.Text(tbl, "description", out.description, sizeof out.description, context);
    const bool typed = ReadType(reader, tbl, context, out.type);

    for (const ShortAttr& a : kShortAttrs) {
        std::optional<long long> v;
        if (a.kind == AttrKind::Number) {
            v = reader.Integer(tbl, a.key, a.low, a.high, context);
        } else if (const auto flag = reader.Flag(tbl, a.key, context)) {
            v = *flag;
        }
        if (v) oxPutShort(&out, a.offset, *v);
    }

    ReadItems(reader, tbl, context, items);
    out.items = static_cast<short>(items.size());
    if (!typed) return;

    if ((out.type == XIO_ALPHA || out.type == XIO_NUMERIC) && !tbl.get("length")) {
        reader.Error(line, context, "'length' is missing; alpha and numeric fields need one");
    }
    if (out.type == XIO_NUMERIC && out.length > 0 && out.decimal >= out.length) {
        CString msg;
        msg.Format("'decimals' (%d) must be less than 'length' (%u)", out.decimal, out.length);
        reader.Error(oxSourceReader::LineOf(tbl, "decimals"), context, msg);
    }
    if (IsChoice(out.type)) {
        if (!tbl.get("items")) {
            reader.Error(line, context, "a choice field needs 'items'");
        } else if (items.empty()) {
            reader.Error(oxSourceReader::LineOf(tbl, "items"), context,
                         "a choice field needs at least one item");
        }
        if (out.default_value < 0 || out.default_value > out.items) {
            CString msg;
            msg.Format("'default' %d is not an item number (1 to %d)", out.default_value,
                       out.items);
            reader.Error(oxSourceReader::LineOf(tbl, "default"), context, msg);
        }
    } else if (tbl.get("items")) {
        reader.Error(oxSourceReader::LineOf(tbl, "items"), context,
                     "'items' belongs to choice fields only");
    }
    if (out.code != 0) {
        bool known = false;
        for (const tsfield_def& c : codes) known = known || c.code == out.code;
        if (!known) {
            CString msg;
            msg.Format("field code %d is not defined in this dictionary", out.code);
            reader.Error(oxSourceReader::LineOf(tbl, "code"), context, msg);
        }
    }
}
