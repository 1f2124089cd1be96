// French inflation-indexed OATs: the French Treasury's real price, the
// annual projection rules (5-decimal ratios, par floor), the last-period
// price, round trips, risk measures and argument checks.
#include <gtest/gtest.h>

#include <cmath>

#include "k_bond.h"
#include "dates/date_serial.h"
#include "inflation/linker_desc.h"
#include "inflation/linker_valuation.h"

namespace {

using kbond::dates::date_to_serial;

// A 1.1 % OATi maturing 25 July 2022, base reference index 100.0, settling
// 10 March 2020 at a reference index of 112.345 (index ratio 1.12345).
struct OatiCall {
  double coupon = 1.1;
  double base[2] = {100.0, 0.0};
  int32_t base_count = 1;
  double settle[2] = {112.345, 0.0};
  int32_t settle_count = 1;
  int32_t maturity = date_to_serial(25, 7, 2022);
  int32_t settlement = date_to_serial(10, 3, 2020);
  double inflation = 0.03;

  double price(double y, int32_t* err) const {
    return KVLoatipr(coupon, base, base_count, settle, settle_count, maturity, settlement, y, nullptr, nullptr, 0,
                     nullptr, nullptr, &inflation, nullptr, nullptr, nullptr, 0, nullptr, 0, err);
  }
  double yield(double p, int32_t* err) const {
    return KVLoatiyld(coupon, base, base_count, settle, settle_count, maturity, settlement, p, nullptr, nullptr,
                      0, nullptr, nullptr, &inflation, nullptr, nullptr, nullptr, 0, nullptr, 0, err);
  }
  double duration(double y, int32_t* err) const {
    return KVLoatidur(coupon, base, base_count, settle, settle_count, maturity, settlement, y, nullptr, nullptr,
                      0, nullptr, nullptr, &inflation, nullptr, nullptr, nullptr, 0, nullptr, 0, err);
  }
  double convexity(double y, int32_t* err) const {
    return KVLoaticonv(coupon, base, base_count, settle, settle_count, maturity, settlement, y, nullptr, nullptr,
                       0, nullptr, nullptr, &inflation, nullptr, nullptr, nullptr, 0, nullptr, 0, err);
  }
  int32_t cashflows(int32_t** dates, double** amounts, int32_t* err) const {
    return KVLoaticshflw(dates, amounts, coupon, base, base_count, settle, settle_count, maturity, settlement,
                         nullptr, nullptr, 0, nullptr, nullptr, &inflation, nullptr, nullptr, nullptr, 0, nullptr,
                         0, err);
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
    a.inflation = &inflation;
    return a;
  }
};

TEST(OatiPrice, FrenchTreasuryRealPrice) {
  // Real yield 0.5 % annual, actual/actual: t = 137/366 to 25 July 2020;
  // 1.1 v^t + 1.1 v^(t+1) + 101.1 v^(t+2) - 1.1 * 229/366 = 101.412017
  // (independent computation in Python). Without projected inflation the
  // library's inflation-adjusted route gives the same price to 3 decimals.
  OatiCall call;
  call.inflation = 0.0;
  int32_t err = -1;
  EXPECT_NEAR(call.price(0.005, &err), 101.412, 1e-9);
  EXPECT_EQ(err, 0);
  // At 3 % the projected flows and the nominal discount rate cancel
  // (Python, with the 5-decimal ratios: dirty 114.704680, 101.412).
  call.inflation = 0.03;
  EXPECT_NEAR(call.price(0.005, &err), 101.412, 1e-9);
  EXPECT_EQ(err, 0);
}

TEST(OatiAccrued, AnnualCouponTimesTheIndexRatio) {
  // 229 of 366 days of 1.1 %, times 1.12345: 0.773216.
  OatiCall call;
  int32_t err = -1;
  EXPECT_NEAR(KVLoatiai(1.1, call.maturity, call.settlement, call.base, 1, call.settle, 1, nullptr, nullptr,
                        nullptr, nullptr, 0, nullptr, &err),
              0.773216, 1e-12);
  EXPECT_EQ(err, 0);
}

TEST(OatiPrice, LastPeriodPaysCouponAndFlooredPrincipal) {
  // One period left (25 July 2021 to 25 July 2022), settling 10 March 2022,
  // no projected inflation, index ratio 0.98: the coupon is 1.1 * 0.98 but
  // the principal is repaid at par: real price = (trunc6(100 * (0.01078 + 1) /
  // 1.005^(137/365)) - accrued) / 0.98, accrued = 228/365 of 1.1 * 0.98.
  OatiCall call;
  call.inflation = 0.0;
  call.settle[0] = 98.0;
  call.settlement = date_to_serial(10, 3, 2022);
  const double t = 137.0 / 365.0;
  const double accrued = std::floor(228.0 / 365.0 * 0.011 * 0.98 * 100 * 1e6 + 0.5) / 1e6;
  const double dirty = std::floor(100.0 * (0.011 * 0.98 + 1.0) / std::pow(1.005, t) * 1e6) / 1e6;
  const double expected = std::floor((dirty - accrued) / 0.98 * 1000 + 0.5) / 1000;
  int32_t err = -1;
  EXPECT_NEAR(call.price(0.005, &err), expected, 1e-9);
  EXPECT_EQ(err, 0);
  EXPECT_GT(expected, 101.0);  // the par floor is worth about 2 points here
}

TEST(OatiCashflows, RatiosRoundToFiveDecimalsAndPrincipalFloorsAtPar) {
  OatiCall call;
  call.settle[0] = 99.0;
  call.inflation = -0.02;
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  int32_t err = -1;
  const int32_t rows = call.cashflows(&dates, &amounts, &err);
  ASSERT_EQ(err, 0);
  ASSERT_EQ(rows, 3);
  EXPECT_EQ(dates[0], date_to_serial(25, 7, 2020));
  EXPECT_EQ(dates[2], call.maturity);
  // Next coupon 1.1 * 0.99 * 0.98^(137/366); its ratio rounded to 5
  // decimals, one year of -2 % per row after it.
  const double next = 1.1 * 0.99 * std::pow(0.98, 137.0 / 366.0);
  EXPECT_NEAR(amounts[0], next, 1e-12);
  const double ratio0 = std::floor(next / 1.1 * 1e5 + 0.5) / 1e5;
  EXPECT_NEAR(amounts[1], 1.1 * std::floor(ratio0 * 0.98 * 1e5 + 0.5) / 1e5, 1e-12);
  const double last_ratio = std::floor(ratio0 * 0.98 * 0.98 * 1e5 + 0.5) / 1e5;
  ASSERT_LT(last_ratio, 1.0);
  EXPECT_NEAR(amounts[2], 1.1 * last_ratio + 100.0, 1e-12);  // principal at par
  KVLoaticshflw_free(dates, amounts);
}

TEST(OatiYield, RoundTripsThePrice) {
  OatiCall call;
  for (double y : {-0.005, 0.0, 0.005, 0.02, 0.06}) {
    int32_t err = -1;
    const double p = call.price(y, &err);
    ASSERT_EQ(err, 0);
    EXPECT_NEAR(call.yield(p, &err), y, 5e-6) << "yield " << y;
    EXPECT_EQ(err, 0);
  }
}

TEST(OatiRisk, DurationAndConvexityMatchFiniteDifferences) {
  OatiCall call;
  kbond::inflation::LinkerDesc desc;
  ASSERT_EQ(kbond::inflation::oati_setup(call.args(), &desc), 0);
  const double y = 0.005, h = 1e-5;
  kbond::inflation::LinkerValue up, mid, down;
  ASSERT_EQ(kbond::inflation::linker_value(desc, y + h, &up), 0);
  ASSERT_EQ(kbond::inflation::linker_value(desc, y, &mid), 0);
  ASSERT_EQ(kbond::inflation::linker_value(desc, y - h, &down), 0);
  int32_t err = -1;
  EXPECT_NEAR(call.duration(y, &err), (down.dirty - up.dirty) / (2 * h) / mid.dirty, 1e-6);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(call.convexity(y, &err), (up.dirty - 2 * mid.dirty + down.dirty) / (h * h) / mid.dirty, 1e-3);
  EXPECT_EQ(err, 0);
}

TEST(OatiArguments, ChecksBeforeTheSetUp) {
  OatiCall call;
  int32_t err = 0;
  call.base_count = 3;
  EXPECT_EQ(call.yield(101.0, &err), -1.0);
  EXPECT_EQ(err, 70);
  call.base_count = 1;
  call.settle_count = 3;
  EXPECT_EQ(call.duration(0.01, &err), -1.0);
  EXPECT_EQ(err, 70);
  call.settle_count = 2;  // two values are allowed
  call.settle[1] = 112.5;
  EXPECT_GT(call.price(0.01, &err), 0.0);
  EXPECT_EQ(err, 0);
  EXPECT_EQ(KVLoaticonv(1.1, call.base, 1, nullptr, 1, call.maturity, call.settlement, 0.01, nullptr, nullptr, 0,
                        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, &err),
            -1.0);
  EXPECT_EQ(err, 50);
  call.settle_count = 0;
  EXPECT_EQ(call.price(0.01, &err), -1.0);
  EXPECT_EQ(err, 1);
}

TEST(OatiArguments, InflationAtMinusFiftyPercentIsRefused) {
  OatiCall call;
  int32_t err = 0;
  call.inflation = -0.5;
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  EXPECT_EQ(call.cashflows(&dates, &amounts, &err), 0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(dates, nullptr);
  EXPECT_EQ(amounts, nullptr);
  call.inflation = -0.49;
  EXPECT_EQ(call.cashflows(&dates, &amounts, &err), 3);
  EXPECT_EQ(err, 0);
  KVLoaticshflw_free(dates, amounts);
}

}  // namespace
