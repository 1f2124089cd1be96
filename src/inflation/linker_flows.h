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
#include "engine/safe_math.h"
#include "inflation/linker_desc.h"
#include "inflation/payment_calendar.h"

namespace kbond::inflation {

// Calls on_flow(payment_date, amount, periods) for each coupon, amounts as
// fractions of par and periods counted in coupon periods from settlement on
// the coupon grid. Returns the redemption ratio, paid with the last coupon.
template <class OnFlow>
double visit_linker_flows(const LinkerDesc& desc, OnFlow&& on_flow) noexcept {
  const CouponPeriod& p = desc.period;
  const int32_t step = desc.months_per_period;
  const double period_coupon = desc.coupon / desc.frequency;
  const double to_next = static_cast<double>(p.next - desc.settlement) /
                         static_cast<double>(p.next - p.quasi_start);
  on_flow(payment_date(p.next, desc.pay_on_business_day, desc.calendar), desc.next_coupon_amount, to_next);

  double ratio = engine::round_to(desc.next_coupon_amount / period_coupon, 5);
  const double period_growth = std::pow(1.0 + desc.inflation, step / 12.0);
  for (int32_t k = 1; k <= p.later_coupons; ++k) {
    ratio *= period_growth;
    const int32_t date = dates::add_months(p.next, k * step, desc.end_of_month);
    on_flow(payment_date(date, desc.pay_on_business_day, desc.calendar),
            period_coupon * engine::round_to(ratio, 5), to_next + k);
  }
  if (p.broken_final) {
    const int32_t months = dates::months_between(p.last_coupon, desc.maturity, desc.end_of_month, nullptr);
    ratio *= std::pow(1.0 + desc.inflation, months / 12.0);
    on_flow(payment_date(desc.maturity, desc.pay_on_business_day, desc.calendar),
            period_coupon * engine::round_to(ratio, 5) * p.final_fraction,
            to_next + p.later_coupons + p.final_fraction);
  }
  return engine::round_to(ratio < 1.0 ? 1.0 : ratio, 5);
}

}  // namespace kbond::inflation
