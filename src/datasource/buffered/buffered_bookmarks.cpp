// The buffer's bookmarks: taking a position, moving to one and stepping one
// row on or back from one.

#include <memory>

#include "buf_bookmark.h"
#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"

std::shared_ptr<oxdmCursorBookmark> oxdmBufferedFileDataSourceImpl::TopBookmark() const {
    return windowBookmarks_.empty() ? nullptr : windowBookmarks_.front();
}

_oxdmSinglePtr oxdmBufferedFileDataSourceImpl::SingleBookmark(short row) const {
    if (row < 0 || static_cast<size_t>(row) >= windowRows_.size()) {
        return std::make_shared<_oxdmSingleBookmark>(dataSource_, nullptr, nullptr, true, false);
    }
    const std::shared_ptr<oxdmCursorBookmark>& mark = windowBookmarks_[static_cast<size_t>(row)];
    return std::make_shared<_oxdmSingleBookmark>(dataSource_, mark, TopBookmark(), false, !mark);
}

_oxdmSinglePtr oxdmBufferedFileDataSourceImpl::CursorSingleBookmark(const _oxdmSingleBookmark& like) const {
    return std::make_shared<_oxdmSingleBookmark>(dataSource_,
                                                 std::shared_ptr<oxdmCursorBookmark>(cursorNode_->CreateBookmark()),
                                                 like.Top(), false, false);
}

oxdmDSBookmark* oxdmBufferedFileDataSourceImpl::GetBookmark(short row) const {
    return new oxdmDSBookmark(new _oxdmBookmark(SingleBookmark(row), nullptr));
}

oxdmDSBookmark* oxdmBufferedFileDataSourceImpl::GetFocusRowBookmark() const {
    _oxdmSinglePtr here;
    if (!hasFocus_ || windowRows_.empty()) {
        here = std::make_shared<_oxdmSingleBookmark>(dataSource_, nullptr, nullptr, true, false);
    } else {
        here = std::make_shared<_oxdmSingleBookmark>(dataSource_, focusBookmark_, TopBookmark(), false, onNewRow_);
    }
    return new oxdmDSBookmark(new _oxdmBookmark(here, nullptr));
}

bool oxdmBufferedFileDataSourceImpl::GoToBookmark(oxdmDSBookmark& bookmark, bool notify) {
    if (!bookmark.GotoFirst()) return false;
    if (notify) SendFocusMoved(0, true);
    return true;
}

bool oxdmBufferedFileDataSourceImpl::MoveToSingleBookmark(const _oxdmSingleBookmark& where) {
    if (where.NoPosition()) return false;
    ParentToFocus();
    // The window is rebuilt from the top row it had when the position was
    // taken, then the focus goes to the row itself.
    if (!where.Top()) {
        _MoveToNewRow(NoChildSync);
    } else if (where.Top()->GoTo()) {
        _MoveToCursor(NoChildSync);
    } else {
        _MoveToTop(false);
    }
    SetWindowScroll(oxdmDataSource::ScrollToFocus, 0);
    if (!where.Row()) {
        _MoveToNewRow(SyncChildrenNow);
        return true;
    }
    if (!where.Row()->GoTo()) {
        _MoveToTop(false);
        return false;
    }
    _MoveToCursor(SyncChildrenNow);
    return true;
}

_oxdmSinglePtr oxdmBufferedFileDataSourceImpl::StepSingleBookmark(const _oxdmSingleBookmark& from, bool forward) {
    // A neighbour inside the window is taken from there.
    for (size_t row = 0; row < windowRows_.size(); ++row) {
        if (!SingleBookmark(static_cast<short>(row))->Equal(from)) continue;
        const long next = static_cast<long>(row) + (forward ? 1 : -1);
        if (next >= 0 && static_cast<size_t>(next) < windowRows_.size()) {
            _oxdmSinglePtr found = SingleBookmark(static_cast<short>(next));
            return std::make_shared<_oxdmSingleBookmark>(dataSource_, found->Row(), from.Top(), false,
                                                         found->NewRow());
        }
        break;
    }
    const std::unique_ptr<oxdmCursorBookmark> back(cursorNode_->CreateBookmark());
    _oxdmSinglePtr answer;
    if (from.NewRow()) {
        if (!forward && CursorLast(true, false)) answer = CursorSingleBookmark(from);
    } else if (from.Row() && from.Row()->GoTo()) {
        if (forward) {
            if (CursorNext(1, true, false) > 0) {
                answer = CursorSingleBookmark(from);
            } else if (autoNewRow_) {
                answer = std::make_shared<_oxdmSingleBookmark>(dataSource_, nullptr, from.Top(), false, true);
            }
        } else if (CursorPrev(1, true, false) > 0) {
            answer = CursorSingleBookmark(from);
        }
    }
    back->GoTo();
    return answer;
}
