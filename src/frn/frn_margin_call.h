// The frame shared by the four margin exports: a temporary type derived from
// the caller's handle with the call's frequency, day count and end-of-month
// overrides, extra accrual days cleared, and the schedule placed from the
// optional previous and next coupon dates.
#pragma once
#include <cmath>
#include <cstdint>
#include <initializer_list>

#include "frn/frn_schedule.h"
#include "frn/frn_temporary_type.h"

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

// Runs `compute(schedule, err)` on the placed schedule; -1.0 with the error
// code when the type or the schedule cannot be set up, or error 1 when the
// margin overflows.
template <class Compute>
double run_margin_call(const MarginCall& call, int32_t& err, Compute&& compute) noexcept {
  FrnTypeOverrides overrides;
  overrides.frequency = call.frequency;
  overrides.day_count = call.day_count;
  overrides.end_of_month = call.end_of_month;
  TemporaryFrnType temporary(call.type, overrides);
  if ((err = temporary.error())) return -1.0;
  FrnType& record = temporary.record();
  record.extra_accrual_days = 0;
  FrnSchedule schedule;
  err = frn_schedule_setup(&record, call.maturity, call.settlement, call.previous_coupon,
                           call.next_coupon, call.next_coupon ? 1 : 0, nullptr, 0, &schedule);
  if (err) return -1.0;
  // A year length near the largest double shrinks the life to a denormal
  // and the quotient overflows.
  return finite_or_fail(compute(schedule, err), err, -1.0);
}

// Market inputs of a margin: rates must be numbers, the price a positive one.
inline int32_t check_margin_inputs(double price, std::initializer_list<double> rates) noexcept {
  for (double rate : rates) {
    if (!std::isfinite(rate)) return 250;
  }
  return std::isfinite(price) && price > 0.0 ? 0 : 350;
}

}  // namespace kbond::frn
