// The FRN cash-flow table: one row per period, rows that reprice the note,
// and the release of the table.
#include <gtest/gtest.h>

#include <cmath>

#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::Note;
using testing::ymd;

Note reset_note() {
  Note note;
  note.rates = {0.05, 0.052, 0.049};
  note.rate_dates = {ymd(2025, 12, 15), ymd(2026, 6, 15), ymd(2028, 1, 10)};
  return note;
}

// Dirty price per unit from the table, discounted as the note is: periods of
// 180 days (act/360, semi-annual) from settlement, 1 March 2026.
double reprice(const int32_t* dates, const double* amounts, int32_t rows, double y) {
  const int32_t settlement = ymd(2026, 3, 1);
  double pv = 0.0;
  for (int32_t i = 0; i < rows; ++i) {
    pv += amounts[i] / 100.0 * std::pow(1.0 + y / 2.0, -(dates[i] - settlement) / 180.0);
  }
  return pv;
}

TEST(FrnCashFlows, RowsRepriceTheNote) {
  const Note note = reset_note();
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  int32_t err = -1;
  const int32_t rows = note.cash_flows(&dates, &amounts, nullptr, &err);
  ASSERT_EQ(err, 0);
  ASSERT_EQ(rows, 9);  // 15 June 2026 ... 15 June 2030
  EXPECT_EQ(dates[0], ymd(2026, 6, 15));
  EXPECT_EQ(dates[8], ymd(2030, 6, 15));
  // 15 December 2027 - 15 June 2028 straddles the 10 January reset: 26 days
  // at 5.2%, 157 days at 4.9%.
  EXPECT_NEAR(amounts[4], 100.0 * (0.052 * 26 + 0.049 * 157) / 360.0, 1e-12);
  const double y = 0.047;
  const double dirty = (note.price(y, &err) + note.accrued(&err)) / 100.0;
  EXPECT_NEAR(reprice(dates, amounts, rows, y), dirty, 1e-12);
  KVLfrncshflw_free(dates, amounts);
}

TEST(FrnCashFlows, TaxesReduceCouponsAndTheRedemption) {
  Note note = reset_note();
  const double income = 0.25, gain = 0.2, price = 97.0;
  note.income_tax = &income;
  note.gain_tax = &gain;
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  int32_t err = -1;
  const int32_t rows = note.cash_flows(&dates, &amounts, &price, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NEAR(amounts[0], 0.75 * 100.0 * 0.05 * 182.0 / 360.0, 1e-12);
  const double last_coupon = 0.75 * 100.0 * 0.049 * 182.0 / 360.0;  // 15 Dec 2029 - 15 Jun 2030
  EXPECT_NEAR(amounts[rows - 1], last_coupon + 100.0 - 0.2 * 3.0, 1e-12);
  // At the yield that gives this price, the taxed table reprices it.
  const double y = note.yield(price, &err);
  ASSERT_EQ(err, 0);
  const double dirty = price / 100.0 + 0.75 * note.accrued(&err) / 100.0;
  EXPECT_NEAR(reprice(dates, amounts, rows, y), dirty, 1e-6);
  KVLfrncshflw_free(dates, amounts);
  // At or above redemption the redemption is untaxed.
  const double at_par = 100.0;
  ASSERT_EQ(note.cash_flows(&dates, &amounts, &at_par, &err), rows);
  EXPECT_NEAR(amounts[rows - 1], last_coupon + 100.0, 1e-12);
  KVLfrncshflw_free(dates, amounts);
}

TEST(FrnCashFlows, LastPeriodHasOneRow) {
  Note note = reset_note();
  note.maturity = ymd(2026, 6, 15);
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  int32_t err = -1;
  ASSERT_EQ(note.cash_flows(&dates, &amounts, nullptr, &err), 1);
  EXPECT_NEAR(amounts[0], 100.0 + 100.0 * 0.05 * 182.0 / 360.0, 1e-12);
  KVLfrncshflw_free(dates, amounts);
}

TEST(FrnCashFlows, FailureHandsOutNothing) {
  Note note = reset_note();
  note.settlement = note.maturity + 1;
  int32_t* dates = reinterpret_cast<int32_t*>(&note);  // must be overwritten
  double* amounts = reinterpret_cast<double*>(&note);
  int32_t err = -1;
  EXPECT_EQ(note.cash_flows(&dates, &amounts, nullptr, &err), 0);
  EXPECT_EQ(err, 160);
  EXPECT_EQ(dates, nullptr);
  EXPECT_EQ(amounts, nullptr);
  EXPECT_EQ(note.cash_flows(nullptr, &amounts, nullptr, &err), 0);
  EXPECT_EQ(err, 50);
  KVLfrncshflw_free(nullptr, nullptr);
}

TEST(FrnCashFlows, OverflowingAmountFailsWithNothingHeld) {
  // A rate of 3e307 is a finite number, yet its coupon per 100 is not: the
  // whole table fails rather than hand out an infinite row (found by fuzzing).
  Note note;
  note.rates = {2.9542949574154552e307};
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  int32_t err = -1;
  EXPECT_EQ(note.cash_flows(&dates, &amounts, nullptr, &err), 0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(dates, nullptr);
  EXPECT_EQ(amounts, nullptr);
  // The same note at a sane rate still has its table.
  note.rates = {0.05};
  EXPECT_GT(note.cash_flows(&dates, &amounts, nullptr, &err), 0);
  EXPECT_EQ(err, 0);
  KVLfrncshflw_free(dates, amounts);
}

}  // namespace
}  // namespace kbond::frn
