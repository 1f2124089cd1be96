// Business days over a caller's ascending holiday list and two weekend flags.
//
// Long moves jump whole weeks at a time: a week always holds the same number
// of working weekdays, so only the holidays inside the jump need counting
// (by bisection in the list), and the remainder is walked day by day.
#include "dates/business_days.h"

#include <cstdint>

#include "dates/date_serial.h"

namespace kbond::dates {
namespace {

// Moves of up to this many weekdays, well inside the range of serials, are
// made by arithmetic.
constexpr int32_t kWeekdayShortcutDays = 100000;

bool has_list(const BusinessCalendar& cal) { return cal.holidays != nullptr && cal.count > 0; }

bool is_holiday(int32_t date, const BusinessCalendar& cal) {
  if (!has_list(cal)) return false;
  const int32_t i = find_holiday_index(cal.holidays, date, cal.count, 0);
  return i >= 0 && cal.holidays[i] == date;
}

// One business day forward (step = +1) or backward (step = -1); -1 when the
// walk would leave the range of serials.
int32_t step_business_day(int32_t date, int32_t step, const BusinessCalendar& cal) {
  do {
    if (date <= INT32_MIN + 1 || date >= INT32_MAX - 1) return -1;
    date += step;
  } while (!is_business_day(date, cal));
  return date;
}

// Number of distinct listed holidays on working weekdays in [first, last].
int32_t working_holidays_between(int32_t first, int32_t last, const BusinessCalendar& cal) {
  if (!has_list(cal) || last < first) return 0;
  int32_t i = find_holiday_index(cal.holidays, first - 1, cal.count, 0) + 1;  // first >= `first`
  if (i < 0) i = 0;
  int32_t found = 0;
  int32_t previous = INT32_MIN;
  for (; i < cal.count && cal.holidays[i] <= last; ++i) {
    const int32_t h = cal.holidays[i];
    if (h < first || h == previous) continue;
    previous = h;
    if (is_working_weekday(h, cal)) ++found;
  }
  return found;
}

// Monday to Friday without holidays, by arithmetic: whole weeks of five,
// then a remainder of fewer than five days that crosses at most one weekend.
// From a weekend day, reaching the nearest weekday is the first day moved.
int32_t add_weekdays(int32_t date, int32_t n) {
  int32_t weekday = weekday_of(date) - kMonday;  // -2 Saturday, -1 Sunday, 0 Monday .. 4 Friday
  int32_t r = n > 0 ? n : -n;
  if (weekday < 0) {
    if (n > 0) {
      date += weekday == -2 ? 2 : 1;
      weekday = 0;
    } else {
      date -= weekday == -2 ? 1 : 2;
      weekday = 4;
    }
    --r;
  }
  const int32_t weeks = r / 5;
  const int32_t rest = r % 5;
  if (n > 0) return date + 7 * weeks + rest + (weekday + rest > 4 ? 2 : 0);
  return date - 7 * weeks - rest - (rest > weekday ? 2 : 0);
}

}  // namespace

bool is_working_weekday(int32_t date, const BusinessCalendar& cal) noexcept {
  switch (weekday_of(date)) {
    case kSaturday: return cal.sat_works != 0;
    case kSunday: return cal.sun_works != 0;
    default: return true;
  }
}

bool is_business_day(int32_t date, const BusinessCalendar& cal) noexcept {
  return is_working_weekday(date, cal) && !is_holiday(date, cal);
}

int32_t find_holiday_index(const int32_t* holidays, int32_t date, int32_t count,
                           int32_t start) noexcept {
  if (start < 0) start = 0;
  if (holidays == nullptr || count <= 0 || start >= count) return -2;
  if (holidays[start] > date) return -1;
  // Invariant: holidays[lo] <= date, and every index >= hi is after date.
  int32_t lo = start, hi = count;
  while (hi - lo > 1) {
    const int32_t mid = lo + (hi - lo) / 2;
    if (holidays[mid] <= date) lo = mid;
    else hi = mid;
  }
  return lo;
}

int32_t adjust_business_day(int32_t date, int32_t convention, const BusinessCalendar& cal) noexcept {
  if (convention == kUnadjusted || is_business_day(date, cal)) return date;
  if (convention == kPreceding) return step_business_day(date, -1, cal);
  const int32_t following = step_business_day(date, +1, cal);
  if (convention != kModifiedFollowing) return following;

  int32_t d0, m0, y0, d1, m1, y1;
  if (serial_to_date(date, &d0, &m0, &y0) != 0 || serial_to_date(following, &d1, &m1, &y1) != 0)
    return following;
  if (m0 != m1 || y0 != y1) return step_business_day(date, -1, cal);
  return following;
}

int32_t add_business_days(int32_t date, int32_t n, const BusinessCalendar& cal) noexcept {
  if (n == 0) return date;
  if (!has_list(cal) && !cal.sat_works && !cal.sun_works && date > 0 &&
      date < kMaxSerial - kWeekdayShortcutDays && n >= -kWeekdayShortcutDays &&
      n <= kWeekdayShortcutDays)
    return add_weekdays(date, n);
  const int32_t step = n > 0 ? 1 : -1;
  int64_t remaining = n > 0 ? static_cast<int64_t>(n) : -static_cast<int64_t>(n);

  // From a weekend day or a holiday, reaching the nearest business day in the
  // direction of travel is the first business day moved.
  if (!is_business_day(date, cal)) {
    date = step_business_day(date, step, cal);
    if (date == -1) return -1;
    --remaining;
  }

  const int32_t days_per_week = 5 + (cal.sat_works ? 1 : 0) + (cal.sun_works ? 1 : 0);
  const int64_t weeks = remaining / days_per_week;
  if (weeks > 0) {
    const int64_t target = static_cast<int64_t>(date) + step * weeks * 7;
    if (target > kMaxSerial || target < kMinConvertibleSerial) return -1;
    const int32_t jumped = static_cast<int32_t>(target);
    // Working weekdays passed over: (date, jumped] forward, [jumped, date) backward.
    const int32_t holidays = step > 0 ? working_holidays_between(date + 1, jumped, cal)
                                      : working_holidays_between(jumped, date - 1, cal);
    remaining = remaining - weeks * days_per_week + holidays;
    date = jumped;  // a holiday here is among those counted, so walking on is right
  }
  for (; remaining > 0; --remaining) {
    date = step_business_day(date, step, cal);
    if (date == -1) return -1;
  }
  return date;
}

int32_t last_business_day_of_month(int32_t date, const BusinessCalendar& cal) noexcept {
  const int32_t month_end = end_of_month(date);
  if (month_end < 0) return -1;
  const int32_t last = adjust_business_day(month_end, kPreceding, cal);
  int32_t d0, m0, y0, d1, m1, y1;
  if (serial_to_date(month_end, &d0, &m0, &y0) != 0 || serial_to_date(last, &d1, &m1, &y1) != 0)
    return -1;
  return (m0 == m1 && y0 == y1) ? last : -1;
}

}  // namespace kbond::dates
