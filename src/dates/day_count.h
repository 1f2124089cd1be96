// Day-count conventions, codes 0..14:
//   0 act/act   1 30/360   2 30E/360   3 30/365   4 act/360   5 act/365
//   6 30E/365   7 30/360(Feb)   8 30/365(Feb)   9 30E/360(Feb)
//  10 30E/365(Feb)  11 30E+/360  12 30E+/365  13 act/365 without 29 February
//  14 actual days over the calendar years' own lengths
#pragma once
#include <cstdint>

namespace kbond::dates {

inline constexpr int32_t kDayCountCodes = 15;

// Days from start to end under the code. `error` (may be null) receives 0,
// or 1 for an unknown code (actual days are then returned).
int32_t counted_days(int32_t start, int32_t end, int32_t code, int32_t* error) noexcept;
// Inline for the actual-day codes that every coupon period asks for.
inline int32_t day_count(int32_t start, int32_t end, int32_t code, int32_t* error) noexcept {
  if (code == 0 || code == 4 || code == 5) {
    if (error) *error = 0;
    return end - start;
  }
  return counted_days(start, end, code, error);
}

// Days in a year for the code; for code 0 the coupon period's length times
// the frequency; 0.0 for code 14 and unknown codes.
inline double year_basis(int32_t period_start, int32_t period_end, int32_t frequency,
                         int32_t code) noexcept {
  switch (code) {
    case 0: return static_cast<double>(period_end - period_start) * frequency;
    case 1: case 2: case 4: case 7: case 9: case 11: return 360.0;
    case 3: case 5: case 6: case 8: case 10: case 12: case 13: return 365.0;
    default: return 0.0;
  }
}

// Codes whose year has 365 days: 30/365, act/365, 30E/365, their February
// variants, 30E+/365 and the Japanese act/365 (those year_basis counts 365
// days for). After the ex-dividend date such a bond owes the buyer the days
// left to the coupon over 365 rather than the rest of the coupon.
constexpr bool has_365_day_year(int32_t code) noexcept {
  switch (code) {
    case 3: case 5: case 6: case 8: case 10: case 12: case 13: return true;
    default: return false;
  }
}

double year_fraction(int32_t start, int32_t end, int32_t code) noexcept;

// The date n convention days after `date`; 0 for codes it cannot serve.
int32_t add_convention_days(int32_t date, int32_t n, int32_t code, int32_t eom_flag) noexcept;

// Display name of a day-count code ("act/act", ..., "unknown").
const char* day_count_name(int32_t code) noexcept;

}  // namespace kbond::dates
