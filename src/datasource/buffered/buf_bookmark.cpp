#include "buf_bookmark.h"

#include <utility>

#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"

namespace {
oxdmBufferedFileDataSourceImpl& ImplOf(oxdmBufferedFileDataSource* source) {
    return *static_cast<oxdmBufferedFileDataSourceImpl*>(source->GetImpl());
}
}  // namespace

// ---------------------------------------------------------------- one position

_oxdmSingleBookmark::_oxdmSingleBookmark(oxdmBufferedFileDataSource* source, std::shared_ptr<oxdmCursorBookmark> row,
                                         std::shared_ptr<oxdmCursorBookmark> top, bool noPosition, bool newRow)
    : source_(source), row_(std::move(row)), top_(std::move(top)), noPosition_(noPosition), newRow_(newRow) {}

bool _oxdmSingleBookmark::Equal(const _oxdmSingleBookmark& other) const {
    if (newRow_ || other.newRow_) return newRow_ && other.newRow_;
    if (!row_ || !other.row_) return !row_ && !other.row_;
    return row_->EqualTo(other.row_.get());
}

bool _oxdmSingleBookmark::Before(const _oxdmSingleBookmark& other) const {
    if (newRow_) return false;
    if (other.newRow_) return true;
    return row_ && other.row_ && row_->LessThan(other.row_.get());
}

_oxdmSinglePtr _oxdmSingleBookmark::OfRow(short row) const { return ImplOf(source_).SingleBookmark(row); }

bool _oxdmSingleBookmark::MoveTo() const { return !noPosition_ && ImplOf(source_).MoveToSingleBookmark(*this); }

_oxdmSinglePtr _oxdmSingleBookmark::Step(bool forward) const {
    return noPosition_ ? nullptr : ImplOf(source_).StepSingleBookmark(*this, forward);
}

// ---------------------------------------------------------------- a range

_oxdmBookmark::_oxdmBookmark(_oxdmSinglePtr start, _oxdmSinglePtr end) : start_(std::move(start)), end_(std::move(end)) {
    Normalise();
}

void _oxdmBookmark::Normalise() {
    if (!start_ || (end_ && end_->Equal(*start_))) end_.reset();
}

_oxdmSinglePtr _oxdmBookmark::SingleOf(const oxdmDSBookmarkImpl& other, bool allowRange) const {
    const auto* mine = dynamic_cast<const _oxdmBookmark*>(&other);
    if (!mine || !mine->start_ || !start_ || mine->start_->Source() != start_->Source()) return nullptr;
    if (mine->end_ && !allowRange) return nullptr;
    return mine->start_;
}

_oxdmSinglePtr _oxdmBookmark::SingleOf(short row) const { return start_ ? start_->OfRow(row) : nullptr; }

bool _oxdmBookmark::operator==(const oxdmDSBookmarkImpl& other) const {
    const _oxdmSinglePtr theirs = SingleOf(other, true);
    return theirs && start_->Equal(*theirs);
}

bool _oxdmBookmark::operator<(const oxdmDSBookmarkImpl& other) const {
    const _oxdmSinglePtr theirs = SingleOf(other, true);
    return theirs && start_->Before(*theirs);
}

bool _oxdmBookmark::IsValid() const { return start_ && !start_->NoPosition() && (!end_ || !end_->NoPosition()); }

bool _oxdmBookmark::GotoFirst() {
    if (!IsValid()) return false;
    position_ = std::make_shared<_oxdmSingleBookmark>(*start_);
    if (position_->MoveTo()) return true;
    position_.reset();
    return false;
}

bool _oxdmBookmark::GotoNext() {
    if (!position_ || !end_) return false;
    _oxdmSinglePtr next = position_->Step(true);
    if (!next || !next->MoveTo()) {
        position_.reset();
        return false;
    }
    position_ = next->Equal(*end_) ? nullptr : next;
    return true;
}

bool _oxdmBookmark::BeforeP(const _oxdmSinglePtr& p) const { return p && start_ && p->Before(*start_); }

bool _oxdmBookmark::AfterP(const _oxdmSinglePtr& p) const {
    if (!p || !start_) return false;
    return p->After(end_ ? *end_ : *start_);
}

int _oxdmBookmark::InRangeP(const _oxdmSinglePtr& p) const {
    if (!start_ || !p) return oxdmDSBookmark::NotInRange;
    if (p->Equal(*start_)) return end_ ? oxdmDSBookmark::StartOfRange : oxdmDSBookmark::OnlyRowInRange;
    if (!end_) return oxdmDSBookmark::NotInRange;
    if (p->Equal(*end_)) return oxdmDSBookmark::EndOfRange;
    if (p->After(*start_) && p->Before(*end_)) return oxdmDSBookmark::InsideRange;
    return oxdmDSBookmark::NotInRange;
}

bool _oxdmBookmark::BeforeRange(const oxdmDSBookmarkImpl& other) const { return BeforeP(SingleOf(other, true)); }
bool _oxdmBookmark::BeforeRange(short row) const { return BeforeP(SingleOf(row)); }
int _oxdmBookmark::InRange(const oxdmDSBookmarkImpl& other) const { return InRangeP(SingleOf(other, true)); }
int _oxdmBookmark::InRange(short row) const { return InRangeP(SingleOf(row)); }
bool _oxdmBookmark::AfterRange(const oxdmDSBookmarkImpl& other) const { return AfterP(SingleOf(other, true)); }
bool _oxdmBookmark::AfterRange(short row) const { return AfterP(SingleOf(row)); }

bool _oxdmBookmark::DeleteP(const _oxdmSinglePtr& p) {
    if (!start_ || !p) return false;
    bool answer = true;
    if (p->Equal(*start_)) {
        if (!end_) {
            start_.reset();
        } else if (_oxdmSinglePtr next = start_->Step(true)) {
            start_ = next;
        } else {
            answer = false;
        }
    } else if (end_ && p->Equal(*end_)) {
        if (_oxdmSinglePtr back = end_->Step(false)) {
            end_ = back;
        } else {
            answer = false;
        }
    }
    Normalise();
    return answer;
}

bool _oxdmBookmark::Delete(const oxdmDSBookmarkImpl& other) { return DeleteP(SingleOf(other, false)); }
bool _oxdmBookmark::Delete(short row) { return DeleteP(SingleOf(row)); }

oxdmDSBookmarkImpl* _oxdmBookmark::SplitP(const _oxdmSinglePtr& p) {
    if (!start_ || !end_ || !p) return nullptr;
    const int state = InRangeP(p);
    if (state == oxdmDSBookmark::NotInRange) return nullptr;
    auto* after = new _oxdmBookmark(p->Step(true), end_);
    end_ = p->Step(false);
    if (!end_) end_ = start_;
    Normalise();
    after->Normalise();
    if (state == oxdmDSBookmark::StartOfRange) {
        start_.reset();
        end_.reset();
    } else if (state == oxdmDSBookmark::EndOfRange) {
        after->start_.reset();
        after->end_.reset();
    }
    return after;
}

oxdmDSBookmarkImpl* _oxdmBookmark::Split(const oxdmDSBookmarkImpl& other) { return SplitP(SingleOf(other, false)); }
oxdmDSBookmarkImpl* _oxdmBookmark::Split(short row) { return SplitP(SingleOf(row)); }

oxdmDSBookmarkImpl* _oxdmBookmark::MakeRangeP(const _oxdmSinglePtr& p) const {
    if (!start_ || !p) return nullptr;
    if (p->Before(*start_)) return new _oxdmBookmark(p, start_);
    return new _oxdmBookmark(start_, p);
}

oxdmDSBookmarkImpl* _oxdmBookmark::MakeRange(const oxdmDSBookmarkImpl& other) const {
    return MakeRangeP(SingleOf(other, false));
}
oxdmDSBookmarkImpl* _oxdmBookmark::MakeRange(short row) const { return MakeRangeP(SingleOf(row)); }
