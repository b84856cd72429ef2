#pragma once
// The bookmark of a memory table: a list of storage rows, one for a single
// row, several for a range (in display order at the time it was made).
//
// MemDSBookmarkInterface is all a bookmark knows of its table: it converts
// row numbers and moves the focus, and never touches the table itself.
// Storage rows do not move with a sort, so a bookmark stays right across
// Sort, but not across a delete above its rows or ReplaceAllRows; rows that
// no longer exist make it invalid.

#include <memory>
#include <vector>

#include "oxdm/datasource/bookmark.h"

class MemDSBookmarkInterface {
public:
    virtual ~MemDSBookmarkInterface() = default;
    // -1 for a row out of range.
    virtual long GetAbsoluteRow(long relative) const = 0;
    virtual long GetRelativeRow(long absolute) const = 0;
    virtual long GetAbsRowFromClient(long client) const = 0;
    virtual long TotalRows() const = 0;
    // Moves the focus to a display position and, with notify, scrolls the
    // window to it.
    virtual void SetFocus(long relative, bool notify) = 0;
    virtual bool IsSameSource(const MemDSBookmarkInterface& other) const = 0;
    virtual MemDSBookmarkInterface* Clone() const = 0;
};

// Invariants: iface_ is never null and owned; position_ is -1 before
// GotoFirst and after the last row was delivered, else an index in rows_.
class _oxdmSTLBookmarkImpl : public oxdmDSBookmarkImpl {
public:
    // Takes ownership of iface.
    _oxdmSTLBookmarkImpl(MemDSBookmarkInterface* iface, std::vector<long> rows);
    _oxdmSTLBookmarkImpl(const _oxdmSTLBookmarkImpl& other);
    _oxdmSTLBookmarkImpl& operator=(const _oxdmSTLBookmarkImpl&) = delete;

    bool operator==(const oxdmDSBookmarkImpl& other) const override;
    bool operator<(const oxdmDSBookmarkImpl& other) const override;
    bool IsValid() const override;
    bool GotoFirst() override;
    bool GotoNext() override;
    bool BeforeRange(const oxdmDSBookmarkImpl& other) const override;
    bool BeforeRange(short row) const override;
    int InRange(const oxdmDSBookmarkImpl& other) const override;
    int InRange(short row) const override;
    bool AfterRange(const oxdmDSBookmarkImpl& other) const override;
    bool AfterRange(short row) const override;
    bool Delete(const oxdmDSBookmarkImpl& other) override;
    bool Delete(short row) override;
    oxdmDSBookmarkImpl* Split(const oxdmDSBookmarkImpl& other) override;
    oxdmDSBookmarkImpl* Split(short row) override;
    oxdmDSBookmarkImpl* MakeRange(const oxdmDSBookmarkImpl& other) const override;
    oxdmDSBookmarkImpl* MakeRange(short row) const override;

    const std::vector<long>& Rows() const { return rows_; }
    const MemDSBookmarkInterface& Interface() const { return *iface_; }

private:
    // The first storage row of other when it is a bookmark of the same table,
    // else -1.
    long FirstRowOf(const oxdmDSBookmarkImpl& other) const;
    bool Before(long absolute) const;
    bool After(long absolute) const;
    int StateOf(long absolute) const;
    bool Remove(long absolute);
    oxdmDSBookmarkImpl* SplitAt(long absolute);
    oxdmDSBookmarkImpl* RangeTo(long absolute) const;

    std::unique_ptr<MemDSBookmarkInterface> iface_;
    short position_ = -1;
    std::vector<long> rows_;
};
