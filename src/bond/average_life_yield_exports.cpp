// KVLbyldal: the yield to the average-life date of a bond with a sinking
// fund, the bond priced as a bullet maturing on that date.
#include <cmath>

#include "bond/average_life.h"
#include "bond/common_args.h"
#include "engine/shortened_bond.h"
#include "engine/yield_from_price.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/call_frame.h"
#include "k_bond.h"

using kbond::engine::BondCall;

namespace {

// Half a day on a 360-day year: a life that ends a hair before a day
// boundary still reaches it.
constexpr double kLifeNudge = 1.0 / 720.0;

// The date `years` after settlement: whole years as whole coupon steps, the
// fraction in days of the bond's day count.
int32_t date_after_years(const kbond::engine::bond_desc& bond, double years) noexcept {
  const int32_t whole = static_cast<int32_t>(std::floor(years));
  const int32_t start = kbond::dates::add_months(bond.settlement, 12 * whole, bond.eom);
  const int32_t next_year = kbond::dates::add_months(start, 12, bond.eom);
  const int32_t code = bond.accrual_basis;
  const double basis = kbond::dates::year_basis(start, next_year, 1, code);
  const int32_t days =
      static_cast<int32_t>(std::floor((years - whole) * (basis > 0.0 ? basis : 365.0) + 0.5));
  const int32_t moved = kbond::dates::add_convention_days(start, days, code, bond.eom);
  return moved > 0 ? moved : start + days;
}

}  // namespace

extern "C" KVL_EXPORT double KVL_API KVLbyldal(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double price, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const double* coupon_tax, const double* discount_tax, const int32_t* horizon,
    const double* issue_price, const int32_t* yield_method, const double* factor,
    const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
    const double* sink_amounts, const double* sink_premium, int32_t* error) {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  err = 0;
  const auto bullet = kbond::bond::bond_terms(
      coupons, n_coupons, dates, n_dates, settlement, dated_date, first_coupon, type, frequency,
      n_frequency, redemption, coupon_tax, discount_tax, horizon, issue_price, yield_method);
  const bool sinking = factor && *factor != 0.0;
  if (sinking) {
    if (!dates) {
      err = KVL_ERR_MISSING_ARRAY;
      return -1.0;
    }
    if (n_dates < 1) {
      err = KVL_ERR_COUNT;
      return -1.0;
    }
  }
  BondCall call(bullet, &err);
  if (!call.ok()) return -1.0;
  const auto& bond = call.desc();
  if (!sinking) {
    const double y = kbond::engine::quoted_yield_from_price(price, bond, &err);
    return kbond::engine::round_yield_by_type(y, bond.type);
  }
  // The average life, from a description of the repayment schedule set up
  // under the lock this call already holds.
  const kbond::bond::AverageLifeSchedule schedule(
      bond.maturity, settlement, dated_date, first_coupon, type, frequency, n_frequency,
      redemption, factor, sink_dates, n_sink, sink_ends, n_sink_ends, sink_amounts, sink_premium);
  kbond::engine::ScopedDescription repayments(schedule.args);
  if (repayments.status != 0) {
    err = KVL_ERR_INVALID;
    return -1.0;
  }
  const double life = kbond::bond::average_life(repayments.desc, &err);
  if (err != 0) return -1.0;
  if (!(life + kLifeNudge >= 0.0)) {
    err = KVL_ERR_INVALID;
    return -1.0;
  }
  int32_t average_life_date = date_after_years(bond, life + kLifeNudge);
  if (average_life_date > bond.maturity) average_life_date = bond.maturity;
  if (average_life_date <= settlement) average_life_date = settlement + 1;

  // The bullet that matures on the average-life date.
  kbond::engine::ShortenedBond cut;
  err = cut.build(bullet, bond, average_life_date);
  if (err != 0) return -1.0;
  kbond::engine::ScopedDescription to_life(cut.args);
  if (to_life.status != 0) {
    err = to_life.status;
    return -1.0;
  }
  const double y = kbond::engine::quoted_yield_from_price(price, to_life.desc, &err);
  if (err != 0) return -1.0;
  return kbond::engine::round_yield_by_type(y, to_life.desc.type);
}
