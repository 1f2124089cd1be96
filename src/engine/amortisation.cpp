// Coupon steps and sinking-fund schedules of a bond description.
#include "dates/month_arithmetic.h"
#include "engine/bond_desc.h"

namespace kbond::engine {

double rate_in_force(const bond_desc& desc, int32_t period_start) noexcept {
  if (!desc.coupons) return 0.0;
  if (desc.n_coupons <= 1 || !desc.dates) return desc.coupons[0];
  // The i-th rate holds until the i-th step date.
  for (int32_t i = 0; i < desc.n_coupons; ++i) {
    if (desc.dates[i] > period_start) return desc.coupons[i];
  }
  return desc.coupons[desc.n_coupons - 1];
}

namespace {

int32_t first_sink_date(const bond_desc& desc) noexcept {
  if (desc.amort_kind == kEqualAmortisation)
    return desc.sink_dates_borrowed && desc.n_sink > 0 ? desc.sink_dates_borrowed[0] : 0;
  if (desc.amort_kind == kScheduledAmortisation && desc.sink_dates_owned)
    return desc.sink_dates_owned[0];
  return 0;
}

// The grid date on or after the first amortisation date.
int32_t first_sink_on_grid(const bond_desc& desc) noexcept {
  const int32_t first = first_sink_date(desc);
  if (first <= 0) return 0;
  return dates::schedule_date(first - 1, 1, desc.months_per_period, desc.anchor, desc.eom, nullptr);
}

int32_t sink_step_months(const bond_desc& desc) noexcept {
  return desc.periods_per_sink * desc.months_per_period;
}

}  // namespace

double amortisation_due(const bond_desc& desc, int32_t d) noexcept {
  if (desc.amort_kind == kNoAmortisation || d <= 0) return 0.0;
  if (desc.amort_kind == kEqualAmortisation) {
    const int32_t s0 = first_sink_on_grid(desc);
    if (s0 <= 0 || d < s0 || d > desc.maturity) return 0.0;
    return outstanding_factor(desc, d) - outstanding_factor(desc, d + 1);
  }
  // Scheduled: the entries that fall in the amortisation period ending at d.
  if (!desc.sink_dates_owned || !desc.sink_amounts_owned) return 0.0;
  const int32_t previous = dates::add_months(d, -sink_step_months(desc), desc.eom);
  double due = 0.0;
  for (int32_t i = 0; desc.sink_dates_owned[i] != -1; ++i) {
    const int32_t s = desc.sink_dates_owned[i];
    if (s > previous && s <= d) due += desc.sink_amounts_owned[i];
  }
  return due;
}

double outstanding_factor(const bond_desc& desc, int32_t t) noexcept {
  if (desc.amort_kind == kNoAmortisation || t >= desc.maturity) return 1.0;
  const int32_t s0 = first_sink_on_grid(desc);
  if (s0 <= 0 || t < s0 - 1) return 1.0;
  const int32_t p = sink_step_months(desc);
  if (p <= 0) return 1.0;
  if (desc.amort_kind == kEqualAmortisation) {
    const int32_t k = dates::months_between(s0, t, desc.eom, nullptr) / p + 1;
    int32_t exact = 0;
    const int32_t months = dates::months_between(s0, desc.maturity, desc.eom, &exact);
    const int32_t n = months / p + ((months % p == 0 && exact) ? 1 : 2);
    return n > 0 ? 1.0 - static_cast<double>(k) / n : 1.0;
  }
  double repaid = 0.0;
  for (int32_t d = s0, j = 1; d < t && d > 0; d = dates::add_months(s0, j * p, desc.eom), ++j) {
    repaid += amortisation_due(desc, d);
    if (j > 2400) break;  // guards a degenerate grid
  }
  return repaid > 1.0 ? 0.0 : 1.0 - repaid;
}

}  // namespace kbond::engine
