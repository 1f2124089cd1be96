// KVLfrnpr, KVLtfrnpr: clean price from yield; KVLfrnyld, KVLtfrnyld: yield
// from clean price.
#include "frn/frn_valuation_call.h"
#include "k_bond.h"

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
  return kbond::frn::note_valuation(kbond::frn::Measure::kPrice, type, rates, rate_dates, rate_count,
                                    maturity, settlement, yield, previous_coupon, coupon_dates,
                                    coupon_count, day_count, frequency, redemption, nullptr, income_tax,
                                    gain_tax, holding, nullptr, 0.0, pay_on_business_day, adjustment_code,
                                    holiday_options, holidays, holiday_count, error);
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
  return kbond::frn::note_valuation(kbond::frn::Measure::kYield, type, rates, rate_dates, rate_count,
                                    maturity, settlement, price, previous_coupon, coupon_dates,
                                    coupon_count, day_count, frequency, redemption, nullptr, income_tax,
                                    gain_tax, holding, nullptr, 0.0, pay_on_business_day, adjustment_code,
                                    holiday_options, holidays, holiday_count, error);
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
