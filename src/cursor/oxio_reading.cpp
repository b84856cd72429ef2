// The record cursor node: moving through a tree and reading it. A root walks
// its table; a child stands on the rows whose join values match its
// parent's current row; one-to-one children follow every move (blank when
// there is no related row), one-to-many children are walked depth first.

#include <cassert>

#include "oxdm/common/store/bookmark.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/store/record_functions.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/query/query_node.h"
#include "oxdm/record/table_def.h"
#include "oxdm/record/table_relation.h"

void oxdmOXIOCursorNode::StuffSourceKey(bool oneToOnes, bool oneToManys) {
    if (const oxdmTableRelation* relation = Relation()) {
        for (size_t i = 0; i < relation->SourceColumns().size(); ++i)
            parent_->ValueForColumn(relation->SourceColumns()[i], DatumForColumn(relation->DestColumns()[i]));
    }
    if (oneToOnes)
        for (oxdmOXIOCursorNode* child : oneToOnes_) child->StuffSourceKey(oneToOnes, oneToManys);
    if (oneToManys)
        for (oxdmOXIOCursorNode* child : oneToManys_) child->StuffSourceKey(oneToOnes, oneToManys);
}

bool oxdmOXIOCursorNode::IsKeyOK() const {
    const oxdmTableRelation* relation = Relation();
    if (relation == nullptr) return true;
    for (size_t i = 0; i < relation->SourceColumns().size(); ++i) {
        const oxData* mine = DatumForColumn(relation->DestColumns()[i]);
        const oxData* theirs = parent_->DatumForColumn(relation->SourceColumns()[i]);
        if (mine == nullptr || theirs == nullptr || !mine->Eq(*theirs)) return false;
    }
    return true;
}

void oxdmOXIOCursorNode::_SyncChildren(bool oneToManys) {
    for (oxdmOXIOCursorNode* child : oneToOnes_) child->First(oneToManys);
    if (oneToManys)
        for (oxdmOXIOCursorNode* child : oneToManys_) child->First(true);
}

void oxdmOXIOCursorNode::_SyncChildrenLast(bool oneToManys) {
    for (oxdmOXIOCursorNode* child : oneToOnes_) child->Last(oneToManys);
    if (oneToManys)
        for (oxdmOXIOCursorNode* child : oneToManys_) child->Last(true);
}

bool oxdmOXIOCursorNode::First(bool children) {
    Revert(true);
    oxioCursor* cursor = DataCursor();
    cursor->ClearFileBuffers();
    if (parent_ == nullptr) {
        if (cursor->FetchFirst(false) != oxioStatus::Success) return false;
        if (Index() != 0) xio_rd_record(FileNum(), Table()->Num(), 0, 0);
    } else {
        Clear(false, false);
        StuffSourceKey(true, children);
        if (cursor->FetchGE(false) != oxioStatus::Success || !IsKeyOK()) {
            Clear(true, true);
            return false;
        }
    }
    // A row without related rows is still a row: its children show blanks.
    _SyncChildren(children);
    return true;
}

bool oxdmOXIOCursorNode::Last(bool children) {
    Revert(true);
    oxioCursor* cursor = DataCursor();
    if (parent_ == nullptr) {
        if (cursor->FetchLast(false) != oxioStatus::Success) return false;
    } else {
        // No seek reaches the end of a key range: walk it, marking each row.
        Clear(false, false);
        StuffSourceKey(true, children);
        if (cursor->FetchGE(false) != oxioStatus::Success || !IsKeyOK()) {
            Clear(true, true);
            return false;
        }
        for (;;) {
            oxioBookmark good(*cursor, false);
            if (cursor->FetchNext(false) != oxioStatus::Success || !IsKeyOK()) {
                good.GoTo();
                break;
            }
        }
    }
    _SyncChildrenLast(children);
    return true;
}

bool oxdmOXIOCursorNode::_Step(bool forward) {
    oxioCursor* cursor = DataCursor();
    if (parent_ == nullptr) {
        // At an end the store leaves the table on the last (first) record,
        // so there is nothing to step back from.
        return (forward ? cursor->FetchNext(false) : cursor->FetchPrev(false)) == oxioStatus::Success;
    }
    if (!IsKeyOK()) return false;
    // A failed step must not leave the node on a foreign row.
    oxioBookmark here(*cursor, false);
    if ((forward ? cursor->FetchNext(false) : cursor->FetchPrev(false)) != oxioStatus::Success || !IsKeyOK()) {
        here.GoTo();
        return false;
    }
    return true;
}

bool oxdmOXIOCursorNode::Next(bool children) {
    Revert(true);
    if (children)
        for (oxdmOXIOCursorNode* child : oneToManys_)
            if (child->Next(true)) return true;
    if (!_Step(true)) return false;
    _SyncChildren(children);
    return true;
}

bool oxdmOXIOCursorNode::Prev(bool children) {
    Revert(true);
    if (children)
        for (oxdmOXIOCursorNode* child : oneToManys_)
            if (child->Prev(true)) return true;
    if (!_Step(false)) return false;
    _SyncChildrenLast(children);
    return true;
}

long oxdmOXIOCursorNode::_Walk(long rows, bool forward, bool children) {
    if (rows < 0) return -_Walk(-rows, !forward, children);
    long moved = 0;
    while (moved < rows && (forward ? Next(children) : Prev(children))) ++moved;
    return moved;
}

long oxdmOXIOCursorNode::Next(long rows, bool children) { return _Walk(rows, true, children); }
long oxdmOXIOCursorNode::Prev(long rows, bool children) { return _Walk(rows, false, children); }

bool oxdmOXIOCursorNode::_KeySearch(oxioStatus::Status status, bool children) {
    if (status != oxioStatus::Success) return false;
    _SyncChildren(children);
    return true;
}

bool oxdmOXIOCursorNode::EQ(bool children) {
    Revert(false);
    return _KeySearch(DataCursor()->FetchEQ(false), children);
}

bool oxdmOXIOCursorNode::GE(bool children) {
    Revert(false);
    return _KeySearch(DataCursor()->FetchGE(false), children);
}

bool oxdmOXIOCursorNode::GT(bool children) {
    Revert(false);
    return _KeySearch(DataCursor()->FetchGT(false), children);
}

void oxdmOXIOCursorNode::Revert(bool reread) {
    if (Changed()) {
        if (reread) DataCursor()->FetchCurrent(false);
        SetChanged(false);
    }
    for (const auto* children : {&oneToOnes_, &oneToManys_})
        for (oxdmOXIOCursorNode* child : *children) child->Revert(true);
}

void oxdmOXIOCursorNode::Refresh(bool oneToOnes, bool oneToManys) {
    DataCursor()->FetchCurrent(false);
    SetChanged(false);
    if (oneToOnes)
        for (oxdmOXIOCursorNode* child : oneToOnes_) child->Refresh(oneToOnes, oneToManys);
    if (oneToManys)
        for (oxdmOXIOCursorNode* child : oneToManys_) child->Refresh(oneToOnes, oneToManys);
}

void oxdmOXIOCursorNode::Clear(bool oneToOnes, bool oneToManys) {
    DataCursor()->Clear();
    if (oneToOnes)
        for (oxdmOXIOCursorNode* child : oneToOnes_) child->Clear(oneToOnes, oneToManys);
    if (oneToManys)
        for (oxdmOXIOCursorNode* child : oneToManys_) child->Clear(oneToOnes, oneToManys);
}

bool oxdmOXIOCursorNode::IsRowValid() { return DataCursor()->FetchCurrent(false) == oxioStatus::Success; }

double oxdmOXIOCursorNode::GetRelativePosition() {
    return xio_get_relative_position(FileNum(), Table()->Num(), Index(), nullptr) / 100.0;
}

short oxdmOXIOCursorNode::SetRelativePosition(double position) {
    short status =
        xio_set_relative_position(FileNum(), Table()->Num(), Index(), static_cast<short>(position * 100.0));
    oxioCursor* cursor = DataCursor();
    if (status == oxioStatus::IO_VALID) {
        cursor->FetchCurrent(false);
        cursor->FetchGE(false);
    }
    Refresh(false, false);
    if (!IsKeyOK() && !Next(false) && !Prev(false)) {
        status = oxioStatus::AtStart;
        Clear(false, false);
    }
    _SyncChildren(false);
    return status;
}
