#include "oxdm/notify/callback_info.h"

#include "oxdm/notify/event.h"

const oxdmEvtKey* oxdmCallbackInfo::KeyInfo() const { return dynamic_cast<const oxdmEvtKey*>(event); }

const oxdmEvtMouse* oxdmCallbackInfo::MouseInfo() const { return dynamic_cast<const oxdmEvtMouse*>(event); }
