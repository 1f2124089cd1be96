// KVLbhyld: the yield earned from settlement to a sale at a horizon date
// and price.
#include "bond/common_args.h"
#include "engine/shortened_bond.h"
#include "engine/yield_from_price.h"
#include "engine/call_frame.h"
#include "k_bond.h"

using kbond::engine::BondCall;

extern "C" KVL_EXPORT double KVL_API KVLbhyld(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double price, int32_t horizon_date, double horizon_price,
    const int32_t* dated_date, const int32_t* first_coupon, const int32_t* type,
    const int32_t* frequency, int32_t n_frequency, const double* coupon_tax,
    const double* discount_tax, const int32_t* horizon, const double* issue_price,
    const int32_t* yield_method, const int32_t* bd_flags, const int32_t* holidays,
    int32_t n_holidays, const double* factor, const int32_t* sink_dates, int32_t n_sink,
    const int32_t* sink_ends, int32_t n_sink_ends, const double* sink_amounts,
    const double* sink_premium, const int32_t* exdiv_days, int32_t* error) {
  // Sold at the horizon, the bond is never redeemed at its own redemption.
  const auto args = kbond::bond::bond_args_without_eom(
      coupons, n_coupons, dates, n_dates, settlement, dated_date, first_coupon, type, frequency,
      n_frequency, nullptr, coupon_tax, discount_tax, horizon, issue_price, yield_method,
      bd_flags, holidays, n_holidays, factor, sink_dates, n_sink, sink_ends, n_sink_ends,
      sink_amounts, sink_premium, exdiv_days);
  // The bond to its final maturity gives the maturity and the coupon grid.
  BondCall call(args, error);
  if (!call.ok()) return -1.0;
  int32_t& err = call.error();
  const auto& bond = call.desc();
  if (horizon_date <= settlement || horizon_date > bond.maturity) {
    err = KVL_ERR_DATE_ORDER;
    return -1.0;
  }
  // The same bond, sold at the horizon: redeemed there at the horizon price.
  kbond::engine::ShortenedBond sold;
  err = sold.build(args, bond, horizon_date);
  if (err != 0) return -1.0;
  sold.args.redemption = &horizon_price;
  kbond::engine::ScopedDescription to_horizon(sold.args);
  if (to_horizon.status != 0) {
    err = to_horizon.status;
    return -1.0;
  }
  double p = price;
  if (to_horizon.desc.price_factor_flag) p *= to_horizon.desc.price_factor;
  return kbond::engine::yield_from_price(p, to_horizon.desc, &err);
}
