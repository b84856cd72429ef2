// Reading the field codes ([[code]]) of a dictionary source.

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

#include "source_parts.h"

namespace {

void ReadSection(oxSourceReader& reader, const toml::table& tbl, const CString& context,
                 xc_section_def& out) {
    reader.CheckKnown(tbl,
                      {"width", "punctuation", "capitals", "right_justify", "digits_only",
                       "description"},
                      context);
    if (!tbl.get("width")) {
        reader.Error(oxSourceReader::Line(tbl, 0), context, "'width' is missing");
    } else if (const auto w = reader.Integer(tbl, "width", 1, 255, context)) {
        out.width = static_cast<short>(*w);
    }
    char punctuation[2] = {};
    if (reader.Text(tbl, "punctuation", punctuation, sizeof punctuation, context)) {
        // Unformatting strips the punctuation from the whole text, so a
        // letter, digit or blank there would eat what the operator typed.
        const unsigned char mark = static_cast<unsigned char>(punctuation[0]);
        if (mark && (std::isalnum(mark) || std::isspace(mark))) {
            reader.Error(oxSourceReader::Line(tbl, 0), context,
                         CString("'punctuation' must be a mark such as '-', '.' or '/', not '") + punctuation + "'");
        } else {
            out.punctuation = punctuation[0];
        }
    }
    if (const auto f = reader.Flag(tbl, "capitals", context)) out.capitals = *f;
    if (const auto f = reader.Flag(tbl, "right_justify", context)) out.right_justify = *f;
    if (const auto f = reader.Flag(tbl, "digits_only", context)) out.digits_only = *f;
    reader.Text(tbl, "description", out.description, sizeof out.description, context);
}

// The custom list: one text "A,B,C" or an array of texts joined by commas.
void ReadCustomList(oxSourceReader& reader, const toml::table& tbl, const CString& context,
                    tsfield_def& out) {
    const toml::node* node = tbl.get("custom_list");
    if (!node || node->is_string()) {
        reader.Text(tbl, "custom_list", out.custom_list, sizeof out.custom_list, context);
        return;
    }
    const auto* arr = node->as_array();
    if (!arr) {
        reader.Error(oxSourceReader::Line(*node, 0), context,
                     CString("'custom_list' must be a string or an array of strings, not ") +
                         oxSourceReader::TypeName(*node));
        return;
    }
    std::string joined;
    bool first = true;
    for (const toml::node& entry : *arr) {
        const auto* s = entry.as_string();
        if (!s) {
            reader.Error(oxSourceReader::Line(entry, oxSourceReader::Line(*node, 0)), context,
                         CString("'custom_list' items must be strings, not ") +
                             oxSourceReader::TypeName(entry));
            return;
        }
        if (!first) joined += ',';
        first = false;
        joined += s->get();
    }
    if (joined.size() >= sizeof out.custom_list) {
        reader.Error(oxSourceReader::Line(*node, 0), context,
                     "'custom_list' is longer than 255 characters");
        return;
    }
    std::memcpy(out.custom_list, joined.data(), joined.size());
}

}  // namespace

std::vector<tsfield_def> oxReadFieldCodes(oxSourceReader& reader, const toml::array* codes) {
    std::vector<tsfield_def> out;
    if (!codes) return out;
    int position = 0;
    for (const toml::node& node : *codes) {
        ++position;
        const toml::table& tbl = *node.as_table();
        CString context;
        context.Format("code %d", position);
        tsfield_def def;
        std::memset(&def, 0, sizeof def);
        reader.CheckKnown(tbl, {"number", "description", "mask", "custom_list", "section"},
                          context);
        if (!tbl.get("number")) {
            reader.Error(oxSourceReader::Line(tbl, 0), context, "'number' is missing");
        } else if (const auto n = reader.Integer(tbl, "number", 1, 32767, context)) {
            def.code = static_cast<short>(*n);
            context.Format("code %d", def.code);
            for (const tsfield_def& other : out) {
                if (other.code == def.code) {
                    reader.Error(oxSourceReader::LineOf(tbl, "number"), context,
                                 "the code number is used twice");
                }
            }
        }
        reader.Text(tbl, "description", def.description, sizeof def.description, context);
        reader.Text(tbl, "mask", def.mask, sizeof def.mask, context);
        ReadCustomList(reader, tbl, context, def);
        if (const toml::array* sections = reader.TableArray(tbl, "section", context)) {
            if (sections->size() > XK_MAX_SECTIONS) {
                CString msg;
                msg.Format("%d sections written; a code has at most %d",
                           static_cast<int>(sections->size()), XK_MAX_SECTIONS);
                reader.Error(oxSourceReader::LineOf(tbl, "section"), context, msg);
            }
            for (std::size_t i = 0; i < sections->size() && i < XK_MAX_SECTIONS; ++i) {
                CString sectionContext;
                sectionContext.Format("%s, section %d", context.c_str(), static_cast<int>(i + 1));
                ReadSection(reader, *(*sections)[i].as_table(), sectionContext, def.section[i]);
            }
            def.sections = static_cast<short>(std::min<std::size_t>(sections->size(),
                                                                    XK_MAX_SECTIONS));
        }
        out.push_back(def);
    }
    return out;
}
