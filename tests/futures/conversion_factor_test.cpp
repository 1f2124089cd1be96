// Conversion factors per exchange, each against the exchange's rule written
// out here independently: the CME formula, the DTB whole-month rule, the
// gilt and BTP formulas, and for price-based contracts the plain annuity at
// the notional yield on a coupon date
//
//   sum over k = 1..N of (c/f) (1 + y/f)^-k  +  (1 + y/f)^-N.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <utility>

#include "futures_test_support.h"

using futures_test::FactorCall;
using futures_test::serial;

namespace {

double round_to(double x, int decimals) {
  const double scale = std::pow(10.0, decimals);
  return std::floor(x * scale + 0.5) / scale;
}

double annuity_price(double c, double y, int32_t f, int32_t n) {
  double value = std::pow(1.0 + y / f, -n);
  for (int32_t k = 1; k <= n; ++k) value += c / f * std::pow(1.0 + y / f, -k);
  return value;
}

// The DTB's pre-euro rule: coupons annual, `months_to_next` whole months to
// the next coupon, `later` coupons after it, everything discounted at the
// notional; accrued interest is the coupon times the elapsed part of the year.
double dtb_factor(double c, double notional, int32_t months_to_next, int32_t later) {
  const double w = 1.0 + notional, f = months_to_next / 12.0;
  double dirty = std::pow(w, -(f + later));
  for (int32_t k = 0; k <= later; ++k) dirty += c * std::pow(w, -(f + k));
  return round_to(dirty - c * (1.0 - f), 6);
}

// CME: factor = a (coupon/2 + c + d) - b with a = 1/g^(v/6),
// b = coupon/2 (6 - v)/6, c = 1/g^(2n) if x < 7 else 1/g^(2n + 1),
// d = coupon/notional (1 - c), g = 1 + notional/2; n whole years and x
// months (rounded down to a quarter for bonds and 10-year notes); v = x when
// x < 7, else 3 (quarterly) or x - 6 (2- and 5-year notes).
double cme_factor(double coupon, double notional, int32_t months, bool quarterly) {
  const double g = 1.0 + notional / 2.0;
  const int32_t n = months / 12;
  int32_t x = months % 12;
  if (quarterly) x -= x % 3;
  const double v = x < 7 ? x : (quarterly ? 3 : x - 6);
  const double c = x < 7 ? 1.0 / std::pow(g, 2 * n) : 1.0 / std::pow(g, 2 * n + 1);
  return (coupon / 2.0 + c + coupon / notional * (1.0 - c)) / std::pow(g, v / 6.0) - coupon / 2.0 * (6.0 - v) / 6.0;
}

// A factor rounded at 4 decimals lies within half a unit of the last place
// of the unrounded value and is itself a whole number of 1e-4.
void expect_rounded_4(double actual, double unrounded) {
  EXPECT_NEAR(actual, unrounded, 0.5e-4 + 1e-12);
  EXPECT_NEAR(actual * 1e4, std::round(actual * 1e4), 1e-6);
}

// A gilt valued on the first day of the delivery month at yield y
// (semiannual): every remaining flow discounted over (days to the next
// coupon / days in the period) + k periods; the next coupon is dropped when
// ex-dividend; accrued interest act/act (act/365 before November 1998).
double gilt_by_hand(double c, double y, int32_t s, int32_t previous, int32_t next, int32_t later, bool ex_dividend,
                    bool act_365 = false) {
  const double v = 1.0 / (1.0 + y / 2.0), t = static_cast<double>(next - s) / (next - previous);
  double dirty = (ex_dividend ? 0.0 : c / 2.0 * std::pow(v, t)) + std::pow(v, t + later);
  for (int32_t k = 1; k <= later; ++k) dirty += c / 2.0 * std::pow(v, t + k);
  const double accrued = act_365 ? (ex_dividend ? -c * (next - s) : c * (s - previous)) / 365.0
                                 : c / 2.0 * (ex_dividend ? -(next - s) : s - previous) / (next - previous);
  return round_to(dirty - accrued, 7);
}

// The BTP rule before the euro: semiannual compounding at the notional,
// t = actual days to the next coupon / 182.5, accrued 30/360.
double btp_by_hand(double c, double n, int32_t d, int32_t next, int32_t later, int32_t days_30_360) {
  const double g = 1.0 + n / 2.0, t = (next - d) / 182.5;
  double dirty = std::pow(g, -(t + later));
  for (int32_t k = 0; k <= later; ++k) dirty += c / 2.0 * std::pow(g, -(t + k));
  return round_to(dirty - c * days_30_360 / 360.0, 6);
}

struct Case {
  const char* what;
  FactorCall call;  // coupon, maturity, delivery, contract, notional, check, extra
  double expected;
};

const double kZero = 0.0, kSix = 0.06, kFive = 0.05;
const int32_t kOff = 0;

TEST(ConversionFactor, MatchesTheExchangesRules) {
  const int32_t gilt_s = serial(2000, 6, 1), gilt_prev = serial(1999, 12, 7), gilt_next = serial(2000, 6, 7);
  const int32_t btp_d = serial(1998, 6, 10), btp_next = serial(1998, 11, 1);
  const int32_t bono_m = serial(2008, 7, 30);
  auto bono = [&](int32_t d, bool on_coupon_date) {  // MEFF 10 %: annual, act/365, whole coupon off between dates
    double value = 100.0 * std::pow(1.1, -(bono_m - d) / 365.0);
    for (int32_t y = 2000; y <= 2008; ++y) value += 9.0 * std::pow(1.1, -(serial(y, 7, 30) - d) / 365.0);
    return round_to((value - (on_coupon_date ? 0.0 : 9.0)) * 0.01, 7);
  };
  const Case cases[] = {
      // Hull, Options, Futures and Other Derivatives: a 10 % bond with 20
      // years 2 months to run has factor 1.4623, an 8 % bond with 18 years
      // 4 months 1.2199.
      {"Hull 10 % bond", {0.10, serial(2021, 5, 1), serial(2001, 3, 20), 0}, 1.4623},
      {"Hull 8 % bond", {0.08, serial(2019, 7, 1), serial(2001, 3, 20), 0}, 1.2199},
      // wheels.org, "Futures conversion factors in Mathematica": a 1.5 %
      // 2-year note with 22 months (from 15 March) 0.922939, a 2.75 % 5-year
      // note with 58 months 0.86533.
      {"2-year note", {0.015, serial(2014, 1, 31), serial(2012, 3, 1), 1}, 0.9229},
      {"5-year note", {0.0275, serial(2017, 1, 31), serial(2012, 3, 1), 61}, 0.8653},
      {"10-year note at its own notional, whole half-years", {0.05, serial(2018, 12, 15), serial(2010, 6, 1), 60, &kFive},
       1.0},
      // Bund before the euro: to 4 July 2007 from 10 September 1998 is 105
      // whole months, 9 to the coupon and 8 after.
      {"Bund 3.5 %", {0.035, serial(2007, 7, 4), serial(1998, 9, 1), 15}, dtb_factor(0.035, 0.06, 9, 8)},
      // Contract 5 before May 1999, a later delivery date used as given: 111 months and 9 days.
      {"contract 5", {0.0625, serial(2008, 7, 4), serial(1999, 3, 25), 5}, dtb_factor(0.0625, 0.06, 3, 9)},
      // Contract 40, the 7th, 30E/360 months: 7 March 2003 to 15 January 2012 is 106.27 months.
      {"7th of the month", {0.055, serial(2012, 1, 15), serial(2003, 3, 28), 40}, dtb_factor(0.055, 0.07, 10, 8)},
      // Contract 50: Monday 22 March 2004, three business days after the third
      // Wednesday; the coupon due on delivery is not delivered.
      {"third Wednesday, 9 years", {0.045, serial(2013, 3, 22), serial(2004, 3, 1), 50},
       dtb_factor(0.045, 0.06, 12, 8)},
      {"contract 51 at exactly 8 years", {0.045, serial(2012, 3, 22), serial(2004, 3, 1), 51},
       dtb_factor(0.045, 0.06, 12, 7)},
      // OM Stockholm: Monday 14 June 2004, four business days after two before the 10th.
      {"Swedish 10 years, cum-coupon", {0.05, serial(2014, 6, 14), serial(2004, 6, 2), 42},
       dtb_factor(0.05, 0.06, 12, 9)},
      {"Swedish outside the basket, check off", {0.05, serial(2012, 5, 5), serial(2004, 6, 2), 42, nullptr, &kOff},
       dtb_factor(0.05, 0.06, 10, 7)},
      {"Swedish 3.5 years exactly", {0.05, serial(2007, 12, 14), serial(2004, 6, 2), 41},
       dtb_factor(0.05, 0.06, 6, 3)},
      // JGB from coupon date to coupon date at its notional.
      {"JGB at the notional", {0.06, serial(2014, 3, 20), serial(2005, 3, 25), 4, &kSix}, 1.0},
      {"MEFF 10 % on a coupon date", {0.09, bono_m, serial(1999, 7, 30), 10}, bono(serial(1999, 7, 30), true)},
      {"MEFF 10 % the day after", {0.09, bono_m, serial(1999, 7, 31), 10}, bono(serial(1999, 7, 31), false)},
      // Long gilt: the 7 June 2000 coupon went ex on 30 May (seven business
      // days back from Wednesday 7 June is Monday 29 May, plus one day).
      {"long gilt ex-dividend", {0.08, serial(2010, 12, 7), serial(2000, 6, 15), 2},
       gilt_by_hand(0.08, 0.07, gilt_s, gilt_prev, gilt_next, 21, true)},
      {"medium gilt", {0.08, serial(2005, 12, 7), serial(2000, 6, 15), 22},
       gilt_by_hand(0.08, 0.07, gilt_s, gilt_prev, gilt_next, 11, true)},
      // Before March 1998: 9 % notional, 10 to 15 years, act/365 accrual.
      {"old long gilt", {0.08, serial(2008, 9, 15), serial(1997, 6, 1), 2},
       gilt_by_hand(0.08, 0.09, serial(1997, 6, 1), serial(1997, 3, 15), serial(1997, 9, 15), 22, false, true)},
      // BTP on Wednesday 10 June 1998: 144 days to the coupon, 18 after, 39 days accrued.
      {"BTP 6 % before 1999", {0.0775, serial(2007, 11, 1), serial(1998, 6, 1), 45},
       btp_by_hand(0.0775, 0.06, btp_d, btp_next, 18, 39)},
      {"LIFFE BTP 8 %", {0.0775, serial(2007, 11, 1), serial(1998, 6, 1), 6}, btp_by_hand(0.0775, 0.08, btp_d, btp_next, 18, 39)},
      // Price-based contracts, each settling on a coupon date.
      {"Euro-Bund, Thursday 10 March 2005", {0.05, serial(2014, 3, 10), serial(2005, 3, 1), 15},
       round_to(annuity_price(0.05, 0.06, 2, 18), 6)},
      {"MEFF 15-year, later delivery given", {0.0525, serial(2025, 6, 16), serial(2005, 6, 16), 11},
       round_to(annuity_price(0.0525, 0.065, 1, 20), 7)},
      {"Belfox, Thursday 30 June 2005", {0.0575, serial(2014, 6, 30), serial(2005, 6, 20), 25},
       round_to(annuity_price(0.0575, 0.09, 1, 9), 4)},
      {"MATIF on Tuesday 14 June 2005", {0.04, serial(2014, 6, 14), serial(2005, 6, 1), 37},
       round_to(annuity_price(0.04, 0.055, 1, 9), 6)},
      {"long gilt priced as a gilt", {0.05, serial(2015, 12, 14), serial(2005, 6, 1), 34},
       round_to(annuity_price(0.05, 0.07, 2, 21), 6)},
      {"Porto on Thursday 16 June 2005", {0.05, serial(2014, 6, 16), serial(2005, 6, 1), 55},
       round_to(annuity_price(0.05, 0.045, 1, 9), 7)},
      {"BTP after 1999, Friday 10 June 2005", {0.0425, serial(2014, 12, 10), serial(2005, 6, 1), 6},
       round_to(annuity_price(0.0425, 0.06, 2, 19), 6)},
      {"long-term BTP", {0.0425, serial(2035, 6, 10), serial(2005, 6, 1), 47}, round_to(annuity_price(0.0425, 0.05, 2, 60), 6)},
  };
  for (Case c : cases) {
    EXPECT_DOUBLE_EQ(c.call.run(), c.expected) << c.what;
    EXPECT_EQ(c.call.error, 0) << c.what;
  }
  // MEFF 10-year: a zero notional is accepted (refused under U.S. rules); the
  // day before the 16 June coupon, ten coupons and par less 364/365 accrued.
  FactorCall meff{0.04, serial(2014, 6, 16), serial(2005, 6, 1), 8, &kZero};
  EXPECT_NEAR(meff.run(), 1.0 + 10 * 0.04 - 0.04 * 364.0 / 365.0, 1e-6);
  // A holiday on Thursday 18 March 2004 moves contract 51's delivery to
  // Tuesday 23 March: 11 whole months to 22 March 2012.
  const int32_t holiday[] = {serial(2004, 3, 18)};
  FactorCall moved{0.045, serial(2012, 3, 22), serial(2004, 3, 1), 51, nullptr, nullptr, nullptr, holiday, 1};
  EXPECT_DOUBLE_EQ(moved.run(), dtb_factor(0.045, 0.06, 11, 7));
}

TEST(ConversionFactor, GiltExDividendPeriodOverride) {
  const int32_t s = serial(2000, 6, 1), previous = serial(1999, 12, 7), next = serial(2000, 6, 7);
  // Periods of 3 calendar days (cum), 37 (the older rule, ex), extremes that
  // put the ex date far back (ex), and 0 days: ex on the coupon date itself.
  const std::pair<int32_t, bool> periods[] = {{-3, false}, {-37, true}, {INT32_MIN, true}, {0, false}, {INT32_MAX, true}};
  for (const auto& [days, ex] : periods) {
    FactorCall call{0.08, serial(2010, 12, 7), serial(2000, 6, 15), 2, nullptr, nullptr, &days};
    EXPECT_DOUBLE_EQ(call.run(), gilt_by_hand(0.08, 0.07, s, previous, next, 21, ex)) << days;
  }
}

TEST(ConversionFactor, UsQuarterlyAndMonthlyMethodsMatchTheCmeFormula) {
  for (double coupon : {0.02, 0.045, 0.0625, 0.08, 0.1125}) {
    // Delivery months whose first day is a business day.
    for (int32_t dm : {3, 6, 9, 12}) {
      for (int32_t years = 7; years <= 29; ++years) {
        for (int32_t mm : {2, 5, 8, 11}) {
          FactorCall call{coupon, serial(2010 + years, mm, 15), serial(2010, dm, 22), 0};
          // Whole months from the first of the delivery month; the 15th
          // leaves a part month, which counts as half a month more.
          const int32_t whole = years * 12 + mm - dm;
          const double f = call.run();
          if (!((whole + 0.5 >= 78 && whole + 0.5 <= 120) || whole + 0.5 >= 180)) {
            EXPECT_EQ(call.error, 910) << coupon << " " << dm << " " << years << " " << mm;
            continue;
          }
          ASSERT_EQ(call.error, 0);
          expect_rounded_4(f, cme_factor(coupon, 0.06, whole, true));
        }
      }
    }
    // 5-year note (48 to 63 months), maturing on a month end: whole months
    // from 15 June are `months`, from the 1st a part month is left.
    for (int32_t months = 48; months <= 63; ++months) {
      const int32_t y = 2011 + (5 + months) / 12, m = (5 + months) % 12 + 1;
      FactorCall call{coupon, m == 12 ? serial(y, 12, 31) : serial(y, m + 1, 1) - 1, serial(2011, 6, 3), 61};
      const double f = call.run();
      if (months == 63) {
        EXPECT_EQ(call.error, 910);
        continue;
      }
      ASSERT_EQ(call.error, 0) << months;
      expect_rounded_4(f, cme_factor(coupon, 0.06, months, false));
    }
  }
  struct Rounded { const char* what; FactorCall call; double notional; int32_t months; bool quarterly; } const cases[] = {
      {"130 months, check off", {0.06, serial(2021, 1, 1), serial(2010, 3, 10), 0, nullptr, &kOff}, 0.06, 130, true},
      // The notional went from 8 % to 6 % with the March 2000 contracts.
      {"February 2000", {0.0725, serial(2022, 11, 15), serial(2000, 2, 29), 0}, 0.08, 273, true},
      {"March 2000", {0.0725, serial(2022, 11, 15), serial(2000, 3, 1), 0}, 0.06, 272, true},
      // Contracts 70 and 71: 6.5 % whatever the date.
      {"contract 71", {0.07, serial(2008, 8, 31), serial(2003, 9, 1), 71}, 0.065, 59, false},
      // Montreal CGB: 9 % before the June 2000 contract, 6 % from it.
      {"CGB June 2000", {0.0575, serial(2009, 12, 1), serial(2000, 6, 1), 7}, 0.06, 114, true},
  };
  for (Rounded c : cases) {
    SCOPED_TRACE(c.what);
    expect_rounded_4(c.call.run(), cme_factor(c.call.coupon, c.notional, c.months, c.quarterly));
    EXPECT_EQ(c.call.error, 0);
  }
}

// TSE JGB futures (contract 4): valued on the 20th of the delivery month at
// 6 % compounded semiannually, coupons of c/2 at m3/6, m3/6 + 1, ...
// half-years, less the accrued c/2 (6 - m3)/6; truncated at six decimals.
TEST(ConversionFactor, JgbIsTruncatedNotRounded) {
  int truncated_differently = 0;
  for (int32_t step = 0; step < 40; ++step) {
    const double c = 0.004 + 0.0005 * step;
    for (int32_t months_left = 84; months_left <= 131; months_left += 7) {
      const int32_t total = 3 + months_left - 1;  // maturity month, counted from January 2005
      FactorCall call{c, serial(2005 + total / 12, total % 12 + 1, 1), serial(2005, 3, 1), 4};
      const int32_t m3 = months_left % 6 == 0 ? 6 : months_left % 6, later = (months_left - m3) / 6;
      double dirty = std::pow(1.03, -(m3 / 6.0 + later));
      for (int32_t k = 0; k <= later; ++k) dirty += c / 2.0 * std::pow(1.03, -(m3 / 6.0 + k));
      const double scaled = (dirty - c / 2.0 * (6 - m3) / 6.0) * 1e6;
      if (std::fabs(scaled - std::floor(scaled + 0.5)) < 1e-6) continue;  // too close to call
      EXPECT_NEAR(call.run(), std::floor(scaled) * 1e-6, 1e-12) << c << " " << months_left;
      ASSERT_EQ(call.error, 0);
      if (std::floor(scaled) != std::floor(scaled + 0.5)) ++truncated_differently;
    }
  }
  EXPECT_GT(truncated_differently, 10);  // rounding would have changed these
}

TEST(ConversionFactorErrors, BasketsDatesNotionalsAndContracts) {
  const double negative = -0.01, minus_one = -1.0, nan = std::nan("");
  const int32_t on = 1;
  struct Bad { const char* what; FactorCall call; int32_t code; } const cases[] = {
      {"Schatz far outside its basket", {0.06, serial(2007, 7, 4), serial(1998, 9, 1), 17}, 910},
      {"contract 40 ten years and a day", {0.055, serial(2013, 3, 8), serial(2003, 3, 28), 40}, 910},
      {"contract 40 zero notional", {0.055, serial(2013, 3, 7), serial(2003, 3, 28), 40, &kZero}, 920},
      {"Swedish 7 years 10 months", {0.05, serial(2012, 5, 5), serial(2004, 6, 2), 42}, 910},
      {"Swedish at maturity", {0.05, serial(2004, 6, 14), serial(2004, 6, 2), 41, nullptr, &kOff}, 160},
      {"JGB maturity's 20th before delivery's", {0.06, serial(2005, 2, 28), serial(2005, 3, 25), 4}, 160},
      {"JGB zero notional", {0.06, serial(2014, 3, 20), serial(2005, 3, 25), 4, &kZero}, 920},
      {"MEFF notional of -1", {0.09, serial(2008, 7, 30), serial(1999, 7, 31), 10, &minus_one}, 920},
      {"medium gilt 10.5 years", {0.08, serial(2010, 12, 7), serial(2000, 6, 15), 22}, 910},
      {"BTP 10.4 years before 1999", {0.0775, serial(2008, 11, 1), serial(1998, 6, 1), 45}, 910},
      {"BTP negative notional", {0.0775, serial(2008, 11, 1), serial(1998, 6, 1), 45, &negative}, 920},
      {"U.S. NaN notional", {0.05, serial(2018, 11, 15), serial(2010, 6, 1), 60, &nan}, 920},
      {"Porto 11 years", {0.05, serial(2016, 6, 16), serial(2005, 6, 1), 55}, 910},
      // "Not more than 10 years": 120 months and a part month is out; the bond basket starts at 180.
      {"121 months", {0.06, serial(2020, 3, 2), serial(2010, 3, 10), 0}, 910},
      {"179 and a part month", {0.06, serial(2025, 2, 28), serial(2010, 3, 10), 0}, 910},
      {"130 months, check on", {0.06, serial(2021, 1, 1), serial(2010, 3, 10), 0, nullptr, &on}, 910},
      // The two-year basket is 21 months up to, not including, 25.
      {"2-year 25 months", {0.06, serial(2012, 4, 1), serial(2010, 3, 1), 1}, 910},
      {"CGB 31 quarters", {0.0575, serial(2008, 5, 31), serial(2000, 6, 1), 7}, 910},
      {"CGB on the first of the month", {0.0575, serial(2000, 6, 1), serial(2000, 6, 1), 7, nullptr, &kOff}, 160},
      {"delivery before day 1", {0.06, serial(2030, 2, 15), -5, 0}, 150},
      {"maturity beyond the calendar", {0.06, 2000000, serial(2010, 3, 1), 0}, 150},
      {"maturity before the delivery month", {0.06, serial(2010, 2, 15), serial(2010, 3, 1), 0, nullptr, &kOff}, 160},
      {"monthly method: 15th after maturity", {0.06, serial(2010, 3, 10), serial(2010, 3, 1), 1, nullptr, &kOff}, 160},
      {"coupon not a number", {nan, serial(2030, 2, 15), serial(2010, 3, 1), 0}, 1},
      {"contract -1", {0.06, serial(2030, 2, 15), serial(2010, 3, 1), -1}, 900},
  };
  for (Bad c : cases) {
    EXPECT_EQ(c.call.run(), -1.0) << c.what;
    EXPECT_EQ(c.call.error, c.code) << c.what;
  }
  // Baskets include their edges: 120, 180 and 78 months, 21 and 24, 32 quarters, 10 years exactly;
  // a Belfox delivery date given within the last five days of the month replaces the last business day.
  for (FactorCall call : {FactorCall{0.06, serial(2020, 3, 1), serial(2010, 3, 10), 0},
                          FactorCall{0.06, serial(2025, 3, 1), serial(2010, 3, 10), 0},
                          FactorCall{0.06, serial(2016, 9, 1), serial(2010, 3, 10), 0},
                          FactorCall{0.06, serial(2011, 12, 1), serial(2010, 3, 1), 1},
                          FactorCall{0.06, serial(2012, 3, 1), serial(2010, 3, 1), 1},
                          FactorCall{0.0575, serial(2008, 6, 1), serial(2000, 6, 1), 7},
                          FactorCall{0.055, serial(2013, 3, 7), serial(2003, 3, 28), 40},
                          FactorCall{0.08, serial(2007, 3, 15), serial(1998, 3, 1), 2} /* new gilt terms */,
                          FactorCall{0.0575, serial(2014, 6, 30), serial(2005, 6, 27), 25} /* Belfox: given date */}) {
    call.run();
    EXPECT_EQ(call.error, 0) << call.contract << " " << call.maturity;
  }
  // A NULL contract is code 0, and a NULL error pointer is allowed.
  int32_t error = -1;
  const double f = KVLbfact(0.06, serial(2030, 2, 15), serial(2010, 3, 1), nullptr, nullptr, 0, nullptr, nullptr,
                            nullptr, nullptr, nullptr, &error);
  EXPECT_EQ(error, 0);
  EXPECT_DOUBLE_EQ(f, (FactorCall{0.06, serial(2030, 2, 15), serial(2010, 3, 1), 0}.run()));
  EXPECT_EQ(KVLbfact(0.06, serial(2030, 2, 15), serial(2010, 3, 1), nullptr, nullptr, 0, nullptr, nullptr, nullptr,
                     nullptr, nullptr, nullptr),
            f);
}

}  // namespace
