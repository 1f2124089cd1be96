// Conversion factors that the exchanges define as the price of the bond at
// the notional yield on the delivery day. Each case settles on a coupon
// date, where the price is the plain annuity
//
//   sum over k = 1..N of (c/f) (1 + y/f)^-k  +  (1 + y/f)^-N
//
// worked by hand here (f coupons a year, N coupons left, no accrued).
#include <gtest/gtest.h>

#include <cmath>

#include "futures_test_support.h"

using futures_test::FactorCall;
using futures_test::serial;

namespace {

double annuity_price(double c, double y, int32_t f, int32_t n) {
  double value = std::pow(1.0 + y / f, -n);
  for (int32_t k = 1; k <= n; ++k) value += c / f * std::pow(1.0 + y / f, -k);
  return value;
}

double round_to(double x, int decimals) {
  const double scale = std::pow(10.0, decimals);
  return std::floor(x * scale + 0.5) / scale;
}

}  // namespace

// Euro-Bund (contract 15) since the euro conventions: delivered Thursday
// 10 March 2005, a bond maturing 10 March 2014 prices at 6 % under the
// generic semiannual conventions: 18 half-years left.
TEST(PriceBasedFactor, BundAfterTheEuro) {
  FactorCall call;
  call.contract = 15;
  call.delivery = serial(2005, 3, 1);
  call.maturity = serial(2014, 3, 10);
  call.coupon = 0.05;
  EXPECT_DOUBLE_EQ(call.run(), round_to(annuity_price(0.05, 0.06, 2, 18), 6));
  EXPECT_EQ(call.error, 0);
  call.coupon = 0.06;
  EXPECT_DOUBLE_EQ(call.run(), 1.0);
  EXPECT_EQ(call.error, 0);
}

// MEFF 10-year (contract 8): delivery on the third Wednesday; a notional
// override of exactly zero is accepted here (and refused under the U.S.
// rules): at a zero yield the price is par plus the nine remaining coupons.
TEST(PriceBasedFactor, SpanishContractAcceptsZeroNotional) {
  FactorCall call;
  call.contract = 8;
  call.coupon = 0.04;
  call.delivery = serial(2005, 6, 1);
  call.maturity = serial(2014, 6, 16);  // 9 years and a day from 15 June 2005
  const double zero = 0.0;
  call.notional = &zero;
  const double f = call.run();
  EXPECT_EQ(call.error, 0);
  // Settling the day before the 16 June coupon: ten coupons and par are
  // left, less the accrued 364/365 of a coupon (act/act, annual).
  EXPECT_NEAR(f, 1.0 + 10 * 0.04 - 0.04 * 364.0 / 365.0, 1e-6);
  call.contract = 0;
  call.run();
  EXPECT_EQ(call.error, 920);
  // The 15-year contract (11) with a later delivery date given: Monday
  // 16 June 2005 to 16 June 2025, twenty annual coupons at 6.5 %.
  call.contract = 11;
  call.notional = nullptr;
  call.delivery = serial(2005, 6, 16);
  call.maturity = serial(2025, 6, 16);
  call.coupon = 0.0525;
  EXPECT_DOUBLE_EQ(call.run(), round_to(annuity_price(0.0525, 0.065, 1, 20), 7));
  EXPECT_EQ(call.error, 0);
}

// Belfox (contract 25): the last business day of the month, Thursday
// 30 June 2005; a given date within the last five days replaces it, an
// earlier one does not.
TEST(PriceBasedFactor, BelgianContractLastBusinessDay) {
  FactorCall call;
  call.contract = 25;
  call.coupon = 0.0575;
  call.maturity = serial(2014, 6, 30);
  call.delivery = serial(2005, 6, 20);
  const double f = call.run();
  EXPECT_EQ(call.error, 0);
  EXPECT_DOUBLE_EQ(f, round_to(annuity_price(0.0575, 0.09, 1, 9), 4));
  call.delivery = serial(2005, 6, 27);
  call.run();
  EXPECT_EQ(call.error, 0);
  call.contract = 26;  // 3.5 to 5.5 years
  call.run();
  EXPECT_EQ(call.error, 910);
}

// MATIF Euro notional (contract 37): the OAT is valued for the business
// day before the third Wednesday (Tuesday 14 June 2005); an OAT maturing
// 14 June 2014 has 9 annual coupons left at 5.5 %.
TEST(PriceBasedFactor, MatifNotionalOnOats) {
  FactorCall call;
  call.contract = 37;
  call.coupon = 0.04;
  call.delivery = serial(2005, 6, 1);
  call.maturity = serial(2014, 6, 14);
  EXPECT_DOUBLE_EQ(call.run(), round_to(annuity_price(0.04, 0.055, 1, 9), 6));
  EXPECT_EQ(call.error, 0);
  call.contract = 36;  // 2-year contract
  call.run();
  EXPECT_EQ(call.error, 910);
}

// LIFFE long gilt priced as a gilt (contract 34): 7 %, valued on Tuesday
// 14 June 2005, 21 half-years to 14 December 2015.
TEST(PriceBasedFactor, LongGiltPricedAsGilt) {
  FactorCall call;
  call.contract = 34;
  call.coupon = 0.05;
  call.delivery = serial(2005, 6, 1);
  call.maturity = serial(2015, 12, 14);
  EXPECT_DOUBLE_EQ(call.run(), round_to(annuity_price(0.05, 0.07, 2, 21), 6));
  EXPECT_EQ(call.error, 0);
}

// Porto (contract 55): two business days before the third Wednesday, then
// three on (Thursday 16 June 2005); 4.5 % since September 1999.
TEST(PriceBasedFactor, PortugueseContract) {
  FactorCall call;
  call.contract = 55;
  call.coupon = 0.05;
  call.delivery = serial(2005, 6, 1);
  call.maturity = serial(2014, 6, 16);
  EXPECT_DOUBLE_EQ(call.run(), round_to(annuity_price(0.05, 0.045, 1, 9), 7));
  EXPECT_EQ(call.error, 0);
  call.maturity = serial(2016, 6, 16);  // 11 years: outside 7.5..10.5
  call.run();
  EXPECT_EQ(call.error, 910);
}

// BTP contracts after March 1999: the generic semiannual price at the
// notional on the delivery day (Friday 10 June 2005).
TEST(PriceBasedFactor, BtpAfterMarch1999) {
  FactorCall call;
  call.contract = 6;
  call.coupon = 0.0425;
  call.delivery = serial(2005, 6, 1);
  call.maturity = serial(2014, 12, 10);
  EXPECT_DOUBLE_EQ(call.run(), round_to(annuity_price(0.0425, 0.06, 2, 19), 6));
  EXPECT_EQ(call.error, 0);
  call.contract = 47;  // long-term contract: 15 years and more, 5 %
  call.maturity = serial(2035, 6, 10);
  EXPECT_DOUBLE_EQ(call.run(), round_to(annuity_price(0.0425, 0.05, 2, 60), 6));
  EXPECT_EQ(call.error, 0);
}
