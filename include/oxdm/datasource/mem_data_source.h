#pragma once
// oxdmMemDataSource: the operations that both memory tables (text cells and
// typed cells) offer with one signature, and the refresh of every observer
// when notification comes back on.
//
// Row numbers of a memory table: a client row is a window index (0 = top
// row of the window), a relative row a display position (0 = first in the
// sorted order), an absolute row an index in storage order. Conversions
// answer -1 for a row that does not exist.

#include "oxdm/datasource/data_source.h"

class oxdmCallbackMgr;
class oxdmControlMgr;

class oxdmMemDataSource : public oxdmDataSource {
public:
    // After a suppressed stretch observers are told to look at everything
    // again: a DSColReadOnlyChanged for every column, then a DSAllChanged.
    void SupressNotification(bool suppress) override;

    virtual long FocusRowAbsolute() = 0;
    // On: appends a new row at once (each call appends one).
    virtual bool SetAutoNewRow(bool on) = 0;
    virtual long GetAbsoluteRow(long relative) = 0;
    virtual long GetRelativeRow(long absolute) = 0;
    virtual long GetAbsRowFromClient(long client) = 0;
    virtual long GetClientRowFromAbs(long absolute) = 0;
    // Writes a stored cell without any event or change; false out of range
    // or for text the cell does not take.
    virtual bool SetCellValueAbsolute(long absolute, short col, const CString& text) = 0;
    virtual void SetRowDescription(const CString& text) = 0;
    virtual bool ValidateColumns(bool changedOnly) = 0;
    // Copies the callbacks registered for this table (row callbacks under
    // its node label, column callbacks under each column's label) into its
    // own chains; registering later changes nothing here.
    virtual void SetCallbacks(const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr) = 0;
};
