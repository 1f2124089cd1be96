// Period fractions of the coupon period that contains settlement.
//
// Times are in years (the evaluators multiply by the frequency to count
// periods); the current coupon is measured in regular coupons. A first
// period that is longer than regular is counted in quasi-coupon periods: the
// grid dates that would have been coupon dates had the bond paid regularly
// since the dated date.
#include "engine/period_fractions.h"

#include <cmath>

#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/coupon_schedule.h"
#include "engine/market_rules.h"

namespace kbond::engine {

namespace {

double days(int32_t from, int32_t to, int32_t day_count) noexcept {
  return static_cast<double>(dates::day_count(from, to, day_count, nullptr));
}

bool usable(double basis) noexcept { return basis > 0.0 && std::isfinite(basis); }

// Index of the grid date on or before the next coupon. Quasi-coupon counts
// are taken relative to it, so they hold whether the grid is anchored on
// the first coupon date or on maturity.
int32_t next_coupon_index(const bond_desc& desc) noexcept {
  int32_t j = 0;
  grid_on_or_before(desc, desc.next_coupon, &j);
  return j;
}

}  // namespace

int32_t compute_period_fractions(bond_desc& desc) noexcept {
  const int32_t f = desc.frequency;
  const double per_year = f;
  const int32_t dc_a = discount_day_count(desc);
  const int32_t dc_c = coupon_day_count(desc);
  desc.coupon_basis = dc_c;
  const int32_t ps = desc.period_start;
  const int32_t nc = desc.next_coupon;
  const int32_t s = desc.settlement;
  // The 30/360 families measure the time to the next coupon as the period
  // less the part already run, so that 30/360 months add up to a period.
  const bool thirty_360 = dc_a == dates::k30_360 || dc_a == dates::k30_360Feb;
  auto time_to_next_from_start = [&](double basis_a) {
    return thirty_360 ? (days(ps, nc, dc_a) - days(ps, s, dc_a)) / basis_a
                      : days(s, nc, dc_a) / basis_a;
  };

  double cf = 1.0, tn = 0.0, ay = 0.0, b = 0.0, ba = 0.0;
  int32_t quasi_start = ps;
  // A short period measured against the regular period [from, to] that
  // contains it; false when that period has no usable year.
  auto over_regular_period = [&](int32_t from, int32_t to) {
    b = dates::year_basis(from, to, f, dc_c);
    ba = dates::year_basis(from, to, f, dc_a);
    if (!usable(ba) || !usable(b)) return false;
    cf = days(ps, nc, dc_c) * per_year / b;
    tn = time_to_next_from_start(ba);
    ay = days(ps, s, dc_c) / b;
    return true;
  };

  switch (desc.position) {
    case kRegularPeriod:
      if (s >= ps) {
        ba = dates::year_basis(ps, nc, f, dc_a);
        b = dates::year_basis(ps, nc, f, dc_c);
        if (!usable(ba) || !usable(b)) return 1;
        tn = thirty_360 ? 1.0 / per_year - days(ps, s, dc_a) / ba : days(s, nc, dc_a) / ba;
        ay = days(ps, s, dc_c) / b;
      } else {
        // Settlement before the dated date of a regular first period: nothing
        // has accrued, and the time runs over the quasi-periods to come.
        int32_t j = 0;
        const int32_t q0 = grid_on_or_before(desc, s, &j);
        const int32_t q1 = grid_date(desc, j + 1);
        const int32_t r = j + 1 - next_coupon_index(desc);
        quasi_start = q0;
        ba = dates::year_basis(q0, q1, f, dc_a);
        b = dates::year_basis(q0, q1, f, dc_c);
        if (!usable(ba) || !usable(b)) return 1;
        tn = dc_a != dates::kActAct ? days(s, nc, dc_a) / ba : (q1 - s) / ba - r / per_year;
        ay = 0.0;
      }
      break;

    case kShortFirstPeriod:
      // Over the regular period that ends at the next coupon.
      quasi_start = dates::add_months(nc, -desc.months_per_period, desc.eom);
      if (!over_regular_period(quasi_start, nc)) return 1;
      break;

    case kLongFirstPeriod: {
      const int32_t jn = next_coupon_index(desc);
      int32_t j0 = 0;
      const int32_t q0 = grid_on_or_before(desc, ps, &j0);
      const int32_t q1 = grid_date(desc, j0 + 1);
      const int32_t r1 = j0 + 1 - jn;  // minus the whole quasi-periods from q1 to the coupon
      quasi_start = q0;
      const double bq = dates::year_basis(q0, q1, f, dc_c);
      int32_t js = 0;
      const int32_t s0 = grid_on_or_before(desc, s, &js);
      const int32_t s1 = grid_date(desc, js + 1);
      const int32_t r2 = js + 1 - jn;
      ba = dates::year_basis(s0, s1, f, dc_a);
      const double bs = dates::year_basis(s0, s1, f, dc_c);
      if (!usable(bq) || !usable(ba) || !usable(bs)) return 1;
      if (dc_c == dates::kActAct) {
        cf = (q1 - ps) * per_year / bq - r1;
      } else if (long_first_coupon_in_years(desc.type) && dc_c == dates::kAct365) {
        cf = dates::year_fraction(ps, q1, dates::kAct365) * per_year - r1;
      } else {
        cf = days(ps, nc, dc_c) * per_year / bq;
      }
      if (dc_a == dates::kActAct) {
        tn = (s1 - s) / ba - r2 / per_year;
      } else {
        tn = time_to_next_from_start(ba);
      }
      b = bq;
      if (dc_c == dates::kActAct && s > q1) {
        // Actual/actual accrues each quasi-period over its own length.
        ay = (q1 - ps) / bq + (r2 - r1 - 1) / per_year + (s - s0) / bs;
        b = bs;
      } else {
        ay = days(ps, s, dc_c) / b;
      }
      break;
    }

    default:  // kNoGridDateLeft: a broken period runs to maturity, over
              // the regular period that starts with it
      if (!over_regular_period(ps, dates::add_months(ps, desc.months_per_period, desc.eom))) return 1;
      break;
  }

  desc.cf = cf;
  desc.tn = tn;
  desc.ay = ay < 0.0 ? 0.0 : ay;
  desc.basis = b;
  desc.basis_accrual = ba;
  desc.quasi_start = quasi_start;

  desc.last_discount = 0.0;
  desc.last_coupon = 0.0;
  if (desc.partial_period && desc.position != kNoGridDateLeft) {
    int32_t jl = 0;
    const int32_t l0 = grid_on_or_before(desc, desc.maturity, &jl);
    const int32_t l1 = grid_date(desc, jl + 1);
    const double la = dates::year_basis(l0, l1, f, dc_a);
    const double lc = dates::year_basis(l0, l1, f, dc_c);
    if (!usable(la) || !usable(lc)) return 1;
    desc.last_discount = days(l0, desc.maturity, dc_a) * per_year / la;
    desc.last_coupon = days(l0, desc.maturity, dc_c) * per_year / lc;
  }
  return 0;
}

}  // namespace kbond::engine
