#pragma once
// Who holds a record lock: a process id and that process's start time, so
// that a recycled process id never inherits a dead process's locks.

#include "record_store.h"

namespace oxdm::store {

// This process, computed again after a fork.
LockOwner CurrentProcess();
// Whether `owner` is a running process (a zombie counts as dead).
bool IsAlive(const LockOwner& owner);

}  // namespace oxdm::store
