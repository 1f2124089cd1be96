// The measures every family quotes from its price's slope by the yield: the
// duration, the value of a basis point and the value of a tick. The family
// gives its frame and its slope; the scale defaults, the refusals and the
// failure values are the same for all.
//
//   return engine::value_of_basis_point<PikCall>(args, scale, KVL_ERR_ZERO_DIVISOR, error,
//       [&](const pik_desc& d, int32_t& err) { ... return slope; });
#pragma once
#include <cmath>
#include <cstdint>

#include "engine/bond_desc.h"
#include "engine/yield_sensitivity.h"
#include "k_bond.h"

namespace kbond::engine {

// What a measure returns once it has started and cannot finish.
inline constexpr double kMeasureFailure = -999.0;

// A scale or tick size given and not positive.
inline bool bad_scale(const double* scale) noexcept { return scale && !(*scale > 0.0); }

// Price plus accrued interest per unit of face; 0 when not finite.
inline double dirty_per_unit(double price, double accrued) noexcept {
  const double dirty = price * 0.01 + accrued;
  return std::isfinite(dirty) ? dirty : 0.0;
}

// The modified duration -slope / dirty (slope per unit of face), or the
// Macaulay duration when `kind` is given and nonzero. A dirty value of 0 is
// KVL_ERR_ZERO_DIVISOR and -1.0.
inline double duration_from_slope(double slope, double dirty, double yield, double frequency,
                                  const int32_t* kind, int32_t& err) noexcept {
  if (dirty == 0.0) {
    err = KVL_ERR_ZERO_DIVISOR;
    return -1.0;
  }
  const double modified = -slope / dirty;
  if (kind && *kind != 0) return modified * (1.0 + yield / frequency);
  return modified;
}

// A straight bond's modified duration at the quoted `yield`, or its
// Macaulay duration with `macaulay`; -1.0 with the error code when the
// price fails or its dirty value is not positive (KVL_ERR_INVALID).
inline double bond_duration(double yield, const bond_desc& desc, bool macaulay,
                            int32_t& err) noexcept {
  YieldSensitivity s;
  err = yield_sensitivity(yield, desc, false, s);
  if (err == 0 && !(s.dirty > 0.0)) err = KVL_ERR_INVALID;
  if (err != 0) return -1.0;
  const double modified = -(s.first * s.ratio) / s.dirty;
  return macaulay ? modified * (yield / s.quote_frequency + 1.0) : modified;
}

// -slope / scale (scale NULL: 100, the value per 100 of face), where
// `slope(desc, err)` gives the price's slope by the yield inside the family's
// frame. A bad scale is refused before the lock (KVL_ERR_BAD_SCALE); a
// set-up that fails returns -1.0 (-999.0 for the lock), a slope that fails
// -999.0, and a value that overflows `overflow_code` with -999.0.
template <class Frame, class Args, class Slope>
double value_of_basis_point(const Args& args, const double* scale, int32_t overflow_code,
                            int32_t* error, Slope&& slope) noexcept {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  if (bad_scale(scale)) {
    *err = KVL_ERR_BAD_SCALE;
    return kMeasureFailure;
  }
  Frame call(args, err);
  if (!call.ok()) return *err == KVL_ERR_LOCK ? kMeasureFailure : -1.0;
  const double d = slope(call.desc(), *err);
  if (*err != 0) return kMeasureFailure;
  const double value = -d / (scale ? *scale : 100.0);
  if (!std::isfinite(value)) {  // a denormal scale or outstanding factor
    *err = overflow_code;
    return kMeasureFailure;
  }
  return value;
}

// 1 / (value of a basis point x ticks per point), ticks NULL: 32 (a 32nd of
// a point); `value_of_bp()` runs the family's basis-point value with its
// default scale. A price that does not move with the yield, or a denormal
// tick size, leaves no finite tick value: KVL_ERR_ZERO_DIVISOR unless the
// basis-point value already failed.
template <class ValueOfBasisPoint>
double tick_value(const double* ticks, int32_t* error, ValueOfBasisPoint&& value_of_bp) noexcept {
  if (bad_scale(ticks)) {
    if (error) *error = KVL_ERR_BAD_SCALE;
    return kMeasureFailure;
  }
  const double per_point = ticks ? *ticks : 32.0;
  const double value = 1.0 / (value_of_bp() * per_point);
  if (!std::isfinite(value)) {
    if (error && *error == 0) *error = KVL_ERR_ZERO_DIVISOR;
    return kMeasureFailure;
  }
  return value;
}

}  // namespace kbond::engine
