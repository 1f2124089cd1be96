// KVLbai and KVLbai1: accrued interest per 100 under each market's day count
// and ex-dividend rule. Expected values are the markets' formulas worked by
// hand: coupon x days accrued / days (or year basis), and after the
// ex-dividend date minus the coupon x days to the coupon / days.
#include <gtest/gtest.h>

#include "straight_bond.h"

namespace kbond::testing {
namespace {

constexpr double kTight = 1e-10;

TEST(AccruedUsTreasury, ActualActualOverThePeriod) {
  // 4.25% of 15 Nov 2034 on 2 Dec 2024: 17 of 181 days.
  StraightBond ust(0.0425, ymd(2034, 11, 15), 0);
  int32_t err = -1;
  EXPECT_NEAR(ust.accrued(ymd(2024, 12, 2), &err), 2.125 * 17.0 / 181.0, kTight);
  EXPECT_EQ(err, 0);
  // On a coupon date nothing has accrued.
  EXPECT_EQ(ust.accrued(ymd(2025, 5, 15), &err), 0.0);
}

TEST(AccruedGilt, NegativeAfterTheExDividendDate) {
  // 4.5% Gilt 2028, coupon 7 Jun 2025 (a Saturday); 7 business days back is
  // Thursday 29 May, so the bond is ex-dividend from 30 May.
  StraightBond gilt(0.045, ymd(2028, 6, 7), 40);
  int32_t err = -1;
  EXPECT_NEAR(gilt.accrued(ymd(2025, 5, 29), &err), 2.25 * 173.0 / 182.0, kTight);
  EXPECT_NEAR(gilt.accrued(ymd(2025, 5, 30), &err), -2.25 * 8.0 / 182.0, kTight);
  EXPECT_NEAR(gilt.accrued(ymd(2025, 6, 3), &err), -2.25 * 4.0 / 182.0, kTight);
  EXPECT_EQ(err, 0);
  // The caller may override the period: 3 calendar days before the coupon.
  gilt.exdiv_days = -3;
  EXPECT_NEAR(gilt.accrued(ymd(2025, 6, 3), &err), 2.25 * 178.0 / 182.0, kTight);
  EXPECT_NEAR(gilt.accrued(ymd(2025, 6, 4), &err), -2.25 * 3.0 / 182.0, kTight);
}

TEST(AccruedGilt, ActualThreeSixtyFiveBeforeNovember1998) {
  // 8% Gilt 7 Dec 2015 on 31 Oct 1998: 146 days since 7 Jun at act/365;
  // from 1 Nov 1998 act/act over the 183-day period.
  StraightBond gilt(0.08, ymd(2015, 12, 7), 40);
  int32_t err = -1;
  EXPECT_NEAR(gilt.accrued(ymd(1998, 10, 31), &err), 8.0 * 146.0 / 365.0, kTight);
  EXPECT_NEAR(gilt.accrued(ymd(1998, 11, 2), &err), 4.0 * 148.0 / 183.0, kTight);
}

TEST(AccruedAustralian, ExDividendSevenDaysAndRoundedToThreeDecimals) {
  // 4.25% ACGB 21 Apr 2026 (21 Apr / 21 Oct): ex-dividend 7 days before
  // the coupon. On 16 Apr 2025: -2.125 x 5/182 = -0.058379.. -> -0.058.
  StraightBond acgb(0.0425, ymd(2026, 4, 21), 220);
  int32_t err = -1;
  EXPECT_NEAR(acgb.accrued(ymd(2025, 4, 16), &err), -0.058, kTight);
  // 13 Apr is still cum: 2.125 x 174/182 = 2.031593.. -> 2.032.
  EXPECT_NEAR(acgb.accrued(ymd(2025, 4, 13), &err), 2.032, kTight);
  // In the last period accrual is act/365: 4.25 x 41/365 = 0.477397.. -> 0.477.
  EXPECT_NEAR(acgb.accrued(ymd(2025, 12, 1), &err), 0.477, kTight);
  EXPECT_EQ(err, 0);
}

TEST(AccruedSwedish, ThirtyEThreeSixtyExDividendFiveBusinessDays) {
  // 1% SGB 12 Nov 2026 (annual). Coupon Wednesday 12 Nov 2025; five
  // business days back is Wednesday 5 Nov. On 7 Nov 355 30E/360 days have
  // run, so the buyer is owed 5 days.
  StraightBond sgb(0.01, ymd(2026, 11, 12), 180);
  int32_t err = -1;
  EXPECT_NEAR(sgb.accrued(ymd(2025, 11, 4), &err), 1.0 * 352.0 / 360.0, kTight);
  EXPECT_NEAR(sgb.accrued(ymd(2025, 11, 7), &err), -1.0 * 5.0 / 360.0, kTight);
  EXPECT_EQ(err, 0);
}

TEST(AccruedNorwegian, ActualThreeSixtyFiveExDividendFourteenDays) {
  // 1.5% NGB 19 Feb 2026 (annual): ex-dividend from 5 Feb 2025.
  StraightBond ngb(0.015, ymd(2026, 2, 19), 330);
  int32_t err = -1;
  EXPECT_NEAR(ngb.accrued(ymd(2025, 2, 4), &err), 1.5 * 351.0 / 365.0, kTight);
  EXPECT_NEAR(ngb.accrued(ymd(2025, 2, 10), &err), -1.5 * 9.0 / 365.0, kTight);
  EXPECT_EQ(err, 0);
}

TEST(AccruedDanish, PreEmuRulesEndOn8February2001) {
  // 6% Danish bond 15 Nov 2006 (annual). As 302 before 8 Feb 2001: 30E/360
  // (82 days from 15 Nov to 7 Feb). From 8 Feb 2001 as 300: act/act,
  // 85 of 365 days.
  StraightBond dgb(0.06, ymd(2006, 11, 15), 302);
  int32_t err = -1;
  EXPECT_NEAR(dgb.accrued(ymd(2001, 2, 7), &err), 6.0 * 82.0 / 360.0, kTight);
  EXPECT_NEAR(dgb.accrued(ymd(2001, 2, 8), &err), 6.0 * 85.0 / 365.0, kTight);
}

TEST(AccruedRounding, FrenchOatFiveAndPortugueseSixDecimalsOfFace) {
  // 3% OAT 25 Nov 2034 on 3 Mar 2025: 3 x 98/365 = 0.805479452.. per 100,
  // rounded at the fifth decimal of face: 0.805 (0.00805479 -> 0.00805).
  StraightBond oat(0.03, ymd(2034, 11, 25), 81);
  int32_t err = -1;
  EXPECT_NEAR(oat.accrued(ymd(2025, 3, 3), &err), 0.805, kTight);
  // Portuguese 290: 0.805479452 -> sixth decimal of face -> 0.8055.
  StraightBond pgb(0.03, ymd(2034, 11, 25), 290);
  EXPECT_NEAR(pgb.accrued(ymd(2025, 3, 3), &err), 0.8055, kTight);
  EXPECT_EQ(err, 0);
}

TEST(AccruedSubstitution, MunicipalIgnoringOddCouponsAccruesAsMunicipal) {
  // Type 16 ignores odd coupons for price and yield only: its accrued
  // interest, odd first period included, is the municipal (type 2) one.
  StraightBond muni16(0.05, ymd(2030, 6, 1), 16);
  muni16.dated = ymd(2025, 1, 15);
  muni16.first = ymd(2025, 12, 1);
  StraightBond muni2 = muni16;
  muni2.type = 2;
  int32_t e16 = -1, e2 = -1;
  const int32_t settle = ymd(2025, 5, 20);
  EXPECT_DOUBLE_EQ(muni16.accrued(settle, &e16), muni2.accrued(settle, &e2));
  EXPECT_EQ(e16, 0);
  // 30/360 from the dated date: 125 days.
  EXPECT_NEAR(muni2.accrued(settle, &e2), 5.0 * 125.0 / 360.0, kTight);
  // Bank of Canada conventions (22) accrue as Canadian bonds (20).
  StraightBond can22(0.04, ymd(2030, 6, 1), 22), can20(0.04, ymd(2030, 6, 1), 20);
  EXPECT_DOUBLE_EQ(can22.accrued(settle, &e16), can20.accrued(settle, &e2));
}

TEST(AccruedShortForm, KVLbaiEqualsKVLbai1WithoutBusinessDayArguments) {
  StraightBond gilt(0.045, ymd(2028, 6, 7), 40);
  int32_t e1 = -1, e2 = -1;
  for (int32_t settle : {ymd(2025, 5, 20), ymd(2025, 5, 30), ymd(2025, 6, 6)}) {
    EXPECT_EQ(gilt.accrued(settle, &e1), gilt.accrued1(settle, &e2));
    EXPECT_EQ(e1, e2);
  }
  // With a holiday on Friday 30 May 2025 the Gilt goes ex a day earlier
  // when the business-day arguments are given.
  gilt.holidays = {ymd(2025, 5, 30)};
  EXPECT_GT(gilt.accrued(ymd(2025, 5, 29), &e1), 0.0);
  EXPECT_LT(gilt.accrued1(ymd(2025, 5, 29), &e2), 0.0);
}

TEST(AccruedSinkingFund, PerOutstandingFace) {
  // Accrued interest does not depend on how much face is outstanding.
  StraightBond plain(0.06, ymd(2030, 6, 15), 500);
  StraightBond sinking = plain;
  sinking.frequency = {2, 1};
  sinking.factor = -1.0;
  sinking.sink_dates = {ymd(2026, 6, 15)};
  int32_t e1 = -1, e2 = -1;
  const int32_t settle = ymd(2028, 3, 15);
  EXPECT_DOUBLE_EQ(sinking.accrued(settle, &e1), plain.accrued(settle, &e2));
  EXPECT_EQ(e1, 0);
}

}  // namespace
}  // namespace kbond::testing
