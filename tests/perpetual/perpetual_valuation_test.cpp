// Perpetual prices, yields, risk measures, coupon dates and carry: the
// perpetuity identities, stepped coupons and first periods by hand, the
// conventions, round trips, finite differences and the carry identities.
#include <gtest/gtest.h>

#include <cmath>

#include "perpetual/perpetual_test_bond.h"

namespace kbond::testing {
namespace {

constexpr double kTight = 1e-9;

PerpetualBond stepped_mid_period() {
  PerpetualBond bond;
  bond.coupons = {0.02, 0.035, 0.05};
  bond.steps = {civil_serial(2026, 12, 15), civil_serial(2029, 6, 15), civil_serial(2031, 6, 15)};
  bond.settlement = civil_serial(2025, 8, 1);
  return bond;
}

TEST(PerpetualPrice, FlatCouponAtACouponDateIsCouponOverYield) {
  // Settled on a coupon date a perpetual paying c for ever is worth c / y
  // whatever the frequency: c/f v + c/f v^2 + ... = c / y; a withholding
  // tax (here on the quarterly one) scales every coupon.
  const double tax = 0.25;
  for (int32_t f : {1, 2, 4, 12}) {
    PerpetualBond bond;
    bond.frequency = &f;
    if (f == 4) bond.tax = &tax;
    for (double y : {0.02, 0.11}) EXPECT_NEAR(bond.price(y), 100.0 * 0.06 * (f == 4 ? 0.75 : 1.0) / y, kTight) << f;
    EXPECT_EQ(bond.error, 0);
  }
}

TEST(PerpetualPrice, MidPeriodByHand) {
  // 15 Jun to 15 Dec 2025 is 183 days; 20 Sep 2025 leaves 86 of them, so
  // the next coupon is t0 = 86/183 periods away; accrued 97/183 * 0.06 / 2.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 9, 20);
  const double y = 0.05, t0 = 86.0 / 183.0, accrued = 97.0 / 183.0 * 0.03;
  // The coupon-date value c/y carried back over 1 - t0 periods.
  EXPECT_NEAR(bond.price(y), 100.0 * (0.06 / y * std::pow(1.025, 1.0 - t0) - accrued), kTight);
  EXPECT_NEAR(bond.accrued(), 100.0 * accrued, kTight);
  // Rule -4 (Moosmuller): c/f + c/y at the next coupon, discounted simply over t0.
  const int32_t moosmuller = -4, simple = -2;
  bond.rule = &moosmuller;
  EXPECT_NEAR(bond.price(y), 100.0 * ((0.03 + 0.06 / y) / (1.0 + t0 * y / 2.0) - accrued), kTight);
  // The JGB convention (type 200) or rule -2: 100 c / y on the last rate,
  // whatever the accrued interest or the steps.
  bond.coupons = {0.03, 0.045};
  bond.steps = {civil_serial(2027, 6, 15), civil_serial(2028, 6, 15)};
  bond.rule = &simple;
  EXPECT_NEAR(bond.price(0.04), 100.0 * 0.045 / 0.04, kTight);
  bond.rule = nullptr;
  bond.type = 200;
  EXPECT_NEAR(bond.price(0.04), 100.0 * 0.045 / 0.04, kTight);
  // Issued 15 Aug 2025 with a first coupon on 15 Dec 2025: the first coupon
  // is 122/183 of a regular one and has accrued 36 of its days.
  PerpetualBond fresh;
  fresh.reference = civil_serial(2025, 12, 15);
  const int32_t issued = civil_serial(2025, 8, 15);
  fresh.dated = &issued;
  fresh.settlement = civil_serial(2025, 9, 20);
  const double first = 0.03 * 122.0 / 183.0, fresh_accrued = 0.03 * 36.0 / 183.0;
  EXPECT_NEAR(fresh.price(y), 100.0 * (std::pow(1.0 / 1.025, t0) * (first + 0.06 / y) - fresh_accrued), kTight);
  EXPECT_NEAR(fresh.accrued(), 100.0 * fresh_accrued, kTight);
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
  // A step date inside a period: the coupon paid on 15 Jun 2027 is the
  // first at 6% when the 4% rate ends on 1 Jun 2027.
  bond.steps = {civil_serial(2027, 6, 1), civil_serial(2028, 6, 15)};
  EXPECT_NEAR(bond.price(0.05), 100.0 * (0.04 * v + 1.2 * v), kTight);
  // Three semi-annual steps, settled 1 Aug 2025 (47 days into the 183-day
  // period to 15 Dec: t0 = 136/183), against a direct sum over 2000 years:
  // 2% through 15 Dec 2026 (k = 0..2), 3.5% through 15 Jun 2029 (k = 3..7), 5% after.
  PerpetualBond many = stepped_mid_period();
  const double y = 0.045, t0 = 136.0 / 183.0, w = 1.0 / (1.0 + y / 2.0);
  double direct = -47.0 / 183.0 * 0.01;
  for (int k = 0; k < 4000; ++k) direct += (k <= 2 ? 0.02 : (k <= 7 ? 0.035 : 0.05)) / 2.0 * std::pow(w, t0 + k);
  EXPECT_NEAR(many.price(y), 100.0 * direct, 1e-8);
  EXPECT_EQ(many.error, 0);
}

TEST(PerpetualPrice, BusinessDaysAndTheGiltExDividendPeriod) {
  // 15 Jun 2025 is a Sunday: paying on business days, weekend coupons are
  // discounted a little longer.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 6, 1);
  const double plain = bond.price(0.05);
  const int32_t on_business_days = 1;
  bond.rule = &on_business_days;
  EXPECT_LT(bond.price(0.05), plain);
  EXPECT_GT(bond.price(0.05), plain - 0.05);
  // A Gilt-convention perpetual (type 40) paying 3.5% on 1 June and
  // 1 December, settled 28 Nov 2025 inside the seven business days before
  // the coupon: the buyer does not get it, the accrued is minus 3 of 183
  // days, and the value is the perpetuity from 1 Jun 2026 on.
  PerpetualBond gilt;
  gilt.type = 40;
  gilt.coupons = {0.035};
  gilt.reference = civil_serial(2020, 6, 1);
  gilt.settlement = civil_serial(2025, 11, 28);
  const double accrued = 0.0175 * (180.0 / 183.0) - 0.0175, y = 0.045;
  EXPECT_NEAR(gilt.accrued(), 100.0 * accrued, kTight);
  EXPECT_NEAR(gilt.price(y), 100.0 * (std::pow(1.0 / 1.0225, 3.0 / 183.0) * (0.035 / y) - accrued), kTight);
}

TEST(PerpetualYield, RoundTrips) {
  PerpetualBond flat, stepped = stepped_mid_period(), moved = stepped_mid_period(), simple;
  flat.settlement = civil_serial(2025, 9, 20);
  const int32_t on_business_days = 1;
  moved.rule = &on_business_days;
  simple.type = 200;
  for (PerpetualBond* bond : {&flat, &stepped, &moved, &simple}) {
    for (double y : {0.01, 0.045, 0.09, 0.3}) {
      const double price = bond->price(y);
      ASSERT_EQ(bond->error, 0);
      const double found = bond->yield(price);
      EXPECT_EQ(bond->error, 0);
      // Newton stops within 1e-6 of face.
      EXPECT_NEAR(bond->price(found), price, 1e-4) << y;
      EXPECT_NEAR(found, y, 1e-5) << y;
    }
  }
  EXPECT_NEAR(PerpetualBond{}.yield(80.0), 0.06 / 0.8, 1e-7);  // coupon over price at a coupon date
}

TEST(PerpetualRisk, PerpetuityDurationsAndFiniteDifferences) {
  // Annual perpetuity settled on a coupon date: P = c/y, so the modified
  // duration is 1/y, the Macaulay duration (1 + y)/y and the convexity 2/y^2.
  PerpetualBond bond;
  const int32_t annual = 1, macaulay = 1, moosmuller = -4;
  bond.frequency = &annual;
  const double y = 0.05;
  EXPECT_NEAR(bond.duration(y, nullptr), 1.0 / y, 1e-9);
  EXPECT_NEAR(bond.duration(y, &macaulay), (1.0 + y) / y, 1e-9);
  EXPECT_NEAR(bond.convexity(y), 2.0 / (y * y), 1e-3);
  bond.type = 200;  // the formula's derivatives are exact
  EXPECT_NEAR(bond.convexity(y), 2.0 / (y * y), 1e-9);
  PerpetualBond stepped = stepped_mid_period(), simple_first = stepped_mid_period();
  simple_first.rule = &moosmuller;
  for (PerpetualBond* b : {&stepped, &simple_first}) {
    const double x = 0.045, h = 1e-5, up = b->price(x + h), mid = b->price(x), down = b->price(x - h);
    const double dirty = (mid + b->accrued()) * 0.01, slope = (up - down) / (2 * h) * 0.01;
    EXPECT_NEAR(b->duration(x, nullptr), -slope / dirty, 1e-5);
    EXPECT_NEAR(b->convexity(x), (up - 2 * mid + down) / (h * h) * 0.01 / dirty, 0.5);
    EXPECT_NEAR(b->value_of_bp(x, nullptr), -slope / 100.0, 1e-7);
    EXPECT_DOUBLE_EQ(b->value_of_32nd(x, nullptr), 1.0 / (b->value_of_bp(x, nullptr) * 32.0));
    EXPECT_EQ(b->error, 0);
  }
}

TEST(PerpetualSchedule, CouponDatesAndAmounts) {
  const int32_t reference = civil_serial(2000, 3, 31), settlement = civil_serial(2025, 5, 10);
  const int32_t type = 500, next = 1, previous = -1, quarterly = 4, first_step = civil_serial(2025, 4, 1);
  int32_t error = -1;
  // Quarterly on month ends (the 31st turns the end-of-month rule on).
  EXPECT_EQ(KVLpbcpn(reference, settlement, nullptr, nullptr, &type, &quarterly, &error), civil_serial(2025, 3, 31));
  EXPECT_EQ(KVLpbcpn(reference, settlement, &next, nullptr, &type, &quarterly, &error), civil_serial(2025, 6, 30));
  EXPECT_EQ(KVLpbcpn(reference, settlement, &previous, nullptr, &type, &quarterly, &error), civil_serial(2024, 12, 31));
  EXPECT_EQ(KVLpbcpn(reference, settlement, &next, &first_step, &type, &quarterly, &error), civil_serial(2025, 6, 30));
  EXPECT_EQ(error, 0);
  // A date before the first step date does not exist.
  EXPECT_EQ(KVLpbcpn(reference, settlement, nullptr, &first_step, &type, &quarterly, &error), -1);
  EXPECT_EQ(error, 1);
  // The coupon amount at the rate in force, net of tax.
  PerpetualBond bond;
  const double tax = 0.2;
  bond.tax = &tax;
  EXPECT_NEAR(bond.coupon_amount(), 100.0 * 0.03 * 0.8, 1e-12);
  bond.coupons = {0.04, 0.06};
  bond.steps = {civil_serial(2025, 12, 15), civil_serial(2026, 6, 15)};
  EXPECT_NEAR(bond.coupon_amount(), 100.0 * 0.02 * 0.8, 1e-12);
  bond.settlement = civil_serial(2025, 12, 20);
  EXPECT_NEAR(bond.coupon_amount(), 100.0 * 0.03 * 0.8, 1e-12);
}

TEST(PerpetualCarry, ByHandWithAndWithoutACoupon) {
  // 20 Jul to 20 Sep 2025 (62 days, before the 15 Dec coupon), generic
  // type: 360-day money-market year. Forward = (P + AI_start) * (1 + r *
  // 62/360) - AI_end, accrued 35/183 and 97/183 of the 3% coupon.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 7, 20);
  const double expected = (98.5 + 3.0 * 35.0 / 183.0) * (1.0 + 0.04 * 62.0 / 360.0) - 3.0 * 97.0 / 183.0;
  EXPECT_NEAR(bond.forward(civil_serial(2025, 9, 20), 98.5, 0.04, nullptr, nullptr), expected, 1e-10);
  EXPECT_EQ(bond.error, 0);
  // Over the 15 Dec coupon of 2.5 (5% in force on that date), simple
  // interest without reinvestment: financing on price + accrued restarts at
  // the coupon date on the financed amount. 15 Jun -> 2 Sep 2025: 79 of 183
  // days at 5%; 15 Dec -> 2 Mar: 77 of 182 at 6.5%.
  PerpetualBond stepped;
  stepped.coupons = {0.05, 0.065};
  stepped.steps = {civil_serial(2025, 12, 15), civil_serial(2026, 6, 15)};
  stepped.settlement = civil_serial(2025, 9, 2);
  const int32_t end = civil_serial(2026, 3, 2);
  const double price = 104.25, repo = 0.037, ai_start = 2.5 * 79.0 / 183.0, ai_end = 3.25 * 77.0 / 182.0;
  const double first = (price + ai_start) * repo * 104.0 / 360.0;            // 2 Sep -> 15 Dec
  const double second = (price + ai_start + first) * repo * 77.0 / 360.0;   // 15 Dec -> 2 Mar
  EXPECT_NEAR(stepped.carry(end, price, repo, nullptr), ai_end - ai_start + 2.5 - first - second, 1e-10);
  // For each financing mode the forward is price less carry and the implied repo inverts it.
  for (int32_t mode : {0, 1, 2, 3, 4, 5}) {
    const double carry = stepped.carry(end, price, repo, &mode);
    ASSERT_EQ(stepped.error, 0) << mode;
    const double forward = stepped.forward(end, price, repo, nullptr, &mode);
    EXPECT_NEAR(forward, price - carry, 1e-10) << mode;
    EXPECT_NEAR(stepped.implied_repo(price, forward, end, nullptr, &mode), repo, 1e-5) << mode;
    EXPECT_EQ(stepped.error, 0) << mode;
  }
  // A negative reinvestment rate means the repo rate; reinvesting the
  // December coupon at 8% rather than 4% earns more.
  const int32_t reinvest_mode = 1;
  const double negative = -1.0, higher = 0.08;
  const double at_repo = bond.forward(end, 100.0, 0.04, nullptr, &reinvest_mode);
  EXPECT_DOUBLE_EQ(bond.forward(end, 100.0, 0.04, &negative, &reinvest_mode), at_repo);
  EXPECT_LT(bond.forward(end, 100.0, 0.04, &higher, &reinvest_mode), at_repo);
  // Repo rates of 600 % and -200 % lie outside the first bracket [-0.99, 5];
  // the later brackets find them and the first one's failure must not stay
  // in the error code (found by fuzzing).
  for (double far : {6.0, -2.0}) {
    const double forward = bond.forward(civil_serial(2025, 9, 20), 98.5, far, nullptr, nullptr);
    EXPECT_NEAR(bond.implied_repo(98.5, forward, civil_serial(2025, 9, 20), nullptr, nullptr), far, 1e-4) << far;
    EXPECT_EQ(bond.error, 0) << far;
  }
}

}  // namespace
}  // namespace kbond::testing
