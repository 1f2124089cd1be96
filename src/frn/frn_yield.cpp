#include "frn/frn_yield.h"

#include <limits>

#include "engine/solvers.h"

namespace kbond::frn {

double frn_yield_from_price(const FrnValuation& val, double price, int32_t& err) noexcept {
  const double frequency = val.schedule->type->frequency;
  auto evaluate = [&](double y, double* derivative) {
    FrnPrice p;
    if (frn_price_core(val, y, false, &p)) return std::numeric_limits<double>::quiet_NaN();
    if (derivative) *derivative = p.first;
    return p.clean;
  };
  auto has_discount_factor = [frequency](double y) { return 1.0 + y / frequency > 0.0; };
  const double start = val.rates->last_rate();
  double y = engine::newton_solve(evaluate, price, start, 1e-6, 64, &err, has_discount_factor);
  if (err == 0) return y;
  y = engine::bracket_solve(evaluate, price, 0.0, 25.0, 1e-6, 64, &err);
  return err == 0 ? y : -999.0;
}

}  // namespace kbond::frn
