// The standard evaluator: every cash flow discounted at the yield
// compounded at the coupon frequency, v = 1 / (1 + y/f), the next coupon
// t periods away and each later one a whole period further.
//
// A bond with a single coupon step is an annuity: its m further coupons
// c v^(t+1) ... c v^(t+m) sum to c v^(t+1) (1 - v^m) / (1 - v), and their
// time-weighted sum has a closed form too, so the price costs the same for
// a 2-year and a 50-year bond.
#include <cmath>

#include "engine/evaluator_common.h"
#include "engine/evaluators.h"

namespace kbond::engine {

namespace {

// Below this the annuity formulas lose their digits to 1 - v.
constexpr double kFlatYield = 1e-10;

double annuity_price(double yield, const bond_desc& desc, double* first_derivative,
                     int32_t* error) noexcept {
  const double f = desc.frequency;
  const double base = 1.0 + yield / f;
  if (base == 0.0) return zero_denominator(error);
  const double v = 1.0 / base;
  double t = f * desc.tn;
  double value = 0.0, weighted = 0.0;
  // Every power of v comes from one logarithm of the base: an exponential
  // costs far less than a general power.
  const bool positive_base = base > 0.0;
  const double log_base = positive_base ? std::log1p(yield / f) : 0.0;
  const auto v_pow = [&](double x) {
    return positive_base ? std::exp(-x * log_base) : safe_pow(v, x);
  };

  // v^t once; every later factor is a whole number of periods further.
  const double vt = v_pow(t);
  if (!desc.exdiv) {
    value += desc.full_coupon * vt;
    weighted += desc.full_coupon * vt * t;
  }

  const int32_t m = further_coupons(desc);
  const double c = (1.0 - desc.coupon_tax) * desc.current_rate() / f;
  double vm = 1.0;
  if (std::fabs(yield) >= kFlatYield) {
    // 1 - v and 1 - v^m from log1p and expm1 keep their digits for yields
    // near zero, where the annuity is a ratio of two small numbers.
    const double one_minus_v = yield / f * v;
    const double one_minus_vm =
        positive_base ? -std::expm1(-m * log_base) : 1.0 - std::pow(v, m);
    vm = 1.0 - one_minus_vm;
    const double lead = c * vt * v / one_minus_v;
    value += lead * one_minus_vm;
    weighted += lead * (t * one_minus_vm + 1.0 - (m + 1.0) * vm + v * one_minus_vm / one_minus_v);
  } else {
    // At a zero yield every coupon counts in full, at times t+1 ... t+m.
    vm = std::pow(v, m);
    value += m * c;
    weighted += (t + (m + 1.0) * 0.5) * m * c;
  }
  t += m;
  double redemption_df = vt * vm;

  if (has_broken_last_period(desc)) {
    t += desc.last_discount;
    redemption_df *= v_pow(desc.last_discount);
    const double coupon = c * desc.last_coupon;
    value += coupon * redemption_df;
    weighted += coupon * redemption_df * t;
  }

  const double redemption = desc.redemption * 0.01;
  value += redemption * redemption_df;
  weighted += redemption * redemption_df * t;

  return finish_price(desc, value, -weighted * v / f, redemption_df, -t * redemption_df * v / f,
                      first_derivative, error);
}

}  // namespace

double standard_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                          int32_t* error) noexcept {
  if (annuity_applies(desc)) return annuity_price(yield, desc, first_derivative, error);
  const double t0 = periods_to_next_coupon(desc);
  if (!pays_on_business_days(desc)) {
    return discount_cash_flows(yield, desc, [t0](const CashFlow& flow) { return t0 + flow.periods; },
                               first_derivative, error);
  }
  const double nominal_t0 = desc.frequency * desc.tn;
  return discount_cash_flows(
      yield, desc,
      [&](const CashFlow& flow) {
        if (flow.kind == FlowKind::kNextCoupon) return t0;
        return business_day_periods(desc, nominal_t0 + flow.periods, flow.date);
      },
      first_derivative, error);
}

}  // namespace kbond::engine
