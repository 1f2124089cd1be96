// KVLpikpr, KVLpikyld, KVLpikai: price, yield and accrued interest of a PIK
// bond.
#include <cmath>

#include "engine/solvers.h"
#include "k_bond.h"
#include "pik/pik_call.h"
#include "pik/pik_price.h"
#include "engine/safe_math.h"

using kbond::pik::pik_arguments;
using kbond::pik::pik_desc;
using kbond::pik::PikCall;

namespace {

constexpr double kSolverFailure = -999.0;
constexpr double kTolerance = 1e-6;
constexpr int kMaxIterations = 64;

// With one period left the yield is the money-market rate that carries the
// dirty price to the final amount; no iteration.
double single_period_yield(double price, const pik_desc& pik, int32_t& err) {
  const double final_amount = pik.redemption * 0.01 + pik.pik_now + pik.cash_now;
  const double ratio = final_amount / (price * 0.01 + pik.accrued);
  if (ratio - 1.0 == 0.0) return 0.0;
  const double t = kbond::pik::single_period_time(pik);
  if (t == 0.0) {
    err = KVL_ERR_OUT_OF_SET;
    return -1.0;
  }
  const double yield = (ratio - 1.0) / t;
  // A price a hair above zero (or a dirty price that vanishes) leaves no
  // usable yield: none is anywhere near 1e100 (and the eight-decimal
  // rounding of type 0 would overflow well before an infinity).
  if (!kbond::engine::plausible_magnitude(yield)) {
    err = KVL_ERR_OUT_OF_SET;
    return -1.0;
  }
  return yield;
}

double solved_yield(double price, const pik_desc& pik, int32_t& err) {
  auto value = [&pik](double y, double* derivative) {
    int32_t price_error = 0;
    const double p = kbond::pik::pik_price(y, pik, derivative, &price_error);
    return price_error != 0 ? std::nan("") : p * 0.01;
  };
  const double target = price * 0.01;
  int32_t solver_error = 0;
  const double y = kbond::engine::newton_solve(value, target, 0.05, kTolerance, kMaxIterations,
                                               &solver_error,
                                               [](double x) { return x > -1.0 && x < 25.0; });
  if (solver_error == 0) return y;
  const double lower = -0.9 * pik.frequency;
  const double bracketed = kbond::engine::bracket_solve(value, target, lower, 25.0, kTolerance,
                                                        kMaxIterations, &solver_error);
  if (solver_error == 0) return bracketed;
  err = solver_error;
  return kSolverFailure;
}

}  // namespace

extern "C" KVL_EXPORT double KVL_API KVLpikpr(
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, double yield,
    const int32_t* dated_date, const int32_t* first_coupon, const int32_t* type,
    const int32_t* frequency, const double* redemption, const int32_t* call_date,
    const int32_t* pay_on_business_day, const int32_t* holiday_options, const int32_t* holidays,
    int32_t n_holidays, int32_t* error) {
  PikCall call(pik_arguments(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates, settlement,
                             dated_date, first_coupon, type, frequency, redemption, call_date,
                             pay_on_business_day, holiday_options, holidays, n_holidays),
               error);
  if (!call.ok()) return -1.0;
  const double price = kbond::pik::pik_price(yield, call.desc(), nullptr, &call.error());
  if (call.error() != 0) return price;
  return kbond::pik::round_pik_price(price, call.desc().type);
}

extern "C" KVL_EXPORT double KVL_API KVLpikyld(
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, double price,
    const int32_t* dated_date, const int32_t* first_coupon, const int32_t* type,
    const int32_t* frequency, const double* redemption, const int32_t* call_date,
    const int32_t* pay_on_business_day, const int32_t* holiday_options, const int32_t* holidays,
    int32_t n_holidays, int32_t* error) {
  PikCall call(pik_arguments(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates, settlement,
                             dated_date, first_coupon, type, frequency, redemption, call_date,
                             pay_on_business_day, holiday_options, holidays, n_holidays),
               error);
  if (!call.ok()) return -1.0;
  int32_t& err = call.error();
  // PIK refuses a price that is not positive as a value outside its set
  // (460), not with the 350 of the other families.
  if (!(price > 0.0) || !std::isfinite(price)) {
    err = KVL_ERR_OUT_OF_SET;
    return -1.0;
  }
  const pik_desc& pik = call.desc();
  const double yield =
      pik.single_period() ? single_period_yield(price, pik, err) : solved_yield(price, pik, err);
  if (err != 0) return yield;
  return kbond::pik::round_pik_yield(yield, pik.type);
}

extern "C" KVL_EXPORT double KVL_API KVLpikai(const double* cash_rates, int32_t n_cash,
                                              const double* pik_rates, int32_t n_pik,
                                              const int32_t* dates, int32_t n_dates,
                                              int32_t settlement, const int32_t* dated_date,
                                              const int32_t* first_coupon, const int32_t* type,
                                              const int32_t* frequency, int32_t* error) {
  PikCall call(pik_arguments(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates, settlement,
                             dated_date, first_coupon, type, frequency, nullptr, nullptr, nullptr,
                             nullptr, nullptr, 0),
               error);
  if (!call.ok()) return -1.0;
  return call.desc().accrued * 100.0;
}
