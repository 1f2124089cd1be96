#include "cli_dates.h"

#include <charconv>
#include <cstdio>

namespace kbond::cli {
namespace {

// Days from 1 March of year 0 style civil algorithm (Howard Hinnant's
// days_from_civil), shifted so that 1 January 1900 is day 1.
int64_t days_from_civil(int64_t y, int64_t m, int64_t d) {
  y -= m <= 2 ? 1 : 0;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const int64_t yoe = y - era * 400;
  const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

constexpr int64_t kSerialZero = -25568;  // days_from_civil(1899, 12, 31)
constexpr int32_t kLastSerial = 1825000;

void civil_from_serial(int64_t serial, int* y, int* m, int* d) {
  int64_t z = serial + kSerialZero + 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const int64_t doe = z - era * 146097;
  const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const int64_t mp = (5 * doy + 2) / 153;
  *d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  *m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  *y = static_cast<int>(yoe + era * 400 + (*m <= 2 ? 1 : 0));
}

bool parse_int(std::string_view s, int* out) {
  if (s.empty()) return false;
  auto [p, ec] = std::from_chars(s.data(), s.data() + s.size(), *out);
  return ec == std::errc() && p == s.data() + s.size();
}

bool leap(int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

}  // namespace

bool parse_date(std::string_view text, int32_t* serial) {
  if (text.size() == 10 && text[4] == '-' && text[7] == '-') {
    int y = 0, m = 0, d = 0;
    if (!parse_int(text.substr(0, 4), &y) || !parse_int(text.substr(5, 2), &m) ||
        !parse_int(text.substr(8, 2), &d))
      return false;
    static constexpr int kDays[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (m < 1 || m > 12 || d < 1) return false;
    if (d > kDays[m] + (m == 2 && leap(y) ? 1 : 0)) return false;
    const int64_t s = days_from_civil(y, m, d) - kSerialZero;
    if (s < 1 || s > kLastSerial) return false;
    *serial = static_cast<int32_t>(s);
    return true;
  }
  int value = 0;
  if (!parse_int(text, &value) || value < 1 || value > kLastSerial) return false;
  *serial = value;
  return true;
}

const char* format_date(int32_t serial, char* buf) {
  if (serial < 1 || serial > kLastSerial) {
    std::snprintf(buf, 32, "%d", serial);
    return buf;
  }
  int y, m, d;
  civil_from_serial(serial, &y, &m, &d);
  std::snprintf(buf, 32, "%04d-%02d-%02d", y, m, d);
  return buf;
}

}  // namespace kbond::cli
