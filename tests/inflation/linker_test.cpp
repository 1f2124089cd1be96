// U.S. TIPS and French OATi: the Treasuries' real prices and accrued
// interest, the projection rules of the cash-flow tables (5-decimal ratios,
// principal floored at par), round trips, risk measures against finite
// differences, argument checks and index values that overflow.
#include <gtest/gtest.h>

#include <cmath>

#include "dates/date_serial.h"
#include "inflation/linker_desc.h"
#include "inflation/linker_valuation.h"
#include "k_bond.h"

namespace {

using kbond::dates::date_to_serial;

// The exports of one family; TIPS and OATi share every signature.
struct Family {
  const char* name;
  decltype(&KVLtipspr) price, yield, duration, convexity;
  decltype(&KVLtipscshflw) cashflows;
  decltype(&KVLtipsai) accrued;
  int32_t (*setup)(const kbond::inflation::LinkerArgs&, kbond::inflation::LinkerDesc*);
};
const Family kTips{"TIPS", KVLtipspr, KVLtipsyld, KVLtipsdur, KVLtipsconv, KVLtipscshflw, KVLtipsai,
                   kbond::inflation::tips_setup};
const Family kOati{"OATi", KVLoatipr, KVLoatiyld, KVLoatidur, KVLoaticonv, KVLoaticshflw, KVLoatiai,
                   kbond::inflation::oati_setup};

struct Linker {
  const Family* family;
  double coupon;
  double base[2], settle[2];
  int32_t maturity, settlement;
  int32_t base_count = 1, settle_count = 1;
  double inflation = 0.03;
  const double* next_amount = nullptr;
  int32_t option_b = 0;

#define KBOND_LINKER_ARGS(x)                                                                                    \
  coupon, base, base_count, settle, settle_count, maturity, settlement, x, nullptr, next_amount, option_b, nullptr, \
      nullptr, &inflation, nullptr, nullptr, nullptr, 0, nullptr, 0, err
  double price(double y, int32_t* err) const { return family->price(KBOND_LINKER_ARGS(y)); }
  double yield(double p, int32_t* err) const { return family->yield(KBOND_LINKER_ARGS(p)); }
  double duration(double y, int32_t* err) const { return family->duration(KBOND_LINKER_ARGS(y)); }
  double convexity(double y, int32_t* err) const { return family->convexity(KBOND_LINKER_ARGS(y)); }
#undef KBOND_LINKER_ARGS
  int32_t cashflows(int32_t** dates, double** amounts, int32_t* err) const {
    return family->cashflows(dates, amounts, coupon, base, base_count, settle, settle_count, maturity, settlement,
                             nullptr, next_amount, option_b, nullptr, nullptr, &inflation, nullptr, nullptr, nullptr,
                             0, nullptr, 0, err);
  }
  double accrued(int32_t* err) const {
    return family->accrued(coupon, maturity, settlement, base, base_count, settle, settle_count, nullptr, nullptr,
                           nullptr, nullptr, 0, nullptr, err);
  }
  // Unrounded dirty value per 100 from the library's valuation.
  double dirty(double y) const {
    kbond::inflation::LinkerArgs a{coupon, base, base_count, settle, settle_count, maturity, settlement};
    a.next_coupon_amount = next_amount;
    a.inflation = &inflation;
    kbond::inflation::LinkerDesc desc;
    kbond::inflation::LinkerValue value;
    EXPECT_EQ(family->setup(a, &desc), 0);
    EXPECT_EQ(kbond::inflation::linker_value(desc, y, &value), 0);
    return value.dirty;
  }
};

// 2% TIPS of January 2016 (dated 15 January 2006), settling 2 January 2013;
// Ref CPI 198.47742 on the dated date and 231.28165 on 2 January 2013
// (TreasuryDirect), index ratio 1.16528.
Linker tips() {
  return {&kTips, 2.0, {198.47742, 0.0}, {231.28165, 0.0}, date_to_serial(15, 1, 2016), date_to_serial(2, 1, 2013)};
}
// A 1.1 % OATi maturing 25 July 2022, base reference index 100.0, settling
// 10 March 2020 at a reference index of 112.345 (index ratio 1.12345).
Linker oati() {
  return {&kOati, 1.1, {100.0, 0.0}, {112.345, 0.0}, date_to_serial(25, 7, 2022), date_to_serial(10, 3, 2020)};
}

struct Table {
  int32_t rows = 0, *dates = nullptr;
  double* amounts = nullptr;
  explicit Table(const Linker& l) {
    int32_t err = -1;
    rows = l.cashflows(&dates, &amounts, &err);
    EXPECT_EQ(err, 0);
  }
  ~Table() { KVLtipscshflw_free(dates, amounts); }
};

TEST(TipsPrice, TreasuryRealPriceAndAccrued) {
  // 31 CFR 356 Appendix B, computed independently (Python): r = 13 days to
  // 15 January 2013, s = 184, n = 6 coupons after it, real yield -1.5 %:
  // real dirty = (1 + sum_{k=1..6} 1 * v^k + 100 v^6) * v^(13/184), v = 1/(1 - 0.0075),
  // = 111.840703; real accrued = 1 * 171/184 = 0.929348; clean 110.911355.
  Linker call = tips();
  call.inflation = 0.0;
  int32_t err = -1;
  EXPECT_NEAR(call.price(-0.015, &err), 110.911, 1e-9);
  // The inflation-adjusted basis: 110.911355 * 1.16528 = 129.2425.
  call.option_b = 1;
  EXPECT_NEAR(call.price(-0.015, &err), 129.243, 1.5e-3);
  // With 3 % assumed inflation the flows grow and the discount rate rises by
  // the same factor: the real price moves only by the ratios' rounding.
  call = tips();
  EXPECT_NEAR(call.price(-0.015, &err), 110.911, 2e-3);
  EXPECT_EQ(err, 0);
  // Accrued: 171 of 184 days of a 1 % half-year coupon, times 1.16528:
  // floor(171/368 * 0.02 * 1.16528 * 100 * 1e6 + 0.5) / 1e6 = 1.082950.
  EXPECT_NEAR(call.accrued(&err), 1.082950, 1e-12);
  // Two monthly values each, interpolated: October/November 2005 CPI at the
  // 15th (198.47742) and October/November 2012 CPI on 2 January (231.28165).
  call.base[0] = 199.2, call.base[1] = 197.6, call.settle[0] = 231.317, call.settle[1] = 230.221;
  call.base_count = call.settle_count = 2;
  EXPECT_NEAR(call.accrued(&err), 1.082950, 1e-12);
  EXPECT_EQ(err, 0);
  // The index ratio is not rounded: 2.375 % TIPS of 15 January 2025 on
  // 1 January 2023, 170 of 184 days, ratio 298.012 / 188.49677 =
  // 1.5809926 (1.58099 in the Treasury's tables): 170/368 x 2.375 x
  // 1.5809926 = 1.7345809 -> 1.734581 (1.734578 with the table's ratio).
  const double base = 188.49677, settle = 298.012;
  const int32_t previous = date_to_serial(15, 7, 2022), next = date_to_serial(15, 1, 2023);
  EXPECT_NEAR(KVLtipsai(2.375, date_to_serial(15, 1, 2025), date_to_serial(1, 1, 2023), &base, 1,
                        &settle, 1, &previous, &next, nullptr, nullptr, 0, nullptr, &err),
              1.734581, 1e-12);
  EXPECT_EQ(err, 0);
}

TEST(OatiPrice, FrenchTreasuryRealPriceAndAccrued) {
  // Real yield 0.5 % annual, actual/actual: t = 137/366 to 25 July 2020;
  // 1.1 v^t + 1.1 v^(t+1) + 101.1 v^(t+2) - 1.1 * 229/366 = 101.412017
  // (independent computation in Python); at 3 % the projected flows and the
  // nominal discount rate cancel (with the 5-decimal ratios: 101.412).
  for (double inflation : {0.0, 0.03}) {
    Linker call = oati();
    call.inflation = inflation;
    int32_t err = -1;
    EXPECT_NEAR(call.price(0.005, &err), 101.412, 1e-9) << inflation;
    EXPECT_EQ(err, 0);
  }
  // 229 of 366 days of 1.1 %, times 1.12345: 0.773216.
  int32_t err = -1;
  EXPECT_NEAR(oati().accrued(&err), 0.773216, 1e-12);
  EXPECT_EQ(err, 0);
}

TEST(OatiPrice, LastPeriodPaysCouponAndFlooredPrincipal) {
  // One period left (25 July 2021 to 25 July 2022), settling 10 March 2022,
  // no projected inflation, index ratio 0.98: the coupon is 1.1 * 0.98 but
  // the principal is repaid at par: real price = (trunc6(100 * (0.01078 + 1) /
  // 1.005^(137/365)) - accrued) / 0.98, accrued = 228/365 of 1.1 * 0.98.
  Linker call = oati();
  call.inflation = 0.0;
  call.settle[0] = 98.0;
  call.settlement = date_to_serial(10, 3, 2022);
  const double accrued = std::floor(228.0 / 365.0 * 0.011 * 0.98 * 100 * 1e6 + 0.5) / 1e6;
  const double dirty = std::floor(100.0 * (0.011 * 0.98 + 1.0) / std::pow(1.005, 137.0 / 365.0) * 1e6) / 1e6;
  const double expected = std::floor((dirty - accrued) / 0.98 * 1000 + 0.5) / 1000;
  int32_t err = -1;
  EXPECT_NEAR(call.price(0.005, &err), expected, 1e-9);
  EXPECT_EQ(err, 0);
  EXPECT_GT(expected, 101.0);  // the par floor is worth about 2 points here
}

TEST(Linker, RoundTripsAndRiskMatchFiniteDifferences) {
  for (const Linker& call : {tips(), oati()}) {
    SCOPED_TRACE(call.family->name);
    for (double y : {-0.015, 0.0, 0.005, 0.04}) {
      int32_t err = -1;
      const double p = call.price(y, &err);
      ASSERT_EQ(err, 0);
      // The price is rounded to 3 decimals; at a duration near 3 that is 2e-6 of yield.
      EXPECT_NEAR(call.yield(p, &err), y, 5e-6) << "yield " << y;
      EXPECT_EQ(err, 0);
    }
    const double y = 0.01, h = 1e-5, up = call.dirty(y + h), mid = call.dirty(y), down = call.dirty(y - h);
    int32_t err = -1;
    EXPECT_NEAR(call.duration(y, &err), (down - up) / (2 * h) / mid, 1e-6);
    EXPECT_NEAR(call.convexity(y, &err), (up - 2 * mid + down) / (h * h) / mid, 1e-3);
    EXPECT_EQ(err, 0);
  }
}

TEST(TipsCashflows, ProjectedRatiosRoundToFiveDecimalsAndTheTableReprices) {
  const Linker call = tips();
  {
    const Table t(call);
    ASSERT_EQ(t.rows, 7);  // January 2013 .. January 2016
    EXPECT_EQ(t.dates[0], date_to_serial(15, 1, 2013));
    EXPECT_EQ(t.dates[6], call.maturity);
    for (int32_t i = 1; i < t.rows - 1; ++i) {
      // A coupon of 1 per 100 per half-year: the amount is the ratio.
      EXPECT_NEAR(t.amounts[i] * 1e5, std::round(t.amounts[i] * 1e5), 1e-6) << "row " << i;
      EXPECT_GT(t.amounts[i], t.amounts[i - 1]);  // 3 % inflation
    }
    // Discounted at the nominal rate (1 + y/2) sqrt(1.03) the table gives the dirty value.
    const double v = 1.0 / ((1.0 + 0.01 / 2) * std::sqrt(1.03));
    double dirty = 0.0;
    for (int32_t i = 0; i < t.rows; ++i) dirty += t.amounts[i] * std::pow(v, 13.0 / 184.0 + i);
    EXPECT_NEAR(dirty, call.dirty(0.01), 1e-9);
  }
  // A fixed next coupon (1.16) is taken as given; the later ratios start from it.
  Linker fixed = call;
  const double amount = 1.16;
  fixed.next_amount = &amount;
  const Table f(fixed);
  EXPECT_NEAR(f.amounts[1], std::round(1.16 * std::sqrt(1.03) * 1e5) / 1e5, 1e-12);
}

TEST(OatiCashflows, RatiosRoundToFiveDecimalsAndPrincipalFloorsAtPar) {
  Linker call = oati();
  call.settle[0] = 99.0;
  call.inflation = -0.02;
  const Table t(call);
  ASSERT_EQ(t.rows, 3);
  EXPECT_EQ(t.dates[0], date_to_serial(25, 7, 2020));
  EXPECT_EQ(t.dates[2], call.maturity);
  // Next coupon 1.1 * 0.99 * 0.98^(137/366); its ratio rounded to 5
  // decimals, one year of -2 % per row after it.
  const double next = 1.1 * 0.99 * std::pow(0.98, 137.0 / 366.0);
  EXPECT_NEAR(t.amounts[0], next, 1e-12);
  const double ratio0 = std::floor(next / 1.1 * 1e5 + 0.5) / 1e5;
  EXPECT_NEAR(t.amounts[1], 1.1 * std::floor(ratio0 * 0.98 * 1e5 + 0.5) / 1e5, 1e-12);
  const double last_ratio = std::floor(ratio0 * 0.98 * 0.98 * 1e5 + 0.5) / 1e5;
  ASSERT_LT(last_ratio, 1.0);
  EXPECT_NEAR(t.amounts[2], 1.1 * last_ratio + 100.0, 1e-12);  // principal at par
}

TEST(LinkerArguments, BadInputsReportTheirCode) {
  struct Bad { const char* what; void (*spoil)(Linker&); int32_t code; } const cases[] = {
      {"three base values", [](Linker& l) { l.base_count = 3; }, 70},
      {"negative base index", [](Linker& l) { l.base[0] = -5.0; }, 1},
      {"settlement after maturity", [](Linker& l) { l.settlement = l.maturity + 1; }, 1},
      {"inflation of -50 %", [](Linker& l) { l.inflation = -0.5; }, 1},
      {"basis option 2", [](Linker& l) { l.option_b = 2; }, 1},
      // Index values so small that the index ratio overflows are no index
      // (found by the inflation fuzz harnesses).
      {"denormal base index", [](Linker& l) { l.base[0] = 1.6304166312761136e-322; }, 1},
  };
  for (const Linker& good : {tips(), oati()}) {
    for (const Bad& c : cases) {
      SCOPED_TRACE(std::string(good.family->name) + ": " + c.what);
      Linker call = good;
      c.spoil(call);
      int32_t err = 0, *dates = &err;
      double* amounts = nullptr;
      EXPECT_EQ(call.price(0.01, &err), -1.0);
      EXPECT_EQ(err, c.code);
      EXPECT_EQ(call.duration(0.01, &err), -1.0);
      EXPECT_EQ(err, c.code);
      EXPECT_EQ(call.cashflows(&dates, &amounts, &err), 0);
      EXPECT_EQ(err, c.code);
      EXPECT_EQ(dates, nullptr);
      if (call.inflation == good.inflation && call.option_b == 0) {  // accrued takes neither
        EXPECT_EQ(call.accrued(&err), -1.0);
        EXPECT_EQ(err, c.code);
      }
    }
    SCOPED_TRACE(good.family->name);
    int32_t err = 0;
    // Two values are allowed; -49 % inflation too.
    Linker call = good;
    call.settle_count = 2, call.settle[1] = call.settle[0] + 0.1, call.inflation = -0.49;
    EXPECT_GT(call.price(0.01, &err), 0.0);
    EXPECT_EQ(err, 0);
    for (double bad : {std::nan(""), -3.0}) {
      EXPECT_EQ(bad < 0 ? good.yield(bad, &err) : good.price(bad, &err), -1.0);
      EXPECT_EQ(err, 1);
    }
    EXPECT_GT(good.price(0.01, nullptr), 0.0) << "NULL error pointer";
    // NULL index arrays are missing arrays (50); a count above two is reported first (70).
    EXPECT_EQ(good.family->price(2.0, nullptr, 1, good.settle, 1, good.maturity, good.settlement, 0.01, nullptr,
                                 nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, &err),
              -1.0);
    EXPECT_EQ(err, 50);
    EXPECT_EQ(good.family->accrued(2.0, good.maturity, good.settlement, good.base, 3, nullptr, 0, nullptr, nullptr,
                                   nullptr, nullptr, 0, nullptr, &err),
              -1.0);
    EXPECT_EQ(err, 70);
  }
}

TEST(IndexOverflow, TipsPriceRefusesOverflowingFlows) {
  // A TIPS with a coupon of 2.8e-306 percent but a next coupon amount of
  // 1.1653 given, maturing in 2258: the projected flows (the given amount
  // over a vanishing coupon) overflow the valuation sums.
  const double base = 198.47742, latest = 231.28165, next_amount = 1.1653;
  const int32_t first_coupon = date_to_serial(15, 1, 2006);
  int32_t error = 0;
  EXPECT_EQ(KVLtipspr(2.8135404507335763e-306, &base, 1, &latest, 1, 131072, date_to_serial(2, 1, 2013), -0.005,
                      nullptr, &next_amount, 0, nullptr, nullptr, nullptr, &first_coupon, nullptr, nullptr, 0,
                      nullptr, 0, &error),
            -1.0);
  EXPECT_EQ(error, 1);
}

}  // namespace
