#include "oxdm/query/query_node.h"

#include <cassert>

#include "oxdm/common/shell/message_box.h"
#include "oxdm/common/store/file_spec.h"
#include "oxdm/query/filter.h"
#include "oxdm/query/special_columns.h"
#include "oxdm/query/table_column.h"
#include "oxdm/record/dictionary_manager.h"

namespace {

CString DefaultNodeID(const oxdmTableDef* table) {
    CString id;
    id.Format("%s%d", table->FileExt().c_str(), table->Num());
    return id;
}

bool IsStamp(const oxdmColumnDef* column) {
    return column->FldDef().first_stamp != 0 || column->FldDef().second_stamp != 0;
}

}  // namespace

CString oxdmSpecDictionary(const oxioFileSpec& spec) { return spec.Dictionary(); }

oxdmQueryNode::oxdmQueryNode(const CString& id, const oxdmTableDef* table, const oxioFileSpec& spec,
                             oxdmQueryNode* parent, oxdmTableRelation* rel, int style, int index)
    : id_(id),
      table_(table),
      spec_(std::make_unique<oxioFileSpec>(spec)),
      parent_(parent),
      rel_(rel),
      style_(style),
      index_(index),
      filter_(std::make_unique<oxdmFilter>()) {
    assert(table != nullptr);
}

oxdmQueryNode::~oxdmQueryNode() {
    for (oxdmQueryColumnBase* column : columns_) delete column;
    for (oxdmQueryNode* child : oneToOnes_) delete child;
    for (oxdmQueryNode* child : oneToManys_) delete child;
}

void oxdmQueryNode::SetFilter(const oxdmFilter& filter) { filter_ = std::make_unique<oxdmFilter>(filter); }

oxdmQueryNode* oxdmQueryNode::Root() const {
    const oxdmQueryNode* node = this;
    while (node->parent_ != nullptr) node = node->parent_;
    return const_cast<oxdmQueryNode*>(node);
}

oxdmTableDef* oxdmQueryNode::MutableTable() const { return const_cast<oxdmTableDef*>(table_); }

// ---------------------------------------------------------------- children

oxdmQueryNode* oxdmQueryNode::NewChild(bool oneToOne, oxdmTableRelation* rel, const oxdmTableDef* table,
                                       const oxioFileSpec& spec, const CString& id, int style, int index) {
    auto* child = new oxdmQueryNode(id, table, spec, this, rel, style, index);
    (oneToOne ? oneToOnes_ : oneToManys_).push_back(child);
    return child;
}

oxdmQueryNode* oxdmQueryNode::NewOneToOne(oxdmTableRelation* rel, const oxdmTableDef* table,
                                          const oxioFileSpec& spec, int style, int index) {
    return NewOneToOne(rel, table, spec, DefaultNodeID(table), style, index);
}

oxdmQueryNode* oxdmQueryNode::NewOneToOne(oxdmTableRelation* rel, const oxdmTableDef* table,
                                          const oxioFileSpec& spec, const CString& id, int style, int index) {
    return NewChild(true, rel, table, spec, GenerateNodeID(id), style, index);
}

oxdmQueryNode* oxdmQueryNode::NewOneToMany(oxdmTableRelation* rel, const oxdmTableDef* table,
                                           const oxioFileSpec& spec, int style, int index) {
    return NewOneToMany(rel, table, spec, DefaultNodeID(table), style, index);
}

oxdmQueryNode* oxdmQueryNode::NewOneToMany(oxdmTableRelation* rel, const oxdmTableDef* table,
                                           const oxioFileSpec& spec, const CString& id, int style, int index) {
    return NewChild(false, rel, table, spec, GenerateNodeID(id), style, index);
}

oxdmQueryNode* oxdmQueryNode::AddChildNode(const oxioFileSpec& spec, int tableNum, const CString& joinText,
                                           int index, const CString& id, int style) {
    oxdmDictionaryManager& dicts = oxdmDictionaryManager::Instance();
    oxdmTableDef* table = dicts.Table(oxdmSpecDictionary(spec), static_cast<short>(tableNum));
    oxdmTableRelation* rel = dicts.NewRel();
    const int kind = rel->ParseString(MutableTable(), table, index, joinText);
    if (kind == 0) return nullptr;
    const CString childID = id.IsEmpty() ? GenerateNodeID(DefaultNodeID(table)) : id;
    return NewChild(kind == 1, rel, table, spec, childID, style, index);
}

CString oxdmQueryNode::GenerateNodeID(const CString& id) const {
    const oxdmQueryNode* root = Root();
    CString candidate = id;
    for (int counter = 1; root->Node(candidate, true, true) != nullptr; ++counter) {
        candidate.Format("%s-%d", id.c_str(), counter);
    }
    if (candidate != id) {
        oxdmMessageBox("Node id '" + id + "' changed to '" + candidate + "' to ensure uniqueness", CString(),
                       oxdmBox::IconInformation);
    }
    return candidate;
}

oxdmQueryNode* oxdmQueryNode::Node(const CString& id, bool oneToOnes, bool oneToManys) const {
    if (id.IsEmpty() || id == id_) return const_cast<oxdmQueryNode*>(this);
    if (oneToOnes) {
        for (const oxdmQueryNode* child : oneToOnes_) {
            if (oxdmQueryNode* found = child->Node(id, oneToOnes, oneToManys)) return found;
        }
    }
    if (oneToManys) {
        for (const oxdmQueryNode* child : oneToManys_) {
            if (oxdmQueryNode* found = child->Node(id, oneToOnes, oneToManys)) return found;
        }
    }
    return nullptr;
}

bool oxdmQueryNode::Auditable() const {
    if (table_->RecDef().audit_mode == 1) return true;
    for (const oxdmQueryNode* child : oneToOnes_) {
        if (child->Auditable()) return true;
    }
    for (const oxdmQueryNode* child : oneToManys_) {
        if (child->Auditable()) return true;
    }
    return false;
}

// ---------------------------------------------------------------- columns

CString oxdmQueryNode::GenerateColumnID(const CString& id) const {
    const oxdmQueryNode* root = Root();
    CString candidate = id;
    for (int counter = 1; root->Column(candidate, false, true, true) != nullptr; ++counter) {
        candidate.Format("%s-%d", id.c_str(), counter);
    }
    return candidate;
}

void oxdmQueryNode::AddColumn(const CString& name, int style) {
    if (name == "#ATTACH") {
        AddColumn(new oxdmAttachmentsQueryColumn(name, style));
    } else {
        AddColumn(new oxdmTableColumnQueryColumn(name, style));
    }
}

void oxdmQueryNode::AddColumn(oxdmQueryColumnBase* column) {
    column->SetNode(this);
    column->SetID(GenerateColumnID(column->ID()));
    columns_.push_back(column);
    if (!stampsAdded_) IncludeTimeAndDateStamps();
}

void oxdmQueryNode::AddColumns(const CString& names) {
    int start = 0;
    while (true) {
        const int comma = names.Find(',', start);
        AddColumn(comma < 0 ? names.Mid(start) : names.Mid(start, comma - start), 1);
        if (comma < 0) return;
        start = comma + 1;
    }
}

bool oxdmQueryNode::HasTableColumn(const oxdmColumnDef* def) const {
    for (const oxdmQueryColumnBase* column : columns_) {
        const auto* tableColumn = dynamic_cast<const oxdmTableColumnQueryColumn*>(column);
        if (tableColumn != nullptr && tableColumn->RefersTo(def)) return true;
    }
    return false;
}

void oxdmQueryNode::IncludeTimeAndDateStamps() {
    if (stampsAdded_) return;
    stampsAdded_ = true;
    std::vector<oxdmQueryColumnBase*> missing;
    int seen = 0;
    const std::vector<oxdmColumnDef*>& columns = table_->Columns();
    for (auto it = columns.rbegin(); it != columns.rend() && seen < 2; ++it) {
        if (!IsStamp(*it)) continue;
        ++seen;
        if (!HasTableColumn(*it)) missing.push_back(new oxdmTableColumnQueryColumn(*it, 1));
    }
    for (oxdmQueryColumnBase* column : missing) AddColumn(column);
}

void oxdmQueryNode::AddAllColumns(bool all, bool generateNow, bool withOperatorFields) {
    allColumns_ = all;
    withOperatorFields_ = withOperatorFields;
    if (all && generateNow) GenerateAllColumns();
}

void oxdmQueryNode::GenerateAllColumns() {
    if (!allColumns_ || generated_) return;
    MutableTable()->RefreshColumns();
    std::vector<oxdmQueryColumnBase*> wanted;
    for (const oxdmColumnDef* def : table_->Columns()) {
        if (!withOperatorFields_ && def->FldDef().operator_stamp != 0) continue;
        if (HasTableColumn(def)) continue;
        wanted.push_back(new oxdmTableColumnQueryColumn(def, 1));
    }
    stampsAdded_ = true;
    for (oxdmQueryColumnBase* column : wanted) AddColumn(column);
    generated_ = true;
}

oxdmQueryColumnBase* oxdmQueryNode::Column(const CString& id, bool generate, bool oneToOnes,
                                           bool oneToManys) const {
    // Generating on demand fills in what AddAllColumns asked for.
    if (generate) const_cast<oxdmQueryNode*>(this)->GenerateAllColumns();
    for (oxdmQueryColumnBase* column : columns_) {
        if (column->ID().CompareNoCase(id) == 0) return column;
    }
    if (oneToOnes) {
        for (const oxdmQueryNode* child : oneToOnes_) {
            if (oxdmQueryColumnBase* found = child->Column(id, generate, oneToOnes, oneToManys)) return found;
        }
    }
    if (oneToManys) {
        for (const oxdmQueryNode* child : oneToManys_) {
            if (oxdmQueryColumnBase* found = child->Column(id, generate, oneToOnes, oneToManys)) return found;
        }
    }
    return nullptr;
}

void oxdmQueryNode::Columns(std::vector<oxdmColumnBase*>& out, bool refresh, bool oneToOnes,
                            bool oneToManys) const {
    if (refresh) {
        auto* self = const_cast<oxdmQueryNode*>(this);
        if (allColumns_) {
            self->generated_ = false;
            self->GenerateAllColumns();
        } else {
            MutableTable()->RefreshColumns();
        }
    }
    out.insert(out.end(), columns_.begin(), columns_.end());
    if (oneToOnes) {
        for (const oxdmQueryNode* child : oneToOnes_) child->Columns(out, refresh, oneToOnes, oneToManys);
    }
    if (oneToManys) {
        for (const oxdmQueryNode* child : oneToManys_) child->Columns(out, refresh, oneToOnes, oneToManys);
    }
}
