// PIK risk measures against finite differences of the price, and their
// option words.
#include <gtest/gtest.h>

#include <cmath>

#include "pik/pik_test_bond.h"

namespace kbond::testing {
namespace {

PikBond stepped_bond() {
  PikBond bond;
  bond.dates = {civil_serial(2026, 6, 15), civil_serial(2030, 6, 15)};
  bond.cash = {0.03, 0.07};
  bond.in_kind = {0.06, 0.02};
  return bond;
}

TEST(PikRisk, ModifiedDurationIsTheRelativePriceSlope) {
  // Central difference of the price, 1e-6 either side of 8.5%.
  for (bool one_period : {false, true}) {
    PikBond bond = stepped_bond();
    if (one_period) bond.settlement = civil_serial(2030, 2, 1);
    const double y = 0.085, h = 1e-6;
    const double slope = (bond.price(y + h) - bond.price(y - h)) / (2 * h) * 0.01;
    const double dirty = bond.price(y) * 0.01 + bond.accrued() * 0.01;
    EXPECT_NEAR(bond.duration(y, nullptr), -slope / dirty, 1e-6) << one_period;
    EXPECT_EQ(bond.error, 0);
  }
}

TEST(PikRisk, MacaulayDurationAndTheKindWord) {
  PikBond bond = stepped_bond();
  const int32_t modified = 0, macaulay = 1;
  const double d = bond.duration(0.085, nullptr);
  EXPECT_DOUBLE_EQ(bond.duration(0.085, &modified), d);
  EXPECT_DOUBLE_EQ(bond.duration(0.085, &macaulay), d * (1.0 + 0.085 / 2.0));
}

TEST(PikRisk, ValueOfABasisPoint) {
  PikBond bond = stepped_bond();
  const double y = 0.085, h = 1e-6;
  const double per_bp = -(bond.price(y + h) - bond.price(y - h)) / (2 * h) * 1e-4;
  EXPECT_NEAR(bond.value_of_bp(y, nullptr), per_bp, 1e-8);
  const double scale = 50.0;
  EXPECT_NEAR(bond.value_of_bp(y, &scale), 2.0 * per_bp, 2e-8);
  EXPECT_DOUBLE_EQ(bond.value_of_32nd(y, nullptr),
                   1.0 / (bond.value_of_bp(y, nullptr) * 32.0));
}

TEST(PikRisk, BadScaleOrTicksIs310) {
  PikBond bond = stepped_bond();
  for (double bad : {0.0, -1.0, std::nan("")}) {
    EXPECT_EQ(bond.value_of_bp(0.08, &bad), -999.0);
    EXPECT_EQ(bond.error, 310);
    EXPECT_EQ(bond.value_of_32nd(0.08, &bad), -999.0);
    EXPECT_EQ(bond.error, 310);
  }
}

TEST(PikRisk, SetupFailuresAndPriceFailures) {
  PikBond bond = stepped_bond();
  bond.type = 60;
  EXPECT_EQ(bond.duration(0.08, nullptr), -1.0);
  EXPECT_EQ(bond.error, 1);
  EXPECT_EQ(bond.value_of_bp(0.08, nullptr), -1.0);
  EXPECT_EQ(bond.error, 1);
  bond.type = 500;
  EXPECT_EQ(bond.value_of_bp(-5.0, nullptr), -999.0);
  EXPECT_EQ(bond.error, 401);
  EXPECT_EQ(bond.duration(-5.0, nullptr), -1.0);
  EXPECT_EQ(bond.error, 401);
}

}  // namespace
}  // namespace kbond::testing
