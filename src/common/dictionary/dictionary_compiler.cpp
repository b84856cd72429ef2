// The dictionary compiler: the file, the tables with their fields, the keys.
// Field codes and fields are read by code_reader.cpp and field_reader.cpp.

#include "oxdm/common/dictionary/dictionary_compiler.h"

#include <cstring>

#include "source_file.h"
#include "source_parts.h"

CString oxDictError::Text() const {
    CString text;
    if (line > 0) {
        text.Format("%s:%d: %s", file.c_str(), line, message.c_str());
    } else {
        text.Format("%s: %s", file.c_str(), message.c_str());
    }
    return text;
}

CString oxDictCompileResult::Message() const {
    CString text;
    for (const oxDictError& e : errors) {
        if (!text.IsEmpty()) text += "\n";
        text += e.Text();
    }
    return text;
}

namespace {

// Everything the compiler gathers before the dictionary is made.
class SourceCompiler {
public:
    SourceCompiler(const CString& name, oxSourceReader& reader) : reader_(reader) {
        contents_.name = name;
    }

    void Compile(const toml::table& root) {
        reader_.CheckKnown(root, {"file", "table", "key", "code"}, "");
        ReadFile(root);
        contents_.codes = oxReadFieldCodes(reader_, reader_.TableArray(root, "code", ""));
        if (const toml::array* tables = reader_.TableArray(root, "table", "")) {
            for (const toml::node& t : *tables) ReadTable(*t.as_table());
        }
        if (const toml::array* keys = reader_.TableArray(root, "key", "")) {
            for (const toml::node& k : *keys) ReadKey(*k.as_table());
        }
        contents_.file.tables = static_cast<short>(contents_.tables.size());
        contents_.file.keys = static_cast<short>(contents_.keys.size());
    }

    oxDictionary::Contents& Contents() { return contents_; }

private:
    void ReadFile(const toml::table& root) {
        const toml::node* node = root.get("file");
        if (!node) return;
        const toml::table* file = node->as_table();
        if (!file) {
            reader_.Error(oxSourceReader::Line(*node, 0), "",
                          CString("'file' must be a table, not ") + oxSourceReader::TypeName(*node));
            return;
        }
        const CString context = "file";
        reader_.CheckKnown(*file, {"abbreviation", "letter", "code"}, context);
        xio_file_def& def = contents_.file;
        const bool abbrGiven = file->get("abbreviation") != nullptr;
        const bool letterGiven = file->get("letter") != nullptr;
        const bool abbrRead =
            reader_.Text(*file, "abbreviation", def.appl_abbr, sizeof def.appl_abbr, context);
        char letter[2] = {};
        const bool letterRead = reader_.Text(*file, "letter", letter, sizeof letter, context);
        def.letter = letter[0];
        if (const auto code = reader_.Integer(*file, "code", -32768, 32767, context)) {
            def.file_code = static_cast<short>(*code);
        }
        // Conditions name a file by abbreviation and letter, so together they
        // must spell the dictionary's name.
        if ((abbrGiven || letterGiven) && abbrRead == abbrGiven && letterRead == letterGiven) {
            const CString spelled = CString(def.appl_abbr) + (def.letter ? CString(def.letter) : "");
            if (spelled != contents_.name) {
                reader_.Error(oxSourceReader::Line(*file, 0), context,
                              CString("abbreviation and letter spell '") + spelled +
                                  "', not the dictionary's name '" + contents_.name + "'");
            }
        }
    }

    void ReadTable(const toml::table& tbl) {
        const short number = static_cast<short>(contents_.tables.size() + 1);
        CString context;
        context.Format("table %d", number);
        reader_.CheckKnown(tbl,
                           {"number", "description", "audit", "custom_fields", "stored_records",
                            "field"},
                           context);
        if (const auto n = reader_.Integer(tbl, "number", -32768, 32767, context);
            n && *n != number) {
            CString msg;
            msg.Format("'number' is %lld but tables are numbered in order; this is table %d", *n,
                       number);
            reader_.Error(oxSourceReader::LineOf(tbl, "number"), context, msg);
        }
        xio_rec_def rec;
        std::memset(&rec, 0, sizeof rec);
        if (!tbl.get("description")) {
            reader_.Error(oxSourceReader::Line(tbl, 0), context, "'description' is missing");
        } else if (reader_.Text(tbl, "description", rec.description, sizeof rec.description,
                                context)) {
            context += CString(" (") + rec.description + ")";
        }
        if (const auto v = reader_.Integer(tbl, "audit", 0, 32767, context)) rec.audit_mode = *v;
        if (const auto v = reader_.Integer(tbl, "custom_fields", 0, 32767, context)) {
            rec.custom_fields = static_cast<short>(*v);
        }
        if (const auto v = reader_.Integer(tbl, "stored_records", -32768, 32767, context)) {
            rec.stored_records = static_cast<short>(*v);
        }
        rec.first_field = static_cast<short>(contents_.fields.size() + 1);
        const toml::array* fields = reader_.TableArray(tbl, "field", context);
        if ((!fields && !tbl.get("field")) || (fields && fields->empty())) {
            reader_.Error(oxSourceReader::Line(tbl, 0), context, "the table has no fields");
        } else if (fields) {
            ReadFields(*fields, number, context);
        }
        rec.field_count = static_cast<short>(contents_.fields.size() + 1 - rec.first_field);
        contents_.tables.push_back(rec);
    }

    void ReadFields(const toml::array& fields, short table, const CString& tableContext) {
        const std::size_t first = contents_.fields.size();
        for (const toml::node& node : fields) {
            const toml::table& tbl = *node.as_table();
            CString context;
            const auto* name = tbl.get_as<std::string>("name");
            context.Format("%s, field %s", tableContext.c_str(),
                           name ? name->get().c_str() : "without a name");
            xio_fld_def def;
            std::vector<oxDictItem> items;
            oxReadFieldDef(reader_, tbl, context, contents_.codes, def, items);
            for (std::size_t i = first; def.name[0] && i < contents_.fields.size(); ++i) {
                if (oxSameFieldName(contents_.fields[i].name, def.name)) {
                    reader_.Error(oxSourceReader::LineOf(tbl, "name"), context,
                                  "the field name is used twice in this table");
                }
            }
            if (contents_.fields.size() >= 32767) {
                reader_.Error(oxSourceReader::Line(tbl, 0), context, "too many fields");
                return;
            }
            contents_.fields.push_back(def);
            contents_.fieldTable.push_back(table);
            contents_.items.push_back(std::move(items));
        }
    }

    void ReadKey(const toml::table& tbl) {
        CString context;
        context.Format("key %d", static_cast<int>(contents_.keys.size() + 1));
        reader_.CheckKnown(tbl, {"number", "table", "fields"}, context);
        if (const auto n = reader_.Integer(tbl, "number", -32768, 32767, context);
            n && *n != static_cast<long long>(contents_.keys.size() + 1)) {
            CString msg;
            msg.Format("'number' is %lld but keys are numbered in order; this is key %d", *n,
                       static_cast<int>(contents_.keys.size() + 1));
            reader_.Error(oxSourceReader::LineOf(tbl, "number"), context, msg);
        }
        xio_key_def key;
        std::memset(&key, 0, sizeof key);
        const auto table = reader_.Integer(tbl, "table", -32768, 32767, context);
        if (!tbl.get("table")) {
            reader_.Error(oxSourceReader::Line(tbl, 0), context, "'table' is missing");
        } else if (table && (*table < 1 || *table > static_cast<long long>(contents_.tables.size()))) {
            CString msg;
            msg.Format("there is no table %lld (tables are 1 to %d)", *table,
                       static_cast<int>(contents_.tables.size()));
            reader_.Error(oxSourceReader::LineOf(tbl, "table"), context, msg);
        } else if (table) {
            key.table = static_cast<short>(*table);
            ReadKeyFields(tbl, context, key);
        }
        contents_.keys.push_back(key);
    }

    void ReadKeyFields(const toml::table& tbl, const CString& context, xio_key_def& key) {
        const toml::node* node = tbl.get("fields");
        const toml::array* names = node ? node->as_array() : nullptr;
        if (!names || names->empty()) {
            reader_.Error(node ? oxSourceReader::Line(*node, 0) : oxSourceReader::Line(tbl, 0),
                          context, "'fields' must be a list of field names of the table");
            return;
        }
        if (names->size() > XIO_KEY_MAX_FIELDS) {
            CString msg;
            msg.Format("a key has at most %d fields", XIO_KEY_MAX_FIELDS);
            reader_.Error(oxSourceReader::Line(*node, 0), context, msg);
            return;
        }
        const xio_rec_def& rec = contents_.tables[key.table - 1];
        for (const toml::node& entry : *names) {
            const auto* name = entry.as_string();
            const int line = oxSourceReader::Line(entry, oxSourceReader::Line(*node, 0));
            if (!name) {
                reader_.Error(line, context, CString("key fields must be names, not ") +
                                                 oxSourceReader::TypeName(entry));
                continue;
            }
            short found = 0;
            for (short f = rec.first_field; f < rec.first_field + rec.field_count; ++f) {
                if (oxSameFieldName(contents_.fields[f - 1].name, name->get().c_str())) found = f;
            }
            if (found == 0) {
                reader_.Error(line, context, CString("table ") + CString(rec.description) +
                                                 " has no field '" + name->get().c_str() + "'");
                continue;
            }
            for (short i = 0; i < key.field_count; ++i) {
                if (key.fields[i] == found) {
                    reader_.Error(line, context, CString("field '") + name->get().c_str() +
                                                     "' is named twice");
                }
            }
            key.fields[key.field_count++] = found;
        }
    }

    oxSourceReader& reader_;
    oxDictionary::Contents contents_;
};

}  // namespace

oxDictCompileResult oxDictionaryCompiler::CompileText(const CString& name, const CString& text,
                                                      const CString& sourceName) {
    oxDictCompileResult result;
    oxSourceReader reader(sourceName);
    toml::parse_result parsed = toml::parse(text.view(), sourceName.str());
    if (!parsed) {
        const toml::parse_error& e = parsed.error();
        reader.Error(static_cast<int>(e.source().begin.line), "",
                     CString("syntax error: ") + CString(e.description().data(),
                                                         static_cast<int>(e.description().size())));
        result.errors = reader.TakeErrors();
        return result;
    }
    SourceCompiler compiler(name, reader);
    compiler.Compile(parsed.table());
    if (reader.HasErrors()) {
        result.errors = reader.TakeErrors();
        return result;
    }
    oxDictionary::Contents& contents = compiler.Contents();
    contents.sourcePath = sourceName;
    contents.sourceText = text;
    result.dictionary = std::make_shared<const oxDictionary>(std::move(contents));
    return result;
}

oxDictCompileResult oxDictionaryCompiler::CompileFile(const CString& path) {
    CString text;
    if (!oxReadSourceFile(path, text)) {
        oxDictCompileResult result;
        result.errors.push_back({path, 0, "the file cannot be read"});
        return result;
    }
    return CompileText(oxDictionaryNameOf(path), text, path);
}
