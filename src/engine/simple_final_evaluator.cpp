// The last coupon period priced at simple interest, as money-market
// instruments are: the final coupon and the redemption are discounted by
// 1 + T y, T the years from settlement to maturity.
//
//   price = ((1 - g) R + C - (1 + T y) A) / (1 + T y - g)
//
// with R the redemption, C the final coupon (nothing when settlement is
// ex-dividend), A the accrued interest and g the capital-gains tax rate on
// a discount. Both derivatives follow in closed form.
#include "engine/evaluator_common.h"
#include "engine/evaluators.h"

namespace kbond::engine {

namespace {

double years_to_maturity(const bond_desc& desc) noexcept {
  if (!pays_on_business_days(desc)) return desc.tn;
  const double basis = desc.basis_accrual > 0.0 ? desc.basis_accrual : 365.0;
  return (payment_date(desc, desc.maturity) - desc.settlement) / basis;
}

}  // namespace

double simple_final_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                              double* second_derivative, int32_t* error) noexcept {
  const double t = years_to_maturity(desc);
  const double growth = 1.0 + t * yield;
  const double redemption = desc.redemption * 0.01;
  // The coupon is already net of tax; a negative accrued means it goes to
  // the seller.
  const double coupon = desc.accrued >= 0.0 ? desc.full_coupon : 0.0;
  // Below par exactly when the coupon does not cover the interest the
  // yield asks for on redemption and accrued.
  const bool discount = coupon < t * yield * redemption + growth * desc.accrued;
  const double g = discount ? capital_gains_rate(desc) : 0.0;
  const double divisor = growth - g;
  if (divisor == 0.0) return zero_denominator(error);
  const double clean = ((1.0 - g) * redemption + coupon - growth * desc.accrued) / divisor;
  const double derivative = -t * (desc.accrued + clean) / divisor;
  if (first_derivative) *first_derivative = derivative;
  if (second_derivative) *second_derivative = derivative * t * -2.0 / divisor;
  return clean * 100.0;
}

}  // namespace kbond::engine
