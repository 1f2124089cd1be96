// KVLfrndur, KVLfrnconv, KVLfrnvalbp, KVLfrnval32 and their typed forms: the
// sensitivity of an FRN's price to its yield.
//
// With P the clean price per 100, AI the after-tax accrued interest per unit
// and D1, D2 the derivatives of the clean price per unit by the yield:
//   modified duration = -D1 / (P/100 + AI)  (Macaulay: x (1 + y/f), f the
//                                            call's frequency or 2)
//   convexity         =  D2 / (P/100 + AI)
//   value of a basis point / of a 32nd = -D1 / divisor (100 / 32 by default)
#include <cmath>

#include "k_bond.h"

#include "frn/frn_note_call.h"


namespace kbond::frn {
namespace {

enum class Measure { kDuration, kConvexity, kPerDivisor };

struct RiskRequest {
  Measure measure;
  double yield;
  const int32_t* macaulay;     // duration only
  const int32_t* frequency;    // the call's own frequency pointer
  const double* divisor;       // value of a basis point or a 32nd
  double default_divisor;
};

double risk_measure(const NoteCall& call, const ValuationArgs& args, const RiskRequest& request,
                    int32_t* error) noexcept {
  return run_note_call(call, error, -1.0, [&](const FrnSchedule& s, int32_t& e) {
    const double divisor = request.divisor ? *request.divisor : request.default_divisor;
    if (request.measure == Measure::kPerDivisor && (!(divisor > 0.0) || !std::isfinite(divisor))) {
      e = KVL_ERR_INVALID;
      return -999.0;
    }
    FrnPrice price;
    FrnValuation valuation;
    const bool want_second = request.measure == Measure::kConvexity;
    if ((e = price_at_yield(s, call.rates, args, request.yield, want_second, &price,
                                        &valuation))) {
      return -1.0;
    }
    const double dirty = price.clean + valuation.accrued;
    switch (request.measure) {
      case Measure::kDuration: {
        const double duration = -price.first / dirty;
        if (!request.macaulay || *request.macaulay == 0) return duration;
        const double f = request.frequency ? *request.frequency : 2.0;
        return duration * (1.0 + request.yield / f);
      }
      case Measure::kConvexity:
        return price.second / dirty;
      case Measure::kPerDivisor:
        return -price.first / divisor;
    }
    return -1.0;
  });
}

// The typed risk exports' arguments in one list: `macaulay` is read by the
// duration only, `divisor` and `default_divisor` by the values per basis
// point (100) and per 32nd (32).
double note_risk(Measure measure, int32_t type, const double* rates, const int32_t* rate_dates,
                 int32_t rate_count, int32_t maturity, int32_t settlement, double yield,
                 const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count,
                 const int32_t* day_count, const int32_t* frequency, const double* redemption,
                 const int32_t* macaulay, const double* income_tax, const double* gain_tax,
                 const int32_t* holding, const double* divisor, double default_divisor,
                 const int32_t* pay_on_business_day, const int32_t* adjustment_code,
                 const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count,
                 int32_t* error) noexcept {
  const NoteCall call{type, {rates, rate_dates, rate_count}, maturity, settlement, previous_coupon,
                      coupon_dates, coupon_count, day_count, frequency, pay_on_business_day,
                      adjustment_code, holiday_options, holidays, holiday_count};
  const ValuationArgs args{redemption, income_tax, gain_tax, holding};
  const RiskRequest request{measure, yield, macaulay, frequency, divisor, default_divisor};
  return risk_measure(call, args, request, error);
}

}  // namespace
}  // namespace kbond::frn

extern "C" {

KVL_EXPORT double KVL_API KVLtfrndur(int32_t type, const double* rates, const int32_t* rate_dates,
                                     int32_t rate_count, int32_t maturity, int32_t settlement,
                                     double yield, const int32_t* previous_coupon,
                                     const int32_t* coupon_dates, int32_t coupon_count,
                                     const int32_t* day_count, const int32_t* frequency,
                                     const double* redemption, const int32_t* macaulay,
                                     const double* income_tax, const double* gain_tax,
                                     const int32_t* holding, const int32_t* pay_on_business_day,
                                     const int32_t* adjustment_code, const int32_t* holiday_options,
                                     const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return kbond::frn::note_risk(kbond::frn::Measure::kDuration, type, rates, rate_dates, rate_count,
                               maturity, settlement, yield, previous_coupon, coupon_dates, coupon_count,
                               day_count, frequency, redemption, macaulay, income_tax, gain_tax, holding,
                               nullptr, 0.0, pay_on_business_day, adjustment_code, holiday_options,
                               holidays, holiday_count, error);
}

KVL_EXPORT double KVL_API KVLfrndur(const double* rates, const int32_t* rate_dates, int32_t rate_count,
                                    int32_t maturity, int32_t settlement, double yield,
                                    const int32_t* previous_coupon, const int32_t* coupon_dates,
                                    int32_t coupon_count, const int32_t* day_count,
                                    const int32_t* frequency, const double* redemption,
                                    const int32_t* macaulay, const double* income_tax,
                                    const double* gain_tax, const int32_t* holding,
                                    const int32_t* pay_on_business_day, const int32_t* adjustment_code,
                                    const int32_t* holiday_options, const int32_t* holidays,
                                    int32_t holiday_count, int32_t* error) {
  return KVLtfrndur(0, rates, rate_dates, rate_count, maturity, settlement, yield, previous_coupon,
                    coupon_dates, coupon_count, day_count, frequency, redemption, macaulay,
                    income_tax, gain_tax, holding, pay_on_business_day, adjustment_code,
                    holiday_options, holidays, holiday_count, error);
}

KVL_EXPORT double KVL_API KVLtfrnconv(int32_t type, const double* rates, const int32_t* rate_dates,
                                      int32_t rate_count, int32_t maturity, int32_t settlement,
                                      double yield, const int32_t* previous_coupon,
                                      const int32_t* coupon_dates, int32_t coupon_count,
                                      const int32_t* day_count, const int32_t* frequency,
                                      const double* redemption, const double* income_tax,
                                      const double* gain_tax, const int32_t* holding,
                                      const int32_t* pay_on_business_day,
                                      const int32_t* adjustment_code, const int32_t* holiday_options,
                                      const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return kbond::frn::note_risk(kbond::frn::Measure::kConvexity, type, rates, rate_dates, rate_count,
                               maturity, settlement, yield, previous_coupon, coupon_dates, coupon_count,
                               day_count, frequency, redemption, nullptr, income_tax, gain_tax, holding,
                               nullptr, 0.0, pay_on_business_day, adjustment_code, holiday_options,
                               holidays, holiday_count, error);
}

KVL_EXPORT double KVL_API KVLfrnconv(const double* rates, const int32_t* rate_dates, int32_t rate_count,
                                     int32_t maturity, int32_t settlement, double yield,
                                     const int32_t* previous_coupon, const int32_t* coupon_dates,
                                     int32_t coupon_count, const int32_t* day_count,
                                     const int32_t* frequency, const double* redemption,
                                     const double* income_tax, const double* gain_tax,
                                     const int32_t* holding, const int32_t* pay_on_business_day,
                                     const int32_t* adjustment_code, const int32_t* holiday_options,
                                     const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return KVLtfrnconv(0, rates, rate_dates, rate_count, maturity, settlement, yield, previous_coupon,
                     coupon_dates, coupon_count, day_count, frequency, redemption, income_tax,
                     gain_tax, holding, pay_on_business_day, adjustment_code, holiday_options,
                     holidays, holiday_count, error);
}

KVL_EXPORT double KVL_API KVLtfrnvalbp(int32_t type, const double* rates, const int32_t* rate_dates,
                                       int32_t rate_count, int32_t maturity, int32_t settlement,
                                       double yield, const int32_t* previous_coupon,
                                       const int32_t* coupon_dates, int32_t coupon_count,
                                       const int32_t* day_count, const int32_t* frequency,
                                       const double* redemption, const double* income_tax,
                                       const double* gain_tax, const int32_t* holding,
                                       const double* divisor, const int32_t* pay_on_business_day,
                                       const int32_t* adjustment_code,
                                       const int32_t* holiday_options, const int32_t* holidays,
                                       int32_t holiday_count, int32_t* error) {
  return kbond::frn::note_risk(kbond::frn::Measure::kPerDivisor, type, rates, rate_dates, rate_count,
                               maturity, settlement, yield, previous_coupon, coupon_dates, coupon_count,
                               day_count, frequency, redemption, nullptr, income_tax, gain_tax, holding,
                               divisor, 100.0, pay_on_business_day, adjustment_code, holiday_options,
                               holidays, holiday_count, error);
}

KVL_EXPORT double KVL_API KVLfrnvalbp(const double* rates, const int32_t* rate_dates, int32_t rate_count,
                                      int32_t maturity, int32_t settlement, double yield,
                                      const int32_t* previous_coupon, const int32_t* coupon_dates,
                                      int32_t coupon_count, const int32_t* day_count,
                                      const int32_t* frequency, const double* redemption,
                                      const double* income_tax, const double* gain_tax,
                                      const int32_t* holding, const double* divisor,
                                      const int32_t* pay_on_business_day,
                                      const int32_t* adjustment_code, const int32_t* holiday_options,
                                      const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return KVLtfrnvalbp(0, rates, rate_dates, rate_count, maturity, settlement, yield,
                      previous_coupon, coupon_dates, coupon_count, day_count, frequency, redemption,
                      income_tax, gain_tax, holding, divisor, pay_on_business_day, adjustment_code,
                      holiday_options, holidays, holiday_count, error);
}

KVL_EXPORT double KVL_API KVLtfrnval32(int32_t type, const double* rates, const int32_t* rate_dates,
                                       int32_t rate_count, int32_t maturity, int32_t settlement,
                                       double yield, const int32_t* previous_coupon,
                                       const int32_t* coupon_dates, int32_t coupon_count,
                                       const int32_t* day_count, const int32_t* frequency,
                                       const double* redemption, const double* income_tax,
                                       const double* gain_tax, const int32_t* holding,
                                       const double* divisor, const int32_t* pay_on_business_day,
                                       const int32_t* adjustment_code,
                                       const int32_t* holiday_options, const int32_t* holidays,
                                       int32_t holiday_count, int32_t* error) {
  return kbond::frn::note_risk(kbond::frn::Measure::kPerDivisor, type, rates, rate_dates, rate_count,
                               maturity, settlement, yield, previous_coupon, coupon_dates, coupon_count,
                               day_count, frequency, redemption, nullptr, income_tax, gain_tax, holding,
                               divisor, 32.0, pay_on_business_day, adjustment_code, holiday_options,
                               holidays, holiday_count, error);
}

KVL_EXPORT double KVL_API KVLfrnval32(const double* rates, const int32_t* rate_dates, int32_t rate_count,
                                      int32_t maturity, int32_t settlement, double yield,
                                      const int32_t* previous_coupon, const int32_t* coupon_dates,
                                      int32_t coupon_count, const int32_t* day_count,
                                      const int32_t* frequency, const double* redemption,
                                      const double* income_tax, const double* gain_tax,
                                      const int32_t* holding, const double* divisor,
                                      const int32_t* pay_on_business_day,
                                      const int32_t* adjustment_code, const int32_t* holiday_options,
                                      const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return KVLtfrnval32(0, rates, rate_dates, rate_count, maturity, settlement, yield,
                      previous_coupon, coupon_dates, coupon_count, day_count, frequency, redemption,
                      income_tax, gain_tax, holding, divisor, pay_on_business_day, adjustment_code,
                      holiday_options, holidays, holiday_count, error);
}

}  // extern "C"
