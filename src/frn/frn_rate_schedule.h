// The coupon rates of a floating-rate note: the fixings so far and the
// caller's projection, each applying from its effective date until the next
// one. A coupon period's coupon is the day-weighted sum of the rates in force
// over it, divided by the period's accrual year.
#pragma once
#include <cstdint>

#include "frn/frn_schedule.h"

namespace kbond::frn {

struct FrnRateSchedule {
  const double* rates = nullptr;       // decimal fractions, each >= 0
  const int32_t* dates = nullptr;      // effective dates, ascending
  int32_t count = 0;

  double last_rate() const noexcept { return rates[count - 1]; }
};

// 0, or 60 (count < 1), 50 (missing array), 250 (negative or invalid rate),
// 150 (first date < 1), 160 (dates not strictly increasing).
int32_t validate_rate_schedule(const FrnRateSchedule& rates) noexcept;

// Sum of rate x days over [start, end), days measured by the note's day count
// within the period that starts at `start`; `extra_days` are added to the
// last sub-period. A period that starts before the first effective date uses
// the first rate.
double rate_days(const FrnRateSchedule& rates, int32_t start, int32_t end, int32_t day_count,
                 int32_t extra_days) noexcept;

// Coupon per unit of par of the period [start, end].
double frn_period_coupon(const FrnRateSchedule& rates, const FrnType& type, int32_t start,
                         int32_t end) noexcept;

// Accrued interest per unit of par at settlement: the accrual from the
// previous coupon date plus the type's extra accrual days, over the accrual
// year of the current period.
double frn_accrued(const FrnRateSchedule& rates, const FrnSchedule& schedule) noexcept;

}  // namespace kbond::frn
