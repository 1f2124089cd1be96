// The two German money-market conventions, against hand computations, and
// the bond shapes they refuse.
#include <gtest/gtest.h>

#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::price;
using testing::serial;
using testing::TestBond;

constexpr double kTight = 1e-10;

// 6% semi-annual maturing 15 Nov 2026, settled 15 Feb 2025 with the next
// coupon 15 May 2025: four coupons remain. The fractions are set to round
// values: a quarter of a year to the next coupon, a quarter accrued.
bond_desc german_bond(TestBond& b, int32_t type) {
  b.type = type;
  b.rates[0] = 0.06;
  b.settlement = serial(15, 2, 2025);
  b.maturity = serial(15, 11, 2026);
  bond_desc d = b.describe();
  d.tn = 0.25;
  d.accrued = 0.015;
  return d;
}

TEST(MoosmullerEvaluator, SimpleInterestToTheNextCouponCompoundAfter) {
  // y = 5%, r = 0.025, t = 2 x 0.25 = 0.5 periods:
  //   d1 = 1 / (1 + 0.5 x 0.025) = 1 / 1.0125
  //   dirty = d1 (0.03 + 0.03/1.025 + 0.03/1.025^2 + 1.03/1.025^3)
  //         = 1.0313877706825192
  //   clean = (dirty - 0.015) x 100 = 101.63877706825193
  TestBond b;
  const bond_desc d = german_bond(b, 830);
  EXPECT_NEAR(price(d, 0.05), 101.63877706825193, kTight);
}

TEST(MoosmullerEvaluator, RefusesABrokenLastPeriod) {
  TestBond b;
  bond_desc d = german_bond(b, 830);
  d.whole_periods = 3;
  d.partial_period = 1;
  d.last_discount = d.last_coupon = 0.5;
  int32_t error = 0;
  EXPECT_DOUBLE_EQ(price(d, 0.05, nullptr, nullptr, &error), -999.9);
  EXPECT_EQ(error, 1);
}

TEST(BraessEvaluator, AnnualCompoundingWithSimpleInterestInsideTheYear) {
  // y = 5%, f = 2, h = y / 4 = 0.0125, c = 0.06.
  //   T = (4 - 1)/2 + 0.25 = 1.75: N = 1 whole year, phi = 0.75
  //   q = 3 mod 2 = 1: two coupons in the broken year, carried to its end
  //   A = 0.03 (1 + 1 x (1 + 2 x 0.0125)) = 0.06075
  //   V = 1.05, S = (0.05/0.05) x 0.06 x (1 + 0.0125) = 0.06075
  //   dirty = ((1 + 0.06075)/1.05 + 0.06075) / (1 + 0.75 x 0.05)
  //         = 1.0322776821572004
  //   clean = (dirty - 0.015) x 100 = 101.72776821572005
  TestBond b;
  const bond_desc d = german_bond(b, 820);
  double slope = 0.0;
  EXPECT_NEAR(price(d, 0.05, &slope), 101.72776821572005, kTight);
  // A forward difference over 5e-6: within half a step of curvature.
  EXPECT_NEAR(slope, testing::price_slope(d, 0.05), 5e-4);
  EXPECT_NEAR(slope, (price(d, 0.05 + 5e-6) - price(d, 0.05)) * 2000.0, 1e-12);
}

TEST(BraessEvaluator, ZeroYieldAddsTheCashFlows) {
  // At y = 0 every factor is 1: 4 x 0.03 + 1 - 0.015 = 1.105.
  TestBond b;
  const bond_desc d = german_bond(b, 820);
  EXPECT_NEAR(price(d, 0.0), 110.5, kTight);
}

TEST(BraessEvaluator, AnnualBondAgreesWithMoosmuller) {
  // With one coupon a year there is no simple interest inside a year, and
  // both methods discount at (1 + t y) for the broken year and (1 + y)^k
  // after it.
  TestBond a, m;
  a.frequency = m.frequency = 1;
  bond_desc braess = german_bond(a, 820), moos = german_bond(m, 830);
  braess.whole_periods = moos.whole_periods = 2;
  braess.tn = moos.tn = 0.75;
  braess.full_coupon = moos.full_coupon = 0.06;
  EXPECT_NEAR(price(braess, 0.045), price(moos, 0.045), kTight);
}

TEST(BraessEvaluator, RefusesShapesOutsideTheMethod) {
  TestBond b;
  const bond_desc base = german_bond(b, 820);
  bond_desc odd_first = base, broken_last = base, stepped = base, ex_dividend = base;
  odd_first.odd_first = 1;
  broken_last.partial_period = 1;
  stepped.n_coupons = 2;
  ex_dividend.exdiv = 1;
  for (const bond_desc* d : {&odd_first, &broken_last, &stepped, &ex_dividend}) {
    int32_t error = 0;
    EXPECT_DOUBLE_EQ(price(*d, 0.05, nullptr, nullptr, &error), -999.9);
    EXPECT_EQ(error, 1);
  }
}

}  // namespace
}  // namespace kbond::engine
