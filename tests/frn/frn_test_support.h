// Shared helpers of the FRN tests: calendar dates as serials, and a note
// description whose fields default to NULL / 0 so each test sets only what
// it is about.
#pragma once
#include <cstdint>
#include <vector>

#include "dates/date_serial.h"
#include "k_bond.h"

namespace kbond::frn::testing {

inline int32_t ymd(int32_t year, int32_t month, int32_t day) {
  return kbond::dates::date_to_serial(day, month, year);
}

// The argument runs every typed FRN analytic shares.
#define KBOND_FRN_NOTE type, rates.data(), rate_dates.data(), static_cast<int32_t>(rates.size()), maturity, settlement
#define KBOND_FRN_PERIODS previous_coupon, coupons(), static_cast<int32_t>(coupon_dates.size()), day_count, frequency
#define KBOND_FRN_TAXES redemption, income_tax, gain_tax, holding
#define KBOND_FRN_DATES \
  pay_on_business_day, adjustment_code, holiday_options, hols(), static_cast<int32_t>(holidays.size()), err

struct Note {
  int32_t type = 0;
  std::vector<double> rates{0.05};
  std::vector<int32_t> rate_dates{ymd(2025, 12, 15)};
  int32_t maturity = ymd(2030, 6, 15);
  int32_t settlement = ymd(2026, 3, 1);
  const int32_t* previous_coupon = nullptr;
  std::vector<int32_t> coupon_dates;
  const int32_t *day_count = nullptr, *frequency = nullptr, *holding = nullptr;
  const double *redemption = nullptr, *income_tax = nullptr, *gain_tax = nullptr;
  const int32_t *pay_on_business_day = nullptr, *adjustment_code = nullptr, *holiday_options = nullptr;
  std::vector<int32_t> holidays;

  const int32_t* coupons() const { return coupon_dates.empty() ? nullptr : coupon_dates.data(); }
  const int32_t* hols() const { return holidays.empty() ? nullptr : holidays.data(); }

  double accrued(int32_t* err) const {
    return KVLtfrnai(KBOND_FRN_NOTE, KBOND_FRN_PERIODS, adjustment_code, holiday_options, hols(),
                     static_cast<int32_t>(holidays.size()), err);
  }
  double price(double y, int32_t* err) const { return KVLtfrnpr(KBOND_FRN_NOTE, y, KBOND_FRN_PERIODS, KBOND_FRN_TAXES, KBOND_FRN_DATES); }
  double yield(double p, int32_t* err) const { return KVLtfrnyld(KBOND_FRN_NOTE, p, KBOND_FRN_PERIODS, KBOND_FRN_TAXES, KBOND_FRN_DATES); }
  double duration(double y, const int32_t* macaulay, int32_t* err) const {
    return KVLtfrndur(KBOND_FRN_NOTE, y, KBOND_FRN_PERIODS, redemption, macaulay, income_tax, gain_tax, holding, KBOND_FRN_DATES);
  }
  double convexity(double y, int32_t* err) const { return KVLtfrnconv(KBOND_FRN_NOTE, y, KBOND_FRN_PERIODS, KBOND_FRN_TAXES, KBOND_FRN_DATES); }
  double value_bp(double y, const double* divisor, int32_t* err) const {
    return KVLtfrnvalbp(KBOND_FRN_NOTE, y, KBOND_FRN_PERIODS, KBOND_FRN_TAXES, divisor, KBOND_FRN_DATES);
  }
  double value_32(double y, const double* divisor, int32_t* err) const {
    return KVLtfrnval32(KBOND_FRN_NOTE, y, KBOND_FRN_PERIODS, KBOND_FRN_TAXES, divisor, KBOND_FRN_DATES);
  }
  int32_t cash_flows(int32_t** dates, double** amounts, const double* price, int32_t* err) const {
    return KVLtfrncshflw(dates, amounts, KBOND_FRN_NOTE, KBOND_FRN_PERIODS, KBOND_FRN_TAXES, price, KBOND_FRN_DATES);
  }
};

#undef KBOND_FRN_NOTE
#undef KBOND_FRN_PERIODS
#undef KBOND_FRN_TAXES
#undef KBOND_FRN_DATES

}  // namespace kbond::frn::testing
