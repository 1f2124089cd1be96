// Day-count conventions: days between dates, days per year, year fractions,
// and stepping a date by convention days.
//
// The 30-day codes share one 30/360 rule with five variants:
//   1  U.S. bond basis: the end's 31st becomes 30 only when the start is the 30th/31st
//   7  U.S. bond basis with the February rule (last day of February counts as the 30th)
//   2  Eurobond basis: every 31st becomes 30
//   9  Eurobond basis that also treats the end of February as the 30th
//  11  30E+: an end on the 31st moves to the 1st of the next month
// Codes 3, 6, 8, 10, 12 count like 1, 2, 7, 9, 11 over a 365-day year.
#include "dates/day_count.h"

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "k_bond.h"

namespace kbond::dates {
namespace {

constexpr double kOver360 = 0.002777777777777778;
constexpr double kOver365 = 0.0027397260273972603;
constexpr int32_t kFeb29_1904 = 1520;

bool is_last_of_february(int32_t day, int32_t month, int32_t year) {
  return month == 2 && day == days_in_month(2, year);
}

// The 30/360 variant a 30-day code counts with; 0 for the other codes.
int32_t thirty_360_variant(int32_t code) {
  switch (code) {
    case k30_360: case k30_365: return k30_360;
    case k30E_360: case k30E_365: return k30E_360;
    case k30_360Feb: case k30_365Feb: return k30_360Feb;
    case k30E_360Feb: case k30E_365Feb: return k30E_360Feb;
    case k30EPlus360: case k30EPlus365: return k30EPlus360;
    default: return 0;
  }
}

int32_t thirty_360(int32_t start, int32_t end, int32_t variant) {
  if (start == end) return 0;
  if (end < start) return -thirty_360(end, start, variant);
  int32_t d1, m1, y1, d2, m2, y2;
  if (serial_to_date(start, &d1, &m1, &y1) != 0 || serial_to_date(end, &d2, &m2, &y2) != 0)
    return end - start;

  const bool start_last_feb = is_last_of_february(d1, m1, y1);
  const bool end_last_feb = is_last_of_february(d2, m2, y2);

  if (d1 == 31) d1 = 30;
  if ((variant == 7 || variant == 9) && start_last_feb) d1 = 30;

  if (variant == 11) {
    if (d2 == 31) {
      d2 = 1;
      if (++m2 > 12) {
        m2 = 1;
        ++y2;
      }
    }
  } else if (variant == 2 || variant == 9) {
    if (d2 == 31) d2 = 30;
    if (variant == 9 && end_last_feb) d2 = 30;
  } else {  // variants 1 and 7
    if (d2 == 31 && d1 == 30) d2 = 30;
    if (variant == 7 && end_last_feb && d1 == 30 && m1 == 2) d2 = 30;
  }
  return 360 * (y2 - y1) + 30 * (m2 - m1) + (d2 - d1);
}

// Actual days leaving out every 29 February; symmetric in its arguments.
int32_t days_without_leap_day(int32_t start, int32_t end) {
  if (start == end) return 0;
  if (end < start) {
    const int32_t t = start;
    start = end;
    end = t;
  }
  int32_t d1, m1, y1, d2, m2, y2;
  if (serial_to_date(start, &d1, &m1, &y1) != 0 || serial_to_date(end, &d2, &m2, &y2) != 0)
    return end - start;
  if (d2 == 29 && m2 == 2) d2 = 28;
  if (d1 == 29 && m1 == 2) {
    d1 = 28;
    --start;
  }
  // Anniversary-style split: whole years of 365 days plus the days from
  // `start` to the first date on or after it with the day and month of `end`.
  const bool end_before_start_in_year = m2 < m1 || (m2 == m1 && d2 < d1);
  const int32_t year = end_before_start_in_year ? y1 + 1 : y1;
  const int32_t anniversary = date_to_serial(d2, m2, year);

  // The last 29 February on or before anniversary - 1; one lies in that part year
  // when it is not before the start.
  const int32_t last_leap_day = schedule_date(anniversary - 1, 0, 12, kFeb29_1904, 1, nullptr);
  int32_t leap_day_day = 0, unused_month, unused_year;
  serial_to_date(last_leap_day, &leap_day_day, &unused_month, &unused_year);
  const int32_t leap = (last_leap_day >= start && leap_day_day == 29) ? 1 : 0;

  return (anniversary - start) - leap + 365 * (y2 - year);
}

}  // namespace

int32_t counted_days(int32_t start, int32_t end, int32_t code, int32_t* error) noexcept {
  if (error) *error = 0;
  const int32_t variant = thirty_360_variant(code);
  if (variant != 0) return thirty_360(start, end, variant);
  switch (code) {
    case kActAct: case kAct360: case kAct365: case kActCalendarYears: return end - start;
    case kAct365Japanese: return days_without_leap_day(start, end);
    default:
      if (error) *error = KVL_ERR_INVALID;
      return end - start;
  }
}

double year_fraction(int32_t start, int32_t end, int32_t code) noexcept {
  if (code == kAct365Japanese) return days_without_leap_day(start, end) * kOver365;
  if (end < start) return -year_fraction(end, start, code);

  int32_t d1, m1, y1, d2, m2, y2;
  if (serial_to_date(start, &d1, &m1, &y1) != 0 || serial_to_date(end, &d2, &m2, &y2) != 0)
    return 0.0;

  // Whole years up to the last anniversary of the start, then the part year.
  const bool end_before_start_in_year = m2 < m1 || (m2 == m1 && d2 < d1);
  const int32_t anniversary_year = end_before_start_in_year ? y2 - 1 : y2;
  const double whole_years = anniversary_year - y1;
  const int32_t anniversary = date_to_serial(d1, m1, anniversary_year);
  const int32_t part_days = day_count(anniversary, end, code, nullptr);

  switch (code) {
    case k30_360: case k30E_360: case kAct360: case k30_360Feb: case k30E_360Feb: case k30EPlus360:
      return whole_years + part_days * kOver360;
    case k30_365: case kAct365: case k30E_365: case k30_365Feb: case k30E_365Feb: case k30EPlus365:
      return whole_years + part_days * kOver365;
    case kActCalendarYears:
      if (anniversary_year != y2) {  // the part year crosses a year end
        const int32_t new_year = date_to_serial(1, 1, anniversary_year + 1);
        return whole_years +
               static_cast<double>(day_count(anniversary, new_year, code, nullptr)) /
                   days_in_year(anniversary_year) +
               static_cast<double>(day_count(new_year, end, code, nullptr)) / days_in_year(y2);
      }
      return whole_years + static_cast<double>(part_days) / days_in_year(y2);
    default:
      return whole_years + static_cast<double>(part_days) / days_in_year(y2);
  }
}

int32_t add_convention_days(int32_t date, int32_t n, int32_t code, int32_t eom_flag) noexcept {
  if (n == 0) return date;
  if (code == kActAct || code == kAct360 || code == kAct365 || code == kActCalendarYears) {
    const int64_t moved = static_cast<int64_t>(date) + n;
    return (moved > kMaxSerial || moved < INT32_MIN) ? -1 : static_cast<int32_t>(moved);
  }
  int32_t d, m, y;
  if (serial_to_date(date, &d, &m, &y) != 0) return 0;

  const bool last_of_february = is_last_of_february(d, m, y);
  int32_t base;
  switch (code) {
    case k30_360: case k30E_360: case k30_365: case k30E_365: case k30EPlus360: case k30EPlus365:
      base = (d == 31 || (eom_flag && last_of_february)) ? 30 : d;
      break;
    case k30_360Feb: case k30_365Feb: case k30E_360Feb: case k30E_365Feb:
      base = (d == 31 || last_of_february) ? 30 : d;
      break;
    default:
      return 0;
  }

  int32_t new_year = y + n / 360;
  const int32_t rest = n % 360;
  int32_t new_month = m + rest / 30;
  int32_t new_day = base + rest % 30;
  if (new_day < 1) {
    --new_month;
    new_day += 30;
  } else if (new_day > 30) {
    ++new_month;
    new_day -= 30;
  }
  while (new_month > 12) {
    new_month -= 12;
    ++new_year;
  }
  while (new_month < 1) {
    new_month += 12;
    --new_year;
  }
  if (new_year < 200) return 0;

  const int32_t length = days_in_month(new_month, new_year);
  if (new_day > length) new_day = length;
  if (eom_flag && new_day == 30 && d == days_in_month(m, y)) new_day = length;

  int32_t result = date_to_serial(new_day, new_month, new_year);
  // 30E+ counts an end on the 31st as the 1st of the next month.
  if ((code == k30EPlus360 || code == k30EPlus365) && d == 31 && new_day != 31 && result > 0) ++result;
  return result;
}

const char* day_count_name(int32_t code) noexcept {
  static constexpr const char* kNames[kDayCountCodes] = {
      "act/act",      "30/360",       "30E/360",      "30/365",   "act/360",
      "act/365",      "30E/365",      "30/360(Feb)",  "30/365(Feb)", "30E/360(Feb)",
      "30E/365(Feb)", "30E+/360",     "30E+/365",     "act/365",  "unknown"};
  if (code < 0 || code >= kDayCountCodes) return "unknown";
  return kNames[code];
}

}  // namespace kbond::dates
