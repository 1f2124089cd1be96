// The yield search of the inflation-linked families: Newton from the real
// coupon, then bisection over the family's bracket when Newton fails.
#pragma once
#include <cmath>
#include <cstdint>

#include "engine/solvers.h"
#include "k_bond.h"

namespace kbond::inflation {

// The yield at which `quote(y, derivative)` meets `target`; -1.0 with error 1
// when neither search converges to a number.
template <class Quote, class Valid>
double solve_linked_yield(Quote&& quote, double target, double guess, Valid&& valid, double lower,
                          double upper, int32_t* error) noexcept {
  int32_t solve_error = 0;
  double y = engine::newton_solve(quote, target, guess, 1e-9, 64, &solve_error, valid);
  if (solve_error != 0) y = engine::bracket_solve(quote, target, lower, upper, 1e-9, 200, &solve_error);
  if (solve_error != 0 || !std::isfinite(y)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  return y;
}

}  // namespace kbond::inflation
