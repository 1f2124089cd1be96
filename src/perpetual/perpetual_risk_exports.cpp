// KVLpbdur, KVLpbconv, KVLpbvalbp, KVLpbval32: the sensitivity of a
// perpetual bond's price to its yield.
#include <cmath>

#include "k_bond.h"
#include "perpetual/perpetual_call.h"
#include "perpetual/perpetual_price.h"

using kbond::perpetual::perpetual_arguments;
using kbond::perpetual::PerpetualCall;

namespace {

constexpr double kMeasureFailure = -999.0;

bool bad_scale(const double* scale) { return scale && !(*scale > 0.0); }

// Price plus accrued interest per unit of face; 0 when undefined.
double dirty_value(double price, const kbond::perpetual::perpetual_desc& bond) {
  const double dirty = price * 0.01 + bond.grid.accrued;
  return std::isfinite(dirty) ? dirty : 0.0;
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
  PerpetualCall call(perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                         step_dates, n_steps, type, frequency, withholding_tax,
                                         ex_coupon_rule, calendar_flags, holidays, n_holidays,
                                         dated_date),
                     error);
  if (!call.ok()) return -1.0;
  const auto& bond = call.desc();
  double slope = 0.0;
  const double price =
      kbond::perpetual::perpetual_price(yield, bond, &slope, nullptr, &call.error());
  if (call.error() != 0) return -1.0;
  const double dirty = dirty_value(price, bond);
  if (dirty == 0.0) {
    call.error() = KVL_ERR_ZERO_DIVISOR;
    return -1.0;
  }
  const double modified = -slope / dirty;
  if (duration_kind && *duration_kind != 0) return modified * (1.0 + yield / bond.grid.frequency);
  return modified;
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
  PerpetualCall call(perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                         step_dates, n_steps, type, frequency, withholding_tax,
                                         ex_coupon_rule, calendar_flags, holidays, n_holidays,
                                         dated_date),
                     error);
  if (!call.ok()) return -1.0;
  const auto& bond = call.desc();
  double curvature = 0.0;
  const double price =
      kbond::perpetual::perpetual_price(yield, bond, nullptr, &curvature, &call.error());
  if (call.error() != 0) return kMeasureFailure;
  const double dirty = dirty_value(price, bond);
  if (dirty == 0.0) {
    call.error() = KVL_ERR_ZERO_DIVISOR;
    return kMeasureFailure;
  }
  return curvature / dirty;
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
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  if (bad_scale(scale)) {
    *err = KVL_ERR_BAD_SCALE;
    return kMeasureFailure;
  }
  PerpetualCall call(perpetual_arguments(coupons, n_coupons, reference_date, settlement,
                                         step_dates, n_steps, type, frequency, withholding_tax,
                                         ex_coupon_rule, calendar_flags, holidays, n_holidays,
                                         dated_date),
                     err);
  if (!call.ok()) return *err == KVL_ERR_LOCK ? kMeasureFailure : -1.0;
  double slope = 0.0;
  kbond::perpetual::perpetual_price(yield, call.desc(), &slope, nullptr, err);
  if (*err != 0) return kMeasureFailure;
  const double value = -slope / (scale ? *scale : 100.0);
  if (!std::isfinite(value)) {  // a denormal scale
    *err = KVL_ERR_ZERO_DIVISOR;
    return kMeasureFailure;
  }
  return value;
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
  if (bad_scale(ticks)) {
    if (error) *error = KVL_ERR_BAD_SCALE;
    return kMeasureFailure;
  }
  const double per_point = ticks ? *ticks : 32.0;
  const double value_of_bp =
      KVLpbvalbp(coupons, n_coupons, reference_date, settlement, yield, step_dates, n_steps, type,
                 frequency, withholding_tax, ex_coupon_rule, nullptr, calendar_flags, holidays,
                 n_holidays, dated_date, error);
  // A bond paying no coupon does not move with its yield, and a denormal
  // tick size overflows: neither has a finite tick value.
  const double value = 1.0 / (value_of_bp * per_point);
  if (!std::isfinite(value)) {
    if (error && *error == 0) *error = KVL_ERR_ZERO_DIVISOR;
    return kMeasureFailure;
  }
  return value;
}
