// Choosing the evaluator: the final-period method of each market, the
// yield-method overrides, and the second derivative formed from the
// evaluators' first derivatives.
#include <gtest/gtest.h>

#include "dates/day_count.h"
#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::price;
using testing::serial;
using testing::TestBond;

// A hand-made description with only the fields the final-period rules read.
bond_desc shape(int32_t type, int32_t periods_left, int32_t simple_final, int32_t days_left,
                int32_t accrual_basis = 0, int32_t settlement = serial(1, 6, 2005),
                int32_t yield_method_arg = 0) {
  bond_desc d;
  d.type = type;
  d.whole_periods = periods_left;
  d.simple_final = simple_final;
  d.settlement = settlement;
  d.maturity = settlement + days_left;
  d.accrual_basis = accrual_basis;
  d.yield_method_arg = yield_method_arg;
  return d;
}

TEST(FinalPeriodMethod, MostMarketsUseSimpleInterestForTheLastPeriodWhenAsked) {
  EXPECT_EQ(final_period_method(shape(0, 1, 1, 100)), 1);
  EXPECT_EQ(final_period_method(shape(0, 1, 0, 100)), 0);
  EXPECT_EQ(final_period_method(shape(0, 2, 1, 300)), 0);
  EXPECT_EQ(final_period_method(shape(40, 1, 1, 100)), 1);
  EXPECT_EQ(final_period_method(shape(1050, 1, 1, 100)), 1);  // custom types too
  // Variant codes inside the Spanish range follow the general rule.
  EXPECT_EQ(final_period_method(shape(282, 1, 1, 100)), 1);
  EXPECT_EQ(final_period_method(shape(285, 2, 1, 300)), 0);
}

TEST(FinalPeriodMethod, ColombianAndPortugueseFuturesCountActualDays) {
  for (int32_t type : {370, 700}) {
    EXPECT_EQ(final_period_method(shape(type, 3, 1, 1000)), 2);
    EXPECT_EQ(final_period_method(shape(type, 1, 1, 100)), 1);
    EXPECT_EQ(final_period_method(shape(type, 1, 0, 100)), 2);
  }
}

TEST(FinalPeriodMethod, CurrentSpanishRules) {
  EXPECT_EQ(final_period_method(shape(280, 2, 1, 376)), 3);
  EXPECT_EQ(final_period_method(shape(281, 2, 1, 377)), 4);
  EXPECT_EQ(final_period_method(shape(280, 2, 0, 376)), 4) << "simple final not set";
  EXPECT_EQ(final_period_method(shape(280, 2, 1, 377, 5)), 2) << "actual/365 accrual";
  EXPECT_EQ(final_period_method(shape(280, 2, 1, 377, 0, serial(9, 5, 1999))), 0)
      << "settled before 10 May 1999";
  EXPECT_EQ(final_period_method(shape(280, 2, 1, 377, 0, serial(10, 5, 1999))), 4);
  EXPECT_EQ(final_period_method(shape(281, 2, 1, 377, 0, serial(1, 6, 2005), 1)), 0)
      << "business-day payments";
}

TEST(FinalPeriodMethod, PreEmuSpanishRules) {
  for (int32_t type : {284, 286}) {
    EXPECT_EQ(final_period_method(shape(type, 2, 1, 376)), 3);
    EXPECT_EQ(final_period_method(shape(type, 2, 1, 377)), 0);
    EXPECT_EQ(final_period_method(shape(type, 2, 1, 377, 5)), 2);
  }
}

// 5% semi-annual, 15 Nov 2034, settled 15 Feb 2025.
TestBond ten_year_bond(int32_t type, int32_t yield_method_arg) {
  TestBond b;
  b.type = type;
  b.rates[0] = 0.05;
  b.settlement = serial(15, 2, 2025);
  b.maturity = serial(15, 11, 2034);
  b.yield_method_arg = yield_method_arg;
  return b;
}

TEST(YieldMethodDispatch, OverridesSelectTheEvaluator) {
  // -2 selects the Japanese simple yield: (100 + 5 T) / (1 + y T) with T
  // the years to maturity in the bond's own day count.
  TestBond simple = ten_year_bond(500, -2);
  const bond_desc d = simple.describe();
  const double years = dates::year_fraction(d.settlement, d.maturity, 0);
  EXPECT_NEAR(price(d, 0.04), (100.0 + 5.0 * years) / (1.0 + 0.04 * years), 1e-10);
  // -1 and -6 keep the standard method of a Japanese bond.
  TestBond jgb = ten_year_bond(200, -1), standard = ten_year_bond(500, 0);
  EXPECT_DOUBLE_EQ(price(jgb.describe(), 0.04), price(standard.describe(), 0.04));
}

TEST(SecondDerivative, CentralDifferenceOfFirstDerivatives) {
  // Standard evaluator: (D1(y + 5e-6) - D1(y - 5e-6)) / 1e-5, which agrees
  // with the second difference of prices.
  TestBond b = ten_year_bond(500, 0);
  const bond_desc d = b.describe();
  const double y = 0.055;
  double second = 0.0, below = 0.0, above = 0.0;
  price(d, y, nullptr, &second);
  price(d, y - 5e-6, &below);
  price(d, y + 5e-6, &above);
  EXPECT_DOUBLE_EQ(second, (above - below) * 99999.99999999999);
  EXPECT_NEAR(second, testing::price_curvature(d, y), 1e-4);
}

TEST(SecondDerivative, AFailedEvaluationStopsWithItsError) {
  // A broken last period is outside Moosmüller's method.
  TestBond b = ten_year_bond(830, 0);
  bond_desc d = b.describe();
  d.partial_period = 1;
  d.last_discount = d.last_coupon = 0.5;
  double first = 7.0, second = 7.0;
  int32_t error = 0;
  EXPECT_DOUBLE_EQ(price(d, 0.05, &first, &second, &error), -999.9);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(second, 7.0) << "no second derivative from a failed evaluation";
}

}  // namespace
}  // namespace kbond::engine
