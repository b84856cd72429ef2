#pragma once
// oxdmOXIOCursorBookmark: a row of a record cursor tree, as a tree of
// bookmarks: one for the node's record and, as asked, one for each child.
// Only the node's own position counts when rows are compared.

#include <memory>
#include <vector>

#include "oxdm/cursor/cursor_bookmark.h"

class oxdmOXIOCursorNode;
class oxioBookmark;

class oxdmOXIOCursorBookmark : public oxdmCursorBookmark {
public:
    // Marks the node's current row. A child whose join does not match its
    // parent's row gives an empty bookmark (no mark, no children); a child
    // whose row can't be found by its key gives no mark but its children.
    // REQUIRES: `node` outlives the bookmark.
    oxdmOXIOCursorBookmark(oxdmOXIOCursorNode& node, bool oneToOnes, bool oneToManys);
    oxdmOXIOCursorBookmark(const oxdmOXIOCursorBookmark& other);
    oxdmOXIOCursorBookmark& operator=(const oxdmOXIOCursorBookmark& other);
    ~oxdmOXIOCursorBookmark() override;

    // Reads the marked row again and puts the children back on theirs. When
    // the row is gone, the node is left cleared with its source key stuffed,
    // and the answer is false; a mark-less bookmark first looks its row up
    // by that key.
    bool GoTo() override;
    // Both need a mark; then the positions compare in index order.
    bool EqualTo(const oxdmCursorBookmark* other) const override;
    bool LessThan(const oxdmCursorBookmark* other) const override;
    oxdmCursorBookmark* Clone() const override;

private:
    // The mark of `other` when it is a bookmark of this kind, else null.
    static const oxioBookmark* MarkOf(const oxdmCursorBookmark* other);
    void CopyChildren(const oxdmOXIOCursorBookmark& other);

    // node_ outlives the bookmark. mark_ is shared with copies and null
    // when the row could not be pinned. The children are owned.
    oxdmOXIOCursorNode* node_;
    std::shared_ptr<oxioBookmark> mark_;
    std::vector<std::unique_ptr<oxdmOXIOCursorBookmark>> oneToOnes_;
    std::vector<std::unique_ptr<oxdmOXIOCursorBookmark>> oneToManys_;
};
