#include <cmath>

#include "dates/date_serial.h"
#include "frn/frn_day_count.h"
#include "frn/frn_margins.h"
#include "k_bond.h"

namespace kbond::frn {
namespace {

// Whole coupon periods from the next coupon date to maturity, counting a
// part month of more than half a month as a whole one.
int32_t periods_to_maturity(int32_t next, int32_t maturity, int32_t frequency) noexcept {
  int32_t nd = 0, nm = 0, ny = 0, md = 0, mm = 0, my = 0;
  dates::serial_to_date(next, &nd, &nm, &ny);
  dates::serial_to_date(maturity, &md, &mm, &my);
  int32_t months = 12 * (my - ny) + mm - nm;
  if (md - nd > 15) ++months;
  if (md - nd < -15) --months;
  return static_cast<int32_t>(std::floor(frequency * months / 12.0 + 0.5));
}

}  // namespace

DiscountMarginTerms discount_margin_terms(const FrnSchedule& s, const MarginMarket& m) noexcept {
  const FrnType& type = *s.type;
  const int32_t last = s.previous_coupon;
  const double accrual_year = frn_accrual_year(type.day_count, last, s.next_coupon, type.frequency);
  DiscountMarginTerms t{};
  t.first_coupon = m.current_coupon * frn_day_span(last, last, s.next_coupon, type.day_count) / accrual_year;
  t.periods_per_year = type.frequency * type.year_length / 365.25;
  t.later_coupon = (m.index_rate + m.quoted_margin) / t.periods_per_year;
  t.stub_time = frn_day_span(last, s.settlement, s.next_coupon, type.day_count) / accrual_year;
  t.target = m.price / 100.0 +
             m.current_coupon * frn_day_span(last, last, s.settlement, type.day_count) / accrual_year;
  t.periods = periods_to_maturity(s.next_coupon, s.maturity, type.frequency);
  t.index_rate = m.index_rate;
  t.stub_rate = m.stub_rate;
  return t;
}

// value(d) = [v^n + c v (1 - v^n) / (1 - v) + c0] / (1 + t1 (stub_rate + d)),
// v = 1 / (1 + (index + d) / ppy): the redemption and the projected coupons
// discounted to the next coupon date at index + d, then back to settlement at the
// money-market rate + d.
bool DiscountMarginTerms::value(double margin, double* out) const noexcept {
  const double growth = 1.0 + (index_rate + margin) / periods_per_year;
  const double stub_growth = 1.0 + stub_time * (stub_rate + margin);
  if (growth == 0.0 || std::isnan(growth) || stub_growth == 0.0 || std::isnan(stub_growth)) return false;
  const double v = 1.0 / growth;
  const double vn = std::pow(v, periods);
  // At v = 1 the annuity factor v (1 - v^n) / (1 - v) is its limit n.
  const double annuity = v == 1.0 ? periods : v * (1.0 - vn) / (1.0 - v);
  *out = (vn + later_coupon * annuity + first_coupon) / stub_growth;
  return true;
}

double search_discount_margin(const DiscountMarginTerms& terms, double start, int iterations,
                              int32_t& err) noexcept {
  double margin = start;
  double step = 0.1;
  bool went_up = false, went_down = false, halving = false;
  for (int iteration = 0; iteration < iterations; ++iteration) {
    double value = 0.0;
    if (!terms.value(margin, &value)) {
      err = KVL_ERR_DENOMINATOR;
      return margin;
    }
    // Step toward the target; the first reversal starts halving the step.
    const bool up = value > terms.target;
    margin += up ? step : -step;
    if (halving) {
      step *= 0.5;
    } else if (up ? went_down : went_up) {
      halving = true;
    } else {
      (up ? went_up : went_down) = true;
    }
  }
  return margin;
}

double discount_margin(const FrnSchedule& s, const MarginMarket& m, int32_t& err) noexcept {
  // A fixed 48 steps: the step stays 0.1 until the search has moved both
  // ways, then halves at every step, ending near 1e-15.
  return search_discount_margin(discount_margin_terms(s, m), m.quoted_margin, kDiscountMarginSteps, err);
}

}  // namespace kbond::frn
