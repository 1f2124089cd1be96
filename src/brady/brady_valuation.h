// Brady bonds: sovereign bonds whose principal is backed by zero-coupon
// collateral and whose next few coupons are backed by a rolling interest
// guarantee. Their value splits into three parts priced at three rates:
//
//   guaranteed coupons   the first n coupons at the guarantee rate yG,
//                        dG = 1 / (1 + yG/f) per period
//   sovereign coupons    the others at the stripped yield yS as of the end of
//                        the guarantee, brought back at the guarantee rate:
//                        dG^n * interest * dS^(t - n), dS = 1 / (1 + yS/f)
//   principal            at the stripped yield when not collateralised;
//                        collateralised, each repayment p at t is worth
//                        p * ((1 - dC^(T - t)) * dS^t + dC^T), T the time of
//                        the last flow, dC = (1 / (1 + yC/2))^(2/f): a bullet
//                        at T is worth p * dC^T whatever the stripped yield
//
// The flows (interest, principal, time in coupon periods) are the straight
// bond's cash-flow table.
#pragma once
#include <cstdint>

namespace kbond::brady {

// The straight bond's remaining flows, per 100 of face.
struct BradyFlows {
  const double* interest = nullptr;
  const double* principal = nullptr;
  const double* periods = nullptr;  // time from settlement in coupon periods
  int32_t count = 0;
  double frequency = 2.0;
};

struct BradyTerms {
  double guarantee_rate = 0.0;   // yG, at the coupon frequency
  double collateral_yield = 0.0; // yC, semi-annual
  int32_t guaranteed = 2;        // coupons under the guarantee (capped at the flows)
  bool collateralised = true;
};

// Present value per 100 of face (dirty) at the stripped yield. When
// `weighted_time` is given it receives the sum of time x present value over
// the parts, each part's present value placed at its own time (a
// collateralised repayment's collateral part at T).
double brady_value(const BradyFlows& flows, const BradyTerms& terms, double stripped_yield,
                   double* weighted_time) noexcept;

// The stripped yield at which brady_value equals `dirty_target`: a secant
// search from the trial values 0.0 and 0.1, then, when it fails, a bracket
// grown from them and bisection. Returns false when no yield is found.
bool solve_stripped_yield(const BradyFlows& flows, const BradyTerms& terms, double dirty_target,
                          double* stripped_yield) noexcept;

}  // namespace kbond::brady
