#pragma once
// The change notification layer: subjects, changes, the change manager,
// change lists and operations.

#include "oxdm/notify/change.h"
#include "oxdm/notify/change_list.h"
#include "oxdm/notify/change_mgr.h"
#include "oxdm/notify/operation.h"
#include "oxdm/notify/subject.h"
