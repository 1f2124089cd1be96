// A redemption so large that the principal parts overflow (found by the
// fuzz harness): the {rate, a, b} coupon form redeems at b / a, and a
// denormal a made that 6.8e305, a finite but absurd description that the
// three Brady functions turned into an infinite price.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace kbond::testing {
namespace {

const int32_t kMaturity = civil_serial(2030, 11, 15);
const int32_t kSettlement = civil_serial(2024, 3, 1);

// KVLbradypr, KVLbradyyld (first = price) or KVLbradydur on a bond with one
// date and the given coupon words; every optional argument absent.
double brady(int function, const double* coupons, int32_t n_coupons, double first,
             int32_t* error) {
  switch (function) {
    case 0:
      return KVLbradypr(coupons, n_coupons, &kMaturity, 1, kSettlement, first, 0.04, 0.09, nullptr,
                        nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr,
                        nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                        nullptr, error);
    case 1:
      return KVLbradyyld(coupons, n_coupons, &kMaturity, 1, kSettlement, first, 0.045, 0.04,
                         nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr,
                         nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr,
                         nullptr, nullptr, error);
    default:
      return KVLbradydur(coupons, n_coupons, &kMaturity, 1, kSettlement, first, 0.04, 0.09,
                         nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr,
                         nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr,
                         nullptr, nullptr, error);
  }
}

TEST(BradyExtremeInputs, AbsurdRedemptionIsAnInvalidDescription) {
  const double absurd[] = {0.05, 7.3343813807073023e-308, 0.05};
  for (int function = 0; function < 3; ++function) {
    int32_t error = 0;
    const double first = function == 1 ? 92.0 : 0.045;
    EXPECT_EQ(brady(function, absurd, 3, first, &error), -1.0) << function;
    EXPECT_EQ(error, 1) << function;
  }
}

TEST(BradyExtremeInputs, RealRedemptionFormStillPrices) {
  // Redeemed at 102 / 100: a larger collateralised principal than at par,
  // so a higher price at the same rates.
  const double at_102[] = {0.05, 100.0, 102.0};
  const double at_par[] = {0.05};
  int32_t error = -1;
  const double above = brady(0, at_102, 3, 0.045, &error);
  EXPECT_EQ(error, 0);
  const double par = brady(0, at_par, 1, 0.045, &error);
  EXPECT_EQ(error, 0);
  EXPECT_TRUE(std::isfinite(above));
  EXPECT_GT(above, par);
}

}  // namespace
}  // namespace kbond::testing
