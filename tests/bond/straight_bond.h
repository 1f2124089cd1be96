// Test helpers for the straight-bond exports: a bond held as plain values
// whose optional arguments are passed only when set, and an independent
// spreadsheet-style price (the PRICE / ODDFPRICE construction: each cash
// flow discounted at (1 + y/f) to the power of its distance in periods).
#pragma once
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

#include "dates/date_serial.h"
#include "k_bond.h"

namespace kbond::testing {

inline int32_t ymd(int32_t y, int32_t m, int32_t d) { return dates::date_to_serial(d, m, y); }

template <class T>
const T* opt(const std::optional<T>& v) {
  return v ? &*v : nullptr;
}

struct StraightBond {
  std::vector<double> coupons;
  std::vector<int32_t> dates;
  std::optional<int32_t> type;
  std::optional<int32_t> dated, first;
  std::vector<int32_t> frequency;
  std::optional<double> redemption, coupon_tax, discount_tax, issue_price;
  std::optional<int32_t> horizon, yield_method, bd_flags, exdiv_days;
  std::vector<int32_t> holidays;
  std::optional<double> factor, sink_premium;
  std::vector<int32_t> sink_dates, sink_ends;
  std::vector<double> sink_amounts;

  StraightBond(double rate, int32_t maturity, int32_t bond_type)
      : coupons{rate}, dates{maturity}, type(bond_type) {}

  double price(int32_t settlement, double yield, int32_t* error) const {
    return KVLbpr(coupons.data(), static_cast<int32_t>(coupons.size()), dates.data(),
                  static_cast<int32_t>(dates.size()), settlement, yield, opt(dated), opt(first),
                  opt(type), frequency.empty() ? nullptr : frequency.data(),
                  static_cast<int32_t>(frequency.size()), opt(redemption), opt(coupon_tax),
                  opt(discount_tax), opt(horizon), opt(issue_price), opt(yield_method),
                  opt(bd_flags), holidays.empty() ? nullptr : holidays.data(),
                  static_cast<int32_t>(holidays.size()), opt(factor),
                  sink_dates.empty() ? nullptr : sink_dates.data(),
                  static_cast<int32_t>(sink_dates.size()),
                  sink_ends.empty() ? nullptr : sink_ends.data(),
                  static_cast<int32_t>(sink_ends.size()),
                  sink_amounts.empty() ? nullptr : sink_amounts.data(), opt(sink_premium),
                  opt(exdiv_days), error);
  }

  double accrued(int32_t settlement, int32_t* error) const {
    return KVLbai(coupons.data(), static_cast<int32_t>(coupons.size()), dates.data(),
                  static_cast<int32_t>(dates.size()), settlement, opt(dated), opt(first),
                  opt(type), frequency.empty() ? nullptr : frequency.data(),
                  static_cast<int32_t>(frequency.size()), opt(coupon_tax), opt(factor),
                  sink_dates.empty() ? nullptr : sink_dates.data(),
                  static_cast<int32_t>(sink_dates.size()),
                  sink_ends.empty() ? nullptr : sink_ends.data(),
                  static_cast<int32_t>(sink_ends.size()),
                  sink_amounts.empty() ? nullptr : sink_amounts.data(), opt(sink_premium),
                  opt(exdiv_days), error);
  }

  double accrued1(int32_t settlement, int32_t* error) const {
    return KVLbai1(coupons.data(), static_cast<int32_t>(coupons.size()), dates.data(),
                   static_cast<int32_t>(dates.size()), settlement, opt(dated), opt(first),
                   opt(type), frequency.empty() ? nullptr : frequency.data(),
                   static_cast<int32_t>(frequency.size()), opt(coupon_tax), opt(factor),
                   sink_dates.empty() ? nullptr : sink_dates.data(),
                   static_cast<int32_t>(sink_dates.size()),
                   sink_ends.empty() ? nullptr : sink_ends.data(),
                   static_cast<int32_t>(sink_ends.size()),
                   sink_amounts.empty() ? nullptr : sink_amounts.data(), opt(sink_premium),
                   opt(exdiv_days), opt(bd_flags), holidays.empty() ? nullptr : holidays.data(),
                   static_cast<int32_t>(holidays.size()), error);
  }
};

// Spreadsheet PRICE for a bond with n >= 1 coupons left, all per 100:
//   first_coupon    the next coupon (a regular one is 100 * rate / f)
//   regular_coupon  each later coupon
//   dsc_periods     settlement to next coupon, in periods (DSC / E)
//   accrued         accrued interest to subtract
// With `include_first` false the next coupon is left out (ex-dividend).
inline double sheet_price(double yield, int f, int n, double first_coupon, double regular_coupon,
                          double dsc_periods, double redemption, double accrued,
                          bool include_first = true) {
  const double v = 1.0 / (1.0 + yield / f);
  double dirty = include_first ? first_coupon * std::pow(v, dsc_periods) : 0.0;
  for (int k = 2; k <= n; ++k) dirty += regular_coupon * std::pow(v, k - 1 + dsc_periods);
  dirty += redemption * std::pow(v, n - 1 + dsc_periods);
  return dirty - accrued;
}

}  // namespace kbond::testing
