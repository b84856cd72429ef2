#include "source_reader.h"

#include <algorithm>
#include <cstring>

void oxPutShort(void* record, std::size_t offset, long long value) {
    const short v = static_cast<short>(value);
    std::memcpy(static_cast<char*>(record) + offset, &v, sizeof v);
}

void oxSourceReader::Error(int line, const CString& context, const CString& message) {
    oxDictError e;
    e.file = sourceName_;
    e.line = line;
    e.message = context.IsEmpty() ? message : context + ": " + message;
    errors_.push_back(e);
}

int oxSourceReader::Line(const toml::node& node, int fallback) {
    const auto line = node.source().begin.line;
    return line > 0 ? static_cast<int>(line) : fallback;
}

int oxSourceReader::LineOf(const toml::table& tbl, std::string_view key) {
    const int tableLine = Line(tbl, 0);
    const toml::node* node = tbl.get(key);
    return node ? Line(*node, tableLine) : tableLine;
}

const char* oxSourceReader::TypeName(const toml::node& node) {
    switch (node.type()) {
        case toml::node_type::string: return "a string";
        case toml::node_type::integer: return "an integer";
        case toml::node_type::floating_point: return "a decimal number";
        case toml::node_type::boolean: return "a boolean";
        case toml::node_type::table: return "a table";
        case toml::node_type::array: return "an array";
        case toml::node_type::date:
        case toml::node_type::time:
        case toml::node_type::date_time: return "a date or time";
        default: return "nothing";
    }
}

void oxSourceReader::CheckKnown(const toml::table& tbl,
                                std::initializer_list<std::string_view> known,
                                const CString& context) {
    for (auto&& [key, node] : tbl) {
        if (std::find(known.begin(), known.end(), key.str()) != known.end()) continue;
        const int line = key.source().begin.line > 0 ? static_cast<int>(key.source().begin.line)
                                                     : Line(node, Line(tbl, 0));
        Error(line, context, CString("unknown attribute '") + CString(key.str().data(),
              static_cast<int>(key.str().size())) + "'");
    }
}

bool oxSourceReader::Text(const toml::table& tbl, std::string_view key, char* dest,
                          std::size_t width, const CString& context) {
    const toml::node* node = tbl.get(key);
    if (!node) return false;
    const CString name(key.data(), static_cast<int>(key.size()));
    const auto* s = node->as_string();
    if (!s) {
        Error(Line(*node, Line(tbl, 0)), context,
              CString("'") + name + "' must be a string, not " + TypeName(*node));
        return false;
    }
    const std::string& text = s->get();
    if (text.size() > width - 1) {
        CString msg;
        if (width == 2) {
            msg.Format("'%s' must be one character", name.c_str());
        } else {
            msg.Format("'%s' is longer than %d characters", name.c_str(), static_cast<int>(width - 1));
        }
        Error(Line(*node, Line(tbl, 0)), context, msg);
        return false;
    }
    std::memset(dest, 0, width);
    std::memcpy(dest, text.data(), text.size());
    return true;
}

std::optional<long long> oxSourceReader::Integer(const toml::table& tbl, std::string_view key,
                                                 long long low, long long high,
                                                 const CString& context) {
    const toml::node* node = tbl.get(key);
    if (!node) return std::nullopt;
    const CString name(key.data(), static_cast<int>(key.size()));
    const auto* i = node->as_integer();
    if (!i) {
        Error(Line(*node, Line(tbl, 0)), context,
              CString("'") + name + "' must be an integer, not " + TypeName(*node));
        return std::nullopt;
    }
    const long long v = i->get();
    if (v < low || v > high) {
        CString msg;
        msg.Format("'%s' is %lld, outside %lld to %lld", name.c_str(), v, low, high);
        Error(Line(*node, Line(tbl, 0)), context, msg);
        return std::nullopt;
    }
    return v;
}

std::optional<short> oxSourceReader::Flag(const toml::table& tbl, std::string_view key,
                                          const CString& context) {
    const toml::node* node = tbl.get(key);
    if (!node) return std::nullopt;
    if (const auto* b = node->as_boolean()) return static_cast<short>(b->get() ? 1 : 0);
    if (node->is_integer()) {
        const auto v = Integer(tbl, key, -32768, 32767, context);
        if (v) return static_cast<short>(*v);
        return std::nullopt;
    }
    const CString name(key.data(), static_cast<int>(key.size()));
    Error(Line(*node, Line(tbl, 0)), context,
          CString("'") + name + "' must be true, false or an integer, not " + TypeName(*node));
    return std::nullopt;
}

const toml::array* oxSourceReader::TableArray(const toml::table& tbl, std::string_view key,
                                              const CString& context) {
    const toml::node* node = tbl.get(key);
    if (!node) return nullptr;
    const auto* arr = node->as_array();
    if (!arr || (!arr->empty() && !arr->is_array_of_tables())) {
        const CString name(key.data(), static_cast<int>(key.size()));
        Error(Line(*node, Line(tbl, 0)), context,
              CString("'") + name + "' must be written as [[...]] tables, not " +
                  TypeName(*node));
        return nullptr;
    }
    return arr;
}

std::vector<oxDictError> oxSourceReader::TakeErrors() {
    std::stable_sort(errors_.begin(), errors_.end(),
                     [](const oxDictError& a, const oxDictError& b) { return a.line < b.line; });
    return std::move(errors_);
}
