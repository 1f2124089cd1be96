// Business days over a caller's holiday list and two weekend flags.
// A NULL list or a zero count means no holidays; bad list arguments never
// fail, they behave as an empty list.
#pragma once
#include <cstdint>

namespace kbond::dates {

struct BusinessCalendar {
  const int32_t* holidays = nullptr;  // ascending date serials
  int32_t count = 0;
  int32_t sat_works = 0;              // Saturday is a business day
  int32_t sun_works = 0;              // Sunday is a business day
};

enum BusinessDayConvention : int32_t {
  kFollowing = 0, kPreceding = 1, kModifiedFollowing = 2, kUnadjusted = 3
};

bool is_working_weekday(int32_t date, const BusinessCalendar& cal) noexcept;
bool is_business_day(int32_t date, const BusinessCalendar& cal) noexcept;

// Index of the last holiday on or before `date`, searching from max(start, 0);
// -1 when the holiday at the start index is already after `date`; -2 for a
// NULL list, a zero count or a start past the end.
int32_t find_holiday_index(const int32_t* holidays, int32_t date, int32_t count, int32_t start) noexcept;

int32_t adjust_business_day(int32_t date, int32_t convention, const BusinessCalendar& cal) noexcept;

// n business days later (n > 0) or earlier (n < 0); n = 0 returns the date.
int32_t add_business_days(int32_t date, int32_t n, const BusinessCalendar& cal) noexcept;

// Last business day of the date's month, or -1 when the preceding business
// day of the month's last day lies in another month.
int32_t last_business_day_of_month(int32_t date, const BusinessCalendar& cal) noexcept;

}  // namespace kbond::dates
