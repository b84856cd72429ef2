#pragma once
// Callbacks and events: chains, callback information, the keyed registries,
// the callback manager, events and the control events.

#include "oxdm/notify/callback.h"
#include "oxdm/notify/callback_info.h"
#include "oxdm/notify/callback_maps.h"
#include "oxdm/notify/callback_mgr.h"
#include "oxdm/notify/control.h"
#include "oxdm/notify/event.h"
