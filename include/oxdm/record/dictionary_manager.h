#pragma once
// oxdmDictionaryManager: the process-wide set of imported dictionaries.
//
// A dictionary is named by a short text, the extension of the application's
// record files ("ord"), and is imported on first use: its tables, columns
// and indexes become objects that live as long as the manager, so pointers
// to them are held freely by queries, cursors and data sources. Relations
// made through NewRel live as long, too.

#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/record/table_def.h"
#include "oxdm/record/table_relation.h"

class oxdmDictionaryManager {
public:
    oxdmDictionaryManager() = default;
    ~oxdmDictionaryManager();
    oxdmDictionaryManager(const oxdmDictionaryManager&) = delete;
    oxdmDictionaryManager& operator=(const oxdmDictionaryManager&) = delete;

    // The manager of the process, made at first use.
    static oxdmDictionaryManager& Instance();

    // Table `num` of dictionary `dict`, importing the dictionary on first
    // use. A dictionary that cannot be opened shows a box and throws; a
    // table the dictionary lacks throws
    // ("Couldn't find table N in dictionary DICT").
    oxdmTableDef* Table(const CString& dict, short num);
    // The first table of any dictionary whose description is exactly desc.
    oxdmTableDef* FindTable(const CString& desc) const;

    const std::vector<oxdmTableDef*>& Tables() const { return tables_; }
    const std::vector<oxdmTableRelation*>& Rels() const { return rels_; }

    // A new relation, kept by the manager.
    oxdmTableRelation* NewRel();
    oxdmTableRelation* NewRel(oxdmColumnDef* source, oxdmColumnDef* dest);

protected:
    bool ImportDict(const CString& dict);
    void AddTable(oxdmTableDef* table) { tables_.push_back(table); }
    void AddRel(oxdmTableRelation* rel) { rels_.push_back(rel); }
    oxdmTableRelation* CreateRel() { return new oxdmTableRelation(); }

private:
    // tables_ and rels_ own their elements; imported_ names each dictionary
    // whose import got past opening it (case counts), in import order.
    std::vector<oxdmTableDef*> tables_;
    std::vector<oxdmTableRelation*> rels_;
    std::vector<CString> imported_;
};
