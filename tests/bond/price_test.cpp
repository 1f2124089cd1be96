// KVLbpr on real bonds under each market's convention, against an
// independent spreadsheet-style price (straight_bond.h: every cash flow
// discounted at (1 + y/f)^(periods), the construction of the spreadsheet
// PRICE and ODDFPRICE functions). Day counts are counted on the calendar in
// the comments.
#include <gtest/gtest.h>

#include <cmath>

#include "straight_bond.h"

namespace kbond::testing {
namespace {

// Results of types 0 and 1 are rounded to six decimals.
constexpr double kSixDecimals = 5.1e-7;
constexpr double kUnrounded = 1e-9;

TEST(PriceUsTreasury, TenYearNoteMatchesSpreadsheetPrice) {
  // 4.25% note of 15 Nov 2034 settled 2 Dec 2024 at 4.20%: 20 coupons left,
  // 164 of the 181 days of the current period to run, 17 accrued.
  StraightBond ust(0.0425, ymd(2034, 11, 15), 0);
  int32_t err = -1;
  const double price = ust.price(ymd(2024, 12, 2), 0.042, &err);
  ASSERT_EQ(err, 0);
  const double expected = sheet_price(0.042, 2, 20, 2.125, 2.125, 164.0 / 181.0, 100.0,
                                      2.125 * 17.0 / 181.0);
  EXPECT_NEAR(price, expected, kSixDecimals);
  EXPECT_NEAR(expected, 100.401459, 1e-6);  // the spreadsheet's value
  // Six decimals exactly.
  EXPECT_DOUBLE_EQ(price, std::floor(price * 1e6 + 0.5) * 1e-6);
}

TEST(PriceUsTreasury, LastPeriodIsPricedAtSimpleInterest) {
  // 4% note of 15 May 2025 settled 1 Apr 2025 at 4.5%: one coupon left,
  // 44 of 181 days to run, 137 accrued. Spreadsheet PRICE with one coupon:
  // (100 + c) / (1 + DSR/E * y/f) - accrued.
  StraightBond ust(0.04, ymd(2025, 5, 15), 0);
  int32_t err = -1;
  const double price = ust.price(ymd(2025, 4, 1), 0.045, &err);
  ASSERT_EQ(err, 0);
  const double simple = 102.0 / (1.0 + 44.0 / 181.0 * 0.0225) - 2.0 * 137.0 / 181.0;
  EXPECT_NEAR(price, simple, kSixDecimals);
  const double compound = sheet_price(0.045, 2, 1, 2.0, 2.0, 44.0 / 181.0, 100.0, 2.0 * 137.0 / 181.0);
  EXPECT_GT(std::fabs(price - compound), 1e-5);
}

TEST(PriceCorporate, ThirtyThreeSixtyTruncatedToThreeDecimals) {
  // 5% corporate of 15 Jun 2030 settled 10 Mar 2025 at 5.5%, 30/360:
  // 85 days accrued of 180, 95 to run, 11 coupons left.
  StraightBond corp(0.05, ymd(2030, 6, 15), 3);
  int32_t err = -1;
  const double price = corp.price(ymd(2025, 3, 10), 0.055, &err);
  ASSERT_EQ(err, 0);
  const double exact = sheet_price(0.055, 2, 11, 2.5, 2.5, 95.0 / 180.0, 100.0, 2.5 * 85.0 / 180.0);
  EXPECT_DOUBLE_EQ(price, std::floor(std::floor(exact * 1e8 + 0.5) * 1e-5) * 0.001);
  EXPECT_LE(price, exact);
  EXPECT_GT(price, exact - 0.001);
}

TEST(PriceGilt, CumAndExDividend) {
  // 4.5% Treasury Gilt 2028 (7 Jun / 7 Dec) at 4.1%. The period
  // 7 Dec 2024 .. 7 Jun 2025 has 182 days.
  StraightBond gilt(0.045, ymd(2028, 6, 7), 40);
  int32_t err = -1;
  // 20 May 2025: 164 days accrued, 18 to run, 7 coupons left.
  const double cum = gilt.price(ymd(2025, 5, 20), 0.041, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NEAR(cum, sheet_price(0.041, 2, 7, 2.25, 2.25, 18.0 / 182.0, 100.0, 2.25 * 164.0 / 182.0),
              kUnrounded);
  // 3 June 2025 is after the ex-dividend date (29 May + 1 day): the
  // June coupon goes to the seller and the accrued interest is minus the
  // 4 days to it.
  const double ex = gilt.price(ymd(2025, 6, 3), 0.041, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NEAR(ex, sheet_price(0.041, 2, 7, 2.25, 2.25, 4.0 / 182.0, 100.0, -2.25 * 4.0 / 182.0, false),
              kUnrounded);
}

TEST(PriceGilt, LastPeriodStaysCompound) {
  // Gilts discount the final period at the compound yield: 1 Mar 2028,
  // 85 days accrued of the 183-day period to 7 Jun 2028, 98 to run.
  StraightBond gilt(0.045, ymd(2028, 6, 7), 40);
  int32_t err = -1;
  const double price = gilt.price(ymd(2028, 3, 1), 0.041, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NEAR(price, sheet_price(0.041, 2, 1, 2.25, 2.25, 98.0 / 183.0, 100.0, 2.25 * 85.0 / 183.0),
              kUnrounded);
}

TEST(PriceBund, AnnualActualActual) {
  // 2.5% Bund of 15 Feb 2035 settled 10 Mar 2025 at 2.6%: 23 days accrued
  // of the 365-day period, 342 to run, 10 coupons left.
  StraightBond bund(0.025, ymd(2035, 2, 15), 60);
  int32_t err = -1;
  const double price = bund.price(ymd(2025, 3, 10), 0.026, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NEAR(price, sheet_price(0.026, 1, 10, 2.5, 2.5, 342.0 / 365.0, 100.0, 2.5 * 23.0 / 365.0),
              kUnrounded);
}

TEST(PriceQuotation, AnnuallyQuotedYieldIsConvertedToTheCouponFrequency) {
  // Eurobond type 242 quotes yields annually on semi-annual coupons; the
  // same bond as type 240 with two coupons a year quotes semi-annually.
  // (1 + 0.05)^(1/2) = 1 + y/2 gives the semi-annual equivalent.
  StraightBond annual(0.045, ymd(2032, 9, 1), 242);
  StraightBond semi(0.045, ymd(2032, 9, 1), 240);
  semi.frequency = {2};
  int32_t err = -1;
  const int32_t settle = ymd(2025, 4, 15);
  const double quoted = annual.price(settle, 0.05, &err);
  ASSERT_EQ(err, 0);
  const double y_semi = 2.0 * (std::sqrt(1.05) - 1.0);
  EXPECT_NEAR(quoted, semi.price(settle, y_semi, &err), 1e-10);
  EXPECT_GT(std::fabs(quoted - semi.price(settle, 0.05, &err)), 1e-3);
  // Over the last period the yield is not converted.
  const int32_t last = ymd(2032, 5, 1);
  EXPECT_NEAR(annual.price(last, 0.05, &err), semi.price(last, 0.05, &err), 1e-12);
}

TEST(PriceOddFirstCoupon, ShortFirstCoupon) {
  // 5% dated 1 Feb 2025, first coupon 15 May 2025, maturing 15 Nov 2029;
  // settled 1 Mar 2025 at 4.8%. Quasi-period 15 Nov 2024 .. 15 May 2025
  // (181 days): first coupon 103/181 of a regular one, 75 days to run,
  // 28 accrued. Spreadsheet ODDFPRICE.
  StraightBond bond(0.05, ymd(2029, 11, 15), 0);
  bond.dated = ymd(2025, 2, 1);
  bond.first = ymd(2025, 5, 15);
  int32_t err = -1;
  const double price = bond.price(ymd(2025, 3, 1), 0.048, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NEAR(price,
              sheet_price(0.048, 2, 10, 2.5 * 103.0 / 181.0, 2.5, 75.0 / 181.0, 100.0,
                          2.5 * 28.0 / 181.0),
              kSixDecimals);
}

TEST(PriceOddFirstCoupon, LongFirstCoupon) {
  // Dated 15 Sep 2024, first coupon 15 May 2025: the first coupon covers
  // 61/184 of the quasi-period to 15 Nov 2024 and the whole one after it.
  // Settled 1 Dec 2024: 165 of 181 days to run, 61/184 + 16/181 accrued.
  StraightBond bond(0.05, ymd(2029, 11, 15), 0);
  bond.dated = ymd(2024, 9, 15);
  bond.first = ymd(2025, 5, 15);
  int32_t err = -1;
  const double price = bond.price(ymd(2024, 12, 1), 0.048, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NEAR(price,
              sheet_price(0.048, 2, 10, 2.5 * (1.0 + 61.0 / 184.0), 2.5, 165.0 / 181.0, 100.0,
                          2.5 * (61.0 / 184.0 + 16.0 / 181.0)),
              kSixDecimals);
}

TEST(PriceRedemption, RedemptionFormsMatchAnExplicitRedemption) {
  // Generic bond (type 500, unrounded) 6% of 15 Jun 2030 settled 15 Mar 2028
  // at 5%: 91 of 183 days accrued, 92 to run, 5 coupons left.
  const int32_t settle = ymd(2028, 3, 15);
  int32_t err = -1;
  StraightBond at98(0.06, ymd(2030, 6, 15), 500);
  at98.coupons = {0.06, 98.0};
  const double p98 = at98.price(settle, 0.05, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NEAR(p98, sheet_price(0.05, 2, 5, 3.0, 3.0, 92.0 / 183.0, 98.0, 3.0 * 91.0 / 183.0),
              kUnrounded);
  StraightBond ratio(0.06, ymd(2030, 6, 15), 500);
  ratio.coupons = {0.06, 100.0, 102.0};
  StraightBond explicit_102(0.06, ymd(2030, 6, 15), 500);
  explicit_102.redemption = 102.0;
  EXPECT_NEAR(ratio.price(settle, 0.05, &err), explicit_102.price(settle, 0.05, &err), 1e-12);
}

// Clean prices of 6% semi-annual bullets settled 15 Mar 2028 at 5%, the
// legs of the sinking-fund bonds below: the 2028 leg is in its last period
// (simple interest), the others compound.
double bullet_2028() { return 103.0 / (1.0 + 92.0 / 183.0 * 0.025) - 3.0 * 91.0 / 183.0; }
double bullet(int n) { return sheet_price(0.05, 2, n, 3.0, 3.0, 92.0 / 183.0, 100.0, 3.0 * 91.0 / 183.0); }

TEST(PriceSinkingFund, ScheduledRepaymentsPerOutstandingFace) {
  // 20% repaid every 15 June from 2027: 80% outstanding at settlement,
  // 20% in 2028 and 2029, 40% at maturity in 2030.
  StraightBond bond(0.06, ymd(2030, 6, 15), 500);
  bond.frequency = {2, 1};
  bond.factor = 1.0;
  bond.sink_dates = {ymd(2027, 6, 15)};
  bond.sink_amounts = {0.2};
  int32_t err = -1;
  const double price = bond.price(ymd(2028, 3, 15), 0.05, &err);
  ASSERT_EQ(err, 0);
  const double expected = (0.2 * bullet_2028() + 0.2 * bullet(3) + 0.4 * bullet(5)) / 0.8;
  EXPECT_NEAR(price, expected, 1e-9);
}

TEST(PriceSinkingFund, EqualRepayments) {
  // Five equal repayments 2026..2030: 60% outstanding at settlement.
  StraightBond bond(0.06, ymd(2030, 6, 15), 500);
  bond.frequency = {2, 1};
  bond.factor = -1.0;
  bond.sink_dates = {ymd(2026, 6, 15)};
  int32_t err = -1;
  const double price = bond.price(ymd(2028, 3, 15), 0.05, &err);
  ASSERT_EQ(err, 0);
  const double expected = (0.2 * bullet_2028() + 0.2 * bullet(3) + 0.2 * bullet(5)) / 0.6;
  EXPECT_NEAR(price, expected, 1e-9);
}

}  // namespace
}  // namespace kbond::testing
