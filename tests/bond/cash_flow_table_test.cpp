// KVLbcshflw: hand-checked tables, tax on the gain, the ownership rules of
// the library-allocated arrays. For every shape of schedule a price, yield,
// table and risk measures that agree with each other. Macaulay duration and
// coupon amount by hand.
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

struct Table {
  int32_t rows = 0, error = 0;
  int32_t* dates = nullptr;
  double *coupons = nullptr, *principal = nullptr, *periods = nullptr;

  explicit Table(const QuotedBond& bond, const double* clean = nullptr) {
    rows = bond.cash_flows(&dates, &coupons, &principal, &periods, clean, &error);
  }
  ~Table() { KVLbcshflw_free(dates, coupons, principal, periods); }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;
  double last_principal() const { return principal[rows - 1]; }
};

// Two years of a 5 % Treasury settled 12 March 2024, coupons on 15 May and
// 15 November: 64 of the 182 days of the period to 15 May 2024 to run.
TEST(CashFlowTable, TreasuryNoteByHand) {
  Table t(QuotedBond(0, 0.05, ymd(2026, 5, 15), ymd(2024, 3, 12)));
  ASSERT_EQ(t.error, 0);
  ASSERT_EQ(t.rows, 5);
  const int32_t dates[] = {ymd(2024, 5, 15), ymd(2024, 11, 15), ymd(2025, 5, 15),
                           ymd(2025, 11, 15), ymd(2026, 5, 15)};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(t.dates[i], dates[i]);
    EXPECT_DOUBLE_EQ(t.coupons[i], 2.5);
    EXPECT_DOUBLE_EQ(t.principal[i], i == 4 ? 100.0 : 0.0);
    EXPECT_NEAR(t.periods[i], 64.0 / 182 + i, 1e-12);
  }
}

// 10 % of the initial face repaid each June 2026..2033, the last 20 % at
// maturity in June 2034: coupons fall with the face.
TEST(CashFlowTable, SinkingFundPrincipalAndCoupons) {
  Table t(sinking_fund(ymd(2024, 3, 12)));
  ASSERT_EQ(t.error, 0);
  ASSERT_EQ(t.rows, 21);  // 15 Jun 2024 .. 15 Jun 2034
  double outstanding = 1.0;
  for (int i = 0; i < t.rows; ++i) {
    EXPECT_NEAR(t.coupons[i], 3.0 * outstanding, 1e-12) << i;
    const bool sink_date = i >= 4 && i % 2 == 0 && i < 20;  // each June from 2026
    EXPECT_NEAR(t.principal[i], i == 20 ? 100.0 * outstanding : (sink_date ? 10.0 : 0.0), 1e-9)
        << i;
    outstanding -= t.principal[i] / 100.0;
  }
  EXPECT_NEAR(outstanding, 0.0, 1e-11);
}

// Bought at 90 and redeemed at 100: the 10 point gain is taxed at the
// capital-gains rate (25 %: 97.50 net) or, when the bond matures before the
// tax horizon (12 months by default), as income at the coupon tax (40 %:
// 96.00 net). Bought above par or without a capital-gains rate, untaxed.
TEST(CashFlowTable, TaxOnTheGainOverThePrice) {
  QuotedBond bond(500, 0.03, ymd(2029, 6, 1), ymd(2024, 3, 12));
  bond.coupon_tax = 0.40;
  bond.discount_tax = 0.25;
  const double bought = 90.0, above_par = 101.0;
  EXPECT_NEAR(Table(bond, &bought).last_principal(), 97.5, 1e-12);
  EXPECT_NEAR(Table(bond, &bought).coupons[1], 1.5 * 0.6, 1e-12);
  EXPECT_NEAR(Table(bond, &above_par).last_principal(), 100.0, 1e-12);
  QuotedBond short_bond = bond;
  short_bond.dates = {ymd(2024, 12, 1)};
  EXPECT_NEAR(Table(short_bond, &bought).last_principal(), 96.0, 1e-12);
  bond.discount_tax.reset();
  EXPECT_NEAR(Table(bond, &bought).last_principal(), 100.0, 1e-12);
}

// The library allocates only the columns asked for; with none it returns
// the row count. A failure leaves every given pointer NULL, even one that
// held a value.
TEST(CashFlowTable, OwnershipAndFailures) {
  const QuotedBond bond(0, 0.05, ymd(2034, 5, 15), ymd(2024, 3, 12));
  EXPECT_EQ(bond.cash_flows(nullptr, nullptr, nullptr, nullptr), 21);
  double held = 1.0, *periods = nullptr, *c = &held;
  int32_t* d = reinterpret_cast<int32_t*>(&held);
  EXPECT_EQ(bond.cash_flows(nullptr, nullptr, nullptr, &periods), 21);
  ASSERT_NE(periods, nullptr);
  KVLbcshflw_free(nullptr, nullptr, nullptr, periods);
  int32_t err = 0;
  EXPECT_EQ(bond.at(ymd(2035, 1, 1)).cash_flows(&d, &c, nullptr, nullptr, nullptr, &err), -1);
  EXPECT_EQ(err, 1);
  EXPECT_TRUE(d == nullptr && c == nullptr);
}

// Inputs whose table would hold an infinity are failures that hand out no
// array: a taxed gain over an absurd price or at an absurd rate, a later
// coupon step of +-1e308 (the first step alone used to be checked), and an
// index-linked table at a denormal coupon.
TEST(CashFlowTable, AbsurdInputsMakeNoTable) {
  QuotedBond taxed(380, 0.05, ymd(2030, 11, 15), ymd(2002, 3, 5));
  taxed.redemption = 173.4375;
  taxed.coupon_tax = 0.25;
  taxed.horizon = 12;
  QuotedBond absurd_tax = taxed, absurd_price = taxed;
  absurd_tax.discount_tax = -4.6476814752583657e307;
  absurd_price.discount_tax = 50.0;  // nonsense but finite: the price overflows
  QuotedBond stepped(40, 0.04, 47801, 45351);
  stepped.dates = {46340, 47071, 47801};
  const double price = 99.0, huge_price = -1.7e308, base = 250.0, latest = 300.0;
  struct Case {
    const char* what;
    QuotedBond bond;
    double step;
    const double* clean;
    int32_t code;
  };
  const Case cases[] = {{"tax rate -4.6e307", absurd_tax, 0.0, &price, 1},
                        {"price -1.7e308", absurd_price, 0.0, &huge_price, 350},
                        {"coupon step 1e308", stepped, 1e308, nullptr, 1},
                        {"coupon step -1e308", stepped, -1e308, nullptr, 1}};
  for (Case c : cases) {
    SCOPED_TRACE(c.what);
    if (c.step != 0.0) c.bond.rates = {0.04, c.step, 0.06};
    double *coupons = &c.step, *principal = &c.step;
    int32_t err = 0;
    EXPECT_EQ(c.bond.cash_flows(nullptr, &coupons, &principal, nullptr, c.clean, &err), -1);
    EXPECT_EQ(err, c.code);
    EXPECT_TRUE(coupons == nullptr && principal == nullptr);
  }
  int32_t* dates = reinterpret_cast<int32_t*>(1);
  double* amounts = reinterpret_cast<double*>(1);
  int32_t err = 0;
  EXPECT_EQ(KVLtipscshflw(&dates, &amounts, 5e-320, &base, 1, &latest, 1, 47801, 45351, nullptr,
                          nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                          nullptr, 0, &err),
            0);
  EXPECT_EQ(err, 1);
  EXPECT_TRUE(dates == nullptr && amounts == nullptr);
  // At a real price and rate: the redemption less the tax on the gain,
  // 173.4375 - 0.125 x (173.4375 - 99).
  taxed.discount_tax = 0.125;
  Table t(taxed, &price);
  ASSERT_EQ(t.error, 0);
  EXPECT_NEAR(t.last_principal(), 173.4375 - 0.125 * (173.4375 - 99.0), 1e-9);
}

// For bond shapes beyond the bullet, KVLbyld gives back the yield KVLbpr
// priced at; the table's rows discounted at that yield (per period, f a
// year) give back the dirty price (per outstanding face for sinking funds,
// whose table is checked by hand above); duration and convexity match finite
// differences of KVLbpr (every shape's price is unrounded), the value of a
// basis point is duration x dirty price x 1e-4 and a 32nd is worth
// 1 / (32 x that) bp. Annual quotation (242, chain rule through the annual
// re-expression) and a JGB's simple yield discount on another basis than
// the table's (f = 0: not repriced).
TEST(BondShapes, PriceYieldAndCashFlowsAgree) {
  const int32_t settle = ymd(2024, 3, 12);
  struct Shape {
    const char* what;
    QuotedBond bond;
    int f;
  };
  const QuotedBond regular(500, 0.045, ymd(2039, 8, 15), settle);
  std::vector<Shape> shapes = {{"regular", regular, 2}};
  shapes.push_back({"stepped", regular, 2});
  shapes.back().bond.rates = {0.02, 0.035, 0.05};
  shapes.back().bond.dates = {ymd(2026, 8, 15), ymd(2030, 8, 15), ymd(2039, 8, 15)};
  shapes.push_back({"long first coupon", regular, 2});
  shapes.back().bond.dated = ymd(2024, 2, 20);
  shapes.back().bond.first = ymd(2025, 2, 15);
  shapes.push_back({"odd last coupon", shapes.back().bond, 2});
  shapes.back().bond.dates = {ymd(2039, 10, 1)};  // off the grid through 15 Feb
  // Ex-dividend: 7 March coupon, ex from 28 February.
  const QuotedBond gilt(40, 0.04125, ymd(2029, 9, 7), ymd(2024, 3, 4));
  shapes.push_back({"Gilt ex-dividend", gilt, 2});
  // Exponents in actual days over 365.
  shapes.push_back({"Colombian", QuotedBond(370, 0.07, ymd(2031, 9, 18), settle), 1});
  // 15 Aug 2026 is a Saturday, and 15 Aug 2024 a holiday here.
  shapes.push_back({"business-day payments", regular, 2});
  shapes.back().bond.method = 1;
  shapes.back().bond.holidays = {ymd(2024, 8, 15)};
  shapes.push_back({"taxed", regular, 2});
  shapes.back().bond.coupon_tax = shapes.back().bond.discount_tax = 0.125;
  shapes.push_back({"sinking fund", sinking_fund(settle), 2});
  shapes.push_back({"sinking fund under way", sinking_fund(ymd(2027, 9, 20)), 2});
  shapes.push_back({"equal repayments under way", sinking_fund(ymd(2027, 9, 20)), 2});
  shapes.back().bond.factor = -1.0;  // five equal repayments 2026..2030
  shapes.back().bond.sink_amounts.clear();
  shapes.back().bond.dates = {ymd(2030, 6, 15)};
  shapes.push_back({"annual quotation", regular, 0});
  shapes.back().bond.type = 242;
  shapes.push_back({"JGB", QuotedBond(200, 0.008, ymd(2033, 12, 20), settle), 0});

  for (const Shape& s : shapes) {
    // The table is per 100 of initial face, prices per 100 outstanding.
    Table probe(s.bond);
    double outstanding = 0.0;
    for (int i = 0; i < probe.rows; ++i) outstanding += probe.principal[i] / 100.0;
    for (const double y : {-0.005, 0.01, 0.055, 0.12, 0.22}) {
      SCOPED_TRACE(::testing::Message() << s.what << " at " << y);
      int32_t err = -1;
      const double clean = s.bond.price(y, &err);
      ASSERT_EQ(err, 0);
      EXPECT_NEAR(s.bond.yield(clean, &err), y, 1e-7);
      EXPECT_EQ(err, 0);
      const double dirty = clean + s.bond.accrued();
      Table t(s.bond, &clean);
      ASSERT_EQ(t.error, 0);
      double pv = 0.0;
      for (int32_t i = 0; i < t.rows && s.f; ++i)
        pv += (t.coupons[i] + t.principal[i]) * std::pow(1.0 + y / s.f, -t.periods[i]);
      EXPECT_TRUE(s.f == 0 || std::fabs(pv - dirty * outstanding) < 1e-9) << pv;
      // Steps of 1e-6 and 1e-4 leave truncation errors near 1e-10 and 1e-8.
      const double k = 1e-6, h = 1e-4, duration = s.bond.duration(y, nullptr, &err);
      EXPECT_EQ(err, 0);
      EXPECT_NEAR(duration, (s.bond.price(y - k) - s.bond.price(y + k)) / (2 * k) / dirty, 1e-7);
      const double convexity = s.bond.convexity(y, &err);
      const double second = s.bond.price(y + h) - 2 * clean + s.bond.price(y - h);
      EXPECT_NEAR(convexity, second / (h * h) / dirty, 2e-3 * convexity);
      const double bp = s.bond.value_of_bp(y, nullptr, &err), per_percent = 1.0;
      EXPECT_NEAR(bp, duration * dirty * 1e-4, 1e-12);
      EXPECT_NEAR(s.bond.value_of_tick(y), 1.0 / (32.0 * bp), 1e-9);
      EXPECT_NEAR(s.bond.value_of_bp(y, &per_percent), 100.0 * bp, 1e-10);
    }
  }
}

// Two years of a 6 % semiannual note at 6 %, on a coupon date, at par:
// Macaulay = (0.5 x 3 v + 1 x 3 v^2 + 1.5 x 3 v^3 + 2 x 103 v^4) / 100
// with v = 1 / 1.03; modified = that / 1.03.
TEST(RiskMeasures, MacaulayDurationOfATwoYearNote) {
  QuotedBond note(500, 0.06, ymd(2026, 5, 15), ymd(2024, 5, 15));
  double macaulay = 0.0;
  for (int k = 1; k <= 4; ++k) macaulay += 0.5 * k * (k == 4 ? 103.0 : 3.0) * std::pow(1.03, -k);
  macaulay /= 100.0;
  const int32_t kind_macaulay = 1, kind_modified = 0;
  EXPECT_NEAR(note.duration(0.06, &kind_macaulay), macaulay, 1e-12);
  EXPECT_NEAR(note.duration(0.06), macaulay / 1.03, 1e-12);
  EXPECT_EQ(note.duration(0.06, &kind_modified), note.duration(0.06));
}

TEST(RiskMeasures, CouponAmount) {
  QuotedBond bond(0, 0.0575, ymd(2034, 8, 15), ymd(2024, 3, 12));
  EXPECT_DOUBLE_EQ(bond.coupon_amount(), 2.875);
  bond.coupon_tax = 0.2;
  EXPECT_DOUBLE_EQ(bond.coupon_amount(), 2.3);
  // A short first coupon: 1 Jan to 15 Feb 2024 of the regular 15 Aug 2023
  // to 15 Feb 2024 period (45 of 184 days).
  QuotedBond new_issue(0, 0.0575, ymd(2034, 8, 15), ymd(2024, 1, 10));
  new_issue.dated = ymd(2024, 1, 1);
  EXPECT_NEAR(new_issue.coupon_amount(), 2.875 * 45 / 184, 1e-12);
}

}  // namespace
}  // namespace kbond::testing
