// Projected cash flows of an index-linked gilt (8-month lag).
//
// The next coupon is the caller's fixed amount (nothing when the settlement
// is ex-dividend). A later coupon paid six months after it is fixed by the
// index of the month two months before the next coupon date; from the latest
// index, assumed to be that of the month two months before settlement, the
// first later coupon is m months of inflation away (m = whole months from
// settlement to the next coupon), and each following one six months more.
// The redemption carries the factor of the last coupon. With a latest-index
// date (the "2" variants) the month gap is counted from that date's month.
//
//   factor(first later coupon) = latest / base * (1 + inflation)^(gap / 12)
//   coupon                      = real_coupon / 2 * factor
#pragma once
#include <cmath>
#include <cstdint>

#include "dates/month_arithmetic.h"
#include "dates/date_serial.h"
#include "inflation/ilg_desc.h"
#include "inflation/payment_calendar.h"

namespace kbond::inflation {

// Months of indexation between the latest index and the index month that
// fixes the next coupon's successor.
inline int32_t ilg_indexation_gap_months(const IlgDesc& desc) noexcept {
  const int32_t next = desc.period.next;
  if (desc.latest_index_date == 0) {
    return dates::months_between(desc.settlement, next, desc.end_of_month, nullptr);
  }
  int32_t d1 = 0, m1 = 0, y1 = 0, d2 = 0, m2 = 0, y2 = 0;
  dates::serial_to_date(desc.latest_index_date, &d1, &m1, &y1);
  dates::serial_to_date(dates::add_months(next, -2, 0), &d2, &m2, &y2);
  return 12 * (y2 - y1) + (m2 - m1);
}

// True when only the redemption (with the last coupon) remains.
inline bool ilg_single_flow(const IlgDesc& desc) noexcept {
  return desc.period.later_coupons == 0 && !desc.period.broken_final;
}

// Calls on_flow(payment_date, amount, periods) for each coupon row, amounts
// as fractions of par and periods counted in half-years from settlement on
// the quasi-coupon grid. Returns the redemption factor (redemption per unit
// of par); the redemption is paid with the last row. Valuation, which needs
// no dates, passes kWithDates = false and receives 0 for every date.
template <bool kWithDates = true, class OnFlow>
double visit_ilg_flows(const IlgDesc& desc, OnFlow&& on_flow) noexcept {
  const CouponPeriod& p = desc.period;
  auto paid = [&](int32_t date) { return flow_payment_date<kWithDates>(date, desc); };
  const double to_next = static_cast<double>(p.next - desc.settlement) /
                         static_cast<double>(p.next - p.quasi_start);
  on_flow(paid(p.next), desc.ex_dividend ? 0.0 : desc.next_coupon_amount,
          to_next);

  const double half_coupon = 0.5 * desc.real_coupon;
  double factor = 0.0;
  if (p.later_coupons == 0) {
    factor = 2.0 * desc.next_coupon_amount / (desc.period_fraction * desc.real_coupon);
  } else {
    const double gap = ilg_indexation_gap_months(desc);
    factor = desc.latest_index / desc.base_index *
             std::pow(1.0 + desc.inflation, (gap - 6.0) / 12.0);
  }
  const double half_year_growth = std::sqrt(1.0 + desc.inflation);
  for (int32_t k = 1; k <= p.later_coupons; ++k) {
    factor *= half_year_growth;
    const int32_t date =
        kWithDates ? dates::add_months(p.next, k * kIlgMonthsPerPeriod, desc.end_of_month) : 0;
    on_flow(paid(date), half_coupon * factor, to_next + k);
  }
  if (p.broken_final) {
    const int32_t months = dates::months_between(p.last_coupon, desc.maturity, desc.end_of_month, nullptr);
    factor *= std::pow(1.0 + desc.inflation, months / 12.0);
    on_flow(paid(desc.maturity), half_coupon * factor * p.final_fraction,
            to_next + p.later_coupons + p.final_fraction);
  }
  return factor;
}

}  // namespace kbond::inflation
