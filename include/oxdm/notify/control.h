#pragma once
// oxdmControl: the root of the data-aware controls, as far as the callback
// registry needs it: the control events that callbacks are bound to, and the
// callback operations that a control with callback chains overrides. A
// plain control has no chains: it takes no callback and makes no callback
// information.

#include "oxdm/base/smart_ptr.h"
#include "oxdm/notify/callback.h"

class oxdmAppEventData;
class oxdmCallbackInfo;
class oxdmControlMgr;
class oxdmEvent;

class oxdmControl {
public:
    // The events a control raises to its callback chains, one chain each.
    enum CtrlEvent {
        ctrlBeforeUpdate = 0,   // before a value is taken over; non-zero vetoes
        ctrlAfterUpdate = 1,
        ctrlFocusGained = 2,
        ctrlFocusLost = 3,
        ctrlMouseClick = 4,
        ctrlMouseDblClick = 5,
        ctrlKeyPressed = 6,
        ctrlKeyDown = 7,
        ctrlKeyUp = 8,
        ctrlUnused9 = 9,        // nothing raises 9 and 10
        ctrlUnused10 = 10,
        ctrlColChanging = 11,
        ctrlDraw = 12,
        ctrlContextMenuBefore = 13,
        ctrlContextMenuAfter = 14,
        ctrlClass0 = 15,        // 15 to 20: events of the control's own class
        ctrlClass1 = 16,
        ctrlClass2 = 17,
        ctrlClass3 = 18,
        ctrlClass4 = 19,
        ctrlClass5 = 20,
    };
    static constexpr int CtrlEventCount = 21;

    oxdmControl() = default;
    virtual ~oxdmControl() = default;
    oxdmControl(const oxdmControl&) = delete;
    oxdmControl& operator=(const oxdmControl&) = delete;

    // Add chain to the chain of event / empty every chain. Nothing here.
    virtual void SetCallback(CtrlEvent event, const oxdmCallback& chain);
    virtual void ClearCallbacks();

    // A new callback information for this control, owned by the caller; null
    // here.
    virtual oxdmCallbackInfo* MakeCallbackInfo(oxdmControlMgr* root,
                                               const oxBase::SmartPtr<oxdmAppEventData>& appData);
    virtual oxdmCallbackInfo* MakeCallbackInfo(oxdmControlMgr* root,
                                               const oxBase::SmartPtr<oxdmAppEventData>& appData,
                                               oxdmControl* control, const oxdmEvent* event);
};
