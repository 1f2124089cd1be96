// The assumed annual inflation rate that projects the index of flows not yet
// fixed: 3 % unless the caller gives one, and never -50 % or below.
#pragma once
#include <cmath>

namespace kbond::inflation {

inline constexpr double kDefaultInflation = 0.03;

// The caller's rate (NULL: the default); false when it is not usable.
inline bool assumed_inflation(const double* given, double* rate) noexcept {
  *rate = given != nullptr ? *given : kDefaultInflation;
  return *rate > -0.5 && std::isfinite(*rate);
}

}  // namespace kbond::inflation
