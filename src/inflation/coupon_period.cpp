#include "inflation/coupon_period.h"

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"

namespace kbond::inflation {

int32_t schedule_end_of_month(int32_t maturity, const int32_t* caller_value) noexcept {
  int32_t day = 0, month = 0, year = 0;
  dates::serial_to_date(maturity, &day, &month, &year);
  if (day == 31) return 1;
  if (!dates::is_end_of_month(maturity)) return 0;
  return (caller_value != nullptr && *caller_value != 0) ? 1 : 0;
}


namespace {

bool given(const int32_t* date) noexcept { return date != nullptr && *date != 0; }

}  // namespace

bool resolve_coupon_period(int32_t settlement, int32_t maturity, int32_t months_per_period,
                           int32_t eom, const int32_t* previous_given, const int32_t* next_given,
                           int32_t near_maturity_days, CouponPeriod* period) noexcept {
  const int32_t step = months_per_period;
  int32_t previous = 0, next = 0;
  if (given(next_given)) {
    next = *next_given;
    if (given(previous_given)) {
      previous = *previous_given;
    } else {
      previous = dates::add_months(next, -step, eom);
      if (previous > settlement) previous = settlement;
    }
  } else {
    if (given(previous_given)) {
      previous = *previous_given;
      next = dates::schedule_date(previous, 1, step, maturity, eom, nullptr);
    } else {
      next = dates::schedule_date(settlement, 1, step, maturity, eom, nullptr);
    }
    if (next != maturity && next > maturity - near_maturity_days) next = maturity;
    if (!given(previous_given)) previous = dates::add_months(next, -step, eom);
  }
  if (!dates::valid_serial(previous) || !dates::valid_serial(next)) return false;
  if (!(previous < next && next <= maturity && settlement <= maturity)) return false;

  period->previous = previous;
  period->next = next;
  period->quasi_start = dates::add_months(next, -step, eom);
  if (period->quasi_start >= next) return false;

  const int32_t months = dates::months_between(next, maturity, eom, nullptr);
  period->later_coupons = months / step;
  period->last_coupon = dates::add_months(next, period->later_coupons * step, eom);
  period->broken_final = period->last_coupon < maturity;
  period->final_fraction = 0.0;
  if (period->broken_final) {
    const int32_t regular_end = dates::add_months(period->last_coupon, step, eom);
    period->final_fraction = static_cast<double>(maturity - period->last_coupon) /
                             static_cast<double>(regular_end - period->last_coupon);
  }
  return true;
}

}  // namespace kbond::inflation
