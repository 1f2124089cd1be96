// KVLfrnpr, KVLtfrnpr: clean price from yield; KVLfrnyld, KVLtfrnyld: yield
// from clean price.
#include <cmath>

#include "k_bond.h"

#include "frn/frn_note_call.h"
#include "frn/frn_yield.h"


namespace kbond::frn {
namespace {

// Price and yield differ only in the computation: one frame serves both.
double note_price_or_yield(bool solve_yield, int32_t type, const double* rates,
                           const int32_t* rate_dates, int32_t rate_count, int32_t maturity,
                           int32_t settlement, double value, const int32_t* previous_coupon,
                           const int32_t* coupon_dates, int32_t coupon_count,
                           const int32_t* day_count, const int32_t* frequency,
                           const double* redemption, const double* income_tax,
                           const double* gain_tax, const int32_t* holding,
                           const int32_t* pay_on_business_day, const int32_t* adjustment_code,
                           const int32_t* holiday_options, const int32_t* holidays,
                           int32_t holiday_count, int32_t* error) noexcept {
  const NoteCall call{type, {rates, rate_dates, rate_count}, maturity, settlement, previous_coupon,
                      coupon_dates, coupon_count, day_count, frequency, pay_on_business_day,
                      adjustment_code, holiday_options, holidays, holiday_count};
  const ValuationArgs args{redemption, income_tax, gain_tax, holding};
  return run_note_call(call, error, -1.0, [&](const FrnSchedule& s, int32_t& e) {
    FrnValuation valuation;
    if (solve_yield) {
      if (!std::isfinite(value) || value <= 0.0) {
        e = KVL_ERR_BAD_PRICE;
        return -1.0;
      }
      if ((e = prepare_valuation(s, call.rates, args, &valuation))) return -1.0;
      return frn_yield_from_price(valuation, value / 100.0, e);
    }
    FrnPrice price;
    if ((e = price_at_yield(s, call.rates, args, value, false, &price, &valuation))) {
      return -1.0;
    }
    return price.clean * 100.0;
  });
}

}  // namespace
}  // namespace kbond::frn

extern "C" {

KVL_EXPORT double KVL_API KVLtfrnpr(int32_t type, const double* rates, const int32_t* rate_dates,
                                    int32_t rate_count, int32_t maturity, int32_t settlement,
                                    double yield, const int32_t* previous_coupon,
                                    const int32_t* coupon_dates, int32_t coupon_count,
                                    const int32_t* day_count, const int32_t* frequency,
                                    const double* redemption, const double* income_tax,
                                    const double* gain_tax, const int32_t* holding,
                                    const int32_t* pay_on_business_day,
                                    const int32_t* adjustment_code, const int32_t* holiday_options,
                                    const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return kbond::frn::note_price_or_yield(false, type, rates, rate_dates, rate_count, maturity, settlement,
                                         yield, previous_coupon, coupon_dates, coupon_count, day_count,
                                         frequency, redemption, income_tax, gain_tax, holding,
                                         pay_on_business_day, adjustment_code, holiday_options, holidays,
                                         holiday_count, error);
}

KVL_EXPORT double KVL_API KVLfrnpr(const double* rates, const int32_t* rate_dates, int32_t rate_count,
                                   int32_t maturity, int32_t settlement, double yield,
                                   const int32_t* previous_coupon, const int32_t* coupon_dates,
                                   int32_t coupon_count, const int32_t* day_count,
                                   const int32_t* frequency, const double* redemption,
                                   const double* income_tax, const double* gain_tax,
                                   const int32_t* holding, const int32_t* pay_on_business_day,
                                   const int32_t* adjustment_code, const int32_t* holiday_options,
                                   const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return KVLtfrnpr(0, rates, rate_dates, rate_count, maturity, settlement, yield, previous_coupon,
                   coupon_dates, coupon_count, day_count, frequency, redemption, income_tax,
                   gain_tax, holding, pay_on_business_day, adjustment_code, holiday_options,
                   holidays, holiday_count, error);
}

KVL_EXPORT double KVL_API KVLtfrnyld(int32_t type, const double* rates, const int32_t* rate_dates,
                                     int32_t rate_count, int32_t maturity, int32_t settlement,
                                     double price, const int32_t* previous_coupon,
                                     const int32_t* coupon_dates, int32_t coupon_count,
                                     const int32_t* day_count, const int32_t* frequency,
                                     const double* redemption, const double* income_tax,
                                     const double* gain_tax, const int32_t* holding,
                                     const int32_t* pay_on_business_day,
                                     const int32_t* adjustment_code, const int32_t* holiday_options,
                                     const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return kbond::frn::note_price_or_yield(true, type, rates, rate_dates, rate_count, maturity, settlement,
                                         price, previous_coupon, coupon_dates, coupon_count, day_count,
                                         frequency, redemption, income_tax, gain_tax, holding,
                                         pay_on_business_day, adjustment_code, holiday_options, holidays,
                                         holiday_count, error);
}

KVL_EXPORT double KVL_API KVLfrnyld(const double* rates, const int32_t* rate_dates, int32_t rate_count,
                                    int32_t maturity, int32_t settlement, double price,
                                    const int32_t* previous_coupon, const int32_t* coupon_dates,
                                    int32_t coupon_count, const int32_t* day_count,
                                    const int32_t* frequency, const double* redemption,
                                    const double* income_tax, const double* gain_tax,
                                    const int32_t* holding, const int32_t* pay_on_business_day,
                                    const int32_t* adjustment_code, const int32_t* holiday_options,
                                    const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return KVLtfrnyld(0, rates, rate_dates, rate_count, maturity, settlement, price, previous_coupon,
                    coupon_dates, coupon_count, day_count, frequency, redemption, income_tax,
                    gain_tax, holding, pay_on_business_day, adjustment_code, holiday_options,
                    holidays, holiday_count, error);
}

}  // extern "C"
