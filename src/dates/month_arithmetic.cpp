// Month arithmetic: stepping by months, counting whole months, locating the
// dates of a periodic (coupon) schedule, and n-th / last weekdays of a month.
//
// Each date is split into day, month and year once; the steps below work on
// the split form, so a schedule look-up splits its reference date only once.
#include "dates/month_arithmetic.h"

#include <algorithm>
#include <cstdint>

#include "dates/date_serial.h"

namespace kbond::dates {
namespace {

bool split(int32_t serial, SplitDate* out) noexcept {
  if (serial_to_date(serial, &out->day, &out->month, &out->year) != 0) return false;
  out->month_end = out->day == days_in_month(out->month, out->year);
  return true;
}

int32_t add_months_to(const SplitDate& from, int32_t months, int32_t eom_flag) noexcept {
  const int32_t years = months / 12;
  int32_t new_year = from.year + years;
  int32_t new_month = from.month + (months - 12 * years);
  if (new_month > 12) {
    new_month -= 12;
    ++new_year;
  } else if (new_month < 1) {
    new_month += 12;
    --new_year;
  }
  // Years below 200 would be read as two-digit years: no such date exists here.
  if (new_year < 200) return -1;

  const int32_t new_length = days_in_month(new_month, new_year);
  int32_t new_day = from.day;
  if (from.day > new_length) {
    new_day = new_length;  // 31 January + 1 month = 28/29 February
  } else if (eom_flag && from.month_end) {
    new_day = new_length;  // a month end stays a month end
  }
  return date_to_serial(new_day, new_month, new_year);
}

int32_t months_from_to(const SplitDate& from, const SplitDate& to, int32_t eom_flag,
                       int32_t* exact) noexcept {
  int32_t d1 = from.day;
  int32_t d2 = to.day;
  if (to.month_end && d1 >= d2) {
    d2 = d1;  // 28 February matches the 31st, 30th or 29th of an earlier month
  } else if (eom_flag) {
    if (from.month_end) d1 = 31;
    if (to.month_end) d2 = 31;
  }

  const int32_t day_gap = d2 - d1;
  if (exact) *exact = day_gap == 0 ? 1 : 0;

  const int32_t m = 12 * (to.year - from.year) + to.month - from.month;
  // Truncate toward zero: a part month counts only once it is complete.
  if (day_gap >= 0) return (day_gap > 0 && m < 0) ? m + 1 : m;
  return m > 0 ? m - 1 : m;
}

}  // namespace

int32_t add_months(int32_t serial, int32_t months, int32_t eom_flag) noexcept {
  if (months == 0) return serial;
  SplitDate from;
  if (!split(serial, &from)) return -1;
  return add_months_to(from, months, eom_flag);
}

int32_t months_between(int32_t from, int32_t to, int32_t eom_flag, int32_t* exact) noexcept {
  SplitDate a, b;
  if (!split(from, &a) || !split(to, &b)) {
    if (exact) *exact = 0;
    return 0;
  }
  return months_from_to(a, b, eom_flag, exact);
}

MonthSchedule::MonthSchedule(int32_t reference, int32_t months_per_period,
                             int32_t eom_flag) noexcept
    : reference_(reference),
      months_per_period_(months_per_period),
      split_reference_{0, 0, 0, false} {
  reference_ok_ = split(reference, &split_reference_);
  eom_ = (eom_flag && reference_ok_ && split_reference_.month_end) ? 1 : 0;
  reference_month_ = static_cast<int64_t>(split_reference_.year) * 12 + split_reference_.month - 1;
}

int32_t MonthSchedule::date(int32_t j) const noexcept {
  const int64_t months = static_cast<int64_t>(j) * months_per_period_;
  if (months == 0) return reference_;
  if (!reference_ok_) return -1;
  // Months of the common range come straight from the month cache.
  int32_t day0 = 0, length = 0;
  if (cached_month(reference_month_ + months, &day0, &length)) {
    const int32_t day = (split_reference_.day > length || eom_) ? length : split_reference_.day;
    return day0 + day;
  }
  if (months > INT32_MAX || months < INT32_MIN) return -1;
  return add_months_to(split_reference_, static_cast<int32_t>(months), eom_);
}

int32_t MonthSchedule::around(int32_t date, int32_t k, int32_t* index) const noexcept {
  if (months_per_period_ == 0) {
    if (index) *index = 0;
    return -1;
  }
  int32_t exact = 0;
  int32_t m = 0;
  SplitDate at;
  if (reference_ok_ && split(date, &at))
    m = months_from_to(split_reference_, at, eom_, &exact);
  // In 64 bits: k may be any int32. The index is then held within a range
  // that keeps j +- 1 in int32; its dates lie far outside the valid ones
  // (which span some 60,000 months), so date() gives -1 there.
  int64_t j = m / months_per_period_ + int64_t{k};

  const bool on_or_after_reference = m > 0 || (m == 0 && reference_ <= date);
  const bool exactly_on_schedule = m < 0 && exact == 1 && m % months_per_period_ == 0;
  if (!on_or_after_reference && !exactly_on_schedule) --j;  // truncation went the wrong way

  constexpr int64_t kFarIndex = int64_t{1} << 24;
  const int32_t held = static_cast<int32_t>(std::clamp(j, -kFarIndex, kFarIndex));
  if (index) *index = held;
  return this->date(held);
}

int32_t schedule_date(int32_t date, int32_t k, int32_t months_per_period, int32_t reference,
                      int32_t eom_flag, int32_t* index) noexcept {
  return MonthSchedule(reference, months_per_period, eom_flag).around(date, k, index);
}

int32_t nth_weekday_of_month(int32_t n, int32_t weekday, int32_t month, int32_t year,
                             int32_t other_weekday) noexcept {
  if (n < 1 || n > 5 || weekday < 1 || weekday > 7 || other_weekday < 0 || other_weekday > 7)
    return 0;
  const int32_t length = days_in_month(month, year < 200 ? year + 1900 : year);
  const int32_t first = date_to_serial(1, month, year);
  if (length == 0 || first < 0) return 0;
  const int32_t w1 = weekday_of(first);

  int32_t day = (weekday - w1 + 7) % 7 + 7 * n - 6;
  if (other_weekday != 0 && other_weekday != weekday) {
    const int32_t other_day = (other_weekday - w1 + 7) % 7 + 7 * n - 6;
    if (other_day < 1 || other_day > length) return 0;
    if (other_weekday < weekday && day < other_day) day += 7;
  }
  if (day < 1 || day > length) return 0;
  return first + day - 1;
}

int32_t last_weekday_of_month(int32_t weekday, int32_t month, int32_t year,
                              int32_t other_weekday) noexcept {
  if (weekday < 1 || weekday > 7) return -1;
  const int32_t length = days_in_month(month, year < 200 ? year + 1900 : year);
  const int32_t last = date_to_serial(length, month, year);
  if (length == 0 || last < 0) return -1;
  const int32_t w_last = weekday_of(last);

  int32_t day = length - w_last + weekday;
  if (weekday > w_last || other_weekday > w_last) day -= 7;
  return last - length + day;
}

}  // namespace kbond::dates
