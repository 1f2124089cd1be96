// An amortising bond is priced as the weighted sum of bullet bonds, one per
// repayment date, and the rest of the face to maturity.
#include <gtest/gtest.h>

#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::price;
using testing::serial;
using testing::go_ex_dividend;
using testing::TestBond;

constexpr double kTight = 1e-10;

TestBond bond_to(int32_t maturity) {
  TestBond b;
  b.rates[0] = 0.05;
  b.settlement = serial(15, 2, 2025);
  b.maturity = maturity;
  return b;
}

// The 2034 bond with a sinking schedule (owned arrays, kind 2). Each
// amount repeats on every coupon date until the next entry, so a zero entry
// the day after closes each one-off repayment.
struct SinkingBond {
  TestBond bond = bond_to(serial(15, 11, 2034));
  int32_t sink_dates[5] = {serial(15, 11, 2026), serial(16, 11, 2026), serial(15, 11, 2029),
                           serial(16, 11, 2029), -1};
  double sink_amounts[5] = {0.2, 0.0, 0.3, 0.0, 0.0};

  bond_desc describe() {
    bond_desc d = bond.describe();
    d.amort_kind = kScheduledAmortisation;
    d.sink_dates_owned = sink_dates;
    d.sink_amounts_owned = sink_amounts;
    d.n_sink = 4;
    d.periods_per_sink = 1;
    d.next_sink = sink_dates[0];
    d.factor = 1.0;
    return d;
  }
};

TEST(AmortisingEvaluator, EqualsTheWeightedSumOfBullets) {
  // 20% repaid 15 Nov 2026, 30% on 15 Nov 2029, 50% at maturity:
  //   P = 0.2 P(2026 bullet) + 0.3 P(2029 bullet) + 0.5 P(2034 bond)
  SinkingBond sinking;
  const bond_desc d = sinking.describe();
  TestBond b2026 = bond_to(serial(15, 11, 2026)), b2029 = bond_to(serial(15, 11, 2029)),
           b2034 = bond_to(serial(15, 11, 2034));
  const bond_desc d2026 = b2026.describe(), d2029 = b2029.describe(), d2034 = b2034.describe();
  for (double y : {0.0, 0.035, 0.08}) {
    double s1 = 0.0, s2 = 0.0, a1 = 0.0, a2 = 0.0, b1 = 0.0, b2 = 0.0, c1 = 0.0, c2 = 0.0;
    const double expected = 0.2 * price(d2026, y, &a1, &a2) + 0.3 * price(d2029, y, &b1, &b2) +
                            0.5 * price(d2034, y, &c1, &c2);
    EXPECT_NEAR(price(d, y, &s1, &s2), expected, kTight) << "y = " << y;
    EXPECT_NEAR(s1, 0.2 * a1 + 0.3 * b1 + 0.5 * c1, 1e-12) << "y = " << y;
    EXPECT_NEAR(s2, 0.2 * a2 + 0.3 * b2 + 0.5 * c2, 1e-8) << "y = " << y;
  }
}

TEST(AmortisingEvaluator, PartlyRepaidFaceIsNotPricedAgain) {
  // Outstanding factor 0.9: the 0.1 repaid before settlement carries no
  // value, so the 2034 remainder weighs 0.9 - 0.2 - 0.3 = 0.4.
  SinkingBond sinking;
  bond_desc d = sinking.describe();
  d.factor = 0.9;
  TestBond b2026 = bond_to(serial(15, 11, 2026)), b2029 = bond_to(serial(15, 11, 2029)),
           b2034 = bond_to(serial(15, 11, 2034));
  const double y = 0.045;
  const double expected = 0.2 * price(b2026.describe(), y) + 0.3 * price(b2029.describe(), y) +
                          0.4 * price(b2034.describe(), y);
  EXPECT_NEAR(price(d, y), expected, kTight);
}

TEST(AmortisingEvaluator, ARepaymentBeyondTheFaceIsCutToWhatIsLeft) {
  // 0.7 then 0.6: the second repays only the 0.3 left and nothing runs to
  // maturity.
  SinkingBond sinking;
  sinking.sink_amounts[0] = 0.7;
  sinking.sink_amounts[2] = 0.6;
  const bond_desc d = sinking.describe();
  TestBond b2026 = bond_to(serial(15, 11, 2026)), b2029 = bond_to(serial(15, 11, 2029));
  const double y = 0.045;
  EXPECT_NEAR(price(d, y), 0.7 * price(b2026.describe(), y) + 0.3 * price(b2029.describe(), y),
              kTight);
}

TEST(AmortisingEvaluator, ABulletThatCannotBePricedStopsTheSum) {
  SinkingBond sinking;
  int32_t error = 0;
  EXPECT_DOUBLE_EQ(price(sinking.describe(), -2.0, nullptr, nullptr, &error), -100.0);
  EXPECT_EQ(error, 401);
}

// Bullets whose coupons are discounted one by one (several coupon rates,
// payments moved to business days, exponents in days, Moosmuller's method)
// are priced in one walk along the bond:
// each must still price as the bullet on its own would, ex-dividend, taxed
// or not, and beside a first bullet in its simple final period.
TEST(AmortisingEvaluator, WalkedBulletsPriceAsEachOnItsOwn) {
  struct Shape {
    const char* name;
    void (*apply)(TestBond&);
    bool ex_dividend;
  };
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
       [](TestBond& b) {
         b.yield_method_arg = 1;
         b.coupon_tax = 0.3;
         b.discount_tax = 0.125;
       },
       false},
      {"Moosmuller's method", [](TestBond& b) { b.yield_method_arg = -4; }, false},
      {"Moosmuller's method, ex-dividend", [](TestBond& b) { b.yield_method_arg = -4; }, true},
      {"actual/365 exponents", [](TestBond& b) { b.type = 370; }, false},
      {"actual/365 exponents, business days",
       [](TestBond& b) {
         b.type = 370;
         b.yield_method_arg = 1;
       },
       false},
  };
  const int32_t repaid_on[4] = {serial(15, 5, 2025), serial(15, 11, 2026), serial(15, 11, 2029),
                                serial(15, 11, 2034)};
  const double weights[4] = {0.1, 0.2, 0.3, 0.4};
  int32_t sink_dates[7] = {serial(15, 5, 2025), serial(16, 5, 2025), serial(15, 11, 2026),
                           serial(16, 11, 2026), serial(15, 11, 2029), serial(16, 11, 2029), -1};
  double sink_amounts[7] = {0.1, 0.0, 0.2, 0.0, 0.3, 0.0, 0.0};

  for (const Shape& shape : shapes) {
    TestBond whole = bond_to(serial(15, 11, 2034));
    shape.apply(whole);
    bond_desc d = whole.describe();
    d.amort_kind = kScheduledAmortisation;
    d.sink_dates_owned = sink_dates;
    d.sink_amounts_owned = sink_amounts;
    d.n_sink = 6;
    d.periods_per_sink = 1;
    d.next_sink = sink_dates[0];
    d.factor = 1.0;
    if (shape.ex_dividend) go_ex_dividend(d);

    for (double y : {0.0, 0.035, 0.08}) {
      double expected = 0.0, expected_first = 0.0, expected_second = 0.0;
      for (int i = 0; i < 4; ++i) {
        TestBond bullet = bond_to(repaid_on[i]);
        shape.apply(bullet);
        bond_desc b = bullet.describe();
        if (shape.ex_dividend) go_ex_dividend(b);
        double first = 0.0, second = 0.0;
        expected += weights[i] * price(b, y, &first, &second);
        expected_first += weights[i] * first;
        expected_second += weights[i] * second;
      }
      double first = 0.0, second = 0.0;
      int32_t error = -1;
      EXPECT_NEAR(price(d, y, &first, &second, &error), expected, kTight) << shape.name << ", y " << y;
      EXPECT_EQ(error, 0);
      EXPECT_NEAR(first, expected_first, 1e-12) << shape.name << ", y " << y;
      EXPECT_NEAR(second, expected_second, 1e-8) << shape.name << ", y " << y;
    }
  }
}

}  // namespace
}  // namespace kbond::engine
