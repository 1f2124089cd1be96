// U.S. inflation-indexed securities: the Treasury's real price and accrued
// interest, round trips, risk measures against finite differences, the
// projection rules of the cash-flow table and argument checks.
#include <gtest/gtest.h>

#include <cmath>

#include "k_bond.h"
#include "dates/date_serial.h"
#include "inflation/linker_desc.h"
#include "inflation/linker_valuation.h"

namespace {

// 2% TIPS of January 2016 (dated 15 January 2006), settling 2 January 2013.
struct TipsCall {
  double coupon = 2.0;
  double base[2] = {198.47742, 0.0};  // Ref CPI on the dated date (TreasuryDirect)
  int32_t base_count = 1;
  double settle[2] = {231.28165, 0.0};  // Ref CPI of 2 January 2013 (TreasuryDirect)
  int32_t settle_count = 1;
  int32_t maturity = kbond::dates::date_to_serial(15, 1, 2016);
  int32_t settlement = kbond::dates::date_to_serial(2, 1, 2013);
  const double* next_amount = nullptr;
  int32_t option_b = 0;
  double inflation = 0.03;

  double price(double y, int32_t* err) const {
    return KVLtipspr(coupon, base, base_count, settle, settle_count, maturity, settlement, y, nullptr,
                     next_amount, option_b, nullptr, nullptr, &inflation, nullptr, nullptr, nullptr, 0,
                     nullptr, 0, err);
  }
  double yield(double p, int32_t* err) const {
    return KVLtipsyld(coupon, base, base_count, settle, settle_count, maturity, settlement, p, nullptr,
                      next_amount, option_b, nullptr, nullptr, &inflation, nullptr, nullptr, nullptr, 0,
                      nullptr, 0, err);
  }
  double duration(double y, int32_t* err) const {
    return KVLtipsdur(coupon, base, base_count, settle, settle_count, maturity, settlement, y, nullptr,
                      next_amount, option_b, nullptr, nullptr, &inflation, nullptr, nullptr, nullptr, 0,
                      nullptr, 0, err);
  }
  double convexity(double y, int32_t* err) const {
    return KVLtipsconv(coupon, base, base_count, settle, settle_count, maturity, settlement, y, nullptr,
                       next_amount, option_b, nullptr, nullptr, &inflation, nullptr, nullptr, nullptr, 0,
                       nullptr, 0, err);
  }
  int32_t cashflows(int32_t** dates, double** amounts, int32_t* err) const {
    return KVLtipscshflw(dates, amounts, coupon, base, base_count, settle, settle_count, maturity, settlement,
                         nullptr, next_amount, option_b, nullptr, nullptr, &inflation, nullptr, nullptr,
                         nullptr, 0, nullptr, 0, err);
  }
  kbond::inflation::LinkerArgs args() const {
    kbond::inflation::LinkerArgs a;
    a.coupon = coupon;
    a.base_index = base;
    a.base_count = base_count;
    a.settlement_index = settle;
    a.settlement_index_count = settle_count;
    a.maturity = maturity;
    a.settlement = settlement;
    a.next_coupon_amount = next_amount;
    a.option_b = option_b;
    a.inflation = &inflation;
    return a;
  }
};

TEST(TipsPrice, TreasuryRealPriceWithoutProjectedInflation) {
  // 31 CFR 356 Appendix B, computed independently (Python): r = 13 days to
  // 15 January 2013, s = 184, n = 6 coupons after it, real yield -1.5 %:
  // real dirty = (1 + sum_{k=1..6} 1 * v^k + 100 v^6) * v^(13/184), v = 1/(1 - 0.0075),
  // = 111.840703; real accrued = 1 * 171/184 = 0.929348; clean 110.911355.
  TipsCall call;
  call.inflation = 0.0;
  int32_t err = -1;
  EXPECT_NEAR(call.price(-0.015, &err), 110.911, 1e-9);
  EXPECT_EQ(err, 0);
}

TEST(TipsPrice, ProjectedInflationCancelsAgainstTheNominalDiscountRate) {
  // With 3 % assumed inflation the flows grow and the discount rate rises by
  // the same factor: the real price moves only by the 5-decimal rounding of
  // the projected ratios.
  TipsCall call;
  int32_t err = -1;
  EXPECT_NEAR(call.price(-0.015, &err), 110.911, 2e-3);
  EXPECT_EQ(err, 0);
}

TEST(TipsPrice, InflationAdjustedBasisIsTheRealPriceTimesTheIndexRatio) {
  TipsCall call;
  call.inflation = 0.0;
  call.option_b = 1;
  int32_t err = -1;
  // 110.911355 * 1.16528 = 129.2425 (index ratio of 2 January 2013).
  EXPECT_NEAR(call.price(-0.015, &err), 129.243, 1.5e-3);
  EXPECT_EQ(err, 0);
}

TEST(TipsAccrued, TreasuryAccruedTimesTheIndexRatio) {
  // 171 of 184 days of a 1 % half-year coupon, times 1.16528:
  // floor(171/368 * 0.02 * 1.16528 * 100 * 1e6 + 0.5) / 1e6 = 1.082950.
  TipsCall call;
  int32_t err = -1;
  EXPECT_NEAR(KVLtipsai(2.0, call.maturity, call.settlement, call.base, 1, call.settle, 1, nullptr, nullptr,
                        nullptr, nullptr, 0, nullptr, &err),
              1.082950, 1e-12);
  EXPECT_EQ(err, 0);
  // Without index values both references are 100: the real accrued 0.929348.
  EXPECT_NEAR(KVLtipsai(2.0, call.maturity, call.settlement, nullptr, 0, nullptr, 0, nullptr, nullptr,
                        nullptr, nullptr, 0, nullptr, &err),
              0.929348, 1e-12);
  EXPECT_EQ(err, 0);
}

TEST(TipsAccrued, TwoMonthlyValuesAreInterpolatedAtSettlementAndTheDatedDate) {
  // Base from October/November 2005 CPI at the maturity's day (15th of a
  // 31-day month) = 198.47742; settlement from October/November 2012 CPI on
  // 2 January = 231.28165: the same ratio 1.16528 as the one-value call.
  TipsCall call;
  const double base[2] = {199.2, 197.6};
  const double settle[2] = {231.317, 230.221};
  int32_t err = -1;
  EXPECT_NEAR(KVLtipsai(2.0, call.maturity, call.settlement, base, 2, settle, 2, nullptr, nullptr, nullptr,
                        nullptr, 0, nullptr, &err),
              1.082950, 1e-12);
  EXPECT_EQ(err, 0);
}

TEST(TipsYield, RoundTripsThePrice) {
  TipsCall call;
  for (double y : {-0.015, 0.0, 0.0125, 0.04}) {
    int32_t err = -1;
    const double p = call.price(y, &err);
    ASSERT_EQ(err, 0);
    const double back = call.yield(p, &err);
    ASSERT_EQ(err, 0);
    // The price is rounded to 3 decimals; at a duration near 3 that is 2e-6 of yield.
    EXPECT_NEAR(back, y, 5e-6) << "yield " << y;
  }
}

TEST(TipsRisk, DurationAndConvexityMatchFiniteDifferences) {
  TipsCall call;
  kbond::inflation::LinkerDesc desc;
  ASSERT_EQ(kbond::inflation::tips_setup(call.args(), &desc), 0);
  const double y = 0.01, h = 1e-5;
  kbond::inflation::LinkerValue up, mid, down;
  ASSERT_EQ(kbond::inflation::linker_value(desc, y + h, &up), 0);
  ASSERT_EQ(kbond::inflation::linker_value(desc, y, &mid), 0);
  ASSERT_EQ(kbond::inflation::linker_value(desc, y - h, &down), 0);
  const double fd_duration = (down.dirty - up.dirty) / (2 * h) / mid.dirty;
  const double fd_convexity = (up.dirty - 2 * mid.dirty + down.dirty) / (h * h) / mid.dirty;
  int32_t err = -1;
  EXPECT_NEAR(call.duration(y, &err), fd_duration, 1e-6);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(call.convexity(y, &err), fd_convexity, 1e-3);
  EXPECT_EQ(err, 0);
  // A 3-year bond: modified duration a little under 3 years.
  EXPECT_GT(fd_duration, 2.7);
  EXPECT_LT(fd_duration, 3.0);
}

TEST(TipsCashflows, ProjectedRatiosRoundToFiveDecimalsAndTheTableReprices) {
  TipsCall call;
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  int32_t err = -1;
  const int32_t rows = call.cashflows(&dates, &amounts, &err);
  ASSERT_EQ(err, 0);
  ASSERT_EQ(rows, 7);  // January 2013 .. January 2016
  EXPECT_EQ(dates[0], kbond::dates::date_to_serial(15, 1, 2013));
  EXPECT_EQ(dates[6], call.maturity);
  for (int32_t i = 1; i < rows - 1; ++i) {
    const double ratio = amounts[i] / 1.0;  // coupon of 1 per 100 per half-year
    EXPECT_NEAR(ratio * 1e5, std::round(ratio * 1e5), 1e-6) << "row " << i;
    EXPECT_GT(amounts[i], amounts[i - 1]);  // 3 % inflation
  }
  // Reprice: discount the table at the nominal rate (1 + y/2) * sqrt(1.03).
  const double y = 0.01;
  const double v = 1.0 / ((1.0 + y / 2) * std::sqrt(1.03));
  const double t0 = 13.0 / 184.0;
  double dirty = 0.0;
  for (int32_t i = 0; i < rows; ++i) dirty += amounts[i] * std::pow(v, t0 + i);
  kbond::inflation::LinkerDesc desc;
  ASSERT_EQ(kbond::inflation::tips_setup(call.args(), &desc), 0);
  kbond::inflation::LinkerValue value;
  ASSERT_EQ(kbond::inflation::linker_value(desc, y, &value), 0);
  EXPECT_NEAR(dirty, value.dirty, 1e-9);
  KVLtipscshflw_free(dates, amounts);
}

TEST(TipsCashflows, PrincipalIsNeverRepaidBelowPar) {
  // Deflation of 20 % a year from a ratio of 1.0: the coupons shrink but the
  // last row still repays 100 (plus the last coupon).
  TipsCall call;
  call.settle[0] = call.base[0];
  call.inflation = -0.2;
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  int32_t err = -1;
  const int32_t rows = call.cashflows(&dates, &amounts, &err);
  ASSERT_EQ(err, 0);
  ASSERT_EQ(rows, 7);
  const double last_coupon = amounts[rows - 1] - 100.0;
  EXPECT_GT(last_coupon, 0.0);
  EXPECT_LT(last_coupon, amounts[1]);  // shrinking coupons
  EXPECT_LT(last_coupon, 1.0);
  KVLtipscshflw_free(dates, amounts);
}

TEST(TipsCashflows, FixedNextCouponIsTakenAsGiven) {
  TipsCall call;
  const double fixed = 1.16;  // percent of par
  call.next_amount = &fixed;
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  int32_t err = -1;
  ASSERT_EQ(call.cashflows(&dates, &amounts, &err), 7);
  EXPECT_DOUBLE_EQ(amounts[0], 1.16);
  // The later ratios start from 1.16 / 1 = 1.16000, one half-year of 3 %.
  EXPECT_NEAR(amounts[1], std::round(1.16 * std::sqrt(1.03) * 1e5) / 1e5, 1e-12);
  KVLtipscshflw_free(dates, amounts);
}

TEST(TipsArguments, CountsAboveTwoAreRefusedFirst) {
  TipsCall call;
  int32_t err = 0;
  call.base_count = 3;
  EXPECT_EQ(call.price(0.01, &err), -1.0);
  EXPECT_EQ(err, 70);
  call.base_count = 1;
  call.settle_count = 3;
  EXPECT_EQ(call.price(0.01, &err), -1.0);
  EXPECT_EQ(err, 70);
  // 70 comes before the NULL check.
  EXPECT_EQ(KVLtipspr(2.0, nullptr, 3, nullptr, 1, call.maturity, call.settlement, 0.01, nullptr, nullptr, 0,
                      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, &err),
            -1.0);
  EXPECT_EQ(err, 70);
  EXPECT_EQ(KVLtipsai(2.0, call.maturity, call.settlement, call.base, 3, nullptr, 0, nullptr, nullptr, nullptr,
                      nullptr, 0, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 70);
}

TEST(TipsArguments, NullIndexPointersAreMissingArrays) {
  TipsCall call;
  int32_t err = 0;
  EXPECT_EQ(KVLtipspr(2.0, nullptr, 1, call.settle, 1, call.maturity, call.settlement, 0.01, nullptr, nullptr,
                      0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, &err),
            -1.0);
  EXPECT_EQ(err, 50);
  EXPECT_EQ(KVLtipsyld(2.0, call.base, 1, nullptr, 1, call.maturity, call.settlement, 100.0, nullptr, nullptr,
                       0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, &err),
            -1.0);
  EXPECT_EQ(err, 50);
  int32_t* dates = reinterpret_cast<int32_t*>(&err);  // must be reset to NULL
  double* amounts = nullptr;
  EXPECT_EQ(KVLtipscshflw(&dates, &amounts, 2.0, call.base, 1, nullptr, 1, call.maturity, call.settlement,
                          nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                          0, &err),
            0);
  EXPECT_EQ(err, 50);
  EXPECT_EQ(dates, nullptr);
  KVLtipscshflw_free(dates, amounts);
}

TEST(TipsArguments, InflationAtMinusFiftyPercentIsRefused) {
  TipsCall call;
  int32_t err = 0;
  call.inflation = -0.5;
  EXPECT_EQ(call.price(0.01, &err), -1.0);
  EXPECT_EQ(err, 1);
  call.inflation = -0.49;
  EXPECT_GT(call.price(0.01, &err), 0.0);
  EXPECT_EQ(err, 0);
}

TEST(TipsArguments, InvalidDescriptionsFailWithErrorOne) {
  TipsCall call;
  int32_t err = 0;
  call.coupon = 0.0;
  EXPECT_EQ(call.price(0.01, &err), -1.0);
  EXPECT_EQ(err, 1);
  call.coupon = 2.0;
  call.base[0] = -5.0;
  EXPECT_EQ(call.duration(0.01, &err), -1.0);
  EXPECT_EQ(err, 1);
  call.base[0] = 198.47742;
  call.settlement = call.maturity + 1;
  EXPECT_EQ(call.convexity(0.01, &err), -1.0);
  EXPECT_EQ(err, 1);
  call.settlement = kbond::dates::date_to_serial(2, 1, 2013);
  call.option_b = 2;
  EXPECT_EQ(call.price(0.01, &err), -1.0);
  EXPECT_EQ(err, 1);
  call.option_b = 0;
  EXPECT_EQ(call.price(std::nan(""), &err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(call.yield(-3.0, &err), -1.0);
  EXPECT_EQ(err, 1);
  // NULL error pointer is allowed.
  EXPECT_GT(call.price(0.01, nullptr), 0.0);
}

}  // namespace
