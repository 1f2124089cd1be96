// Helpers for the futures tests: date serials computed independently of the
// library's date code, and a compact call of the factor export.
#pragma once
#include <cstdint>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace futures_test {

// Serial of a civil date (1 = 1 January 1900), independent of the
// library's date routines.
constexpr int32_t serial(int32_t y, int32_t m, int32_t d) {
  return kbond::testing::civil_serial(y, static_cast<unsigned>(m), static_cast<unsigned>(d));
}

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
