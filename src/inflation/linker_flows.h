// Projected inflation-adjusted cash flows of a TIPS or an OATi.
//
// The next coupon is fixed or projected by the set-up. The index ratio it
// carries (next coupon / real coupon of the period), rounded to five
// decimals, grows by the assumed inflation over each later period,
// (1 + inflation)^(months / 12); each later coupon is the real coupon times
// that ratio rounded to five decimals, as the Treasuries round their index
// ratios. The principal is never repaid below par: the redemption ratio is
// the ratio projected to maturity, floored at 1.0, rounded to five decimals.
#pragma once
#include <cmath>
#include <cstdint>

#include "dates/month_arithmetic.h"
#include "inflation/linker_desc.h"
#include "inflation/payment_calendar.h"

namespace kbond::inflation {

// Index ratios are rounded to five decimals (engine::round_to(x, 5) with the
// scale written out: this runs for every flow of every yield iteration).
inline double round_ratio(double ratio) noexcept { return std::floor(ratio * 1e5 + 0.5) / 1e5; }

// Calls on_flow(payment_date, amount, periods) for each coupon, amounts as
// fractions of par and periods counted in coupon periods from settlement on
// the coupon grid. Returns the redemption ratio, paid with the last coupon.
// Valuation, which needs no dates, passes kWithDates = false and receives 0
// for every date.
template <bool kWithDates = true, class OnFlow>
double visit_linker_flows(const LinkerDesc& desc, OnFlow&& on_flow) noexcept {
  const CouponPeriod& p = desc.period;
  auto paid = [&](int32_t date) { return flow_payment_date<kWithDates>(date, desc); };
  const int32_t step = desc.months_per_period;
  const double period_coupon = desc.coupon / desc.frequency;
  const double to_next = static_cast<double>(p.next - desc.settlement) /
                         static_cast<double>(p.next - p.quasi_start);
  on_flow(paid(p.next), desc.next_coupon_amount, to_next);

  double ratio = round_ratio(desc.next_coupon_amount / period_coupon);
  const double period_growth = std::pow(1.0 + desc.inflation, step / 12.0);
  for (int32_t k = 1; k <= p.later_coupons; ++k) {
    ratio *= period_growth;
    const int32_t date = kWithDates ? dates::add_months(p.next, k * step, desc.end_of_month) : 0;
    on_flow(paid(date), period_coupon * round_ratio(ratio), to_next + k);
  }
  if (p.broken_final) {
    const int32_t months = dates::months_between(p.last_coupon, desc.maturity, desc.end_of_month, nullptr);
    ratio *= std::pow(1.0 + desc.inflation, months / 12.0);
    on_flow(paid(desc.maturity), period_coupon * round_ratio(ratio) * p.final_fraction,
            to_next + p.later_coupons + p.final_fraction);
  }
  return round_ratio(ratio < 1.0 ? 1.0 : ratio);
}

}  // namespace kbond::inflation
