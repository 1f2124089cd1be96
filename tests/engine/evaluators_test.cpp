// The price-yield evaluators (standard, simple final period, Japanese
// simple, Moosmüller, Braess, Spanish, actual/365 and actual/365.25, the
// capital-gains tax) against prices worked out by hand, their derivatives
// against differences of their own prices, and the shapes they refuse.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "dates/day_count.h"
#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::go_ex_dividend;
using testing::price;
using testing::serial;
using testing::TestBond;

constexpr double kTight = 1e-10;
const int32_t kSettle = serial(15, 2, 2025);
const int32_t kMaturity = serial(15, 11, 2034);

TestBond make(int32_t type, int32_t frequency, double rate, int32_t settlement, int32_t maturity,
              int32_t yield_method_arg = 0) {
  return TestBond{.type = type, .frequency = frequency, .rates = {rate, 0.0, 0.0, 0.0},
                  .settlement = settlement, .maturity = maturity,
                  .yield_method_arg = yield_method_arg};
}
// 5% semi-annual, 15 Nov 2034, settled 15 Feb 2025: 20 coupons remain.
TestBond ten_year(int32_t type = 500, int32_t arg = 0) {
  return make(type, 2, 0.05, kSettle, kMaturity, arg);
}
// The same bond in its last period (15 May .. 15 Nov 2034, 184 days), 92 days to run.
TestBond last_period() { return make(500, 2, 0.05, serial(15, 8, 2034), kMaturity); }
TestBond stepped(double first, double second, int32_t step, TestBond b) {
  b.n_steps = 2;
  b.rates[0] = first;
  b.rates[1] = second;
  b.step_dates[0] = step;
  return b;
}
TestBond taxed(TestBond b, double coupon_tax, double discount_tax) {
  b.coupon_tax = coupon_tax;
  b.discount_tax = discount_tax;
  return b;
}
// 1.5% JGB, 20 Mar 2030, settled on the coupon date 20 Mar 2025: 5 years of
// 365 days (act/365 without 29 February).
TestBond jgb() { return make(200, 2, 0.015, serial(20, 3, 2025), serial(20, 3, 2030)); }
void jgb_days(bond_desc& d) {
  d.accrual_basis = 13;
  d.simple_final = 0;
}
// 6% semi-annual, 15 Nov 2026: four coupons, a quarter year to the next
// coupon and a quarter of a year accrued.
TestBond german(int32_t type) { return make(type, 2, 0.06, kSettle, serial(15, 11, 2026)); }
void quarter_year(bond_desc& d) {
  d.tn = 0.25;
  d.accrued = 0.015;
}
// 5% annual Spanish bond maturing Thursday 30 Jul 2026.
TestBond spanish(int32_t days_to_maturity) {
  const int32_t m = serial(30, 7, 2026);
  return make(280, 1, 0.05, m - days_to_maturity, m);
}
// 7% annual Colombian bond (act/365), 1 Mar 2029, settled 10 Jan 2025:
// 50 days before the next coupon.
TestBond colombian(int32_t arg) {
  return make(370, 1, 0.07, serial(10, 1, 2025), serial(1, 3, 2029), arg);
}
void actual_365(bond_desc& d) {
  d.accrual_basis = 5;
  d.basis = d.basis_accrual = 365.0;
  d.tn = 50.0 / 365.0;
  d.accrued = 0.07 * 315.0 / 365.0;
}

double clean(const bond_desc& d, double dirty) { return (dirty - d.accrued) * 100.0; }
std::function<double(const bond_desc&, double)> is(double value) {
  return [value](const bond_desc&, double) { return value; };
}
// Clean price of n flows cash(k) discounted at v over time(k) periods:
// written out independently of the evaluators.
double flows(const bond_desc& d, double v, int n, const std::function<double(int)>& cash,
             const std::function<double(int)>& time) {
  double pv = 0.0;
  for (int k = 0; k < n; ++k) pv += cash(k) * std::pow(v, time(k));
  return clean(d, pv);
}
double explicit_sum(const bond_desc& d, double y) {
  const double coupon = d.coupons[0] / d.frequency, first = d.exdiv ? 0.0 : d.full_coupon;
  const int n = d.whole_periods;
  return flows(d, 1.0 / (1.0 + y / d.frequency), n,
               [&](int k) { return (k == 0 ? first : coupon) + (k == n - 1 ? 1.0 : 0.0); },
               [&](int k) { return d.frequency * d.tn + k; });
}
// Capital-gains tax g on a discount: P = PV - g v^T (R - P), so
// P = (PV - g v^T) / (1 - g v^T) with PV the untaxed clean value.
double after_gains_tax(const bond_desc& d, double y, double g) {
  bond_desc untaxed = d;
  untaxed.discount_tax = 0.0;
  const double pv = price(untaxed, y) / 100.0;
  const double vt = std::pow(1.0 + y / d.frequency, -(d.frequency * d.tn + d.whole_periods - 1));
  return 100.0 * (pv - g * vt) / (1.0 - g * vt);
}

struct Case {
  const char* name;
  TestBond bond;
  void (*adjust)(bond_desc&);
  double y;
  std::function<double(const bond_desc&, double)> expected;
  int32_t method = -1;  // final-period method, -1 unchecked
};

std::vector<Case> cases() {
  return {
      {"standard closed form", ten_year(), nullptr, 0.0731, explicit_sum, 0},
      {"standard ex-dividend", ten_year(), go_ex_dividend, 0.04, explicit_sum},
      // 20 coupons of 2.5 and 100, less 92/181 of a coupon accrued.
      {"standard zero yield", ten_year(), nullptr, 0.0, is(150.0 - 2.5 * 92.0 / 181.0)},
      {"standard stepped 4% then 6% from 15 Nov 2029",
       stepped(0.04, 0.06, serial(15, 11, 2029), ten_year()), nullptr, 0.05,
       [](const bond_desc& d, double) {
         return flows(d, 1 / 1.025, 20, [](int k) { return (k < 10 ? 0.02 : 0.03) + (k == 19); },
                      [&](int k) { return 2 * d.tn + k; });
       }},
      // 19 whole coupons, then 0.4 of a coupon and 100 half a period later.
      {"standard broken last period", ten_year(),
       [](bond_desc& d) {
         d.whole_periods = 19;
         d.partial_period = 1;
         d.last_discount = 0.5;
         d.last_coupon = 0.4;
       },
       0.045,
       [](const bond_desc& d, double) {
         return flows(d, 1 / 1.0225, 20, [](int k) { return k < 19 ? 0.025 : 1.01; },
                      [&](int k) { return 2 * d.tn + (k < 19 ? k : 18.5); });
       }},
      // Weekend coupon dates are paid the Monday after; each day late adds
      // 2 / basis periods.
      {"standard business-day payments", ten_year(500, 1), nullptr, 0.05,
       [](const bond_desc& d, double) {
         return flows(d, 1 / 1.025, 20, [](int k) { return 0.025 + (k == 19); }, [&](int k) {
           const int32_t wd = dates::weekday_of(dates::add_months(d.next_coupon, 6 * k, 0));
           const int late = wd == dates::kSaturday ? 2 : wd == dates::kSunday ? 1 : 0;
           return 2 * d.tn + k + late * 2.0 / d.basis_accrual;
         });
       }},
      // Spreadsheet PRICE with one period left:
      //   102.5 / (1 + 92/184 x 0.03) - 100 x 92/184 x 0.025
      {"simple final period", last_period(), nullptr, 0.06, is(99.735221674876847), 1},
      {"simple final period ex-dividend", last_period(), go_ex_dividend, 0.06,
       is(100.0 / 1.015 + 1.25)},
      // Below par: P = (R + C - g (R - P)) / (1 + T y) - A, horizon before
      // maturity so the discount tax rate applies.
      {"simple final period taxed", taxed(last_period(), 0.0, 0.125),
       [](bond_desc& d) { d.horizon_date = d.settlement + 30; }, 0.09,
       [](const bond_desc& d, double y) {
         const double g = 1.0 + 0.25 * y;
         return 100.0 * (0.9 / g - d.accrued) / (1.0 - 0.125 / g);
       }},
      // (100 + 1.5 x 5) / (1 + 0.012 x 5); the market's formula
      // (c + (100 - P) / T) / P gives 1.2% back.
      {"japanese simple yield", jgb(), jgb_days, 0.012, is(107.5 / 1.06)},
      // 1% to 20 Mar 2027 then 2%: 0.005 + 3 x 0.005 + 6 x 0.01 = 0.08 of coupons.
      {"japanese simple yield stepped", stepped(0.01, 0.02, serial(20, 3, 2027), jgb()), jgb_days,
       0.012, is(108.0 / 1.06)},
      // r = 0.025, t = 0.5: d1 = 1/1.0125,
      // dirty = d1 (0.03 + 0.03/1.025 + 0.03/1.025^2 + 1.03/1.025^3).
      {"moosmuller", german(830), quarter_year, 0.05, is(101.63877706825193)},
      // h = y/4, T = 1.75: N = 1, phi = 0.75, A = 0.03 (1 + (1 + 2h)) = 0.06075,
      // dirty = ((1 + A)/1.05 + 0.06075) / (1 + 0.75 x 0.05).
      {"braess", german(820), quarter_year, 0.05, is(101.72776821572005)},
      // Settled 19 Jul 2025: coupons in 11 and 376 days, 354/365 accrued;
      // a day earlier the two coupons are 12/365 and 1 + 12/365 years away.
      {"spanish 376 days: chained simple interest", spanish(376), nullptr, 0.04,
       [](const bond_desc& d, double y) {
         const double df1 = 1.0 / (1.0 + 11.0 / 360.0 * y);
         return clean(d, 0.05 * df1 + 1.05 * df1 / (1.0 + 365.0 / 360.0 * y));
       },
       3},
      {"spanish 377 days: compound", spanish(377), nullptr, 0.04,
       [](const bond_desc& d, double) {
         return flows(d, 1 / 1.04, 2, [](int k) { return k == 0 ? 0.05 : 1.05; },
                      [&](int k) { return d.tn + k; });
       },
       4},
      // Tuesday 25 Dec 2029 maturity is paid 26 Dec, 366 days after the coupon before.
      {"spanish chained to a holiday maturity",
       make(280, 1, 0.05, serial(25, 12, 2029) - 376, serial(25, 12, 2029)), nullptr, 0.04,
       [](const bond_desc& d, double y) {
         const double df1 = 1.0 / (1.0 + 11.0 / 360.0 * y);
         return clean(d, 0.05 * df1 + 1.05 * df1 / (1.0 + 366.0 / 360.0 * y));
       },
       3},
      {"spanish delayed maturity discounted a day more",
       make(280, 1, 0.05, serial(10, 1, 2025), serial(25, 12, 2029)), nullptr, 0.04,
       [](const bond_desc& d, double) {
         return flows(d, 1 / 1.04, 5, [](int k) { return k < 4 ? 0.05 : 1.05; },
                      [&](int k) { return d.tn + k + (k == 4 ? 1.0 / 365.0 : 0.0); });
       },
       4},
      // Coupons 0, 365, 730, 1096 (29 Feb 2028 between) and 1461 days after the next.
      {"actual/365 counts the leap day", colombian(0), actual_365, 0.06,
       [](const bond_desc& d, double) {
         const int days[] = {0, 365, 730, 1096, 1461};
         return flows(d, 1 / 1.06, 5, [](int k) { return 0.07 + (k == 4); },
                      [&](int k) { return (50.0 + days[k]) / 365.0; });
       },
       2},
      // Sat 1 Mar 2025 paid Mon 3 Mar (52 days), Sun 1 Mar 2026 paid 2 Mar.
      {"actual/365 business-day payments", colombian(1), actual_365, 0.06,
       [](const bond_desc& d, double) {
         const int days[] = {0, 364, 728, 1094, 1459};
         return flows(d, 1 / 1.06, 5, [](int k) { return 0.07 + (k == 4); },
                      [&](int k) { return (52.0 + days[k]) / 365.0; });
       }},
      {"actual/365.25", make(500, 2, 0.06, kSettle, serial(15, 11, 2028), -5), nullptr, 0.055,
       [](const bond_desc& d, double) {
         return flows(d, 1 / 1.0275, 8, [](int k) { return 0.03 + (k == 7); }, [&](int k) {
           return (dates::add_months(d.next_coupon, 6 * k, 0) - d.settlement) * 2.0 / 365.25;
         });
       }},
      {"discount tax below par", taxed(ten_year(), 0.0, 0.125), nullptr, 0.08,
       [](const bond_desc& d, double y) { return after_gains_tax(d, y, 0.125); }},
      {"coupon tax rate on the gain when maturity is before the horizon",
       taxed(ten_year(), 0.2, 0.125), [](bond_desc& d) { d.horizon_date = d.maturity + 1; }, 0.07,
       [](const bond_desc& d, double y) { return after_gains_tax(d, y, 0.2); }},
      {"discount tax rate when the horizon is before maturity", taxed(ten_year(), 0.2, 0.125),
       [](bond_desc& d) { d.horizon_date = d.maturity - 1; }, 0.07,
       [](const bond_desc& d, double y) { return after_gains_tax(d, y, 0.125); }},
  };
}

bond_desc describe(Case& c) {
  bond_desc d = c.bond.describe();
  if (c.adjust) c.adjust(d);
  return d;
}

TEST(Evaluators, PricesWorkedOutByHand) {
  for (Case& c : cases()) {
    SCOPED_TRACE(c.name);
    const bond_desc d = describe(c);
    if (c.method >= 0) {
      EXPECT_EQ(final_period_method(d), c.method);
    }
    int32_t error = -1;
    EXPECT_NEAR(price(d, c.y, nullptr, nullptr, &error), c.expected(d, c.y), kTight);
    EXPECT_EQ(error, 0);
  }
}

// Analytic first derivatives; Braess differentiates forward over 5e-6, so
// it is within half a step of curvature (about 2.5e-6 x 50). The second
// difference of prices over 1e-4 is itself off by about 1e-6 relative.
TEST(Evaluators, DerivativesMatchDifferencesOfPrices) {
  for (Case& c : cases()) {
    SCOPED_TRACE(c.name);
    const bond_desc d = describe(c);
    const bool braess = d.type == 820;
    for (double y : {0.0, 0.03, 0.08}) {
      double first = 0.0, second = 0.0;
      int32_t error = -1;
      price(d, y, &first, &second, &error);
      ASSERT_EQ(error, 0) << "y " << y;
      EXPECT_NEAR(first, testing::price_slope(d, y), braess ? 5e-4 : 2e-7) << "y " << y;
      EXPECT_LT(first, 0.0) << "prices fall as yields rise";
      if (!braess) {
        const double curvature = testing::price_curvature(d, y);
        EXPECT_NEAR(second, curvature, 1e-5 + 1e-6 * std::fabs(curvature)) << "y " << y;
      }
    }
  }
}

TEST(Evaluators, RefusedShapesAndVanishingDenominators) {
  struct Failure {
    const char* name;
    TestBond bond;
    void (*adjust)(bond_desc&);
    double y, value;
    int32_t error;
  };
  const Failure failures[] = {
      {"standard 1 + y/f = 0", ten_year(), nullptr, -2.0, -100.0, 401},
      {"simple final 1 + T y = 0", last_period(), nullptr, -4.0, -100.0, 401},
      {"japanese 1 + T y = 0", jgb(), jgb_days, -0.2, -100.0, 401},
      // Zero coupon below par at y = 0 with a full tax: 1 - g v^T = 0.
      {"full discount tax at zero yield", taxed(make(500, 2, 0.0, kSettle, kMaturity), 0.0, 1.0),
       [](bond_desc& d) { d.accrued = 0.001; }, 0.0, -100.0, 401},
      {"moosmuller broken last", german(830), [](bond_desc& d) { d.partial_period = 1; }, 0.05,
       -999.9, 1},
      {"braess odd first", german(820), [](bond_desc& d) { d.odd_first = 1; }, 0.05, -999.9, 1},
      {"braess broken last", german(820), [](bond_desc& d) { d.partial_period = 1; }, 0.05, -999.9,
       1},
      {"braess stepped", german(820), [](bond_desc& d) { d.n_coupons = 2; }, 0.05, -999.9, 1},
      {"braess ex-dividend", german(820), [](bond_desc& d) { d.exdiv = 1; }, 0.05, -999.9, 1},
  };
  for (const Failure& f : failures) {
    SCOPED_TRACE(f.name);
    TestBond b = f.bond;
    bond_desc d = b.describe();
    if (f.adjust) f.adjust(d);
    double first = 7.0, second = 7.0;
    int32_t error = 0;
    EXPECT_DOUBLE_EQ(price(d, f.y, &first, &second, &error), f.value);
    EXPECT_EQ(error, f.error);
    if (f.error == 1) {
      EXPECT_EQ(second, 7.0) << "no second derivative from a refused shape";
    }
  }
}

}  // namespace
}  // namespace kbond::engine
