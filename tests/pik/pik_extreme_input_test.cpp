// Extreme inputs that reached the PIK exports as infinities or NaN (found by
// the fuzz harness): absurd rates are an invalid description, overflowing
// discount factors a vanishing denominator, overflowing quotients error 401
// or 460.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "pik/pik_test_bond.h"

namespace kbond::testing {
namespace {

TEST(PikExtremeInputs, AbsurdRatesAreAnInvalidDescription) {
  // An in-kind rate of 1e300, a cash rate of -1e300, and an in-kind rate of
  // 1e30 that is finite alone but capitalises to (1 + 5e29)^11 (about 1e324)
  // over the eleven half-years to maturity.
  for (auto [cash, in_kind] : {std::pair{0.08, 1e300}, std::pair{-1e300, 0.04},
                               std::pair{0.08, 1e30}}) {
    PikBond bond;
    bond.cash = {cash};
    bond.in_kind = {in_kind};
    EXPECT_EQ(bond.price(0.09), -1.0) << cash << " " << in_kind;
    EXPECT_EQ(bond.error, 1);
    EXPECT_EQ(bond.yield(97.0), -1.0);
    EXPECT_EQ(bond.error, 1);
    int32_t* dates = reinterpret_cast<int32_t*>(1);
    double* coupons = reinterpret_cast<double*>(1);
    EXPECT_EQ(bond.cash_flows(&dates, &coupons, nullptr, nullptr), 0);
    EXPECT_EQ(bond.error, 1);
    EXPECT_EQ(dates, nullptr);
    EXPECT_EQ(coupons, nullptr);
  }
  // A steep but real bond (40 % in kind) keeps its price.
  PikBond steep;
  steep.in_kind = {0.40};
  EXPECT_TRUE(std::isfinite(steep.price(0.09)));
  EXPECT_EQ(steep.error, 0);
}

TEST(PikExtremeInputs, DiscountOverflowIsAVanishingDenominator) {
  // 1 + y/2 = 2^-52: v^t = 2^(52 t) overflows after about 20 periods, and a
  // bond maturing in 2050 has 51 left. Error 401 with -100.0, as for
  // 1 + y/f = 0.
  PikBond bond;
  bond.dates = {civil_serial(2050, 6, 15)};
  const double yield = -2.0 + std::ldexp(2.0, -52);
  EXPECT_EQ(bond.price(yield), -100.0);
  EXPECT_EQ(bond.error, 401);
  EXPECT_EQ(bond.price(-2.0), -100.0);
  EXPECT_EQ(bond.error, 401);
  EXPECT_EQ(bond.value_of_bp(yield, nullptr), -999.0);
  EXPECT_EQ(bond.error, 401);
}

TEST(PikExtremeInputs, DiscountJustShortOfOverflowIsAVanishingDenominator) {
  // Settled in March 1949, 162 half-years before a 2030 maturity, at a yield
  // of -197.25 %: v = 1 / 0.01375 and v^162 is about 1e301, finite, but the
  // Treasury rounding to six decimals multiplies it past the largest double.
  PikBond bond;
  bond.type = 0;
  bond.dates = {civil_serial(2030, 6, 15)};
  bond.settlement = 17976;  // 21 March 1949
  EXPECT_EQ(bond.price(-1.9725), -100.0);
  EXPECT_EQ(bond.error, 401);
  // The same bond at a real yield prices normally.
  EXPECT_TRUE(std::isfinite(bond.price(0.05)));
  EXPECT_EQ(bond.error, 0);
}

TEST(PikExtremeInputs, OnePeriodYieldOfAPriceNearZero) {
  // Settling on the last coupon date but one (no accrued interest), the
  // closed form divides the final amount by the price: 1.06 / 5e-312
  // overflows. Error 460, -1.0, as for a zero price.
  PikBond bond;
  bond.settlement = civil_serial(2029, 12, 15);
  EXPECT_EQ(bond.yield(5e-310), -1.0);
  EXPECT_EQ(bond.error, 460);
  // 1.06 / 7e-306 / 0.5 = 3e305 is finite, but no yield: a U.S. Treasury
  // would overflow its eight-decimal rounding.
  PikBond treasury = bond;
  treasury.type = 0;
  EXPECT_EQ(treasury.yield(7e-304), -1.0);
  EXPECT_EQ(treasury.error, 460);
  // Par on a one-period bond: (1 + 0.04 + 0.02) / 1 - 1 = 0.06 earned over
  // a whole actual/actual half-year, 0.5 years: 12 %.
  EXPECT_NEAR(bond.yield(100.0), 0.12, 1e-12);
  EXPECT_EQ(bond.error, 0);
}

TEST(PikExtremeInputs, TickValueThatOverflows) {
  PikBond bond;
  const double denormal = 2e-311;
  EXPECT_EQ(bond.value_of_bp(0.09, &denormal), -999.0);
  EXPECT_EQ(bond.error, 401);
  EXPECT_EQ(bond.value_of_32nd(0.09, &denormal), -999.0);
  EXPECT_EQ(bond.error, 401);
  EXPECT_GT(bond.value_of_32nd(0.09, nullptr), 0.0);
  EXPECT_EQ(bond.error, 0);
}

}  // namespace
}  // namespace kbond::testing
