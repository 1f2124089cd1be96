// pik_setup: from the PIK arguments to a validated description.
//
// The coupon grid, the period around settlement, the period counts and the
// period fractions are the bond engine's (bond_setup and its schedule
// step). A bond called before maturity is described a second time, with
// the grid found for maturity and the call date as its last date, so that
// the periods are counted to the redemption actually expected.
#include <cmath>
#include <cstdint>

#include "dates/date_serial.h"
#include "engine/catalogue.h"
#include "engine/safe_math.h"
#include "k_bond.h"
#include "pik/pik_desc.h"

namespace kbond::pik {
namespace {


bool finite_rates(const double* rates, int32_t count) noexcept {
  if (!rates || count < 1) return false;
  for (int32_t i = 0; i < count; ++i) {
    if (!std::isfinite(rates[i])) return false;
  }
  return true;
}

// A single cash rate may accompany stepped in-kind rates, but a single
// in-kind rate requires stepped cash rates.
bool counts_agree(int32_t n_cash, int32_t n_pik, int32_t n_dates) noexcept {
  if (n_dates == 1) return n_cash == 1 && n_pik == 1;
  if (n_pik == 1) return n_cash == n_dates;
  return n_pik == n_dates && (n_cash == n_dates || n_cash == 1);
}

bool read_type(const pik_args& a, int32_t* base) noexcept {
  if (!a.type) {
    *base = 0;
    return true;
  }
  // Custom codes are never PIK types; refusing them here needs no lock.
  if (*a.type < 0 || *a.type >= engine::kFirstCustomCode) return false;
  *base = engine::bond_type_base(*a.type);
  return engine::is_pik_type(*base);
}

double largest_magnitude(const double* rates, int32_t count) noexcept {
  double largest = 0.0;
  for (int32_t i = 0; i < count; ++i) largest = std::fmax(largest, std::fabs(rates[i]));
  return largest;
}

// Every amount the bond can pay must be a usable number. The capitalised
// principal grows by at most (1 + |in-kind rate| / f) a period, so its bound
// over the remaining periods caps the redemption and every cash coupon
// without walking the schedule.
bool amounts_bounded(const pik_desc& d) noexcept {
  const double f = d.frequency;
  const double growth = std::exp(d.remaining_periods() *
                                 std::log1p(largest_magnitude(d.pik_rates, d.n_pik) / f));
  const double largest_flow =
      growth * std::fmax(largest_magnitude(d.cash_rates, d.n_cash) / f, d.redemption * 0.01);
  // No real bond pays or accrues anywhere near 1e100 times its face.
  return largest_flow < engine::kAbsurdMagnitude && engine::plausible_magnitude(d.cash_now) &&
         engine::plausible_magnitude(d.pik_now) && engine::plausible_magnitude(d.accrued);
}

// The rates array that bond_setup reads while it places the grid: one rate
// per step date (its values only feed accrued interest that is recomputed).
const double* grid_rates(const pik_args& a) noexcept {
  return a.n_cash == a.n_dates ? a.cash_rates : a.pik_rates;
}

}  // namespace

int32_t step_index(const int32_t* step_dates, int32_t count, int32_t date, int32_t from) noexcept {
  if (count <= 1 || !step_dates) return 0;
  const int32_t last = count - 1;
  int32_t i = from < 0 ? 0 : (from > last ? last : from);
  while (i < last && step_dates[i] < date) ++i;
  if (step_dates[i] == date && i < last) ++i;
  return i;
}

int32_t pik_setup(const pik_args& a, pik_desc& d) noexcept {
  d = pik_desc{};
  if (!finite_rates(a.cash_rates, a.n_cash) || !finite_rates(a.pik_rates, a.n_pik) ||
      !a.dates || a.n_dates < 1 || !counts_agree(a.n_cash, a.n_pik, a.n_dates) ||
      a.n_holidays < 0)  // a missing holiday list is an empty one
    return KVL_ERR_INVALID;
  int32_t base = 0;
  if (!read_type(a, &base)) return KVL_ERR_INVALID;

  engine::bond_args grid_args;
  grid_args.coupons = grid_rates(a);
  grid_args.n_coupons = a.n_dates;
  grid_args.dates = a.dates;
  grid_args.n_dates = a.n_dates;
  grid_args.settlement = a.settlement;
  grid_args.dated_date = a.dated_date;
  grid_args.first_coupon = a.first_coupon;
  grid_args.type = a.type;
  grid_args.frequency = a.frequency;
  grid_args.n_frequency = a.frequency ? 1 : 0;
  grid_args.redemption = a.redemption;
  grid_args.bd_flags = a.holiday_options;
  grid_args.holidays = a.holidays;
  grid_args.n_holidays = a.n_holidays;
  if (engine::bond_setup(grid_args, d.grid) != 0) return KVL_ERR_INVALID;

  d.maturity = d.grid.maturity;
  d.call_date = d.maturity;
  if (a.call_date && *a.call_date != 0) {
    const int32_t call = *a.call_date;
    if (call > d.maturity || call < a.settlement || call < d.grid.first_coupon) return KVL_ERR_INVALID;
    d.call_date = call;
  }
  if (d.call_date != d.maturity) {
    // The same grid (its dated date, first coupon and end-of-month rule),
    // redeemed at the call date.
    const int32_t dated = d.grid.dated_date;
    const int32_t first = d.grid.first_coupon;
    const int32_t eom = d.grid.eom;
    const double any_rate = 0.0;
    grid_args.coupons = &any_rate;
    grid_args.n_coupons = 1;
    grid_args.dates = &d.call_date;
    grid_args.n_dates = 1;
    grid_args.dated_date = &dated;
    grid_args.first_coupon = &first;
    grid_args.eom = &eom;
    if (engine::bond_setup(grid_args, d.grid) != 0) return KVL_ERR_INVALID;
  }

  d.type = base;
  d.accrual_basis = d.grid.accrual_basis;
  d.frequency = d.grid.frequency;
  d.months_per_period = d.grid.months_per_period;
  d.cash_rates = a.cash_rates;
  d.n_cash = a.n_cash;
  d.pik_rates = a.pik_rates;
  d.n_pik = a.n_pik;
  d.dates = a.dates;
  d.n_dates = a.n_dates;
  d.redemption = d.grid.redemption;
  d.pay_on_business_day = a.pay_on_business_day && *a.pay_on_business_day != 0 ? 1 : 0;

  const int32_t start = d.grid.period_start;
  const double cash = a.cash_rates[a.n_cash > 1 ? step_index(a.dates, a.n_dates, start) : 0];
  const double in_kind = a.pik_rates[a.n_pik > 1 ? step_index(a.dates, a.n_dates, start) : 0];
  d.cash_now = d.grid.cf * cash / d.frequency;
  d.pik_now = d.grid.cf * in_kind / d.frequency;
  d.accrued = d.grid.ay * cash;
  return amounts_bounded(d) ? 0 : KVL_ERR_INVALID;
}

}  // namespace kbond::pik
