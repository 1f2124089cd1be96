// Simple margin and discount margin.
#include <gtest/gtest.h>

#include <cmath>

#include "frn/frn_margins.h"
#include "frn/frn_schedule.h"
#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::ymd;

// Default conventions: semi-annual, act/360. Maturity 15 June 2030,
// settlement 1 March 2026: previous coupon 15 December 2025 (76 days back),
// next 15 June 2026 (106 days on), 1567 days to maturity.
const int32_t kMaturity = ymd(2030, 6, 15);
const int32_t kSettlement = ymd(2026, 3, 1);

TEST(FrnSimpleMargin, MatchesHandComputation) {
  int32_t err = -1;
  const double sm = KVLfrnsm(kMaturity, kSettlement, 0.052, 99.5, 0.045, 0.005, nullptr, nullptr,
                             nullptr, nullptr, nullptr, &err);
  ASSERT_EQ(err, 0);
  // 0.005 + [106/360 x (0.052 - 0.045 - 0.005) + (1 - 0.995)] / (1567/360)
  const double expected = 0.005 + (106.0 / 360.0 * 0.002 + 0.005) / (1567.0 / 360.0);
  EXPECT_NEAR(sm, expected, 1e-15);
}

TEST(FrnSimpleMargin, StubUsesAccrualYearAndLifeUsesYearLength) {
  // Day count 2: the stub to 15 June 2028 counts in a 366-day accrual year
  // (period ending in a leap year), the life in years of 365.25 days.
  const int32_t settlement = ymd(2028, 3, 1);
  const int32_t code2 = 2;
  int32_t err = -1;
  const double sm = KVLfrnsm(kMaturity, settlement, 0.04, 101.0, 0.045, 0.01, nullptr, nullptr, &code2,
                             nullptr, nullptr, &err);
  ASSERT_EQ(err, 0);
  const double stub = (ymd(2028, 6, 15) - settlement) / 366.0;
  const double life = (kMaturity - settlement) / 365.25;
  EXPECT_NEAR(sm, 0.01 + (stub * (0.04 - 0.045 - 0.01) + (1.0 - 1.01)) / life, 1e-15);
}

TEST(FrnSimpleMargin, GivenNextCouponIsRolledPastSettlement) {
  // A next coupon of 15 June 2025 is on or before settlement: rolled to 15 June 2026.
  int32_t err = -1;
  const int32_t stale_next = ymd(2025, 6, 15);
  const double rolled = KVLfrnsm(kMaturity, kSettlement, 0.052, 99.5, 0.045, 0.005, nullptr, &stale_next,
                                 nullptr, nullptr, nullptr, &err);
  EXPECT_EQ(err, 0);
  const double stepped = KVLfrnsm(kMaturity, kSettlement, 0.052, 99.5, 0.045, 0.005, nullptr, nullptr,
                                  nullptr, nullptr, nullptr, &err);
  EXPECT_EQ(rolled, stepped);
}

// The note's dirty value per unit at margin d written out period by period:
// redemption and the projected coupons (index + quoted margin) discounted at
// index + d per period to the next coupon date, the current coupon added,
// then discounted over the stub at stub + d.
struct IndependentNote {
  double first_coupon, stub_time, periods_per_year, index, quoted, stub;
  int periods;
  double value(double d) const {
    const double per_period = 1.0 + (index + d) / periods_per_year;
    double pv = 0.0;
    for (int i = 1; i <= periods; ++i) pv += (index + quoted) / periods_per_year / std::pow(per_period, i);
    pv += 1.0 / std::pow(per_period, periods);
    return (pv + first_coupon) / (1.0 + stub_time * (stub + d));
  }
  double solve(double target) const {
    double lo = -0.5, hi = 0.5;  // value falls as d rises
    for (int i = 0; i < 200; ++i) {
      const double mid = 0.5 * (lo + hi);
      (value(mid) > target ? lo : hi) = mid;
    }
    return 0.5 * (lo + hi);
  }
};

TEST(FrnDiscountMargin, AgreesWithIndependentBisection) {
  const double current = 0.0515, stub = 0.047, index = 0.045, quoted = 0.005;
  // Eight semi-annual periods from 15 June 2026 to maturity; act/360 with a
  // 360-day year gives 2 x 360/365.25 periods per year on the actual basis.
  const IndependentNote note{current * 182.0 / 360.0, 106.0 / 360.0, 2.0 * 360.0 / 365.25, index,
                             quoted, stub, 8};
  for (double price : {97.0, 99.5, 100.0, 101.25}) {
    int32_t err = -1;
    const double dm = KVLfrndm(kMaturity, kSettlement, current, price, stub, index, quoted, nullptr,
                               nullptr, nullptr, nullptr, nullptr, &err);
    ASSERT_EQ(err, 0);
    const double target = price / 100.0 + current * 76.0 / 360.0;
    EXPECT_NEAR(dm, note.solve(target), 1e-12) << "price " << price;
  }
}

TEST(FrnDiscountMargin, QuarterlyActualOver365QuarterHasWholePeriodsPerYear) {
  // Day count 2: 4 periods per year exactly (4 x 365.25 / 365.25). Quarterly
  // grid back from 15 June 2030: previous 15 December 2025, next 15 March
  // 2026 (90 days, accrual year 365), 17 periods to maturity.
  const int32_t code2 = 2, quarterly = 4;
  const double current = 0.05, stub = 0.046, index = 0.044, quoted = 0.006, price = 100.4;
  const IndependentNote note{current * 90.0 / 365.0, 14.0 / 365.0, 4.0, index, quoted, stub, 17};
  int32_t err = -1;
  const double dm = KVLfrndm(kMaturity, kSettlement, current, price, stub, index, quoted, nullptr, nullptr,
                             &code2, &quarterly, nullptr, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NEAR(dm, note.solve(price / 100.0 + current * 76.0 / 365.0), 1e-12);
}

TEST(FrnDiscountMargin, SearchMovesDownOnEqualityAndHalvesAfterReversal) {
  FrnType type;
  FrnSchedule s;
  ASSERT_EQ(frn_schedule_setup(&type, kMaturity, kSettlement, nullptr, nullptr, 0, nullptr, 0, &s), 0);
  DiscountMarginTerms terms = discount_margin_terms(s, {0.05, 100.0, 0.046, 0.045, 0.005});
  const double start = 0.005;
  ASSERT_TRUE(terms.value(start, &terms.target));  // the price is worth exactly the start
  const double expected[] = {start - 0.1, start, start - 0.1, start - 0.05, start - 0.025};
  for (int steps = 1; steps <= 5; ++steps) {
    int32_t err = 0;
    EXPECT_NEAR(search_discount_margin(terms, start, steps, err), expected[steps - 1], 1e-15)
        << steps << " steps";
  }
}

TEST(FrnDiscountMargin, VanishingDiscountDenominatorReturnsMarginReached) {
  // Day count 2: 2 periods per year exactly, so an index of -2 with margin 0
  // makes 1 + (index + d)/2 zero at the first step.
  const int32_t code2 = 2;
  int32_t err = -1;
  const double dm = KVLfrndm(kMaturity, kSettlement, 0.05, 100.0, 0.05, -2.0, 0.0, nullptr, nullptr, &code2,
                             nullptr, nullptr, &err);
  EXPECT_EQ(err, 400);
  EXPECT_EQ(dm, 0.0);
}

TEST(FrnMargins, RefusedInputs) {
  int32_t err = 0;
  const int32_t bad_frequency = 5, late_previous = kSettlement + 1;
  EXPECT_EQ(KVLfrnsm(kMaturity, kSettlement, 0.05, 99.0, 0.045, 0.005, nullptr, nullptr, nullptr,
                     &bad_frequency, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 301);
  EXPECT_EQ(KVLfrndm(kMaturity, kSettlement, 0.05, 99.0, 0.05, 0.045, 0.005, &late_previous, nullptr,
                     nullptr, nullptr, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 160);
  EXPECT_EQ(KVLfrndm(kMaturity, 0, 0.05, 99.0, 0.05, 0.045, 0.005, nullptr, nullptr, nullptr, nullptr,
                     nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 150);
  EXPECT_EQ(KVLfrnsm(kMaturity, kSettlement, 0.05, std::nan(""), 0.045, 0.005, nullptr, nullptr, nullptr,
                     nullptr, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 350);
  EXPECT_EQ(KVLtfrndm(424242, kMaturity, kSettlement, 0.05, 99.0, 0.05, 0.045, 0.005, nullptr, nullptr,
                      nullptr, nullptr, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 901);
  const int32_t eom = 2;
  EXPECT_EQ(KVLfrnsm(kMaturity, kSettlement, 0.05, 99.0, 0.045, 0.005, nullptr, nullptr, nullptr, nullptr,
                     &eom, nullptr),
            -1.0);  // NULL error pointer allowed
}

}  // namespace
}  // namespace kbond::frn
