// The frame of every perpetual export: the engine's call frame around
// perpetual_setup.
//
//   PerpetualCall call(args, error);
//   if (!call.ok()) return -1.0;
//   double price = perpetual_price(y, call.desc(), nullptr, nullptr, &call.error());
#pragma once
#include <cstdint>

#include "engine/call_frame.h"
#include "perpetual/perpetual_desc.h"

namespace kbond::perpetual {

// The set-up's code passes through, and the lock is held for the whole
// call: the carry functions build a second description at the end date. The
// description borrows the caller's arrays: nothing to release.
using PerpetualCall =
    engine::CallFrame<perpetual_args, perpetual_desc,
                      engine::constructed_then<perpetual_setup, perpetual_args, perpetual_desc>,
                      nullptr, engine::LockLifetime::kWholeCall, engine::SetUpError::kPassThrough>;

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
