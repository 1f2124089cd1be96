// The coupon period an inflation-linked bond settles in, on a schedule of
// fixed month steps anchored at maturity, and the flows left after it.
//
// Callers may pin the period with their own previous and/or next coupon
// dates (a new issue's first period, an off-cycle first coupon); otherwise
// the period is read off the schedule around the settlement date.
#pragma once
#include <cstdint>

namespace kbond::inflation {

struct CouponPeriod {
  int32_t previous = 0;      // start of the accrual period
  int32_t next = 0;          // next coupon date
  int32_t quasi_start = 0;   // next coupon date one regular period earlier
  int32_t later_coupons = 0; // whole regular periods from `next` to maturity
  int32_t last_coupon = 0;   // `next` advanced by `later_coupons` periods
  bool broken_final = false; // a short period ends at maturity after `last_coupon`
  double final_fraction = 0.0;  // its length as a fraction of a regular period
};

// End-of-month rule of a schedule anchored at `maturity`: a maturity on the
// 31st turns it on, one that is not a month end turns it off; otherwise the
// caller's value (NULL: off) decides.
int32_t schedule_end_of_month(int32_t maturity, const int32_t* caller_value) noexcept;

// Resolves the period. A coupon date pointer counts as given when it is not
// NULL and not 0. With only the next date given the previous one is a regular
// period earlier, but not later than settlement. A computed next coupon later
// than maturity - `near_maturity_days` becomes the maturity. Returns false
// unless previous < next <= maturity and settlement <= maturity: a caller's
// next coupon may lie before settlement (the bond then trades ex that
// coupon and accrues past it).
bool resolve_coupon_period(int32_t settlement, int32_t maturity, int32_t months_per_period,
                           int32_t eom, const int32_t* previous_given, const int32_t* next_given,
                           int32_t near_maturity_days, CouponPeriod* period) noexcept;

}  // namespace kbond::inflation
