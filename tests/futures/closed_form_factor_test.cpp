// Conversion factors that the exchanges define in closed form (no bond
// price function involved), each checked against the exchange's rule
// written out here as an explicit sum of discounted cash flows.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "futures_test_support.h"

using futures_test::FactorCall;
using futures_test::serial;

namespace {

// The DTB's pre-euro rule: coupons annual, `months_to_next` whole months to
// the next coupon, `later` coupons after it, everything discounted at the
// notional; accrued interest is the coupon times the elapsed part of the
// year.
double dtb_factor(double c, double notional, int32_t months_to_next, int32_t later) {
  const double w = 1.0 + notional;
  const double f = months_to_next / 12.0;
  double dirty = c * std::pow(w, -f);
  for (int32_t k = 1; k <= later; ++k) dirty += c * std::pow(w, -(f + k));
  dirty += std::pow(w, -(f + later));
  return dirty - c * (1.0 - f);
}

double round_to(double x, int decimals) {
  const double scale = std::pow(10.0, decimals);
  return std::floor(x * scale + 0.5) / scale;
}

}  // namespace

// Bund contract before the euro conventions: a 6 % Bund maturing 4 July
// 2007 delivered 10 September 1998 (a Thursday) has 105 whole months left:
// 9 months to the next coupon and 8 coupons after it.
TEST(AnnualMethodFactor, BundBeforeTheEuro) {
  FactorCall call;
  call.contract = 15;
  call.delivery = serial(1998, 9, 1);
  call.maturity = serial(2007, 7, 4);
  for (double c : {0.035, 0.06, 0.0875}) {
    call.coupon = c;
    EXPECT_DOUBLE_EQ(call.run(), round_to(dtb_factor(c, 0.06, 9, 8), 6)) << c;
    EXPECT_EQ(call.error, 0);
  }
  // Schatz (contract 17): 1.75 to 2.25 years; this bond is far outside.
  call.contract = 17;
  call.run();
  EXPECT_EQ(call.error, 910);
  // Contract 5 before May 1999 uses the same rule with its 6 % notional:
  // 10 March 1999 to 4 July 2008 is 111 whole months (3 to the coupon).
  call.contract = 5;
  call.coupon = 0.0625;
  call.delivery = serial(1999, 3, 25);  // a later delivery date is used as given
  call.maturity = serial(2008, 7, 4);
  // 25 March 1999 to 4 July 2008: 111 whole months and 9 days.
  EXPECT_DOUBLE_EQ(call.run(), round_to(dtb_factor(0.0625, 0.06, 3, 9), 6));
  EXPECT_EQ(call.error, 0);
}

// Contract 40: the 7th of the month; time by 30E/360 rounded to whole
// months. 7 March 2003 (a Friday) to 15 January 2012 is 8 years and 308
// 30E/360 days, 106.27 months, so 106: 10 months to the coupon, 8 after.
TEST(AnnualMethodFactor, SeventhOfTheMonthContract) {
  FactorCall call;
  call.contract = 40;
  call.coupon = 0.055;
  call.delivery = serial(2003, 3, 28);
  call.maturity = serial(2012, 1, 15);
  EXPECT_DOUBLE_EQ(call.run(), round_to(dtb_factor(0.055, 0.07, 10, 8), 6));
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2013, 3, 8);  // 10 years and a day: outside 8..10
  call.run();
  EXPECT_EQ(call.error, 910);
  call.maturity = serial(2013, 3, 7);  // exactly 10 years
  call.run();
  EXPECT_EQ(call.error, 0);
  const double zero = 0.0;
  call.notional = &zero;
  call.run();
  EXPECT_EQ(call.error, 920);
}

// Contract 50: three business days after the third Wednesday (17 March 2004
// is itself a business day, so Monday 22 March). A bond maturing 22 March
// 2013 has exactly 9 years left: the coupon due on the delivery day is not
// delivered, so a full year of discounting and 8 further coupons.
TEST(AnnualMethodFactor, ThirdWednesdayContract) {
  FactorCall call;
  call.contract = 50;
  call.coupon = 0.045;
  call.delivery = serial(2004, 3, 1);
  call.maturity = serial(2013, 3, 22);
  EXPECT_DOUBLE_EQ(call.run(), round_to(dtb_factor(0.045, 0.06, 12, 8), 6));
  EXPECT_EQ(call.error, 0);
  call.contract = 51;  // 3 to 8 years
  call.run();
  EXPECT_EQ(call.error, 910);
  call.maturity = serial(2012, 3, 22);  // exactly 8 years: upper bound included
  EXPECT_DOUBLE_EQ(call.run(), round_to(dtb_factor(0.045, 0.06, 12, 7), 6));
  EXPECT_EQ(call.error, 0);
  // A holiday on Thursday 18 March moves delivery to Tuesday 23 March:
  // 11 months and 27 days to a 22 March 2012 maturity, 11 whole months.
  const int32_t holiday[] = {serial(2004, 3, 18)};
  call.holidays = holiday;
  call.n_holidays = 1;
  EXPECT_DOUBLE_EQ(call.run(), round_to(dtb_factor(0.045, 0.06, 11, 7), 6));
}

// OM Stockholm (contracts 41, 42): four business days after the business
// day two days before the 10th: 10 June 2004 is a Thursday, two back is
// Tuesday 8 June, four on Monday 14 June.
TEST(AnnualMethodFactor, SwedishContracts) {
  FactorCall call;
  call.contract = 42;
  call.coupon = 0.05;
  call.delivery = serial(2004, 6, 2);
  call.maturity = serial(2014, 6, 14);  // exactly 10 years, cum-coupon
  EXPECT_DOUBLE_EQ(call.run(), round_to(dtb_factor(0.05, 0.06, 12, 9), 6));
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2012, 5, 5);  // 7 years 10 months 21 days
  EXPECT_EQ(call.run(), -1.0);
  EXPECT_EQ(call.error, 910);
  const int32_t off = 0;
  call.check = &off;
  EXPECT_DOUBLE_EQ(call.run(), round_to(dtb_factor(0.05, 0.06, 10, 7), 6));
  EXPECT_EQ(call.error, 0);
  call.contract = 41;  // 1.5 to 3.5 years
  call.check = nullptr;
  call.maturity = serial(2007, 12, 14);  // 3.5 years exactly
  EXPECT_DOUBLE_EQ(call.run(), round_to(dtb_factor(0.05, 0.06, 6, 3), 6));
  EXPECT_EQ(call.error, 0);
  call.check = &off;
  call.maturity = serial(2004, 6, 14);  // at maturity: nothing left to value
  call.run();
  EXPECT_EQ(call.error, 160);
}

// TSE JGB futures (contract 4). The bond is valued on the 20th of the
// delivery month at 6 % compounded semiannually: coupons of c/2 at m3/6,
// m3/6 + 1, ... half-years and the redemption with the last one, less the
// accrued c/2 * (6 - m3)/6. The exchange truncates at six decimals.
TEST(JgbFactor, TruncatedExchangeValue) {
  int truncated_differently = 0;
  for (int32_t step = 0; step < 40; ++step) {
    const double c = 0.004 + 0.0005 * step;
    for (int32_t months_left = 84; months_left <= 131; months_left += 7) {
      // Delivery in March 2005 (moved to the 20th); maturity months_left
      // months after 20 March 2005, given on the 1st (moved to the 20th).
      const int32_t total = 3 + months_left - 1;  // months since January 2005
      const int32_t y = 2005 + total / 12;
      const int32_t m = total % 12 + 1;
      FactorCall call;
      call.contract = 4;
      call.coupon = c;
      call.delivery = serial(2005, 3, 1);
      call.maturity = serial(y, m, 1);
      const int32_t m3 = months_left % 6 == 0 ? 6 : months_left % 6;
      const int32_t later = (months_left - m3) / 6;
      double dirty = 0.0;
      for (int32_t k = 0; k <= later; ++k) dirty += c / 2.0 * std::pow(1.03, -(m3 / 6.0 + k));
      dirty += std::pow(1.03, -(m3 / 6.0 + later));
      const double exact = dirty - c / 2.0 * (6 - m3) / 6.0;
      const double scaled = exact * 1e6;
      if (std::fabs(scaled - std::floor(scaled + 0.5)) < 1e-6) continue;  // too close to call
      const double f = call.run();
      ASSERT_EQ(call.error, 0);
      EXPECT_NEAR(f, std::floor(scaled) * 1e-6, 1e-12) << c << " " << months_left;
      if (std::floor(scaled) != std::floor(scaled + 0.5)) ++truncated_differently;
    }
  }
  EXPECT_GT(truncated_differently, 10);  // rounding would have changed these
}

TEST(JgbFactor, DatesAndNotional) {
  FactorCall call;
  call.contract = 4;
  call.delivery = serial(2005, 3, 25);
  call.maturity = serial(2005, 2, 28);  // its 20th lies before the delivery's
  call.run();
  EXPECT_EQ(call.error, 160);
  const double zero = 0.0;
  call.maturity = serial(2014, 3, 20);
  call.notional = &zero;
  call.run();
  EXPECT_EQ(call.error, 920);
  const double six = 0.06;
  call.notional = &six;
  call.coupon = 0.06;
  EXPECT_DOUBLE_EQ(call.run(), 1.0);  // coupon date to coupon date at the notional
}

// MEFF's 10 % contract (code 10): annual coupons and redemption discounted
// at 10 % over actual days / 365 from the delivery date; the whole coupon
// comes off between coupon dates, nothing on a coupon date.
TEST(BonoFactor, CouponDateAndTheDayAfter) {
  const double c = 0.09;
  const int32_t maturity = serial(2008, 7, 30);
  auto by_hand = [&](int32_t d, bool on_coupon_date) {
    double value = 100.0 * std::pow(1.1, -(maturity - d) / 365.0);
    for (int32_t y = 2000; y <= 2008; ++y) {
      value += 9.0 * std::pow(1.1, -(serial(y, 7, 30) - d) / 365.0);
    }
    return round_to((value - (on_coupon_date ? 0.0 : 9.0)) * 0.01, 7);
  };
  FactorCall call;
  call.contract = 10;
  call.coupon = c;
  call.maturity = maturity;
  call.delivery = serial(1999, 7, 30);
  const double on_date = call.run();
  EXPECT_EQ(call.error, 0);
  EXPECT_DOUBLE_EQ(on_date, by_hand(call.delivery, true));
  call.delivery = serial(1999, 7, 31);
  const double next_day = call.run();
  EXPECT_EQ(call.error, 0);
  EXPECT_DOUBLE_EQ(next_day, by_hand(call.delivery, false));
  EXPECT_NEAR(on_date - next_day, 0.09, 0.001);
  const double minus_one = -1.0;  // w = 1 + n = 0
  call.notional = &minus_one;
  call.run();
  EXPECT_EQ(call.error, 920);
}

namespace {

// A gilt valued on the first day of the delivery month at yield y
// (semiannual): every remaining flow discounted over (days to the next
// coupon / days in the period) + k periods; the next coupon is dropped when
// ex-dividend; accrued interest act/act (act/365 before November 1998).
double gilt_by_hand(double c, double y, int32_t s, int32_t previous, int32_t next,
                    int32_t later, bool ex_dividend, bool act_365) {
  const double v = 1.0 / (1.0 + y / 2.0);
  const double t = static_cast<double>(next - s) / (next - previous);
  double dirty = ex_dividend ? 0.0 : c / 2.0 * std::pow(v, t);
  for (int32_t k = 1; k <= later; ++k) dirty += c / 2.0 * std::pow(v, t + k);
  dirty += std::pow(v, t + later);
  double accrued = 0.0;
  if (act_365) {
    accrued = ex_dividend ? -c * (next - s) / 365.0 : c * (s - previous) / 365.0;
  } else {
    accrued = ex_dividend ? -c / 2.0 * (next - s) / (next - previous)
                          : c / 2.0 * (s - previous) / (next - previous);
  }
  return round_to(dirty - accrued, 7);
}

}  // namespace

// LIFFE long gilt (code 2). An 8 % gilt maturing 7 December 2010 valued on
// 1 June 2000: the 7 June coupon went ex on 30 May (seven business days
// back from Wednesday 7 June is Monday 29 May, plus one day), so the
// buyer gets no coupon and the accrued interest is negative.
TEST(GiltFactor, LongGiltExAndCumDividend) {
  FactorCall call;
  call.contract = 2;
  call.coupon = 0.08;
  call.delivery = serial(2000, 6, 15);
  call.maturity = serial(2010, 12, 7);
  const int32_t s = serial(2000, 6, 1);
  const int32_t previous = serial(1999, 12, 7), next = serial(2000, 6, 7);
  EXPECT_DOUBLE_EQ(call.run(), gilt_by_hand(0.08, 0.07, s, previous, next, 21, true, false));
  EXPECT_EQ(call.error, 0);
  // An ex-dividend period of three calendar days keeps it cum-dividend.
  const int32_t three_days = -3;
  call.extra = &three_days;
  EXPECT_DOUBLE_EQ(call.run(), gilt_by_hand(0.08, 0.07, s, previous, next, 21, false, false));
  // 37 calendar days (the older rule) makes it ex-dividend again.
  const int32_t old_rule = -37;
  call.extra = &old_rule;
  EXPECT_DOUBLE_EQ(call.run(), gilt_by_hand(0.08, 0.07, s, previous, next, 21, true, false));
  // Extreme periods are harmless (both put the ex date far back); a period
  // of 0 days goes ex on the coupon date itself.
  const int32_t forever = INT32_MIN;
  call.extra = &forever;
  EXPECT_DOUBLE_EQ(call.run(), gilt_by_hand(0.08, 0.07, s, previous, next, 21, true, false));
  const int32_t none = 0;
  call.extra = &none;
  EXPECT_DOUBLE_EQ(call.run(), gilt_by_hand(0.08, 0.07, s, previous, next, 21, false, false));
  const int32_t long_count = INT32_MAX;
  call.extra = &long_count;
  EXPECT_DOUBLE_EQ(call.run(), gilt_by_hand(0.08, 0.07, s, previous, next, 21, true, false));
  call.extra = nullptr;
  // Medium gilt (code 22): 4 to 7 years; this one is 10.5 years out.
  call.contract = 22;
  call.run();
  EXPECT_EQ(call.error, 910);
  call.maturity = serial(2005, 12, 7);
  EXPECT_DOUBLE_EQ(call.run(), gilt_by_hand(0.08, 0.07, s, previous, next, 11, true, false));
  EXPECT_EQ(call.error, 0);
}

// Before the March 1998 contract the long gilt was a 9 % notional with a
// 10 to 15 year basket, and gilts accrued actual/365.
TEST(GiltFactor, OldContractTerms) {
  FactorCall call;
  call.contract = 2;
  call.coupon = 0.08;
  call.delivery = serial(1997, 6, 1);
  call.maturity = serial(2008, 9, 15);  // 11.3 years from 1 June 1997
  const int32_t s = serial(1997, 6, 1);
  EXPECT_DOUBLE_EQ(call.run(), gilt_by_hand(0.08, 0.09, s, serial(1997, 3, 15),
                                            serial(1997, 9, 15), 22, false, true));
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2007, 3, 15);  // 9.8 years: outside 10..15
  call.run();
  EXPECT_EQ(call.error, 910);
  call.delivery = serial(1998, 3, 1);  // the new terms: 9 years in 8.75..13
  call.run();
  EXPECT_EQ(call.error, 0);
}

namespace {

// The BTP rule before the euro: semiannual compounding at the notional,
// t = actual days to the next coupon / 182.5, accrued 30/360.
double btp_by_hand(double c, double n, int32_t d, int32_t next, int32_t later,
                   int32_t days_30_360) {
  const double g = 1.0 + n / 2.0;
  const double t = (next - d) / 182.5;
  double dirty = 0.0;
  for (int32_t k = 0; k <= later; ++k) dirty += c / 2.0 * std::pow(g, -(t + k));
  dirty += std::pow(g, -(t + later));
  return round_to(dirty - c * days_30_360 / 360.0, 6);
}

}  // namespace

// BTP contracts delivered on 10 June 1998 (a Wednesday): a bond maturing
// 1 November 2007 has 144 days to the 1 November 1998 coupon, 18 coupons
// after it and 39 days (30/360) accrued since 1 May.
TEST(BtpFactor, ClosedFormBeforeMarch1999) {
  FactorCall call;
  call.contract = 45;  // 6 %, 8 to 10 years before 1999
  call.coupon = 0.0775;
  call.delivery = serial(1998, 6, 1);
  call.maturity = serial(2007, 11, 1);
  const int32_t d = serial(1998, 6, 10), next = serial(1998, 11, 1);
  EXPECT_DOUBLE_EQ(call.run(), btp_by_hand(0.0775, 0.06, d, next, 18, 39));
  EXPECT_EQ(call.error, 0);
  call.contract = 6;  // LIFFE BTP: 8 % before December 1998
  EXPECT_DOUBLE_EQ(call.run(), btp_by_hand(0.0775, 0.08, d, next, 18, 39));
  EXPECT_EQ(call.error, 0);
  call.contract = 46;  // 3.5 to 5 years
  call.run();
  EXPECT_EQ(call.error, 910);
  call.contract = 45;
  call.maturity = serial(2008, 11, 1);  // 10.4 years: outside before 1999
  call.run();
  EXPECT_EQ(call.error, 910);
  const double negative = -0.01;
  call.notional = &negative;
  call.run();
  EXPECT_EQ(call.error, 920);
}
