#pragma once
// oxDictionary: one compiled dictionary, immutable once built.
//
// A dictionary source (<name>.toml, see docs/dictionary-format.md) is compiled
// by oxDictionaryCompiler into the fixed-layout records of
// definition_records.h, held here byte for byte. The flat definition face
// (flat_definitions.h) hands copies of them out through a file number; the
// record store walks them directly to lay out its tables:
//
//     std::shared_ptr<const oxDictionary> dict;
//     CString error;
//     if (oxDictionaryLoader::Load("ord", dict, error) != oxioStatus::IO_VALID) ...
//     for (short t = 1; t <= dict->TableCount(); ++t) {
//         const xio_rec_def& rec = *dict->RecDef(t);
//         for (short f = rec.first_field; f < rec.first_field + rec.field_count; ++f) {
//             const xio_fld_def& fld = *dict->FldDef(f);   // type, length, decimal,
//             ...                                           // key, stamps
//         }
//         dict->KeyFields(t);        // index 0: fields with the key flag
//         dict->KeysOfTable(t);      // global key numbers serving table t
//     }
//
// A data file registers itself with oxOpenFileTable (open_file_table.h) under
// the dictionary it was made with, so that xio_get_def and its companions work
// on its file number as they do on a dictionary's. SourceText() gives the text
// that was compiled, so a store may keep it with its data and compile that
// text again later (oxDictionaryCompiler::CompileText) to learn the fields of
// an older file.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/dictionary/definition_records.h"
#include "oxdm/common/dictionary/field_code_records.h"

// One item of a choice field: an optional short code and the text shown.
struct oxDictItem {
    CString code;
    CString text;
};

class oxDictionary {
public:
    // Everything a dictionary holds; filled by the compiler.
    // Invariants (checked when an oxDictionary is made from it):
    //  - file.tables == tables.size(), file.keys == keys.size();
    //  - fields are numbered table after table: tables[i].first_field is 1 for
    //    the first table and first_field + field_count of the one before it;
    //  - fieldTable.size() == items.size() == fields.size(), fieldTable[f-1]
    //    is the table of field f, items[f-1].size() == fields[f-1].items;
    //  - every key names a table in 1..tables.size() and fields of that table.
    struct Contents {
        CString name;        // dictionary name, the record files' extension
        CString sourcePath;  // where the source was read from
        CString sourceText;  // the text that was compiled
        xio_file_def file{};
        std::vector<xio_rec_def> tables;
        std::vector<xio_fld_def> fields;
        std::vector<short> fieldTable;
        std::vector<std::vector<oxDictItem>> items;
        std::vector<xio_key_def> keys;
        std::vector<tsfield_def> codes;  // in the order written
    };

    explicit oxDictionary(Contents contents);

    const CString& Name() const { return c_.name; }
    const CString& SourcePath() const { return c_.sourcePath; }
    const CString& SourceText() const { return c_.sourceText; }

    const xio_file_def& FileDef() const { return c_.file; }
    short TableCount() const { return static_cast<short>(c_.tables.size()); }
    short FieldCount() const { return static_cast<short>(c_.fields.size()); }
    short KeyCount() const { return static_cast<short>(c_.keys.size()); }

    // Null when the number is outside 1..count.
    const xio_rec_def* RecDef(short table) const;
    const xio_fld_def* FldDef(short field) const;
    const xio_key_def* KeyDef(short key) const;
    const oxDictItem* Item(short field, short item) const;

    // The table of a field; 0 when the field number is outside the file.
    short TableOfField(short field) const;

    // The field numbered `field` by its name, compared without regard to
    // case: within `table`, or in the whole file (first match in field order)
    // when `table` is 0. 0 when there is none.
    short FieldNum(short table, const char* name) const;

    // The fields of the table's own key (index 0), in table order: the fields
    // whose key flag is set. Empty for an unknown table.
    std::vector<short> KeyFields(short table) const;

    // The numbers of the keys that serve `table`, ascending.
    std::vector<short> KeysOfTable(short table) const;

    // The field code numbered `code`; null when this dictionary has none.
    const tsfield_def* FieldCode(short code) const;
    const std::vector<tsfield_def>& FieldCodes() const { return c_.codes; }

private:
    Contents c_;
};
