#pragma once
// oxdmPOBufferLink: what the object bridge asks of the buffered data source
// that stands over its cursor. The buffered data source layer lies above
// this one, so it hands the bridge this face of itself (SetBufferLink);
// until a buffer is linked the bridge works as a bare cursor: no new row,
// no read-only states, no cell redraws, no requeries.

#include "oxdm/base/cstring.h"

class oxData;
class oxdmBufferedFileDataSource;
class oxdmCallbackInfo;
class oxdmCallbackMgr;
class oxdmControlMgr;

class oxdmPOBufferLink {
public:
    virtual ~oxdmPOBufferLink() = default;

    // The buffer itself, for the application's object maker; may be null.
    virtual oxdmBufferedFileDataSource* Source() = 0;
    virtual const CString& NodeLabel() const = 0;
    virtual oxdmControlMgr* RootControlMgr() = 0;
    // Merges the bridge's callbacks into the buffer's, the buffer's own
    // (the application's) keeping their place.
    virtual void MergeCallbacks(const oxdmCallbackMgr& callbacks) = 0;
    // The column a column callback concerns and the value being entered;
    // false when the callback concerns no cell.
    virtual bool EditedCell(const oxdmCallbackInfo* info, CString& column, const oxData*& value) const = 0;

    // Whether the focus row is the new row.
    virtual bool IsNewRow() const = 0;
    // The buffer's column index of a name, -1 when none.
    virtual short IndexForColumn(const CString& name) const = 0;
    // SetReadOnly(column, readOnly, 0, false) of the data source contract.
    virtual void SetReadOnly(short column, bool readOnly) = 0;
    // Puts the cursor on the focus row's bookmark.
    virtual void MoveCursorToFocus() = 0;
    // Takes a changed value of the cursor into the focus row's cell.
    virtual void RefreshCell(short column) = 0;
    // Sends an mvcColChange with DSColInvalid for the column.
    virtual void SendColInvalid(short column) = 0;
    // Fetches the window again after a new row was stored.
    virtual void Refetch() = 0;
    // Whether the buffer may delete rows.
    virtual bool CanDelete() const = 0;
    virtual void ReQuery() = 0;
    virtual long NumWindowDataRows() const = 0;
    virtual bool AppendRow() = 0;
};
