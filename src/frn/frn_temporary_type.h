// The description of one FRN call: the working copy of its FRN type and the
// schedule placed with it.
//
// Every typed FRN function registers a temporary type derived from the
// caller's handle and the call's own overrides, copies it back out, and
// releases the registration when it returns, whatever the path. The copy
// lives in the call's frame; the calculation never touches the registry
// again.
#pragma once
#include <cmath>
#include <cstdint>

#include "frn/frn_registry.h"
#include "frn/frn_schedule.h"
#include "frn/frn_type.h"
#include "k_bond.h"

namespace kbond::frn {

struct FrnCallDesc {
  int32_t handle;         // the temporary registration, removed on release
  FrnType record;         // its working copy
  FrnSchedule schedule;   // placed on the working copy
};

// Registers the temporary type and copies it out: 0, the registration's code
// (901, 300..306, -50), or KVL_ERR_FRN_TYPE_LOST when the registered copy
// cannot be read back. On failure nothing stays registered.
inline int32_t take_temporary_type(int32_t base, const FrnTypeOverrides& overrides,
                                   FrnCallDesc& desc) noexcept {
  int32_t err = 0;
  desc.handle = create_frn_type(base, overrides, &err);
  if (err == 0 && !registry_lookup(desc.handle, &desc.record)) err = KVL_ERR_FRN_TYPE_LOST;
  if (err != 0) registry_remove(desc.handle);
  return err;
}

// Ends a set-up that failed after the temporary type was taken.
inline int32_t drop_temporary_type(FrnCallDesc& desc, int32_t err) noexcept {
  registry_remove(desc.handle);
  return err;
}

inline void frn_call_release(FrnCallDesc& desc) noexcept { registry_remove(desc.handle); }

// A tiny year length or absurd rates overflow the accrual fractions: a
// result that is not finite is no result (error 1 with the failure value).
inline double finite_or_fail(double value, int32_t& err, double failure) noexcept {
  if (err == 0 && !std::isfinite(value)) {
    err = KVL_ERR_INVALID;
    return failure;
  }
  return value;
}

}  // namespace kbond::frn
