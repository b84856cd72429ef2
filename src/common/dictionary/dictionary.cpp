#include "oxdm/common/dictionary/dictionary.h"

#include <cassert>

#include "source_parts.h"

oxDictionary::oxDictionary(Contents contents) : c_(std::move(contents)) {
    assert(c_.file.tables == TableCount() && c_.file.keys == KeyCount());
    assert(c_.fieldTable.size() == c_.fields.size() && c_.items.size() == c_.fields.size());
#ifndef NDEBUG
    short next = 1;
    for (const xio_rec_def& rec : c_.tables) {
        assert(rec.first_field == next);
        next = static_cast<short>(next + rec.field_count);
    }
    assert(next == FieldCount() + 1);
    for (const xio_key_def& key : c_.keys) assert(key.table >= 1 && key.table <= TableCount());
#endif
}

const xio_rec_def* oxDictionary::RecDef(short table) const {
    return table >= 1 && table <= TableCount() ? &c_.tables[table - 1] : nullptr;
}

const xio_fld_def* oxDictionary::FldDef(short field) const {
    return field >= 1 && field <= FieldCount() ? &c_.fields[field - 1] : nullptr;
}

const xio_key_def* oxDictionary::KeyDef(short key) const {
    return key >= 1 && key <= KeyCount() ? &c_.keys[key - 1] : nullptr;
}

const oxDictItem* oxDictionary::Item(short field, short item) const {
    if (field < 1 || field > FieldCount()) return nullptr;
    const std::vector<oxDictItem>& items = c_.items[field - 1];
    return item >= 1 && item <= static_cast<short>(items.size()) ? &items[item - 1] : nullptr;
}

short oxDictionary::TableOfField(short field) const {
    return field >= 1 && field <= FieldCount() ? c_.fieldTable[field - 1] : 0;
}

short oxDictionary::FieldNum(short table, const char* name) const {
    if (!name) return 0;
    short first = 1;
    short last = FieldCount();
    if (table != 0) {
        const xio_rec_def* rec = RecDef(table);
        if (!rec) return 0;
        first = rec->first_field;
        last = static_cast<short>(rec->first_field + rec->field_count - 1);
    }
    for (short f = first; f <= last; ++f) {
        if (oxSameFieldName(c_.fields[f - 1].name, name)) return f;
    }
    return 0;
}

std::vector<short> oxDictionary::KeyFields(short table) const {
    std::vector<short> out;
    const xio_rec_def* rec = RecDef(table);
    if (!rec) return out;
    for (short f = rec->first_field; f < rec->first_field + rec->field_count; ++f) {
        if (c_.fields[f - 1].key != 0) out.push_back(f);
    }
    return out;
}

std::vector<short> oxDictionary::KeysOfTable(short table) const {
    std::vector<short> out;
    for (short k = 1; k <= KeyCount(); ++k) {
        if (c_.keys[k - 1].table == table) out.push_back(k);
    }
    return out;
}

const tsfield_def* oxDictionary::FieldCode(short code) const {
    for (const tsfield_def& c : c_.codes) {
        if (c.code == code) return &c;
    }
    return nullptr;
}
