#include "stl_bookmark.h"

#include <algorithm>
#include <utility>

_oxdmSTLBookmarkImpl::_oxdmSTLBookmarkImpl(MemDSBookmarkInterface* iface, std::vector<long> rows)
    : iface_(iface), rows_(std::move(rows)) {}

_oxdmSTLBookmarkImpl::_oxdmSTLBookmarkImpl(const _oxdmSTLBookmarkImpl& other)
    : oxdmDSBookmarkImpl(other), iface_(other.iface_->Clone()), position_(other.position_), rows_(other.rows_) {}

long _oxdmSTLBookmarkImpl::FirstRowOf(const oxdmDSBookmarkImpl& other) const {
    const auto* mine = dynamic_cast<const _oxdmSTLBookmarkImpl*>(&other);
    if (!mine || mine->rows_.empty() || !iface_->IsSameSource(*mine->iface_)) return -1;
    return mine->rows_.front();
}

bool _oxdmSTLBookmarkImpl::operator==(const oxdmDSBookmarkImpl& other) const {
    const long first = FirstRowOf(other);
    return first != -1 && !rows_.empty() && rows_.front() == first;
}

bool _oxdmSTLBookmarkImpl::operator<(const oxdmDSBookmarkImpl& other) const {
    const long first = FirstRowOf(other);
    if (first == -1 || rows_.empty()) return false;
    const long mine = iface_->GetRelativeRow(rows_.front());
    const long theirs = iface_->GetRelativeRow(first);
    return mine != -1 && theirs != -1 && mine < theirs;
}

bool _oxdmSTLBookmarkImpl::IsValid() const {
    if (rows_.empty()) return false;
    const long total = iface_->TotalRows();
    return std::all_of(rows_.begin(), rows_.end(), [total](long row) { return row >= 0 && row < total; });
}

bool _oxdmSTLBookmarkImpl::GotoFirst() {
    if (!IsValid()) return false;
    position_ = 0;
    iface_->SetFocus(iface_->GetRelativeRow(rows_.front()), true);
    return true;
}

bool _oxdmSTLBookmarkImpl::GotoNext() {
    if (position_ == -1) return false;
    ++position_;
    if (static_cast<size_t>(position_) >= rows_.size()) {
        position_ = -1;
        return false;
    }
    const long relative = iface_->GetRelativeRow(rows_[static_cast<size_t>(position_)]);
    if (relative == -1) {
        position_ = -1;
        return false;
    }
    iface_->SetFocus(relative, true);
    return true;
}

// Before the start of the range, in display order.
bool _oxdmSTLBookmarkImpl::Before(long absolute) const {
    if (rows_.empty()) return false;
    const long relative = iface_->GetRelativeRow(absolute);
    const long start = iface_->GetRelativeRow(rows_.front());
    return relative != -1 && start != -1 && relative < start;
}

// After the end of the range, in display order.
bool _oxdmSTLBookmarkImpl::After(long absolute) const {
    if (rows_.empty()) return false;
    const long relative = iface_->GetRelativeRow(absolute);
    const long end = iface_->GetRelativeRow(rows_.back());
    return relative != -1 && end != -1 && relative > end;
}

int _oxdmSTLBookmarkImpl::StateOf(long absolute) const {
    const auto it = std::find(rows_.begin(), rows_.end(), absolute);
    if (absolute == -1 || it == rows_.end()) return oxdmDSBookmark::NotInRange;
    if (rows_.size() == 1) return oxdmDSBookmark::OnlyRowInRange;
    if (it == rows_.begin()) return oxdmDSBookmark::StartOfRange;
    if (it == rows_.end() - 1) return oxdmDSBookmark::EndOfRange;
    return oxdmDSBookmark::InsideRange;
}

bool _oxdmSTLBookmarkImpl::BeforeRange(const oxdmDSBookmarkImpl& other) const { return Before(FirstRowOf(other)); }

bool _oxdmSTLBookmarkImpl::BeforeRange(short row) const { return Before(iface_->GetAbsRowFromClient(row)); }

int _oxdmSTLBookmarkImpl::InRange(const oxdmDSBookmarkImpl& other) const { return StateOf(FirstRowOf(other)); }

int _oxdmSTLBookmarkImpl::InRange(short row) const { return StateOf(iface_->GetAbsRowFromClient(row)); }

bool _oxdmSTLBookmarkImpl::AfterRange(const oxdmDSBookmarkImpl& other) const { return After(FirstRowOf(other)); }

bool _oxdmSTLBookmarkImpl::AfterRange(short row) const { return After(iface_->GetAbsRowFromClient(row)); }

bool _oxdmSTLBookmarkImpl::Remove(long absolute) {
    const auto it = std::find(rows_.begin(), rows_.end(), absolute);
    if (absolute == -1 || it == rows_.end()) return false;
    const auto index = it - rows_.begin();
    rows_.erase(it);
    // The iteration goes on with the row that followed the one removed.
    if (position_ != -1 && index <= position_) --position_;
    return true;
}

bool _oxdmSTLBookmarkImpl::Delete(const oxdmDSBookmarkImpl& other) { return Remove(FirstRowOf(other)); }

bool _oxdmSTLBookmarkImpl::Delete(short row) { return Remove(iface_->GetAbsRowFromClient(row)); }

// This bookmark keeps the rows before the one given, the new one takes those
// after it; the row itself belongs to neither.
oxdmDSBookmarkImpl* _oxdmSTLBookmarkImpl::SplitAt(long absolute) {
    const auto it = std::find(rows_.begin(), rows_.end(), absolute);
    if (absolute == -1 || rows_.size() < 2 || it == rows_.end()) return nullptr;
    auto* tail = new _oxdmSTLBookmarkImpl(iface_->Clone(), std::vector<long>(it + 1, rows_.end()));
    rows_.erase(it, rows_.end());
    position_ = -1;
    return tail;
}

oxdmDSBookmarkImpl* _oxdmSTLBookmarkImpl::Split(const oxdmDSBookmarkImpl& other) {
    const auto* mine = dynamic_cast<const _oxdmSTLBookmarkImpl*>(&other);
    if (mine && mine->rows_.size() > 1) return nullptr;  // a range does not split another
    return SplitAt(FirstRowOf(other));
}

oxdmDSBookmarkImpl* _oxdmSTLBookmarkImpl::Split(short row) { return SplitAt(iface_->GetAbsRowFromClient(row)); }

// Every storage row from this start to the given row, in display order.
oxdmDSBookmarkImpl* _oxdmSTLBookmarkImpl::RangeTo(long absolute) const {
    if (rows_.empty() || absolute == -1) return nullptr;
    const long from = iface_->GetRelativeRow(rows_.front());
    const long to = iface_->GetRelativeRow(absolute);
    if (from == -1 || to == -1) return nullptr;
    std::vector<long> rows;
    for (long relative = std::min(from, to); relative <= std::max(from, to); ++relative) {
        rows.push_back(iface_->GetAbsoluteRow(relative));
    }
    return new _oxdmSTLBookmarkImpl(iface_->Clone(), std::move(rows));
}

oxdmDSBookmarkImpl* _oxdmSTLBookmarkImpl::MakeRange(const oxdmDSBookmarkImpl& other) const {
    return RangeTo(FirstRowOf(other));
}

oxdmDSBookmarkImpl* _oxdmSTLBookmarkImpl::MakeRange(short row) const {
    return RangeTo(iface_->GetAbsRowFromClient(row));
}
