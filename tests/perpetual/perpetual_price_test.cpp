// Perpetual prices: the perpetuity identities, stepped coupons by hand, the
// three conventions, first periods and payment on business days.
#include <gtest/gtest.h>

#include <cmath>

#include "perpetual/perpetual_test_bond.h"

namespace kbond::testing {
namespace {

constexpr double kTight = 1e-9;

TEST(PerpetualPrice, FlatCouponAtACouponDateIsCouponOverYield) {
  // Settled on a coupon date a perpetual paying c for ever is worth c / y
  // whatever the frequency: c/f v + c/f v^2 + ... = c / y.
  for (int32_t f : {1, 2, 4, 12}) {
    PerpetualBond bond;
    bond.frequency = &f;
    for (double y : {0.02, 0.05, 0.11}) {
      EXPECT_NEAR(bond.price(y), 100.0 * 0.06 / y, 1e-9) << f << " " << y;
      EXPECT_EQ(bond.error, 0);
    }
  }
}

TEST(PerpetualPrice, WithholdingTaxScalesEveryCoupon) {
  PerpetualBond bond;
  const double tax = 0.25;
  bond.tax = &tax;
  EXPECT_NEAR(bond.price(0.05), 100.0 * 0.06 * 0.75 / 0.05, kTight);
}

TEST(PerpetualPrice, MidPeriodIsThePerpetuityCarriedForward) {
  // 15 Jun to 15 Dec 2025 is 183 days; 20 Sep 2025 leaves 86 of them, so
  // the next coupon is t0 = 86/183 periods away. The dirty value is the
  // coupon-date value c/y carried back over 1 - t0 periods:
  //   c/y * (1 + y/2)^(1 - t0); accrued 97/183 * 0.06 / 2.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 9, 20);
  const double y = 0.05, t0 = 86.0 / 183.0;
  const double accrued = 97.0 / 183.0 * 0.03;
  EXPECT_NEAR(bond.price(y), 100.0 * (0.06 / y * std::pow(1.025, 1.0 - t0) - accrued), kTight);
  EXPECT_NEAR(bond.accrued(), 100.0 * accrued, kTight);
}

TEST(PerpetualPrice, SteppedCouponsByHand) {
  // Annual coupons on 15 June, settled on 15 Jun 2025. 4% up to the step
  // date 15 Jun 2027, 6% after, for ever. By hand, v = 1/1.05:
  //   2026: 0.04 v   2027: 0.04 v^2   2028 on: a 6% perpetuity worth
  //   0.06/0.05 at 2027, i.e. 1.2 v^2.
  PerpetualBond bond;
  const int32_t annual = 1;
  bond.frequency = &annual;
  bond.coupons = {0.04, 0.06};
  bond.steps = {civil_serial(2027, 6, 15), civil_serial(2028, 6, 15)};
  const double v = 1.0 / 1.05;
  EXPECT_NEAR(bond.price(0.05), 100.0 * (0.04 * v + 0.04 * v * v + 1.2 * v * v), kTight);
  EXPECT_EQ(bond.error, 0);
  // A step date inside a period: the coupon paid on 15 Jun 2027 is the
  // first at 6% when the 4% rate ends on 1 Jun 2027.
  bond.steps = {civil_serial(2027, 6, 1), civil_serial(2028, 6, 15)};
  EXPECT_NEAR(bond.price(0.05), 100.0 * (0.04 * v + 1.2 * v), kTight);
}

TEST(PerpetualPrice, SteppedCouponsSemiAnnualOverManySteps) {
  // Three steps, semi-annual; at 0 < y the explicit sum must agree with a
  // direct sum over 2000 years of coupons (an independent evaluation).
  PerpetualBond bond;
  bond.coupons = {0.02, 0.035, 0.05};
  bond.steps = {civil_serial(2026, 12, 15), civil_serial(2029, 6, 15), civil_serial(2031, 6, 15)};
  bond.settlement = civil_serial(2025, 8, 1);
  const double y = 0.045;
  // 1 Aug 2025 lies 47 days into the 183-day period to 15 Dec: t0 = 136/183.
  const double t0 = 136.0 / 183.0, v = 1.0 / (1.0 + y / 2.0);
  // Coupon dates 15 Dec 2025 (k = 0), 15 Jun 2026, ...: 2% through 15 Dec
  // 2026 (k = 0..2), 3.5% through 15 Jun 2029 (k = 3..7), 5% after.
  double direct = 0.0;
  for (int k = 0; k < 4000; ++k) {
    const double rate = k <= 2 ? 0.02 : (k <= 7 ? 0.035 : 0.05);
    direct += rate / 2.0 * std::pow(v, t0 + k);
  }
  const double accrued = 47.0 / 183.0 * 0.01;
  EXPECT_NEAR(bond.price(y), 100.0 * (direct - accrued), 1e-8);
}

TEST(PerpetualPrice, SimpleYieldTypesUseThePerpetuityFormula) {
  // A JGB-convention perpetual (type 200) or the -2 rule: 100 c / y on the
  // last rate, whatever the accrued interest or the steps.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 9, 20);
  bond.coupons = {0.03, 0.045};
  bond.steps = {civil_serial(2027, 6, 15), civil_serial(2028, 6, 15)};
  bond.type = 200;
  EXPECT_NEAR(bond.price(0.04), 100.0 * 0.045 / 0.04, kTight);
  bond.type = 500;
  const int32_t simple = -2;
  bond.rule = &simple;
  EXPECT_NEAR(bond.price(0.04), 100.0 * 0.045 / 0.04, kTight);
}

TEST(PerpetualPrice, MoosmullerRuleDiscountsTheFirstPeriodSimply) {
  // Rule -4: the dirty value at the next coupon, c/f + c/y, discounted at
  // simple interest over t0 = 86/183 periods.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 9, 20);
  const int32_t moosmuller = -4;
  bond.rule = &moosmuller;
  const double y = 0.05, t0 = 86.0 / 183.0;
  const double dirty = (0.03 + 0.06 / y) / (1.0 + t0 * y / 2.0);
  EXPECT_NEAR(bond.price(y), 100.0 * (dirty - 97.0 / 183.0 * 0.03), kTight);
}

TEST(PerpetualPrice, BraessHasNoPerpetualForm) {
  PerpetualBond bond;
  const int32_t braess = -3;
  bond.rule = &braess;
  EXPECT_EQ(bond.price(0.05), -1.0);
  EXPECT_EQ(bond.error, 460);
  PerpetualBond braess_type;
  braess_type.type = 820;
  EXPECT_EQ(braess_type.price(0.05), -1.0);
  EXPECT_EQ(braess_type.error, 460);
  EXPECT_EQ(braess_type.yield(100.0), -1.0);
  EXPECT_EQ(braess_type.error, 460);
}

TEST(PerpetualPrice, ZeroYieldIs401) {
  PerpetualBond bond;
  EXPECT_EQ(bond.price(0.0), -1.0);
  EXPECT_EQ(bond.error, 401);
  EXPECT_EQ(bond.price(-2.0), -1.0);  // 1 + y/f = 0
  EXPECT_EQ(bond.error, 401);
  bond.type = 200;
  EXPECT_EQ(bond.price(0.0), -1.0);
  EXPECT_EQ(bond.error, 401);
}

TEST(PerpetualPrice, ShortFirstPeriodOfANewIssue) {
  // Issued 15 Aug 2025, first coupon 15 Dec 2025 (the reference date),
  // settled 20 Sep 2025: the first coupon is 122/183 of a regular one and
  // has accrued 36 of its days.
  PerpetualBond bond;
  bond.reference = civil_serial(2025, 12, 15);
  const int32_t issued = civil_serial(2025, 8, 15);
  bond.dated = &issued;
  bond.settlement = civil_serial(2025, 9, 20);
  const double y = 0.05, t0 = 86.0 / 183.0, v = 1.0 / 1.025;
  const double first = 0.03 * 122.0 / 183.0;
  const double dirty = std::pow(v, t0) * (first + 0.06 / y);
  const double accrued = 0.03 * 36.0 / 183.0;
  EXPECT_NEAR(bond.price(y), 100.0 * (dirty - accrued), kTight);
  EXPECT_NEAR(bond.accrued(), 100.0 * accrued, kTight);
  // Settling before the issue date is refused.
  bond.settlement = civil_serial(2025, 8, 1);
  EXPECT_EQ(bond.price(y), -1.0);
  EXPECT_EQ(bond.error, 1);
}

TEST(PerpetualPrice, BusinessDayPaymentDelaysWeekendCoupons) {
  // 15 Jun 2025 is a Sunday: with payment on business days every coupon
  // falling on a weekend is discounted a little longer.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 6, 1);
  const double plain = bond.price(0.05);
  const int32_t on_business_days = 1;
  bond.rule = &on_business_days;
  const double moved = bond.price(0.05);
  EXPECT_EQ(bond.error, 0);
  EXPECT_LT(moved, plain);
  EXPECT_GT(moved, plain - 0.05);
}

TEST(PerpetualPrice, GiltInItsExDividendPeriod) {
  // A Gilt-convention perpetual (type 40) paying 3.5% on 1 June and
  // 1 December: settled 28 Nov 2025, inside the seven business days before
  // the 1 Dec coupon, the buyer does not get that coupon, and the accrued
  // interest is negative: 3 days of the 183-day period (1 Jun to 1 Dec).
  PerpetualBond bond;
  bond.type = 40;
  bond.coupons = {0.035};
  bond.reference = civil_serial(2020, 6, 1);
  bond.settlement = civil_serial(2025, 11, 28);
  const double accrued = 0.0175 * (180.0 / 183.0) - 0.0175;
  EXPECT_NEAR(bond.accrued(), 100.0 * accrued, kTight);
  const double y = 0.045, t0 = 3.0 / 183.0, v = 1.0 / 1.0225;
  // Without the 1 Dec coupon: the perpetuity from 1 Jun 2026 on.
  const double dirty = std::pow(v, t0) * (0.035 / y);
  EXPECT_NEAR(bond.price(y), 100.0 * (dirty - accrued), kTight);
}

}  // namespace
}  // namespace kbond::testing
