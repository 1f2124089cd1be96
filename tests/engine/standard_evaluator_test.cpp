// The standard compound-yield evaluator: the annuity closed form against
// the explicit sum over coupons, a zero yield, ex-dividend settlement, a
// broken last period, business-day payment dates and a vanishing 1 + y/f.
#include <gtest/gtest.h>

#include <cmath>

#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::price;
using testing::serial;
using testing::TestBond;

constexpr double kTight = 1e-10;

// 5% semi-annual, 15 Nov 2034, settled 15 Feb 2025: 20 coupons remain.
TestBond ten_year_bond() {
  TestBond b;
  b.rates[0] = 0.05;
  b.settlement = serial(15, 2, 2025);
  b.maturity = serial(15, 11, 2034);
  return b;
}

// The price as the plain sum of discounted cash flows, written out
// independently of the evaluator: coupon c at t, t+1, ..., t+m, the
// redemption with the last coupon.
double explicit_sum(const bond_desc& d, double y) {
  const double f = d.frequency;
  const double v = 1.0 / (1.0 + y / f);
  const double t = f * d.tn;
  const int m = d.whole_periods - 1;
  double pv = d.exdiv ? 0.0 : d.full_coupon * std::pow(v, t);
  for (int k = 1; k <= m; ++k) pv += d.coupons[0] / f * std::pow(v, t + k);
  pv += d.redemption * 0.01 * std::pow(v, t + m);
  return (pv - d.accrued) * 100.0;
}

TEST(StandardEvaluator, ClosedFormMatchesTheSumOverCoupons) {
  TestBond b = ten_year_bond();
  const bond_desc d = b.describe();
  ASSERT_EQ(d.whole_periods, 20);
  for (double y : {0.001, 0.03, 0.05, 0.0731, 0.25}) {
    EXPECT_NEAR(price(d, y), explicit_sum(d, y), kTight) << "y = " << y;
  }
}

TEST(StandardEvaluator, SteppedBondWithEqualStepsPricesLikeTheSingleStep) {
  // Two steps at the same rate take the per-coupon loop; the result must
  // not depend on the path.
  TestBond single = ten_year_bond();
  TestBond stepped = ten_year_bond();
  stepped.n_steps = 2;
  stepped.rates[1] = stepped.rates[0];
  stepped.step_dates[0] = serial(15, 11, 2029);
  const bond_desc a = single.describe();
  const bond_desc b = stepped.describe();
  for (double y : {0.0, 0.02, 0.06, 0.11}) {
    double da = 0.0, db = 0.0;
    EXPECT_NEAR(price(a, y, &da), price(b, y, &db), kTight) << "y = " << y;
    EXPECT_NEAR(da, db, 1e-9) << "y = " << y;
  }
}

TEST(StandardEvaluator, SteppedCouponTakesTheRateOfEachPeriod) {
  // 4% until 15 Nov 2029, 6% after: the first 10 coupons (15 May 2025 ..
  // 15 Nov 2029) at 2 per period, the last 10 at 3.
  TestBond b = ten_year_bond();
  b.n_steps = 2;
  b.rates[0] = 0.04;
  b.rates[1] = 0.06;
  b.step_dates[0] = serial(15, 11, 2029);
  const bond_desc d = b.describe();
  const double y = 0.05, v = 1.0 / 1.025, t = 2.0 * d.tn;
  double pv = 0.0;
  for (int k = 0; k < 20; ++k) pv += (k < 10 ? 0.02 : 0.03) * std::pow(v, t + k);
  pv += std::pow(v, t + 19);
  EXPECT_NEAR(price(d, y), (pv - d.accrued) * 100.0, kTight);
}

TEST(StandardEvaluator, MatchesSpreadsheetPriceExample) {
  // Spreadsheet PRICE(15 Feb 2008, 15 Nov 2017, 5.75%, 6.5%, 100, 2, 30/360)
  // = 94.63436 (the worked example of the PRICE function's documentation).
  // 30/360: 90 days to the next coupon of a 180-day period, 90 accrued.
  TestBond b;
  b.type = 3;
  b.rates[0] = 0.0575;
  b.settlement = serial(15, 2, 2008);
  b.maturity = serial(15, 11, 2017);
  bond_desc d = b.describe();
  d.accrual_basis = 1;
  d.basis = d.basis_accrual = 360.0;
  d.tn = 90.0 / 360.0;
  d.accrued = 0.0575 * 90.0 / 360.0;
  EXPECT_NEAR(price(d, 0.065), 94.63436, 5e-6);
}

TEST(StandardEvaluator, ParBondOnACouponDateIsPricedAtPar) {
  TestBond b = ten_year_bond();
  b.settlement = serial(15, 5, 2025);
  const bond_desc d = b.describe();
  ASSERT_DOUBLE_EQ(d.accrued, 0.0);
  EXPECT_NEAR(price(d, 0.05), 100.0, kTight);
}

TEST(StandardEvaluator, ZeroYieldCountsEveryCashFlowInFull) {
  // 20 coupons of 2.5 plus 100, less accrued 5% x 92/181 (15 Nov 2024 to
  // 15 Feb 2025 of a 181-day period).
  TestBond b = ten_year_bond();
  const bond_desc d = b.describe();
  const double expected = 20 * 2.5 + 100.0 - 5.0 * 92.0 / 181.0 / 2.0;
  double slope = 0.0;
  EXPECT_NEAR(price(d, 0.0, &slope), expected, kTight);
  // At y = 0 the derivative is -sum(t_k cash_k) / f with t_k = t + k.
  const double t = 2.0 * d.tn;
  double weighted = 0.0;
  for (int k = 0; k < 20; ++k) weighted += 0.025 * (t + k);
  weighted += 1.0 * (t + 19);
  EXPECT_NEAR(slope, -weighted / 2.0, 1e-9);
  EXPECT_NEAR(slope, testing::price_slope(d, 0.0), 1e-6);
}

TEST(StandardEvaluator, ExDividendSettlementLeavesTheNextCouponOut) {
  TestBond b = ten_year_bond();
  bond_desc d = b.describe();
  testing::go_ex_dividend(d);
  EXPECT_LT(d.accrued, 0.0);
  for (double y : {0.0, 0.04, 0.09}) {
    EXPECT_NEAR(price(d, y), explicit_sum(d, y), kTight) << "y = " << y;
  }
  // Cum and ex prices differ by the coupon's discounting: clean ex = clean
  // cum + c (1 - v^t), the coupon paid back in accrued but no longer received.
  bond_desc cum = b.describe();
  const double y = 0.06, v = 1.0 / 1.03, t = 2.0 * cum.tn;
  EXPECT_NEAR(price(d, y) - price(cum, y), 2.5 * (1.0 - std::pow(v, t)), kTight);
}

TEST(StandardEvaluator, BrokenLastPeriodAddsItsFractionalCoupon) {
  // A short last period of half a regular one: after the 19 further whole
  // coupons, 0.4 of a coupon at 0.5 periods further, and the redemption.
  TestBond b = ten_year_bond();
  bond_desc d = b.describe();
  d.whole_periods = 19;
  d.partial_period = 1;
  d.last_discount = 0.5;
  d.last_coupon = 0.4;
  const double y = 0.045, v = 1.0 / 1.0225, t = 2.0 * d.tn;
  double pv = 0.0;
  for (int k = 0; k < 19; ++k) pv += 0.025 * std::pow(v, t + k);
  pv += (0.025 * 0.4 + 1.0) * std::pow(v, t + 18.5);
  EXPECT_NEAR(price(d, y), (pv - d.accrued) * 100.0, kTight);
}

TEST(StandardEvaluator, BusinessDayPaymentsShiftTheExponents) {
  // 15 Nov 2025, 15 May 2027, 15 Nov 2031 and 15 May 2032 fall on
  // Saturdays, 15 Nov 2026 and 15 May 2033 on Sundays: paid the following
  // Monday, 2 or 1 days late; each day adds f / basis = 1 / 181 periods
  // (act/act, basis 2 x 181 days of the current period).
  TestBond b = ten_year_bond();
  b.yield_method_arg = 1;
  const bond_desc d = b.describe();
  const double y = 0.05, v = 1.0 / 1.025, t = 2.0 * d.tn;
  const double per_day = 2.0 / d.basis_accrual;
  double pv = 0.0;
  for (int k = 0; k < 20; ++k) {
    const int32_t date = dates::add_months(d.next_coupon, 6 * k, 0);
    const int32_t weekday = dates::weekday_of(date);
    const int delay = weekday == dates::kSaturday ? 2 : weekday == dates::kSunday ? 1 : 0;
    const double cash = 0.025 + (k == 19 ? 1.0 : 0.0);
    pv += cash * std::pow(v, t + k + delay * per_day);
  }
  const double expected = (pv - d.accrued) * 100.0;
  EXPECT_NEAR(price(d, y), expected, kTight);
  TestBond plain = ten_year_bond();
  EXPECT_LT(price(d, y), price(plain.describe(), y)) << "late payments are worth less";
}

TEST(StandardEvaluator, YieldOfMinusOneHundredPercentPerPeriodFails) {
  TestBond b = ten_year_bond();
  const bond_desc d = b.describe();
  int32_t error = 0;
  EXPECT_DOUBLE_EQ(price(d, -2.0, nullptr, nullptr, &error), -100.0);
  EXPECT_EQ(error, 401);
}

}  // namespace
}  // namespace kbond::engine
