#include "inflation/linker_valuation.h"

#include <cmath>

#include "inflation/grid_discount.h"
#include "inflation/linked_yield.h"
#include "inflation/linker_flows.h"
#include "k_bond.h"

namespace kbond::inflation {

int32_t linker_value(const LinkerDesc& desc, double yield, LinkerValue* value) noexcept {
  *value = LinkerValue{};
  const double f = desc.frequency;
  const double per_period = 1.0 + yield / f;
  if (!(per_period > 0.0) || !std::isfinite(yield)) return KVL_ERR_INVALID;
  const double log_v = -std::log(per_period) - std::log1p(desc.inflation) / f;
  GridDiscount discount(log_v);
  double pv_sum = 0.0, t_sum = 0.0, tt_sum = 0.0, last_periods = 0.0, last_factor = 0.0;
  auto add = [&](double amount, double periods, double factor) {
    const double pv = amount * factor;
    pv_sum += pv;
    t_sum += periods * pv;
    tt_sum += periods * (periods + 1.0) * pv;
  };
  const double redemption = visit_linker_flows<false>(desc, [&](int32_t, double amount, double periods) {
    last_factor = discount.at(periods);
    add(amount, periods, last_factor);
    last_periods = periods;
  });
  add(redemption, last_periods, last_factor);
  // d(v^t)/dy = -t v^t / (f (1 + y/f)); the second derivative adds t(t+1).
  const double scale = f * per_period;
  value->dirty = 100.0 * pv_sum;
  value->first = -100.0 * t_sum / scale;
  value->second = 100.0 * tt_sum / (scale * scale);
  // Inflation projected over centuries, or a yield near -100 %, can overflow
  // the sums: no value rather than an infinite one.
  if (!std::isfinite(value->dirty) || !std::isfinite(value->first) ||
      !std::isfinite(value->second)) {
    *value = LinkerValue{};
    return KVL_ERR_INVALID;
  }
  return 0;
}

double linker_quote(const LinkerDesc& desc, double dirty) noexcept {
  const double clean = dirty - desc.accrued;
  return desc.nominal_basis ? clean : clean / desc.index_ratio;
}

double linker_yield(const LinkerDesc& desc, double price, int32_t* error) noexcept {
  *error = 0;
  if (!(price > 0.0) || !std::isfinite(price)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const double quote_per_dirty = desc.nominal_basis ? 1.0 : 1.0 / desc.index_ratio;
  auto quote = [&](double y, double* derivative) {
    LinkerValue v;
    if (linker_value(desc, y, &v) != 0) return std::nan("");
    if (derivative != nullptr) *derivative = v.first * quote_per_dirty;
    return linker_quote(desc, v.dirty);
  };
  const double lowest = -0.99 * desc.frequency;
  auto valid = [&](double y) { return y > lowest && y < 10.0; };
  return solve_linked_yield(quote, price, desc.coupon, valid, -0.5, 2.0, error);
}

}  // namespace kbond::inflation
