// KVLbyld: price to yield and back across the whole catalogue, against
// published examples and hand computations, its quotation conversion, its
// rounding and its errors.
#include <cmath>
#include <limits>

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
// back. The only slack is what the market's rounding makes unavoidable: a
// price tick p moves the yield by up to p / |dP/dy|, a yield tick q by q / 2.
TEST(YieldRoundTrip, EveryBaseTypeReturnsTheYieldItWasPricedAt) {
  const int32_t settlement = ymd(2024, 3, 12);  // mid-month: no month-end maturity
  for (const int32_t type : kBaseTypes) {
    SCOPED_TRACE(::testing::Message() << "type " << type);
    const auto [price_tick, yield_half_tick] = ticks(type);
    int zero_prices = 0;
    for (const int32_t months : {1, 5, 13, 29, 61, 122, 361, 600}) {
      for (const double c : {0.0, 0.02, 0.05, 0.10, 0.15}) {
        QuotedBond bond(type, c, dates::add_months(settlement, months, 0) + 3, settlement);
        if (type == 810) bond.frequency = {2};  // the Yankee type has no default frequency
        for (const double y : {-0.01, 0.0, 0.02, 0.05, 0.10, 0.30}) {
          SCOPED_TRACE(::testing::Message() << months << " months, " << c << " at " << y);
          int32_t err = 0;
          const double p = bond.price(y, &err);
          // The Yankee type names no accrued day count: no bond of it can
          // be described.
          ASSERT_EQ(err, type == 810 ? 1 : 0);
          if (type == 810) continue;
          // A zero quoted price is no price: the yield is lost in rounding.
          if (p == 0.0) {
            ++zero_prices;
            continue;
          }
          // At a yield of exactly zero the evaluators of these types switch
          // formulas and the price jumps (by up to 0.07 per 100 for 820).
          if (y == 0.0 && (type == 380 || type == 820)) continue;
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
  EXPECT_NEAR(bill.yield(99.5), (101.0 / (99.5 + 93.0 / 184) - 1.0) / (91.0 / 368), 1e-8);
  // Japanese simple yield (c + (100 - P) / T) / P: a 1 % JGB with five
  // years to run (1826 days less 29 February 2028, T = 5) at 99:
  // (1 + 1 / 5) / 99.
  const QuotedBond jgb(200, 0.01, ymd(2029, 3, 20), ymd(2024, 3, 20));
  EXPECT_NEAR(jgb.yield(99.0), 1.2 / 99.0, 1e-12);
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
}

TEST(YieldToMaturity, BadPricesAndDescriptions) {
  const QuotedBond bond(0, 0.05, ymd(2034, 6, 15), ymd(2024, 3, 12));
  int32_t err = 0;
  for (const double bad : {0.0, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(bond.yield(bad, &err), -1.0);
    EXPECT_EQ(err, 350);
  }
  // No yield above -90 % a period (10^20 x 100 after 20 periods) reaches 1e30.
  EXPECT_EQ(bond.yield(1e30, &err), -999.0);
  EXPECT_EQ(err, 1);
  // A clean price that does not cover the negative accrued interest of an
  // ex-dividend Gilt (7 business days before 7 March), simple interest in
  // the final period as asked.
  QuotedBond gilt(40, 0.04, ymd(2024, 3, 7), ymd(2024, 3, 1));
  gilt.method = 1;
  ASSERT_LT(gilt.accrued(), 0.0);
  EXPECT_EQ(gilt.yield(-gilt.accrued() * 0.5, &err), -1.0);
  EXPECT_EQ(err, 350);
  EXPECT_EQ(bond.at(ymd(2035, 1, 2)).yield(99.0, &err), -1.0);
  EXPECT_EQ(err, 1);
  // NULL dates with a positive count; a NULL error pointer is allowed.
  for (int32_t* e : {&err, static_cast<int32_t*>(nullptr)}) {
    EXPECT_EQ(KVLbyld(bond.rates.data(), 1, nullptr, 1, bond.settlement, 99.0, nullptr, nullptr,
                      nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                      nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                      nullptr, e),
              -1.0);
  }
  EXPECT_EQ(err, 1);
}

}  // namespace
}  // namespace kbond::testing
