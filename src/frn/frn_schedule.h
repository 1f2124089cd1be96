// Placing a floating-rate note's current coupon period around settlement.
//
// The next coupon date comes, in order of preference, from the caller's list
// of reset dates (its first date after settlement), from rolling a known
// reset date (the last listed one, or the previous coupon date) forward by
// whole periods past settlement, or from stepping back from maturity. The
// previous coupon date is the caller's, the listed date before the next one,
// or one period before the next coupon date.
#pragma once
#include <cstdint>

#include "dates/business_days.h"
#include "frn/frn_reset_grid.h"
#include "frn/frn_type.h"

namespace kbond::frn {

struct FrnSchedule {
  int32_t maturity = 0;
  int32_t settlement = 0;
  int32_t previous_coupon = 0;
  int32_t next_coupon = 0;               // after business-day adjustment
  int32_t anchor = 0;                    // date the month stepping is anchored at
  const int32_t* later_resets = nullptr; // caller's reset dates after next_coupon
  int32_t later_count = 0;
  const int32_t* holidays = nullptr;
  int32_t holiday_count = 0;
  FrnType* type = nullptr;               // the call's working copy
  FrnResetGrid grid;                     // the grid next_coupon was stepped on
  int32_t next_index = 0;                // next_coupon's unadjusted position on `grid`

  dates::BusinessCalendar calendar() const noexcept {
    return {holidays, holiday_count, type->holiday_option_a, type->holiday_option_b != 0};
  }
  // Business-day rule 0..2 moves dates; 3 leaves them as they are.
  bool adjusts_dates() const noexcept { return type->business_day_rule < 3; }
  int32_t adjust(int32_t date) const noexcept;
};

// Fills *schedule from maturity, settlement, the optional previous coupon
// date, the caller's ascending reset dates (n may be 0) and holiday list.
// Returns 0 or an error code: 50 missing list or record, 60 negative count,
// 150 bad date, 160 misordered dates, 300 day count, 301 frequency.
// Also completes the record's year length when it is 0.
int32_t frn_schedule_setup(FrnType* type, int32_t maturity, int32_t settlement,
                           const int32_t* previous_coupon, const int32_t* reset_dates,
                           int32_t reset_count, const int32_t* holidays, int32_t holiday_count,
                           FrnSchedule* schedule) noexcept;

}  // namespace kbond::frn
