// Carry of a perpetual bond: the coupons in the period, the financing of the
// purchase, and the accrued interest at both ends.
#include "perpetual/perpetual_carry.h"

#include <cmath>

#include "engine/catalogue.h"
#include "engine/coupon_schedule.h"
#include "engine/safe_math.h"
#include "engine/carry.h"
#include "k_bond.h"

namespace kbond::perpetual {
namespace {

// The mode word of the bond futures' carry.
constexpr int32_t kSimple = engine::kSimpleInterest;
constexpr int32_t kFullPeriod = engine::kFullPeriodInterest;
constexpr int32_t kContinuous = engine::kContinuous;
constexpr int32_t kReinvestCoupons = engine::kReinvestCoupons;
constexpr int32_t kNoInterest = -1;

// A coupon paid `t` years later is worth this much now.
double discount(double rate, double t, int32_t mode) noexcept {
  if (mode == kContinuous) return engine::safe_exp(-rate * t);
  const double denominator = 1.0 + rate * t;
  return denominator > 0.0 ? 1.0 / denominator : 0.0;
}

}  // namespace

double perpetual_carry(const perpetual_desc& desc, const perpetual_args& args,
                       const CarryTerms& terms, int32_t* error) noexcept {
  *error = 0;
  const auto& g = desc.grid;
  const int32_t mode_word = terms.mode ? *terms.mode : 0;
  const int32_t financing = mode_word & 6;
  int32_t reinvesting = kNoInterest;
  if (mode_word & kReinvestCoupons) reinvesting = financing == kFullPeriod ? kSimple : financing;
  double repo = terms.repo;
  double reinvest = terms.reinvest;
  if (financing == kContinuous) {
    const double f = g.frequency;
    int32_t e1 = 0, e2 = 0;
    repo = engine::yield_convert(repo, f, 0.0, f, 0.0, &e1);
    reinvest = engine::yield_convert(reinvest, f, 0.0, f, 0.0, &e2);
    if (e1 || e2) {
      *error = KVL_ERR_INVALID;
      return -1.0;
    }
  }
  const int32_t end = terms.end_date;
  if (end <= g.settlement) {
    *error = KVL_ERR_DATE_ORDER;
    return -999.0;
  }
  // The bond as the forward buyer takes it (also checks the end date).
  perpetual_args end_args = args;
  end_args.settlement = end;
  perpetual_desc at_end;
  if (perpetual_setup(end_args, at_end) != 0) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const auto& e = at_end.grid;

  const double unit = 1.0 / engine::bond_type_mm_basis(g.type, g.settlement);
  const double cash = terms.price * 0.01 + g.accrued;
  double financing_cost = 0.0, income = 0.0;
  int32_t from = g.settlement;
  auto accrue_to = [&](int32_t to) {
    const double t = (to - from) * unit;
    if (financing != kFullPeriod) {
      financing_cost += engine::period_interest(cash + financing_cost, repo, t, financing);
    }
    income += engine::period_interest(income, reinvest, t, reinvesting);
    from = to;
  };
  // Coupons paid in the period: those before the buyer's next coupon.
  const double net_per_period = (1.0 - g.coupon_tax) / g.frequency;
  for (int32_t date = g.next_coupon; date < e.next_coupon;
       date = engine::grid_after(g, date, nullptr)) {
    accrue_to(date);
    if (date == g.next_coupon) {
      income += g.exdiv ? 0.0 : g.full_coupon;
    } else {
      income += rate_on(desc, date) * net_per_period;
    }
  }
  accrue_to(end);
  if (financing == kFullPeriod) financing_cost = cash * repo * (end - g.settlement) * unit;

  // Ex-coupon at the end: the coming coupon stays with the position, worth
  // its amount discounted from its payment date at the reinvestment rate
  // (unless the seller had already kept it at settlement).
  const bool kept_by_seller = g.exdiv && e.next_coupon == g.next_coupon;
  if (e.exdiv && !kept_by_seller) {
    const int32_t discount_mode = financing == kContinuous ? kContinuous : kSimple;
    income += e.full_coupon * discount(reinvest, (e.next_coupon - end) * unit, discount_mode);
  }
  const double carry = e.accrued - g.accrued + income - financing_cost;
  // A price or rate that is not a number (or too large to finance) leaves no
  // carry to report.
  if (!std::isfinite(carry)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  return carry;
}

}  // namespace kbond::perpetual
