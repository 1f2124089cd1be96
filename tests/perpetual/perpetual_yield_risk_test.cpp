// Perpetual yields and risk measures: round trips, the perpetuity's known
// durations, finite differences, and the option words.
#include <gtest/gtest.h>

#include <cmath>

#include "perpetual/perpetual_test_bond.h"

namespace kbond::testing {
namespace {

PerpetualBond stepped_mid_period() {
  PerpetualBond bond;
  bond.coupons = {0.02, 0.035, 0.05};
  bond.steps = {civil_serial(2026, 12, 15), civil_serial(2029, 6, 15), civil_serial(2031, 6, 15)};
  bond.settlement = civil_serial(2025, 8, 1);
  return bond;
}

TEST(PerpetualYield, RoundTrips) {
  PerpetualBond flat;
  flat.settlement = civil_serial(2025, 9, 20);
  PerpetualBond stepped = stepped_mid_period();
  PerpetualBond moved = stepped_mid_period();
  const int32_t on_business_days = 1;
  moved.rule = &on_business_days;
  PerpetualBond simple;
  simple.type = 200;
  for (PerpetualBond* bond : {&flat, &stepped, &moved, &simple}) {
    for (double y : {0.01, 0.045, 0.09, 0.3}) {
      const double price = bond->price(y);
      ASSERT_EQ(bond->error, 0);
      const double found = bond->yield(price);
      EXPECT_EQ(bond->error, 0);
      // Newton stops within 1e-6 of face.
      EXPECT_NEAR(bond->price(found), price, 1e-4) << y;
      EXPECT_NEAR(found, y, 1e-5) << y;
    }
  }
}

TEST(PerpetualYield, CouponOverPriceAtACouponDate) {
  PerpetualBond bond;
  EXPECT_NEAR(bond.yield(80.0), 0.06 / 0.8, 1e-7);
}

TEST(PerpetualYield, BadPriceIs350) {
  PerpetualBond bond;
  for (double price : {0.0, -3.0, std::nan("")}) {
    EXPECT_EQ(bond.yield(price), -1.0);
    EXPECT_EQ(bond.error, 350);
  }
}

TEST(PerpetualRisk, PerpetuityDurationsAtACouponDate) {
  // Annual perpetuity settled on a coupon date: P = c/y, so the modified
  // duration is 1/y and the Macaulay duration (1 + y)/y; the convexity is
  // 2/y^2.
  PerpetualBond bond;
  const int32_t annual = 1, macaulay = 1;
  bond.frequency = &annual;
  const double y = 0.05;
  EXPECT_NEAR(bond.duration(y, nullptr), 1.0 / y, 1e-9);
  EXPECT_NEAR(bond.duration(y, &macaulay), (1.0 + y) / y, 1e-9);
  EXPECT_NEAR(bond.convexity(y), 2.0 / (y * y), 1e-3);
  bond.type = 200;  // the formula's derivatives are exact
  EXPECT_NEAR(bond.convexity(y), 2.0 / (y * y), 1e-9);
}

TEST(PerpetualRisk, FiniteDifferencesOfThePrice) {
  const int32_t moosmuller = -4;
  PerpetualBond stepped = stepped_mid_period();
  PerpetualBond simple_first = stepped_mid_period();
  simple_first.rule = &moosmuller;
  for (PerpetualBond* bond : {&stepped, &simple_first}) {
    const double y = 0.045, h = 1e-5;
    const double up = bond->price(y + h), mid = bond->price(y), down = bond->price(y - h);
    const double dirty = (mid + bond->accrued()) * 0.01;
    const double slope = (up - down) / (2 * h) * 0.01;
    const double curvature = (up - 2 * mid + down) / (h * h) * 0.01;
    EXPECT_NEAR(bond->duration(y, nullptr), -slope / dirty, 1e-5);
    EXPECT_NEAR(bond->convexity(y), curvature / dirty, 0.5);
    EXPECT_NEAR(bond->value_of_bp(y, nullptr), -slope / 100.0, 1e-7);
    EXPECT_DOUBLE_EQ(bond->value_of_32nd(y, nullptr),
                     1.0 / (bond->value_of_bp(y, nullptr) * 32.0));
    EXPECT_EQ(bond->error, 0);
  }
}

TEST(PerpetualRisk, BadScaleOrTicksIs310) {
  PerpetualBond bond;
  for (double bad : {0.0, -2.0, std::nan("")}) {
    EXPECT_EQ(bond.value_of_bp(0.05, &bad), -999.0);
    EXPECT_EQ(bond.error, 310);
    EXPECT_EQ(bond.value_of_32nd(0.05, &bad), -999.0);
    EXPECT_EQ(bond.error, 310);
  }
}

TEST(PerpetualRisk, FailureValues) {
  PerpetualBond bond;
  EXPECT_EQ(bond.convexity(0.0), -999.0);
  EXPECT_EQ(bond.error, 401);
  EXPECT_EQ(bond.value_of_bp(0.0, nullptr), -999.0);
  EXPECT_EQ(bond.error, 401);
  EXPECT_EQ(bond.duration(0.0, nullptr), -1.0);
  EXPECT_EQ(bond.error, 401);
  bond.type = 15;  // unknown
  EXPECT_EQ(bond.convexity(0.05), -1.0);
  EXPECT_EQ(bond.error, 1);
  EXPECT_EQ(bond.value_of_bp(0.05, nullptr), -1.0);
  EXPECT_EQ(bond.error, 1);
}

}  // namespace
}  // namespace kbond::testing
