// Date serials: a signed 32-bit count of days, proleptic Gregorian,
// serial 1 = 1 January 1900 (a Monday). 1 March 1900 = 60 (1900 is not a
// leap year), 1 January 1950 = 18263, 31 December 2069 = 62092.
//
// Two process-wide caches make the common range cost one table look-up:
// the month cache (years 1950..2069) for date -> serial, and the serial
// cache (serials 25000..57740) for serial -> date. Both are filled lazily
// from any thread without a lock; every writer stores the same value for
// the same entry, and each entry is one atomic word.
//
//   int32_t s = date_to_serial(15, 5, 2031);      // 15 May 2031
//   int32_t d, m, y; serial_to_date(s, &d, &m, &y);
#pragma once
#include <atomic>
#include <climits>
#include <cstdint>

namespace kbond::dates {

inline constexpr int32_t kMaxSerial = 1825000;          // 4 September 6896
inline constexpr int32_t kMinConvertibleSerial = -109572; // 1 January 1600

// A date serial a caller may pass: 1 (1 January 1900) to kMaxSerial.
constexpr bool valid_serial(int32_t serial) noexcept { return serial >= 1 && serial <= kMaxSerial; }

// Weekday numbers put the weekend first on purpose.
enum Weekday : int32_t {
  kSaturday = 1, kSunday = 2, kMonday = 3, kTuesday = 4,
  kWednesday = 5, kThursday = 6, kFriday = 7
};

inline bool is_leap_year(int32_t year) noexcept {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// The two caches. Their look-ups are inline below, because the coupon
// grids and day counts convert dates at every step; everything else about
// them lives in date_serial.cpp.
namespace date_cache {
inline constexpr int32_t kMonthFirstYear = 1950;
inline constexpr int32_t kMonthLastYear = 2069;
inline constexpr int32_t kMonthSize = (kMonthLastYear - kMonthFirstYear + 1) * 12;
inline constexpr int32_t kSerialFirst = 25000;  // 12 June 1968
inline constexpr int32_t kSerialLast = 57740;   // 31 January 2058
inline constexpr int32_t kSerialSize = kSerialLast - kSerialFirst + 1;
// Serial cache entries: day (bits 0-4), month (bits 5-8), year (bits 9-31);
// 0 = not yet computed, kSerialFailed = known not to convert.
inline constexpr uint32_t kSerialFailed = 0xFFFFFFFFu;

// Month cache entry: serial of day 0 of the month; 0 = not yet computed.
extern std::atomic<int32_t> month_day0[kMonthSize];
extern std::atomic<uint32_t> serial_fields[kSerialSize];

int32_t date_to_serial_slow(int32_t day, int32_t month, int32_t year) noexcept;
int serial_to_date_slow(int32_t serial, int32_t* day, int32_t* month, int32_t* year) noexcept;
}  // namespace date_cache

// Serial of day/month/year, or -1. Years below 200 have 1900 added. The day
// is not checked against the month: day 0 is the last day of the previous
// month and 31 February 2001 is 3 March 2001.
inline int32_t date_to_serial(int32_t day, int32_t month, int32_t year) noexcept {
  using namespace date_cache;
  if (month >= 1 && month <= 12 && year >= kMonthFirstYear && year <= kMonthLastYear) {
    const int32_t day0 =
        month_day0[month - 1 + 12 * (year - kMonthFirstYear)].load(std::memory_order_relaxed);
    if (day0 > 0) {
      const int64_t serial = static_cast<int64_t>(day0) + day;
      if (serial > kMaxSerial || serial < INT32_MIN + 1) return -1;
      return static_cast<int32_t>(serial);
    }
  }
  return date_to_serial_slow(day, month, year);
}

// Splits a serial; 0 on success, 1 on failure (before 1600 or after
// kMaxSerial; above kMaxSerial the fields are still written).
inline int serial_to_date(int32_t serial, int32_t* day, int32_t* month, int32_t* year) noexcept {
  using namespace date_cache;
  if (serial >= kSerialFirst && serial <= kSerialLast) {
    const uint32_t cached = serial_fields[serial - kSerialFirst].load(std::memory_order_relaxed);
    if (cached != 0 && cached != kSerialFailed) {
      if (day) *day = static_cast<int32_t>(cached & 0x1Fu);
      if (month) *month = static_cast<int32_t>((cached >> 5) & 0xFu);
      if (year) *year = static_cast<int32_t>(cached >> 9);
      return 0;
    }
  }
  return serial_to_date_slow(serial, day, month, year);
}

// 1 = Saturday ... 7 = Friday.
inline int32_t weekday_of(int32_t serial) noexcept {
  return static_cast<int32_t>((static_cast<int64_t>(serial) + 1) % 7) + 1;
}
// 0 for a bad month. Inline: month arithmetic asks for it at every step.
inline int32_t days_in_month(int32_t month, int32_t year) noexcept {
  switch (month) {
    case 1: case 3: case 5: case 7: case 8: case 10: case 12: return 31;
    case 4: case 6: case 9: case 11: return 30;
    case 2: return is_leap_year(year) ? 29 : 28;
    default: return 0;
  }
}
// A month given as year * 12 + month - 1: the serial of its day 0 and its
// length, when the month is in the month cache (false otherwise: the caller
// converts the long way, which fills it).
inline bool cached_month(int64_t month_index, int32_t* day0, int32_t* length) noexcept {
  using namespace date_cache;
  const int64_t i = month_index - static_cast<int64_t>(kMonthFirstYear) * 12;
  if (i < 0 || i >= kMonthSize) return false;
  const int32_t start = month_day0[i].load(std::memory_order_relaxed);
  if (start <= 0) return false;
  *day0 = start;
  const uint32_t in_year = static_cast<uint32_t>(i) % 12u;
  constexpr int8_t kLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  *length = kLengths[in_year];
  if (in_year == 1 && is_leap_year(kMonthFirstYear + static_cast<int32_t>(static_cast<uint32_t>(i) / 12u)))
    *length = 29;
  return true;
}

int32_t days_in_year(int32_t year) noexcept;
int32_t is_end_of_month(int32_t serial) noexcept;
int32_t end_of_month(int32_t serial) noexcept;

// Empties both caches, so that later look-ups compute and store again. Only
// tests call it; it is safe while other threads convert dates.
void forget_cached_dates() noexcept;

}  // namespace kbond::dates
