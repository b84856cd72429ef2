#include "oxdm/common/dictionary/flat_definitions.h"

#include <cassert>
#include <cstring>

#include "oxdm/common/dictionary/dictionary_loader.h"
#include "oxdm/common/dictionary/open_file_table.h"
#include "oxdm/common/values/io_status.h"

namespace {

const oxDictionary* DictionaryOf(short file) {
    const oxOpenFile* open = oxOpenFileTable::Instance().Find(file);
    return open ? &open->Dictionary() : nullptr;
}

// Copies a record into the caller's; the raw status of the read.
template <class Record>
short Give(short file, const Record* (oxDictionary::*get)(short) const, short number,
           Record* out) {
    assert(out);
    const oxDictionary* dict = DictionaryOf(file);
    if (!dict) return oxioStatus::FILE_NOT_FOUND;
    const Record* record = (dict->*get)(number);
    if (!record) return oxioStatus::IO_VOID;
    std::memcpy(out, record, sizeof(Record));
    return oxioStatus::IO_VALID;
}

void CopyText(char* dest, const CString& text, std::size_t size) {
    if (!dest) return;
    const std::size_t n = std::min(static_cast<std::size_t>(text.GetLength()), size - 1);
    std::memcpy(dest, text.c_str(), n);
    dest[n] = '\0';
}

}  // namespace

short xio_open_dictionary(xio_open_dict_def* def) {
    assert(def);
    const CString name(def->name, static_cast<int>(strnlen(def->name, sizeof def->name)));
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    const short status = oxDictionaryLoader::Load(name, dict, error);
    if (status != oxioStatus::IO_VALID) return status;
    return oxOpenFileTable::Instance().Open(std::make_unique<oxOpenFile>(dict), &def->file);
}

short xio_cls_file(short file) {
    return oxOpenFileTable::Instance().Close(file);
}

short xio_get_def(short file, xio_file_def* def, short /*mode*/) {
    assert(def);
    const oxDictionary* dict = DictionaryOf(file);
    if (!dict) return oxioStatus::FILE_NOT_FOUND;
    std::memcpy(def, &dict->FileDef(), sizeof *def);
    return oxioStatus::IO_VALID;
}

short xio_get_rec_def(short file, short table, xio_rec_def* def, short /*mode*/) {
    return Give(file, &oxDictionary::RecDef, table, def);
}

short xio_get_fld_def(short file, short field, xio_fld_def* def, short /*full*/,
                      bool /*dataFile*/) {
    return Give(file, &oxDictionary::FldDef, field, def);
}

short xio_get_key_def(short file, short key, xio_key_def* def, short /*mode*/) {
    return Give(file, &oxDictionary::KeyDef, key, def);
}

short xio_get_item_alpha(short file, short field, short item, char* code, char* text) {
    const oxDictionary* dict = DictionaryOf(file);
    if (!dict) return oxioStatus::FILE_NOT_FOUND;
    const oxDictItem* found = dict->Item(field, item);
    if (!found) return oxioStatus::IO_VOID;
    CopyText(code, found->code, XIO_ITEM_CODE_SIZE);
    CopyText(text, found->text, XIO_ITEM_TEXT_SIZE);
    return oxioStatus::IO_VALID;
}

short xio_num(short file, short kind, short table, const char* name) {
    const oxDictionary* dict = DictionaryOf(file);
    if (!dict) return -1;
    switch (kind) {
        case 0: return dict->FieldNum(0, name);
        case 2: return table == 0 ? 0 : dict->FieldNum(table, name);
        default: return -1;
    }
}
