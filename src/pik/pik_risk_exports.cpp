// KVLpikdur, KVLpikvalbp, KVLpikval32: the sensitivity of a PIK bond's price
// to its yield, measured as the straight-bond family measures it.
#include <cmath>

#include "k_bond.h"
#include "pik/pik_call.h"
#include "pik/pik_price.h"

using kbond::pik::PikCall;

namespace {

constexpr double kMeasureFailure = -999.0;

bool bad_scale(const double* scale) { return scale && !(*scale > 0.0); }

}  // namespace

extern "C" KVL_EXPORT double KVL_API KVLpikdur(
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, double yield,
    const int32_t* dated_date, const int32_t* first_coupon, const int32_t* type,
    const int32_t* frequency, const double* redemption, const int32_t* duration_kind,
    const int32_t* call_date, const int32_t* pay_on_business_day, const int32_t* holiday_options,
    const int32_t* holidays, int32_t n_holidays, int32_t* error) {
  PikCall call(kbond::pik::pik_arguments(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates,
                                         settlement, dated_date, first_coupon, type, frequency,
                                         redemption, call_date, pay_on_business_day,
                                         holiday_options, holidays, n_holidays),
               error);
  if (!call.ok()) return -1.0;
  const auto& pik = call.desc();
  int32_t& err = call.error();
  double slope = 0.0;
  const double price = kbond::pik::pik_price(yield, pik, &slope, &err);
  if (err != 0) return -1.0;
  const double dirty = price * 0.01 + pik.accrued;
  if (dirty == 0.0 || !std::isfinite(dirty)) {
    err = KVL_ERR_ZERO_DIVISOR;
    return -1.0;
  }
  const double modified = -slope / dirty;
  if (duration_kind && *duration_kind != 0) return modified * (1.0 + yield / pik.frequency);
  return modified;
}

extern "C" KVL_EXPORT double KVL_API KVLpikvalbp(
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, double yield,
    const int32_t* dated_date, const int32_t* first_coupon, const int32_t* type,
    const int32_t* frequency, const double* redemption, const int32_t* call_date,
    const double* scale, const int32_t* pay_on_business_day, const int32_t* holiday_options,
    const int32_t* holidays, int32_t n_holidays, int32_t* error) {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  if (bad_scale(scale)) {
    *err = KVL_ERR_BAD_SCALE;
    return kMeasureFailure;
  }
  PikCall call(kbond::pik::pik_arguments(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates,
                                         settlement, dated_date, first_coupon, type, frequency,
                                         redemption, call_date, pay_on_business_day,
                                         holiday_options, holidays, n_holidays),
               err);
  if (!call.ok()) return *err == KVL_ERR_LOCK ? kMeasureFailure : -1.0;
  double slope = 0.0;
  kbond::pik::pik_price(yield, call.desc(), &slope, err);
  if (*err != 0) return kMeasureFailure;
  const double value = -slope / (scale ? *scale : 100.0);
  if (!std::isfinite(value)) {  // a denormal scale
    *err = KVL_ERR_ZERO_DIVISOR;
    return kMeasureFailure;
  }
  return value;
}

extern "C" KVL_EXPORT double KVL_API KVLpikval32(
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, double yield,
    const int32_t* dated_date, const int32_t* first_coupon, const int32_t* type,
    const int32_t* frequency, const double* redemption, const int32_t* call_date,
    const double* ticks, const int32_t* pay_on_business_day, const int32_t* holiday_options,
    const int32_t* holidays, int32_t n_holidays, int32_t* error) {
  if (bad_scale(ticks)) {
    if (error) *error = KVL_ERR_BAD_SCALE;
    return kMeasureFailure;
  }
  const double per_point = ticks ? *ticks : 32.0;
  const double value_of_bp =
      KVLpikvalbp(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates, settlement, yield,
                  dated_date, first_coupon, type, frequency, redemption, call_date, nullptr,
                  pay_on_business_day, holiday_options, holidays, n_holidays, error);
  // A price that does not move with the yield (nothing left to discount
  // over time) or a denormal tick size leaves no finite tick value.
  const double value = 1.0 / (value_of_bp * per_point);
  if (!std::isfinite(value)) {
    if (error && *error == 0) *error = KVL_ERR_ZERO_DIVISOR;
    return kMeasureFailure;
  }
  return value;
}
