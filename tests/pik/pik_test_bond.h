// A PIK bond for the tests, described once and passed to every PIK export
// with the caller's optional arguments; NULL where a test leaves the
// library's default.
//
//   PikBond bond;                        // 8% cash, 4% in kind, generic act/act
//   double p = bond.price(0.09);
//   bond.cash = {0.06, 0.07, 0.08};      // stepped cash rates
#pragma once
#include <cstdint>
#include <vector>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace kbond::testing {

struct PikBond {
  std::vector<double> cash{0.08};
  std::vector<double> in_kind{0.04};
  std::vector<int32_t> dates{civil_serial(2030, 6, 15)};
  int32_t settlement = civil_serial(2025, 3, 20);
  int32_t type = 500;  // generic bond, actual/actual, results unrounded
  const int32_t* dated = nullptr;
  const int32_t* first = nullptr;
  const int32_t* frequency = nullptr;
  const double* redemption = nullptr;
  const int32_t* call = nullptr;
  const int32_t* business_days = nullptr;
  const int32_t* holiday_options = nullptr;
  const int32_t* holidays = nullptr;
  int32_t n_holidays = 0;
  int32_t error = -12345;

  int32_t n_cash() const { return static_cast<int32_t>(cash.size()); }
  int32_t n_pik() const { return static_cast<int32_t>(in_kind.size()); }
  int32_t n_dates() const { return static_cast<int32_t>(dates.size()); }

  double price(double yield) {
    return KVLpikpr(cash.data(), n_cash(), in_kind.data(), n_pik(), dates.data(), n_dates(),
                    settlement, yield, dated, first, &type, frequency, redemption, call,
                    business_days, holiday_options, holidays, n_holidays, &error);
  }
  double yield(double clean_price) {
    return KVLpikyld(cash.data(), n_cash(), in_kind.data(), n_pik(), dates.data(), n_dates(),
                     settlement, clean_price, dated, first, &type, frequency, redemption, call,
                     business_days, holiday_options, holidays, n_holidays, &error);
  }
  double accrued() {
    return KVLpikai(cash.data(), n_cash(), in_kind.data(), n_pik(), dates.data(), n_dates(),
                    settlement, dated, first, &type, frequency, &error);
  }
  double duration(double yield, const int32_t* kind) {
    return KVLpikdur(cash.data(), n_cash(), in_kind.data(), n_pik(), dates.data(), n_dates(),
                     settlement, yield, dated, first, &type, frequency, redemption, kind, call,
                     business_days, holiday_options, holidays, n_holidays, &error);
  }
  double value_of_bp(double yield, const double* scale) {
    return KVLpikvalbp(cash.data(), n_cash(), in_kind.data(), n_pik(), dates.data(), n_dates(),
                       settlement, yield, dated, first, &type, frequency, redemption, call, scale,
                       business_days, holiday_options, holidays, n_holidays, &error);
  }
  double value_of_32nd(double yield, const double* ticks) {
    return KVLpikval32(cash.data(), n_cash(), in_kind.data(), n_pik(), dates.data(), n_dates(),
                       settlement, yield, dated, first, &type, frequency, redemption, call, ticks,
                       business_days, holiday_options, holidays, n_holidays, &error);
  }
  int32_t cash_flows(int32_t** d, double** c, double** p, double** t) {
    return KVLpikcshflw(d, c, p, t, cash.data(), n_cash(), in_kind.data(), n_pik(), dates.data(),
                        n_dates(), settlement, dated, first, &type, frequency, redemption, call,
                        business_days, holiday_options, holidays, n_holidays, &error);
  }
};

}  // namespace kbond::testing
