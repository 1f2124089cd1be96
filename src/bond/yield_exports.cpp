// KVLbyld: the yield to maturity of a straight bond from its clean price.
#include "bond/common_args.h"
#include "engine/call_frame.h"
#include "engine/price_measures.h"
#include "engine/yield_from_price.h"
#include "k_bond.h"

using kbond::engine::BondCall;

namespace {

// The yield KVLbyld quotes for `price`, rounded by the bond's type.
double quoted_yield(double price, BondCall& call) noexcept {
  return kbond::engine::round_yield_by_type(
      kbond::engine::quoted_yield_from_price(price, call.desc(), &call.error()), call.desc().type);
}

}  // namespace

extern "C" KVL_EXPORT double KVL_API KVLbyld(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double price, const int32_t* dated_date, const int32_t* first_coupon,
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
  return quoted_yield(price, call);
}

// KVLbel: the remaining life of the bond as its conventions measure time,
// the Macaulay duration of a zero-coupon bond to the same maturity.
extern "C" KVL_EXPORT double KVL_API KVLbel(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double price_or_yield, const int32_t* dated_date,
    const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
    int32_t n_frequency, const double* redemption, const double* coupon_tax,
    const double* discount_tax, const int32_t* horizon, const double* issue_price,
    const int32_t* yield_method, const int32_t* bd_flags, const int32_t* holidays,
    int32_t n_holidays, const double* factor, const int32_t* sink_dates, int32_t n_sink,
    const int32_t* sink_ends, int32_t n_sink_ends, const double* sink_amounts,
    const double* sink_premium, const int32_t* exdiv_days, int32_t* error) {
  const auto args = kbond::bond::bond_args_without_eom(
      coupons, n_coupons, dates, n_dates, settlement, dated_date, first_coupon, type, frequency,
      n_frequency, redemption, coupon_tax, discount_tax, horizon, issue_price, yield_method,
      bd_flags, holidays, n_holidays, factor, sink_dates, n_sink, sink_ends, n_sink_ends,
      sink_amounts, sink_premium, exdiv_days);
  // A value of 10 or more is a price (no yield is 1000 %), below it a yield;
  // a price becomes the yield KVLbyld quotes.
  constexpr double kSmallestPrice = 10.0;
  double y = price_or_yield;
  if (price_or_yield >= kSmallestPrice) {
    BondCall call(args, error);
    if (!call.ok()) return -1.0;
    y = quoted_yield(price_or_yield, call);
    if (call.error() != 0) return -1.0;
  }
  // Only the maturity, the schedule and the conventions matter; taxes,
  // redemption and sinking funds do not.
  static constexpr double kZeroCoupon = 0.0;
  kbond::engine::bond_args zero = args;
  zero.coupons = &kZeroCoupon;
  zero.n_coupons = 1;
  zero.dates = dates && n_dates > 0 ? &dates[n_dates - 1] : nullptr;
  zero.n_dates = zero.dates ? 1 : 0;
  zero.redemption = zero.coupon_tax = zero.discount_tax = nullptr;
  zero.factor = nullptr;
  zero.sink_dates = zero.sink_ends = nullptr;
  zero.n_sink = zero.n_sink_ends = 0;
  zero.sink_amounts = zero.sink_premium = nullptr;
  BondCall call(zero, error);
  if (!call.ok()) return -1.0;
  // The Macaulay duration, as KVLbdur gives it.
  return kbond::engine::bond_duration(y, call.desc(), true, call.error());
}
