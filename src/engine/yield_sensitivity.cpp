// Price and derivatives by the quoted yield, for the risk measures.
#include "engine/yield_sensitivity.h"

#include <cmath>

#include "engine/call_frame.h"
#include "engine/price_from_yield.h"
#include "k_bond.h"

namespace kbond::engine {

int32_t yield_sensitivity(double yield, const engine::bond_desc& desc, bool want_second,
                          YieldSensitivity& out) noexcept {
  out = YieldSensitivity{};
  if (!std::isfinite(yield)) return KVL_ERR_INVALID;
  const double f = desc.frequency;
  const int32_t q = engine::yield_quotation_frequency(desc);
  double y = yield;
  out.quote_frequency = f;
  if (q != 0) {
    int32_t err = 0;
    y = engine::coupon_yield_from_quoted(yield, desc, &err);
    if (err != 0) return err;
    out.converted = true;
    out.quote_frequency = q;
    out.ratio = (y / f + 1.0) / (yield / q + 1.0);
  }
  int32_t err = 0;
  out.price = engine::price_from_yield(y, desc, &out.first, want_second ? &out.second : nullptr,
                                       &err);
  if (err != 0) return err;
  // A bond settling on its maturity date, or extreme inputs, can leave the
  // derivatives undefined: no measure can be formed from them.
  if (!std::isfinite(out.price) || !std::isfinite(out.first) || !std::isfinite(out.second) ||
      !std::isfinite(out.ratio))
    return KVL_ERR_INVALID;
  const double accrued = desc.price_factor_flag ? desc.accrued * desc.price_factor : desc.accrued;
  out.dirty = out.price * 0.01 + accrued;
  return 0;
}

}  // namespace kbond::engine
