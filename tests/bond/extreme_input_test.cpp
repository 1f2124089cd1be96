// Extreme inputs found by the fuzz harnesses: descriptions that are valid
// yet have no price a double can hold, prices near zero, denormal factors
// and tick sizes. Each is now a clean failure (or a finite result), never an
// infinity or a shifted failure value reported as success.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <tuple>
#include <utility>
#include <vector>

#include "bond/quoted_bond.h"
#include "engine/yield_from_price.h"

namespace kbond::testing {
namespace {

const QuotedBond kBond(0, 0.05, ymd(2030, 11, 15), ymd(2024, 3, 1));
constexpr int32_t kDelivery = ymd(2024, 6, 15);

QuotedBond with(int32_t type, std::vector<double> rates) {
  QuotedBond b = kBond;
  b.type = type;
  b.rates = std::move(rates);
  return b;
}

TEST(PriceOverflow, AbsurdDescriptionsAreError1) {
  // A scheduled sinking fund whose outstanding fraction is a denormal:
  // quoting per outstanding face would divide by it, so it counts as repaid.
  QuotedBond repaid = kBond;
  repaid.factor = 1.3813695267487486e-312;
  repaid.sink_dates = {ymd(2028, 11, 15)};
  repaid.sink_amounts = {0.5};
  // {rate, a, b}: redeemed at 100 b / a = 4.7e305 per 100. No bond redeems
  // near 1e100 times its face: invalid for U.S. Treasuries (whose rounding
  // would overflow) and unrounded Gilts alike. 1e308 a year: a semi-annual
  // coupon of 5e309 per 100 is no double.
  const double a = 1.0684727529772892e-305;
  for (const QuotedBond& bond :
       {with(0, {0.05, a, 0.05}), with(40, {0.05, a, 0.05}), with(40, {1e308}), repaid}) {
    int32_t err = 0;
    EXPECT_EQ(bond.price(0.045, &err), -1.0);
    EXPECT_EQ(err, 1);
  }
  // -7.6e307 a year accrues to an infinity per 100.
  int32_t err = 0;
  EXPECT_EQ(with(200, {-7.6e307}).accrued(&err), -1.0);
  EXPECT_EQ(err, 1);
  // Real bonds still price: redeemed at 102 per 100 of 100, and the plain
  // 5 % bond at 4.5 % above par.
  EXPECT_TRUE(std::isfinite(with(40, {0.05, 100.0, 102.0}).price(0.045, &err)));
  EXPECT_EQ(err, 0);
  EXPECT_GT(kBond.price(0.045, &err), 100.0);
  EXPECT_EQ(err, 0);
}

TEST(ExtremeInputs, YieldRoundingKeepsFailureValuesExact) {
  // -999.0 * 1e8 * 1e-8 is not -999.0 in doubles; the failure value must be.
  for (int32_t type : {0, 1, 2, 3, 16, 380, 40}) {
    EXPECT_EQ(kbond::engine::round_yield_by_type(-999.0, type), -999.0) << "type " << type;
    EXPECT_EQ(kbond::engine::round_yield_by_type(-1.0, type), -1.0) << "type " << type;
  }
  EXPECT_DOUBLE_EQ(kbond::engine::round_yield_by_type(0.0456789012345, 0), 0.04567890);
}

// (price - carry) / 5e-324 overflows, and so does an invoice price of
// 1e300 x 1e300: error 1, not an infinite futures price or net basis. Real
// factors and futures prices give ordinary results.
TEST(ExtremeInputs, OverflowingFuturesQuotientsAreFailures) {
  const double* c = kBond.rates.data();
  const int32_t* m = kBond.dates.data();
  const int32_t s = kBond.settlement;
  const auto implied = [&](double factor, int32_t* e) {
    return KVLbifutp(c, 1, m, 1, s, 101.0, 0.04, factor, kDelivery, nullptr, nullptr, nullptr,
                     nullptr, nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr,
                     nullptr, nullptr, nullptr, nullptr, nullptr, e);
  };
  const auto net_basis = [&](double futures, double factor, int32_t* e) {
    return KVLbnbasis(c, 1, m, 1, s, kDelivery, 98.5, 0.03, futures, factor, nullptr, nullptr,
                      nullptr, nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr,
                      nullptr, nullptr, nullptr, nullptr, nullptr, e);
  };
  int32_t err = 0;
  EXPECT_EQ(implied(5e-324, &err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(net_basis(1e300, 1e300, &err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_TRUE(std::isfinite(implied(0.95, &err)));
  EXPECT_EQ(err, 0);
  EXPECT_TRUE(std::isfinite(net_basis(110.0, 0.9, &err)));
  EXPECT_EQ(err, 0);
}

TEST(ExtremeInputs, AbsurdInflationLinkedCoupons) {
  const int32_t m = kBond.maturity(), s = kBond.settlement;
  int32_t err = 0;
  // An index-linked gilt with a real coupon of 1e300 (a fraction of par).
  EXPECT_EQ(KVLilgpr(1e300, 1.5, 200.0, 250.0, m, s, 0.01, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr, 0, nullptr, nullptr, 0, &err),
            -1.0);
  EXPECT_EQ(err, 1);
  // A next coupon payment of 5.5e303 per 100: its accrued part overflows.
  EXPECT_EQ(KVLilgai(0.025, 5.4861240764577203e303, m, s, nullptr, nullptr, nullptr, nullptr, 0,
                     nullptr, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 1);
  // A TIPS with a denormal coupon (percent): no table, outputs NULL.
  const double base = 250.0, latest = 300.0;
  int32_t* dates = reinterpret_cast<int32_t*>(1);
  double* amounts = reinterpret_cast<double*>(1);
  EXPECT_EQ(KVLtipscshflw(&dates, &amounts, 5e-320, &base, 1, &latest, 1, m, s, nullptr, nullptr,
                          0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0,
                          &err),
            0);
  EXPECT_EQ(err, 1);
  EXPECT_TRUE(dates == nullptr && amounts == nullptr);
}

TEST(ExtremeInputs, YieldsOfPricesNearZero) {
  // The current yield 5 / 5e-310 overflows; the search starts at the top of
  // the bracket instead and stops where the clean price is within 1e-12 per
  // 100 of the target: a large but finite yield that prices back to
  // (almost) nothing.
  for (const double price : {5e-310, 3.7e-306, 1e-20}) {
    for (const int32_t type : {0, 40}) {
      SCOPED_TRACE(::testing::Message() << price << " type " << type);
      const QuotedBond bond = with(type, {0.05});
      int32_t err = -1;
      const double y = bond.yield(price, &err);
      EXPECT_EQ(err, 0);
      ASSERT_TRUE(std::isfinite(y));
      EXPECT_GT(y, 1.0);
      EXPECT_NEAR(bond.price(y, &err), 0.0, 1e-6);
      EXPECT_EQ(err, 0);
    }
  }
  // JGBs quote a simple yield, (received / price - 1) / years: at 5e-310
  // per 100 the quotient overflows, which is no yield; a merely tiny price
  // still has its (huge, finite) simple yield.
  const QuotedBond jgb = with(200, {0.05});
  int32_t err = 0;
  EXPECT_EQ(jgb.yield(5e-310, &err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_TRUE(std::isfinite(jgb.yield(1e-10, &err)));
  EXPECT_EQ(err, 0);
}

TEST(ExtremeInputs, TickValueWithoutAPriceMovement) {
  // Settled on the maturity date (1 January 1901, serial 366) the price no
  // longer depends on the yield: the basis-point value is 0 and a tick is
  // worth no finite yield change. A denormal tick size overflows the
  // quotient in the same way.
  const double denormal = 2e-311;
  int32_t err = 0;
  for (const double rate : {0.05, 0.0}) {
    EXPECT_EQ(QuotedBond(0, rate, 366, 366).value_of_tick(0.05, nullptr, &err), -999.0);
    EXPECT_EQ(err, 401);
  }
  EXPECT_EQ(kBond.value_of_tick(0.05, &denormal, &err), -999.0);
  EXPECT_EQ(err, 401);
  // A real bond and tick size: 1 / (valbp x 32), positive and finite.
  const double value = kBond.value_of_tick(0.05, nullptr, &err);
  EXPECT_EQ(err, 0);
  EXPECT_TRUE(std::isfinite(value) && value > 0.0);
}

// Extreme int32 arguments: the documented code and failure value, no
// wrapped arithmetic (k + 1, n_call_dates + 1) and no negative serial
// reported as a date.
TEST(ExtremeInputs, Int32ExtremesAreCleanFailures) {
  constexpr int32_t kMin = INT32_MIN, kMax = INT32_MAX;
  const double coupon = 0.05;
  const int32_t maturity = 47801, settlement = 45351, gilt = 40;
  int32_t err = 0;
  // Call dates missing with a count of 2^31 - 1: error 50, not 70.
  EXPECT_EQ(KVLbyworst(&coupon, 1, &maturity, 1, settlement, 101.5, nullptr, nullptr, nullptr,
                       nullptr, 0, nullptr, kMax, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                       nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                       nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 50);
  const int32_t first = 44330;
  for (const auto& [k, first_coupon, end, settle] :
       {std::tuple{kMin, (const int32_t*)nullptr, maturity, settlement},
        {kMax, &first, 47806, 47806}}) {
    EXPECT_EQ(KVLbcpn(end, settle, &k, nullptr, first_coupon, nullptr, nullptr, nullptr, &err), -1);
    EXPECT_EQ(err, 1);
  }
  for (const auto& [k, reference] : {std::pair{kMin, 45352}, {kMax, 45352}, {kMax, 60}, {kMin, 60}}) {
    EXPECT_EQ(KVLpbcpn(reference, settlement, &k, nullptr, nullptr, nullptr, &err), -1);
    EXPECT_EQ(err, 1);
  }
  // Ex-dividend periods of +-2^31 and a coupon beyond the last date.
  for (const auto& [period, settle] :
       {std::pair{kMin, settlement}, {kMax, settlement}, {0, 1825000}}) {
    EXPECT_EQ(KVLbexdiv(maturity, settle, &gilt, period != 0 ? &period : nullptr, nullptr, 0,
                        nullptr, &err),
              -1);
    EXPECT_EQ(err, 1) << period;
  }
}

// No result is infinite or NaN with error 0: a later coupon step of 1e308
// makes no cash-flow table nor Brady value (the first step alone used to be
// checked), and a reinvestment rate near 1e100 no realized yield.
TEST(ExtremeInputs, NonFiniteResultsAreFailures) {
  const int32_t dates[] = {46340, 47071, 47801}, settlement = 45351, gilt = 40;
  for (const double step : {1e308, -1e308}) {
    const double coupons[] = {0.04, step, 0.06};
    int32_t err = 0;
    double* flows = nullptr;
    EXPECT_EQ(KVLbcshflw(nullptr, &flows, nullptr, nullptr, coupons, 3, dates, 3, settlement,
                         nullptr, nullptr, &gilt, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                         nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0,
                         nullptr, 0, nullptr, nullptr, nullptr, &err),
              -1);
    EXPECT_EQ(err, 1);
    EXPECT_EQ(flows, nullptr);
    EXPECT_EQ(KVLbradypr(coupons, 3, dates, 3, settlement, 0.045, 0.04, 0.09, nullptr, nullptr,
                         nullptr, nullptr, &gilt, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                         nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr,
                         &err),
              -1.0);
    EXPECT_EQ(err, 1);
    EXPECT_EQ(KVLbradydur(coupons, 3, dates, 3, settlement, 0.045, 0.04, 0.09, nullptr, nullptr,
                          nullptr, nullptr, &gilt, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                          nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr,
                          &err),
              -1.0);
    EXPECT_EQ(err, 1);
  }
  const QuotedBond bond(0, 0.05, 47801, settlement);
  for (const double rate : {1e100, HUGE_VAL}) {
    int32_t err = 0;
    EXPECT_EQ(bond.realized_yield(101.5, rate, &err), -1.0);
    EXPECT_EQ(err, 250);
  }
}

}  // namespace
}  // namespace kbond::testing
