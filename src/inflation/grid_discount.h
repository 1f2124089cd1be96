// Discount factors v^t along a coupon grid. Successive flows one period
// apart reuse the previous factor (one multiplication instead of a power);
// any other step takes the power afresh.
#pragma once
#include <cmath>

namespace kbond::inflation {

class GridDiscount {
 public:
  explicit GridDiscount(double log_v) noexcept : log_v_(log_v), v_(std::exp(log_v)) {}

  double at(double periods) noexcept {
    factor_ = periods - last_periods_ == 1.0 ? factor_ * v_ : std::exp(periods * log_v_);
    last_periods_ = periods;
    return factor_;
  }

 private:
  double log_v_;
  double v_;
  double last_periods_ = -1e300;
  double factor_ = 0.0;
};

}  // namespace kbond::inflation
