// A perpetual bond for the tests, passed to every KVLpb... export with the
// caller's optional arguments; NULL where a test leaves the default.
//
//   PerpetualBond bond;                      // 6% semi-annual, generic act/act
//   double p = bond.price(0.05);
//   bond.coupons = {0.04, 0.06};             // stepped rates ...
//   bond.steps = {civil_serial(2027, 6, 15), civil_serial(2028, 6, 15)};
#pragma once
#include <cstdint>
#include <vector>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace kbond::testing {

struct PerpetualBond {
  std::vector<double> coupons{0.06};
  std::vector<int32_t> steps;
  int32_t reference = civil_serial(2020, 6, 15), settlement = civil_serial(2025, 6, 15);
  int32_t type = 500;  // generic bond, actual/actual, compound yield, unrounded
  const int32_t *frequency = nullptr, *rule = nullptr, *calendar_flags = nullptr, *holidays = nullptr;
  const double* tax = nullptr;
  int32_t n_holidays = 0;
  const int32_t* dated = nullptr;
  int32_t error = -12345;

  const int32_t* step_data() const { return steps.empty() ? nullptr : steps.data(); }

// The argument runs the exports share.
#define KBOND_PB_BOND coupons.data(), static_cast<int32_t>(coupons.size()), reference, settlement
#define KBOND_PB_STEPS step_data(), static_cast<int32_t>(steps.size()), &type, frequency
#define KBOND_PB_DAYS calendar_flags, holidays, n_holidays, dated
  double price(double y) { return KVLpbpr(KBOND_PB_BOND, y, KBOND_PB_STEPS, tax, rule, KBOND_PB_DAYS, &error); }
  double yield(double p) { return KVLpbyld(KBOND_PB_BOND, p, KBOND_PB_STEPS, tax, rule, KBOND_PB_DAYS, &error); }
  double accrued() { return KVLpbai(KBOND_PB_BOND, KBOND_PB_STEPS, tax, KBOND_PB_DAYS, &error); }
  double coupon_amount() { return KVLpbcamt(KBOND_PB_BOND, KBOND_PB_STEPS, tax, &error); }
  double duration(double y, const int32_t* kind) {
    return KVLpbdur(KBOND_PB_BOND, y, KBOND_PB_STEPS, kind, tax, rule, KBOND_PB_DAYS, &error);
  }
  double convexity(double y) { return KVLpbconv(KBOND_PB_BOND, y, KBOND_PB_STEPS, tax, rule, KBOND_PB_DAYS, &error); }
  double value_of_bp(double y, const double* scale) {
    return KVLpbvalbp(KBOND_PB_BOND, y, KBOND_PB_STEPS, tax, rule, scale, KBOND_PB_DAYS, &error);
  }
  double value_of_32nd(double y, const double* ticks) {
    return KVLpbval32(KBOND_PB_BOND, y, KBOND_PB_STEPS, tax, rule, ticks, KBOND_PB_DAYS, &error);
  }
  double carry(int32_t end, double p, double repo, const int32_t* mode) {
    return KVLpbcarry(KBOND_PB_BOND, end, p, repo, KBOND_PB_STEPS, tax, rule, KBOND_PB_DAYS, mode, &error);
  }
  double forward(int32_t end, double p, double repo, const double* reinvest, const int32_t* mode) {
    return KVLpbfwd(KBOND_PB_BOND, end, p, repo, KBOND_PB_STEPS, tax, rule, KBOND_PB_DAYS, reinvest, mode, &error);
  }
  double implied_repo(double p, double fwd, int32_t end, const double* reinvest, const int32_t* mode) {
    return KVLpbirepo(KBOND_PB_BOND, p, fwd, end, KBOND_PB_STEPS, tax, rule, KBOND_PB_DAYS, reinvest, mode, &error);
  }
#undef KBOND_PB_BOND
#undef KBOND_PB_STEPS
#undef KBOND_PB_DAYS
};

}  // namespace kbond::testing
