// Valuation of a Brady bond's three parts and the stripped-yield search.
#include "brady/brady_valuation.h"

#include <algorithm>
#include <cmath>

namespace kbond::brady {
namespace {

constexpr double kValueTolerance = 1e-9;  // per 100 of face
constexpr double kYieldTolerance = 1e-13;
constexpr int kSecantIterations = 60;
constexpr int kBisections = 200;
constexpr double kHighestYield = 1000.0;

}  // namespace

double brady_value(const BradyFlows& flows, const BradyTerms& terms, double stripped_yield,
                   double* weighted_time) noexcept {
  const double f = flows.frequency;
  const double log_g = -std::log1p(terms.guarantee_rate / f);
  const double log_c = -std::log1p(terms.collateral_yield / 2.0) * (2.0 / f);
  const double log_s = -std::log1p(stripped_yield / f);
  const int32_t n = std::min(std::max(terms.guaranteed, 0), flows.count);
  const double last_time = flows.count > 0 ? flows.periods[flows.count - 1] : 0.0;
  const double collateral_df = std::exp(last_time * log_c);
  const double end_of_guarantee = std::exp(n * log_g);
  double value = 0.0, weighted = 0.0;
  auto add = [&](double pv, double t) {
    value += pv;
    weighted += pv * t;
  };
  for (int32_t i = 0; i < flows.count; ++i) {
    const double t = flows.periods[i];
    const double interest = flows.interest[i];
    if (i < n) {
      add(interest * std::exp(t * log_g), t);
    } else {
      add(interest * end_of_guarantee * std::exp((t - n) * log_s), t);
    }
    const double principal = flows.principal[i];
    if (principal == 0.0) continue;
    const double stripped_df = std::exp(t * log_s);
    if (terms.collateralised) {
      add(principal * (1.0 - std::exp((last_time - t) * log_c)) * stripped_df, t);
      add(principal * collateral_df, last_time);
    } else {
      add(principal * stripped_df, t);
    }
  }
  if (weighted_time) *weighted_time = weighted;
  return value;
}

bool solve_stripped_yield(const BradyFlows& flows, const BradyTerms& terms, double dirty_target,
                          double* stripped_yield) noexcept {
  const double lowest = -0.999 * flows.frequency;  // keeps 1 + yS/f positive
  auto gap = [&](double y) { return brady_value(flows, terms, y, nullptr) - dirty_target; };

  // Secant from the two trial values.
  double x0 = 0.0, x1 = 0.1;
  double g0 = gap(x0), g1 = gap(x1);
  for (int i = 0; i < kSecantIterations && std::isfinite(g0) && std::isfinite(g1); ++i) {
    if (std::fabs(g1) <= kValueTolerance) {
      *stripped_yield = x1;
      return true;
    }
    if (g1 == g0) break;
    double x2 = x1 - g1 * (x1 - x0) / (g1 - g0);
    if (!(x2 > lowest) || x2 > kHighestYield) break;
    x0 = x1;
    g0 = g1;
    x1 = x2;
    g1 = gap(x1);
  }

  // The value falls as the stripped yield rises: grow a bracket from the
  // trial values, then halve it.
  double lo = 0.0, hi = 0.1;
  double g_lo = gap(lo), g_hi = gap(hi);
  while (std::isfinite(g_lo) && g_lo < 0.0 && lo > lowest) {
    hi = lo;
    g_hi = g_lo;
    lo = std::max(lowest, lo - (hi - lo + 0.1));
    g_lo = gap(lo);
  }
  while (std::isfinite(g_hi) && g_hi > 0.0 && hi < kHighestYield) {
    lo = hi;
    g_lo = g_hi;
    hi = std::min(kHighestYield, hi * 2.0 + 0.1);
    g_hi = gap(hi);
  }
  if (!std::isfinite(g_lo) || !std::isfinite(g_hi) || g_lo < 0.0 || g_hi > 0.0) return false;
  for (int i = 0; i < kBisections && hi - lo > kYieldTolerance; ++i) {
    const double mid = 0.5 * (lo + hi);
    const double g = gap(mid);
    if (!std::isfinite(g)) return false;
    if (std::fabs(g) <= kValueTolerance) {
      *stripped_yield = mid;
      return true;
    }
    if (g > 0.0) {
      lo = mid;
    } else {
      hi = mid;
    }
  }
  *stripped_yield = 0.5 * (lo + hi);
  return std::fabs(gap(*stripped_yield)) <= 1e-6;
}

}  // namespace kbond::brady
