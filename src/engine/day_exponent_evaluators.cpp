// Compound yield with the exponents counted in actual days rather than in
// whole coupon periods: each cash flow after the next coupon sits
// (its date - next coupon) x f / year-days periods beyond it.
//
// Colombian bonds, the Portuguese futures convention and Spanish bonds
// accruing actual/365 use 365-day years; the actual/365.25 variant serves
// short bonds (at most 12 periods) quoted by that method.
#include "dates/day_count.h"
#include "engine/evaluator_common.h"
#include "engine/evaluators.h"

namespace kbond::engine {

double actual365_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                           int32_t* error) noexcept {
  const double f = desc.frequency;
  const double t0 = periods_to_next_coupon(desc);
  if (!pays_on_business_days(desc)) {
    return discount_cash_flows(
        yield, desc,
        [&](const CashFlow& flow) { return t0 + (flow.date - desc.next_coupon) * f * kPerDay365; },
        first_derivative, error);
  }
  // Payments on business days: actual/365 days between the moved dates.
  const int32_t next_paid = payment_date(desc, desc.next_coupon);
  return discount_cash_flows(
      yield, desc,
      [&](const CashFlow& flow) {
        const int32_t days = dates::day_count(next_paid, payment_date(desc, flow.date), dates::kAct365, nullptr);
        return t0 + days * f * kPerDay365;
      },
      first_derivative, error);
}

double actual36525_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                             int32_t* error) noexcept {
  const double f = desc.frequency;
  const double t0 = (desc.next_coupon - desc.settlement) * f * kPerDay36525;
  return discount_cash_flows(
      yield, desc,
      [&](const CashFlow& flow) { return t0 + (flow.date - desc.next_coupon) * f * kPerDay36525; },
      first_derivative, error);
}

}  // namespace kbond::engine
