#include "frn/frn_price_core.h"

#include <cmath>

#include "frn/frn_day_count.h"
#include "frn/frn_period.h"
#include "k_bond.h"

namespace kbond::frn {
namespace {

// Half-width of the yield interval of the numerical second derivative.
constexpr double kSecondDerivativeStep = 0.000005;
constexpr double kInverseTwoSteps = 99999.99999999999;

// Several coupon periods left: compounding at the note's frequency.
int32_t compounded_price(const FrnValuation& val, double y, double* clean, double* first) noexcept {
  const FrnSchedule& s = *val.schedule;
  const FrnType& type = *s.type;
  const double f = type.frequency;
  const double growth = 1.0 + y / f;
  if (!(growth > 0.0)) return KVL_ERR_INVALID;
  const double v = 1.0 / growth;
  const double log_v = std::log(v);
  const double days_per_period = type.year_length / f;
  const double keep = val.tax.income_keep;

  double sum = 0.0, weighted = 0.0, last_t = 0.0, last_v = 1.0;
  for (FrnPeriodWalk p(s);; p.advance()) {
    const double t =
        frn_day_span(s.previous_coupon, s.settlement, p.payment_date(), type.day_count) / days_per_period;
    const double discount = std::exp(t * log_v);
    const double cash = frn_period_coupon(*val.rates, type, p.start(), p.end()) * keep;
    sum += cash * discount;
    weighted += cash * discount * t;
    if (p.is_last()) {
      last_t = t;
      last_v = discount;
      break;
    }
  }
  const double R = val.redemption;
  const double untaxed = sum + last_v * R - val.accrued;
  const double untaxed_first = -(last_t * last_v * R + weighted) * v / f;
  if (untaxed >= R) {
    *clean = untaxed;
    *first = untaxed_first;
    return 0;
  }
  // Gain to redemption taxed at maturity: price = (P - g vM R) / (1 - g vM).
  const double g = val.tax.gain_rate;
  const double k = 1.0 - g * last_v;
  if (k == 0.0) return KVL_ERR_INVALID;
  const double last_v_first = -last_t * last_v * v / f;
  const double numerator = untaxed - g * last_v * R;
  const double numerator_first = untaxed_first - g * R * last_v_first;
  const double k_first = -g * last_v_first;
  *clean = numerator / k;
  *first = (numerator_first * k - numerator * k_first) / (k * k);
  return 0;
}

// Last coupon period: simple interest to maturity on the money-market basis.
int32_t money_market_price(const FrnValuation& val, double y, FrnPrice* out) noexcept {
  const FrnSchedule& s = *val.schedule;
  const FrnType& type = *s.type;
  const int32_t last = s.previous_coupon;
  const double t = frn_day_span(last, s.settlement, s.maturity, type.day_count) /
                   frn_accrual_year(type.day_count, last, s.maturity, type.frequency);
  // The final coupon is income like every other coupon: taxed as such.
  const double q = frn_period_coupon(*val.rates, type, last, s.maturity) * val.tax.income_keep;
  const double R = val.redemption;
  const double ai = val.accrued;
  const double d = 1.0 + y * t;
  const double g = q >= y * t * R + d * ai ? 0.0 : val.tax.gain_rate;
  const double k = d - g;
  if (k == 0.0) return KVL_ERR_INVALID;
  out->clean = (q + (1.0 - g) * R - d * ai) / k;
  out->first = (g * ai - q - (1.0 - g) * R) * t / (k * k);
  out->second = out->first * t * -2.0 / k;
  return 0;
}

}  // namespace

FrnValuation make_frn_valuation(const FrnSchedule& schedule, const FrnRateSchedule& rates,
                                const FrnTax& tax, double redemption_per_100) noexcept {
  return {&schedule, &rates, tax, redemption_per_100 / 100.0,
          frn_accrued(rates, schedule) * tax.income_keep};
}

int32_t frn_price_core(const FrnValuation& val, double yield, bool want_second, FrnPrice* out) noexcept {
  const FrnSchedule& s = *val.schedule;
  if (s.next_coupon >= s.maturity) return money_market_price(val, yield, out);
  if (want_second) {
    double clean = 0.0, below = 0.0, above = 0.0;
    if (int32_t err = compounded_price(val, yield - kSecondDerivativeStep, &clean, &below)) return err;
    if (int32_t err = compounded_price(val, yield + kSecondDerivativeStep, &clean, &above)) return err;
    out->second = (above - below) * kInverseTwoSteps;
  }
  return compounded_price(val, yield, &out->clean, &out->first);
}

}  // namespace kbond::frn
