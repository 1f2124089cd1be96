// The working copy of an FRN type for one call of a typed function.
//
// Every typed FRN function registers a temporary type derived from the
// caller's handle and the call's own overrides, copies it back out, and
// releases the registration when it returns, whatever the path. The copy
// lives on the stack; the calculation never touches the registry again.
#pragma once
#include <cmath>
#include <cstdint>

#include "frn/frn_registry.h"
#include "frn/frn_type.h"

namespace kbond::frn {

class TemporaryFrnType {
 public:
  // error() is 0 on success, else the registration's code (901, 300..306,
  // -50) or -100 when the registered copy cannot be read back.
  TemporaryFrnType(int32_t base, const FrnTypeOverrides& overrides) noexcept
      : handle_(create_frn_type(base, overrides, &error_)) {
    if (error_ == 0 && !registry_lookup(handle_, &record_)) error_ = -100;
  }
  ~TemporaryFrnType() { registry_remove(handle_); }
  TemporaryFrnType(const TemporaryFrnType&) = delete;
  TemporaryFrnType& operator=(const TemporaryFrnType&) = delete;

  int32_t error() const noexcept { return error_; }
  FrnType& record() noexcept { return record_; }

 private:
  int32_t error_ = 0;
  int32_t handle_;
  FrnType record_;
};

// A tiny year length or absurd rates overflow the accrual fractions: a
// result that is not finite is no result (error 1 with the failure value).
inline double finite_or_fail(double value, int32_t& err, double failure) noexcept {
  if (err == 0 && !std::isfinite(value)) {
    err = 1;
    return failure;
  }
  return value;
}

}  // namespace kbond::frn
