// KVLbcshflw: hand-checked tables, tables that reprice the bond at its
// yield for every shape of schedule, tax on the gain, and the ownership
// rules of the library-allocated arrays.
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

struct Table {
  int32_t rows = 0;
  int32_t error = 0;
  int32_t* dates = nullptr;
  double* coupons = nullptr;
  double* principal = nullptr;
  double* periods = nullptr;

  explicit Table(const QuotedBond& bond, const double* price = nullptr) {
    rows = bond.cash_flows(&dates, &coupons, &principal, &periods, price, &error);
  }
  ~Table() { KVLbcshflw_free(dates, coupons, principal, periods); }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  // Sum of the rows discounted at yield y compounded f times a year.
  double present_value(double y, int f) const {
    double pv = 0.0;
    for (int32_t i = 0; i < rows; ++i)
      pv += (coupons[i] + principal[i]) * std::pow(1.0 + y / f, -periods[i]);
    return pv;
  }
};

// Two years of a 5 % Treasury settled 12 March 2024, coupons on 15 May and
// 15 November: t0 = 64 / 184 of a period (12 Mar..15 May over 15 Nov..15 May).
TEST(CashFlowTable, TreasuryNoteByHand) {
  QuotedBond note;
  note.coupon(0.05).matures(civil_serial(2026, 5, 15)).settles(civil_serial(2024, 3, 12));
  Table t(note);
  ASSERT_EQ(t.error, 0);
  ASSERT_EQ(t.rows, 5);
  const int32_t expected_dates[] = {civil_serial(2024, 5, 15), civil_serial(2024, 11, 15),
                                    civil_serial(2025, 5, 15), civil_serial(2025, 11, 15),
                                    civil_serial(2026, 5, 15)};
  const double t0 = 64.0 / 182.0;  // 15 Nov 2023 .. 15 May 2024 is 182 days
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(t.dates[i], expected_dates[i]);
    EXPECT_DOUBLE_EQ(t.coupons[i], 2.5);
    EXPECT_DOUBLE_EQ(t.principal[i], i == 4 ? 100.0 : 0.0);
    EXPECT_NEAR(t.periods[i], t0 + i, 1e-12);
  }
}

// 10 % of the initial face repaid each 15 June from 2026 to 2033, the
// last 20 % at maturity on 15 June 2034: coupons fall with the face.
TEST(CashFlowTable, SinkingFundPrincipalAndCoupons) {
  QuotedBond sinker;
  sinker.type = 500;
  sinker.coupon(0.06).matures(civil_serial(2034, 6, 15)).settles(civil_serial(2024, 3, 12));
  sinker.factor = 1.0;
  sinker.sink_dates = {civil_serial(2026, 6, 15)};
  sinker.sink_amounts = {0.10};
  sinker.sink_frequency = 1;
  sinker.frequency = 2;
  Table t(sinker);
  ASSERT_EQ(t.error, 0);
  ASSERT_EQ(t.rows, 21);  // 15 Jun 2024 .. 15 Jun 2034
  double outstanding = 1.0, repaid = 0.0;
  for (int i = 0; i < t.rows; ++i) {
    EXPECT_NEAR(t.coupons[i], 3.0 * outstanding, 1e-12) << i;
    const bool sink_date = i >= 4 && i % 2 == 0 && i < 20;  // each June from 2026
    const double expected = i == 20 ? 100.0 * outstanding : (sink_date ? 10.0 : 0.0);
    EXPECT_NEAR(t.principal[i], expected, 1e-9) << i;
    repaid += t.principal[i];
    outstanding -= t.principal[i] / 100.0;
  }
  EXPECT_NEAR(repaid, 100.0, 1e-9);
}

// Bought at 90 and redeemed at 100: the 10 point gain is taxed at the
// capital-gains rate (25 %: 97.50 net) or, when the bond matures before the
// tax horizon (12 months by default), as income at the coupon tax (40 %:
// 96.00 net). Without a capital-gains rate nothing is taxed.
TEST(CashFlowTable, TaxOnTheGainOverThePrice) {
  QuotedBond bond;
  bond.type = 500;
  bond.coupon(0.03).matures(civil_serial(2029, 6, 1)).settles(civil_serial(2024, 3, 12));
  bond.has_coupon_tax = bond.has_discount_tax = true;
  bond.coupon_tax = 0.40;
  bond.discount_tax = 0.25;
  const double bought = 90.0, above_par = 101.0;
  {
    Table t(bond, &bought);
    EXPECT_NEAR(t.principal[t.rows - 1], 97.5, 1e-12);
    EXPECT_NEAR(t.coupons[1], 1.5 * 0.6, 1e-12);
  }
  {
    Table t(bond, &above_par);
    EXPECT_NEAR(t.principal[t.rows - 1], 100.0, 1e-12);
  }
  QuotedBond short_bond = bond;
  short_bond.matures(civil_serial(2024, 12, 1));
  {
    Table t(short_bond, &bought);
    EXPECT_NEAR(t.principal[t.rows - 1], 96.0, 1e-12);
  }
  QuotedBond untaxed = bond;
  untaxed.has_discount_tax = false;
  {
    Table t(untaxed, &bought);
    EXPECT_NEAR(t.principal[t.rows - 1], 100.0, 1e-12);
  }
}

// The rows discounted at the yield give back the dirty price, whatever the
// shape of the schedule.
TEST(CashFlowTable, RowsRepriceTheBond) {
  const int32_t settle = civil_serial(2024, 3, 12);
  struct Case {
    const char* name;
    QuotedBond bond;
    int f;
  };
  std::vector<Case> cases;
  QuotedBond regular;
  regular.type = 500;
  regular.coupon(0.045).matures(civil_serial(2039, 8, 15)).settles(settle);
  cases.push_back({"regular", regular, 2});

  QuotedBond stepped = regular;
  stepped.rates = {0.02, 0.035, 0.05};
  stepped.dates = {civil_serial(2026, 8, 15), civil_serial(2030, 8, 15), civil_serial(2039, 8, 15)};
  cases.push_back({"stepped", stepped, 2});

  QuotedBond odd_first = regular;
  odd_first.dated_date = civil_serial(2024, 2, 20);
  odd_first.first_coupon = civil_serial(2025, 2, 15);  // long first coupon
  cases.push_back({"odd first", odd_first, 2});

  QuotedBond odd_last = odd_first;
  odd_last.matures(civil_serial(2039, 10, 1));  // off the grid through 15 Feb
  cases.push_back({"odd last", odd_last, 2});

  QuotedBond gilt;  // ex-dividend: 7 March coupon, settled 4 March
  gilt.type = 40;
  gilt.coupon(0.04125).matures(civil_serial(2029, 9, 7)).settles(civil_serial(2024, 3, 4));
  cases.push_back({"gilt ex-dividend", gilt, 2});

  QuotedBond colombian;  // exponents in actual days over 365
  colombian.type = 370;
  colombian.coupon(0.07).matures(civil_serial(2031, 9, 18)).settles(settle);
  cases.push_back({"actual/365 exponents", colombian, 1});

  QuotedBond business_days = regular;  // 15 Aug 2026 is a Saturday
  business_days.yield_method = 1;
  business_days.holidays = {civil_serial(2024, 8, 15)};  // and 2024's is a holiday
  cases.push_back({"business-day payments", business_days, 2});

  QuotedBond sinking = regular;
  sinking.factor = 1.0;
  sinking.sink_dates = {civil_serial(2030, 8, 15)};
  sinking.sink_amounts = {0.0625};
  sinking.sink_frequency = 1;
  sinking.frequency = 2;
  cases.push_back({"sinking fund", sinking, 2});

  QuotedBond sinking_started = sinking;
  sinking_started.settles(civil_serial(2032, 11, 3));
  cases.push_back({"sinking fund under way", sinking_started, 2});

  QuotedBond taxed = regular;
  taxed.has_coupon_tax = taxed.has_discount_tax = true;
  taxed.coupon_tax = 0.125;
  taxed.discount_tax = 0.125;
  cases.push_back({"taxed", taxed, 2});

  for (const Case& c : cases) {
    for (const double y : {0.01, 0.055, 0.12}) {
      int32_t err = -1;
      const double clean = c.bond.price(y, &err);
      ASSERT_EQ(err, 0) << c.name;
      // The table is per 100 of initial face; prices per 100 outstanding.
      double outstanding = 1.0;
      if (c.bond.factor != 0.0) {
        Table probe(c.bond);
        double repaid = 0.0;
        for (int i = 0; i < probe.rows; ++i) repaid += probe.principal[i];
        outstanding = repaid / 100.0;
      }
      const double dirty = (clean + c.bond.accrued()) * outstanding;
      Table t(c.bond, &clean);
      ASSERT_EQ(t.error, 0) << c.name;
      EXPECT_NEAR(t.present_value(y, c.f), dirty, 1e-9) << c.name << " at " << y;
    }
  }
}

TEST(CashFlowTable, OwnershipAndFailures) {
  QuotedBond bond;
  bond.coupon(0.05).matures(civil_serial(2034, 5, 15)).settles(civil_serial(2024, 3, 12));
  // No columns asked for: nothing allocated, the row count returned.
  EXPECT_EQ(bond.cash_flows(nullptr, nullptr, nullptr, nullptr), 21);
  // Only the columns asked for are made.
  double* periods = nullptr;
  EXPECT_EQ(bond.cash_flows(nullptr, nullptr, nullptr, &periods), 21);
  ASSERT_NE(periods, nullptr);
  KVLbcshflw_free(nullptr, nullptr, nullptr, periods);

  // A failure leaves every given pointer NULL, even one that held a value.
  QuotedBond invalid = bond;
  invalid.settles(civil_serial(2035, 1, 1));
  int32_t* d = reinterpret_cast<int32_t*>(&bond);
  double* c = &bond.redemption;
  double* p = &bond.coupon_tax;
  int32_t err = 0;
  EXPECT_EQ(invalid.cash_flows(&d, &c, &p, nullptr, nullptr, &err), -1);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(d, nullptr);
  EXPECT_EQ(c, nullptr);
  EXPECT_EQ(p, nullptr);
  KVLbcshflw_free(d, c, p, nullptr);
  const double nan_price = std::nan("");
  EXPECT_EQ(bond.cash_flows(&d, nullptr, nullptr, nullptr, &nan_price, &err), -1);
  EXPECT_EQ(err, 350);
  EXPECT_EQ(d, nullptr);

  // NULL coupon array with a positive count.
  const int32_t maturity = civil_serial(2034, 5, 15);
  EXPECT_EQ(KVLbcshflw(&d, nullptr, nullptr, nullptr, nullptr, 1, &maturity, 1,
                       civil_serial(2024, 3, 12), nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                       nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                       nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr),
            -1);
  EXPECT_EQ(d, nullptr);
}

// A taxed gain over an absurd price, or at an absurd tax rate, would repay
// an infinite principal: both are failures, not rows.
TEST(CashFlowTable, AbsurdTaxOrPriceIsAFailure) {
  QuotedBond bond;
  bond.type = 380;
  bond.coupon(0.05).matures(civil_serial(2030, 11, 15)).settles(civil_serial(2002, 3, 5));
  bond.has_redemption = bond.has_coupon_tax = bond.has_discount_tax = bond.has_horizon = true;
  bond.redemption = 173.4375;
  bond.coupon_tax = 0.25;
  bond.horizon = 12;
  bond.discount_tax = -4.6476814752583657e307;
  const double price = 99.0;
  double* principal = nullptr;
  int32_t err = 0;
  EXPECT_EQ(bond.cash_flows(nullptr, nullptr, &principal, nullptr, &price, &err), -1);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(principal, nullptr);

  // A rate of 50 is nonsense but finite; the price is what overflows.
  bond.discount_tax = 50.0;
  const double absurd_price = -1.7e308;
  EXPECT_EQ(bond.cash_flows(nullptr, nullptr, &principal, nullptr, &absurd_price, &err), -1);
  EXPECT_EQ(err, 350);
  EXPECT_EQ(principal, nullptr);

  bond.discount_tax = 0.125;
  // At a real price the same bond repays its redemption less the tax on the
  // gain: 173.4375 - 0.125 x (173.4375 - 99).
  const int32_t rows = bond.cash_flows(nullptr, nullptr, &principal, nullptr, &price, &err);
  ASSERT_EQ(err, 0);
  ASSERT_GT(rows, 0);
  EXPECT_NEAR(principal[rows - 1], 173.4375 - 0.125 * (173.4375 - 99.0), 1e-9);
  KVLbcshflw_free(nullptr, nullptr, principal, nullptr);
}

}  // namespace
}  // namespace kbond::testing
