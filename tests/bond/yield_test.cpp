// KVLbyld: price to yield and back across the whole catalogue, against
// published examples and hand computations, its quotation conversion and
// rounding. Horizon, realized, worst and average-life yields against hand
// computations whose yield is found here by bisection on
// the discounted cash flows.
#include <cmath>
#include <functional>

#include <gtest/gtest.h>

#include "bond/quoted_bond.h"
#include "dates/month_arithmetic.h"

namespace kbond::testing {
namespace {

constexpr int32_t kBaseTypes[] = {
    0,   1,   2,   3,   16,  20,  22,  40,  42,  60,  62,  80,  81,  100, 120, 122, 140,
    142, 160, 162, 170, 180, 190, 200, 202, 210, 220, 240, 242, 244, 246, 250, 260, 261,
    264, 266, 268, 270, 280, 281, 284, 286, 290, 292, 300, 302, 310, 320, 322, 330, 340,
    342, 350, 360, 370, 380, 390, 400, 500, 502, 510, 520, 530, 540, 700, 701, 810, 820, 830};

// {price tick, half a yield tick} of the types that round: U.S. Treasuries
// (0, 1) quote prices to 1e-6 and yields to 1e-8; municipals and corporates
// (2, 3, 16) truncate prices to 1e-3 (a whole tick) and round yields to
// 1e-5; South African bonds (380) round prices to 1e-5 and yields to 1e-7.
std::pair<double, double> ticks(int32_t type) {
  switch (type) {
    case 0: case 1: return {0.5e-6, 0.5e-8};
    case 2: case 3: case 16: return {1e-3, 0.5e-5};
    case 380: return {0.5e-5, 0.5e-7};
    default: return {0.0, 0.0};
  }
}

// For every base type, maturities from one month to fifty years, coupons
// from 0 to 15 % and yields from -1 % to 30 %, KVLbyld(KVLbpr(y)) gives y
// back, also for bonds bought three years before their dated date (a first
// coupon years away). The only slack is what the market's rounding makes
// unavoidable: a price tick p moves the yield by up to p / |dP/dy|, a yield
// tick q by q / 2.
TEST(YieldRoundTrip, EveryBaseTypeReturnsTheYieldItWasPricedAt) {
  const int32_t settlement = ymd(2024, 3, 12);  // mid-month: no month-end maturity
  const int32_t forward_dated = ymd(2027, 3, 20);
  for (const int32_t type : kBaseTypes) {
    SCOPED_TRACE(::testing::Message() << "type " << type);
    const auto [price_tick, yield_half_tick] = ticks(type);
    int zero_prices = 0;
    for (const int32_t months : {1, 5, 13, 29, 61, 122, 361, 600}) {
      for (const double c : {0.0, 0.02, 0.05, 0.10, 0.15}) {
        QuotedBond bond(type, c, dates::add_months(settlement, months, 0) + 3, settlement);
        if (type == 810) bond.frequency = {2};  // the Yankee type has no default frequency
        // The bonds of five years and more also as new issues dated 2027.
        if (months >= 61 && c == 0.05) bond.dated = forward_dated;
        for (const double y : {-0.01, 0.0, 0.02, 0.05, 0.10, 0.30}) {
          SCOPED_TRACE(::testing::Message() << months << " months, " << c << " at " << y);
          int32_t err = 0;
          const double p = bond.price(y, &err);
          // The Yankee type names no accrued day count: no bond of it can
          // be described. Braess pricing takes no odd first period.
          const bool refused = type == 810 || (type == 820 && bond.dated);
          ASSERT_EQ(err, refused ? 1 : 0);
          if (refused) continue;
          // A zero quoted price is no price: the yield is lost in rounding.
          if (p == 0.0) {
            ++zero_prices;
            continue;
          }
          const double back = bond.yield(p, &err);
          const double slope = std::fabs(bond.price(y - 1e-3) - bond.price(y + 1e-3)) / 2e-3;
          EXPECT_EQ(err, 0);
          EXPECT_NEAR(back, y, 1e-7 + yield_half_tick + 2.0 * price_tick / slope) << p;
        }
      }
    }
    // Prices truncated to 1e-3 lose a fifty-year zero at 30 % (100 / 1.15^100
    // = 8.6e-5) entirely; every other type keeps it.
    EXPECT_EQ(zero_prices, type == 2 || type == 3 || type == 16 ? 1 : 0);
  }
}

// A spreadsheet's PRICE example: settlement 15 Feb 2008, maturity
// 15 Nov 2017, 5.75 % semiannual, 30/360 (type 530, unrounded), yield 6.5 %
// -> 94.63436162.
TEST(YieldToMaturity, PublishedExamplesAndClosedForms) {
  const QuotedBond sheet(530, 0.0575, ymd(2017, 11, 15), ymd(2008, 2, 15));
  int32_t err = -1;
  EXPECT_NEAR(sheet.yield(94.63436162, &err), 0.065, 2e-9);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(sheet.price(0.065), 94.63436162, 1e-8);
  // On a coupon date a bond priced at par yields its coupon.
  EXPECT_DOUBLE_EQ(QuotedBond(0, 0.04, ymd(2034, 5, 15), ymd(2024, 5, 15)).yield(100.0), 0.04);
  // A Treasury in its last period, simple interest: 1 + y T = (100 + 1) /
  // (P + A). 15 May .. 15 Nov 2024 is 184 days; from 16 Aug, 93 accrued,
  // 91 to run, T = 91 / (2 x 184). Yields round to 1e-8.
  const QuotedBond bill(0, 0.02, ymd(2024, 11, 15), ymd(2024, 8, 16));
  EXPECT_NEAR(bill.accrued(), 93.0 / 184, 1e-12);
  const double bill_yield = bill.yield(99.5);
  EXPECT_NEAR(bill_yield, (101.0 / (99.5 + 93.0 / 184) - 1.0) / (91.0 / 368), 1e-8);
  EXPECT_DOUBLE_EQ(bill_yield, std::floor(bill_yield * 1e8 + 0.5) * 1e-8);
  // Eurobonds quoted annually (242): the semiannual yield (240) with annual
  // compounding, (1 + y/2)^2 - 1.
  QuotedBond semiannual(240, 0.05, ymd(2033, 10, 1), ymd(2024, 3, 12));
  semiannual.frequency = {2};
  QuotedBond annually = semiannual;
  annually.type = 242;
  const double y2 = semiannual.yield(97.25);
  EXPECT_NEAR(annually.yield(97.25), (1 + y2 / 2) * (1 + y2 / 2) - 1, 1e-12);
  // Municipal yields round to five decimals.
  const double muni = QuotedBond(2, 0.0425, ymd(2041, 8, 1), ymd(2024, 3, 12)).yield(101.375);
  EXPECT_DOUBLE_EQ(muni, std::floor(muni * 1e5 + 0.5) * 1e-5);
  EXPECT_NEAR(muni, 0.04137, 5e-5);
  // Bought decades before a short first coupon: 6 % of 31 July 2035 dated
  // 26 March 2029, settled 1 January 2005; act/act over the quasi-period to
  // 31 July 2029 (181 days): t = 8977 / 181 periods, first coupon 3 x
  // 127/181, then 12 coupons of 3 and 100. At 5 %, v = 1/1.025:
  // 3 (127/181) v^t + sum_{k=1..12} 3 v^(t+k) + 100 v^(t+12) = 31.511112985.
  // A deep-discount 8 % corporate (30/360) of 27 June 2019 dated 12 April
  // 2012 settled 13 January 1996: t = 2 (75 + 5849) / 360 periods, first
  // coupon 4 x 75/180, then 14 of 4 and 100; 7.059 gives 0.1470803 by
  // bisection, 0.14708 to five decimals.
  const struct {
    int32_t type;
    double rate;
    int32_t maturity, dated, settlement;
    double price, yield, slack;
  } long_first[] = {{500, 0.06, ymd(2035, 7, 31), ymd(2029, 3, 26), ymd(2005, 1, 1),
                     31.511112985181832, 0.05, 1e-9},
                    {3, 0.08, ymd(2019, 6, 27), ymd(2012, 4, 12), ymd(1996, 1, 13), 7.059,
                     0.14708, 1e-12}};
  for (const auto& b : long_first) {
    QuotedBond bond(b.type, b.rate, b.maturity, b.settlement);
    bond.dated = b.dated;
    err = -1;
    EXPECT_NEAR(bond.yield(b.price, &err), b.yield, b.slack) << b.type;
    EXPECT_EQ(err, 0);
  }
}

// Prices near zero (found by fuzzing): the current yield 5 / 5e-310
// overflows, so the search starts at the top of its bracket and stops where
// the clean price is within 1e-12 per 100 of the target: a large but finite
// yield that prices back to (almost) nothing. A JGB's simple yield of a
// merely tiny price is huge but finite too.
TEST(YieldToMaturity, PricesNearZeroHaveLargeFiniteYields) {
  for (const int32_t type : {0, 40, 200}) {
    const QuotedBond bond(type, 0.05, ymd(2030, 11, 15), ymd(2024, 3, 1));
    for (const double price : {5e-310, 3.7e-306, 1e-20, 1e-10}) {
      if (type == 200 && price < 1e-300) continue;  // overflows: an error row of BondErrors
      SCOPED_TRACE(::testing::Message() << price << " type " << type);
      int32_t err = -1;
      const double y = bond.yield(price, &err);
      EXPECT_EQ(err, 0);
      ASSERT_TRUE(std::isfinite(y));
      EXPECT_GT(y, 1.0);
      if (type != 200) {
        EXPECT_NEAR(bond.price(y, &err), 0.0, 1e-6);
      }
    }
  }
}

// The semiannual yield at which `value(v)` (v = 1 / (1 + y/2)) equals the
// dirty price, by bisection: independent of the library's solvers.
double solve_semiannual(const std::function<double(double)>& value, double dirty) {
  double lo = -0.5, hi = 1.0;
  for (int i = 0; i < 200; ++i) {
    const double mid = 0.5 * (lo + hi);
    (value(1.0 / (1.0 + mid / 2.0)) > dirty ? lo : hi) = mid;
  }
  return 0.5 * (lo + hi);
}

// n semiannual coupons of c then `redemption`, settled on a coupon date.
double on_coupon_date(double v, int n, double c, double redemption) {
  double pv = 0.0;
  for (int k = 1; k <= n; ++k) pv += c * std::pow(v, k);
  return pv + redemption * std::pow(v, n);
}

// A 5 % note bought at 99 on its 15 May 2024 coupon date and sold at 101.
TEST(HorizonYield, SaleOnAndBetweenCouponDates) {
  const QuotedBond note(500, 0.05, ymd(2034, 5, 15), ymd(2024, 5, 15));
  int32_t err = -1;
  EXPECT_NEAR(note.horizon_yield(99.0, ymd(2026, 5, 15), 101.0, &err),
              solve_semiannual([](double v) { return on_coupon_date(v, 4, 2.5, 101.0); }, 99.0),
              1e-9);
  EXPECT_EQ(err, 0);
  // Sold on 1 August 2026 the buyer also pays 78 days of the 184-day coupon
  // (15 May .. 15 Nov 2026), received 78/184 of a period after 15 May.
  const double part = 78.0 / 184;
  const auto value = [&](double v) {
    return on_coupon_date(v, 4, 2.5, 0.0) + (101.0 + 2.5 * part) * std::pow(v, 4 + part);
  };
  EXPECT_NEAR(note.horizon_yield(99.0, ymd(2026, 8, 1), 101.0), solve_semiannual(value, 99.0),
              1e-9);
  // A horizon at maturity and redemption is the yield to maturity.
  EXPECT_NEAR(note.horizon_yield(99.0, note.maturity(), 100.0), note.yield(99.0), 1e-8);
}

// Two years of a 6 % note bought at par on a coupon date. Coupons
// reinvested at 4 % grow to 3 (1.02^3 + 1.02^2 + 1.02 + 1); with the
// redemption the 100 paid becomes that + 100 after four periods.
TEST(RealizedYield, CouponsReinvestedAtAnotherRate) {
  QuotedBond note(500, 0.06, ymd(2026, 5, 15), ymd(2024, 5, 15));
  const double future = 3.0 * (std::pow(1.02, 3) + std::pow(1.02, 2) + 1.02 + 1.0) + 100.0;
  int32_t err = -1;
  EXPECT_NEAR(note.realized_yield(100.0, 0.04, &err), (std::pow(future / 100, 0.25) - 1) * 2,
              1e-13);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(note.realized_yield(100.0, 0.06), 0.06, 1e-13);  // reinvested at the yield
  // Bought at 96 with a 25 % tax on the 4 point gain: 99 at maturity. The
  // gain is a capital gain when the next coupon (15 November) falls after
  // the tax horizon, here 30 days.
  note.discount_tax = 0.25;
  note.horizon = 30;
  EXPECT_NEAR(note.realized_yield(96.0, 0.04), (std::pow((future - 1) / 96, 0.25) - 1) * 2, 1e-13);
  // Within the horizon (12 months by default) it is income, taxed at the
  // coupon tax. A 6 % note of 15 March 2010 bought at 90 on its 15
  // September 2005 coupon date, coupons taxed at 10 %, gains at 20 %: nine
  // coupons of 2.7 grow at 2 % to 2.7 (1.02^9 - 1) / 0.02, and 100 less 10 %
  // of the 10 point gain is 99; ((that + 99) / 90)^(1/9) - 1, x 2 =
  // 0.0749710988.
  QuotedBond taxed(500, 0.06, ymd(2010, 3, 15), ymd(2005, 9, 15));
  taxed.coupon_tax = 0.1;
  taxed.discount_tax = 0.2;
  EXPECT_NEAR(taxed.realized_yield(90.0, 0.04, &err), 0.0749710988, 1e-10);
  EXPECT_EQ(err, 0);
}

// A 6 % ten-year bond at 104 on its 15 November 2024 coupon date, callable
// in 2027 at 102, 2029 at 101 and 2031 at 100: 6, 10, 14 and (maturity) 20
// periods. The worst is the lowest of the four.
TEST(YieldToWorst, CallScheduleByHand) {
  const QuotedBond callable(500, 0.06, ymd(2034, 11, 15), ymd(2024, 11, 15));
  const std::vector<int32_t> calls = {ymd(2027, 11, 15), ymd(2029, 11, 15), ymd(2031, 11, 15)};
  const std::vector<double> prices = {102.0, 101.0, 100.0};
  const int periods[] = {6, 10, 14, 20};
  const double redemption[] = {102.0, 101.0, 100.0, 100.0};
  double worst = 1.0;
  for (int i = 0; i < 4; ++i) {
    const auto value = [&](double v) { return on_coupon_date(v, periods[i], 3.0, redemption[i]); };
    worst = std::min(worst, solve_semiannual(value, 104.0));
  }
  int32_t err = -1;
  EXPECT_NEAR(callable.yield_to_worst(104.0, calls, prices, &err), worst, 1e-9);
  EXPECT_EQ(err, 0);
  EXPECT_LT(worst, callable.yield(104.0));  // the call matters at this premium
  // Below par, after the calls, or called at par on the maturity date: the
  // yield to maturity.
  EXPECT_NEAR(callable.yield_to_worst(95.0, calls, prices), callable.yield(95.0), 1e-12);
  const QuotedBond later = callable.at(ymd(2032, 1, 10));
  EXPECT_NEAR(later.yield_to_worst(104.0, calls, prices), later.yield(104.0), 1e-12);
  EXPECT_EQ(callable.yield_to_worst(95.0, {callable.maturity()}, {100.0}),
            callable.yield_to_worst(95.0, {}, {}));
}

// The sinking fund repaid 10 % a year from 2026 has an average life of 6.4
// years from 15 June 2024 (AverageLife.SinkingFundByHand): with 0.4 x 365 =
// 146.5 -> 147 days, 9 November 2030. The bond is then a bullet to that
// date on its own June and December coupon grid.
TEST(YieldToAverageLife, BulletToTheAverageLifeDate) {
  const QuotedBond sinker = sinking_fund(ymd(2024, 6, 15));
  QuotedBond bullet(500, 0.06, ymd(2030, 11, 9), ymd(2024, 6, 15));
  bullet.dated = ymd(2024, 6, 15);
  bullet.first = ymd(2024, 12, 15);
  int32_t err = -1;
  EXPECT_NEAR(sinker.yield_to_average_life(97.0, &err), bullet.yield(97.0), 1e-12);
  EXPECT_EQ(err, 0);
  // On a 9 November grid the answer would differ.
  QuotedBond regridded = bullet;
  regridded.dated = regridded.first = std::nullopt;
  EXPECT_GT(std::fabs(regridded.yield(97.0) - bullet.yield(97.0)), 1e-6);
  // Without a sinking fund it is the yield to maturity.
  QuotedBond plain = sinker;
  plain.factor.reset();
  EXPECT_EQ(plain.yield_to_average_life(97.0), plain.yield(97.0));
}

}  // namespace
}  // namespace kbond::testing
