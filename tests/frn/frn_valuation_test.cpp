// FRN price, yield, accrued interest, taxes, cash-flow table and risk
// measures: hand-computed prices, the money-market last period, round trips,
// tables that reprice the note and derivatives against finite differences.
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

TEST(FrnPrice, HandComputedPricesCompoundedAndInTheLastPeriod) {
  int32_t err = -1;
  // Coupons 5% x 182/360 on 15 June and 5.2% x 183/360 on 15 December, in
  // periods of 180 days from the previous coupon date: 106/180 and 289/180.
  const double v = 1.0 / (1.0 + 0.051 / 2.0);
  const double two_periods = 0.05 * 182.0 / 360.0 * std::pow(v, 106.0 / 180.0) +
                             (0.052 * 183.0 / 360.0 + 1.0) * std::pow(v, 289.0 / 180.0) - 0.05 * 76.0 / 360.0;
  EXPECT_NEAR(two_rate_note(ymd(2026, 12, 15)).price(0.051, &err), 100.0 * two_periods, 1e-11);
  ASSERT_EQ(err, 0);
  // Last period, simple interest: (1 + 5% x 182/360) / (1 + 4.8% x 106/360) - 5% x 76/360.
  const double last = (1.0 + 0.05 * 182.0 / 360.0) / (1.0 + 0.048 * 106.0 / 360.0) - 0.05 * 76.0 / 360.0;
  EXPECT_NEAR(two_rate_note(ymd(2026, 6, 15)).price(0.048, &err), 100.0 * last, 1e-12);
  EXPECT_EQ(err, 0);
}

TEST(FrnTax, GainIsTaxedOnlyBelowRedemption) {
  // Last period with income and gain tax, the gain not treated as income.
  Note last = two_rate_note(ymd(2026, 6, 15));
  const double income = 0.3, gain = 0.2;
  const int32_t no_holding = 0;
  last.income_tax = &income;
  last.gain_tax = &gain;
  last.holding = &no_holding;
  const double q = 0.05 * 182.0 / 360.0 * 0.7, ai = 0.05 * 76.0 / 360.0 * 0.7, t = 106.0 / 360.0;
  int32_t err = -1;
  // At 2%: above par after tax, so no gain tax: (q + 1)/(1 + y t) - AI.
  EXPECT_NEAR(last.price(0.02, &err), 100.0 * ((q + 1.0) / (1.0 + 0.02 * t) - ai), 1e-12);
  // At 9%: below par; price P solves P (1 + y t) + AI (1 + y t) = q + 1 - g (1 - P).
  const double d = 1.0 + 0.09 * t;
  EXPECT_NEAR(last.price(0.09, &err), 100.0 * (q + (1.0 - gain) - d * ai) / (d - gain), 1e-12);
  EXPECT_EQ(err, 0);
  // Compounded periods: untaxed above par; below par P = P0 - g vM (R - P),
  // vM the redemption's discount factor.
  Note plain = two_rate_note(ymd(2030, 6, 15)), taxed = plain;
  taxed.gain_tax = &gain;
  EXPECT_EQ(taxed.price(0.03, &err), plain.price(0.03, &err));
  const double p0 = plain.price(0.08, &err) / 100.0, p = taxed.price(0.08, &err) / 100.0;
  const double v_m = std::pow(1.0 / 1.04, (ymd(2030, 6, 15) - ymd(2025, 12, 15) - 76) / 180.0);
  EXPECT_NEAR(p, p0 - gain * v_m * (1.0 - p), 1e-12);
}

TEST(FrnTax, ShortHoldingTaxesTheGainAsIncome) {
  // Maturity 17 September 2026: 200 days after settlement, within 12 and 24
  // months, beyond 25 days. A holding up to 24 is in months, above in days;
  // INT32_MAX days ends with the last serial, after maturity (no overflow).
  Note note = two_rate_note(ymd(2026, 9, 17));
  const double income = 0.4, gain = 0.1, none = 0.0;
  const int32_t zero = 0, months24 = 24, days25 = 25, forever = INT32_MAX;
  note.income_tax = &income;
  int32_t err = -1;
  auto price = [&](const double* gain_rate, const int32_t* holding) {
    note.gain_tax = gain_rate, note.holding = holding;
    return note.price(0.1, &err);
  };
  const double as_income = price(&income, &zero);
  for (const int32_t* holding : {(const int32_t*)nullptr, &months24, &forever}) EXPECT_EQ(price(&gain, holding), as_income);
  EXPECT_NE(price(&gain, &days25), as_income);
  EXPECT_EQ(price(&none, nullptr), price(&none, &zero));  // a zero gain rate is never replaced
  EXPECT_EQ(err, 0);
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
  EXPECT_NEAR(KVLfrncamt(note.rates.data(), note.rate_dates.data(), 2, note.maturity, note.settlement, nullptr,
                         nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &err),
              100.0 * (0.05 * 48 + 0.06 * 134) / 360.0, 1e-12);
  EXPECT_EQ(err, 0);
}

struct Table {
  int32_t rows = 0, *dates = nullptr;
  double* amounts = nullptr;
  Table(const Note& note, const double* price = nullptr) {
    int32_t err = -1;
    rows = note.cash_flows(&dates, &amounts, price, &err);
    EXPECT_EQ(err, 0);
  }
  ~Table() { KVLfrncshflw_free(dates, amounts); }
  // Dirty price per unit, discounted in periods of 180 days from settlement.
  double reprice(int32_t settlement, double y) const {
    double pv = 0.0;
    for (int32_t i = 0; i < rows; ++i) pv += amounts[i] / 100.0 * std::pow(1.0 + y / 2.0, -(dates[i] - settlement) / 180.0);
    return pv;
  }
};

Note reset_note() {
  Note note;
  note.rates = {0.05, 0.052, 0.049};
  note.rate_dates = {ymd(2025, 12, 15), ymd(2026, 6, 15), ymd(2028, 1, 10)};
  return note;
}

TEST(FrnCashFlows, RowsRepriceTheNote) {
  Note note = reset_note();
  int32_t err = -1;
  {
    const Table t(note);
    ASSERT_EQ(t.rows, 9);  // 15 June 2026 ... 15 June 2030
    EXPECT_EQ(t.dates[0], ymd(2026, 6, 15));
    EXPECT_EQ(t.dates[8], ymd(2030, 6, 15));
    // 15 December 2027 - 15 June 2028 straddles the 10 January reset: 26 days
    // at 5.2%, 157 days at 4.9%.
    EXPECT_NEAR(t.amounts[4], 100.0 * (0.052 * 26 + 0.049 * 157) / 360.0, 1e-12);
    const double dirty = (note.price(0.047, &err) + note.accrued(&err)) / 100.0;
    EXPECT_NEAR(t.reprice(note.settlement, 0.047), dirty, 1e-12);
  }
  // Taxed: coupons net of income tax, the redemption less the gain tax below par.
  const double income = 0.25, gain = 0.2, price = 97.0, at_par = 100.0;
  note.income_tax = &income;
  note.gain_tax = &gain;
  const Table taxed(note, &price), untaxed_gain(note, &at_par);
  EXPECT_NEAR(taxed.amounts[0], 0.75 * 100.0 * 0.05 * 182.0 / 360.0, 1e-12);
  const double last_coupon = 0.75 * 100.0 * 0.049 * 182.0 / 360.0;  // 15 Dec 2029 - 15 Jun 2030
  EXPECT_NEAR(taxed.amounts[taxed.rows - 1], last_coupon + 100.0 - 0.2 * 3.0, 1e-12);
  EXPECT_NEAR(untaxed_gain.amounts[taxed.rows - 1], last_coupon + 100.0, 1e-12);
  // At the yield that gives this price, the taxed table reprices it.
  const double y = note.yield(price, &err);
  EXPECT_NEAR(taxed.reprice(note.settlement, y), price / 100.0 + 0.75 * note.accrued(&err) / 100.0, 1e-6);
  // Paying on business days moves 15 June 2030 (maturity, a Saturday) to Monday, not the amount.
  const int32_t pay = 1;
  note.pay_on_business_day = &pay;
  const Table moved(note, &price);
  EXPECT_EQ(moved.dates[moved.rows - 1], ymd(2030, 6, 17));
  EXPECT_EQ(moved.amounts[moved.rows - 1], taxed.amounts[taxed.rows - 1]);
}

TEST(FrnRisk, MeasuresMatchFiniteDifferencesAndYieldsRoundTrip) {
  const int32_t quarterly = 4, monthly = 12, weekly = 52, act365 = 1, thirty = 3;
  const double gain = 0.3, h = 1e-5;
  struct Shape { int32_t maturity; const int32_t *frequency, *day_count; } const shapes[] = {
      {ymd(2026, 6, 15), nullptr, nullptr}, {ymd(2028, 3, 15), &quarterly, &act365},
      {ymd(2035, 12, 15), &monthly, &thirty}, {ymd(2031, 6, 15), &weekly, nullptr}};
  for (const Shape& shape : shapes) {
    for (bool taxed : {false, true}) {  // a gain tax below par
      Note note;
      note.rates = {0.05, 0.052, 0.055};
      note.rate_dates = {ymd(2025, 12, 15), ymd(2026, 6, 15), ymd(2027, 6, 15)};
      note.maturity = shape.maturity, note.frequency = shape.frequency, note.day_count = shape.day_count;
      if (taxed) note.gain_tax = &gain;
      for (double y : {0.0, 0.055, 0.12}) {
        SCOPED_TRACE(::testing::Message() << shape.maturity << " taxed " << taxed << " yield " << y);
        int32_t err = -1;
        const double mid = note.price(y, &err) / 100.0, up = note.price(y + h, &err) / 100.0;
        const double down = note.price(y - h, &err) / 100.0, dirty = mid + note.accrued(&err) / 100.0;
        const double first = (up - down) / (2 * h), second = (up - 2 * mid + down) / (h * h);
        EXPECT_NEAR(note.duration(y, nullptr, &err), -first / dirty, 1e-7);
        if (!taxed) { EXPECT_NEAR(note.convexity(y, &err), second / dirty, 2e-3 * (1.0 + second / dirty)); }
        // Price change per 100 for one basis point and for a 32nd.
        EXPECT_NEAR(note.value_bp(y, nullptr, &err), -first / 100.0, 1e-8);
        EXPECT_NEAR(note.value_32(y, nullptr, &err), -first / 32.0, 1e-8);
        // The yield search stops within 1e-6 of the price per unit of par.
        const double back = note.yield(100.0 * mid, &err);
        EXPECT_NEAR(note.price(back, &err), 100.0 * mid, 1e-4);
        EXPECT_NEAR(back, y, 1e-5);
        EXPECT_EQ(err, 0);
      }
    }
  }
}

TEST(FrnRisk, MacaulayUsesTheCallsFrequencyOrTwo) {
  int32_t err = 0;
  const int32_t quarterly = 4, one = 1, zero = 0;
  Note note;
  note.type = KVLfrntype(0, &quarterly, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, 0, &err);
  const double y = 0.05, modified = note.duration(y, nullptr, &err);
  // Quarterly through the type: without a frequency argument the factor is 1 + y/2.
  EXPECT_NEAR(note.duration(y, &one, &err), modified * (1.0 + y / 2.0), 1e-14);
  note.frequency = &quarterly;
  EXPECT_NEAR(note.duration(y, &one, &err), modified * (1.0 + y / 4.0), 1e-14);
  EXPECT_EQ(note.duration(y, &zero, &err), modified);
  KVLfreefrntype(note.type);
}

}  // namespace
}  // namespace kbond::frn
