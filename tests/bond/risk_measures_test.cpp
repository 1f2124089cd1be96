// Duration, convexity, the value of a basis point and of a tick, against
// finite differences of KVLbpr, a hand-computed Macaulay duration, and each
// other; their distinct failure values.
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

// Bonds whose prices are unrounded (so that finite differences of KVLbpr
// are clean): a generic semiannual bond, an annual-quoted Eurobond (chain
// rule through the annual re-expression), a Gilt ex-dividend, a JGB (simple
// yield), a bond with a sinking fund quoted per outstanding face.
std::vector<QuotedBond> risk_bonds() {
  std::vector<QuotedBond> bonds;
  QuotedBond generic;
  generic.type = 500;
  generic.coupon(0.045).matures(civil_serial(2036, 2, 15)).settles(civil_serial(2024, 3, 12));
  bonds.push_back(generic);

  QuotedBond annual_quote = generic;
  annual_quote.type = 242;
  bonds.push_back(annual_quote);

  QuotedBond gilt;
  gilt.type = 40;
  gilt.coupon(0.04125).matures(civil_serial(2029, 9, 7)).settles(civil_serial(2024, 3, 4));
  bonds.push_back(gilt);

  QuotedBond jgb;
  jgb.type = 200;
  jgb.coupon(0.008).matures(civil_serial(2033, 12, 20)).settles(civil_serial(2024, 3, 12));
  bonds.push_back(jgb);

  QuotedBond sinking = generic;
  sinking.factor = 1.0;
  sinking.sink_dates = {civil_serial(2030, 2, 15)};
  sinking.sink_amounts = {0.125};
  sinking.sink_frequency = 1;
  sinking.frequency = 2;
  sinking.settles(civil_serial(2031, 5, 2));
  bonds.push_back(sinking);
  return bonds;
}

TEST(RiskMeasures, DurationAndConvexityMatchFiniteDifferencesOfThePrice) {
  const double h = 1e-4;
  for (const QuotedBond& bond : risk_bonds()) {
    const double ai = bond.accrued();
    for (const double y : {0.0, 0.035, 0.08}) {
      const double p0 = bond.price(y), up = bond.price(y + h), down = bond.price(y - h);
      const double dirty = p0 + ai;
      int32_t err = -1;
      const double duration = bond.duration(y, nullptr, &err);
      ASSERT_EQ(err, 0) << "type " << bond.type;
      // A step of 1e-6 leaves a truncation error of h^2 P''' / 6 ~ 1e-10.
      const double k = 1e-6;
      EXPECT_NEAR(duration, -(bond.price(y + k) - bond.price(y - k)) / (2 * k) / dirty, 1e-7)
          << "type " << bond.type;
      const double convexity = bond.convexity(y, &err);
      ASSERT_EQ(err, 0);
      EXPECT_NEAR(convexity, (up - 2 * p0 + down) / (h * h) / dirty, 2e-3 * convexity)
          << "type " << bond.type;
      // A basis point is 1e-4: the value of a bp is the duration times the
      // dirty price per 100, and a 32nd is worth 1 / (32 x that) bp.
      const double bp = bond.value_of_bp(y, nullptr, &err);
      ASSERT_EQ(err, 0);
      EXPECT_NEAR(bp, duration * dirty * 1e-4, 1e-12);
      EXPECT_NEAR(bond.value_of_tick(y), 1.0 / (32.0 * bp), 1e-9);
      const double scale = 1.0;  // per 1 % of yield
      EXPECT_NEAR(bond.value_of_bp(y, &scale), 100.0 * bp, 1e-10);
    }
  }
}

// Two years of a 6 % semiannual note at 6 %, on a coupon date, priced at
// par: Macaulay = (0.5 x 3 v + 1 x 3 v^2 + 1.5 x 3 v^3 + 2 x 103 v^4) / 100
// with v = 1 / 1.03, = 1.91347 years; modified = that / 1.03.
TEST(RiskMeasures, MacaulayDurationOfATwoYearNote) {
  QuotedBond note;
  note.type = 500;
  note.coupon(0.06).matures(civil_serial(2026, 5, 15)).settles(civil_serial(2024, 5, 15));
  double macaulay = 0.0;
  for (int k = 1; k <= 4; ++k) macaulay += 0.5 * k * (k == 4 ? 103.0 : 3.0) * std::pow(1.03, -k);
  macaulay /= 100.0;
  EXPECT_NEAR(note.macaulay(0.06), macaulay, 1e-12);
  EXPECT_NEAR(note.duration(0.06), macaulay / 1.03, 1e-12);
  const int32_t modified = 0;
  EXPECT_EQ(note.duration(0.06, &modified), note.duration(0.06));
  // Annual quotation: Macaulay is modified x (1 + y), y the annual yield.
  QuotedBond annual = note;
  annual.type = 502;
  const double y = 0.0609;
  EXPECT_NEAR(annual.macaulay(y), annual.duration(y) * (1 + y), 1e-12);
  EXPECT_NEAR(annual.macaulay(y), macaulay, 1e-12);  // (1.03)^2 = 1.0609
}

TEST(RiskMeasures, CouponAmount) {
  QuotedBond bond;
  bond.coupon(0.0575).matures(civil_serial(2034, 8, 15)).settles(civil_serial(2024, 3, 12));
  EXPECT_DOUBLE_EQ(bond.coupon_amount(), 2.875);
  bond.has_coupon_tax = true;
  bond.coupon_tax = 0.2;
  EXPECT_DOUBLE_EQ(bond.coupon_amount(), 2.3);
  // A short first coupon: 1 Jan to 15 Feb 2024 of the regular 15 Aug 2023
  // to 15 Feb 2024 period (45 of 184 days).
  QuotedBond new_issue;
  new_issue.coupon(0.0575).matures(civil_serial(2034, 8, 15)).settles(civil_serial(2024, 1, 10));
  new_issue.dated_date = civil_serial(2024, 1, 1);
  EXPECT_NEAR(new_issue.coupon_amount(), 2.875 * 45.0 / 184.0, 1e-12);
}

TEST(RiskMeasures, FailureValuesDifferByFunctionAndStep) {
  QuotedBond bond;
  bond.coupon(0.05).matures(civil_serial(2034, 6, 15)).settles(civil_serial(2024, 3, 12));
  int32_t err = 0;
  for (const double bad : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(bond.value_of_bp(0.05, &bad, &err), -999.0);
    EXPECT_EQ(err, 310);
    EXPECT_EQ(bond.value_of_tick(0.05, &bad, &err), -999.0);
    EXPECT_EQ(err, 310);
  }
  // A yield of -100 % per period leaves no price: the computation fails.
  EXPECT_EQ(bond.duration(-2.0, nullptr, &err), -1.0);
  EXPECT_EQ(err, 401);
  EXPECT_EQ(bond.convexity(-2.0, &err), -999.0);
  EXPECT_EQ(err, 401);
  EXPECT_EQ(bond.value_of_bp(-2.0, nullptr, &err), -999.0);
  EXPECT_EQ(err, 401);
  // The tick value takes the basis-point failure value as it comes.
  EXPECT_DOUBLE_EQ(bond.value_of_tick(-2.0, nullptr, &err), 1.0 / (-999.0 * 32.0));
  EXPECT_EQ(err, 401);

  QuotedBond invalid = bond;
  invalid.settles(civil_serial(2035, 1, 1));  // after maturity
  EXPECT_EQ(invalid.duration(0.05, nullptr, &err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(invalid.convexity(0.05, &err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(invalid.value_of_bp(0.05, nullptr, &err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(invalid.coupon_amount(&err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(bond.duration(std::numeric_limits<double>::infinity(), nullptr, &err), -1.0);
  EXPECT_EQ(err, 1);
}

}  // namespace
}  // namespace kbond::testing
