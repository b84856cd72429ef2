#include "oxdm/cursor/oxio_cursor_bookmark.h"

#include "oxdm/common/store/bookmark.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/cursor/oxio_cursor_node.h"

oxdmOXIOCursorBookmark::oxdmOXIOCursorBookmark(oxdmOXIOCursorNode& node, bool oneToOnes, bool oneToManys)
    : node_(&node) {
    if (!node.IsKeyOK()) return;
    oxioCursor* cursor = node.DataCursor();
    if (node.Parent() == nullptr || cursor->FetchEQ(false) == oxioStatus::Success)
        mark_ = std::make_shared<oxioBookmark>(*cursor, true);
    if (oneToOnes)
        for (oxdmOXIOCursorNode* child : node.OneToOnes())
            oneToOnes_.push_back(std::make_unique<oxdmOXIOCursorBookmark>(*child, oneToOnes, oneToManys));
    if (oneToManys)
        for (oxdmOXIOCursorNode* child : node.OneToManys())
            oneToManys_.push_back(std::make_unique<oxdmOXIOCursorBookmark>(*child, oneToOnes, oneToManys));
}

oxdmOXIOCursorBookmark::oxdmOXIOCursorBookmark(const oxdmOXIOCursorBookmark& other)
    : oxdmCursorBookmark(other), node_(other.node_), mark_(other.mark_) {
    CopyChildren(other);
}

oxdmOXIOCursorBookmark& oxdmOXIOCursorBookmark::operator=(const oxdmOXIOCursorBookmark& other) {
    if (this == &other) return *this;
    node_ = other.node_;
    mark_ = other.mark_;
    CopyChildren(other);
    return *this;
}

oxdmOXIOCursorBookmark::~oxdmOXIOCursorBookmark() = default;

void oxdmOXIOCursorBookmark::CopyChildren(const oxdmOXIOCursorBookmark& other) {
    oneToOnes_.clear();
    oneToManys_.clear();
    for (const auto& child : other.oneToOnes_) oneToOnes_.push_back(std::make_unique<oxdmOXIOCursorBookmark>(*child));
    for (const auto& child : other.oneToManys_)
        oneToManys_.push_back(std::make_unique<oxdmOXIOCursorBookmark>(*child));
}

bool oxdmOXIOCursorBookmark::GoTo() {
    if (mark_ == nullptr || mark_->GoTo() != oxioStatus::Success) {
        node_->Clear(true, true);
        node_->StuffSourceKey(true, true);
        if (mark_ != nullptr) return false;
        oxioCursor* cursor = node_->DataCursor();
        if (cursor->FetchEQ(false) != oxioStatus::Success) return false;
        mark_ = std::make_shared<oxioBookmark>(*cursor, true);
        if (mark_->GoTo() != oxioStatus::Success) return false;
    }
    node_->Refresh(false, false);
    for (const auto* children : {&oneToOnes_, &oneToManys_})
        for (const auto& child : *children) child->GoTo();
    return true;
}

const oxioBookmark* oxdmOXIOCursorBookmark::MarkOf(const oxdmCursorBookmark* other) {
    const auto* bookmark = dynamic_cast<const oxdmOXIOCursorBookmark*>(other);
    return bookmark != nullptr ? bookmark->mark_.get() : nullptr;
}

bool oxdmOXIOCursorBookmark::EqualTo(const oxdmCursorBookmark* other) const {
    const oxioBookmark* theirs = MarkOf(other);
    return mark_ != nullptr && theirs != nullptr && *mark_ == *theirs;
}

bool oxdmOXIOCursorBookmark::LessThan(const oxdmCursorBookmark* other) const {
    const oxioBookmark* theirs = MarkOf(other);
    return mark_ != nullptr && theirs != nullptr && *mark_ < *theirs;
}

oxdmCursorBookmark* oxdmOXIOCursorBookmark::Clone() const { return new oxdmOXIOCursorBookmark(*this); }
