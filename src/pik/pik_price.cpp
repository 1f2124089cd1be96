// PIK price at a yield: the single-period money-market form and the
// multi-period compound form with the capitalised principal.
#include "pik/pik_price.h"

#include <cmath>

#include "dates/business_days.h"
#include "dates/day_count.h"
#include "engine/evaluator_common.h"
#include "engine/safe_math.h"
#include "k_bond.h"

namespace kbond::pik {
namespace {

double zero_denominator(int32_t* error) noexcept {
  *error = KVL_ERR_ZERO_DIVISOR;
  return kZeroDenominatorPrice;
}

// Final amount over the discount d = 1 + t*y, clean per 100.
double single_period_price(double yield, const pik_desc& desc, double* first_derivative,
                           int32_t* error) noexcept {
  const double t = single_period_time(desc);
  const double d = 1.0 + t * yield;
  if (d == 0.0 || std::isnan(d)) return zero_denominator(error);
  const double final_amount = desc.pik_now + desc.cash_now + desc.redemption * 0.01;
  if (first_derivative) *first_derivative = -(final_amount / d) * t / d;
  return (final_amount / d - desc.accrued) * 100.0;
}

double multi_period_price(double yield, const pik_desc& desc, double* first_derivative,
                          int32_t* error) noexcept {
  const double f = desc.frequency;
  const double base = 1.0 + yield / f;
  if (!(base > 0.0) || !std::isfinite(base)) return zero_denominator(error);
  const double log_v = engine::safe_log(1.0 / base);
  double value = 0.0, weighted = 0.0;
  for_each_pik_flow(desc, [&](const PikFlow& flow) {
    const double amount = flow.cash + flow.principal;
    const double pv = amount * engine::safe_exp(flow.periods * log_v);
    value += pv;
    weighted += pv * flow.periods;
  });
  if (first_derivative) *first_derivative = -weighted / base / f;
  return (value - desc.accrued) * 100.0;
}

}  // namespace

int32_t pik_payment_date(const pik_desc& desc, int32_t date) noexcept {
  if (!desc.pay_on_business_day) return date;
  return dates::adjust_business_day(date, dates::kFollowing, desc.grid.calendar());
}

double single_period_time(const pik_desc& desc) noexcept {
  if (!desc.pay_on_business_day) return desc.grid.tn;
  const int32_t paid = pik_payment_date(desc, desc.call_date);
  const double days = dates::day_count(desc.grid.settlement, paid, desc.accrual_basis, nullptr);
  return days / desc.grid.basis_accrual;
}

double periods_to_next_coupon(const pik_desc& desc) noexcept {
  const double f = desc.frequency;
  const double nominal = f * desc.grid.tn;
  if (!desc.pay_on_business_day) return nominal;
  const int32_t date = desc.grid.next_coupon;
  const int32_t paid = pik_payment_date(desc, date);
  // Days of the current period: an actual/actual year basis is the period's
  // length times the frequency.
  const double period_days = desc.grid.basis_accrual / f;
  return business_day_periods(desc, nominal, date, paid,
                              static_cast<int32_t>(std::lround(period_days)));
}

double business_day_periods(const pik_desc& desc, double nominal, int32_t date, int32_t paid,
                            int32_t period_days) noexcept {
  const double f = desc.frequency;
  const int32_t code = desc.accrual_basis;
  if (engine::counts_payment_days_over_365(code)) {
    return f * dates::day_count(desc.grid.settlement, paid, code, nullptr) / 365.0;
  }
  const double shift = paid - date;
  if (code == 0) return nominal + (period_days > 0 ? shift / period_days : 0.0);
  return nominal + shift * f / 360.0;
}

double pik_price(double yield, const pik_desc& desc, double* first_derivative,
                 int32_t* error) noexcept {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;
  const double price = desc.single_period()
                           ? single_period_price(yield, desc, first_derivative, err)
                           : multi_period_price(yield, desc, first_derivative, err);
  if (*err != 0) return price;
  // A denominator a hair above zero (1 + y/f or 1 + t y) overflows the
  // discount factors as surely as a zero one divides by zero; a factor that
  // stays just finite (1 + y/f near 0.01 over 160 periods) gives a price no
  // quote can round, and none anywhere near 1e100 per 100 is real.
  if (!engine::plausible_magnitude(price) ||
      (first_derivative && !std::isfinite(*first_derivative)))
    return zero_denominator(err);
  return price;
}

}  // namespace kbond::pik
