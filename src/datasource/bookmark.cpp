#include "oxdm/datasource/bookmark.h"

namespace {

oxdmDSBookmark* Wrap(oxdmDSBookmarkImpl* body) { return body ? new oxdmDSBookmark(body) : nullptr; }

oxdmDSBookmark::InRangeState AsState(int state) {
    return state >= oxdmDSBookmark::OnlyRowInRange && state <= oxdmDSBookmark::EndOfRange
               ? static_cast<oxdmDSBookmark::InRangeState>(state)
               : oxdmDSBookmark::NotInRange;
}

}  // namespace

bool oxdmDSBookmark::operator==(const oxdmDSBookmark& other) const {
    return body_ && other.body_ && *body_ == *other.body_;
}

bool oxdmDSBookmark::operator<(const oxdmDSBookmark& other) const {
    return body_ && other.body_ && *body_ < *other.body_;
}

bool oxdmDSBookmark::IsValid() const { return body_ && body_->IsValid(); }

bool oxdmDSBookmark::CanMultiSelect() const { return body_ && body_->CanMultiSelect(); }

bool oxdmDSBookmark::GotoFirst() { return body_ && body_->GotoFirst(); }

bool oxdmDSBookmark::GotoNext() { return body_ && body_->GotoNext(); }

bool oxdmDSBookmark::BeforeRange(short row) const { return body_ && body_->BeforeRange(row); }

bool oxdmDSBookmark::BeforeRange(const oxdmDSBookmark& other) const {
    return body_ && other.body_ && body_->BeforeRange(*other.body_);
}

oxdmDSBookmark::InRangeState oxdmDSBookmark::InRange(short row) const {
    return body_ ? AsState(body_->InRange(row)) : NotInRange;
}

oxdmDSBookmark::InRangeState oxdmDSBookmark::InRange(const oxdmDSBookmark& other) const {
    return body_ && other.body_ ? AsState(body_->InRange(*other.body_)) : NotInRange;
}

bool oxdmDSBookmark::AfterRange(short row) const { return body_ && body_->AfterRange(row); }

bool oxdmDSBookmark::AfterRange(const oxdmDSBookmark& other) const {
    return body_ && other.body_ && body_->AfterRange(*other.body_);
}

bool oxdmDSBookmark::Delete(short row) { return body_ && body_->Delete(row); }

bool oxdmDSBookmark::Delete(const oxdmDSBookmark& other) {
    return body_ && other.body_ && body_->Delete(*other.body_);
}

oxdmDSBookmark* oxdmDSBookmark::Split(short row) { return body_ ? Wrap(body_->Split(row)) : nullptr; }

oxdmDSBookmark* oxdmDSBookmark::Split(const oxdmDSBookmark& other) {
    return body_ && other.body_ ? Wrap(body_->Split(*other.body_)) : nullptr;
}

oxdmDSBookmark* oxdmDSBookmark::MakeRange(short row) const {
    return body_ ? Wrap(body_->MakeRange(row)) : nullptr;
}

oxdmDSBookmark* oxdmDSBookmark::MakeRange(const oxdmDSBookmark& other) const {
    return body_ && other.body_ ? Wrap(body_->MakeRange(*other.body_)) : nullptr;
}

short oxdmDSBookmark::GetC3Range() const { return body_ ? body_->GetC3Range() : 0; }
