// Conversion factors of the North American contracts (CBOT Treasury bond
// and note futures, Montreal CGB) against the exchanges' published formula,
// computed here independently in the CME's own form:
//
//   factor = a * (coupon/2 + c + d) - b
//   a = 1 / 1.03^(v/6),  b = coupon/2 * (6 - v) / 6
//   c = 1 / 1.03^(2n) if x < 7, else 1 / 1.03^(2n + 1)
//   d = coupon / 0.06 * (1 - c)
//
// n whole years and x remaining months from the first day of the delivery
// month (rounded down to a quarter for bonds and 10-year notes, whole
// months from the 15th for 2- and 5-year notes); v = x when x < 7, else
// 3 (bonds, 10-year notes) or x - 6 (2- and 5-year notes). The 1.03
// generalises to 1 + notional/2 for the 8 % and 6.5 % notionals.
#include <gtest/gtest.h>

#include <cmath>

#include "futures_test_support.h"

using futures_test::FactorCall;
using futures_test::serial;

namespace {

double cme_factor(double coupon, double notional, int32_t months, bool quarterly) {
  const double g = 1.0 + notional / 2.0;
  const int32_t n = months / 12;
  int32_t x = months % 12;
  if (quarterly) x -= x % 3;
  const double v = x < 7 ? x : (quarterly ? 3 : x - 6);
  const double a = 1.0 / std::pow(g, v / 6.0);
  const double b = coupon / 2.0 * (6.0 - v) / 6.0;
  const double c = x < 7 ? 1.0 / std::pow(g, 2 * n) : 1.0 / std::pow(g, 2 * n + 1);
  const double d = coupon / notional * (1.0 - c);
  return a * (coupon / 2.0 + c + d) - b;
}

// A factor rounded at 4 decimals lies within half a unit of the last place
// of the unrounded value and is itself a whole number of 1e-4.
void expect_rounded_4(double actual, double unrounded) {
  EXPECT_NEAR(actual, unrounded, 0.5e-4 + 1e-12);
  EXPECT_NEAR(actual * 1e4, std::round(actual * 1e4), 1e-6);
}

}  // namespace

// Hull, Options, Futures and Other Derivatives, conversion factor examples:
// a 10 % bond with 20 years and 2 months to run has factor 1.4623; an 8 %
// bond with 18 years and 4 months has factor 1.2199.
TEST(UsTreasuryFactor, TextbookBondExamples) {
  FactorCall call;
  call.contract = 0;
  call.delivery = serial(2001, 3, 20);
  call.coupon = 0.10;
  call.maturity = serial(2021, 5, 1);  // 242 months from 1 March 2001
  EXPECT_DOUBLE_EQ(call.run(), 1.4623);
  EXPECT_EQ(call.error, 0);
  call.coupon = 0.08;
  call.maturity = serial(2019, 7, 1);  // 220 months
  EXPECT_DOUBLE_EQ(call.run(), 1.2199);
  EXPECT_EQ(call.error, 0);
}

// Note examples worked with the CME formula (wheels.org, "Futures conversion
// factors in Mathematica"): a 1.5 % 2-year note with 1 year 10 months left
// gives 0.922939, a 2.75 % 5-year note with 4 years 10 months 0.86533.
TEST(UsTreasuryFactor, PublishedNoteExamples) {
  FactorCall call;
  call.contract = 1;
  call.delivery = serial(2012, 3, 1);
  call.coupon = 0.015;
  call.maturity = serial(2014, 1, 31);  // 22 whole months from 15 March 2012
  EXPECT_DOUBLE_EQ(call.run(), 0.9229);
  EXPECT_EQ(call.error, 0);
  call.contract = 61;
  call.coupon = 0.0275;
  call.maturity = serial(2017, 1, 31);  // 58 months
  EXPECT_DOUBLE_EQ(call.run(), 0.8653);
  EXPECT_EQ(call.error, 0);
}

TEST(UsTreasuryFactor, QuarterlyMethodMatchesExchangeFormula) {
  const double coupons[] = {0.02, 0.045, 0.0625, 0.08, 0.1125};
  // Delivery months whose first day is a business day (Monday 1 March 2010,
  // Tuesday 1 June 2010, Wednesday 1 September 2010, Wednesday 1 December 2010).
  const int32_t months_of_delivery[] = {3, 6, 9, 12};
  for (double coupon : coupons) {
    for (int32_t dm : months_of_delivery) {
      for (int32_t years = 7; years <= 29; years += 1) {
        for (int32_t mm : {2, 5, 8, 11}) {
          FactorCall call;
          call.contract = 0;
          call.coupon = coupon;
          call.delivery = serial(2010, dm, 22);
          call.maturity = serial(2010 + years, mm, 15);
          // Whole months from the first of the delivery month; the 15th
          // leaves a part month, which counts as half a month more.
          const int32_t whole = years * 12 + mm - dm;
          const double m = whole + 0.5;
          const bool eligible = (m >= 78 && m <= 120) || m >= 180;
          const double f = call.run();
          if (!eligible) {
            EXPECT_EQ(call.error, 910) << coupon << " " << dm << " " << years << " " << mm;
            continue;
          }
          ASSERT_EQ(call.error, 0);
          expect_rounded_4(f, cme_factor(coupon, 0.06, whole, true));
        }
      }
    }
  }
}

TEST(UsTreasuryFactor, MonthlyMethodMatchesExchangeFormula) {
  const double coupons[] = {0.005, 0.0175, 0.03, 0.0575, 0.09};
  for (double coupon : coupons) {
    for (int32_t months = 48; months <= 63; ++months) {
      FactorCall call;
      call.contract = 61;  // 5-year note, 48 to 63 months
      call.coupon = coupon;
      call.delivery = serial(2011, 6, 3);
      // Maturity on the last day of the month: whole months from the 15th
      // of June are `months`, from the 1st there is a part month left.
      const int32_t y = 2011 + (5 + months) / 12;
      const int32_t m = (5 + months) % 12 + 1;
      call.maturity = m == 12 ? serial(y, 12, 31) : serial(y, m + 1, 1) - 1;
      const double f = call.run();
      if (months + 0.5 > 63.0) {
        EXPECT_EQ(call.error, 910);
        continue;
      }
      ASSERT_EQ(call.error, 0) << months;
      expect_rounded_4(f, cme_factor(coupon, 0.06, months, false));
    }
  }
}

// "Not more than 10 years": exactly 120 months is deliverable, a day more
// (120 and a part month) is not; 180 months and beyond is the bond basket.
TEST(UsTreasuryFactor, EligibilityAtTheEdges) {
  FactorCall call;
  call.contract = 0;
  call.delivery = serial(2010, 3, 10);
  call.maturity = serial(2020, 3, 1);
  call.run();
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2020, 3, 2);
  EXPECT_EQ(call.run(), -1.0);
  EXPECT_EQ(call.error, 910);
  call.maturity = serial(2025, 3, 1);  // 180 months
  call.run();
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2025, 2, 28);  // 179 and a part month
  call.run();
  EXPECT_EQ(call.error, 910);
  call.maturity = serial(2016, 9, 1);  // 78 months
  call.run();
  EXPECT_EQ(call.error, 0);

  // 130 months: between the note and bond baskets, but computed with the
  // check off (and 100 months likewise).
  call.maturity = serial(2021, 1, 1);
  const int32_t off = 0;
  call.check = &off;
  const double f = call.run();
  EXPECT_EQ(call.error, 0);
  expect_rounded_4(f, cme_factor(0.06, 0.06, 130, true));
  const int32_t on = 1;
  call.check = &on;
  call.run();
  EXPECT_EQ(call.error, 910);
  call.check = &off;
  call.maturity = serial(2018, 7, 1);
  expect_rounded_4(call.run(), cme_factor(0.06, 0.06, 100, true));
  EXPECT_EQ(call.error, 0);
}

// The two-year basket is 21 months up to, not including, 25.
TEST(UsTreasuryFactor, TwoYearBasketIsHalfOpen) {
  FactorCall call;
  call.contract = 1;
  call.delivery = serial(2010, 3, 1);
  call.maturity = serial(2011, 12, 1);  // 21 months
  call.run();
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2012, 3, 1);  // 24 months
  call.run();
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2012, 4, 1);  // 25 months
  call.run();
  EXPECT_EQ(call.error, 910);
  call.maturity = serial(2011, 11, 30);  // 20 and a part month
  call.run();
  EXPECT_EQ(call.error, 910);
}

// The notional coupon went from 8 % to 6 % with the March 2000 contracts.
TEST(UsTreasuryFactor, NotionalChangesOnFirstMarch2000) {
  FactorCall call;
  call.contract = 0;
  call.coupon = 0.0725;
  call.maturity = serial(2022, 11, 15);
  call.delivery = serial(2000, 2, 29);
  const double february = call.run();
  ASSERT_EQ(call.error, 0);
  // From 1 February 2000: 273 whole months.
  expect_rounded_4(february, cme_factor(0.0725, 0.08, 273, true));
  call.delivery = serial(2000, 3, 1);
  const double march = call.run();
  ASSERT_EQ(call.error, 0);
  expect_rounded_4(march, cme_factor(0.0725, 0.06, 272, true));
  EXPECT_GT(march, 1.0);
  EXPECT_LT(february, 1.0);
}

TEST(UsTreasuryFactor, NotionalOverride) {
  FactorCall call;
  call.contract = 60;  // 10-year note, quarterly method
  call.coupon = 0.05;
  call.delivery = serial(2010, 6, 1);
  call.maturity = serial(2018, 12, 15);  // 102 whole months: 34 quarters
  const double n = 0.05;
  call.notional = &n;
  EXPECT_DOUBLE_EQ(call.run(), 1.0);  // at the notional coupon, whole half-years: par
  call.maturity = serial(2018, 11, 15);  // 101 months: a quarter left over
  expect_rounded_4(call.run(), cme_factor(0.05, 0.05, 101, true));
  const double zero = 0.0;
  call.notional = &zero;
  EXPECT_EQ(call.run(), -1.0);
  EXPECT_EQ(call.error, 920);
  const double negative = -0.01;
  call.notional = &negative;
  call.run();
  EXPECT_EQ(call.error, 920);
  const double nan = std::nan("");
  call.notional = &nan;
  call.run();
  EXPECT_EQ(call.error, 920);
}

// Contracts 70 and 71 use a 6.5 % notional whatever the delivery date.
TEST(UsTreasuryFactor, SixAndAHalfPercentContracts) {
  FactorCall call;
  call.coupon = 0.07;
  call.contract = 70;
  call.delivery = serial(1999, 9, 1);
  call.maturity = serial(2008, 2, 15);  // 101 whole months
  expect_rounded_4(call.run(), cme_factor(0.07, 0.065, 101, true));
  EXPECT_EQ(call.error, 0);
  call.contract = 71;
  call.delivery = serial(2003, 9, 1);
  call.maturity = serial(2008, 8, 31);  // 59 whole months from 15 September 2003
  expect_rounded_4(call.run(), cme_factor(0.07, 0.065, 59, false));
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2013, 8, 31);  // 119 months: outside 48..63
  call.run();
  EXPECT_EQ(call.error, 910);
}

// Montreal CGB: the same quarterly value stated in percent; 9 % before the
// June 2000 contract, 6 % from it; 32 to 42 whole quarters.
TEST(CanadaFactor, QuarterlyValueAndBasket) {
  FactorCall call;
  call.contract = 7;
  call.coupon = 0.0575;
  call.delivery = serial(2000, 3, 1);
  call.maturity = serial(2009, 12, 1);  // 117 months: 39 quarters
  expect_rounded_4(call.run(), cme_factor(0.0575, 0.09, 117, true));
  EXPECT_EQ(call.error, 0);
  call.delivery = serial(2000, 6, 1);
  call.maturity = serial(2009, 12, 1);  // 114 months: 38 quarters
  expect_rounded_4(call.run(), cme_factor(0.0575, 0.06, 114, true));
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2008, 6, 1);  // 96 months: 32 quarters, the first deliverable
  call.run();
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2008, 5, 31);  // 31 quarters
  call.run();
  EXPECT_EQ(call.error, 910);
  call.maturity = serial(2011, 3, 1);  // 43 quarters
  call.run();
  EXPECT_EQ(call.error, 910);
  call.maturity = serial(2000, 6, 1);  // on the first of the month: not before it
  const int32_t off = 0;
  call.check = &off;
  call.run();
  EXPECT_EQ(call.error, 160);
}

TEST(ConversionFactorErrors, UnknownContractsAndBadDates) {
  FactorCall call;
  call.delivery = serial(2010, 3, 1);
  call.maturity = serial(2030, 2, 15);
  for (int32_t code : {-1, 12, 13, 21, 999, 1000}) {
    call.contract = code;
    EXPECT_EQ(call.run(), -1.0);
    EXPECT_EQ(call.error, 900) << code;
  }
  // NULL contract: code 0.
  int32_t error = -1;
  const double f = KVLbfact(0.06, serial(2030, 2, 15), serial(2010, 3, 1), nullptr, nullptr, 0,
                            nullptr, nullptr, nullptr, nullptr, nullptr, &error);
  EXPECT_EQ(error, 0);
  call.contract = 0;
  EXPECT_DOUBLE_EQ(f, call.run());
  // A NULL error pointer is allowed.
  EXPECT_EQ(KVLbfact(0.06, serial(2030, 2, 15), serial(2010, 3, 1), nullptr, nullptr, 0, nullptr,
                     nullptr, nullptr, nullptr, nullptr, nullptr),
            f);

  call.delivery = -5;
  EXPECT_EQ(call.run(), -1.0);
  EXPECT_EQ(call.error, 150);
  call.delivery = serial(2010, 3, 1);
  call.maturity = 2000000;
  call.run();
  EXPECT_EQ(call.error, 150);
  call.maturity = serial(2010, 2, 15);  // before the delivery month
  const int32_t off = 0;
  call.check = &off;
  call.run();
  EXPECT_EQ(call.error, 160);
  call.contract = 1;  // monthly method: 15th after maturity
  call.maturity = serial(2010, 3, 10);
  call.run();
  EXPECT_EQ(call.error, 160);
  call.coupon = std::nan("");
  call.maturity = serial(2030, 2, 15);
  call.run();
  EXPECT_EQ(call.error, 1);
}
