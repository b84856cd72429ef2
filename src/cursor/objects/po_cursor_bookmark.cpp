#include "oxdm/cursor/objects/po_cursor_bookmark.h"

#include <cassert>

#include "oxdm/cursor/objects/po_bridge.h"
#include "oxdm/cursor/objects/po_cursor.h"

namespace {

// A clone of `iterator`; throws when there is none to be had.
ATL::CComPtr<IPersistentObject> CloneOf(IUnknown* iterator) {
    auto face = PoQuery<IPersistentObject>(iterator);
    ATL::CComPtr<IPersistentObject> clone;
    if (!face || PoFailed(face->Clone(&clone)) || !clone)
        throw CString("IPersistentObject::Clone failed, the bookmark could not be created.");
    return clone;
}

}  // namespace

oxdmPersistentObjectCursorBookmark::oxdmPersistentObjectCursorBookmark(oxdmPersistentObjectCursor* cursor,
                                                                       IUnknown* iterator)
    : cursor_(cursor), position_(CloneOf(iterator)) {
    assert(cursor != nullptr);
}

oxdmPersistentObjectCursorBookmark::oxdmPersistentObjectCursorBookmark(
    const oxdmPersistentObjectCursorBookmark& other)
    : oxdmCursorBookmark(other), cursor_(other.cursor_), position_(CloneOf(other.position_)) {}

bool oxdmPersistentObjectCursorBookmark::GoTo() {
    cursor_->MoveToIter(CloneOf(position_));
    return true;
}

bool oxdmPersistentObjectCursorBookmark::EqualTo(const oxdmCursorBookmark* other) const {
    const auto* ours = dynamic_cast<const oxdmPersistentObjectCursorBookmark*>(other);
    short equal = VARIANT_FALSE;
    return ours != nullptr && !PoFailed(position_->IsEqual(ours->position_, &equal)) && equal != VARIANT_FALSE;
}

bool oxdmPersistentObjectCursorBookmark::LessThan(const oxdmCursorBookmark* other) const {
    const auto* ours = dynamic_cast<const oxdmPersistentObjectCursorBookmark*>(other);
    short less = VARIANT_FALSE;
    return ours != nullptr && !PoFailed(position_->IsLess(ours->position_, &less)) && less != VARIANT_FALSE;
}

oxdmCursorBookmark* oxdmPersistentObjectCursorBookmark::Clone() const {
    return new oxdmPersistentObjectCursorBookmark(*this);
}
