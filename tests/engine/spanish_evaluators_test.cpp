// Spanish government bonds: chained simple interest within 377 days of
// maturity, and a maturity on a holiday paid (and discounted) to the next
// business day.
#include <gtest/gtest.h>

#include <cmath>

#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::price;
using testing::serial;
using testing::TestBond;

constexpr double kTight = 1e-10;

// 5% annual Spanish bond (type 280) maturing Thursday 30 July 2026.
TestBond spanish_bond(int32_t days_to_maturity) {
  TestBond b;
  b.type = 280;
  b.frequency = 1;
  b.rates[0] = 0.05;
  b.maturity = serial(30, 7, 2026);
  b.settlement = b.maturity - days_to_maturity;
  return b;
}

TEST(SpanishEvaluators, ThreeHundredSeventySixDaysUseChainedSimpleInterest) {
  // Settled 19 July 2025: coupons on 30 July 2025 (11 days) and at
  // maturity (376 days), 354 of 365 days accrued.
  //   DF1 = 1 / (1 + 11/360 x 0.04), DF2 = DF1 / (1 + 365/360 x 0.04)
  //   (0.05 DF1 + 1.05 DF2 - 0.05 x 354/365) x 100 = 100.92903509177549
  TestBond b = spanish_bond(376);
  const bond_desc d = b.describe();
  ASSERT_EQ(final_period_method(d), 3);
  EXPECT_NEAR(price(d, 0.04), 100.92903509177549, kTight);
}

TEST(SpanishEvaluators, ThreeHundredSeventySevenDaysCompoundAsUsual) {
  // Settled 18 July 2025, maturity a business day: the standard evaluator.
  //   v = 1/1.04, t = 12/365:
  //   (0.05 v^t + 1.05 v^(t+1) - 0.05 x 353/365) x 100 = 100.98937817037621
  TestBond b = spanish_bond(377);
  const bond_desc d = b.describe();
  ASSERT_EQ(final_period_method(d), 4);
  EXPECT_NEAR(price(d, 0.04), 100.98937817037621, kTight);
}

TEST(SpanishEvaluators, ChainedSimpleInterestPaysAHolidayMaturityNextDay) {
  // Maturity Tuesday 25 December 2029, settled 376 days before: the
  // redemption and last coupon are paid on 26 December, 366 days after the
  // coupon of 25 December 2028.
  TestBond b;
  b.type = 280;
  b.frequency = 1;
  b.rates[0] = 0.05;
  b.maturity = serial(25, 12, 2029);
  b.settlement = b.maturity - 376;
  const bond_desc d = b.describe();
  ASSERT_EQ(final_period_method(d), 3);
  const double y = 0.04;
  const double df1 = 1.0 / (1.0 + 11.0 / 360.0 * y);
  const double df2 = df1 / (1.0 + 366.0 / 360.0 * y);
  EXPECT_NEAR(price(d, y), (0.05 * df1 + 1.05 * df2 - d.accrued) * 100.0, kTight);
}

TEST(SpanishEvaluators, ChainedSimpleInterestExDividendStillChainsThroughTheCouponDate) {
  TestBond b = spanish_bond(376);
  bond_desc d = b.describe();
  testing::go_ex_dividend(d);
  const double y = 0.04;
  const double df2 = 1.0 / (1.0 + 11.0 / 360.0 * y) / (1.0 + 365.0 / 360.0 * y);
  EXPECT_NEAR(price(d, y), (1.05 * df2 - d.accrued) * 100.0, kTight);
}

TEST(SpanishEvaluators, DelayedMaturityDiscountsTheFinalFlowsForTheExtraDay) {
  // 5% annual maturing Tuesday 25 December 2029 (a holiday), settled
  // 10 January 2025: paid on 26 December, one day of a 365-day last period
  // later. Coupons at t, t+1, ..., t+4 periods, the last with the
  // redemption at t + 4 + 1/365.
  TestBond b;
  b.type = 280;
  b.frequency = 1;
  b.rates[0] = 0.05;
  b.maturity = serial(25, 12, 2029);
  b.settlement = serial(10, 1, 2025);
  const bond_desc d = b.describe();
  ASSERT_EQ(final_period_method(d), 4);
  const double y = 0.04, v = 1.0 / 1.04, t = d.tn;
  double pv = 0.0;
  for (int k = 0; k < 4; ++k) pv += 0.05 * std::pow(v, t + k);
  pv += 1.05 * std::pow(v, t + 4 + 1.0 / 365.0);
  EXPECT_NEAR(price(d, y), (pv - d.accrued) * 100.0, kTight);
}

TEST(SpanishEvaluators, DelayedMaturityOnABusinessDayIsTheStandardPrice) {
  TestBond spanish = spanish_bond(900);
  TestBond generic = spanish_bond(900);
  generic.type = 500;
  const bond_desc s = spanish.describe();
  const bond_desc g = generic.describe();
  ASSERT_EQ(final_period_method(s), 4);
  ASSERT_EQ(final_period_method(g), 0);
  EXPECT_DOUBLE_EQ(price(s, 0.045), price(g, 0.045));
}

}  // namespace
}  // namespace kbond::engine
