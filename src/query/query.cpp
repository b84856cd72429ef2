#include "oxdm/query/query.h"

#include "oxdm/base/exception.h"
#include "oxdm/query/query_column_base.h"
#include "oxdm/record/dictionary_manager.h"

oxdmQuery::oxdmQuery(const CString& id) : id_(id) {}

oxdmQuery::~oxdmQuery() { DeleteRoot(); }

void oxdmQuery::DeleteRoot() {
    delete root_;
    root_ = nullptr;
}

oxdmQueryNode* oxdmQuery::SetRoot(const oxdmTableDef* table, const oxioFileSpec& spec, int style, int index) {
    CString id;
    id.Format("%s%d", table->FileExt().c_str(), table->Num());
    return SetRoot(table, spec, id, style, index);
}

oxdmQueryNode* oxdmQuery::SetRoot(const oxdmTableDef* table, const oxioFileSpec& spec, const CString& id,
                                  int style, int index) {
    DeleteRoot();
    root_ = new oxdmQueryNode(id, table, spec, nullptr, nullptr, style, index);
    return root_;
}

oxdmQueryNode* oxdmQuery::SetRoot(const oxioFileSpec& spec, int tableNum, int index, const CString& id, int style) {
    const oxdmTableDef* table =
        oxdmDictionaryManager::Instance().Table(oxdmSpecDictionary(spec), static_cast<short>(tableNum));
    if (id.IsEmpty()) return SetRoot(table, spec, style, index);
    return SetRoot(table, spec, id, style, index);
}

oxdmQueryNode* oxdmQuery::Node(const CString& id) const {
    return root_ != nullptr ? root_->Node(id, true, true) : nullptr;
}

oxdmQueryColumnBase* oxdmQuery::Column(const CString& id, bool generate) const {
    oxdmQueryColumnBase* column = root_ != nullptr ? root_->Column(id, generate, true, true) : nullptr;
    if (column == nullptr) throw oxdmException("Column '" + id + "' is not part of query '" + id_ + "'");
    return column;
}

bool oxdmQuery::Auditable() const { return root_ != nullptr && root_->Auditable(); }
