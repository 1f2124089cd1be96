// Exponents counted in actual days: 365-day years (Colombian bonds) and
// 365.25-day years (short bonds quoted by that method).
#include <gtest/gtest.h>

#include <cmath>

#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::price;
using testing::serial;
using testing::TestBond;

constexpr double kTight = 1e-10;

// 7% annual Colombian bond (type 370, actual/365) maturing 1 March 2029,
// settled 10 January 2025, 50 days before the next coupon.
bond_desc colombian_bond(TestBond& b, int32_t yield_method_arg) {
  b.type = 370;
  b.frequency = 1;
  b.rates[0] = 0.07;
  b.maturity = serial(1, 3, 2029);
  b.settlement = serial(10, 1, 2025);
  b.yield_method_arg = yield_method_arg;
  bond_desc d = b.describe();
  d.accrual_basis = 5;
  d.basis = d.basis_accrual = 365.0;
  d.tn = 50.0 / 365.0;
  d.accrued = 0.07 * 315.0 / 365.0;
  return d;
}

TEST(Actual365Evaluator, ExponentsCountTheLeapDay) {
  // Coupons 1 March 2025 ... 2029 lie 0, 365, 730, 1096 and 1461 days
  // after the next coupon (29 February 2028 in between):
  //   P = sum 0.07 v^(50/365 + days/365) + v^(50/365 + 1461/365) - accrued
  TestBond b;
  const bond_desc d = colombian_bond(b, 0);
  ASSERT_EQ(final_period_method(d), 2);
  const double y = 0.06, v = 1.0 / 1.06, t0 = 50.0 / 365.0;
  double pv = 0.0;
  for (int days : {0, 365, 730, 1096, 1461}) pv += 0.07 * std::pow(v, t0 + days / 365.0);
  pv += std::pow(v, t0 + 1461.0 / 365.0);
  EXPECT_NEAR(price(d, y), (pv - d.accrued) * 100.0, kTight);
}

TEST(Actual365Evaluator, BusinessDayPaymentsCountDaysBetweenMovedDates) {
  // 1 March 2025 is a Saturday (paid Monday 3 March, 52 days after
  // settlement), 1 March 2026 a Sunday (paid 2 March). From 3 March 2025
  // the payments lie 364, 728, 1094 and 1459 days on.
  TestBond b;
  const bond_desc d = colombian_bond(b, 1);
  const double y = 0.06, v = 1.0 / 1.06, t0 = 52.0 / 365.0;
  double pv = 0.0;
  for (int days : {0, 364, 728, 1094, 1459}) pv += 0.07 * std::pow(v, t0 + days / 365.0);
  pv += std::pow(v, t0 + 1459.0 / 365.0);
  EXPECT_NEAR(price(d, y), (pv - d.accrued) * 100.0, kTight);
}

// 6% semi-annual maturing 15 November 2028 settled 15 February 2025:
// 8 coupons, quoted by the actual/365.25 method (override -5).
TestBond short_bond() {
  TestBond b;
  b.rates[0] = 0.06;
  b.maturity = serial(15, 11, 2028);
  b.settlement = serial(15, 2, 2025);
  b.yield_method_arg = -5;
  return b;
}

TEST(Actual36525Evaluator, ExponentsInDaysOverQuarterLeapYears) {
  // t0 = 89 days (15 Feb to 15 May 2025) x 2 / 365.25; each later coupon
  // its days after 15 May 2025 x 2 / 365.25.
  TestBond b = short_bond();
  const bond_desc d = b.describe();
  ASSERT_EQ(d.whole_periods, 8);
  const double y = 0.055, v = 1.0 / 1.0275, per_day = 2.0 / 365.25;
  double pv = 0.0;
  for (int k = 0; k < 8; ++k) {
    const int32_t date = dates::add_months(d.next_coupon, 6 * k, 0);
    const double t = (date - d.settlement) * per_day;
    pv += (0.03 + (k == 7 ? 1.0 : 0.0)) * std::pow(v, t);
  }
  EXPECT_NEAR(price(d, y), (pv - d.accrued) * 100.0, kTight);
}

TEST(Actual36525Evaluator, LongerBondsFallBackToWholePeriods) {
  // 13 periods (15 May 2025 ... 15 May 2031) exceed the method's twelve.
  TestBond quoted = short_bond(), standard = short_bond();
  quoted.maturity = standard.maturity = serial(15, 5, 2031);
  standard.yield_method_arg = 0;
  const bond_desc q = quoted.describe(), s = standard.describe();
  ASSERT_EQ(q.remaining_periods(), 13);
  EXPECT_DOUBLE_EQ(price(q, 0.055), price(s, 0.055));
}

}  // namespace
}  // namespace kbond::engine
