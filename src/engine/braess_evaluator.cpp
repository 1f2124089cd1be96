// The Braess-Fangmeyer method: interest compounds once a year, and coupons
// paid within a year earn simple interest up to its end. The years are
// counted back from maturity, so the first year is the broken one.
//
// With c the net annual coupon, h = y / (2f), T the years to maturity split
// into N whole years and a broken part phi (a whole last year counts as the
// broken one), and q the coupons of the broken year after the next one:
//
//   A = c/f (1 + q (1 + (q + 1) h))          broken year's coupons at its end
//   V = (1 + y)^N,  S = (V - 1)/y c (1 + (f - 1) h)   whole years' coupons at maturity
//   dirty = ((R + S) / V + A) / (1 + phi y)
//
// Only bonds with a single coupon step, regular first and last periods and
// settlement before the ex-dividend date are priced. The derivative is a
// forward difference over 5e-6 of yield.
#include <cmath>

#include "engine/evaluator_common.h"
#include "engine/evaluators.h"

namespace kbond::engine {

namespace {

constexpr double kForwardStep = 5e-06;
constexpr double kForwardScale = 2000.0;  // 1 / (100 x 5e-6): per unit of face

bool braess_accepts(const bond_desc& desc) noexcept {
  return !desc.partial_period && !desc.odd_first && desc.n_coupons <= 1 && !desc.exdiv;
}

double braess_price(double yield, const bond_desc& desc, int32_t* error) noexcept {
  const int32_t f = desc.frequency;
  const double c = (1.0 - desc.coupon_tax) * desc.current_rate();
  const double h = yield / (2.0 * f);

  const double years = (desc.whole_periods - 1) / static_cast<double>(f) + desc.tn;
  double whole_years = std::trunc(years);
  double broken = years - whole_years;
  if (broken == 0.0) {
    broken = 1.0;
    whole_years -= 1.0;
  }

  const int32_t q = ((desc.whole_periods - 1) % f + f) % f;
  const double broken_year_coupons = c / f * (1.0 + q * (1.0 + (q + 1) * h));

  double growth = 1.0, annuity = whole_years;
  if (yield != 0.0) {
    growth = std::pow(1.0 + yield, whole_years);
    annuity = (growth - 1.0) / yield;
  }
  annuity *= c * (1.0 + (f - 1) * h);

  const double simple_growth = 1.0 + broken * yield;
  if (growth == 0.0 || simple_growth == 0.0) return zero_denominator(error);
  const double redemption = desc.redemption * 0.01;
  const double dirty = ((redemption + annuity) / growth + broken_year_coupons) / simple_growth;
  const double redemption_df = 1.0 / (growth * simple_growth);
  return finish_price(desc, dirty, 0.0, redemption_df, 0.0, nullptr, error);
}

}  // namespace

double braess_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                        int32_t* error) noexcept {
  if (!braess_accepts(desc)) {
    *error = KVL_ERR_INVALID;  // a bond shape this method cannot price
    return kRefusedShapePrice;
  }
  int32_t err = 0;
  const double price = braess_price(yield, desc, &err);
  if (err != 0) {
    *error = err;
    return price;
  }
  if (first_derivative) {
    const double bumped = braess_price(yield + kForwardStep, desc, &err);
    if (err != 0) {
      *error = err;
      return bumped;
    }
    *first_derivative = (bumped - price) * kForwardScale;
  }
  return price;
}

}  // namespace kbond::engine
