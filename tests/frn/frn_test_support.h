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

struct Note {
  int32_t type = 0;
  std::vector<double> rates{0.05};
  std::vector<int32_t> rate_dates{ymd(2025, 12, 15)};
  int32_t maturity = ymd(2030, 6, 15);
  int32_t settlement = ymd(2026, 3, 1);
  const int32_t* previous_coupon = nullptr;
  std::vector<int32_t> coupon_dates;
  const int32_t* day_count = nullptr;
  const int32_t* frequency = nullptr;
  const double* redemption = nullptr;
  const double* income_tax = nullptr;
  const double* gain_tax = nullptr;
  const int32_t* holding = nullptr;
  const int32_t* pay_on_business_day = nullptr;
  const int32_t* adjustment_code = nullptr;
  const int32_t* holiday_options = nullptr;
  std::vector<int32_t> holidays;

  int32_t rate_count() const { return static_cast<int32_t>(rates.size()); }
  const int32_t* coupons() const { return coupon_dates.empty() ? nullptr : coupon_dates.data(); }
  int32_t coupon_count() const { return static_cast<int32_t>(coupon_dates.size()); }
  const int32_t* hols() const { return holidays.empty() ? nullptr : holidays.data(); }
  int32_t holiday_count() const { return static_cast<int32_t>(holidays.size()); }

  double accrued(int32_t* err) const {
    return KVLtfrnai(type, rates.data(), rate_dates.data(), rate_count(), maturity, settlement,
                     previous_coupon, coupons(), coupon_count(), day_count, frequency,
                     adjustment_code, holiday_options, hols(), holiday_count(), err);
  }
  double price(double yield, int32_t* err) const {
    return KVLtfrnpr(type, rates.data(), rate_dates.data(), rate_count(), maturity, settlement, yield,
                     previous_coupon, coupons(), coupon_count(), day_count, frequency, redemption,
                     income_tax, gain_tax, holding, pay_on_business_day, adjustment_code,
                     holiday_options, hols(), holiday_count(), err);
  }
  double yield(double price, int32_t* err) const {
    return KVLtfrnyld(type, rates.data(), rate_dates.data(), rate_count(), maturity, settlement, price,
                      previous_coupon, coupons(), coupon_count(), day_count, frequency, redemption,
                      income_tax, gain_tax, holding, pay_on_business_day, adjustment_code,
                      holiday_options, hols(), holiday_count(), err);
  }
  double duration(double yield, const int32_t* macaulay, int32_t* err) const {
    return KVLtfrndur(type, rates.data(), rate_dates.data(), rate_count(), maturity, settlement, yield,
                      previous_coupon, coupons(), coupon_count(), day_count, frequency, redemption,
                      macaulay, income_tax, gain_tax, holding, pay_on_business_day, adjustment_code,
                      holiday_options, hols(), holiday_count(), err);
  }
  double convexity(double yield, int32_t* err) const {
    return KVLtfrnconv(type, rates.data(), rate_dates.data(), rate_count(), maturity, settlement, yield,
                       previous_coupon, coupons(), coupon_count(), day_count, frequency, redemption,
                       income_tax, gain_tax, holding, pay_on_business_day, adjustment_code,
                       holiday_options, hols(), holiday_count(), err);
  }
  double value_bp(double yield, const double* divisor, int32_t* err) const {
    return KVLtfrnvalbp(type, rates.data(), rate_dates.data(), rate_count(), maturity, settlement,
                        yield, previous_coupon, coupons(), coupon_count(), day_count, frequency,
                        redemption, income_tax, gain_tax, holding, divisor, pay_on_business_day,
                        adjustment_code, holiday_options, hols(), holiday_count(), err);
  }
  double value_32(double yield, const double* divisor, int32_t* err) const {
    return KVLtfrnval32(type, rates.data(), rate_dates.data(), rate_count(), maturity, settlement,
                        yield, previous_coupon, coupons(), coupon_count(), day_count, frequency,
                        redemption, income_tax, gain_tax, holding, divisor, pay_on_business_day,
                        adjustment_code, holiday_options, hols(), holiday_count(), err);
  }
  int32_t cash_flows(int32_t** dates, double** amounts, const double* price, int32_t* err) const {
    return KVLtfrncshflw(dates, amounts, type, rates.data(), rate_dates.data(), rate_count(), maturity,
                         settlement, previous_coupon, coupons(), coupon_count(), day_count,
                         frequency, redemption, income_tax, gain_tax, holding, price,
                         pay_on_business_day, adjustment_code, holiday_options, hols(),
                         holiday_count(), err);
  }
};

}  // namespace kbond::frn::testing
