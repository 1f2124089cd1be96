// The frame of every perpetual export: the error code through the caller's
// pointer (or a local), the custom-type lock as reader for codes of 1000 and
// more (held for the whole call: the carry functions build a second
// description at the end date), and perpetual_setup on the stack.
//
//   PerpetualCall call(args, error);
//   if (!call.ok()) return -1.0;
//   double price = perpetual_price(y, call.desc(), nullptr, nullptr, &call.error());
#pragma once
#include <cstdint>

#include "engine/type_lock.h"
#include "perpetual/perpetual_desc.h"

namespace kbond::perpetual {

inline constexpr int32_t kLockNotObtained = -60;

class PerpetualCall {
 public:
  PerpetualCall(const perpetual_args& args, int32_t* error) noexcept
      : error_(error ? error : &local_error_), lock_(args.type) {
    *error_ = 0;
    if (lock_.failed()) {
      *error_ = kLockNotObtained;
      return;
    }
    const int32_t setup = perpetual_setup(args, desc_);
    if (setup != 0) {
      *error_ = setup;
      return;
    }
    ready_ = true;
  }

  PerpetualCall(const PerpetualCall&) = delete;
  PerpetualCall& operator=(const PerpetualCall&) = delete;

  bool ok() const noexcept { return ready_; }
  const perpetual_desc& desc() const noexcept { return desc_; }
  int32_t& error() noexcept { return *error_; }

 private:
  int32_t local_error_ = 0;
  int32_t* error_;
  engine::TypeReadGuard lock_;
  perpetual_desc desc_;
  bool ready_ = false;
};

// The argument block in the order every perpetual export takes it.
inline perpetual_args perpetual_arguments(const double* coupons, int32_t n_coupons,
                                          int32_t reference_date, int32_t settlement,
                                          const int32_t* step_dates, int32_t n_steps,
                                          const int32_t* type, const int32_t* frequency,
                                          const double* withholding_tax,
                                          const int32_t* ex_coupon_rule,
                                          const int32_t* calendar_flags, const int32_t* holidays,
                                          int32_t n_holidays, const int32_t* dated_date) noexcept {
  return perpetual_args{coupons,         n_coupons,      reference_date, settlement,
                        step_dates,      n_steps,        type,           frequency,
                        withholding_tax, ex_coupon_rule, calendar_flags, holidays,
                        n_holidays,      dated_date};
}

}  // namespace kbond::perpetual
