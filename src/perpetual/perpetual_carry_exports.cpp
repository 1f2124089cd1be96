// KVLpbcarry, KVLpbfwd, KVLpbirepo: carry, forward price and implied repo
// rate of a perpetual bond held to an end date.
#include <cmath>

#include "engine/carry.h"
#include "k_bond.h"
#include "perpetual/perpetual_call.h"
#include "perpetual/perpetual_carry.h"

using kbond::perpetual::CarryTerms;
using kbond::perpetual::perpetual_arguments;
using kbond::perpetual::PerpetualCall;

namespace {

// A reinvestment rate given as NULL or negative is the repo rate.
double reinvestment_rate(const double* given, double repo) {
  return given && *given >= 0.0 ? *given : repo;
}

// Per 100 of face a finite carry can still overflow: error 1 and -1.0.
double checked_amount(double amount, int32_t& error) {
  if (std::isfinite(amount)) return amount;
  error = KVL_ERR_INVALID;
  return -1.0;
}

// The carry to `end_date` per 100 of face or, with `forward`, the forward
// price there.
double carry_or_forward(const kbond::perpetual::perpetual_args& args, int32_t end_date,
                        double price, double repo, const double* reinvestment,
                        const int32_t* mode, bool forward, int32_t* error) {
  PerpetualCall call(args, error);
  if (!call.ok()) return -1.0;
  const CarryTerms terms{end_date, price, repo, reinvestment_rate(reinvestment, repo), mode};
  const double carry = kbond::perpetual::perpetual_carry(call.desc(), args, terms, &call.error());
  if (call.error() != 0) return carry;
  return checked_amount(forward ? price - carry * 100.0 : carry * 100.0, call.error());
}

}  // namespace

extern "C" KVL_EXPORT double KVL_API KVLpbcarry(
    const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
    int32_t end_date, double price, double repo_rate, const int32_t* step_dates, int32_t n_steps,
    const int32_t* type, const int32_t* frequency, const double* withholding_tax,
    const int32_t* ex_coupon_rule, const int32_t* calendar_flags, const int32_t* holidays,
    int32_t n_holidays, const int32_t* dated_date, const int32_t* mode, int32_t* error) {
  return carry_or_forward(perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                              step_dates, n_steps, type, frequency,
                                              withholding_tax, ex_coupon_rule, calendar_flags,
                                              holidays, n_holidays, dated_date),
                          end_date, price, repo_rate, nullptr, mode, false, error);
}

extern "C" KVL_EXPORT double KVL_API KVLpbfwd(
    const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
    int32_t forward_date, double price, double repo_rate, const int32_t* step_dates,
    int32_t n_steps, const int32_t* type, const int32_t* frequency, const double* withholding_tax,
    const int32_t* ex_coupon_rule, const int32_t* calendar_flags, const int32_t* holidays,
    int32_t n_holidays, const int32_t* dated_date, const double* reinvestment, const int32_t* mode,
    int32_t* error) {
  return carry_or_forward(perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                              step_dates, n_steps, type, frequency,
                                              withholding_tax, ex_coupon_rule, calendar_flags,
                                              holidays, n_holidays, dated_date),
                          forward_date, price, repo_rate, reinvestment, mode, true, error);
}

extern "C" KVL_EXPORT double KVL_API KVLpbirepo(
    const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
    double price, double forward_price, int32_t forward_date, const int32_t* step_dates,
    int32_t n_steps, const int32_t* type, const int32_t* frequency, const double* withholding_tax,
    const int32_t* ex_coupon_rule, const int32_t* calendar_flags, const int32_t* holidays,
    int32_t n_holidays, const int32_t* dated_date, const double* reinvestment, const int32_t* mode,
    int32_t* error) {
  const auto args = perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                        step_dates, n_steps, type, frequency, withholding_tax,
                                        ex_coupon_rule, calendar_flags, holidays, n_holidays,
                                        dated_date);
  PerpetualCall call(args, error);
  if (!call.ok()) return -1.0;
  int32_t& err = call.error();
  if (forward_date <= settlement) {
    err = KVL_ERR_DATE_ORDER;
    return -999.0;
  }
  // The carry that turns the price into the forward price.
  const double target = (price - forward_price) * 0.01;
  auto carry_at = [&](double repo, double*) {
    int32_t carry_error = 0;
    const CarryTerms terms{forward_date, price, repo, reinvestment_rate(reinvestment, repo), mode};
    const double carry = kbond::perpetual::perpetual_carry(call.desc(), args, terms, &carry_error);
    return carry_error != 0 ? std::nan("") : carry;
  };
  return kbond::engine::implied_repo_rate(carry_at, target, &err);
}
