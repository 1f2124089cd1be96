// KVLpikdur, KVLpikvalbp, KVLpikval32: the sensitivity of a PIK bond's price
// to its yield, measured as the straight-bond family measures it.
#include "engine/price_measures.h"
#include "k_bond.h"
#include "pik/pik_call.h"
#include "pik/pik_price.h"

using kbond::pik::pik_arguments;
using kbond::pik::pik_desc;
using kbond::pik::PikCall;

extern "C" KVL_EXPORT double KVL_API KVLpikdur(
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, double yield,
    const int32_t* dated_date, const int32_t* first_coupon, const int32_t* type,
    const int32_t* frequency, const double* redemption, const int32_t* duration_kind,
    const int32_t* call_date, const int32_t* pay_on_business_day, const int32_t* holiday_options,
    const int32_t* holidays, int32_t n_holidays, int32_t* error) {
  PikCall call(pik_arguments(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates, settlement,
                             dated_date, first_coupon, type, frequency, redemption, call_date,
                             pay_on_business_day, holiday_options, holidays, n_holidays),
               error);
  if (!call.ok()) return -1.0;
  const auto& pik = call.desc();
  double slope = 0.0;
  const double price = kbond::pik::pik_price(yield, pik, &slope, &call.error());
  if (call.error() != 0) return -1.0;
  return kbond::engine::duration_from_slope(slope,
                                            kbond::engine::dirty_per_unit(price, pik.accrued),
                                            yield, pik.frequency, duration_kind, call.error());
}

extern "C" KVL_EXPORT double KVL_API KVLpikvalbp(
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, double yield,
    const int32_t* dated_date, const int32_t* first_coupon, const int32_t* type,
    const int32_t* frequency, const double* redemption, const int32_t* call_date,
    const double* scale, const int32_t* pay_on_business_day, const int32_t* holiday_options,
    const int32_t* holidays, int32_t n_holidays, int32_t* error) {
  return kbond::engine::value_of_basis_point<PikCall>(
      pik_arguments(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates, settlement, dated_date,
                    first_coupon, type, frequency, redemption, call_date, pay_on_business_day,
                    holiday_options, holidays, n_holidays),
      scale, KVL_ERR_ZERO_DIVISOR, error, [yield](const pik_desc& pik, int32_t& err) {
        double slope = 0.0;
        kbond::pik::pik_price(yield, pik, &slope, &err);
        return slope;
      });
}

extern "C" KVL_EXPORT double KVL_API KVLpikval32(
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, double yield,
    const int32_t* dated_date, const int32_t* first_coupon, const int32_t* type,
    const int32_t* frequency, const double* redemption, const int32_t* call_date,
    const double* ticks, const int32_t* pay_on_business_day, const int32_t* holiday_options,
    const int32_t* holidays, int32_t n_holidays, int32_t* error) {
  // A price that does not move with the yield (nothing left to discount
  // over time) has no tick value.
  return kbond::engine::tick_value(ticks, error, [&] {
    return KVLpikvalbp(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates, settlement, yield,
                       dated_date, first_coupon, type, frequency, redemption, call_date, nullptr,
                       pay_on_business_day, holiday_options, holidays, n_holidays, error);
  });
}
