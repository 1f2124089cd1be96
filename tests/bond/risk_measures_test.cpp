// Duration, convexity, the value of a basis point and of a tick against
// finite differences of KVLbpr, a hand-computed Macaulay duration and each
// other; the coupon amount; their distinct failure values.
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

// Bonds with unrounded prices, so that finite differences of KVLbpr are
// clean: a generic semiannual bond, an annual-quoted Eurobond (chain rule
// through the annual re-expression), a Gilt ex-dividend, a JGB (simple
// yield), a sinking fund under way quoted per outstanding face.
TEST(RiskMeasures, DurationAndConvexityMatchFiniteDifferencesOfThePrice) {
  const QuotedBond generic(500, 0.045, ymd(2036, 2, 15), ymd(2024, 3, 12));
  QuotedBond annual = generic, sinking = generic.at(ymd(2031, 5, 2));
  annual.type = 242;
  sinking.frequency = {2, 1};
  sinking.factor = 1.0;
  sinking.sink_dates = {ymd(2030, 2, 15)};
  sinking.sink_amounts = {0.125};
  const QuotedBond bonds[] = {generic, annual, sinking,
                              QuotedBond(40, 0.04125, ymd(2029, 9, 7), ymd(2024, 3, 4)),
                              QuotedBond(200, 0.008, ymd(2033, 12, 20), ymd(2024, 3, 12))};
  for (const QuotedBond& bond : bonds) {
    for (const double y : {0.0, 0.035, 0.08}) {
      SCOPED_TRACE(::testing::Message() << "type " << bond.type << " at " << y);
      const double dirty = bond.price(y) + bond.accrued();
      int32_t err = -1;
      const double duration = bond.duration(y, nullptr, &err);
      ASSERT_EQ(err, 0);
      // A step of 1e-6 leaves a truncation error of h^2 P''' / 6 ~ 1e-10.
      const double k = 1e-6, h = 1e-4;
      EXPECT_NEAR(duration, -(bond.price(y + k) - bond.price(y - k)) / (2 * k) / dirty, 1e-7);
      const double convexity = bond.convexity(y, &err);
      ASSERT_EQ(err, 0);
      const double second = bond.price(y + h) - 2 * bond.price(y) + bond.price(y - h);
      EXPECT_NEAR(convexity, second / (h * h) / dirty, 2e-3 * convexity);
      // A basis point is 1e-4 of yield: duration x dirty price x 1e-4; a
      // 32nd is worth 1 / (32 x that) bp; scale 1 is per 1 % of yield.
      const double bp = bond.value_of_bp(y, nullptr, &err);
      ASSERT_EQ(err, 0);
      EXPECT_NEAR(bp, duration * dirty * 1e-4, 1e-12);
      EXPECT_NEAR(bond.value_of_tick(y), 1.0 / (32.0 * bp), 1e-9);
      const double scale = 1.0;
      EXPECT_NEAR(bond.value_of_bp(y, &scale), 100.0 * bp, 1e-10);
    }
  }
}

// Two years of a 6 % semiannual note at 6 %, on a coupon date, at par:
// Macaulay = (0.5 x 3 v + 1 x 3 v^2 + 1.5 x 3 v^3 + 2 x 103 v^4) / 100
// with v = 1 / 1.03; modified = that / 1.03.
TEST(RiskMeasures, MacaulayDurationOfATwoYearNote) {
  QuotedBond note(500, 0.06, ymd(2026, 5, 15), ymd(2024, 5, 15));
  double macaulay = 0.0;
  for (int k = 1; k <= 4; ++k) macaulay += 0.5 * k * (k == 4 ? 103.0 : 3.0) * std::pow(1.03, -k);
  macaulay /= 100.0;
  const int32_t kind_macaulay = 1, kind_modified = 0;
  EXPECT_NEAR(note.duration(0.06, &kind_macaulay), macaulay, 1e-12);
  EXPECT_NEAR(note.duration(0.06), macaulay / 1.03, 1e-12);
  EXPECT_EQ(note.duration(0.06, &kind_modified), note.duration(0.06));
  // Annual quotation (502): Macaulay is modified x (1 + y), y the annual
  // yield 1.03^2 - 1 = 0.0609, and the same as the semiannual one.
  note.type = 502;
  EXPECT_NEAR(note.duration(0.0609, &kind_macaulay), note.duration(0.0609) * 1.0609, 1e-12);
  EXPECT_NEAR(note.duration(0.0609, &kind_macaulay), macaulay, 1e-12);
}

TEST(RiskMeasures, CouponAmount) {
  QuotedBond bond(0, 0.0575, ymd(2034, 8, 15), ymd(2024, 3, 12));
  EXPECT_DOUBLE_EQ(bond.coupon_amount(), 2.875);
  bond.coupon_tax = 0.2;
  EXPECT_DOUBLE_EQ(bond.coupon_amount(), 2.3);
  // A short first coupon: 1 Jan to 15 Feb 2024 of the regular 15 Aug 2023
  // to 15 Feb 2024 period (45 of 184 days).
  QuotedBond new_issue(0, 0.0575, ymd(2034, 8, 15), ymd(2024, 1, 10));
  new_issue.dated = ymd(2024, 1, 1);
  EXPECT_NEAR(new_issue.coupon_amount(), 2.875 * 45 / 184, 1e-12);
}

TEST(RiskMeasures, FailureValuesDifferByFunctionAndStep) {
  const QuotedBond bond(0, 0.05, ymd(2034, 6, 15), ymd(2024, 3, 12));
  int32_t err = 0;
  for (const double bad : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(bond.value_of_bp(0.05, &bad, &err), -999.0);
    EXPECT_EQ(err, 310);
    EXPECT_EQ(bond.value_of_tick(0.05, &bad, &err), -999.0);
    EXPECT_EQ(err, 310);
  }
  // A yield of -100 % per period leaves no price: the computation fails
  // (401), and the tick value takes the basis-point failure value as it is.
  const QuotedBond after = bond.at(ymd(2035, 1, 1));  // an invalid description
  struct Case {
    const QuotedBond& bond;
    double y, duration, convexity, bp;
    int32_t error;
  };
  for (const Case& c : {Case{bond, -2.0, -1.0, -999.0, -999.0, 401},
                        Case{after, 0.05, -1.0, -1.0, -1.0, 1}}) {
    SCOPED_TRACE(c.y);
    int32_t e1 = 0, e2 = 0, e3 = 0, e4 = 0;
    EXPECT_EQ(c.bond.duration(c.y, nullptr, &e1), c.duration);
    EXPECT_EQ(c.bond.convexity(c.y, &e2), c.convexity);
    EXPECT_EQ(c.bond.value_of_bp(c.y, nullptr, &e3), c.bp);
    EXPECT_DOUBLE_EQ(c.bond.value_of_tick(c.y, nullptr, &e4), 1.0 / (c.bp * 32.0));
    EXPECT_TRUE(e1 == c.error && e2 == c.error && e3 == c.error && e4 == c.error)
        << e1 << " " << e2 << " " << e3 << " " << e4;
  }
  EXPECT_EQ(after.coupon_amount(&err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(bond.duration(HUGE_VAL, nullptr, &err), -1.0);
  EXPECT_EQ(err, 1);
}

}  // namespace
}  // namespace kbond::testing
