// Moosmüller's method (German money-market practice): simple interest up to
// the next coupon date, compound interest at the coupon frequency after it.
// With r = y/f and t the periods to the next coupon,
//
//   d1 = 1 / (1 + t r),   the k-th later flow discounted by d1 (1 + r)^-k.
//
// The method needs whole periods after the next coupon: a broken last
// period is refused.
#include "engine/evaluator_common.h"
#include "engine/evaluators.h"

namespace kbond::engine {

double moosmuller_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                            int32_t* error) noexcept {
  if (has_broken_last_period(desc)) {
    *error = KVL_ERR_INVALID;  // a bond shape this method cannot price
    return kRefusedShapePrice;
  }
  const double f = desc.frequency;
  const double t = f * desc.tn;
  const double r = yield / f;
  const double simple_growth = 1.0 + t * r;
  if (simple_growth == 0.0 || 1.0 + r == 0.0) return zero_denominator(error);
  const double d1 = 1.0 / simple_growth;
  const double d1_slope = -t / f * d1;  // d ln d1 / dy
  const double u = 1.0 / (1.0 + r);
  const double u_slope = -u / f;        // d ln (1 + r)^-1 / dy

  double value = 0.0, derivative = 0.0, redemption_df = d1, redemption_slope = d1_slope;
  for_each_cash_flow(desc, [&](const CashFlow& flow) {
    const double k = flow.periods;  // whole periods after the next coupon
    const double df = d1 * safe_pow(u, k);
    const double slope = d1_slope + k * u_slope;
    if (flow.kind == FlowKind::kRedemption) {
      redemption_df = df;
      redemption_slope = slope;
    }
    value += flow.amount * df;
    derivative += flow.amount * df * slope;
  });
  return finish_price(desc, value, derivative, redemption_df, redemption_df * redemption_slope,
                      first_derivative, error);
}

}  // namespace kbond::engine
