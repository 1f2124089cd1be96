// Every evaluator's first derivative against a central difference of its
// own prices, at a zero, a low and a high yield.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::serial;
using testing::TestBond;

struct Case {
  std::string name;
  TestBond bond;
  std::function<void(bond_desc&)> adjust;
  double tolerance;  // per unit of face
};

constexpr double kAnalytic = 2e-7;
// Braess differentiates forward over 5e-6: the error is half a step of
// curvature, about 2.5e-6 x 50.
constexpr double kForwardDifference = 5e-4;

TestBond make(int32_t type, int32_t frequency, double rate, int32_t settlement, int32_t maturity,
              int32_t yield_method_arg = 0) {
  TestBond b;
  b.type = type;
  b.frequency = frequency;
  b.rates[0] = rate;
  b.settlement = settlement;
  b.maturity = maturity;
  b.yield_method_arg = yield_method_arg;
  return b;
}

// Two one-off repayments of a quarter each (a zero entry closes each).
int32_t g_sink_dates[5];
double g_sink_amounts[5] = {0.25, 0.0, 0.25, 0.0, 0.0};

std::vector<Case> cases() {
  const int32_t s = serial(15, 2, 2025);
  const int32_t m = serial(15, 11, 2034);
  std::vector<Case> all;
  auto none = [](bond_desc&) {};
  all.push_back({"standard closed form", make(500, 2, 0.05, s, m), none, kAnalytic});
  TestBond stepped = make(500, 2, 0.04, s, m);
  stepped.n_steps = 2;
  stepped.rates[1] = 0.06;
  stepped.step_dates[0] = serial(15, 11, 2029);
  all.push_back({"standard stepped", stepped, none, kAnalytic});
  all.push_back({"standard business days", make(500, 2, 0.05, s, m, 1), none, kAnalytic});
  all.push_back({"standard broken last period", make(500, 2, 0.05, s, m),
                 [](bond_desc& d) {
                   d.whole_periods = 19;
                   d.partial_period = 1;
                   d.last_discount = 0.5;
                   d.last_coupon = 0.4;
                 },
                 kAnalytic});
  TestBond taxed = make(500, 2, 0.05, s, m);
  taxed.discount_tax = 0.125;
  all.push_back({"standard taxed", taxed, none, kAnalytic});
  all.push_back({"standard ex-dividend", make(500, 2, 0.05, s, m), testing::go_ex_dividend,
                 kAnalytic});
  all.push_back({"simple final period", make(500, 2, 0.05, serial(15, 8, 2034), m), none,
                 kAnalytic});
  all.push_back({"actual/365", make(370, 1, 0.07, serial(10, 1, 2025), serial(1, 3, 2029)),
                 [](bond_desc& d) { d.accrual_basis = 5; }, kAnalytic});
  all.push_back({"actual/365.25", make(500, 2, 0.06, s, serial(15, 11, 2028), -5), none,
                 kAnalytic});
  all.push_back({"chained simple", make(280, 1, 0.05, serial(19, 7, 2025), serial(30, 7, 2026)),
                 none, kAnalytic});
  all.push_back({"delayed maturity", make(280, 1, 0.05, s, serial(25, 12, 2029)), none,
                 kAnalytic});
  all.push_back({"japanese simple", make(200, 2, 0.015, s, m),
                 [](bond_desc& d) { d.accrual_basis = 13; }, kAnalytic});
  all.push_back({"moosmuller", make(830, 1, 0.06, s, m), none, kAnalytic});
  all.push_back({"braess", make(820, 1, 0.06, s, m), none, kForwardDifference});
  all.push_back({"amortising", make(500, 2, 0.05, s, m),
                 [](bond_desc& d) {
                   g_sink_dates[0] = serial(15, 11, 2027);
                   g_sink_dates[1] = serial(16, 11, 2027);
                   g_sink_dates[2] = serial(15, 11, 2030);
                   g_sink_dates[3] = serial(16, 11, 2030);
                   g_sink_dates[4] = -1;
                   d.amort_kind = kScheduledAmortisation;
                   d.sink_dates_owned = g_sink_dates;
                   d.sink_amounts_owned = g_sink_amounts;
                   d.next_sink = g_sink_dates[0];
                   d.factor = 1.0;
                 },
                 kAnalytic});
  return all;
}

TEST(EvaluatorDerivatives, FirstDerivativeMatchesCentralDifference) {
  for (Case& c : cases()) {
    bond_desc d = c.bond.describe();
    c.adjust(d);
    for (double y : {0.0, 0.03, 0.08}) {
      double slope = 0.0;
      int32_t error = -1;
      testing::price(d, y, &slope, nullptr, &error);
      ASSERT_EQ(error, 0) << c.name;
      EXPECT_NEAR(slope, testing::price_slope(d, y), c.tolerance) << c.name << " at y = " << y;
      EXPECT_LT(slope, 0.0) << c.name << ": prices fall as yields rise";
    }
  }
}

}  // namespace
}  // namespace kbond::engine
