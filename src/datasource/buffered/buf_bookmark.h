#pragma once
// The bookmarks of a buffer. _oxdmSingleBookmark is one position: a record
// (by its cursor bookmark) or the new row, which sorts after every record,
// with the window's top row at the moment of taking so that a move there
// can rebuild the same window. _oxdmBookmark is a range of such positions
// in record order, with an iteration position for GotoFirst/GotoNext.
//
// Positions are shared between ranges and copies through shared pointers
// and never change once made: a step makes a new position.

#include <memory>

#include "oxdm/datasource/bookmark.h"

class oxdmBufferedFileDataSource;
class oxdmCursorBookmark;

// Invariants: source_ is never null and outlives the position; row_ is null
// exactly for the new row or a position without place (noPosition_).
class _oxdmSingleBookmark {
public:
    _oxdmSingleBookmark(oxdmBufferedFileDataSource* source, std::shared_ptr<oxdmCursorBookmark> row,
                        std::shared_ptr<oxdmCursorBookmark> top, bool noPosition, bool newRow);
    virtual ~_oxdmSingleBookmark() = default;

    bool Equal(const _oxdmSingleBookmark& other) const;
    bool Before(const _oxdmSingleBookmark& other) const;
    bool After(const _oxdmSingleBookmark& other) const { return other.Before(*this); }
    // The position of window row `row` of the same buffer.
    std::shared_ptr<_oxdmSingleBookmark> OfRow(short row) const;
    // Puts the buffer's focus here; false, the buffer on its top row when
    // the record can't be reached.
    bool MoveTo() const;
    // The position one row on (forward) or back; null when there is none.
    std::shared_ptr<_oxdmSingleBookmark> Step(bool forward) const;

    oxdmBufferedFileDataSource* Source() const { return source_; }
    const std::shared_ptr<oxdmCursorBookmark>& Row() const { return row_; }
    const std::shared_ptr<oxdmCursorBookmark>& Top() const { return top_; }
    bool NoPosition() const { return noPosition_; }
    bool NewRow() const { return newRow_; }

private:
    oxdmBufferedFileDataSource* source_;
    std::shared_ptr<oxdmCursorBookmark> row_;
    std::shared_ptr<oxdmCursorBookmark> top_;
    bool noPosition_;
    bool newRow_;
};

using _oxdmSinglePtr = std::shared_ptr<_oxdmSingleBookmark>;

// Invariants: end_ is set only with start_, and never equal to start_;
// position_ is null before GotoFirst and after the last row was delivered.
class _oxdmBookmark : public oxdmDSBookmarkImpl {
public:
    _oxdmBookmark(_oxdmSinglePtr start, _oxdmSinglePtr end);

    bool operator==(const oxdmDSBookmarkImpl& other) const override;
    bool operator<(const oxdmDSBookmarkImpl& other) const override;
    bool IsValid() const override;
    bool CanMultiSelect() const override { return true; }
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

    const _oxdmSinglePtr& Start() const { return start_; }
    const _oxdmSinglePtr& End() const { return end_; }

private:
    // The one position of `other` when it is a one-row bookmark of the same
    // buffer (with `allowRange` its start), else null.
    _oxdmSinglePtr SingleOf(const oxdmDSBookmarkImpl& other, bool allowRange) const;
    _oxdmSinglePtr SingleOf(short row) const;
    bool BeforeP(const _oxdmSinglePtr& p) const;
    bool AfterP(const _oxdmSinglePtr& p) const;
    int InRangeP(const _oxdmSinglePtr& p) const;
    bool DeleteP(const _oxdmSinglePtr& p);
    oxdmDSBookmarkImpl* SplitP(const _oxdmSinglePtr& p);
    oxdmDSBookmarkImpl* MakeRangeP(const _oxdmSinglePtr& p) const;
    // A range whose start and end have come to be equal loses its end.
    void Normalise();

    _oxdmSinglePtr start_;
    _oxdmSinglePtr end_;
    _oxdmSinglePtr position_;
};
