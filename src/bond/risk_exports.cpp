// Risk measures of a straight bond at a quoted yield: duration, convexity,
// the price value of a basis point, the yield value of a tick, and the
// coupon amount.
#include <cmath>

#include "bond/common_args.h"
#include "engine/call_frame.h"
#include "engine/catalogue.h"
#include "engine/price_measures.h"
#include "engine/yield_sensitivity.h"
#include "k_bond.h"

using kbond::engine::bond_desc;
using kbond::engine::BondCall;
using kbond::engine::BondSetUpCall;
using kbond::engine::kMeasureFailure;
using kbond::engine::YieldSensitivity;

extern "C" KVL_EXPORT double KVL_API KVLbdur(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double yield, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const int32_t* duration_kind, const double* coupon_tax, const double* discount_tax,
    const int32_t* horizon, const double* issue_price, const int32_t* yield_method,
    const int32_t* bd_flags, const int32_t* holidays, int32_t n_holidays, const double* factor,
    const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
    const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
    int32_t* error) {
  const auto args = kbond::bond::bond_args_without_eom(
      coupons, n_coupons, dates, n_dates, settlement, dated_date, first_coupon, type, frequency,
      n_frequency, redemption, coupon_tax, discount_tax, horizon, issue_price, yield_method,
      bd_flags, holidays, n_holidays, factor, sink_dates, n_sink, sink_ends, n_sink_ends,
      sink_amounts, sink_premium, exdiv_days);
  BondCall call(args, error);
  if (!call.ok()) return -1.0;
  return kbond::engine::bond_duration(yield, call.desc(), duration_kind && *duration_kind != 0,
                                      call.error());
}

extern "C" KVL_EXPORT double KVL_API KVLbconv(
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
  YieldSensitivity s;
  int32_t& err = call.error();
  err = kbond::engine::yield_sensitivity(yield, call.desc(), true, s);
  if (err == 0 && !(s.dirty > 0.0)) err = KVL_ERR_INVALID;
  if (err != 0) return kMeasureFailure;
  double curvature = s.second;
  if (s.converted) {
    const double q = s.quote_frequency;
    const double f = call.desc().frequency;
    curvature = s.ratio * s.ratio * s.second + (q - f) * s.ratio / ((q + yield) * f) * s.first;
  }
  return curvature / s.dirty;
}

extern "C" KVL_EXPORT double KVL_API KVLbvalbp(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double yield, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const double* coupon_tax, const double* discount_tax, const int32_t* horizon,
    const double* issue_price, const double* scale, const int32_t* yield_method,
    const int32_t* bd_flags, const int32_t* holidays, int32_t n_holidays, const double* factor,
    const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
    const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
    int32_t* error) {
  const auto args = kbond::bond::bond_args_without_eom(
      coupons, n_coupons, dates, n_dates, settlement, dated_date, first_coupon, type, frequency,
      n_frequency, redemption, coupon_tax, discount_tax, horizon, issue_price, yield_method,
      bd_flags, holidays, n_holidays, factor, sink_dates, n_sink, sink_ends, n_sink_ends,
      sink_amounts, sink_premium, exdiv_days);
  // A denormal outstanding factor or scale leaves no finite value.
  return kbond::engine::value_of_basis_point<BondCall>(
      args, scale, KVL_ERR_INVALID, error, [yield](const bond_desc& bond, int32_t& err) {
        YieldSensitivity sens;
        err = kbond::engine::yield_sensitivity(yield, bond, false, sens);
        double d = sens.first;
        // Per 100 of outstanding face for an amortising bond.
        if (bond.price_factor_flag) d /= bond.price_factor;
        return d * sens.ratio;
      });
}

extern "C" KVL_EXPORT double KVL_API KVLbval32(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double yield, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const double* coupon_tax, const double* discount_tax, const int32_t* horizon,
    const double* issue_price, const double* ticks_per_point, const int32_t* yield_method,
    const int32_t* bd_flags, const int32_t* holidays, int32_t n_holidays, const double* factor,
    const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
    const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
    int32_t* error) {
  // A bond settling on its maturity date does not move with the yield: no
  // tick value.
  return kbond::engine::tick_value(ticks_per_point, error, [&] {
    return KVLbvalbp(coupons, n_coupons, dates, n_dates, settlement, yield, dated_date,
                     first_coupon, type, frequency, n_frequency, redemption, coupon_tax,
                     discount_tax, horizon, issue_price, nullptr, yield_method, bd_flags,
                     holidays, n_holidays, factor, sink_dates, n_sink, sink_ends, n_sink_ends,
                     sink_amounts, sink_premium, exdiv_days, error);
  });
}

extern "C" KVL_EXPORT double KVL_API KVLbcamt(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* coupon_tax,
    const double* factor, const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends,
    int32_t n_sink_ends, const double* sink_amounts, const double* sink_premium, int32_t* error) {
  // Municipals that ignore odd coupons, and Canadian bonds under Bank of
  // Canada conventions, pay the coupons of their plain counterparts.
  int32_t coupon_type = 0;
  if (type) coupon_type = kbond::engine::accrual_substitute(*type);
  const kbond::engine::bond_args args{
      .coupons = coupons, .n_coupons = n_coupons, .dates = dates, .n_dates = n_dates,
      .settlement = settlement, .dated_date = dated_date, .first_coupon = first_coupon,
      .type = type ? &coupon_type : nullptr, .frequency = frequency, .n_frequency = n_frequency,
      .coupon_tax = coupon_tax, .factor = factor, .sink_dates = sink_dates, .n_sink = n_sink,
      .sink_ends = sink_ends, .n_sink_ends = n_sink_ends, .sink_amounts = sink_amounts,
      .sink_premium = sink_premium};
  BondSetUpCall call(args, error);
  if (!call.ok()) return -1.0;
  return call.desc().full_coupon * 100.0;
}
