// KVLbyworst: the lowest of the yield to maturity and the yields to each
// call date still ahead, the yield a buyer can count on when the issuer
// calls whenever that suits it.
#include <cmath>

#include "engine/shortened_bond.h"
#include "engine/yield_from_price.h"
#include "engine/call_frame.h"
#include "k_bond.h"

using kbond::engine::BondCall;

namespace {


// Argument checks in their fixed order; 0 when the call schedule is usable.
int32_t check_call_schedule(const int32_t* dates, int32_t n_dates, const int32_t* call_dates,
                            int32_t n_call_dates, const double* call_prices,
                            int32_t n_call_prices) noexcept {
  if (n_dates < 1 || n_call_dates < 0 || n_call_prices < 0) return KVL_ERR_COUNT;
  if (int64_t{n_call_prices} > int64_t{n_call_dates} + 1) return KVL_ERR_TOO_MANY;
  if (!dates) return KVL_ERR_MISSING_ARRAY;
  if (n_call_dates > 0) {
    if (!call_dates) return KVL_ERR_MISSING_ARRAY;
    if (call_dates[0] <= 0) return KVL_ERR_BAD_DATE;
    for (int32_t i = 1; i < n_call_dates; ++i)
      if (call_dates[i] <= call_dates[i - 1]) return KVL_ERR_DATE_ORDER;
    if (call_dates[n_call_dates - 1] > dates[n_dates - 1]) return KVL_ERR_DATE_ORDER;
  }
  if (n_call_prices > 0) {
    if (!call_prices) return KVL_ERR_MISSING_ARRAY;
    for (int32_t i = 0; i < n_call_prices; ++i)
      if (!(call_prices[i] > 0.0)) return KVL_ERR_OUT_OF_SET;
  }
  return 0;
}

// The yield to redemption on `call_date` at `value`; the sinking fund keeps
// only its entries before the call.
double yield_to_call(double price, const kbond::engine::bond_args& args,
                     const kbond::engine::bond_desc& bond, int32_t call_date, const double* value,
                     int32_t* error) noexcept {
  kbond::engine::ShortenedBond called;
  *error = called.build(args, bond, call_date);
  if (*error != 0) return -1.0;
  called.args.redemption = value;
  int32_t kept = 0;
  while (args.sink_dates && kept < args.n_sink && args.sink_dates[kept] < call_date) ++kept;
  called.args.n_sink = kept;
  if (args.n_sink_ends > 0) called.args.n_sink_ends = kept;
  if (kept == 0) called.args.factor = nullptr;
  kbond::engine::ScopedDescription to_call(called.args);
  if (to_call.status != 0) {
    *error = to_call.status;
    return -1.0;
  }
  return kbond::engine::quoted_yield_from_price(price, to_call.desc, error);
}

}  // namespace

extern "C" KVL_EXPORT double KVL_API KVLbyworst(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double price, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const int32_t* call_dates,
    int32_t n_call_dates, const double* call_prices, int32_t n_call_prices,
    const double* coupon_tax, const double* discount_tax, const int32_t* horizon,
    const int32_t* yield_method, const int32_t* bd_flags, const int32_t* holidays,
    int32_t n_holidays, const double* factor, const int32_t* sink_dates, int32_t n_sink,
    const int32_t* sink_ends, int32_t n_sink_ends, const double* sink_amounts,
    const double* sink_premium, const int32_t* exdiv_days, int32_t* error) {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  err = check_call_schedule(dates, n_dates, call_dates, n_call_dates, call_prices,
                            n_call_prices);
  if (err != 0) return -1.0;
  // Redeemed at maturity at the last call price given, or at par.
  const double at_maturity = n_call_prices > 0 ? call_prices[n_call_prices - 1] : 100.0;
  const kbond::engine::bond_args args{
      .coupons = coupons, .n_coupons = n_coupons, .dates = dates, .n_dates = n_dates,
      .settlement = settlement, .dated_date = dated_date, .first_coupon = first_coupon,
      .type = type, .frequency = frequency, .n_frequency = n_frequency,
      .redemption = &at_maturity, .coupon_tax = coupon_tax, .discount_tax = discount_tax,
      .horizon = horizon, .yield_method = yield_method, .bd_flags = bd_flags,
      .holidays = holidays, .n_holidays = n_holidays, .factor = factor,
      .sink_dates = sink_dates, .n_sink = n_sink, .sink_ends = sink_ends,
      .n_sink_ends = n_sink_ends, .sink_amounts = sink_amounts, .sink_premium = sink_premium,
      .exdiv_days = exdiv_days};
  BondCall call(args, &err);
  if (!call.ok()) return -1.0;
  const auto& bond = call.desc();

  double worst = kbond::engine::quoted_yield_from_price(price, bond, &err);
  // Without a call schedule a failed yield to maturity ends the call. With
  // one, the walk goes on: the failed value stays the first candidate and
  // the later steps' codes replace its code.
  if (err != 0 && n_call_dates == 0) return worst;

  // From the last call back to the first still after settlement; a call
  // without its own price takes the one after it.
  const double* value = &at_maturity;
  for (int32_t i = n_call_dates - 1; i >= 0; --i) {
    const int32_t call_date = call_dates[i];
    if (call_date <= settlement) break;
    if (i < n_call_prices) value = &call_prices[i];
    const double y = yield_to_call(price, args, bond, call_date, value, &err);
    // Ties keep the candidate met first: the later date, or maturity.
    if (y < worst) worst = y;
  }
  return kbond::engine::round_yield_by_type(worst, bond.type);
}
