// Period fractions of the coupon schedule: the current coupon (cf), the time
// to the next coupon (tn, years), the accrued part (ay, years) and the grid
// helpers. Day counts in the comments are counted on the calendar.
#include <gtest/gtest.h>

#include "dates/date_serial.h"
#include "engine/bond_desc.h"
#include "engine/coupon_schedule.h"

namespace kbond::engine {
namespace {

int32_t ymd(int32_t y, int32_t m, int32_t d) { return dates::date_to_serial(d, m, y); }

constexpr double kTight = 1e-12;

struct ScheduledBond {
  double coupon = 0.06;
  int32_t maturity;
  int32_t type;
  int32_t dated = 0;
  int32_t first = 0;
  bond_desc d;
  int32_t rc = -1;
  ScheduledBond(int32_t bond_type, int32_t mat, int32_t settlement, int32_t dated_date = 0,
        int32_t first_coupon = 0)
      : maturity(mat), type(bond_type), dated(dated_date), first(first_coupon) {
    bond_args a{.coupons = &coupon, .n_coupons = 1, .dates = &maturity, .n_dates = 1,
                .settlement = settlement, .dated_date = &dated, .first_coupon = &first,
                .type = &type};
    rc = bond_setup(a, d);
  }
};

TEST(CouponScheduleGrid, HelpersAgreeWithEachOther) {
  ScheduledBond s(0, ymd(2034, 11, 15), ymd(2024, 12, 2));
  ASSERT_EQ(s.rc, 0);
  int32_t j = 0, k = 0;
  EXPECT_EQ(grid_on_or_before(s.d, ymd(2024, 12, 2), &j), ymd(2024, 11, 15));
  EXPECT_EQ(j, -20);  // twenty half-years before maturity
  EXPECT_EQ(grid_after(s.d, ymd(2024, 12, 2), &k), ymd(2025, 5, 15));
  EXPECT_EQ(k, j + 1);
  EXPECT_EQ(grid_date(s.d, k), ymd(2025, 5, 15));
  // A grid date is its own "on or before"; "after" moves on.
  EXPECT_EQ(grid_on_or_before(s.d, ymd(2025, 5, 15)), ymd(2025, 5, 15));
  EXPECT_EQ(grid_after(s.d, ymd(2025, 5, 15)), ymd(2025, 11, 15));
}

TEST(CouponScheduleRegular, SettlementOnACouponDateHasNothingAccrued) {
  ScheduledBond s(0, ymd(2034, 11, 15), ymd(2025, 5, 15));
  ASSERT_EQ(s.rc, 0);
  EXPECT_EQ(s.d.period_start, ymd(2025, 5, 15));
  EXPECT_EQ(s.d.ay, 0.0);
  EXPECT_NEAR(s.d.tn, 0.5, kTight);
  EXPECT_EQ(s.d.accrued, 0.0);
  EXPECT_NEAR(s.d.full_coupon, 0.03, kTight);
}

TEST(CouponScheduleRegular, ActualActualCountsDaysOfThePeriod) {
  // 15 Nov 2024 .. 15 May 2025 has 181 days; 17 have run on 2 Dec.
  ScheduledBond s(0, ymd(2034, 11, 15), ymd(2024, 12, 2));
  ASSERT_EQ(s.rc, 0);
  EXPECT_NEAR(s.d.basis, 362.0, kTight);
  EXPECT_NEAR(s.d.tn, 164.0 / 362.0, kTight);
  EXPECT_NEAR(s.d.ay, 17.0 / 362.0, kTight);
  EXPECT_NEAR(s.d.accrued, 0.03 * 17.0 / 181.0, kTight);
  EXPECT_EQ(s.d.quasi_start, ymd(2024, 11, 15));
}

TEST(CouponScheduleRegular, ThirtyThreeSixtyRunsThePeriodInThirtyDayMonths) {
  // Corporate 30/360: 15 Dec 2024 .. 10 Mar 2025 is 85 days of 180.
  ScheduledBond s(3, ymd(2030, 6, 15), ymd(2025, 3, 10));
  ASSERT_EQ(s.rc, 0);
  EXPECT_EQ(s.d.accrual_basis, 1);
  EXPECT_NEAR(s.d.tn, 0.5 - 85.0 / 360.0, kTight);
  EXPECT_NEAR(s.d.ay, 85.0 / 360.0, kTight);
  EXPECT_NEAR(s.d.accrued, 0.06 * 85.0 / 360.0, kTight);
}

TEST(CouponScheduleFirstPeriod, ShortFirstCouponIsAFractionOfARegularOne) {
  // Dated 1 Feb 2025, first coupon 15 May 2025: 103 days of the 181-day
  // quasi-period 15 Nov 2024 .. 15 May 2025; 28 days accrued on 1 Mar.
  ScheduledBond s(0, ymd(2029, 11, 15), ymd(2025, 3, 1), ymd(2025, 2, 1), ymd(2025, 5, 15));
  ASSERT_EQ(s.rc, 0);
  EXPECT_EQ(s.d.position, kShortFirstPeriod);
  EXPECT_EQ(s.d.quasi_start, ymd(2024, 11, 15));
  EXPECT_NEAR(s.d.cf, 103.0 / 181.0, kTight);
  EXPECT_NEAR(s.d.tn, 75.0 / 362.0, kTight);
  EXPECT_NEAR(s.d.accrued, 0.03 * 28.0 / 181.0, kTight);
  EXPECT_NEAR(s.d.full_coupon, 0.03 * 103.0 / 181.0, kTight);
}

TEST(CouponScheduleFirstPeriod, LongFirstCouponAccruesOverTwoQuasiPeriods) {
  // Dated 15 Sep 2024, first coupon 15 May 2025. Quasi-periods:
  // 15 May .. 15 Nov 2024 (184 days, 61 from the dated date) and
  // 15 Nov 2024 .. 15 May 2025 (181 days).
  const int32_t dated = ymd(2024, 9, 15), first = ymd(2025, 5, 15);
  ScheduledBond after(0, ymd(2029, 11, 15), ymd(2024, 12, 1), dated, first);
  ASSERT_EQ(after.rc, 0);
  EXPECT_EQ(after.d.position, kLongFirstPeriod);
  EXPECT_NEAR(after.d.cf, 1.0 + 61.0 / 184.0, kTight);
  // 1 Dec 2024 .. 15 May 2025 is 165 days of the 181-day quasi-period.
  EXPECT_NEAR(after.d.tn, 165.0 / 362.0, kTight);
  EXPECT_NEAR(after.d.accrued, 0.03 * (61.0 / 184.0 + 16.0 / 181.0), kTight);

  // Before the first quasi-coupon date: 16 days accrued of 184, and the
  // time runs over the rest of that quasi-period plus a whole one.
  ScheduledBond before(0, ymd(2029, 11, 15), ymd(2024, 10, 1), dated, first);
  ASSERT_EQ(before.rc, 0);
  EXPECT_NEAR(before.d.tn, (45.0 / 184.0 + 1.0) / 2.0, kTight);
  EXPECT_NEAR(before.d.accrued, 0.03 * 16.0 / 184.0, kTight);
}

TEST(CouponScheduleFirstPeriod, SettlementBeforeTheDatedDateAccruesNothing) {
  // Regular first period 15 Nov 2024 .. 15 May 2025, traded on 1 Nov 2024.
  ScheduledBond s(0, ymd(2029, 11, 15), ymd(2024, 11, 1), ymd(2024, 11, 15), ymd(2025, 5, 15));
  ASSERT_EQ(s.rc, 0);
  EXPECT_EQ(s.d.position, kRegularPeriod);
  EXPECT_EQ(s.d.period_start, ymd(2024, 11, 15));
  EXPECT_EQ(s.d.accrued, 0.0);
  // 14 days to the dated date in the 184-day quasi-period before it, plus
  // the whole first period.
  EXPECT_NEAR(s.d.tn, (14.0 / 184.0 + 1.0) / 2.0, kTight);
}

TEST(CouponScheduleLastPeriod, NoGridDateLeftRunsToMaturity) {
  // First coupon fixes the grid on the 15th; maturity 1 Oct 2029. On
  // 20 Sep 2029 only the broken period 15 Sep .. 1 Oct remains (16 of 181
  // days of the quasi-period to 15 Mar 2030).
  ScheduledBond s(500, ymd(2029, 10, 1), ymd(2029, 9, 20), ymd(2024, 9, 15), ymd(2025, 3, 15));
  ASSERT_EQ(s.rc, 0);
  EXPECT_EQ(s.d.position, kNoGridDateLeft);
  EXPECT_EQ(s.d.next_coupon, ymd(2029, 10, 1));
  EXPECT_NEAR(s.d.cf, 16.0 / 181.0, kTight);
  EXPECT_NEAR(s.d.tn, 11.0 / 362.0, kTight);
  EXPECT_NEAR(s.d.accrued, 0.03 * 5.0 / 181.0, kTight);
  EXPECT_EQ(s.d.last_discount, 0.0);
}

}  // namespace
}  // namespace kbond::engine
