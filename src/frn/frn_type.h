// The FRN type: the small record of conventions that describes a floating-rate
// note to every FRN function, and the validation of its fields.
//
// A caller either uses the defaults (semi-annual resets, actual/360, dates not
// adjusted) or registers a record once with KVLfrntype and passes its handle to
// the typed functions (KVLtfrn...). Each call works on a private copy.
#pragma once
#include <cstdint>

namespace kbond::frn {

// FRN day-count codes.
enum FrnDayCount : int32_t {
  kFrnAct360 = 0,       // actual days over 360
  kFrnAct365 = 1,       // actual days over 365
  kFrnActLeap = 2,      // actual days over 365.25; accrual year 366 or 365
  kFrnThirty360 = 3,    // 30/360 (U.S.), 360
  kFrnThirtyE360 = 4,   // 30E/360 (Eurobond), 360
  kFrnActPeriod = 5,    // actual days, accrual year = period length x frequency
};

struct FrnType {
  int32_t frequency = 2;           // resets per year: 1, 2, 3, 4, 6, 12, 26, 52
  int32_t day_count = kFrnAct360;  // FrnDayCount
  int32_t business_day_rule = 3;   // 0 following, 1 preceding, 2 modified following, 3 none
  int32_t end_of_month = 0;        // month stepping keeps month ends
  int32_t holiday_option_a = 0;    // 1: Saturday is a business day
  int32_t holiday_option_b = 0;    // 2: Sunday is a business day
  int32_t option_flag = 0;         // 1: pay and discount on business-day-adjusted dates
  int32_t reserved_a = 0;
  double year_length = 0.0;        // days per year for annualising; 0 = from day_count
  int32_t extra_accrual_days = 0;  // added to the accrued days of accrued interest
  int32_t reserved_b[7] = {0, 0, 0, 0, 0, 0, 0};
};

// Validation of single fields; each returns 0 or the field's error code.
int32_t check_frequency(int32_t frequency) noexcept;          // 301
int32_t check_day_count(int32_t day_count) noexcept;          // 300
int32_t check_business_day_rule(int32_t rule) noexcept;       // 302
int32_t check_end_of_month(int32_t flag) noexcept;            // 303
int32_t check_holiday_options(int32_t options) noexcept;      // 304
int32_t check_option_flag(int32_t flag) noexcept;             // 305
int32_t check_year_length(double year_length) noexcept;       // 306

// Day stepping (26 and 52 resets a year) moves by whole weeks, never months.
inline bool steps_by_days(int32_t frequency) noexcept { return frequency == 26 || frequency == 52; }
inline int32_t period_days(int32_t frequency) noexcept { return frequency == 26 ? 14 : 7; }
inline int32_t period_months(int32_t frequency) noexcept { return 12 / frequency; }

// Year length implied by the day count when the record leaves it at 0.
// -1.0 for a code outside 0..5.
double default_year_length(int32_t day_count) noexcept;

// The optional overrides of KVLfrntype, in their validation order.
struct FrnTypeOverrides {
  const int32_t* frequency = nullptr;
  const int32_t* day_count = nullptr;
  const int32_t* business_day_rule = nullptr;
  const int32_t* end_of_month = nullptr;
  const int32_t* holiday_options = nullptr;
  const int32_t* option_flag = nullptr;
  const double* year_length = nullptr;
  const int32_t* extra_accrual_days = nullptr;
};

// Applies the overrides to `record` in order, each validated before it is
// stored. Returns 0, or the code of the first invalid one (the record then
// holds the fields applied before it).
int32_t apply_overrides(FrnType& record, const FrnTypeOverrides& overrides) noexcept;

// Registers a record derived from `base` (0 = the defaults) and the
// overrides. Returns the new handle with *error = 0, or 0 with *error set
// (901 unknown base, 300..306 invalid field, -50 no memory).
int32_t create_frn_type(int32_t base, const FrnTypeOverrides& overrides, int32_t* error) noexcept;

}  // namespace kbond::frn
