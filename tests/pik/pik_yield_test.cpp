// PIK yields: the closed form over the last period, round trips through the
// price over many periods, and the price checks.
#include <gtest/gtest.h>

#include <cmath>

#include "pik/pik_test_bond.h"

namespace kbond::testing {
namespace {

TEST(PikYield, SinglePeriodClosedForm) {
  // 61 of the 182 days of the last period remain (see the price test):
  // yield = (final amount / dirty price - 1) / t with t = 61/364 years.
  PikBond bond;
  bond.settlement = civil_serial(2030, 4, 15);
  const double price = 99.5;
  const double dirty = 0.995 + 121.0 / 364.0 * 0.08;
  const double expected = (1.06 / dirty - 1.0) / (61.0 / 364.0);
  EXPECT_NEAR(bond.yield(price), expected, 1e-12);
  EXPECT_EQ(bond.error, 0);
  // and back: the price at that yield is the price given.
  EXPECT_NEAR(bond.price(expected), price, 1e-9);
}

TEST(PikYield, SinglePeriodRatioOfExactlyOneIsZero) {
  // Settled on the last coupon date before maturity, nothing accrued:
  // 100 + 4 cash + 2 in kind = 106 is paid for 106.
  PikBond bond;
  bond.settlement = civil_serial(2029, 12, 15);
  EXPECT_EQ(bond.yield(106.0), 0.0);
  EXPECT_EQ(bond.error, 0);
}

TEST(PikYield, RoundTripsOverManyPeriods) {
  PikBond stepped;
  stepped.dates = {civil_serial(2026, 6, 15), civil_serial(2028, 6, 15),
                   civil_serial(2032, 6, 15)};
  stepped.cash = {0.0, 0.04, 0.06};
  stepped.in_kind = {0.10, 0.06, 0.0};
  PikBond flat;
  for (PikBond* bond : {&flat, &stepped}) {
    for (double y : {-0.02, 0.0, 0.05, 0.12, 0.35}) {
      // The solver stops within 1e-6 of face: the yield found reprices the
      // bond to that, and lies within 1e-6 of face over the price slope.
      const double price = bond->price(y);
      ASSERT_EQ(bond->error, 0);
      const double found = bond->yield(price);
      EXPECT_EQ(bond->error, 0);
      EXPECT_NEAR(bond->price(found), price, 1e-4) << y;
      EXPECT_NEAR(found, y, 1e-5) << y;
    }
  }
}

TEST(PikYield, QuarterlyBondOffGridCallRoundTrips) {
  PikBond bond;
  const int32_t quarterly = 4;
  const int32_t call = civil_serial(2028, 8, 1);
  bond.frequency = &quarterly;
  bond.call = &call;
  const double price = bond.price(0.085);
  EXPECT_NEAR(bond.yield(price), 0.085, 1e-7);
}

TEST(PikYield, RoundingByType) {
  // The solver's yield, rounded: Treasury to 8 decimals, corporate to 5.
  PikBond bond;
  bond.type = 3;
  const double y = bond.yield(97.25);
  EXPECT_EQ(bond.error, 0);
  EXPECT_DOUBLE_EQ(y, std::floor(y * 1e5 + 0.5) * 1e-5);
  bond.type = 0;
  const double treasury = bond.yield(97.25);
  EXPECT_DOUBLE_EQ(treasury, std::floor(treasury * 1e8 + 0.5) * 1e-8);
}

TEST(PikYield, NonPositiveOrNanPriceIs460) {
  PikBond bond;
  for (double price : {0.0, -5.0, std::nan("")}) {
    EXPECT_EQ(bond.yield(price), -1.0);
    EXPECT_EQ(bond.error, 460);
  }
}

TEST(PikYield, UnreachablePriceFailsWithMinus999) {
  // Settled on a coupon date, even a 2500% yield leaves the bond worth
  // 100 * 0.04 / 13.5 = 0.3 for its next coupon alone: no yield the
  // solvers search gives 0.001.
  PikBond bond;
  bond.settlement = civil_serial(2024, 12, 15);
  EXPECT_EQ(bond.yield(0.001), -999.0);
  EXPECT_EQ(bond.error, 1);
}

TEST(PikYield, ZeroTimeToTheCallIs460) {
  // Settled on the maturity date: one period of zero length.
  PikBond bond;
  bond.settlement = civil_serial(2030, 6, 15);
  EXPECT_EQ(bond.yield(99.0), -1.0);
  EXPECT_EQ(bond.error, 460);
}

}  // namespace
}  // namespace kbond::testing
