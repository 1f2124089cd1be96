// FRN price from yield and yield from price: hand-computed prices, the
// money-market last period, round trips, taxes and business-day payment.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::Note;
using testing::ymd;

// 5% fixed on 15 December 2025, 5.2% projected from 15 June 2026;
// semi-annual act/360, settlement 1 March 2026 (76 days after 15 December).
Note two_rate_note(int32_t maturity) {
  Note note;
  note.rates = {0.05, 0.052};
  note.rate_dates = {ymd(2025, 12, 15), ymd(2026, 6, 15)};
  note.maturity = maturity;
  return note;
}

TEST(FrnPrice, TwoPeriodsDiscountedAtTheNotesFrequency) {
  const Note note = two_rate_note(ymd(2026, 12, 15));
  int32_t err = -1;
  const double price = note.price(0.051, &err);
  ASSERT_EQ(err, 0);
  // Coupons 5% x 182/360 on 15 June and 5.2% x 183/360 on 15 December, in
  // periods of 180 days from the previous coupon date: 106/180 and 289/180.
  const double v = 1.0 / (1.0 + 0.051 / 2.0);
  const double expected = 0.05 * 182.0 / 360.0 * std::pow(v, 106.0 / 180.0) +
                          (0.052 * 183.0 / 360.0 + 1.0) * std::pow(v, 289.0 / 180.0) -
                          0.05 * 76.0 / 360.0;
  EXPECT_NEAR(price, 100.0 * expected, 1e-11);
}

TEST(FrnPrice, LastPeriodIsPricedWithSimpleInterest) {
  const Note note = two_rate_note(ymd(2026, 6, 15));
  int32_t err = -1;
  const double price = note.price(0.048, &err);
  ASSERT_EQ(err, 0);
  // (1 + 5% x 182/360) / (1 + 4.8% x 106/360) - 5% x 76/360
  const double expected = (1.0 + 0.05 * 182.0 / 360.0) / (1.0 + 0.048 * 106.0 / 360.0) - 0.05 * 76.0 / 360.0;
  EXPECT_NEAR(price, 100.0 * expected, 1e-12);
  // And not by compounding: (1 + y/2)^(106/180) differs.
  const double compounded =
      (1.0 + 0.05 * 182.0 / 360.0) * std::pow(1.0 + 0.048 / 2.0, -106.0 / 180.0) - 0.05 * 76.0 / 360.0;
  EXPECT_GT(std::fabs(price - 100.0 * compounded), 1e-4);
}

TEST(FrnPrice, LastPeriodTaxesCouponAsIncomeAndGainAtMaturity) {
  Note note = two_rate_note(ymd(2026, 6, 15));
  const double income = 0.3, gain = 0.2;
  const int32_t no_holding = 0;  // the gain is not treated as income
  note.income_tax = &income;
  note.gain_tax = &gain;
  note.holding = &no_holding;
  const double q = 0.05 * 182.0 / 360.0 * 0.7, ai = 0.05 * 76.0 / 360.0 * 0.7, t = 106.0 / 360.0;
  int32_t err = -1;
  // At 2%: above par after tax, so no gain tax: (q + 1)/(1 + y t) - AI.
  EXPECT_NEAR(note.price(0.02, &err), 100.0 * ((q + 1.0) / (1.0 + 0.02 * t) - ai), 1e-12);
  EXPECT_GT(note.price(0.02, &err), 100.0);
  // At 9%: below par; price P solves P (1 + y t) + AI (1 + y t) = q + 1 - g (1 - P).
  const double d = 1.0 + 0.09 * t;
  EXPECT_NEAR(note.price(0.09, &err), 100.0 * (q + (1.0 - gain) - d * ai) / (d - gain), 1e-12);
  EXPECT_EQ(err, 0);
}

TEST(FrnYield, RoundTripsThroughPrice) {
  const int32_t quarterly = 4, monthly = 12, weekly = 52;
  const int32_t* frequencies[] = {nullptr, &quarterly, &monthly, &weekly};
  const int32_t act365 = 1, thirty = 3;
  const int32_t* day_counts[] = {nullptr, &act365, &thirty};
  for (const int32_t* frequency : frequencies) {
    for (const int32_t* day_count : day_counts) {
      for (int32_t maturity : {ymd(2026, 6, 15), ymd(2031, 6, 15)}) {
        for (double y : {0.0, 0.03, 0.051, 0.12}) {
          Note note = two_rate_note(maturity);
          note.frequency = frequency;
          note.day_count = day_count;
          int32_t err = -1;
          const double price = note.price(y, &err);
          ASSERT_EQ(err, 0);
          const double back = note.yield(price, &err);
          ASSERT_EQ(err, 0);
          // The search stops within 1e-6 of the price per unit of par.
          EXPECT_NEAR(note.price(back, &err), price, 1e-4);
          EXPECT_NEAR(back, y, 1e-5) << "frequency " << (frequency ? *frequency : 2);
        }
      }
    }
  }
}

TEST(FrnYield, RoundTripsWithTaxes) {
  Note note = two_rate_note(ymd(2030, 6, 15));
  const double income = 0.25, gain = 0.15;
  note.income_tax = &income;
  note.gain_tax = &gain;
  for (double y : {0.02, 0.05, 0.08}) {
    int32_t err = -1;
    const double price = note.price(y, &err);
    EXPECT_NEAR(note.yield(price, &err), y, 1e-5);
    EXPECT_EQ(err, 0);
  }
}

TEST(FrnTax, GainIsTaxedOnlyBelowRedemption) {
  Note plain = two_rate_note(ymd(2030, 6, 15));
  Note taxed = plain;
  const double gain = 0.3;
  taxed.gain_tax = &gain;
  int32_t err = 0;
  // At 3% the note is above par: the gain tax changes nothing.
  EXPECT_EQ(taxed.price(0.03, &err), plain.price(0.03, &err));
  // At 8% it is below par: P = P0 - g vM (R - P), vM the redemption's
  // discount factor, so the taxed price is lower and satisfies the relation.
  const double p0 = plain.price(0.08, &err) / 100.0;
  const double p = taxed.price(0.08, &err) / 100.0;
  const double v_m = std::pow(1.0 / 1.04, (ymd(2030, 6, 15) - ymd(2025, 12, 15) - 76) / 180.0);
  EXPECT_LT(p, p0);
  EXPECT_NEAR(p, p0 - gain * v_m * (1.0 - p), 1e-12);
}

TEST(FrnTax, ShortHoldingTaxesTheGainAsIncome) {
  // Maturity 15 December 2026, within 12 months of settlement.
  Note base = two_rate_note(ymd(2026, 12, 15));
  const double income = 0.4, gain = 0.1, gain_as_income = 0.4, none = 0.0;
  const int32_t zero_months = 0;
  Note short_holding = base;
  short_holding.income_tax = &income;
  short_holding.gain_tax = &gain;
  Note as_income = base;
  as_income.income_tax = &income;
  as_income.gain_tax = &gain_as_income;
  as_income.holding = &zero_months;
  int32_t err = 0;
  EXPECT_EQ(short_holding.price(0.09, &err), as_income.price(0.09, &err));
  // A zero gain rate is never replaced by the income rate.
  Note untaxed_gain = base;
  untaxed_gain.income_tax = &income;
  untaxed_gain.gain_tax = &none;
  Note untaxed_long = untaxed_gain;
  untaxed_long.holding = &zero_months;
  EXPECT_EQ(untaxed_gain.price(0.09, &err), untaxed_long.price(0.09, &err));
}

TEST(FrnTax, HoldingAbove24IsCountedInDays) {
  // Maturity 200 days after settlement: within 24 months, beyond 25 days.
  Note note = two_rate_note(ymd(2026, 9, 17));
  const double income = 0.4, gain = 0.1;
  note.income_tax = &income;
  note.gain_tax = &gain;
  const int32_t months24 = 24, days25 = 25;
  Note months = note, days = note, long_rate = note;
  months.holding = &months24;
  days.holding = &days25;
  const double income_rate = 0.4;
  long_rate.gain_tax = &income_rate;
  long_rate.holding = &days25;
  int32_t err = 0;
  EXPECT_EQ(months.price(0.1, &err), long_rate.price(0.1, &err));  // gain taxed as income
  EXPECT_NE(days.price(0.1, &err), months.price(0.1, &err));
  const int32_t negative = -1;
  days.holding = &negative;
  EXPECT_EQ(days.price(0.1, &err), -1.0);
  EXPECT_EQ(err, 460);
  // A holding of INT32_MAX days ends with the last serial, after maturity:
  // the gain is taxed as income, as under 24 months (no overflow on the way).
  const int32_t forever = INT32_MAX;
  days.holding = &forever;
  EXPECT_EQ(days.price(0.1, &err), months.price(0.1, &err));
  EXPECT_EQ(err, 0);
}

TEST(FrnPrice, PayingOnBusinessDaysDiscountsToAdjustedDates) {
  // 15 June 2030 (maturity) and 15 December 2029 fall on Saturdays.
  Note note = two_rate_note(ymd(2030, 6, 15));
  const int32_t pay = 1;
  Note on_business_days = note;
  on_business_days.pay_on_business_day = &pay;
  int32_t err = -1;
  const double unadjusted = note.price(0.05, &err);
  const double adjusted = on_business_days.price(0.05, &err);
  ASSERT_EQ(err, 0);
  EXPECT_LT(adjusted, unadjusted);
  // Same accrued coupons, paid two days later: the last flow's discount
  // grows by two days over 180-day periods, the 15 December 2029 one too.
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  const int32_t rows = on_business_days.cash_flows(&dates, &amounts, nullptr, &err);
  ASSERT_EQ(err, 0);
  int32_t* plain_dates = nullptr;
  double* plain_amounts = nullptr;
  ASSERT_EQ(note.cash_flows(&plain_dates, &plain_amounts, nullptr, &err), rows);
  EXPECT_EQ(dates[rows - 1], ymd(2030, 6, 17));
  EXPECT_EQ(plain_dates[rows - 1], ymd(2030, 6, 15));
  EXPECT_EQ(dates[rows - 2], ymd(2029, 12, 17));
  for (int32_t i = 0; i < rows; ++i) EXPECT_EQ(amounts[i], plain_amounts[i]);
  KVLfrncshflw_free(dates, amounts);
  KVLfrncshflw_free(plain_dates, plain_amounts);
}

TEST(FrnAccrued, WalksTheRateScheduleAndAddsExtraDays) {
  // Rate reset on 1 February 2026 inside the current period: 5% for 48 days,
  // 6% for 28 days to settlement, over 360.
  Note note;
  note.rates = {0.05, 0.06};
  note.rate_dates = {ymd(2025, 12, 15), ymd(2026, 2, 1)};
  int32_t err = -1;
  EXPECT_NEAR(note.accrued(&err), 100.0 * (0.05 * 48 + 0.06 * 28) / 360.0, 1e-12);
  // Coupon amount of the period: 48 days at 5%, 134 days at 6%.
  const double amount =
      KVLfrncamt(note.rates.data(), note.rate_dates.data(), 2, note.maturity, note.settlement, nullptr,
                 nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &err);
  EXPECT_NEAR(amount, 100.0 * (0.05 * 48 + 0.06 * 134) / 360.0, 1e-12);
  EXPECT_EQ(err, 0);
}

}  // namespace
}  // namespace kbond::frn
