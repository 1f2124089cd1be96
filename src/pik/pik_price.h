// The price of a PIK bond at a yield, and the cash flows it discounts.
//
// With more than one period left, the flows are discounted at the yield
// compounded at the coupon frequency, v = 1 / (1 + y/f), each at its time in
// coupon periods from settlement. The principal factor P starts at 1 and
// grows at every coupon date by the in-kind coupon of that period:
//
//   next coupon      cash_now                     then P = 1 + pik_now
//   each later one   cash rate * P / f            then P *= 1 + pik rate / f
//   redemption       redemption * 0.01 * P        at the time of the last coupon
//
// A broken last period pays the full periodic cash rate (not scaled by the
// broken fraction) and capitalises a full in-kind coupon: the call date ends
// the bond, not the period's interest.
//
// With a single period left the bond is a money-market instrument: the whole
// final amount (cash coupon, in-kind coupon and redemption) is discounted at
// simple interest over the time to the call date.
#pragma once
#include <cstdint>

#include "dates/month_arithmetic.h"
#include "pik/pik_desc.h"

namespace kbond::pik {

inline constexpr double kZeroDenominatorPrice = -100.0;

// One payment date of the bond.
struct PikFlow {
  int32_t date;       // payment date (moved to a business day when the bond pays so)
  double periods;     // discounting time in coupon periods from settlement
  double cash;        // cash coupon, fraction of original face
  double principal;   // principal repaid (capitalised), fraction of original face
};

// Time in years from settlement to the call date for the single-period
// form: the year fraction of the schedule, or with business-day payment the
// accrual day count to the moved call date over the current period's year.
double single_period_time(const pik_desc& desc) noexcept;

// The date a coupon due on `date` is paid: the following business day of
// the bond's calendar when the bond pays on business days.
int32_t pik_payment_date(const pik_desc& desc, int32_t date) noexcept;

// Periods from settlement to the next coupon, counting the business-day
// payment rule when it is in force.
double periods_to_next_coupon(const pik_desc& desc) noexcept;

// Time in periods of a coupon due on `date` and paid on `paid` when the
// bond pays on business days: 365-day accruals count the actual days from
// settlement; actual/actual adds the shift in days over the days of the
// period (`period_days`); the 360-day accruals add the shift over 360/f.
// `nominal` is the coupon's time on the unadjusted grid.
double business_day_periods(const pik_desc& desc, double nominal, int32_t date, int32_t paid,
                            int32_t period_days) noexcept;

// Visits the payment dates in order; the last one carries the redemption.
// In the single-period form the one flow carries the cash coupon and, as
// principal, the redemption plus the in-kind coupon; its periods are the
// single-period time times the frequency.
template <class Visit>
void for_each_pik_flow(const pik_desc& desc, Visit&& visit) {
  const engine::bond_desc& grid = desc.grid;
  const double f = desc.frequency;
  const int32_t call_paid = pik_payment_date(desc, desc.call_date);
  if (desc.single_period()) {
    visit(PikFlow{call_paid, f * single_period_time(desc), desc.cash_now,
                  desc.redemption * 0.01 + desc.pik_now});
    return;
  }
  const int32_t further = grid.whole_periods + grid.odd_first - 1;
  const bool broken_last = grid.partial_period != 0 && grid.position != engine::kNoGridDateLeft;
  int32_t start = grid.next_coupon;
  double nominal = f * grid.tn;
  double t = periods_to_next_coupon(desc);
  visit(PikFlow{pik_payment_date(desc, start), t, desc.cash_now, 0.0});
  double principal = 1.0 + desc.pik_now;
  int32_t cash_step = 0, pik_step = 0;
  const int32_t flows = further + (broken_last ? 1 : 0);
  for (int32_t k = 1; k <= flows; ++k) {
    const bool last = k == flows;
    const bool broken = last && broken_last;
    const int32_t date =
        last ? desc.call_date
             : dates::schedule_date(start, 1, grid.months_per_period, grid.anchor, grid.eom, nullptr);
    const int32_t paid = last ? call_paid : pik_payment_date(desc, date);
    nominal += broken ? grid.last_discount : 1.0;
    if (desc.pay_on_business_day) {
      const int32_t period_end =
          broken ? dates::schedule_date(start, 1, grid.months_per_period, grid.anchor, grid.eom,
                                        nullptr)
                 : date;
      t = business_day_periods(desc, nominal, date, paid, period_end - start);
    } else {
      t = nominal;
    }
    if (desc.n_cash > 1) cash_step = step_index(desc.dates, desc.n_dates, start, cash_step);
    if (desc.n_pik > 1) pik_step = step_index(desc.dates, desc.n_dates, start, pik_step);
    const double cash = desc.cash_rates[cash_step] * principal / f;
    principal *= 1.0 + desc.pik_rates[pik_step] / f;
    visit(PikFlow{paid, t, cash, last ? desc.redemption * 0.01 * principal : 0.0});
    start = date;
  }
}

// Clean price per 100 of original face. `first_derivative` (may be null)
// receives the derivative by yield per unit of face. Error 401 with -100.0
// when a discount denominator vanishes (1 + t*y = 0 in the single-period
// form; 1 + y/f not positive, or a non-finite yield, in the multi-period form)
// or is so near zero that the price or its derivative overflows.
double pik_price(double yield, const pik_desc& desc, double* first_derivative,
                 int32_t* error) noexcept;

}  // namespace kbond::pik
