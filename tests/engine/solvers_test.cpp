// Root finders, guarded elementary functions and yield conversion.
#include <gtest/gtest.h>

#include <cmath>

#include "engine/safe_math.h"
#include "engine/solvers.h"

namespace kbond::engine {
namespace {

constexpr double kTight = 1e-12;

// Price of a 10-period annuity bond paying 3 per period plus 100 at the end,
// with its derivative; a smooth decreasing function of the periodic rate.
double annuity_bond(double r, double* derivative) {
  double price = 0.0, slope = 0.0;
  for (int t = 1; t <= 10; ++t) {
    const double cash = (t == 10 ? 103.0 : 3.0);
    price += cash * std::pow(1.0 + r, -t);
    slope += -t * cash * std::pow(1.0 + r, -t - 1);
  }
  if (derivative) *derivative = slope;
  return price;
}

TEST(NewtonSolve, ReportsFailureModes) {
  int32_t err = 0;
  newton_solve(annuity_bond, 100.0, 0.1, 0.0, 64, &err);
  EXPECT_EQ(err, 1) << "zero tolerance";
  newton_solve([](double, double* d) { *d = 0.0; return 1.0; }, 2.0, 0.5, 1e-6, 64, &err);
  EXPECT_EQ(err, 1) << "stalled / flat function";
  newton_solve([](double x, double* d) { *d = 1.0; return x; }, 5.0, 0.5, 1e-6, 64, &err,
               [](double x) { return x < 1.0; });
  EXPECT_EQ(err, 1) << "target outside the valid region";
  newton_solve([](double x, double* d) { *d = 1.0; return x; }, 5.0, 2.0, 1e-6, 64, &err,
               [](double x) { return x < 1.0; });
  EXPECT_EQ(err, 1) << "invalid start";
  const double nan_start = newton_solve([](double, double*) { return std::nan(""); }, 1.0, 0.3,
                                        1e-6, 64, &err);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(nan_start, 0.3);
}

TEST(NewtonSolve, RefusesInfiniteStartsAndSteps) {
  int32_t err = 0;
  const auto line = [](double x, double* d) { *d = 1.0; return x; };
  newton_solve(line, 5.0, INFINITY, 1e-6, 64, &err);
  EXPECT_EQ(err, 1) << "infinite start";
  // A denormal slope turns the first step into an infinity: the last
  // finite point comes back with the failure.
  const double x = newton_solve([](double v, double* d) { *d = 5e-324; return v; }, 5.0, 0.5,
                                1e-6, 64, &err);
  EXPECT_EQ(err, 1) << "overflowing step";
  EXPECT_EQ(x, 0.5);
}

TEST(NewtonSolve, HalvesStepsRejectedByPredicate) {
  // f(x) = x^2 - 4 from 0.1: the first Newton step lands near 20, beyond the
  // valid region x < 5; halving brings it back and the search still converges.
  int32_t err = 0;
  const double x = newton_solve(
      [](double v, double* d) { *d = 2 * v; return v * v; }, 4.0, 0.1, 1e-12, 64, &err,
      [](double v) { return v > 0.0 && v < 5.0; });
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(x, 2.0, 1e-9);
}

TEST(BracketSolve, ConvergesSwapsBoundsAndFails) {
  int32_t err = 0;
  EXPECT_NEAR(bracket_solve(annuity_bond, 100.0, -0.5, 5.0, 1e-10, 200, &err), 0.03, 1e-10);
  EXPECT_EQ(err, 0);
  // False position alone crawls on a convex function; bisection steps must
  // keep it within the iteration budget.
  EXPECT_NEAR(bracket_solve([](double x, double*) { return std::exp(20 * x); }, 2.0, 0.0, 2.0, 1e-9,
                            200, &err),
              std::log(2.0) / 20.0, 1e-9);
  EXPECT_EQ(err, 0);
  const auto line = [](double x, double*) { return x; };
  EXPECT_DOUBLE_EQ(bracket_solve(line, 1.0, 3.0, 1.0, 1e-9, 10, &err), 1.0);  // swapped, end point
  EXPECT_EQ(err, 0);
  EXPECT_EQ(bracket_solve([](double x, double*) { return x * x; }, -1.0, -1.0, 1.0, 1e-9, 64, &err),
            kOverflowMarker);
  EXPECT_EQ(err, 1) << "no sign change";
  EXPECT_EQ(bracket_solve(line, 0.5, 0.0, 1.0, 1e-9, 0, &err), kOverflowMarker);
  EXPECT_EQ(err, 1) << "limit below 1";
  EXPECT_EQ(bracket_solve([](double x, double*) { return x > 0.9 ? std::nan("") : x; }, 0.5, 0.0,
                          1.0, 1e-9, 64, &err),
            kOverflowMarker);
  EXPECT_EQ(err, 1) << "invalid end evaluation";
}

TEST(SafeMath, GuardsUndefinedValuesAndRoundsHalfUp) {
  EXPECT_EQ(safe_pow(0.0, -3.0), 0.0);
  EXPECT_EQ(safe_pow(-2.0, 0.5), kOverflowMarker);
  EXPECT_DOUBLE_EQ(safe_pow(-2.0, 3.0), -8.0);
  EXPECT_EQ(safe_log(0.0), kOverflowMarker);
  EXPECT_EQ(safe_exp(-701.0), 0.0);
  EXPECT_DOUBLE_EQ(round_to(0.125, 2), 0.13);
  EXPECT_DOUBLE_EQ(round_to(-1.5, 0), -1.0);
}

TEST(YieldConvert, DiscreteAndContinuousCompounding) {
  int32_t err = 1;
  // 6 % semi-annual is (1.03^2 - 1) = 6.09 % annual.
  EXPECT_NEAR(yield_convert(0.06, 2, 1, 2, 1, &err), 0.0609, kTight);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(yield_convert(0.0609, 1, 2, 1, 2, &err), 0.06, kTight);
  const double cont = yield_convert(0.06, 2, 0, 2, 0, &err);
  EXPECT_NEAR(cont, 2.0 * std::log(1.03), kTight);
  EXPECT_NEAR(yield_convert(cont, 0, 2, 0, 2, &err), 0.06, kTight);
  EXPECT_EQ(yield_convert(-3.0, 2, 0, 2, 0, &err), 0.0);
  EXPECT_EQ(err, 1) << "1 + y/d <= 0 has no continuous equivalent";
}

TEST(YieldConvert, OverflowIsAnError) {
  int32_t err = 0;
  // (1 + 1e30 / 12)^12 and e^1000 exceed the largest double.
  yield_convert(1e30, 12, 1, 12, 1, &err);
  EXPECT_EQ(err, 1);
  yield_convert(1000.0, 0, 1, 0, 1, &err);
  EXPECT_EQ(err, 1);
  EXPECT_NEAR(yield_convert(1.0, 0, 1, 0, 1, &err), std::exp(1.0) - 1.0, kTight);
  EXPECT_EQ(err, 0);
}

}  // namespace
}  // namespace kbond::engine
