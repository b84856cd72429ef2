// The record cursor node as a lookup: when the user changes a column that a
// one-to-one child joins on, the child must follow before the row is saved.

#include "oxdm/common/values/data.h"
#include "oxdm/cursor/lookup_source.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/query/query_node.h"
#include "oxdm/record/column_def.h"
#include "oxdm/record/table_relation.h"

namespace {

oxdmLookupSource* g_lookupSource = nullptr;

}  // namespace

oxdmLookupSource* oxdmSetLookupSource(oxdmLookupSource* face) {
    oxdmLookupSource* former = g_lookupSource;
    g_lookupSource = face;
    return former;
}

oxdmLookupSource* oxdmCurrentLookupSource() { return g_lookupSource; }

void oxdmOXIOCursorNode::FindLookupNodes(oxdmBufferedFileDataSource* source, short column,
                                         std::vector<oxdmQueryNode*>& nodes) {
    oxdmLookupSource* face = oxdmCurrentLookupSource();
    if (source == nullptr || face == nullptr) return;
    const oxdmColumnDef* changed = face->ColumnDef(*source, column);
    if (changed == nullptr) return;
    for (oxdmQueryNode* child : queryNode_->OneToOnes()) {
        const oxdmTableRelation& relation = *child->SourceRel();
        bool counted = false;
        for (size_t i = 0; i < relation.SourceColumns().size() && !counted; ++i) {
            if (relation.SourceColumns()[i] != changed) continue;
            const oxData* sourceValue = face->ColumnValue(*source, relation.SourceColumns()[i]);
            const oxData* destValue = face->ColumnValue(*source, relation.DestColumns()[i]);
            // A child that already stands on the matching row need not move.
            counted = !(sourceValue != nullptr && destValue != nullptr && sourceValue->Eq(*destValue));
        }
        if (counted) nodes.push_back(child);
    }
}

void oxdmOXIOCursorNode::DoAutoLookup(oxdmBufferedFileDataSource*, short, std::vector<oxdmQueryNode*>& nodes) {
    if (nodes.empty()) return;
    StuffSourceKey(true, false);
    for (oxdmQueryNode* queryNode : nodes) {
        oxdmCursorNode* node = Node(queryNode->Table());
        if (node == nullptr) continue;
        node->First(false);
        node->StuffSourceKey(true, true);
    }
}
