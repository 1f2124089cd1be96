// KVLbpr: the clean price of a straight bond from its yield.
#include <cmath>

#include "bond/common_args.h"
#include "engine/call_frame.h"
#include "engine/price_from_yield.h"
#include "k_bond.h"

using kbond::engine::BondCall;

extern "C" KVL_EXPORT double KVL_API KVLbpr(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double yield, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const double* coupon_tax, const double* discount_tax, const int32_t* horizon,
    const double* issue_price, const int32_t* yield_method, const int32_t* bd_flags,
    const int32_t* holidays, int32_t n_holidays, const double* factor, const int32_t* sink_dates,
    int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends, const double* sink_amounts,
    const double* sink_premium, const int32_t* exdiv_days, int32_t* error) {
  const auto args = kbond::bond::bond_args_without_eom(
      coupons, n_coupons, dates, n_dates, settlement, dated_date, first_coupon, type, frequency,
      n_frequency, redemption, coupon_tax, discount_tax, horizon, issue_price, yield_method,
      bd_flags, holidays, n_holidays, factor, sink_dates, n_sink, sink_ends, n_sink_ends,
      sink_amounts, sink_premium, exdiv_days);
  BondCall call(args, error);
  if (!call.ok()) return -1.0;
  const auto& bond = call.desc();
  int32_t& err = call.error();

  double price = -1.0;
  if (!std::isfinite(yield)) {
    err = KVL_ERR_INVALID;
  } else {
    // Yields are quoted at the market's frequency, priced at the coupons'.
    const double y = kbond::engine::coupon_yield_from_quoted(yield, bond, &err);
    if (err == 0) price = kbond::engine::price_from_yield(y, bond, nullptr, nullptr, &err);
  }
  // Amortising bonds are quoted per 100 of the face still outstanding; a
  // failure value is scaled the same way, callers test the error code.
  const auto quote = [&](double value) {
    if (bond.price_factor_flag) value /= bond.price_factor;
    return kbond::engine::round_price_by_type(value, bond.type);
  };
  if (err == 0) {
    // Absurd coupons or redemptions (a redemption of 100 * b / a with a tiny
    // a) overflow the flows or the rounding: a price without a finite value
    // is no price.
    const double quoted = quote(price);
    if (std::isfinite(quoted)) return quoted;
    err = KVL_ERR_INVALID;
  }
  return quote(-1.0);
}
