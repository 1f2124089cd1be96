// One body for the FRN exports that value the note at a yield or solve for
// it: price, yield, duration, convexity and the values of a basis point and
// of a 32nd, plain and typed.
//
// With P the clean price per 100, AI the after-tax accrued interest per unit
// and D1, D2 the derivatives of the clean price per unit by the yield:
//   modified duration = -D1 / (P/100 + AI)  (Macaulay: x (1 + y/f), f the
//                                            call's frequency or 2)
//   convexity         =  D2 / (P/100 + AI)
//   value of a basis point / of a 32nd = -D1 / divisor (100 / 32 by default)
#pragma once
#include <cmath>
#include <cstdint>

#include "frn/frn_note_call.h"
#include "frn/frn_yield.h"
#include "k_bond.h"

namespace kbond::frn {

enum class Measure { kPrice, kYield, kDuration, kConvexity, kPerDivisor };

// The typed valuation exports' arguments in one list: `value` is the yield,
// or the clean price per 100 for kYield; `macaulay` is read by the duration
// only, `divisor` and `default_divisor` by the values per basis point (100)
// and per 32nd (32). Failure value -1.0 (-999.0 for a divisor that is not a
// positive number).
inline double note_valuation(Measure measure, int32_t type, const double* rates, const int32_t* rate_dates,
                             int32_t rate_count, int32_t maturity, int32_t settlement, double value,
                             const int32_t* previous_coupon, const int32_t* coupon_dates,
                             int32_t coupon_count, const int32_t* day_count, const int32_t* frequency,
                             const double* redemption, const int32_t* macaulay, const double* income_tax,
                             const double* gain_tax, const int32_t* holding, const double* divisor,
                             double default_divisor, const int32_t* pay_on_business_day,
                             const int32_t* adjustment_code, const int32_t* holiday_options,
                             const int32_t* holidays, int32_t holiday_count, int32_t* error) noexcept {
  const NoteCall call{type, {rates, rate_dates, rate_count}, maturity, settlement, previous_coupon,
                      coupon_dates, coupon_count, day_count, frequency, pay_on_business_day,
                      adjustment_code, holiday_options, holidays, holiday_count};
  const ValuationArgs args{redemption, income_tax, gain_tax, holding};
  return run_note_call(call, error, -1.0, [&](const FrnSchedule& s, int32_t& e) {
    FrnValuation valuation;
    if (measure == Measure::kYield) {
      if (!std::isfinite(value) || value <= 0.0) {
        e = KVL_ERR_BAD_PRICE;
        return -1.0;
      }
      if ((e = prepare_valuation(s, call.rates, args, &valuation))) return -1.0;
      return frn_yield_from_price(valuation, value / 100.0, e);
    }
    const double per = divisor ? *divisor : default_divisor;
    if (measure == Measure::kPerDivisor && (!(per > 0.0) || !std::isfinite(per))) {
      e = KVL_ERR_INVALID;
      return -999.0;
    }
    FrnPrice price;
    if ((e = price_at_yield(s, call.rates, args, value, measure == Measure::kConvexity, &price,
                                   &valuation))) {
      return -1.0;
    }
    const double dirty = price.clean + valuation.accrued;
    switch (measure) {
      case Measure::kPrice:
        return price.clean * 100.0;
      case Measure::kDuration: {
        const double duration = -price.first / dirty;
        if (!macaulay || *macaulay == 0) return duration;
        const double f = frequency ? *frequency : 2.0;
        return duration * (1.0 + value / f);
      }
      case Measure::kConvexity:
        return price.second / dirty;
      case Measure::kPerDivisor:
        return -price.first / per;
      case Measure::kYield:
        break;
    }
    return -1.0;
  });
}

}  // namespace kbond::frn
