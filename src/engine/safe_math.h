// Guarded elementary functions and yield re-expression between compounding
// frequencies. The overflow marker stands for an undefined power or
// logarithm and for a failed bracketing search.
#pragma once
#include <cstdint>

namespace kbond::engine {

inline constexpr double kOverflowMarker = 1.7014117331926443e38;

// No real price, yield, rate or cash flow comes anywhere near 1e100 (per
// unit or per 100 of face). Such magnitudes come only from broken input and
// would overflow further on, so they are errors rather than results.
inline constexpr double kAbsurdMagnitude = 1e100;

// |x| short of the absurd; false for NaN and the infinities.
inline bool plausible_magnitude(double x) noexcept {
  return x < kAbsurdMagnitude && x > -kAbsurdMagnitude;
}

// 0 for x = 0; the overflow marker for x < 0 with a non-integer exponent.
double safe_pow(double x, double e) noexcept;
// ln x for x > 0, else the overflow marker.
double safe_log(double x) noexcept;
// 0 below -700, else e^x.
double safe_exp(double x) noexcept;

// Re-expresses yield y. With a, b, d, k periods per year (0 = continuous):
//   a, b != 0: ((1 + y/d)^(a/b) - 1) * k
//   b == 0:    ln(1 + y/d) * a            (error when 1 + y/d <= 0)
//   a == 0:    (e^(y/b) - 1) * k
//   both 0:    y
// Typically a = d = the source frequency and b = k = the target frequency.
// `error` (may be null) receives 0 or 1; 1 also when the result overflows.
double yield_convert(double y, double a, double b, double d, double k, int32_t* error) noexcept;

// floor(10^n * x + 0.5) / 10^n: the rounding of every exported result.
double round_to(double x, int n) noexcept;

}  // namespace kbond::engine
