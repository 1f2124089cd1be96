// Day-count conventions, codes 0..14:
//   0 act/act   1 30/360   2 30E/360   3 30/365   4 act/360   5 act/365
//   6 30E/365   7 30/360(Feb)   8 30/365(Feb)   9 30E/360(Feb)
//  10 30E/365(Feb)  11 30E+/360  12 30E+/365  13 act/365 without 29 February
//  14 actual days over the calendar years' own lengths
#pragma once
#include <cstdint>

namespace kbond::dates {

// The day-count codes callers pass and the catalogue names.
enum DayCount : int8_t {
  kActAct = 0,
  k30_360 = 1,
  k30E_360 = 2,
  k30_365 = 3,
  kAct360 = 4,
  kAct365 = 5,
  k30E_365 = 6,
  k30_360Feb = 7,
  k30_365Feb = 8,
  k30E_360Feb = 9,
  k30E_365Feb = 10,
  k30EPlus360 = 11,
  k30EPlus365 = 12,
  kAct365Japanese = 13,
  kActCalendarYears = 14,
};

inline constexpr int32_t kDayCountCodes = 15;

// Days from start to end under the code. `error` (may be null) receives 0,
// or 1 for an unknown code (actual days are then returned).
int32_t counted_days(int32_t start, int32_t end, int32_t code, int32_t* error) noexcept;
// Inline for the actual-day codes that every coupon period asks for.
inline int32_t day_count(int32_t start, int32_t end, int32_t code, int32_t* error) noexcept {
  if (code == kActAct || code == kAct360 || code == kAct365) {
    if (error) *error = 0;
    return end - start;
  }
  return counted_days(start, end, code, error);
}

// Days in a year for the code; for code 0 the coupon period's length times
// the frequency; 0.0 for code 14 and unknown codes.
constexpr double year_basis(int32_t period_start, int32_t period_end, int32_t frequency,
                            int32_t code) noexcept {
  switch (code) {
    case kActAct: return static_cast<double>(period_end - period_start) * frequency;
    case k30_360: case k30E_360: case kAct360: case k30_360Feb: case k30E_360Feb:
    case k30EPlus360:
      return 360.0;
    case k30_365: case kAct365: case k30E_365: case k30_365Feb: case k30E_365Feb:
    case k30EPlus365: case kAct365Japanese:
      return 365.0;
    default: return 0.0;
  }
}

// Codes whose year has 365 days: 30/365, act/365, 30E/365, their February
// variants, 30E+/365 and the Japanese act/365. After the ex-dividend date
// such a bond owes the buyer the days left to the coupon over 365 rather
// than the rest of the coupon.
constexpr bool has_365_day_year(int32_t code) noexcept {
  return year_basis(0, 0, 1, code) == 365.0;
}

double year_fraction(int32_t start, int32_t end, int32_t code) noexcept;

// The date n convention days after `date`; 0 for codes it cannot serve.
int32_t add_convention_days(int32_t date, int32_t n, int32_t code, int32_t eom_flag) noexcept;

// Display name of a day-count code ("act/act", ..., "unknown").
const char* day_count_name(int32_t code) noexcept;

}  // namespace kbond::dates
