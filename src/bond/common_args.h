// The common bond arguments as the straight-bond exports receive them, in
// one record. Most exports take all of them except the end-of-month
// override (which only the schedule functions expose); they build their
// record with `bond_args_without_eom` in the order of the argument block;
// those that take only the bond's terms (no calendar, amortisation or
// ex-dividend days) start from `bond_terms`.
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::bond {

inline engine::bond_args bond_args_without_eom(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const double* coupon_tax, const double* discount_tax, const int32_t* horizon,
    const double* issue_price, const int32_t* yield_method, const int32_t* bd_flags,
    const int32_t* holidays, int32_t n_holidays, const double* factor, const int32_t* sink_dates,
    int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends, const double* sink_amounts,
    const double* sink_premium, const int32_t* exdiv_days) noexcept {
  return engine::bond_args{
      .coupons = coupons, .n_coupons = n_coupons, .dates = dates, .n_dates = n_dates,
      .settlement = settlement, .dated_date = dated_date, .first_coupon = first_coupon,
      .type = type, .frequency = frequency, .n_frequency = n_frequency,
      .redemption = redemption, .coupon_tax = coupon_tax, .discount_tax = discount_tax,
      .eom = nullptr, .horizon = horizon, .issue_price = issue_price,
      .yield_method = yield_method, .bd_flags = bd_flags, .holidays = holidays,
      .n_holidays = n_holidays, .factor = factor, .sink_dates = sink_dates, .n_sink = n_sink,
      .sink_ends = sink_ends, .n_sink_ends = n_sink_ends, .sink_amounts = sink_amounts,
      .sink_premium = sink_premium, .exdiv_days = exdiv_days};
}

inline engine::bond_args bond_terms(const double* coupons, int32_t n_coupons,
                                    const int32_t* dates, int32_t n_dates, int32_t settlement,
                                    const int32_t* dated_date, const int32_t* first_coupon,
                                    const int32_t* type, const int32_t* frequency,
                                    int32_t n_frequency, const double* redemption,
                                    const double* coupon_tax, const double* discount_tax,
                                    const int32_t* horizon, const double* issue_price,
                                    const int32_t* yield_method) noexcept {
  return engine::bond_args{
      .coupons = coupons, .n_coupons = n_coupons, .dates = dates, .n_dates = n_dates,
      .settlement = settlement, .dated_date = dated_date, .first_coupon = first_coupon,
      .type = type, .frequency = frequency, .n_frequency = n_frequency,
      .redemption = redemption, .coupon_tax = coupon_tax, .discount_tax = discount_tax,
      .horizon = horizon, .issue_price = issue_price, .yield_method = yield_method};
}

}  // namespace kbond::bond
