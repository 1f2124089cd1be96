// The two simple-interest evaluators with analytic derivatives: the last
// coupon period at money-market yield, and the Japanese simple yield.
#include <gtest/gtest.h>

#include "dates/day_count.h"
#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::price;
using testing::serial;
using testing::TestBond;

constexpr double kTight = 1e-10;

// 5% semi-annual maturing 15 Nov 2034, settled 15 Aug 2034: the last
// period (15 May to 15 Nov, 184 days), 92 days accrued and 92 to run.
TestBond last_period_bond() {
  TestBond b;
  b.rates[0] = 0.05;
  b.settlement = serial(15, 8, 2034);
  b.maturity = serial(15, 11, 2034);
  return b;
}

TEST(SimpleFinalEvaluator, MatchesTheSpreadsheetLastPeriodFormula) {
  // Spreadsheet PRICE with one period left:
  //   (100 + 100 r/f) / (1 + DSR/E x y/f) - 100 A/E x r/f
  //   = 102.5 / (1 + 92/184 x 0.03) - 100 x 92/184 x 0.025
  //   = 102.5 / 1.015 - 1.25 = 99.735221674876847
  TestBond b = last_period_bond();
  const bond_desc d = b.describe();
  ASSERT_EQ(final_period_method(d), 1);
  EXPECT_NEAR(price(d, 0.06), 99.735221674876847, kTight);
}

TEST(SimpleFinalEvaluator, AnalyticDerivativesMatchDifferences) {
  TestBond b = last_period_bond();
  const bond_desc d = b.describe();
  for (double y : {0.0, 0.04, 0.12}) {
    double first = 0.0, second = 0.0;
    price(d, y, &first, &second);
    EXPECT_NEAR(first, testing::price_slope(d, y), 1e-7) << "y = " << y;
    EXPECT_NEAR(second, testing::price_curvature(d, y), 1e-5) << "y = " << y;
  }
}

TEST(SimpleFinalEvaluator, ExDividendDropsTheFinalCoupon) {
  // With the coupon gone only the redemption is discounted:
  //   100 / (1 + 0.25 x 0.06) - 100 x accrued, accrued = 0.0125 - 0.025.
  TestBond b = last_period_bond();
  bond_desc d = b.describe();
  testing::go_ex_dividend(d);
  EXPECT_NEAR(price(d, 0.06), 100.0 / 1.015 + 1.25, kTight);
}

TEST(SimpleFinalEvaluator, DiscountTaxIsPaidOnTheGainAtMaturity) {
  // Below par the buyer pays P = (R + C - g (R - P)) / (1 + T y) - A.
  // The horizon is set before maturity so that the discount tax rate
  // applies (the test bond carries no coupon tax).
  TestBond b = last_period_bond();
  b.discount_tax = 0.125;
  bond_desc d = b.describe();
  d.horizon_date = d.settlement + 30;
  const double y = 0.09, growth = 1.0 + 0.25 * y;
  const double p = price(d, y) / 100.0;
  ASSERT_LT(p, 1.0);
  EXPECT_NEAR(p, (1.0 + 0.025 - 0.125 * (1.0 - p)) / growth - d.accrued, kTight);
  TestBond untaxed = last_period_bond();
  EXPECT_DOUBLE_EQ(price(d, 0.03), price(untaxed.describe(), 0.03)) << "above par: no tax";
}

TEST(SimpleFinalEvaluator, VanishingDenominatorFails) {
  // 1 + T y = 0 at y = -1 / 0.25.
  TestBond b = last_period_bond();
  int32_t error = 0;
  EXPECT_DOUBLE_EQ(price(b.describe(), -4.0, nullptr, nullptr, &error), -100.0);
  EXPECT_EQ(error, 401);
}

// 1.5% JGB, 20 March 2030, settled on the coupon date 20 March 2025:
// exactly 5 years of 365 days (29 February 2028 does not count).
TestBond jgb() {
  TestBond b;
  b.type = 200;
  b.rates[0] = 0.015;
  b.settlement = serial(20, 3, 2025);
  b.maturity = serial(20, 3, 2030);
  return b;
}

bond_desc describe_jgb(TestBond& b) {
  bond_desc d = b.describe();
  d.accrual_basis = 13;
  d.simple_final = 0;
  return d;
}

TEST(JapaneseSimpleEvaluator, SimpleYieldByHand) {
  // Simple yield y = (c + (100 - P) / T) / P, so P = (100 + c T) / (1 + y T):
  //   (100 + 1.5 x 5) / (1 + 0.012 x 5) = 107.5 / 1.06 = 101.41509433962264
  TestBond b = jgb();
  const bond_desc d = describe_jgb(b);
  ASSERT_DOUBLE_EQ(dates::year_fraction(d.settlement, d.maturity, 13), 5.0);
  double first = 0.0, second = 0.0;
  const double p = price(d, 0.012, &first, &second);
  EXPECT_NEAR(p, 101.41509433962264, kTight);
  // And the price gives the yield back by the market's formula.
  EXPECT_NEAR((1.5 + (100.0 - p) / 5.0) / p, 0.012, 1e-14);
  // dP/dy = -P T / (1 + y T) per unit of face.
  EXPECT_NEAR(first, -1.0141509433962264 * 5.0 / 1.06, kTight);
  EXPECT_NEAR(first, testing::price_slope(d, 0.012), 1e-7);
  EXPECT_NEAR(second, testing::price_curvature(d, 0.012), 1e-4);
}

TEST(JapaneseSimpleEvaluator, SteppedCouponsSumEachPeriodsCoupon) {
  // 1% until 20 March 2027, 2% after: the rest of the current period
  // (0.5 year at 1%), three more 1% coupons and six 2% coupons:
  //   Q = 0.005 + 3 x 0.005 + 6 x 0.01 = 0.08
  //   P = (0.08 + 1) / (1 + 5 x 0.012) = 101.88679245283019
  TestBond b = jgb();
  b.n_steps = 2;
  b.rates[0] = 0.01;
  b.rates[1] = 0.02;
  b.step_dates[0] = serial(20, 3, 2027);
  const bond_desc d = describe_jgb(b);
  EXPECT_NEAR(price(d, 0.012), 101.88679245283019, kTight);
}

TEST(JapaneseSimpleEvaluator, VanishingDenominatorFails) {
  // 1 + T y = 0 at y = -0.2.
  TestBond b = jgb();
  int32_t error = 0;
  EXPECT_DOUBLE_EQ(price(describe_jgb(b), -0.2, nullptr, nullptr, &error), -100.0);
  EXPECT_EQ(error, 401);
}

}  // namespace
}  // namespace kbond::engine
