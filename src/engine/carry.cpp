#include "engine/carry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "dates/business_days.h"
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"
#include "engine/amortisation.h"
#include "engine/market_rules.h"
#include "engine/safe_math.h"
#include "k_bond.h"

namespace kbond::engine {
namespace {

// Interest on `amount` over t years: simple (mode 0), continuous (mode 4);
// any other mode earns nothing (coupons without reinvestment).
double period_interest(double amount, double rate, double t, int32_t mode) noexcept {
  if (mode == kSimpleInterest) return amount * rate * t;
  if (mode == kContinuous) return amount * (std::exp(rate * t) - 1.0);
  return 0.0;
}

// The coupon dates of the description, from the next one on: each grid date
// in turn, the last one being the maturity.
struct CouponWalk {
  const engine::bond_desc& desc;
  dates::MonthSchedule grid;  // built once: each step is then one date look-up
  int32_t index = 0;          // grid index of `date`
  int32_t date;               // payment date of the current coupon
  int32_t start;              // start of its period
  bool first = true;

  explicit CouponWalk(const engine::bond_desc& d)
      : desc(d), grid(d.anchor, d.months_per_period, d.eom), date(d.next_coupon),
        start(d.period_start) {
    grid.around(date, 0, &index);
  }

  // Coupon per unit of face paid at `date` (net of withholding).
  double amount() const {
    if (first) return desc.exdiv ? 0.0 : desc.full_coupon;
    const double rate = engine::rate_in_force(desc, start);
    double periods = 1.0;
    if (date == desc.maturity && desc.partial_period && desc.position != engine::kNoGridDateLeft) {
      const int32_t regular_end =
          dates::schedule_date(start, 1, desc.months_per_period, desc.anchor, desc.eom, nullptr);
      // (-1: the regular end lies beyond the last serial, so past maturity)
      if (regular_end < 0 || regular_end > desc.maturity) periods = desc.last_coupon;
    }
    return (1.0 - desc.coupon_tax) * rate * periods / desc.frequency;
  }

  void advance() {
    start = date;
    first = false;
    if (date >= desc.maturity) {
      date = INT32_MAX;  // nothing is paid after maturity
      return;
    }
    // A grid date beyond the last serial does not exist (-1): the bond
    // still pays at maturity, and the walk must never step back.
    const int32_t next = grid.date(++index);
    date = (next <= date || next > desc.maturity) ? desc.maturity : next;
  }
};

// Description of the bond settling at `date`, with the coupon rate then in
// force as its only rate (the accrued interest there is all that is read).
int32_t end_description(const engine::bond_desc& desc, const engine::bond_args& args,
                        int32_t date, double* rate, engine::bond_desc* out) {
  const int32_t period_start =
      dates::schedule_date(date, 0, desc.months_per_period, desc.anchor, desc.eom, nullptr);
  *rate = engine::rate_in_force(desc, period_start);
  engine::bond_args end_args = args;
  end_args.coupons = rate;
  end_args.n_coupons = 1;
  end_args.dates = &desc.maturity;
  end_args.n_dates = 1;
  end_args.settlement = date;
  end_args.factor = nullptr;
  end_args.sink_dates = nullptr;
  end_args.n_sink = 0;
  end_args.sink_ends = nullptr;
  end_args.n_sink_ends = 0;
  end_args.sink_amounts = nullptr;
  end_args.sink_premium = nullptr;
  return engine::bond_setup(end_args, *out);
}

}  // namespace

bool CarryAccount::start(const int32_t* mode, double repo_rate, double reinvest_rate,
                         double frequency) noexcept {
  const int32_t mode_word = mode ? *mode : 0;
  financing = mode_word & 6;
  reinvesting = -1;
  if (mode_word & kReinvestCoupons) {
    reinvesting = financing == kFullPeriodInterest ? kSimpleInterest : financing;
  }
  repo = repo_rate;
  reinvest = reinvest_rate;
  if (financing != kContinuous) return true;
  // Rates quoted at the coupon frequency, re-expressed continuously.
  int32_t e1 = 0, e2 = 0;
  repo = engine::yield_convert(repo, frequency, 0.0, frequency, 0.0, &e1);
  reinvest = engine::yield_convert(reinvest, frequency, 0.0, frequency, 0.0, &e2);
  return !(e1 || e2);
}

void CarryAccount::accrue_to(int32_t to) noexcept {
  const double t = (to - from) * unit;
  if (financing != kFullPeriodInterest) {
    financing_cost += period_interest(cash + financing_cost, repo, t, financing);
  }
  income += period_interest(income, reinvest, t, reinvesting);
  from = to;
}

void CarryAccount::finish(int32_t settlement, int32_t stop) noexcept {
  if (financing == kFullPeriodInterest) financing_cost = cash * repo * (stop - settlement) * unit;
}

double CarryAccount::discount(double t) const noexcept {
  if (financing == kContinuous) return engine::safe_exp(-reinvest * t);
  const double denominator = 1.0 + reinvest * t;
  return denominator > 0.0 ? 1.0 / denominator : 0.0;
}

double carry_engine(const engine::bond_desc& desc, const engine::bond_args& args,
                    const CarryTerms& terms, int32_t* error) noexcept {
  *error = 0;
  CarryAccount account;
  if (!account.start(terms.mode, terms.repo, terms.reinvest, desc.frequency)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const double basis = terms.basis && *terms.basis > 0.0
                           ? *terms.basis
                           : engine::bond_type_mm_basis(desc.type, desc.settlement);
  const double unit = 1.0 / basis;
  account.unit = unit;

  int32_t end = terms.end_date;
  if (terms.date_rule != 0) end = dates::adjust_business_day(end, dates::kFollowing, desc.calendar());
  if (end <= desc.settlement) {
    *error = KVL_ERR_DATE_ORDER;
    return -999.0;
  }
  // Widened: a day count from the caller may be any int32.
  int64_t stop_wide = end;
  if (terms.days) stop_wide -= *terms.days;
  if (stop_wide > desc.maturity) stop_wide = desc.maturity;
  const int32_t stop = stop_wide <= desc.settlement ? desc.settlement
                                                    : static_cast<int32_t>(stop_wide);
  if (stop <= desc.settlement) {
    *error = KVL_ERR_DATE_ORDER;
    return -999.0;
  }

  // Cash per unit of initial face; quoted prices and accrued interest are
  // per outstanding face.
  const double start_factor = desc.price_factor_flag ? desc.price_factor : 1.0;
  account.cash = (terms.price * 0.01 + carry_accrued(desc.accrued, desc.type)) * start_factor;
  account.from = desc.settlement;
  CouponWalk coupon(desc);
  engine::OutstandingCursor outstanding(desc);
  // The face outstanding through the maturity date is the face redeemed
  // there, as for a bullet bond: not a repayment received during the carry
  // but what the forward buyer holds. (The factor itself reads 1.0 from
  // maturity on.)
  auto outstanding_at = [&](int32_t d) { return outstanding.at(std::min(d, desc.maturity - 1)); };
  for (; coupon.date <= stop; coupon.advance()) {
    account.accrue_to(coupon.date);
    if (desc.price_factor_flag) {
      // Coupon on the face outstanding through the period, then the
      // principal repaid on the date.
      const double before = outstanding_at(coupon.date - 1);
      const double after = outstanding_at(coupon.date);
      account.income += coupon.amount() * before + (before - after);
    } else {
      account.income += coupon.amount();
    }
  }
  account.accrue_to(stop);
  account.finish(desc.settlement, stop);

  engine::bond_desc at_end;
  double end_rate = 0.0;
  if (end_description(desc, args, stop, &end_rate, &at_end) != 0) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const double end_accrued = carry_accrued(at_end.accrued, desc.type);
  const double end_factor = desc.price_factor_flag ? outstanding_at(stop) : 1.0;
  // Ex-coupon at the end: the forward buyer takes the bond without the
  // coming coupon, which stays with the position; it is worth its amount
  // discounted from its payment date at the reinvestment rate. A coupon the
  // seller kept at settlement (already ex then) is not ours.
  const bool same_coupon_kept_by_seller = desc.exdiv && at_end.next_coupon == desc.next_coupon;
  if (at_end.exdiv && !same_coupon_kept_by_seller) {
    const double t = (at_end.next_coupon - stop) * unit;
    account.income += at_end.full_coupon * end_factor * account.discount(t);
  }
  engine::bond_release(at_end);
  if (end_factor <= 0.0) {
    *error = KVL_ERR_DATE_ORDER;  // nothing left outstanding at the end
    return -999.0;
  }
  // Forward dirty value per outstanding face, and the clean forward price.
  const double forward_full =
      (account.cash + account.financing_cost - account.income) / end_factor;
  const double forward_clean = (forward_full - end_accrued) * 100.0;
  return start_factor * (terms.price - forward_clean) * 0.01;
}

}  // namespace kbond::engine
