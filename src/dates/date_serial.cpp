// Date serials and their two lock-free caches.
//
// Forward conversion (day, month, year -> serial) uses a closed formula; for
// the years 1950..2069 the serial of day 0 of each month is remembered in the
// month cache. Backward conversion (serial -> day, month, year) splits the
// days since 1 January 1600 into 400-year cycles, centuries, 4-year groups and
// years; for serials 25000..57740 (12 June 1968 .. 31 January 2058) the result
// is remembered in the serial cache.
//
// Each cache entry is one atomic word read and written with relaxed ordering.
// Every writer stores the same value for the same entry, so a reader either
// sees 0 ("not yet known") and computes the value itself, or sees the final
// value: no lock and no ordering between entries is needed.
#include "dates/date_serial.h"

#include <atomic>
#include <cstdint>

namespace kbond::dates {
namespace {

constexpr int32_t kMonthCacheFirstYear = date_cache::kMonthFirstYear;
constexpr int32_t kMonthCacheLastYear = date_cache::kMonthLastYear;
constexpr int32_t kSerialCacheFirst = date_cache::kSerialFirst;
constexpr int32_t kSerialCacheLast = date_cache::kSerialLast;
using date_cache::kSerialFailed;

// Days before each month in a common year, and month starts in a leap year
// (a common year's day-of-year from 1 March on is shifted by one to use it).
constexpr int32_t kDaysBeforeMonth[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
constexpr int32_t kLeapMonthStart[12] = {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335};

constexpr int64_t kDaysFrom1600 = 109572;  // serial of 1 January 1600 is -109572
constexpr int64_t kDaysPer400Years = 146097;
constexpr int64_t kDaysPerLongCentury = 36525;  // a century starting with a leap year
constexpr int64_t kDaysPerCentury = 36524;
constexpr int64_t kDaysPer4Years = 1461;

static_assert(std::atomic<int32_t>::is_always_lock_free);
static_assert(std::atomic<uint32_t>::is_always_lock_free);

constexpr uint32_t pack_date(int32_t day, int32_t month, int32_t year) {
  return static_cast<uint32_t>(day) | (static_cast<uint32_t>(month) << 5) |
         (static_cast<uint32_t>(year) << 9);
}

// Closed formula, exact from 1897 on (the truncating divisions assume it).
// Computed in 64 bits so that absurd days or years cannot overflow.
int64_t raw_date_to_serial(int64_t day, int32_t month, int64_t year) {
  int64_t serial = 365 * (year - 1900) + (year - 1897) / 4 - (year - 1801) / 100 +
                   (year - 1601) / 400 + day + kDaysBeforeMonth[month - 1];
  if (month >= 3 && is_leap_year(static_cast<int32_t>(year))) ++serial;
  return serial;
}

// Splits a serial into day, month, year. Returns 1 before 1600 (nothing is
// written) and above kMaxSerial (the fields are still written).
int raw_serial_to_date(int32_t serial, int32_t* day, int32_t* month, int32_t* year) {
  int64_t t = static_cast<int64_t>(serial) + kDaysFrom1600;
  if (t < 0) return 1;

  const int64_t cycles = t / kDaysPer400Years;
  t %= kDaysPer400Years;

  // The first century of a cycle starts with a leap year (1600, 2000).
  int64_t centuries = 0;
  if (t >= kDaysPerLongCentury) {
    centuries = 1 + (t - kDaysPerLongCentury) / kDaysPerCentury;
    t = (t - kDaysPerLongCentury) % kDaysPerCentury;
  }

  // In a non-first century the first 4-year group lacks its leap day (1700).
  int64_t groups = 0;
  bool short_group = false;
  if (centuries == 0 || t >= kDaysPer4Years - 1) {
    if (centuries != 0) {
      groups = 1 + (t - (kDaysPer4Years - 1)) / kDaysPer4Years;
      t = (t - (kDaysPer4Years - 1)) % kDaysPer4Years;
    } else {
      groups = t / kDaysPer4Years;
      t %= kDaysPer4Years;
    }
  } else {
    short_group = true;
  }

  int64_t years = 0;
  bool leap = false;
  if (short_group) {
    years = t / 365;
    t %= 365;
  } else if (t < 366) {
    leap = true;
  } else {
    years = 1 + (t - 366) / 365;
    t = (t - 366) % 365;
  }

  int32_t doy = static_cast<int32_t>(t);  // 0-based day of the year
  if (!leap && doy >= 59) ++doy;
  int32_t m = 11;
  while (kLeapMonthStart[m] > doy) --m;

  *day = doy - kLeapMonthStart[m] + 1;
  *month = m + 1;
  *year = static_cast<int32_t>(1600 + 400 * cycles + 100 * centuries + 4 * groups + years);
  return serial > kMaxSerial ? 1 : 0;
}

}  // namespace

namespace date_cache {

std::atomic<int32_t> month_day0[kMonthSize];
std::atomic<uint32_t> serial_fields[kSerialSize];

// Everything but a serial already in the cache: the first conversion of a
// cached serial (which also remembers the rest of its month up to the 28th),
// serials known not to convert, and serials outside the cached range (1
// before 1600 with nothing written, 1 above kMaxSerial with the fields
// written). Kept apart so that the inline cached look-up stays short.
int serial_to_date_slow(int32_t serial, int32_t* day, int32_t* month, int32_t* year) noexcept {
  int32_t d = 0, m = 0, y = 0;
  int rc;
  if (serial >= kSerialCacheFirst && serial <= kSerialCacheLast) {
    std::atomic<uint32_t>& entry = serial_fields[serial - kSerialCacheFirst];
    if (entry.load(std::memory_order_relaxed) == kSerialFailed) return 1;
    rc = raw_serial_to_date(serial, &d, &m, &y);
    if (rc != 0) {
      entry.store(kSerialFailed, std::memory_order_relaxed);
      return rc;
    }
    const int32_t last_day = d <= 28 ? 28 : d;
    for (int32_t k = d, s = serial; k <= last_day && s <= kSerialCacheLast; ++k, ++s)
      serial_fields[s - kSerialCacheFirst].store(pack_date(k, m, y), std::memory_order_relaxed);
  } else {
    if (serial < kMinConvertibleSerial) return 1;
    rc = raw_serial_to_date(serial, &d, &m, &y);
  }
  if (day) *day = d;
  if (month) *month = m;
  if (year) *year = y;
  return rc;
}

// Everything but a month already in the month cache: two-digit years, months
// not yet cached, years outside the cache and invalid months.
int32_t date_to_serial_slow(int32_t day, int32_t month, int32_t year) noexcept {
  if (month < 1 || month > 12) return -1;
  if (year < 200) year += 1900;  // 0..99 -> 1900s, 100..199 -> 2000s

  int64_t serial;
  if (year >= kMonthCacheFirstYear && year <= kMonthCacheLastYear) {
    std::atomic<int32_t>& entry = month_day0[month - 1 + 12 * (year - kMonthCacheFirstYear)];
    int32_t day0 = entry.load(std::memory_order_relaxed);
    if (day0 == 0) {
      day0 = static_cast<int32_t>(raw_date_to_serial(0, month, year));
      entry.store(day0, std::memory_order_relaxed);
    }
    if (day0 <= 0) return -1;
    serial = static_cast<int64_t>(day0) + day;
  } else {
    serial = raw_date_to_serial(day, month, year);
  }
  if (serial > kMaxSerial || serial < INT32_MIN + 1) return -1;
  return static_cast<int32_t>(serial);
}

}  // namespace date_cache

int32_t days_in_year(int32_t year) noexcept { return is_leap_year(year) ? 366 : 365; }

int32_t is_end_of_month(int32_t serial) noexcept {
  int32_t d, m, y;
  if (serial_to_date(serial, &d, &m, &y) != 0) return 0;
  return d == days_in_month(m, y) ? 1 : 0;
}

int32_t end_of_month(int32_t serial) noexcept {
  int32_t d, m, y;
  if (serial_to_date(serial, &d, &m, &y) != 0) return -1;
  return date_to_serial(days_in_month(m, y), m, y);
}

void forget_cached_dates() noexcept {
  for (auto& e : date_cache::month_day0) e.store(0, std::memory_order_relaxed);
  for (auto& e : date_cache::serial_fields) e.store(0, std::memory_order_relaxed);
}

}  // namespace kbond::dates
