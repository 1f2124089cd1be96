// An amortising bond is priced as the weighted sum of bullet bonds, one per
// repayment date, and the rest of the face to maturity.
#include <gtest/gtest.h>

#include <vector>

#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::go_ex_dividend;
using testing::price;
using testing::serial;
using testing::TestBond;

struct Shape {
  const char* name;
  void (*apply)(TestBond&);
  bool ex_dividend;
};

bond_desc bullet(TestBond& b, int32_t maturity, const Shape& shape) {
  b.rates[0] = 0.05;
  b.settlement = serial(15, 2, 2025);
  b.maturity = maturity;
  if (shape.apply) shape.apply(b);
  bond_desc d = b.describe();
  if (shape.ex_dividend) go_ex_dividend(d);
  return d;
}

// Repays amounts[i] on repaid[i] (a zero entry the day after closes each
// one-off repayment) from a 2034 bond with the given outstanding factor;
// checks the price and both derivatives against the bullets weighted by
// `weights`, the last weight for the 2034 remainder.
void expect_weighted_sum(const Shape& shape, const std::vector<int32_t>& repaid,
                         const std::vector<double>& amounts, double factor,
                         const std::vector<double>& weights) {
  const int32_t maturity = serial(15, 11, 2034);
  std::vector<int32_t> dates;
  std::vector<double> sink;
  for (size_t i = 0; i < repaid.size(); ++i) {
    dates.insert(dates.end(), {repaid[i], repaid[i] + 1});
    sink.insert(sink.end(), {amounts[i], 0.0});
  }
  dates.push_back(-1);
  sink.push_back(0.0);
  TestBond whole;
  bond_desc d = bullet(whole, maturity, shape);
  d.amort_kind = kScheduledAmortisation;
  d.sink_dates_owned = dates.data();
  d.sink_amounts_owned = sink.data();
  d.n_sink = static_cast<int32_t>(dates.size()) - 1;
  d.periods_per_sink = 1;
  d.next_sink = dates[0];
  d.factor = factor;
  for (double y : {0.0, 0.035, 0.08}) {
    double expected = 0.0, expected_first = 0.0, expected_second = 0.0;
    for (size_t i = 0; i < weights.size(); ++i) {
      TestBond b;
      const bond_desc bd = bullet(b, i < repaid.size() ? repaid[i] : maturity, shape);
      double first = 0.0, second = 0.0;
      expected += weights[i] * price(bd, y, &first, &second);
      expected_first += weights[i] * first;
      expected_second += weights[i] * second;
    }
    double first = 0.0, second = 0.0;
    int32_t error = -1;
    EXPECT_NEAR(price(d, y, &first, &second, &error), expected, 1e-10) << shape.name << ", y " << y;
    EXPECT_EQ(error, 0);
    EXPECT_NEAR(first, expected_first, 1e-12) << shape.name << ", y " << y;
    EXPECT_NEAR(second, expected_second, 1e-8) << shape.name << ", y " << y;
  }
}

TEST(AmortisingEvaluator, EqualsTheWeightedSumOfBullets) {
  const Shape plain{"plain", nullptr, false};
  const std::vector<int32_t> repaid = {serial(15, 11, 2026), serial(15, 11, 2029)};
  // 20% in 2026, 30% in 2029, 50% at maturity.
  expect_weighted_sum(plain, repaid, {0.2, 0.3}, 1.0, {0.2, 0.3, 0.5});
  // Outstanding 0.9: the 0.1 repaid before settlement carries no value.
  expect_weighted_sum(plain, repaid, {0.2, 0.3}, 0.9, {0.2, 0.3, 0.4});
  // 0.7 then 0.6: the second repays only the 0.3 left, nothing runs to maturity.
  expect_weighted_sum(plain, repaid, {0.7, 0.6}, 1.0, {0.7, 0.3, 0.0});
}

// Bullets whose coupons are discounted one by one (several coupon rates,
// payments moved to business days, exponents in days, Moosmuller's method)
// are priced in one walk along the bond:
// each must still price as the bullet on its own would, ex-dividend, taxed
// or not, and beside a first bullet in its simple final period.
TEST(AmortisingEvaluator, WalkedBulletsPriceAsEachOnItsOwn) {
  const Shape shapes[] = {
      {"two coupon rates",
       [](TestBond& b) {
         b.rates[1] = 0.07;
         b.step_dates[0] = serial(15, 11, 2027);
         b.n_steps = 2;
       },
       false},
      {"business-day payments", [](TestBond& b) { b.yield_method_arg = 1; }, false},
      {"business days, ex-dividend", [](TestBond& b) { b.yield_method_arg = 1; }, true},
      {"business days, taxed",
       [](TestBond& b) { b.yield_method_arg = 1; b.coupon_tax = 0.3; b.discount_tax = 0.125; },
       false},
      {"Moosmuller's method", [](TestBond& b) { b.yield_method_arg = -4; }, false},
      {"Moosmuller's method, ex-dividend", [](TestBond& b) { b.yield_method_arg = -4; }, true},
      {"actual/365 exponents", [](TestBond& b) { b.type = 370; }, false},
      {"actual/365 exponents, business days",
       [](TestBond& b) { b.type = 370; b.yield_method_arg = 1; }, false},
  };
  for (const Shape& shape : shapes) {
    expect_weighted_sum(shape, {serial(15, 5, 2025), serial(15, 11, 2026), serial(15, 11, 2029)},
                        {0.1, 0.2, 0.3}, 1.0, {0.1, 0.2, 0.3, 0.4});
  }
}

TEST(AmortisingEvaluator, ABulletThatCannotBePricedStopsTheSum) {
  TestBond whole;
  bond_desc d = bullet(whole, serial(15, 11, 2034), Shape{"plain", nullptr, false});
  int32_t dates[] = {serial(15, 11, 2026), serial(16, 11, 2026), -1};
  double amounts[] = {0.2, 0.0, 0.0};
  d.amort_kind = kScheduledAmortisation;
  d.sink_dates_owned = dates;
  d.sink_amounts_owned = amounts;
  d.n_sink = 2;
  d.periods_per_sink = 1;
  d.next_sink = dates[0];
  d.factor = 1.0;
  int32_t error = 0;
  EXPECT_DOUBLE_EQ(price(d, -2.0, nullptr, nullptr, &error), -100.0);
  EXPECT_EQ(error, 401);
}

}  // namespace
}  // namespace kbond::engine
