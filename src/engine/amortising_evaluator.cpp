// An amortising bond is a portfolio of bullet bonds: each repayment of a
// fraction a of face on date d is a bullet maturing at d, redeemed at par,
// that carries the coupons on that fraction until d. What is still
// outstanding after the last amortisation date runs to the bond's own
// maturity and redemption. The price is per 100 of initial face.
//
// Bullets whose coupons are discounted one by one (several coupon rates,
// payments moved to business days, exponents in days, Moosmüller's method)
// all carry the same coupons, each cut at its own maturity: one walk along the bond's coupons prices every one
// of them, where pricing each bullet on its own would walk the coupons
// again for every repayment date.
#include <cmath>

#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/amortisation.h"
#include "engine/catalogue.h"
#include "engine/coupon_schedule.h"
#include "engine/evaluator_common.h"
#include "engine/evaluators.h"
#include "engine/price_from_yield.h"

namespace kbond::engine {

namespace {

constexpr double kNegligibleFace = 1e-9;
// A sinking schedule longer than a century of monthly dates is malformed.
constexpr int32_t kMaxAmortisationDates = 1200;

// The bond cut down to a bullet maturing at `date`, redeemed at par.
bond_desc bullet_to(const bond_desc& desc, int32_t date) noexcept {
  bond_desc bullet = desc;
  bullet.maturity = date;
  bullet.amort_kind = kNoAmortisation;
  if (bullet.redemption >= 0.0) bullet.redemption = 100.0;
  bullet.odd_first = 0;
  bullet.whole_periods =
      dates::months_between(desc.next_coupon, date, desc.eom, nullptr) / desc.months_per_period + 1;
  bullet.partial_period = 0;
  bullet.last_discount = 0.0;
  bullet.last_coupon = 0.0;
  return bullet;
}

// The repayments from the next amortisation date on, in date order, each
// cut so that no more than the whole face is repaid.
class Repayments {
 public:
  explicit Repayments(const bond_desc& desc) noexcept
      : desc_(desc), repaid_(1.0 - desc.factor),
        step_(desc.periods_per_sink > 0 ? desc.periods_per_sink : 1) {
    // Amortisation dates lie on the coupon grid every `step_` periods.
    grid_on_or_before(desc, desc.next_sink, &index_);
  }

  bool next(int32_t* date, double* amount) noexcept {
    while (count_ < kMaxAmortisationDates) {
      const int32_t d = grid_date(desc_, index_);
      ++count_;
      index_ += step_;
      if (d <= 0 || d >= desc_.maturity) break;
      double a = amortisation_due(desc_, d);
      if (repaid_ + a >= 1.0) a = 1.0 - repaid_;
      if (a <= kNegligibleFace) continue;
      repaid_ += a;
      *date = d;
      *amount = a;
      return true;
    }
    count_ = kMaxAmortisationDates;
    return false;
  }

  double outstanding() const noexcept { return 1.0 - repaid_; }

 private:
  const bond_desc& desc_;
  double repaid_;
  int32_t step_;
  int32_t index_ = 0;
  int32_t count_ = 0;
};

struct Accumulator {
  double price = 0.0;
  double first = 0.0;
  double second = 0.0;

  void add(double weight, double p, double d1, double d2) noexcept {
    price += weight * p;
    first += weight * d1;
    second += weight * d2;
  }

  // Adds `weight` times the price of `bond`; false (with the error) when it
  // cannot be priced.
  bool add(double weight, double yield, const bond_desc& bond, bool want_first, bool want_second,
           int32_t* error, double* failed_price) noexcept {
    double d1 = 0.0, d2 = 0.0;
    int32_t err = 0;
    const double p = price_from_yield(yield, bond, want_first ? &d1 : nullptr,
                                      want_second ? &d2 : nullptr, &err);
    if (err != 0) {
      *error = err;
      *failed_price = p;
      return false;
    }
    add(weight, p, d1, d2);
    return true;
  }
};

// How a walked bullet discounts its flows: compound at the coupon frequency
// over whole periods (standard) or over actual/365 days, or Moosmüller's
// simple interest to the next coupon and compound after it.
enum class Discounting { kNone, kPeriods, kActual365Days, kMoosmuller };

Discounting discounting_of(const bond_desc& bullet) noexcept {
  const FirstDerivativeEvaluator evaluate = compound_evaluator_for(bullet);
  if (evaluate == standard_evaluator)
    return annuity_applies(bullet) ? Discounting::kNone : Discounting::kPeriods;
  if (evaluate == actual365_evaluator) return Discounting::kActual365Days;
  if (evaluate == moosmuller_evaluator) return Discounting::kMoosmuller;
  return Discounting::kNone;
}

// One evaluator's running sums over the cash flows at one yield, in the
// order and the arithmetic of the evaluator itself, so that a bullet cut
// from them prices to the same digits.
struct DiscountRun {
  Discounting how = Discounting::kNone;
  double f = 1.0;
  double v = 1.0;          // compound: 1 / (1 + y/f)
  double d1 = 1.0;         // Moosmüller: simple discount to the next coupon
  double d1_slope = 0.0;
  double u_slope = 0.0;
  double value = 0.0;
  double weighted = 0.0;   // compound: sum of t x flow; Moosmüller: the derivative
  double df = 1.0;
  double previous_t = 0.0;
  bool first = true;

  // False when the yield makes a denominator vanish.
  bool start(Discounting discounting, const bond_desc& desc, double yield) noexcept {
    how = discounting;
    f = desc.frequency;
    if (how == Discounting::kMoosmuller) {
      const double t = f * desc.tn;
      const double r = yield / f;
      const double simple_growth = 1.0 + t * r;
      if (simple_growth == 0.0 || 1.0 + r == 0.0) return false;
      d1 = 1.0 / simple_growth;
      d1_slope = -t / f * d1;
      v = 1.0 / (1.0 + r);
      u_slope = -v / f;
      return true;
    }
    const double base = 1.0 + yield / f;
    if (base == 0.0) return false;
    v = 1.0 / base;
    return true;
  }

  // A flow `k` whole periods after the next coupon, `t` periods from now.
  void add(double amount, int32_t k, double t) noexcept {
    if (how == Discounting::kMoosmuller) {
      const double kd = k;
      const double flow_df = d1 * safe_pow(v, kd);
      value += amount * flow_df;
      weighted += amount * flow_df * (d1_slope + kd * u_slope);
      return;
    }
    if (first || std::fabs(t - previous_t - 1.0) > 1e-12) df = safe_pow(v, t);
    else df *= v;
    first = false;
    previous_t = t;
    value += amount * df;
    weighted += amount * df * t;
  }

  // The price of a bullet whose coupons are the flows added so far and whose
  // redemption falls on its last coupon date, k and t as for `add`.
  double bullet_price(const bond_desc& bullet, int32_t k, double t, double* first_derivative,
                      int32_t* error) const noexcept {
    const double redemption = bullet.redemption * 0.01;
    if (how == Discounting::kMoosmuller) {
      const double kd = k;
      const double redemption_df = d1 * safe_pow(v, kd);
      const double slope = d1_slope + kd * u_slope;
      return finish_price(bullet, value + redemption * redemption_df,
                          weighted + redemption * redemption_df * slope, redemption_df,
                          redemption_df * slope, first_derivative, error);
    }
    const double redemption_df = safe_pow(v, t);
    const double dirty = value + redemption * redemption_df;
    const double dirty_weighted = weighted + redemption * redemption_df * t;
    return finish_price(bullet, dirty, -dirty_weighted * v / f, redemption_df,
                        -t * redemption_df * v / f, first_derivative, error);
  }
};

// The bond's coupons walked once, at the yield and, for the curvature, a
// step either side: each bullet takes the sums as far as its maturity. The
// first walked bullet fixes the discounting; a bullet discounted otherwise
// (a short one in its simple final period, say) is priced on its own.
class BulletWalk {
 public:
  BulletWalk(const bond_desc& desc, double yield, bool curvature) noexcept
      : desc_(desc), grid_(desc), runs_(curvature ? 3 : 1), yield_(yield),
        period_start_(desc.next_coupon), t0_(periods_to_next_coupon(desc)),
        nominal_t0_(desc.frequency * desc.tn),
        net_per_period_((1.0 - desc.coupon_tax) / desc.frequency) {}

  // Whether `bullet` is priced here, with its coupons those of the bond up
  // to its maturity.
  bool prices(const bond_desc& bullet) noexcept {
    const Discounting how = discounting_of(bullet);
    if (how == Discounting::kNone || !begin(how)) return false;
    const int32_t m = further_coupons(bullet);
    if (m < coupons_ || m < 0) return false;
    return m == 0 ? bullet.maturity == desc_.next_coupon
                  : grid_.after_next_coupon(m) == bullet.maturity;
  }

  // Adds `weight` times the bullet's price, as the bullet on its own would
  // be priced (the curvature from the first derivatives either side).
  bool add(const bond_desc& bullet, double weight, Accumulator& total, bool want_first,
           int32_t* error, double* failed_price) noexcept {
    const int32_t m = further_coupons(bullet);
    for (int32_t k = coupons_ + 1; k <= m; ++k) {
      const int32_t date = grid_.after_next_coupon(k);
      const double amount = rate_in_force(desc_, period_start_) * net_per_period_;
      const double t = exponent(k, date);
      for (int32_t i = 0; i < runs_; ++i) run_[i].add(amount, k, t);
      period_start_ = date;
    }
    coupons_ = m;
    const double t = exponent(m, bullet.maturity);
    double d1 = 0.0, below = 0.0, above = 0.0;
    int32_t err = 0;
    if (runs_ == 3) {
      for (int32_t i : {1, 2}) {
        const double p = run_[i].bullet_price(bullet, m, t, i == 1 ? &below : &above, &err);
        if (err != 0) return fail(err, p, error, failed_price);
      }
    }
    const double p = run_[0].bullet_price(bullet, m, t, want_first ? &d1 : nullptr, &err);
    if (err != 0) return fail(err, p, error, failed_price);
    total.add(weight, p, d1, runs_ == 3 ? (above - below) * kSecondDerivativeScale : 0.0);
    return true;
  }

 private:
  // Starts the runs with the next coupon on the first walked bullet; false
  // when the walk is fixed to another discounting or a denominator vanishes
  // (the bullets then report that error themselves).
  bool begin(Discounting how) noexcept {
    if (how_ != Discounting::kNone) return how == how_ && usable_;
    how_ = how;
    const double yields[3] = {yield_, yield_ - kSecondDerivativeStep,
                              yield_ + kSecondDerivativeStep};
    usable_ = true;
    for (int32_t i = 0; i < runs_; ++i) {
      usable_ = usable_ && run_[i].start(how, desc_, yields[i]);
      if (usable_ && !desc_.exdiv) run_[i].add(desc_.full_coupon, 0, t0_);
    }
    return usable_;
  }

  static bool fail(int32_t err, double price, int32_t* error, double* failed_price) noexcept {
    *error = err;
    *failed_price = price;
    return false;
  }

  // The discounting exponent in periods of a flow k periods after the next
  // coupon, due on `date` (unused by Moosmüller's method).
  double exponent(int32_t k, int32_t date) const noexcept {
    const bool business_days = pays_on_business_days(desc_);
    if (how_ == Discounting::kActual365Days) {
      const double f = desc_.frequency;
      if (!business_days) return t0_ + (date - desc_.next_coupon) * f * kPerDay365;
      const int32_t next_paid = payment_date(desc_, desc_.next_coupon);
      const int32_t days = dates::day_count(next_paid, payment_date(desc_, date), dates::kAct365, nullptr);
      return t0_ + days * f * kPerDay365;
    }
    if (!business_days) return t0_ + static_cast<double>(k);
    return business_day_periods(desc_, nominal_t0_ + static_cast<double>(k), date);
  }

  const bond_desc& desc_;
  const CouponGrid grid_;
  int32_t runs_;
  double yield_;
  DiscountRun run_[3];
  Discounting how_ = Discounting::kNone;
  bool usable_ = false;
  int32_t coupons_ = 0;  // regular coupons after the next one already added
  int32_t period_start_;
  double t0_;
  double nominal_t0_;
  double net_per_period_;
};

}  // namespace

double amortising_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                            double* second_derivative, int32_t* error) noexcept {
  const bool want_first = first_derivative != nullptr;
  const bool want_second = second_derivative != nullptr;
  Accumulator total;
  double failed_price = 0.0;
  BulletWalk walk(desc, yield, want_second);
  Repayments repayments(desc);
  int32_t date = 0;
  double amount = 0.0;
  while (repayments.next(&date, &amount)) {
    const bond_desc bullet = bullet_to(desc, date);
    const bool added =
        walk.prices(bullet)
            ? walk.add(bullet, amount, total, want_first, error, &failed_price)
            : total.add(amount, yield, bullet, want_first, want_second, error, &failed_price);
    if (!added) return failed_price;
  }

  const double remaining = repayments.outstanding();
  if (remaining > kNegligibleFace) {
    bond_desc rest = desc;
    rest.amort_kind = kNoAmortisation;
    if (!total.add(remaining, yield, rest, want_first, want_second, error, &failed_price)) {
      return failed_price;
    }
  }
  if (first_derivative) *first_derivative = total.first;
  if (second_derivative) *second_derivative = total.second;
  return total.price;
}

}  // namespace kbond::engine
