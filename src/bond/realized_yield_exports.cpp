// KVLbryld: the realized compound yield of a bond held to maturity when its
// coupons are reinvested at a given rate.
#include <cmath>

#include "bond/common_args.h"
#include "engine/cash_flow_walk.h"
#include "engine/call_frame.h"
#include "engine/evaluator_common.h"
#include "engine/safe_math.h"
#include "k_bond.h"

using kbond::engine::BondCall;

extern "C" KVL_EXPORT double KVL_API KVLbryld(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double price, double reinvestment_rate, const int32_t* dated_date,
    const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
    int32_t n_frequency, const double* redemption, const double* coupon_tax,
    const double* discount_tax, const int32_t* horizon, const double* issue_price,
    const int32_t* yield_method, const int32_t* bd_flags, const int32_t* holidays,
    int32_t n_holidays, int32_t* error) {
  auto args = kbond::bond::bond_terms(coupons, n_coupons, dates, n_dates, settlement,
                                      dated_date, first_coupon, type, frequency, n_frequency,
                                      redemption, coupon_tax, discount_tax, horizon, issue_price,
                                      yield_method);
  args.bd_flags = bd_flags;
  args.holidays = holidays;
  args.n_holidays = n_holidays;
  BondCall call(args, error);
  if (!call.ok()) return -1.0;
  int32_t& err = call.error();
  const auto& bond = call.desc();
  const double f = bond.frequency;
  const double growth = 1.0 + reinvestment_rate / f;
  // A rate near 1e100 (or infinite) compounds past every finite value.
  if (!(growth > 0.0) || !kbond::engine::plausible_magnitude(reinvestment_rate)) {
    err = KVL_ERR_BAD_RATE;
    return -1.0;
  }
  // The gain to redemption is taxed when the bond was bought below it: as
  // income when the current coupon (the next one paid) falls before the tax
  // cut-over date, else as a capital gain.
  double redeemed = bond.redemption;
  if (bond.discount_tax != 0.0 && bond.redemption > price) {
    const double rate =
        bond.next_coupon < bond.horizon_date ? bond.coupon_tax : bond.discount_tax;
    redeemed -= rate * (bond.redemption - price);
  }

  // Each coupon (net of withholding tax) grows at the reinvestment rate from
  // its payment to maturity; N is the periods from settlement to maturity.
  double n_periods = 0.0;
  kbond::engine::walk_cash_flows(bond, [&](const kbond::engine::CashFlowRow& row) {
    if (row.at_maturity) n_periods = row.nominal_periods;
  });
  double future = redeemed * 0.01;
  kbond::engine::walk_cash_flows(bond, [&](const kbond::engine::CashFlowRow& row) {
    if (row.coupon != 0.0)
      future += row.coupon * kbond::engine::safe_pow(growth, n_periods - row.nominal_periods);
  });
  const double dirty = price * 0.01 + bond.accrued;
  if (!(dirty > 0.0) || !(n_periods > 0.0)) {
    err = KVL_ERR_INVALID;
    return -1.0;
  }
  const double yield = (kbond::engine::safe_pow(future / dirty, 1.0 / n_periods) - 1.0) * f;
  if (!std::isfinite(yield)) {
    err = KVL_ERR_INVALID;
    return -1.0;
  }
  return yield;
}
