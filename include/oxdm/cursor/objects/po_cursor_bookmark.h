#pragma once
// oxdmPersistentObjectCursorBookmark: a row of a persistent object cursor,
// held as a clone of the iterator on it.

#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/cursor/objects/com.h"
#include "oxdm/cursor/objects/po_interfaces.h"

class oxdmPersistentObjectCursor;

class oxdmPersistentObjectCursorBookmark : public oxdmCursorBookmark {
public:
    // Throws CString when the iterator can't be cloned.
    // REQUIRES: cursor != nullptr; it outlives the bookmark.
    oxdmPersistentObjectCursorBookmark(oxdmPersistentObjectCursor* cursor, IUnknown* iterator);
    oxdmPersistentObjectCursorBookmark(const oxdmPersistentObjectCursorBookmark& other);
    oxdmPersistentObjectCursorBookmark& operator=(const oxdmPersistentObjectCursorBookmark&) = delete;

    bool GoTo() override;
    bool EqualTo(const oxdmCursorBookmark* other) const override;
    bool LessThan(const oxdmCursorBookmark* other) const override;
    oxdmCursorBookmark* Clone() const override;

private:
    // cursor_ is not owned; position_ is this bookmark's own clone.
    oxdmPersistentObjectCursor* cursor_;
    ATL::CComPtr<IPersistentObject> position_;
};
