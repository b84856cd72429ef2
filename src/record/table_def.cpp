#include "oxdm/record/table_def.h"

#include <cstring>

#include "dict_file.h"
#include "oxdm/base/exception.h"
#include "oxdm/common/dictionary/flat_definitions.h"

oxdmTableDef::oxdmTableDef(const CString& dict, short num, const xio_rec_def& rec)
    : num_(num), dict_(dict), rec_(rec) {}

oxdmTableDef::~oxdmTableDef() {
    for (auto& entry : indexes_) delete entry.second;
    for (oxdmColumnDef* column : columns_) delete column;
}

CString oxdmTableDef::Name() const {
    return CString(rec_.description, static_cast<int>(strnlen(rec_.description, sizeof rec_.description)));
}

oxdmColumnDef* oxdmTableDef::FindColumn(const CString& name) const {
    for (oxdmColumnDef* column : columns_) {
        if (column->Name().CompareNoCase(name) == 0) return column;
    }
    return nullptr;
}

oxdmColumnDef* oxdmTableDef::Column(const CString& name) const {
    oxdmColumnDef* column = FindColumn(name);
    if (column == nullptr) throw oxdmException("'" + name + "' is not a column in table '" + Desc() + "'.");
    return column;
}

oxdmColumnDef* oxdmTableDef::ColumnByNum(short field) const {
    const int position = field - rec_.first_field;
    if (position < 0 || static_cast<size_t>(position) >= columns_.size()) return nullptr;
    return columns_[position];
}

oxdmSortIndex& oxdmTableDef::Index(short index) const {
    auto found = indexes_.find(index);
    if (found == indexes_.end()) {
        CString text;
        text.Format("%d", index);
        throw oxdmException(text + " is not an index for table '" + Desc() + "'");
    }
    return *found->second;
}

void oxdmTableDef::AddColumn(oxdmColumnDef* column) { columns_.push_back(column); }

void oxdmTableDef::AddIndex(oxdmSortIndex* index) {
    oxdmSortIndex*& slot = indexes_[index->Index()];
    delete slot;
    slot = index;
}

oxdmColumnDef* oxdmNewImportedColumn(oxdmTableDef* table, short file, short field, const xio_fld_def& def) {
    if (def.type != XIO_CHOICE && def.type != XIO_CHOICE8 && def.type != XIO_CHOICE9) {
        return new oxdmColumnDef(table, def);
    }
    auto* column = new oxdmChoiceColumnDef(table, def);
    for (short item = 1; item <= def.items; ++item) {
        char text[XIO_ITEM_TEXT_SIZE] = {};
        xio_get_item_alpha(file, field, item, nullptr, text);
        column->AddChoice(text);
    }
    return column;
}

bool oxdmTableDef::RefreshColumns() {
    short file = 0;
    if (oxdmOpenDictFile(dict_, &file) != 0) return false;
    oxdmDictFileCloser closer(file);
    const bool custom = rec_.custom_fields != 0;
    if (custom) xio_get_rec_def(file, num_, &rec_, 1);
    for (short i = 0; i < rec_.field_count; ++i) {
        const short field = static_cast<short>(rec_.first_field + i);
        xio_fld_def def;
        std::memset(&def, 0, sizeof def);
        if (!custom) {
            xio_get_fld_def(file, field, &def, 0, false);
            if (def.code == 0 || def.formatted == 0) continue;
        }
        xio_get_fld_def(file, field, &def, 1, false);
        const CString name(def.name, static_cast<int>(strnlen(def.name, sizeof def.name)));
        if (oxdmColumnDef* column = FindColumn(name)) {
            column->UpdateFldDef(def);
        } else {
            AddColumn(oxdmNewImportedColumn(this, file, field, def));
        }
    }
    return true;
}
