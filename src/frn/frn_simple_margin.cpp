#include "frn/frn_day_count.h"
#include "frn/frn_margins.h"
#include "k_bond.h"

namespace kbond::frn {

// simple margin = quoted + [t1 (current - index - quoted) + (1 - price/100)] / T
// t1 is the time to the next coupon in accrual years of the current period;
// T the life to maturity in years of the note's year length.
double simple_margin(const FrnSchedule& s, const MarginMarket& m, int32_t& err) noexcept {
  const FrnType& type = *s.type;
  const int32_t last = s.previous_coupon;
  const double accrual_year = frn_accrual_year(type.day_count, last, s.next_coupon, type.frequency);
  const double front = frn_day_span(last, s.settlement, s.next_coupon, type.day_count) / accrual_year;
  const double life = frn_day_span(last, s.settlement, s.maturity, type.day_count) / type.year_length;
  if (life == 0.0 || accrual_year == 0.0) {
    err = KVL_ERR_DENOMINATOR;
    return -1.0;
  }
  return m.quoted_margin +
         (front * (m.current_coupon - m.index_rate - m.quoted_margin) + (1.0 - m.price / 100.0)) / life;
}

}  // namespace kbond::frn
