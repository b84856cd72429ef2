#include "oxdm/record/dictionary_manager.h"

#include <algorithm>
#include <memory>

#include "dict_file.h"
#include "oxdm/base/exception.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/shell/message_box.h"
#include "oxdm/common/values/io_status.h"

oxdmDictionaryManager::~oxdmDictionaryManager() {
    for (oxdmTableRelation* rel : rels_) delete rel;
    for (oxdmTableDef* table : tables_) delete table;
}

oxdmDictionaryManager& oxdmDictionaryManager::Instance() {
    static oxdmDictionaryManager manager;
    return manager;
}

oxdmTableDef* oxdmDictionaryManager::Table(const CString& dict, short num) {
    if (std::find(imported_.begin(), imported_.end(), dict) == imported_.end() && !ImportDict(dict)) {
        return nullptr;
    }
    for (oxdmTableDef* table : tables_) {
        if (table->FileExt() == dict && table->Num() == num) return table;
    }
    CString text;
    text.Format("Couldn't find table %d in dictionary ", num);
    throw oxdmException(text + dict);
}

oxdmTableDef* oxdmDictionaryManager::FindTable(const CString& desc) const {
    for (oxdmTableDef* table : tables_) {
        if (table->Desc() == desc) return table;
    }
    return nullptr;
}

oxdmTableRelation* oxdmDictionaryManager::NewRel() {
    oxdmTableRelation* rel = CreateRel();
    AddRel(rel);
    return rel;
}

oxdmTableRelation* oxdmDictionaryManager::NewRel(oxdmColumnDef* source, oxdmColumnDef* dest) {
    oxdmTableRelation* rel = NewRel();
    rel->AddColumn(source, dest);
    return rel;
}

bool oxdmDictionaryManager::ImportDict(const CString& dict) {
    short file = 0;
    const short status = oxdmOpenDictFile(dict, &file);
    if (status != 0) {
        const CString text = "Couldn't import dictionary " + dict + " because " + oxioStatus::RawName(status);
        oxdmMessageBox(text, "Error!", oxdmBox::IconInformation);
        throw oxdmException(text);
    }
    oxdmDictFileCloser closer(file);
    imported_.push_back(dict);
    xio_file_def fileDef;
    xio_get_def(file, &fileDef, 1);
    const short tableCount = fileDef.tables;
    for (short num = 1; num <= tableCount; ++num) {
        xio_rec_def rec;
        xio_get_rec_def(file, num, &rec, 1);
        auto table = std::make_unique<oxdmTableDef>(dict, num, rec);
        for (short i = 0; i < rec.field_count; ++i) {
            const short field = static_cast<short>(rec.first_field + i);
            xio_fld_def def;
            xio_get_fld_def(file, field, &def, 1, false);
            table->AddColumn(oxdmNewImportedColumn(table.get(), file, field, def));
        }
        table->AddIndex(new oxdmSortIndex(table.get(), 0, nullptr));
        AddTable(table.release());
    }
    const short keyCount = fileDef.keys;
    for (short key = 1; key <= keyCount; ++key) {
        auto def = std::make_unique<xio_key_def>();
        xio_get_key_def(file, key, def.get(), 1);
        oxdmTableDef* table = Table(dict, def->table);
        table->AddIndex(new oxdmSortIndex(table, key, def.release()));
    }
    return true;
}
