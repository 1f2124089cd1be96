#include "frn/frn_rate_schedule.h"

#include <algorithm>
#include <cmath>

#include "frn/frn_day_count.h"
#include "k_bond.h"

namespace kbond::frn {

int32_t validate_rate_schedule(const FrnRateSchedule& r) noexcept {
  if (r.count < 1) return KVL_ERR_COUNT;
  if (!r.rates || !r.dates) return KVL_ERR_MISSING_ARRAY;
  for (int32_t i = 0; i < r.count; ++i) {
    if (!(r.rates[i] >= 0.0) || !std::isfinite(r.rates[i])) return KVL_ERR_BAD_RATE;
  }
  if (r.dates[0] < 1) return KVL_ERR_BAD_DATE;
  for (int32_t i = 1; i < r.count; ++i) {
    if (r.dates[i] <= r.dates[i - 1]) return KVL_ERR_DATE_ORDER;
  }
  return 0;
}

double rate_days(const FrnRateSchedule& r, int32_t start, int32_t end, int32_t day_count,
                 int32_t extra_days) noexcept {
  // The rate in force at the start: the last effective date on or before it.
  const int32_t* after_start = std::upper_bound(r.dates, r.dates + r.count, start);
  int32_t i = after_start == r.dates ? 0 : static_cast<int32_t>(after_start - r.dates) - 1;
  double sum = 0.0;
  int32_t from = start;
  for (; i + 1 < r.count && r.dates[i + 1] < end; ++i) {
    const int32_t to = r.dates[i + 1];
    sum += r.rates[i] * frn_day_span(start, from, to, day_count);
    from = to;
  }
  // In double: a type may add any int32 count of extra days.
  return sum + r.rates[i] * (static_cast<double>(frn_day_span(start, from, end, day_count)) +
                             static_cast<double>(extra_days));
}

double frn_period_coupon(const FrnRateSchedule& r, const FrnType& type, int32_t start,
                         int32_t end) noexcept {
  return rate_days(r, start, end, type.day_count, 0) /
         frn_accrual_year(type.day_count, start, end, type.frequency);
}

double frn_accrued(const FrnRateSchedule& r, const FrnSchedule& s) noexcept {
  const FrnType& type = *s.type;
  return rate_days(r, s.previous_coupon, s.settlement, type.day_count, type.extra_accrual_days) /
         frn_accrual_year(type.day_count, s.previous_coupon, s.next_coupon, type.frequency);
}

}  // namespace kbond::frn
