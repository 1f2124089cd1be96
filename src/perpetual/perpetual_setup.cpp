// perpetual_setup: the description of a perpetual bond at a settlement date.
//
// A perpetual has no maturity to anchor its coupon grid: the caller names
// one coupon date of the cycle (the reference date) and the grid runs
// through it both ways. The period fractions, the accrued interest and the
// ex-coupon rule are those of the bond engine for the same grid.
#include <cmath>
#include <cstdint>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"
#include "engine/coupon_schedule.h"
#include "engine/period_fractions.h"
#include "engine/safe_math.h"
#include "engine/setup_steps.h"
#include "k_bond.h"
#include "perpetual/perpetual_desc.h"

namespace kbond::perpetual {
namespace {

constexpr int32_t kYearsValuedOneByOne = 100;

bool read_rates_and_steps(const perpetual_args& a, perpetual_desc& d) noexcept {
  if (!a.coupons || a.n_coupons < 1 || a.n_steps < 0 || (a.n_steps > 0 && !a.step_dates))
    return false;
  if (a.n_coupons > 1 && a.n_coupons != a.n_steps) return false;
  // No coupon rate comes anywhere near 1e100 a year; such rates only
  // overflow the prices downstream.
  for (int32_t i = 0; i < a.n_coupons; ++i) {
    if (!engine::plausible_magnitude(a.coupons[i])) return false;
  }
  for (int32_t i = 0; i < a.n_steps; ++i) {
    if (!dates::valid_serial(a.step_dates[i]) || (i > 0 && a.step_dates[i] <= a.step_dates[i - 1]))
      return false;
  }
  d.grid.coupons = a.coupons;
  d.grid.n_coupons = a.n_coupons;
  d.grid.dates = a.n_steps > 0 ? a.step_dates : nullptr;
  d.grid.n_dates = a.n_steps;
  d.last_rate = a.coupons[a.n_coupons - 1];
  return true;
}

// The yield-method overrides -1 to -4 and -6 are kept (the perpetual family
// has none for -5); any other nonzero value asks for payment on business days.
int32_t normalise_ex_coupon_rule(const int32_t* rule) noexcept {
  const int32_t r = rule ? *rule : 0;
  return (r <= 0 && r >= -6 && r != -5) ? r : 1;
}

bool read_conventions(const perpetual_args& a, perpetual_desc& d) noexcept {
  auto& g = d.grid;
  if (!engine::read_type(a.type, a.settlement, nullptr, g) ||
      !engine::read_frequency(a.frequency ? *a.frequency : 0, g))
    return false;
  // The perpetual's schedule takes its coupon day count from the accrual
  // day count, not from the type's ex-dividend day count: the description
  // keeps no resolved type for the schedule step to read.
  g.conventions = engine::BondTypeRef{};

  // No withholding tax comes near 1e100 either; such a rate only turns the
  // net coupon (1 - rate) into an overflow.
  g.coupon_tax = a.withholding_tax ? *a.withholding_tax : 0.0;
  if (!engine::plausible_magnitude(g.coupon_tax)) return false;
  d.ex_coupon_rule = normalise_ex_coupon_rule(a.ex_coupon_rule);
  g.yield_method_arg = d.ex_coupon_rule;

  // A missing holiday list is an empty one; only a negative count is wrong.
  if (a.n_holidays < 0) return false;
  engine::read_calendar(a.calendar_flags, a.holidays, a.n_holidays, g);
  return true;
}

// The coupon period containing settlement. With a dated date, the first
// coupon is the reference date when that lies after the dated date (so the
// first period may be short or long), else the grid date after it.
bool place_period(const perpetual_args& a, perpetual_desc& d) noexcept {
  auto& g = d.grid;
  const int32_t s = a.settlement;
  const int32_t dated = a.dated_date ? *a.dated_date : 0;
  if (!dates::valid_serial(s) || !dates::valid_serial(a.reference_date) ||
      (dated != 0 && !dates::valid_serial(dated)))
    return false;
  g.settlement = s;
  g.anchor = a.reference_date;
  engine::decide_eom_from_anchor(
      g, dates::MonthSchedule(g.anchor, g.months_per_period, g.eom).reference());
  g.maturity = dates::kMaxSerial;
  g.position = engine::kRegularPeriod;
  if (dated != 0) {
    g.dated_date = dated;
    g.first_coupon =
        a.reference_date > dated ? a.reference_date : engine::grid_after(g, dated, nullptr);
    if (s < g.first_coupon) {
      g.period_start = dated;
      g.next_coupon = g.first_coupon;
      const int32_t regular_start =
          dates::add_months(g.first_coupon, -g.months_per_period, g.eom);
      g.position = dated > regular_start    ? engine::kShortFirstPeriod
                   : dated == regular_start ? engine::kRegularPeriod
                                            : engine::kLongFirstPeriod;
    }
  }
  if (dated == 0 || s >= g.first_coupon) {
    int32_t j = 0;
    g.period_start = engine::grid_on_or_before(g, s, &j);
    g.next_coupon = engine::grid_date(g, j + 1);
  }
  g.whole_periods = 1;
  g.partial_period = 0;
  return g.period_start > 0 && g.period_start < g.next_coupon && g.period_start <= s &&
         g.next_coupon <= dates::kMaxSerial;
}

// Accrued interest of the current coupon; after the ex-coupon date the
// buyer is owed the interest for the days left (negative accrued). Under
// rule -6 the ex-coupon period takes no day count of its own: the buyer is
// owed the coupon less what has accrued.
void compute_accrued(perpetual_desc& d) noexcept {
  auto& g = d.grid;
  const double rate = rate_on(d, g.next_coupon);
  engine::compute_accrued(g, rate);
  engine::apply_ex_dividend(g, engine::bond_type_ref(g.type), rate, d.ex_coupon_rule != -6);
}

Convention choose_convention(const perpetual_desc& d) noexcept {
  switch (engine::bond_type_yield_method(d.grid.type, d.ex_coupon_rule)) {
    case 0:
      return Convention::kExplicitSum;
    case 1:
      return Convention::kPerpetuity;
    case 3:
      return Convention::kSimpleFirstPeriod;
    default:
      return Convention::kNone;
  }
}

// The next coupon and every coupon up to about the last step date are valued
// one by one; with irregular exponents (business days, actual days) another
// hundred years of them before the perpetuity, whose regular spacing they
// no longer share.
int32_t count_explicit_coupons(const perpetual_desc& d) noexcept {
  const auto& g = d.grid;
  int64_t n = 0;
  if (g.n_dates > 1) {
    const int64_t days = static_cast<int64_t>(g.dates[g.n_dates - 1]) - g.next_coupon;
    n = days * g.frequency / 365 + 1;
  }
  if (d.pays_on_business_days() || d.day_exponents) n += g.frequency * kYearsValuedOneByOne;
  if (n < 1) n = 1;
  return static_cast<int32_t>(n);
}

}  // namespace

double rate_on(const perpetual_desc& d, int32_t date) noexcept {
  const auto& g = d.grid;
  if (g.n_coupons <= 1 || !g.dates) return g.coupons[0];
  for (int32_t i = 0; i < g.n_coupons; ++i) {
    if (g.dates[i] >= date) return g.coupons[i];
  }
  return g.coupons[g.n_coupons - 1];
}

int32_t perpetual_setup(const perpetual_args& a, perpetual_desc& d) noexcept {
  d = perpetual_desc{};
  if (!read_rates_and_steps(a, d) || !read_conventions(a, d) || !place_period(a, d))
    return KVL_ERR_INVALID;
  auto& g = d.grid;
  g.accrual_basis = engine::bond_type_accrual_basis(g.type, g.settlement, g.period_start, g.eom);
  if (g.accrual_basis < 0) return KVL_ERR_INVALID;
  if (engine::compute_period_fractions(g) != 0) return KVL_ERR_INVALID;
  compute_accrued(d);
  d.convention = choose_convention(d);
  d.day_exponents = engine::perpetual_day_exponents(g.type, g.accrual_basis);
  d.explicit_coupons = count_explicit_coupons(d);
  return 0;
}

}  // namespace kbond::perpetual
