#pragma once
// oxdmCallbackInfo: what every callback is given: the row, cell, control and
// event it concerns. oxdmAppEventData: the application's own data, carried to
// every callback under a counted handle.

#include "oxdm/base/smart_ptr.h"

class oxdmControl;
class oxdmControlMgr;
class oxdmDSCellOnFocusRow;
class oxdmDSFocusRowMgr;
class oxdmEvent;
class oxdmEvtKey;
class oxdmEvtMouse;

// The application derives from this to hand its own data to its callbacks.
// The library only carries it.
class oxdmAppEventData {
public:
    virtual ~oxdmAppEventData() = default;
};

// A plain, copyable value. Every pointer may be null and none is owned; the
// event lives on the stack of whoever raised the callback, so a callback must
// not keep it.
class oxdmCallbackInfo {
public:
    oxdmCallbackInfo() = default;
    oxdmCallbackInfo(oxdmDSFocusRowMgr* queryRow, oxdmDSCellOnFocusRow* currentColumn,
                     oxdmControlMgr* controlMgr, oxdmControl* control,
                     const oxBase::SmartPtr<oxdmAppEventData>& appData, const oxdmEvent* event)
        : queryRow(queryRow), currentColumn(currentColumn), controlMgr(controlMgr),
          control(control), appData(appData), event(event) {}

    oxdmDSFocusRowMgr* QueryRow() const { return queryRow; }
    oxdmDSCellOnFocusRow* CurrentColumn() const { return currentColumn; }
    oxdmControlMgr* ControlMgr() const { return controlMgr; }
    oxdmControl* Control() const { return control; }       // null for data source events
    oxBase::SmartPtr<oxdmAppEventData> AppData() const { return appData; }  // a counted copy
    const oxdmEvent* MsgInfo() const { return event; }

    // The event as a key or a mouse event; null when it is neither or absent.
    const oxdmEvtKey* KeyInfo() const;
    const oxdmEvtMouse* MouseInfo() const;

private:
    oxdmDSFocusRowMgr* queryRow = nullptr;          // focus row of the data source concerned
    oxdmDSCellOnFocusRow* currentColumn = nullptr;  // the cell concerned
    oxdmControlMgr* controlMgr = nullptr;           // the root control manager
    oxdmControl* control = nullptr;                 // the control that raised the event
    oxBase::SmartPtr<oxdmAppEventData> appData;
    const oxdmEvent* event = nullptr;
};
