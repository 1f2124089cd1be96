// KVLpbdur, KVLpbconv, KVLpbvalbp, KVLpbval32: the sensitivity of a
// perpetual bond's price to its yield.
#include "engine/price_measures.h"
#include "k_bond.h"
#include "perpetual/perpetual_call.h"
#include "perpetual/perpetual_price.h"

using kbond::engine::kMeasureFailure;
using kbond::perpetual::perpetual_arguments;
using kbond::perpetual::perpetual_desc;
using kbond::perpetual::PerpetualCall;

namespace {

// The duration at `yield` (of the kind asked) or, with `convexity`, the
// convexity: the slope or curvature of the price over its dirty value.
double measure(const kbond::perpetual::perpetual_args& args, double yield,
               const int32_t* duration_kind, bool convexity, int32_t* error) {
  PerpetualCall call(args, error);
  if (!call.ok()) return -1.0;
  const auto& bond = call.desc();
  double slope = 0.0, curvature = 0.0;
  const double price = kbond::perpetual::perpetual_price(
      yield, bond, convexity ? nullptr : &slope, convexity ? &curvature : nullptr, &call.error());
  if (call.error() != 0) return convexity ? kMeasureFailure : -1.0;
  const double dirty = kbond::engine::dirty_per_unit(price, bond.grid.accrued);
  if (!convexity) {
    return kbond::engine::duration_from_slope(slope, dirty, yield, bond.grid.frequency,
                                              duration_kind, call.error());
  }
  if (dirty == 0.0) {
    call.error() = KVL_ERR_ZERO_DIVISOR;
    return kMeasureFailure;
  }
  return curvature / dirty;
}

}  // namespace

extern "C" KVL_EXPORT double KVL_API KVLpbdur(const double* coupons, int32_t n_coupons,
                                             int32_t reference_date, int32_t settlement,
                                             double yield, const int32_t* step_dates,
                                             int32_t n_steps, const int32_t* type,
                                             const int32_t* frequency,
                                             const int32_t* duration_kind,
                                             const double* withholding_tax,
                                             const int32_t* ex_coupon_rule,
                                             const int32_t* calendar_flags,
                                             const int32_t* holidays, int32_t n_holidays,
                                             const int32_t* dated_date, int32_t* error) {
  return measure(perpetual_arguments(coupons, n_coupons, reference_date, settlement, step_dates,
                                     n_steps, type, frequency, withholding_tax, ex_coupon_rule,
                                     calendar_flags, holidays, n_holidays, dated_date),
                 yield, duration_kind, false, error);
}

extern "C" KVL_EXPORT double KVL_API KVLpbconv(const double* coupons, int32_t n_coupons,
                                              int32_t reference_date, int32_t settlement,
                                              double yield, const int32_t* step_dates,
                                              int32_t n_steps, const int32_t* type,
                                              const int32_t* frequency,
                                              const double* withholding_tax,
                                              const int32_t* ex_coupon_rule,
                                              const int32_t* calendar_flags,
                                              const int32_t* holidays, int32_t n_holidays,
                                              const int32_t* dated_date, int32_t* error) {
  return measure(perpetual_arguments(coupons, n_coupons, reference_date, settlement, step_dates,
                                     n_steps, type, frequency, withholding_tax, ex_coupon_rule,
                                     calendar_flags, holidays, n_holidays, dated_date),
                 yield, nullptr, true, error);
}

extern "C" KVL_EXPORT double KVL_API KVLpbvalbp(const double* coupons, int32_t n_coupons,
                                               int32_t reference_date, int32_t settlement,
                                               double yield, const int32_t* step_dates,
                                               int32_t n_steps, const int32_t* type,
                                               const int32_t* frequency,
                                               const double* withholding_tax,
                                               const int32_t* ex_coupon_rule, const double* scale,
                                               const int32_t* calendar_flags,
                                               const int32_t* holidays, int32_t n_holidays,
                                               const int32_t* dated_date, int32_t* error) {
  return kbond::engine::value_of_basis_point<PerpetualCall>(
      perpetual_arguments(coupons, n_coupons, reference_date, settlement, step_dates, n_steps,
                          type, frequency, withholding_tax, ex_coupon_rule, calendar_flags,
                          holidays, n_holidays, dated_date),
      scale, KVL_ERR_ZERO_DIVISOR, error, [yield](const perpetual_desc& bond, int32_t& err) {
        double slope = 0.0;
        kbond::perpetual::perpetual_price(yield, bond, &slope, nullptr, &err);
        return slope;
      });
}

extern "C" KVL_EXPORT double KVL_API KVLpbval32(const double* coupons, int32_t n_coupons,
                                               int32_t reference_date, int32_t settlement,
                                               double yield, const int32_t* step_dates,
                                               int32_t n_steps, const int32_t* type,
                                               const int32_t* frequency,
                                               const double* withholding_tax,
                                               const int32_t* ex_coupon_rule, const double* ticks,
                                               const int32_t* calendar_flags,
                                               const int32_t* holidays, int32_t n_holidays,
                                               const int32_t* dated_date, int32_t* error) {
  // A bond paying no coupon does not move with its yield: no tick value.
  return kbond::engine::tick_value(ticks, error, [&] {
    return KVLpbvalbp(coupons, n_coupons, reference_date, settlement, yield, step_dates, n_steps,
                      type, frequency, withholding_tax, ex_coupon_rule, nullptr, calendar_flags,
                      holidays, n_holidays, dated_date, error);
  });
}
