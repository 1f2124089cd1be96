// A PIK bond for the tests, described once and passed to every PIK export;
// each optional argument is NULL unless set.
//
//   PikBond bond;                 // 8 % cash, 4 % in kind, generic act/act
//   double p = bond.price(0.09);
//   bond.cash = {0.06, 0.07, 0.08};  // stepped cash rates
#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace kbond::testing {

// Argument groups in the order the PIK exports take them.
#define PIK_BOND                                                           \
  cash.data(), static_cast<int32_t>(cash.size()), in_kind.data(),          \
      static_cast<int32_t>(in_kind.size()), dates.data(),                  \
      static_cast<int32_t>(dates.size()), settlement
#define PIK_DESC opt(dated), opt(first), &type, opt(frequency)
#define PIK_BD opt(business_days), nullptr, holidays, n_holidays, &error

struct PikBond {
  std::vector<double> cash{0.08};
  std::vector<double> in_kind{0.04};
  std::vector<int32_t> dates{civil_serial(2030, 6, 15)};
  int32_t settlement = civil_serial(2025, 3, 20);
  int32_t type = 500;  // generic bond, actual/actual, results unrounded
  std::optional<int32_t> dated, first, frequency, call, business_days;
  std::optional<double> redemption;
  const int32_t* holidays = nullptr;
  int32_t n_holidays = 0;
  int32_t error = -12345;

  template <class T>
  static const T* opt(const std::optional<T>& v) { return v ? &*v : nullptr; }

  double price(double y) {
    return KVLpikpr(PIK_BOND, y, PIK_DESC, opt(redemption), opt(call), PIK_BD);
  }
  double yield(double clean) {
    return KVLpikyld(PIK_BOND, clean, PIK_DESC, opt(redemption), opt(call), PIK_BD);
  }
  double accrued() { return KVLpikai(PIK_BOND, PIK_DESC, &error); }
  double duration(double y, const int32_t* kind = nullptr) {
    return KVLpikdur(PIK_BOND, y, PIK_DESC, opt(redemption), kind, opt(call), PIK_BD);
  }
  double value_of_bp(double y, const double* scale = nullptr) {
    return KVLpikvalbp(PIK_BOND, y, PIK_DESC, opt(redemption), opt(call), scale, PIK_BD);
  }
  double value_of_32nd(double y, const double* ticks = nullptr) {
    return KVLpikval32(PIK_BOND, y, PIK_DESC, opt(redemption), opt(call), ticks, PIK_BD);
  }
  int32_t cash_flows(int32_t** d, double** c, double** p, double** t) {
    return KVLpikcshflw(d, c, p, t, PIK_BOND, PIK_DESC, opt(redemption), opt(call), PIK_BD);
  }
};

#undef PIK_BOND
#undef PIK_DESC
#undef PIK_BD

// The PIK cash-flow table, freed when it goes out of scope.
struct PikTable {
  int32_t rows = 0;
  int32_t* dates = nullptr;
  double *coupons = nullptr, *principal = nullptr, *periods = nullptr;
  explicit PikTable(PikBond& bond) {
    rows = bond.cash_flows(&dates, &coupons, &principal, &periods);
  }
  ~PikTable() { KVLpikcshflw_free(dates, coupons, principal, periods); }
  PikTable(const PikTable&) = delete;
  PikTable& operator=(const PikTable&) = delete;
};

}  // namespace kbond::testing
