#include "oxdm/cursor/cursor_node.h"

#include <cassert>

#include "oxdm/common/values/small_values.h"
#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/record/column_def.h"

bool oxdmCursorBookmark::GreaterThan(const oxdmCursorBookmark* other) const {
    return !EqualTo(other) && !LessThan(other);
}

oxdmCursorNode::~oxdmCursorNode() = default;

long oxdmCursorNode::NumRows(bool children) {
    PushBookmark();
    long rows = 0;
    if (First(false)) {
        rows = 1;
        while (Next(children)) ++rows;
    }
    PopBookmark();
    return rows;
}

void oxdmCursorNode::AddColumn(const oxdmColumnDef* column) {
    assert(column != nullptr);
    if (PositionOf(column) >= 0) return;
    columns_.push_back(column);
    values_.emplace_back(AttachColumn(column));
}

oxData* oxdmCursorNode::AttachColumn(const oxdmColumnDef* column) {
    assert(column != nullptr);
    oxData* value = column->CreateData();
    _AttachColumn(column, value);
    return value;
}

void oxdmCursorNode::CanUpdate(const CString&, bool&) const {}
bool oxdmCursorNode::HasCustomFields() const { return false; }
bool oxdmCursorNode::CascadedDelete() const { return false; }
bool oxdmCursorNode::SuppressDups() const { return false; }
CString oxdmCursorNode::RowName() const { return CString(); }
CString oxdmCursorNode::RowDescription() const { return CString(); }
void oxdmCursorNode::CommitRollbackStack() {}
short oxdmCursorNode::Rollback() { return 0; }
void oxdmCursorNode::AttachCondition(short) {}
void oxdmCursorNode::DetachCondition() {}
void oxdmCursorNode::AttachRange(short) {}
void oxdmCursorNode::DetachRange() {}
oxdmFileManager* oxdmCursorNode::GetFileManager() { return nullptr; }
oxioAttachments* oxdmCursorNode::CreateAttachments() const { return nullptr; }
oxTask* oxdmCursorNode::Task() const { return nullptr; }
void oxdmCursorNode::DoAutoLookup(oxdmBufferedFileDataSource*, short, std::vector<oxdmQueryNode*>&) {}
void oxdmCursorNode::FindLookupNodes(oxdmBufferedFileDataSource*, short, std::vector<oxdmQueryNode*>&) {}
void oxdmCursorNode::ClearFileBuffers() {}
void oxdmCursorNode::SetAllowDataConflictOverwrite(bool) {}
oxdmCursorNode* oxdmCursorNode::Node(oxdmQueryNode*) const { return nullptr; }
oxdmCursorNode* oxdmCursorNode::Node(const oxdmTableDef*) const { return nullptr; }
oxioBookmark* oxdmCursorNode::PushBookmark() { return nullptr; }
void oxdmCursorNode::PopBookmark() {}
void oxdmCursorNode::PopAllBookmarks(bool) {}
oxioCursor* oxdmCursorNode::DataCursor() const { return nullptr; }
oxdmCursorNode* oxdmCursorNode::Parent() const { return nullptr; }
oxdmColumnDef* oxdmCursorNode::FindSourceColumn(const oxdmColumnDef*) { return nullptr; }
void oxdmCursorNode::Debug(const CString&, bool, bool, short) {}
void oxdmCursorNode::_AttachColumn(const oxdmColumnDef*, oxData*) {}

long oxdmCursorNode::PositionOf(const oxdmColumnDef* column) const {
    for (size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i] == column) return static_cast<long>(i);
    return -1;
}

bool oxdmCursorNode::ValueForColumn(const oxdmColumnDef* column, oxData* out) const {
    if (column == nullptr) return false;
    const oxdmCursorNode* node = Node(column->Table());
    return node != nullptr && node->_ValueForColumn(column, out);
}

bool oxdmCursorNode::SetValueForColumn(const oxdmColumnDef* column, oxData* value) {
    if (column == nullptr) return false;
    oxdmCursorNode* node = Node(column->Table());
    return node != nullptr && node->_SetValueForColumn(column, value);
}

oxData* oxdmCursorNode::DatumForColumn(const oxdmColumnDef* column) const {
    long position = PositionOf(column);
    return position < 0 ? nullptr : values_[static_cast<size_t>(position)].get();
}

bool oxdmCursorNode::_ValueForColumn(const oxdmColumnDef* column, oxData* out) const {
    const oxData* held = DatumForColumn(column);
    if (held == nullptr) return false;
    short type = column->Type();
    if (held->IsNull() && (type == XIO_CHOICE || type == XIO_CHOICE8 || type == XIO_CHOICE9)) {
        // A choice never reads as null: it reads as its default, or the first item.
        short preset = column->FldDef().default_value;
        out->SetVal(oxChoice(static_cast<unsigned short>(preset != 0 ? preset : 1)));
    } else {
        out->SetVal(*held);
    }
    return true;
}

bool oxdmCursorNode::_SetValueForColumn(const oxdmColumnDef* column, oxData* value) {
    oxData* held = DatumForColumn(column);
    if (held == nullptr) return false;
    if (held->Eq(*value)) return true;
    changed_ = true;
    return held->SetVal(*value);
}
