// Newton steps that would leave the finite numbers, and yield conversion.
#include <gtest/gtest.h>

#include <cmath>

#include "engine/safe_math.h"
#include "engine/solvers.h"

namespace kbond::engine {
namespace {

constexpr double kTight = 1e-12;

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
