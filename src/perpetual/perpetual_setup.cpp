// perpetual_setup: the description of a perpetual bond at a settlement date.
//
// A perpetual has no maturity to anchor its coupon grid: the caller names
// one coupon date of the cycle (the reference date) and the grid runs
// through it both ways. The period fractions, the accrued interest and the
// ex-coupon rule are those of the bond engine for the same grid.
#include <cmath>
#include <cstdint>

#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"
#include "engine/coupon_schedule.h"
#include "engine/evaluator_common.h"
#include "perpetual/perpetual_desc.h"
#include "engine/safe_math.h"

namespace kbond::perpetual {
namespace {

constexpr int32_t kInvalid = 1;
constexpr int32_t kYearsValuedOneByOne = 100;

bool valid_date(int32_t d) noexcept { return d >= 1 && d <= dates::kMaxSerial; }

bool valid_frequency(int32_t f) noexcept {
  return f == 1 || f == 2 || f == 3 || f == 4 || f == 6 || f == 12;
}

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
    if (!valid_date(a.step_dates[i]) || (i > 0 && a.step_dates[i] <= a.step_dates[i - 1]))
      return false;
  }
  d.grid.coupons = a.coupons;
  d.grid.n_coupons = a.n_coupons;
  d.grid.dates = a.n_steps > 0 ? a.step_dates : nullptr;
  d.grid.n_dates = a.n_steps;
  d.last_rate = a.coupons[a.n_coupons - 1];
  return true;
}

// The yield-method overrides are kept; any other nonzero value asks for
// payment on business days.
int32_t normalise_ex_coupon_rule(const int32_t* rule) noexcept {
  const int32_t r = rule ? *rule : 0;
  switch (r) {
    case 0:
    case -1:
    case -2:
    case -3:
    case -4:
    case -6:
      return r;
    default:
      return 1;
  }
}

bool read_conventions(const perpetual_args& a, perpetual_desc& d) noexcept {
  auto& g = d.grid;
  g.type = 0;
  g.eom = 1;
  if (a.type) {
    const int32_t code = engine::apply_danish_rule(*a.type, a.settlement);
    g.type = engine::bond_type_base(code);
    if (g.type < 0) return false;
    g.eom = engine::bond_type_eom_default(code) ? 1 : 0;
  }
  const int32_t given = a.frequency ? *a.frequency : 0;
  if (given != 0 && !valid_frequency(given)) return false;
  g.frequency = given != 0 ? given : engine::bond_type_frequency(g.type);
  if (!valid_frequency(g.frequency)) return false;
  g.months_per_period = 12 / g.frequency;

  // No withholding tax comes near 1e100 either; such a rate only turns the
  // net coupon (1 - rate) into an overflow.
  g.coupon_tax = a.withholding_tax ? *a.withholding_tax : 0.0;
  if (!engine::plausible_magnitude(g.coupon_tax)) return false;
  d.ex_coupon_rule = normalise_ex_coupon_rule(a.ex_coupon_rule);
  g.yield_method_arg = d.ex_coupon_rule;

  // A missing holiday list is an empty one; only a negative count is wrong.
  if (a.n_holidays < 0) return false;
  const int32_t flags = a.calendar_flags ? *a.calendar_flags : 0;
  g.roll_forward = flags & 1;
  g.roll_flag2 = (flags >> 1) & 1;
  g.holidays = a.n_holidays > 0 ? a.holidays : nullptr;
  g.n_holidays = g.holidays ? a.n_holidays : 0;
  return true;
}

// A grid anchored on the 31st follows month ends; one anchored inside a
// month does not; a month end before the 31st keeps the type's rule.
void decide_eom_from_anchor(engine::bond_desc& g) noexcept {
  int32_t day = 0, month = 0, year = 0;
  dates::serial_to_date(g.anchor, &day, &month, &year);
  if (day == 31) {
    g.eom = 1;
  } else if (!dates::is_end_of_month(g.anchor)) {
    g.eom = 0;
  }
}

// The coupon period containing settlement. With a dated date, the first
// coupon is the reference date when that lies after the dated date (so the
// first period may be short or long), else the grid date after it.
bool place_period(const perpetual_args& a, perpetual_desc& d) noexcept {
  auto& g = d.grid;
  const int32_t s = a.settlement;
  const int32_t dated = a.dated_date ? *a.dated_date : 0;
  if (!valid_date(s) || !valid_date(a.reference_date) || (dated != 0 && !valid_date(dated)))
    return false;
  g.settlement = s;
  g.anchor = a.reference_date;
  decide_eom_from_anchor(g);
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

bool is_365_day_count(int32_t code) noexcept {
  return engine::is_365_day_count(code) || code == 13;
}

// Accrued interest of the current coupon; after the ex-coupon date the
// buyer is owed the interest for the days left (negative accrued).
void compute_accrued(perpetual_desc& d) noexcept {
  auto& g = d.grid;
  const double rate = rate_on(d, g.next_coupon);
  const double net = 1.0 - g.coupon_tax;
  g.full_coupon = net * rate * g.cf / g.frequency;
  double accrued_days = g.ay * g.basis;
  engine::bond_type_adjust_accrual_days(&accrued_days, g.type, g.settlement,
                                        g.position == engine::kRegularPeriod, g.frequency, rate);
  g.accrued = net * rate * accrued_days / g.basis;

  const int32_t exdiv_date =
      engine::bond_type_exdiv_date(g.next_coupon, g.type, g.calendar(), nullptr);
  g.exdiv = g.settlement >= exdiv_date ? 1 : 0;
  if (!g.exdiv) return;
  // Under rule -6 the ex-coupon period takes no day count of its own: the
  // buyer is owed the coupon less what has accrued.
  if (d.ex_coupon_rule != -6 && is_365_day_count(g.coupon_basis)) {
    const double days_left = dates::day_count(g.settlement, g.next_coupon, g.coupon_basis, nullptr);
    g.accrued = -days_left * rate * net / 365.0;
  } else {
    g.accrued -= g.full_coupon;
  }
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

bool uses_day_exponents(const engine::bond_desc& g) noexcept {
  if (g.accrual_basis != 5) return false;
  switch (g.type) {
    case 280:
    case 281:
    case 284:
    case 286:
    case 700:
      return true;
    default:
      return false;
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
    return kInvalid;
  auto& g = d.grid;
  g.accrual_basis = engine::bond_type_accrual_basis(g.type, g.settlement, g.period_start, g.eom);
  if (g.accrual_basis < 0) return kInvalid;
  if (engine::compute_period_fractions(g) != 0) return kInvalid;
  compute_accrued(d);
  d.convention = choose_convention(d);
  d.day_exponents = uses_day_exponents(g);
  d.explicit_coupons = count_explicit_coupons(d);
  return 0;
}

}  // namespace kbond::perpetual
