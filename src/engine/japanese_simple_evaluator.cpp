// Japanese simple yield: the coupons still to come and the gain or loss to
// redemption, both spread evenly over the years to maturity, against the
// clean price:
//
//   y = (Q / T + (R - P) / T) / P    so    P = (Q + R) / (1 + T y)
//
// T the years from settlement to maturity in the bond's accrual day count,
// Q the remaining coupons net of tax, R the redemption. A capital-gains tax
// g on a discount enters as P = (Q + (1 - g) R) / (1 + T y - g).
#include "dates/day_count.h"
#include "engine/evaluator_common.h"
#include "engine/evaluators.h"

namespace kbond::engine {

namespace {

// Remaining coupon income per unit of face, net of tax.
double remaining_coupons(const bond_desc& desc, double years) noexcept {
  const double net = 1.0 - desc.coupon_tax;
  if (desc.n_coupons <= 1) return net * desc.current_rate() * years;
  // Stepped coupons: what is left of the current period's coupon, then each
  // later coupon at its own rate.
  double total = net * desc.current_rate() * desc.tn;
  for_each_cash_flow(desc, [&](const CashFlow& flow) {
    if (flow.kind == FlowKind::kCoupon || flow.kind == FlowKind::kLastCoupon) total += flow.amount;
  });
  return total;
}

}  // namespace

double japanese_simple_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                                 double* second_derivative, int32_t* error) noexcept {
  const double years = dates::year_fraction(desc.settlement, desc.maturity, desc.accrual_basis);
  const double redemption = desc.redemption * 0.01;
  const double coupons = remaining_coupons(desc, years);
  const double g = coupons < years * yield * redemption ? capital_gains_rate(desc) : 0.0;
  const double divisor = 1.0 + years * yield - g;
  if (divisor == 0.0) return zero_denominator(error);
  const double clean = (coupons + (1.0 - g) * redemption) / divisor;
  const double derivative = -clean * years / divisor;
  if (first_derivative) *first_derivative = derivative;
  if (second_derivative) *second_derivative = derivative * years * -2.0 / divisor;
  return clean * 100.0;
}

}  // namespace kbond::engine
