// An amortising bond is a portfolio of bullet bonds: each repayment of a
// fraction a of face on date d is a bullet maturing at d, redeemed at par,
// that carries the coupons on that fraction until d. What is still
// outstanding after the last amortisation date runs to the bond's own
// maturity and redemption. The price is per 100 of initial face.
#include "dates/month_arithmetic.h"
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

struct Accumulator {
  double price = 0.0;
  double first = 0.0;
  double second = 0.0;

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
    price += weight * p;
    first += weight * d1;
    second += weight * d2;
    return true;
  }
};

}  // namespace

double amortising_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                            double* second_derivative, int32_t* error) noexcept {
  const bool want_first = first_derivative != nullptr;
  const bool want_second = second_derivative != nullptr;
  Accumulator total;
  double failed_price = 0.0;
  double repaid = 1.0 - desc.factor;
  const int32_t step = desc.periods_per_sink > 0 ? desc.periods_per_sink : 1;

  // Amortisation dates lie on the coupon grid every `step` periods.
  int32_t j = 0;
  grid_on_or_before(desc, desc.next_sink, &j);
  for (int32_t k = 0; k < kMaxAmortisationDates; ++k, j += step) {
    const int32_t date = grid_date(desc, j);
    if (date <= 0 || date >= desc.maturity) break;
    double amount = amortisation_due(desc, date);
    if (repaid + amount >= 1.0) amount = 1.0 - repaid;
    if (amount <= kNegligibleFace) continue;
    if (!total.add(amount, yield, bullet_to(desc, date), want_first, want_second, error,
                   &failed_price)) {
      return failed_price;
    }
    repaid += amount;
  }

  const double remaining = 1.0 - repaid;
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
