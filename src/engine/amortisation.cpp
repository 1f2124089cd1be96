// Coupon steps and sinking funds of a bond description: the rate in force,
// the amortisation schedule on the coupon grid, the outstanding factor.
#include <cmath>
#include <cstdlib>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "engine/amortisation.h"
#include "engine/coupon_schedule.h"

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

int32_t first_sinking_date(const bond_desc& desc) noexcept {
  if (desc.amort_kind == kEqualAmortisation)
    return desc.sink_dates_borrowed && desc.n_sink > 0 ? desc.sink_dates_borrowed[0] : 0;
  if (desc.amort_kind == kScheduledAmortisation && desc.sink_dates_owned)
    return desc.sink_dates_owned[0];
  return 0;
}

int32_t sink_step_months(const bond_desc& desc) noexcept {
  return desc.periods_per_sink * desc.months_per_period;
}

// Amount of the last schedule entry dated on or before d (a later entry
// wins a tie); 0 before the first entry.
double scheduled_amount(const bond_desc& desc, int32_t d) noexcept {
  if (!desc.sink_dates_owned || !desc.sink_amounts_owned) return 0.0;
  double amount = 0.0;
  int32_t best = 0;
  for (int32_t i = 0; desc.sink_dates_owned[i] != -1; ++i) {
    const int32_t s = desc.sink_dates_owned[i];
    if (s <= d && s >= best) {
      best = s;
      amount = desc.sink_amounts_owned[i];
    }
  }
  return amount;
}

}  // namespace

int32_t first_amortisation_date(const bond_desc& desc, int32_t* grid_index) noexcept {
  const int32_t first = first_sinking_date(desc);
  if (first <= 0 || desc.months_per_period <= 0) return 0;
  // Moved forward onto the coupon grid; a date on the grid stays put.
  return grid_after(desc, first - 1, grid_index);
}

OutstandingCursor::OutstandingCursor(const bond_desc& desc) noexcept : desc_(desc) {
  step_ = sink_step_months(desc);
  if (desc.amort_kind == kNoAmortisation || step_ <= 0) return;
  first_ = first_amortisation_date(desc, &index_);
  if (first_ <= 0 || desc.amort_kind != kEqualAmortisation) return;
  int32_t exact = 0;
  const int32_t months = dates::months_between(first_, desc.maturity, desc.eom, &exact);
  // Maturity is the last of the N amortisation dates, on the grid or not.
  equal_count_ = months / step_ + ((months % step_ == 0 && exact) ? 1 : 2);
}

double OutstandingCursor::at(int32_t t) noexcept {
  if (first_ <= 0 || t >= desc_.maturity || t < first_) return 1.0;

  if (desc_.amort_kind == kEqualAmortisation) {
    if (equal_count_ <= 0) return 1.0;
    const int32_t k = dates::months_between(first_, t, desc_.eom, nullptr) / step_ + 1;
    const double left = 1.0 - static_cast<double>(k) / equal_count_;
    return left < 0.0 ? 0.0 : left;
  }

  // A grid date that does not advance (beyond the calendar's end) closes
  // the schedule.
  while (!exhausted_) {
    const int32_t d = grid_date(desc_, index_);
    if (d > t) break;
    if (d <= previous_) {
      exhausted_ = true;
      break;
    }
    repaid_ += scheduled_amount(desc_, d);
    previous_ = d;
    index_ += desc_.periods_per_sink;
  }
  return repaid_ > 1.0 ? 0.0 : 1.0 - repaid_;
}

double outstanding_factor(const bond_desc& desc, int32_t t) noexcept {
  return OutstandingCursor(desc).at(t);
}

double amortisation_due(const bond_desc& desc, int32_t d) noexcept {
  if (desc.amort_kind == kNoAmortisation || d <= 0) return 0.0;
  if (d >= desc.maturity) return d == desc.maturity ? outstanding_factor(desc, d - 1) : 0.0;
  const int32_t s0 = first_amortisation_date(desc, nullptr);
  if (s0 <= 0 || d < s0) return 0.0;
  if (desc.amort_kind == kEqualAmortisation) {
    const double due = outstanding_factor(desc, d - 1) - outstanding_factor(desc, d);
    return due > 0.0 ? due : 0.0;
  }
  return scheduled_amount(desc, d);
}

namespace {

void free_schedule(bond_desc& desc) noexcept {
  std::free(desc.sink_dates_owned);
  std::free(desc.sink_amounts_owned);
  desc.sink_dates_owned = nullptr;
  desc.sink_amounts_owned = nullptr;
}

// Copies the caller's schedule: each date with its amount times
// (1 + premium), followed by a zero entry on the day after its end date when
// end dates are given; the list ends with date -1 and amount 0.
int32_t copy_schedule(const bond_args& a, bool with_ends, double premium, bond_desc& desc) noexcept {
  const std::size_t n_ends = with_ends ? static_cast<std::size_t>(a.n_sink_ends) : 0;
  const std::size_t entries = static_cast<std::size_t>(a.n_sink) + n_ends + 2;
  desc.sink_dates_owned = static_cast<int32_t*>(std::malloc(entries * sizeof(int32_t)));
  desc.sink_amounts_owned = static_cast<double*>(std::malloc(entries * sizeof(double)));
  if (!desc.sink_dates_owned || !desc.sink_amounts_owned) {
    free_schedule(desc);
    return 1;
  }
  desc.amort_kind = kScheduledAmortisation;
  std::size_t k = 0;
  for (int32_t i = 0; i < a.n_sink; ++i) {
    desc.sink_dates_owned[k] = a.sink_dates[i];
    desc.sink_amounts_owned[k++] = a.sink_amounts[i] * (1.0 + premium);
    if (with_ends && a.sink_ends[i] != 0) {
      desc.sink_dates_owned[k] = a.sink_ends[i] + 1;
      desc.sink_amounts_owned[k++] = 0.0;
    }
  }
  desc.sink_dates_owned[k] = -1;
  desc.sink_amounts_owned[k] = 0.0;
  return 0;
}

// The first amortisation date not before the next coupon, at most maturity.
int32_t next_amortisation_date(const bond_desc& desc) noexcept {
  int32_t j0 = 0;
  const int32_t s0 = first_amortisation_date(desc, &j0);
  if (s0 <= 0) return desc.maturity;
  int32_t jn = 0;
  if (grid_on_or_before(desc, desc.next_coupon, &jn) < desc.next_coupon) ++jn;
  const int32_t steps = jn > j0 ? (jn - j0 + desc.periods_per_sink - 1) / desc.periods_per_sink : 0;
  const int32_t next = grid_date(desc, j0 + steps * desc.periods_per_sink);
  return next > desc.maturity || next <= 0 ? desc.maturity : next;
}

}  // namespace

int32_t setup_amortisation(const bond_args& a, bond_desc& desc) noexcept {
  desc.amort_kind = kNoAmortisation;
  desc.sink_dates_owned = nullptr;
  desc.sink_amounts_owned = nullptr;
  desc.sink_dates_borrowed = nullptr;
  desc.n_sink = 0;

  // Amortisation frequency: a whole number of coupon periods per repayment.
  desc.periods_per_sink = 1;
  if (a.n_frequency > 1 && a.frequency[1] != 0) {
    const int32_t per_year = a.frequency[1];
    if (per_year < 0 || per_year > desc.frequency || desc.frequency % per_year != 0) return 1;
    desc.periods_per_sink = desc.frequency / per_year;
  }

  const double factor = a.factor ? *a.factor : 0.0;
  if (!std::isfinite(factor)) return 1;
  desc.factor = 1.0;
  desc.next_sink = desc.maturity;
  if (factor == 0.0) return 0;
  if (factor > 1.0 || !a.sink_dates || a.n_sink < 1) return 1;
  for (int32_t i = 0; i < a.n_sink; ++i) {
    if (!dates::valid_serial(a.sink_dates[i]) ||
        (i > 0 && a.sink_dates[i] <= a.sink_dates[i - 1]))
      return 1;
  }

  if (factor < 0.0) {
    desc.amort_kind = kEqualAmortisation;
    desc.sink_dates_borrowed = a.sink_dates;
    desc.n_sink = a.n_sink;
    desc.factor = outstanding_factor(desc, desc.settlement);
  } else {
    if (!a.sink_amounts) return 1;
    for (int32_t i = 0; i < a.n_sink; ++i) {
      if (!std::isfinite(a.sink_amounts[i]) || a.sink_amounts[i] < 0.0) return 1;
    }
    const bool with_ends = a.sink_ends && a.n_sink_ends > 0 && a.sink_ends[0] != 0;
    if (with_ends) {
      if (a.n_sink_ends != a.n_sink) return 1;
      for (int32_t i = 0; i < a.n_sink_ends; ++i) {
        const int32_t end = a.sink_ends[i];
        if (end != 0 && (!dates::valid_serial(end) || end >= dates::kMaxSerial)) return 1;
      }
    }
    const double premium = a.sink_premium ? *a.sink_premium : 0.0;
    if (!std::isfinite(premium) || 1.0 + premium < 1.0) return 1;
    if (copy_schedule(a, with_ends, premium, desc) != 0) return 1;
    desc.n_sink = a.n_sink;
    desc.factor = factor == 1.0 ? outstanding_factor(desc, desc.settlement) : factor;
  }

  // A bond fully repaid by settlement has nothing left to price; an
  // outstanding fraction below one part in a billion is rounding dust, and
  // quoting on it would overflow the price per outstanding face.
  if (!(desc.factor >= 1e-9)) {
    free_schedule(desc);
    desc.amort_kind = kNoAmortisation;
    return 1;
  }
  desc.next_sink = next_amortisation_date(desc);
  return 0;
}

void bond_release(bond_desc& desc) noexcept {
  if (desc.amort_kind != kScheduledAmortisation) return;
  free_schedule(desc);
  desc.amort_kind = kNoAmortisation;
}

}  // namespace kbond::engine
