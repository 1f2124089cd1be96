// The frame shared by the four margin exports: a temporary type derived from
// the caller's handle with the call's frequency, day count and end-of-month
// overrides, extra accrual days cleared, and the schedule placed from the
// optional previous and next coupon dates.
#pragma once
#include <cmath>
#include <cstdint>
#include <initializer_list>

#include "engine/call_frame.h"
#include "frn/frn_schedule.h"
#include "frn/frn_temporary_type.h"
#include "k_bond.h"

namespace kbond::frn {

struct MarginCall {
  int32_t type;
  int32_t maturity;
  int32_t settlement;
  const int32_t* previous_coupon;
  const int32_t* next_coupon;
  const int32_t* day_count;
  const int32_t* frequency;
  const int32_t* end_of_month;
};

// The temporary type with the call's overrides and no extra accrual days,
// and the schedule placed: 0 or the first failure's code.
inline int32_t margin_setup(const MarginCall& call, FrnCallDesc& desc) noexcept {
  FrnTypeOverrides overrides;
  overrides.frequency = call.frequency;
  overrides.day_count = call.day_count;
  overrides.end_of_month = call.end_of_month;
  if (int32_t err = take_temporary_type(call.type, overrides, desc)) return err;
  desc.record.extra_accrual_days = 0;
  if (int32_t err = frn_schedule_setup(&desc.record, call.maturity, call.settlement,
                                       call.previous_coupon, call.next_coupon,
                                       call.next_coupon ? 1 : 0, nullptr, 0, &desc.schedule)) {
    return drop_temporary_type(desc, err);
  }
  return 0;
}

using MarginFrame =
    engine::CallFrame<MarginCall, FrnCallDesc,
                      engine::constructed_then<margin_setup, MarginCall, FrnCallDesc>,
                      frn_call_release, engine::LockLifetime::kNone,
                      engine::SetUpError::kPassThrough>;

// Runs `compute(schedule, err)` on the placed schedule with the caller's
// error cleared (NULL: a local one); -1.0 with the error code when the type
// or the schedule cannot be set up, or error 1 when the margin overflows.
template <class Compute>
double run_margin_call(const MarginCall& call, int32_t* error, Compute&& compute) noexcept {
  MarginFrame frame(call, error);
  int32_t& err = frame.error();
  if (!frame.ok()) return -1.0;
  // A year length near the largest double shrinks the life to a denormal
  // and the quotient overflows.
  return finite_or_fail(compute(frame.desc().schedule, err), err, -1.0);
}

// Market inputs of a margin: rates must be numbers, the price a positive one.
inline int32_t check_margin_inputs(double price, std::initializer_list<double> rates) noexcept {
  for (double rate : rates) {
    if (!std::isfinite(rate)) return KVL_ERR_BAD_RATE;
  }
  return std::isfinite(price) && price > 0.0 ? 0 : KVL_ERR_BAD_PRICE;
}

}  // namespace kbond::frn
