// KVLpbcpn, KVLpbpr, KVLpbai, KVLpbcamt, KVLpbyld: coupon dates, price,
// accrued interest, coupon amount and yield of a perpetual bond.
#include <cmath>

#include "dates/month_arithmetic.h"
#include "engine/call_frame.h"
#include "engine/safe_math.h"
#include "k_bond.h"
#include "perpetual/perpetual_call.h"
#include "perpetual/perpetual_price.h"

using kbond::perpetual::perpetual_arguments;
using kbond::perpetual::PerpetualCall;

extern "C" KVL_EXPORT int32_t KVL_API KVLpbcpn(int32_t reference_date, int32_t settlement,
                                              const int32_t* k, const int32_t* step_date,
                                              const int32_t* type, const int32_t* frequency,
                                              int32_t* error) {
  // Only the dates matter: any coupon rate describes the cycle.
  const double rate = 0.1;
  const int32_t first_step = step_date ? *step_date : 0;
  PerpetualCall call(perpetual_arguments(&rate, 1, reference_date, settlement,
                                         first_step != 0 ? step_date : nullptr,
                                         first_step != 0 ? 1 : 0, type, frequency, nullptr,
                                         nullptr, nullptr, nullptr, 0, nullptr),
                     error);
  if (!call.ok()) return -1;
  const auto& g = call.desc().grid;
  const int32_t date = kbond::dates::schedule_date(settlement, k ? *k : 0, g.months_per_period,
                                                   g.anchor, g.eom, nullptr);
  if (date < 1 || date < first_step) {
    call.error() = KVL_ERR_INVALID;
    return -1;
  }
  return date;
}

extern "C" KVL_EXPORT double KVL_API KVLpbpr(const double* coupons, int32_t n_coupons,
                                            int32_t reference_date, int32_t settlement,
                                            double yield, const int32_t* step_dates,
                                            int32_t n_steps, const int32_t* type,
                                            const int32_t* frequency,
                                            const double* withholding_tax,
                                            const int32_t* ex_coupon_rule,
                                            const int32_t* calendar_flags,
                                            const int32_t* holidays, int32_t n_holidays,
                                            const int32_t* dated_date, int32_t* error) {
  PerpetualCall call(perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                         step_dates, n_steps, type, frequency, withholding_tax,
                                         ex_coupon_rule, calendar_flags, holidays, n_holidays,
                                         dated_date),
                     error);
  if (!call.ok()) return -1.0;
  const double price =
      kbond::perpetual::perpetual_price(yield, call.desc(), nullptr, nullptr, &call.error());
  if (call.error() != 0) return -1.0;
  const double rounded = kbond::engine::round_price_by_type(price, call.desc().grid.type);
  // 100 c / y for a yield near zero (1e-300) is finite but overflows the
  // six-decimal rounding: as good as a zero yield.
  if (!std::isfinite(rounded)) {
    call.error() = KVL_ERR_ZERO_DIVISOR;
    return -1.0;
  }
  return rounded;
}

extern "C" KVL_EXPORT double KVL_API KVLpbai(const double* coupons, int32_t n_coupons,
                                            int32_t reference_date, int32_t settlement,
                                            const int32_t* step_dates, int32_t n_steps,
                                            const int32_t* type, const int32_t* frequency,
                                            const double* withholding_tax,
                                            const int32_t* calendar_flags,
                                            const int32_t* holidays, int32_t n_holidays,
                                            const int32_t* dated_date, int32_t* error) {
  PerpetualCall call(perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                         step_dates, n_steps, type, frequency, withholding_tax,
                                         nullptr, calendar_flags, holidays, n_holidays,
                                         dated_date),
                     error);
  if (!call.ok()) return -1.0;
  const auto& g = call.desc().grid;
  return kbond::engine::accrued_per_100(g.accrued, g.type);
}

extern "C" KVL_EXPORT double KVL_API KVLpbcamt(const double* coupons, int32_t n_coupons,
                                              int32_t reference_date, int32_t settlement,
                                              const int32_t* step_dates, int32_t n_steps,
                                              const int32_t* type, const int32_t* frequency,
                                              const double* withholding_tax, int32_t* error) {
  PerpetualCall call(perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                         step_dates, n_steps, type, frequency, withholding_tax,
                                         nullptr, nullptr, nullptr, 0, nullptr),
                     error);
  if (!call.ok()) return -1.0;
  return call.desc().grid.full_coupon * 100.0;
}

extern "C" KVL_EXPORT double KVL_API KVLpbyld(const double* coupons, int32_t n_coupons,
                                             int32_t reference_date, int32_t settlement,
                                             double price, const int32_t* step_dates,
                                             int32_t n_steps, const int32_t* type,
                                             const int32_t* frequency,
                                             const double* withholding_tax,
                                             const int32_t* ex_coupon_rule,
                                             const int32_t* calendar_flags,
                                             const int32_t* holidays, int32_t n_holidays,
                                             const int32_t* dated_date, int32_t* error) {
  PerpetualCall call(perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                         step_dates, n_steps, type, frequency, withholding_tax,
                                         ex_coupon_rule, calendar_flags, holidays, n_holidays,
                                         dated_date),
                     error);
  if (!call.ok()) return -1.0;
  if (!(price > 0.0) || !std::isfinite(price)) {
    call.error() = KVL_ERR_BAD_PRICE;
    return -1.0;
  }
  if (call.desc().convention == kbond::perpetual::Convention::kNone) {
    call.error() = KVL_ERR_OUT_OF_SET;
    return -1.0;
  }
  return kbond::perpetual::perpetual_yield(price, call.desc(), &call.error());
}
