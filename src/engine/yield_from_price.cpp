// yield_from_price: closed forms for the simple-interest conventions,
// Newton's method with a bracketing fallback for compound yields.
#include "engine/yield_from_price.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "dates/day_count.h"
#include "engine/call_frame.h"
#include "engine/catalogue.h"
#include "engine/evaluator_common.h"
#include "engine/price_from_yield.h"
#include "engine/solvers.h"
#include "engine/safe_math.h"
#include "k_bond.h"

namespace kbond::engine {

namespace {

using engine::bond_desc;

constexpr int32_t kSimpleInterestMethod = 1;  // yield method of the Japanese simple yield
constexpr int32_t kMoosmullerMethod = 3;
constexpr int32_t kMoneyMarketFinalPeriod = 1;
constexpr double kNoCouponStart = 0.05;       // start for bonds paying (almost) no coupon
constexpr double kMinimumCouponForStart = 0.01;

enum class Method { kSimpleInterestLife, kMoneyMarketLastPeriod, kIteration };

// The conventions are looked up only for a bond quoted per 100 of its own
// face; an amortising bond is always solved by iteration.
Method choose_method(const bond_desc& desc) noexcept {
  if (desc.price_factor_flag) return Method::kIteration;
  const int32_t method = engine::bond_type_yield_method(desc.conventions, desc.yield_method_arg);
  if (method == kSimpleInterestMethod) return Method::kSimpleInterestLife;
  if (method == 0 && engine::final_period_method(desc) == kMoneyMarketFinalPeriod)
    return Method::kMoneyMarketLastPeriod;
  return Method::kIteration;
}

double fail(int32_t* error, int32_t code, double value = -1.0) noexcept {
  *error = code;
  return value;
}

// A price a hair above zero has a yield of astronomical size, or one that
// overflows; beyond 10^102 percent it is no yield at all.
double checked_yield(double y, int32_t* error, double failure_value) noexcept {
  if (*error == 0 && !engine::plausible_magnitude(y)) return fail(error, 1, failure_value);
  return y;
}

// The coupons still to be received, net of withholding tax, as the
// simple-yield price counts them: a single rate earns over the years left;
// stepped rates pay what is left of the current coupon and then each later
// coupon at its own rate.
double remaining_simple_coupons(const bond_desc& desc, double years) noexcept {
  const double net = 1.0 - desc.coupon_tax;
  if (desc.n_coupons <= 1) return net * desc.current_rate() * years;
  double total = net * desc.current_rate() * desc.tn;
  engine::for_each_cash_flow(desc, [&](const engine::CashFlow& flow) {
    if (flow.kind == engine::FlowKind::kCoupon || flow.kind == engine::FlowKind::kLastCoupon)
      total += flow.amount;
  });
  return total;
}

// Whatever is received beyond the price (coupons plus the redemption less
// the tax on a discount) spread evenly over the years left:
//   y = ((Q + R - g (R - P)) / P - 1) / T
double simple_interest_life_yield(double price, const bond_desc& desc, int32_t* error) noexcept {
  const double p = price * 0.01;
  const double years = dates::year_fraction(desc.settlement, desc.maturity, desc.accrual_basis);
  if (!(p > 0.0) || !(years > 0.0)) return fail(error, 1);
  const double redemption = desc.redemption * 0.01;
  const double g = p < redemption ? engine::capital_gains_rate(desc) : 0.0;
  const double received =
      remaining_simple_coupons(desc, years) + redemption - g * (redemption - p);
  return checked_yield((received / p - 1.0) / years, error, -1.0);
}

// Years from settlement to maturity as the money-market price counts them:
// the period fraction, or the actual days to the business-day payment date.
double money_market_years(const bond_desc& desc) noexcept {
  if (!engine::pays_on_business_days(desc)) return desc.tn;
  const double basis = desc.basis_accrual > 0.0 ? desc.basis_accrual : 365.0;
  return (engine::payment_date(desc, desc.maturity) - desc.settlement) / basis;
}

// The last coupon and the redemption, against the dirty price, at simple
// interest over the days to maturity:
//   1 + T y = (R + C - g (R - P)) / (P + A)
double money_market_yield(double price, const bond_desc& desc, int32_t* error) noexcept {
  const double p = price * 0.01;
  const double accrued = desc.accrued;
  if (std::isnan(p) || -accrued >= p) return fail(error, KVL_ERR_BAD_PRICE);
  const double years = money_market_years(desc);
  if (years < 0.0) return fail(error, KVL_ERR_DATE_ORDER);
  const double redemption = desc.redemption * 0.01;
  // Ex-dividend the final coupon goes to the seller.
  const double coupon = accrued >= 0.0 ? desc.full_coupon : 0.0;
  const double g = p < redemption ? engine::capital_gains_rate(desc) : 0.0;
  const double ratio = (redemption + coupon - g * (redemption - p)) / (p + accrued);
  if (ratio == 1.0) return 0.0;
  if (years == 0.0) return fail(error, KVL_ERR_OUT_OF_SET);
  return checked_yield((ratio - 1.0) / years, error, -1.0);
}

// The lowest yield at which every discount factor is positive: -100 % per
// period, or for Moosmuller's simple interest up to a next coupon more than
// a period away, the yield at which 1 + t y / f vanishes. Newton's steps
// stay above it; beyond it the price changes sign and has no root.
double domain_floor(const bond_desc& desc) noexcept {
  const double f = desc.frequency;
  const double t = f * desc.tn;
  if (t > 1.0 && engine::bond_type_yield_method(desc.conventions, desc.yield_method_arg) ==
                     kMoosmullerMethod)
    return -f / t;
  return -f;
}

double iterated_yield(double price, const bond_desc& desc, int32_t* error) noexcept {
  if (!(price > 0.0)) return fail(error, KVL_ERR_BAD_PRICE);
  const double rate = desc.current_rate();
  // The current yield on the quoted price is close to the answer for most
  // bonds; a zero-coupon bond starts from 5 %.
  double start = kNoCouponStart;
  if (rate >= kMinimumCouponForStart) {
    start = rate * 100.0 / price;
    if (desc.price_factor_flag) start *= desc.price_factor;
    // A price near zero makes the current yield absurd (or infinite); the
    // search starts no further out than the bracket reaches.
    start = std::min(start, kBracketUpperYield);
  }
  const double target = price * 0.01;
  const double tolerance =
      std::max(kYieldTolerance * std::min(target, 1.0), kFinestYieldTolerance);
  const double f = desc.frequency;
  auto price_at = [&desc](double y, double* derivative) {
    int32_t err = 0;
    const double p = engine::price_from_yield(y, desc, derivative, nullptr, &err);
    return err != 0 ? std::numeric_limits<double>::quiet_NaN() : p * 0.01;
  };
  auto inside_domain = [floor = domain_floor(desc)](double y) { return y > floor; };

  int32_t err = 0;
  double y = engine::newton_solve(price_at, target, start, tolerance, kYieldIterations,
                                  &err, inside_domain);
  if (err == 0) return checked_yield(y, error, kSolverFailed);
  y = engine::bracket_solve(price_at, target, -0.9 * f, kBracketUpperYield, tolerance,
                            kYieldIterations, &err);
  if (err == 0) return y;
  return fail(error, err, kSolverFailed);
}

}  // namespace

double yield_from_price(double price, const bond_desc& desc, int32_t* error) noexcept {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;
  switch (choose_method(desc)) {
    case Method::kSimpleInterestLife:
      return simple_interest_life_yield(price, desc, err);
    case Method::kMoneyMarketLastPeriod:
      return money_market_yield(price, desc, err);
    case Method::kIteration:
      break;
  }
  return iterated_yield(price, desc, err);
}

double quoted_yield_from_price(double price, const bond_desc& desc, int32_t* error) noexcept {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;
  // Amortising bonds are quoted per 100 of outstanding face.
  if (desc.price_factor_flag) price *= desc.price_factor;
  const double y = yield_from_price(price, desc, err);
  if (*err != 0) return y;
  const double quoted = engine::quoted_yield_from_coupon(y, desc, err);
  return *err != 0 ? -1.0 : quoted;
}

}  // namespace kbond::engine
