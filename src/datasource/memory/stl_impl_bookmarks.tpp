// oxdmSTLDataSourceImpl<C>: bookmarks. Included by
// stl_data_source_impl.cpp only.

#include "stl_bookmark.h"

// The bookmark's view of one memory table; not owned, the table must
// outlive its bookmarks.
template <class C>
class _MemDSBookmarkInterfaceImpl : public MemDSBookmarkInterface {
public:
    explicit _MemDSBookmarkInterfaceImpl(oxdmSTLDataSourceImpl<C>* impl) : impl_(impl) {}

    long GetAbsoluteRow(long relative) const override { return impl_->GetAbsoluteRow(relative); }
    long GetRelativeRow(long absolute) const override { return impl_->GetRelativeRow(absolute); }
    long GetAbsRowFromClient(long client) const override { return impl_->GetAbsRowFromClient(client); }
    long TotalRows() const override { return impl_->TotalRows(); }
    void SetFocus(long relative, bool notify) override { impl_->BookmarkSetFocus(relative, notify); }
    bool IsSameSource(const MemDSBookmarkInterface& other) const override {
        const auto* same = dynamic_cast<const _MemDSBookmarkInterfaceImpl*>(&other);
        return same && same->impl_ == impl_;
    }
    MemDSBookmarkInterface* Clone() const override { return new _MemDSBookmarkInterfaceImpl(impl_); }

private:
    oxdmSTLDataSourceImpl<C>* impl_;
};

template <class C>
oxdmDSBookmark* oxdmSTLDataSourceImpl<C>::GetBookmark(short clientRow) const {
    const long absolute = GetAbsRowFromClient(clientRow);
    if (absolute == -1) return nullptr;
    auto* self = const_cast<oxdmSTLDataSourceImpl*>(this);  // the bookmark moves the focus later
    return new oxdmDSBookmark(new _oxdmSTLBookmarkImpl(new _MemDSBookmarkInterfaceImpl<C>(self), {absolute}));
}

template <class C>
oxdmDSBookmark* oxdmSTLDataSourceImpl<C>::GetFocusRowBookmark() const {
    if (!HasFocusRow()) return nullptr;
    auto* self = const_cast<oxdmSTLDataSourceImpl*>(this);
    return new oxdmDSBookmark(new _oxdmSTLBookmarkImpl(new _MemDSBookmarkInterfaceImpl<C>(self), {focusRow_}));
}

template <class C>
bool oxdmSTLDataSourceImpl<C>::GoToBookmark(oxdmDSBookmark& bookmark, bool notify) {
    const auto* mine = dynamic_cast<const _oxdmSTLBookmarkImpl*>(bookmark.Impl());
    _MemDSBookmarkInterfaceImpl<C> self(this);
    if (!mine || !mine->Interface().IsSameSource(self)) return false;
    if (!bookmark.GotoFirst()) return false;
    if (notify) HandleRowEvent(oxdmDataSource::FocusRowMoved, nullptr);
    return true;
}

template <class C>
void oxdmSTLDataSourceImpl<C>::BookmarkSetFocus(long relative, bool notify) {
    _SetFocusAbsolute(relative, notify);
    if (notify) SetWindowScroll(oxdmDataSource::ScrollToFocus, 0);
}
