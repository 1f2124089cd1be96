// The price of a perpetual bond at a yield.
//
// Perpetuity formula (simple-yield convention): the last rate for ever,
//   P = 100 * c * (1 - tax) / y.
// Explicit sum (compound yield at the coupon frequency f, v = 1 / (1 + y/f)):
// the next coupon at t0 periods, the later ones a period apart (or at their
// business-day or actual-day times), each at the rate in force on its date,
// through the coupon steps; after the last of them the last rate as a
// perpetuity, c * (1 - tax) / y, discounted from that coupon's time:
//   P = 100 * (sum of c_k v^t_k  +  c_last (1 - tax) / y * v^t_last  -  accrued).
// Simple first period (Moosmueller convention): the explicit sum with the
// next coupon discounted at simple interest, 1 / (1 + t0 y/f), and every
// later flow compounded from there.
#pragma once
#include <cstdint>

#include "perpetual/perpetual_desc.h"

namespace kbond::perpetual {

// Clean price per 100. `first_derivative` and `second_derivative` (may be
// null) receive the derivatives by yield per unit of face; the second is a
// central difference of the first (step 5e-6) except for the perpetuity
// formula, which has it in closed form. Errors: 401 (zero yield, 1 + y/f not
// positive, a non-finite yield, a yield so near zero that the price or a
// derivative overflows) and 460 (no price function for the type's
// convention), both with -1.0.
double perpetual_price(double yield, const perpetual_desc& desc, double* first_derivative,
                       double* second_derivative, int32_t* error) noexcept;

// The yield, compounded at the coupon frequency, that prices the bond at
// `price` (clean, per 100): Newton from the current yield (0.05 below a 1%
// coupon), tolerance 1e-6 of face, 64 iterations, positive yields below 25;
// then a bracketing search on [-0.9 f, 25]. -999.0 with the solver's error
// when both fail.
double perpetual_yield(double price, const perpetual_desc& desc, int32_t* error) noexcept;

}  // namespace kbond::perpetual
