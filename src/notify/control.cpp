#include "oxdm/notify/control.h"

void oxdmControl::SetCallback(CtrlEvent, const oxdmCallback&) {}

void oxdmControl::ClearCallbacks() {}

oxdmCallbackInfo* oxdmControl::MakeCallbackInfo(oxdmControlMgr*, const oxBase::SmartPtr<oxdmAppEventData>&) {
    return nullptr;
}

oxdmCallbackInfo* oxdmControl::MakeCallbackInfo(oxdmControlMgr*, const oxBase::SmartPtr<oxdmAppEventData>&,
                                                oxdmControl*, const oxdmEvent*) {
    return nullptr;
}
