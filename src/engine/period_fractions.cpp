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

// The fractions of one description, measured by the shape of the period
// that contains settlement. Each measure sets b and ba (the coupon and
// discount years of the period measured against) and returns false when a
// year is unusable.
class PeriodMeasure {
 public:
  explicit PeriodMeasure(const bond_desc& desc) noexcept
      : d_(desc), f_(desc.frequency), per_year_(desc.frequency),
        dc_a_(discount_day_count(desc)), dc_c_(coupon_day_count(desc)),
        ps_(desc.period_start), nc_(desc.next_coupon), s_(desc.settlement),
        thirty_360_(dc_a_ == dates::k30_360 || dc_a_ == dates::k30_360Feb) {
    quasi_start = ps_;
  }

  bool measure() noexcept {
    switch (d_.position) {
      case kRegularPeriod:
        return s_ >= ps_ ? regular_period() : before_dated_date();
      case kShortFirstPeriod:
        // Over the regular period that ends at the next coupon.
        quasi_start = dates::add_months(nc_, -d_.months_per_period, d_.eom);
        return over_regular_period(quasi_start, nc_);
      case kLongFirstPeriod:
        return long_first_period();
      default:  // kNoGridDateLeft: a broken period runs to maturity, over
                // the regular period that starts with it
        return over_regular_period(ps_, dates::add_months(ps_, d_.months_per_period, d_.eom));
    }
  }

  // A broken last period in regular periods, for discounting and for the
  // coupon; false when its regular period has no usable year.
  bool last_period(double* discount, double* coupon) const noexcept {
    int32_t jl = 0;
    const int32_t l0 = grid_on_or_before(d_, d_.maturity, &jl);
    const int32_t l1 = grid_date(d_, jl + 1);
    const double la = dates::year_basis(l0, l1, f_, dc_a_);
    const double lc = dates::year_basis(l0, l1, f_, dc_c_);
    if (!usable(la) || !usable(lc)) return false;
    *discount = days(l0, d_.maturity, dc_a_) * per_year_ / la;
    *coupon = days(l0, d_.maturity, dc_c_) * per_year_ / lc;
    return true;
  }

  int32_t coupon_day_count_code() const noexcept { return dc_c_; }

  double cf = 1.0, tn = 0.0, ay = 0.0, b = 0.0, ba = 0.0;
  int32_t quasi_start = 0;

 private:
  // The 30/360 families measure the time to the next coupon as the period
  // less the part already run, so that 30/360 months add up to a period.
  double time_to_next_from_start(double basis_a) const noexcept {
    return thirty_360_ ? (days(ps_, nc_, dc_a_) - days(ps_, s_, dc_a_)) / basis_a
                       : days(s_, nc_, dc_a_) / basis_a;
  }

  bool regular_period() noexcept {
    ba = dates::year_basis(ps_, nc_, f_, dc_a_);
    b = dates::year_basis(ps_, nc_, f_, dc_c_);
    if (!usable(ba) || !usable(b)) return false;
    tn = thirty_360_ ? 1.0 / per_year_ - days(ps_, s_, dc_a_) / ba : days(s_, nc_, dc_a_) / ba;
    ay = days(ps_, s_, dc_c_) / b;
    return true;
  }

  // Settlement before the dated date of a regular first period: nothing has
  // accrued, and the time runs over the quasi-periods to come.
  bool before_dated_date() noexcept {
    int32_t j = 0;
    const int32_t q0 = grid_on_or_before(d_, s_, &j);
    const int32_t q1 = grid_date(d_, j + 1);
    const int32_t r = j + 1 - next_coupon_index(d_);
    quasi_start = q0;
    ba = dates::year_basis(q0, q1, f_, dc_a_);
    b = dates::year_basis(q0, q1, f_, dc_c_);
    if (!usable(ba) || !usable(b)) return false;
    tn = dc_a_ != dates::kActAct ? days(s_, nc_, dc_a_) / ba : (q1 - s_) / ba - r / per_year_;
    ay = 0.0;
    return true;
  }

  // A short period measured against the regular period [from, to] that
  // contains it.
  bool over_regular_period(int32_t from, int32_t to) noexcept {
    b = dates::year_basis(from, to, f_, dc_c_);
    ba = dates::year_basis(from, to, f_, dc_a_);
    if (!usable(ba) || !usable(b)) return false;
    cf = days(ps_, nc_, dc_c_) * per_year_ / b;
    tn = time_to_next_from_start(ba);
    ay = days(ps_, s_, dc_c_) / b;
    return true;
  }

  bool long_first_period() noexcept {
    const int32_t jn = next_coupon_index(d_);
    int32_t j0 = 0;
    const int32_t q0 = grid_on_or_before(d_, ps_, &j0);
    const int32_t q1 = grid_date(d_, j0 + 1);
    const int32_t r1 = j0 + 1 - jn;  // minus the whole quasi-periods from q1 to the coupon
    quasi_start = q0;
    const double bq = dates::year_basis(q0, q1, f_, dc_c_);
    int32_t js = 0;
    const int32_t s0 = grid_on_or_before(d_, s_, &js);
    const int32_t s1 = grid_date(d_, js + 1);
    const int32_t r2 = js + 1 - jn;
    ba = dates::year_basis(s0, s1, f_, dc_a_);
    const double bs = dates::year_basis(s0, s1, f_, dc_c_);
    if (!usable(bq) || !usable(ba) || !usable(bs)) return false;
    if (dc_c_ == dates::kActAct) {
      cf = (q1 - ps_) * per_year_ / bq - r1;
    } else if (long_first_coupon_in_years(d_.type) && dc_c_ == dates::kAct365) {
      cf = dates::year_fraction(ps_, q1, dates::kAct365) * per_year_ - r1;
    } else {
      cf = days(ps_, nc_, dc_c_) * per_year_ / bq;
    }
    tn = dc_a_ == dates::kActAct ? (s1 - s_) / ba - r2 / per_year_ : time_to_next_from_start(ba);
    b = bq;
    if (dc_c_ == dates::kActAct && s_ > q1) {
      // Actual/actual accrues each quasi-period over its own length.
      ay = (q1 - ps_) / bq + (r2 - r1 - 1) / per_year_ + (s_ - s0) / bs;
      b = bs;
    } else {
      ay = days(ps_, s_, dc_c_) / b;
    }
    return true;
  }

  const bond_desc& d_;
  const int32_t f_;
  const double per_year_;
  const int32_t dc_a_, dc_c_, ps_, nc_, s_;
  const bool thirty_360_;
};

}  // namespace

int32_t compute_period_fractions(bond_desc& desc) noexcept {
  PeriodMeasure m(desc);
  desc.coupon_basis = m.coupon_day_count_code();
  if (!m.measure()) return 1;
  desc.cf = m.cf;
  desc.tn = m.tn;
  desc.ay = m.ay < 0.0 ? 0.0 : m.ay;
  desc.basis = m.b;
  desc.basis_accrual = m.ba;
  desc.quasi_start = m.quasi_start;

  desc.last_discount = 0.0;
  desc.last_coupon = 0.0;
  if (desc.partial_period && desc.position != kNoGridDateLeft &&
      !m.last_period(&desc.last_discount, &desc.last_coupon)) {
    return 1;
  }
  return 0;
}

}  // namespace kbond::engine
