// Helpers for the futures tests: date serials computed independently of the
// library's date code, and a compact call of the factor export.
#pragma once
#include <cstdint>

#include "k_bond.h"

namespace futures_test {

// Serial of a civil date (1 = 1 January 1900), by the days-from-civil
// algorithm (H. Hinnant), independent of the library's date routines.
constexpr int32_t serial(int32_t y, int32_t m, int32_t d) {
  y -= m <= 2;
  const int32_t era = (y >= 0 ? y : y - 399) / 400;
  const int32_t yoe = y - era * 400;
  const int32_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int32_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  const int32_t days_since_1970 = era * 146097 + doe - 719468;
  return days_since_1970 + 25568;  // 1 January 1970 is serial 25568
}
static_assert(serial(1900, 1, 1) == 1);
static_assert(serial(1900, 3, 1) == 60);
static_assert(serial(2000, 3, 1) == 36585);

struct FactorCall {
  double coupon = 0.06;
  int32_t maturity = 0, delivery = 0, contract = 0;
  const double* notional = nullptr;
  const int32_t *check = nullptr, *extra = nullptr, *holidays = nullptr;
  int32_t n_holidays = 0, error = -12345;

  double run() {
    return KVLbfact1(coupon, maturity, delivery, &contract, holidays, n_holidays, nullptr, nullptr,
                     extra, nullptr, nullptr, notional, check, &error);
  }
};

}  // namespace futures_test
