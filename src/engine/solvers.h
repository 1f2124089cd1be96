// General root finders shared by every family: Newton's method on a function
// with an analytic derivative, and a bracketing search (Illinois false position
// with a bisection safeguard) for when Newton fails.
//
// Evaluators are callables `double f(double x, double* derivative)`; the
// derivative pointer may be null (the bracketing search never asks for it).
// A NaN result marks an invalid evaluation.
//
//   int32_t err = 0;
//   double y = newton_solve([&](double x, double* d) { return price(x, d); },
//                           target, 0.05, 1e-6, 64, &err);
#pragma once
#include <cmath>
#include <cstdint>
#include <utility>

#include "engine/safe_math.h"
#include "k_bond.h"

namespace kbond::engine {

struct AnyValue {
  constexpr bool operator()(double) const noexcept { return true; }
};

// Newton iteration toward f(x) = target. Error 1 (returning the last x) for
// a zero tolerance, an invalid or infinite start, a stall (|previous - value|
// <= 1e-15), a zero derivative, a step that overflows, an invalid evaluation
// or an exhausted iteration limit.
// `valid` rejects candidate points; a rejected step is halved toward the
// current point, each halving counting as an iteration.
template <class Eval, class Valid = AnyValue>
double newton_solve(Eval&& f, double target, double x0, double tolerance, int max_iterations,
                    int32_t* error, Valid&& valid = Valid{}) {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  err = 0;
  tolerance = std::fabs(tolerance);
  if (tolerance == 0.0 || !std::isfinite(x0) || !valid(x0)) {
    err = KVL_ERR_INVALID;
    return x0;
  }
  double x = x0;
  double previous = 1.67e308;
  int iterations = 0;
  while (iterations < max_iterations) {
    ++iterations;
    double derivative = 0.0;
    const double value = f(x, &derivative);
    if (std::isnan(value) || std::fabs(previous - value) <= 1e-15) {
      err = KVL_ERR_INVALID;
      return x;
    }
    const double diff = target - value;
    if (std::fabs(diff) <= tolerance) return x;
    if (derivative == 0.0 || std::isnan(derivative)) {
      err = KVL_ERR_INVALID;
      return x;
    }
    double next = x + diff / derivative;
    if (!std::isfinite(next)) {  // a denormal derivative: no usable step
      err = KVL_ERR_INVALID;
      return x;
    }
    while (!valid(next) && iterations < max_iterations) {
      next = (next + x) / 2.0;
      ++iterations;
    }
    previous = value;
    x = next;
  }
  err = KVL_ERR_INVALID;
  return x;
}

// Bracketing search for f(x) = target on [lower, upper] (swapped when given
// in the wrong order), absolute tolerance on |f - target|. Fails with error 1
// and the overflow marker when the ends do not bracket a root, an end
// evaluation is invalid, or the limit is below 1; an invalid evaluation
// inside the loop ends it with error 1 and the current point. The two end
// evaluations count as the first two iterations.
//
// The steps are false position with the Illinois weighting: an end kept
// twice in a row has its value halved, so the far end of a steep or very
// curved function is moved too. Whenever a step fails to halve the bracket,
// or lands outside it, the next step bisects: the bracket at least halves
// every second evaluation, whatever the function's shape.
template <class Eval>
double bracket_solve(Eval&& f, double target, double lower, double upper, double tolerance,
                     int max_iterations, int32_t* error) {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  err = 0;
  tolerance = std::fabs(tolerance);
  if (lower > upper) std::swap(lower, upper);
  if (max_iterations < 1) {
    err = KVL_ERR_INVALID;
    return kOverflowMarker;
  }
  double lo = lower, hi = upper;
  const double f_lo = f(lo, nullptr);
  if (std::isnan(f_lo)) {
    err = KVL_ERR_INVALID;
    return kOverflowMarker;
  }
  double g_lo = f_lo - target;
  if (std::fabs(g_lo) <= tolerance) return lo;
  const double f_hi = f(hi, nullptr);
  if (std::isnan(f_hi)) {
    err = KVL_ERR_INVALID;
    return kOverflowMarker;
  }
  double g_hi = f_hi - target;
  if (std::fabs(g_hi) <= tolerance) return hi;
  if ((g_lo > 0.0) == (g_hi > 0.0)) {
    err = KVL_ERR_INVALID;
    return kOverflowMarker;
  }
  double x = hi;
  bool bisect = false;
  int kept = 0;  // which end the last step kept: -1 lo, +1 hi, 0 none yet
  for (int iteration = 2; iteration < max_iterations; ++iteration) {
    const double width = hi - lo;
    double next = 0.5 * (lo + hi);
    if (!bisect) {
      const double secant = hi - width * g_hi / (g_hi - g_lo);
      if (secant > lo && secant < hi) next = secant;
    }
    x = next;
    const double fx = f(x, nullptr);
    if (std::isnan(fx)) {
      err = KVL_ERR_INVALID;
      return x;
    }
    const double g = fx - target;
    if (std::fabs(g) <= tolerance || width < tolerance) return x;
    if ((g > 0.0) == (g_hi > 0.0)) {
      hi = x;
      g_hi = g;
      if (kept < 0) g_lo *= 0.5;
      kept = -1;
    } else {
      lo = x;
      g_lo = g;
      if (kept > 0) g_hi *= 0.5;
      kept = 1;
    }
    bisect = hi - lo > 0.5 * width;
  }
  err = KVL_ERR_INVALID;
  return x;
}

}  // namespace kbond::engine
