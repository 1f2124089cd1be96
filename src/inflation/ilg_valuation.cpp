#include "inflation/ilg_valuation.h"

#include <cmath>

#include "engine/safe_math.h"
#include "inflation/grid_discount.h"
#include "inflation/ilg_flows.h"
#include "inflation/linked_yield.h"
#include "k_bond.h"

namespace kbond::inflation {

namespace {

double money_market_price(const IlgDesc& desc, double yield, double* derivative, int32_t* error) noexcept {
  const int32_t redemption_date = payment_date(desc.maturity, desc.pay_on_business_day, desc.calendar);
  const double t = (redemption_date - desc.settlement) / kGiltMoneyMarketBasis;
  const double denominator = 1.0 + t * yield;
  if (denominator == 0.0 || !std::isfinite(denominator)) {
    *error = KVL_ERR_INVALID;
    return -100.0;
  }
  double coupon = 0.0;
  const double redemption = visit_ilg_flows(desc, [&](int32_t, double amount, double) { coupon = amount; });
  const double price = 100.0 * (coupon + redemption) / denominator;
  if (derivative != nullptr) *derivative = -price * t / denominator;
  return price;
}

}  // namespace

double ilg_dirty_price(const IlgDesc& desc, double yield, double* derivative, int32_t* error) noexcept {
  *error = 0;
  if (ilg_single_flow(desc)) return money_market_price(desc, yield, derivative, error);
  const double per_period = 1.0 + 0.5 * yield;
  if (!(per_period > 0.0)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const double log_v = -std::log(per_period) - 0.5 * std::log1p(desc.inflation);
  GridDiscount discount(log_v);
  double value = 0.0, weighted = 0.0, last_periods = 0.0, last_factor = 0.0;
  const double redemption = visit_ilg_flows<false>(desc, [&](int32_t, double amount, double periods) {
    last_factor = discount.at(periods);
    const double pv = amount * last_factor;
    value += pv;
    weighted += periods * pv;
    last_periods = periods;
  });
  const double redemption_pv = redemption * last_factor;
  value += redemption_pv;
  weighted += last_periods * redemption_pv;
  if (derivative != nullptr) *derivative = -100.0 * weighted / (2.0 * per_period);
  return 100.0 * value;
}

double ilg_clean_price(const IlgDesc& desc, double yield, int32_t* error) noexcept {
  const double dirty = ilg_dirty_price(desc, yield, nullptr, error);
  if (*error != 0) return dirty;
  return engine::round_to(dirty, 6) - desc.accrued;
}

double ilg_yield(const IlgDesc& desc, double clean_price, int32_t* error) noexcept {
  *error = 0;
  if (!std::isfinite(clean_price)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  int32_t eval_error = 0;
  auto clean = [&](double y, double* derivative) {
    const double dirty = ilg_dirty_price(desc, y, derivative, &eval_error);
    return eval_error != 0 ? std::nan("") : dirty - desc.accrued;
  };
  auto valid = [](double y) { return y > -1.0 && y < 10.0; };
  return solve_linked_yield(clean, clean_price, desc.real_coupon, valid, -0.9, 2.0, error);
}

}  // namespace kbond::inflation
