#include "engine/safe_math.h"
#include "k_bond.h"

#include <cmath>

namespace kbond::engine {

double safe_pow(double x, double e) noexcept {
  if (x == 0.0) return 0.0;
  if (x < 0.0 && e != std::floor(e)) return kOverflowMarker;
  return std::pow(x, e);
}

double safe_log(double x) noexcept { return x > 0.0 ? std::log(x) : kOverflowMarker; }

double safe_exp(double x) noexcept { return x < -700.0 ? 0.0 : std::exp(x); }

double yield_convert(double y, double a, double b, double d, double k, int32_t* error) noexcept {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  err = 0;
  if (a != 0.0 && b != 0.0) {
    const double converted = (safe_pow(1.0 + y / d, a / b) - 1.0) * k;
    if (!std::isfinite(converted)) err = KVL_ERR_INVALID;  // a yield too large to compound
    return converted;
  }
  if (a != 0.0) {  // to continuous compounding
    const double base = 1.0 + y / d;
    if (!(base > 0.0)) {
      err = KVL_ERR_INVALID;
      return 0.0;
    }
    return std::log(base) * a;
  }
  if (b != 0.0) {  // from continuous compounding
    const double converted = (std::exp(y / b) - 1.0) * k;
    if (!std::isfinite(converted)) err = KVL_ERR_INVALID;
    return converted;
  }
  return y;
}

double round_to(double x, int n) noexcept {
  const double scale = std::pow(10.0, n);
  return std::floor(scale * x + 0.5) / scale;
}

}  // namespace kbond::engine
