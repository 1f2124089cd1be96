// Perpetual price functions and the yield that inverts them.
#include "perpetual/perpetual_price.h"

#include <cmath>

#include "engine/coupon_schedule.h"
#include "engine/evaluator_common.h"
#include "engine/solvers.h"
#include "k_bond.h"

namespace kbond::perpetual {
namespace {

constexpr double kFailure = -1.0;
constexpr double kSecondDerivativeStep = 5e-6;
constexpr double kHalfInverseStep = 99999.99999999999;  // 1 / (2 * 5e-6)

double fail(int32_t* error, int32_t code) noexcept {
  *error = code;
  return kFailure;
}

// The rate that holds for ever, net of withholding tax.
double perpetual_coupon(const perpetual_desc& d) noexcept {
  return d.last_rate * (1.0 - d.grid.coupon_tax);
}

double perpetuity_formula(double y, const perpetual_desc& d, double* first, double* second,
                          int32_t* error) noexcept {
  if (y == 0.0 || !std::isfinite(y)) return fail(error, KVL_ERR_ZERO_DIVISOR);
  const double c = perpetual_coupon(d);
  if (first) *first = -(c / y) / y;
  if (second) *second = 2.0 * c / (y * y * y);
  return 100.0 * c / y;
}

// Visits the coupons valued one by one: amount per unit of face and the
// coupon's date; the first is the next coupon (nothing when ex-coupon).
template <class Visit>
void for_each_explicit_coupon(const perpetual_desc& d, Visit&& visit) {
  const auto& g = d.grid;
  const double net_per_period = (1.0 - g.coupon_tax) / g.frequency;
  int32_t date = g.next_coupon;
  visit(0, date, g.exdiv ? 0.0 : g.full_coupon);
  for (int32_t k = 1; k < d.explicit_coupons; ++k) {
    const int32_t next = engine::grid_after(g, date, nullptr);
    if (next <= date) break;  // the end of the calendar: the perpetuity takes over
    date = next;
    visit(k, date, rate_on(d, date) * net_per_period);
  }
}

double explicit_sum(double y, const perpetual_desc& d, double* first, int32_t* error) noexcept {
  const auto& g = d.grid;
  const double f = g.frequency;
  const double base = 1.0 + y / f;
  if (y == 0.0 || !(base > 0.0) || !std::isfinite(base)) return fail(error, KVL_ERR_ZERO_DIVISOR);
  const double log_v = -std::log(base);
  const double t0 = engine::periods_to_next_coupon(g);
  const double nominal_t0 = f * g.tn;
  double value = 0.0, weighted = 0.0, t = t0;
  for_each_explicit_coupon(d, [&](int32_t k, int32_t date, double amount) {
    if (k > 0) {
      if (d.pays_on_business_days()) {
        t = engine::business_day_periods(g, nominal_t0 + k, date);
      } else if (d.day_exponents) {
        t = t0 + (date - g.next_coupon) * f * engine::kPerDay365;
      } else {
        t = t0 + k;
      }
    }
    const double pv = amount * std::exp(t * log_v);
    value += pv;
    weighted += pv * t;
  });
  const double c = perpetual_coupon(d);
  const double tail_df = std::exp(t * log_v);
  const double tail = c / y * tail_df;
  value += tail;
  weighted += tail * t;
  if (first) *first = -weighted / base / f - c / (y * y) * tail_df;
  return (value - g.accrued) * 100.0;
}

double simple_first_period(double y, const perpetual_desc& d, double* first,
                           int32_t* error) noexcept {
  const auto& g = d.grid;
  const double f = g.frequency;
  const double base = 1.0 + y / f;
  const double t0 = engine::periods_to_next_coupon(g);
  const double simple = 1.0 + t0 * y / f;
  if (y == 0.0 || !(base > 0.0) || !std::isfinite(base) || simple == 0.0)
    return fail(error, KVL_ERR_ZERO_DIVISOR);
  const double log_w = -std::log(base);
  // S = sum a_k w^k + c/y w^(N-1), w = 1 / (1 + y/f); dirty value = S / simple.
  double sum = 0.0, slope = 0.0;
  int32_t last = 0;
  for_each_explicit_coupon(d, [&](int32_t k, int32_t, double amount) {
    const double pv = amount * std::exp(k * log_w);
    sum += pv;
    slope -= pv * k / base / f;
    last = k;
  });
  const double c = perpetual_coupon(d);
  const double tail_df = std::exp(last * log_w);
  sum += c / y * tail_df;
  slope += -c / (y * y) * tail_df - c / y * tail_df * last / base / f;
  const double dirty = sum / simple;
  if (first) *first = slope / simple - sum * (t0 / f) / (simple * simple);
  return (dirty - g.accrued) * 100.0;
}

double price_and_slope(double y, const perpetual_desc& d, double* first, double* second,
                       int32_t* error) noexcept {
  switch (d.convention) {
    case Convention::kPerpetuity:
      return perpetuity_formula(y, d, first, second, error);
    case Convention::kExplicitSum:
      return explicit_sum(y, d, first, error);
    case Convention::kSimpleFirstPeriod:
      return simple_first_period(y, d, first, error);
    default:
      return fail(error, KVL_ERR_OUT_OF_SET);
  }
}

}  // namespace

namespace {

double price_with_derivatives(double yield, const perpetual_desc& desc, double* first_derivative,
                              double* second_derivative, int32_t* err) noexcept {
  if (desc.convention == Convention::kPerpetuity || !second_derivative)
    return price_and_slope(yield, desc, first_derivative, second_derivative, err);
  double above = 0.0, below = 0.0;
  price_and_slope(yield - kSecondDerivativeStep, desc, &below, nullptr, err);
  if (*err != 0) return kFailure;
  price_and_slope(yield + kSecondDerivativeStep, desc, &above, nullptr, err);
  if (*err != 0) return kFailure;
  *second_derivative = (above - below) * kHalfInverseStep;
  return price_and_slope(yield, desc, first_derivative, nullptr, err);
}

}  // namespace

double perpetual_price(double yield, const perpetual_desc& desc, double* first_derivative,
                       double* second_derivative, int32_t* error) noexcept {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;
  const double price =
      price_with_derivatives(yield, desc, first_derivative, second_derivative, err);
  if (*err != 0) return price;
  // A yield a hair above zero (a denormal) makes c / y overflow just as a
  // zero yield divides by zero.
  if (!std::isfinite(price) || (first_derivative && !std::isfinite(*first_derivative)) ||
      (second_derivative && !std::isfinite(*second_derivative)))
    return fail(err, KVL_ERR_ZERO_DIVISOR);
  return price;
}

double perpetual_yield(double price, const perpetual_desc& desc, int32_t* error) noexcept {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  err = 0;
  auto value = [&desc](double y, double* derivative) {
    int32_t price_error = 0;
    const double p = perpetual_price(y, desc, derivative, nullptr, &price_error);
    return price_error != 0 ? std::nan("") : p * 0.01;
  };
  const double target = price * 0.01;
  const double current_rate = desc.last_rate * (1.0 - desc.grid.coupon_tax);
  const double start = current_rate >= 0.01 ? current_rate * 100.0 / price : 0.05;
  int32_t solver_error = 0;
  const double y = engine::newton_solve(value, target, start, 1e-6, 64, &solver_error,
                                        [](double x) { return x > 0.0 && x < 25.0; });
  if (solver_error == 0) return y;
  const double lower = -0.9 * desc.grid.frequency;
  const double bracketed = engine::bracket_solve(value, target, lower, 25.0, 1e-6, 64, &solver_error);
  if (solver_error == 0) return bracketed;
  err = solver_error;
  return -999.0;
}

}  // namespace kbond::perpetual
