// An independent civil-calendar reference for the date tests: Howard
// Hinnant's days_from_civil / civil_from_days ("chrono-Compatible Low-Level
// Date Algorithms"), shifted so that 1 January 1900 is day 1.
#pragma once
#include <cstdint>

namespace kbond::dates::reference {

// 1 January 1970 (day 0 of days_from_civil) is serial 25568: 70 years of 365
// days plus the 17 leap days 1904..1968, plus one because serial 1 is 1 January 1900.
inline constexpr int64_t kSerialOf1970 = 25568;

inline int64_t days_from_civil(int64_t y, int64_t m, int64_t d) {
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const int64_t yoe = y - era * 400;
  const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

inline void civil_from_days(int64_t z, int32_t* y, int32_t* m, int32_t* d) {
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const int64_t doe = z - era * 146097;
  const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const int64_t mp = (5 * doy + 2) / 153;
  *d = static_cast<int32_t>(doy - (153 * mp + 2) / 5 + 1);
  *m = static_cast<int32_t>(mp < 10 ? mp + 3 : mp - 9);
  *y = static_cast<int32_t>(yoe + era * 400 + (*m <= 2));
}

inline int32_t serial_of(int32_t d, int32_t m, int32_t y) {
  return static_cast<int32_t>(days_from_civil(y, m, d) + kSerialOf1970);
}

inline void date_of(int32_t serial, int32_t* d, int32_t* m, int32_t* y) {
  civil_from_days(static_cast<int64_t>(serial) - kSerialOf1970, y, m, d);
}

// 1 January 1970 was a Thursday (weekday number 6 with Saturday = 1).
inline int32_t weekday(int32_t serial) {
  const int64_t z = static_cast<int64_t>(serial) - kSerialOf1970;
  return static_cast<int32_t>(((z % 7 + 7) % 7 + 5) % 7 + 1);
}

}  // namespace kbond::dates::reference
