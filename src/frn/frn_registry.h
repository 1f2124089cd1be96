// The process-wide registry of FRN types: a singly linked list of registered
// records, newest first. After KVLbond_initMT every look-up, insertion and
// removal holds the registry's critical section; before it the registry is
// used without locking (single-threaded callers).
//
// Look-ups copy the record out under the lock, so a type freed by one thread
// never disturbs another thread's calculation on a copy taken earlier.
#pragma once
#include <cstdint>

#include "frn/frn_type.h"

namespace kbond::frn {

// Links a copy of `record` at the head and returns its handle: nonzero and
// unique among the live entries. 0 when memory is not available.
int32_t registry_insert(const FrnType& record) noexcept;

// Copies the record registered under `handle` into *out; false when unknown.
bool registry_lookup(int32_t handle, FrnType* out) noexcept;

// Unlinks and frees the entry; an unknown handle is ignored.
void registry_remove(int32_t handle) noexcept;

// Number of live entries (diagnostics and leak checks).
int32_t registry_size() noexcept;

}  // namespace kbond::frn

namespace kbond::frn {

// Moves the handle counter (the next handle is next % (2^31 - 1) + 1), so
// that tests can drive the handles through their wrap-around.
void registry_restart_handles(uint64_t next) noexcept;

}  // namespace kbond::frn
