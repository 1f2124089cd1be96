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
  int32_t reference = civil_serial(2020, 6, 15);
  int32_t settlement = civil_serial(2025, 6, 15);
  int32_t type = 500;  // generic bond, actual/actual, compound yield, unrounded
  const int32_t* frequency = nullptr;
  const double* tax = nullptr;
  const int32_t* rule = nullptr;
  const int32_t* calendar_flags = nullptr;
  const int32_t* holidays = nullptr;
  int32_t n_holidays = 0;
  const int32_t* dated = nullptr;
  int32_t error = -12345;

  int32_t n_coupons() const { return static_cast<int32_t>(coupons.size()); }
  int32_t n_steps() const { return static_cast<int32_t>(steps.size()); }
  const int32_t* step_data() const { return steps.empty() ? nullptr : steps.data(); }

  double price(double y) {
    return KVLpbpr(coupons.data(), n_coupons(), reference, settlement, y, step_data(), n_steps(),
                   &type, frequency, tax, rule, calendar_flags, holidays, n_holidays, dated,
                   &error);
  }
  double yield(double p) {
    return KVLpbyld(coupons.data(), n_coupons(), reference, settlement, p, step_data(), n_steps(),
                    &type, frequency, tax, rule, calendar_flags, holidays, n_holidays, dated,
                    &error);
  }
  double accrued() {
    return KVLpbai(coupons.data(), n_coupons(), reference, settlement, step_data(), n_steps(),
                   &type, frequency, tax, calendar_flags, holidays, n_holidays, dated, &error);
  }
  double coupon_amount() {
    return KVLpbcamt(coupons.data(), n_coupons(), reference, settlement, step_data(), n_steps(),
                     &type, frequency, tax, &error);
  }
  double duration(double y, const int32_t* kind) {
    return KVLpbdur(coupons.data(), n_coupons(), reference, settlement, y, step_data(), n_steps(),
                    &type, frequency, kind, tax, rule, calendar_flags, holidays, n_holidays,
                    dated, &error);
  }
  double convexity(double y) {
    return KVLpbconv(coupons.data(), n_coupons(), reference, settlement, y, step_data(),
                     n_steps(), &type, frequency, tax, rule, calendar_flags, holidays, n_holidays,
                     dated, &error);
  }
  double value_of_bp(double y, const double* scale) {
    return KVLpbvalbp(coupons.data(), n_coupons(), reference, settlement, y, step_data(),
                      n_steps(), &type, frequency, tax, rule, scale, calendar_flags, holidays,
                      n_holidays, dated, &error);
  }
  double value_of_32nd(double y, const double* ticks) {
    return KVLpbval32(coupons.data(), n_coupons(), reference, settlement, y, step_data(),
                      n_steps(), &type, frequency, tax, rule, ticks, calendar_flags, holidays,
                      n_holidays, dated, &error);
  }
  double carry(int32_t end, double p, double repo, const int32_t* mode) {
    return KVLpbcarry(coupons.data(), n_coupons(), reference, settlement, end, p, repo,
                      step_data(), n_steps(), &type, frequency, tax, rule, calendar_flags,
                      holidays, n_holidays, dated, mode, &error);
  }
  double forward(int32_t end, double p, double repo, const double* reinvest,
                 const int32_t* mode) {
    return KVLpbfwd(coupons.data(), n_coupons(), reference, settlement, end, p, repo, step_data(),
                    n_steps(), &type, frequency, tax, rule, calendar_flags, holidays, n_holidays,
                    dated, reinvest, mode, &error);
  }
  double implied_repo(double p, double forward_price, int32_t end, const double* reinvest,
                      const int32_t* mode) {
    return KVLpbirepo(coupons.data(), n_coupons(), reference, settlement, p, forward_price, end,
                      step_data(), n_steps(), &type, frequency, tax, rule, calendar_flags,
                      holidays, n_holidays, dated, reinvest, mode, &error);
  }
};

}  // namespace kbond::testing
