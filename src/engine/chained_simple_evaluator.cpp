// Spanish bonds within a year of maturity are quoted at simple interest on
// an actual/360 basis, chained from one cash flow to the next:
//
//   DF_1 = 1 / (1 + tau_1 y),   DF_k = DF_(k-1) / (1 + (tau_k - tau_(k-1)) y)
//
// with tau_k the days from settlement to the k-th payment over 360. The
// derivative follows from d ln DF_k / dy = -sum_j dtau_j / (1 + dtau_j y).
#include "engine/market_rules.h"
#include "engine/evaluator_common.h"
#include "engine/evaluators.h"
#include "k_bond.h"

namespace kbond::engine {

double chained_simple_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                                int32_t* error) noexcept {
  int32_t maturity_paid = desc.maturity;
  if (pays_maturity_on_spanish_calendar(desc.type, desc.settlement) &&
      !pays_on_business_days(desc) &&
      !spanish_maturity_payment_date(desc.maturity, &maturity_paid)) {
    *error = KVL_ERR_INVALID;
    return 0.0;
  }
  const bool business_days = pays_on_business_days(desc);
  auto paid_on = [&](int32_t date, bool at_maturity) {
    if (business_days) return payment_date(desc, date);
    return at_maturity ? maturity_paid : date;
  };

  double value = 0.0, derivative = 0.0;
  double df = 1.0, log_slope = 0.0;  // DF_k and d ln DF_k / dy
  double tau = 0.0;
  bool vanished = false;
  auto chain_to = [&](int32_t date) {
    const double tau_k = (date - desc.settlement) * kPerDay360;
    const double step = tau_k - tau;
    if (step == 0.0) return;
    const double growth = 1.0 + step * yield;
    if (growth == 0.0) {
      vanished = true;
      return;
    }
    df /= growth;
    log_slope -= step / growth;
    tau = tau_k;
  };
  // The chain runs through the next coupon date even when that coupon
  // goes to the seller.
  const bool next_is_last = further_coupons(desc) <= 0 && !has_broken_last_period(desc);
  chain_to(paid_on(desc.next_coupon, next_is_last));
  for_each_cash_flow(desc, [&](const CashFlow& flow) {
    if (vanished) return;
    chain_to(paid_on(flow.date, flow.at_maturity));
    if (vanished) return;
    value += flow.amount * df;
    derivative += flow.amount * df * log_slope;
  });
  if (vanished) return zero_denominator(error);
  // After the walk df is the redemption's factor.
  return finish_price(desc, value, derivative, df, df * log_slope, first_derivative, error);
}

}  // namespace kbond::engine
