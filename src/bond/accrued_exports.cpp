// KVLbai1 and KVLbai: accrued interest of a straight bond at settlement.
#include "engine/call_frame.h"
#include "engine/market_rules.h"
#include "k_bond.h"

using kbond::engine::bond_args;
using kbond::engine::BondSetUpCall;

extern "C" KVL_EXPORT double KVL_API KVLbai1(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* coupon_tax,
    const double* factor, const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends,
    int32_t n_sink_ends, const double* sink_amounts, const double* sink_premium,
    const int32_t* exdiv_days, const int32_t* bd_flags, const int32_t* holidays,
    int32_t n_holidays, int32_t* error) {
  // Municipals that ignore odd coupons for pricing, and Canadian bonds under
  // Bank of Canada conventions, accrue like their plain counterparts.
  int32_t accrual_type = 0;
  if (type) accrual_type = kbond::engine::accrual_substitute(*type);
  const bond_args args{.coupons = coupons, .n_coupons = n_coupons, .dates = dates,
                       .n_dates = n_dates, .settlement = settlement, .dated_date = dated_date,
                       .first_coupon = first_coupon, .type = type ? &accrual_type : nullptr,
                       .frequency = frequency, .n_frequency = n_frequency, .coupon_tax = coupon_tax,
                       .bd_flags = bd_flags, .holidays = holidays, .n_holidays = n_holidays,
                       .factor = factor, .sink_dates = sink_dates, .n_sink = n_sink,
                       .sink_ends = sink_ends, .n_sink_ends = n_sink_ends,
                       .sink_amounts = sink_amounts, .sink_premium = sink_premium,
                       .exdiv_days = exdiv_days};
  BondSetUpCall call(args, error);
  if (!call.ok()) return -1.0;
  return kbond::engine::accrued_per_100(call.desc().accrued, call.desc().type);
}

extern "C" KVL_EXPORT double KVL_API KVLbai(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* coupon_tax,
    const double* factor, const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends,
    int32_t n_sink_ends, const double* sink_amounts, const double* sink_premium,
    const int32_t* exdiv_days, int32_t* error) {
  return KVLbai1(coupons, n_coupons, dates, n_dates, settlement, dated_date, first_coupon, type,
                 frequency, n_frequency, coupon_tax, factor, sink_dates, n_sink, sink_ends,
                 n_sink_ends, sink_amounts, sink_premium, exdiv_days, nullptr, nullptr, 0, error);
}
