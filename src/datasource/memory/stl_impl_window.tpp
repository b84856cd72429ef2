// oxdmSTLDataSourceImpl<C>: the window over the table and the moves of the
// focus. Included by stl_data_source_impl.cpp only.

#include <cmath>

template <class C>
void oxdmSTLDataSourceImpl<C>::_UpdateScrollInfo() {
    if (TotalRows() > windowSize_) {
        canScrollUp_ = windowTop_ != 0;
        canScrollDown_ = windowTop_ + windowSize_ < TotalRows();
    } else {
        canScrollUp_ = false;
        canScrollDown_ = false;
    }
}

template <class C>
void oxdmSTLDataSourceImpl<C>::SetWindowSize(short rows) {
    if (rows < 0) rows = 0;
    const short former = windowSize_;
    if (rows < former && HasFocusRow() && FocusRow() == former - 1) {
        windowTop_ += former - rows;
        windowSize_ = rows;
    } else {
        windowSize_ = rows;
        if (windowTop_ + windowSize_ > TotalRows()) windowTop_ = std::max(0L, TotalRows() - windowSize_);
    }
    _UpdateScrollInfo();
}

template <class C>
long oxdmSTLDataSourceImpl<C>::NumWindowDataRows() const {
    return std::max(0L, std::min(static_cast<long>(windowSize_), TotalRows() - windowTop_));
}

template <class C>
short oxdmSTLDataSourceImpl<C>::SetWindowScroll(oxdmDataSource::WindowScrollType type, short rows) {
    const long lastTop = std::max(0L, TotalRows() - windowSize_);
    const long former = windowTop_;
    long top = windowTop_;
    switch (type) {
    case oxdmDataSource::ScrollTop: top = 0; break;
    case oxdmDataSource::ScrollBottom: top = lastTop; break;
    case oxdmDataSource::ScrollUp: top = windowTop_ - std::max<short>(rows, 0); break;
    case oxdmDataSource::ScrollDown: top = windowTop_ + std::max<short>(rows, 0); break;
    case oxdmDataSource::ScrollToFocus: {
        const long position = GetRelativeRow(focusRow_);
        if (position == -1) break;
        if (position < top) top = position;
        const long height = std::max<long>(windowSize_, 1);
        if (position >= top + height) top = position - height + 1;
        break;
    }
    }
    windowTop_ = std::clamp(top, 0L, lastTop);
    _UpdateScrollInfo();
    return static_cast<short>(std::min(std::labs(windowTop_ - former), 32767L));
}

template <class C>
double oxdmSTLDataSourceImpl<C>::WindowScrollPercent() const {
    const long beyond = TotalRows() - windowSize_;
    return beyond > 0 ? static_cast<double>(windowTop_) / static_cast<double>(beyond) : 0.0;
}

template <class C>
double oxdmSTLDataSourceImpl<C>::SetWindowScrollPercent(double percent) {
    const long beyond = TotalRows() - windowSize_;
    if (beyond > 0 && std::isfinite(percent)) {
        windowTop_ = std::clamp(std::lround(percent * static_cast<double>(beyond)), 0L, beyond);
    }
    _UpdateScrollInfo();
    return WindowScrollPercent();
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::CanMoveUp() const {
    return GetRelativeRow(focusRow_) > 0;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::CanMoveDown(bool noNewRow) const {
    const long limit = TotalRows() - 1 - (noNewRow && autoNewRow_ ? 1 : 0);
    return GetRelativeRow(focusRow_) < limit;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::CanMoveToTop(bool noNewRow) const {
    return TotalRows() - (noNewRow && autoNewRow_ ? 1 : 0) > 0;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::CanMoveToBottom(bool noNewRow) const {
    return CanMoveToTop(noNewRow);
}

template <class C>
short oxdmSTLDataSourceImpl<C>::MoveUp(short rows, unsigned long initiator, bool notifyInitiator) {
    const long current = GetRelativeRow(focusRow_);
    if (current <= 0 || rows <= 0) return 0;
    const long target = std::max(0L, current - rows);
    SetFocusAbsolute(target, initiator, notifyInitiator);
    return static_cast<short>(current - target);
}

template <class C>
short oxdmSTLDataSourceImpl<C>::MoveDown(short rows, unsigned long initiator, bool notifyInitiator, bool noNewRow) {
    const long limit = TotalRows() - 1 - (noNewRow && autoNewRow_ ? 1 : 0);
    const long current = GetRelativeRow(focusRow_);
    if (rows <= 0 || current >= limit) return 0;
    const long target = std::min(limit, current + rows);
    SetFocusAbsolute(target, initiator, notifyInitiator);
    return static_cast<short>(target - current);
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::MoveToTop(unsigned long initiator, bool notifyInitiator, bool noNewRow) {
    if (!CanMoveToTop(noNewRow)) return false;
    SetFocusAbsolute(0, initiator, notifyInitiator);
    return true;
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::MoveToBottom(unsigned long initiator, bool notifyInitiator, bool noNewRow) {
    if (!CanMoveToBottom(noNewRow)) return false;
    SetFocusAbsolute(TotalRows() - 1 - (noNewRow && autoNewRow_ ? 1 : 0), initiator, notifyInitiator);
    return true;
}
