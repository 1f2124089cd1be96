// Pieces shared by the price-yield evaluators: the bond's remaining cash
// flows as the evaluators see them, business-day payment times, the
// capital-gains tax rule and the finishing of a compound-yield price.
//
// A remaining cash flow carries its nominal position in coupon periods
// counted from the next coupon date (0 for the next coupon, k for the k-th
// regular coupon after it, k + LD for a broken last coupon), so that each
// evaluator only decides how that position becomes a discounting exponent:
//
//   discount_cash_flows(y, desc, [&](const CashFlow& cf) { return t0 + cf.periods; }, d1, err);
#pragma once
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "dates/day_count.h"
#include "engine/amortisation.h"
#include "engine/bond_desc.h"
#include "engine/coupon_schedule.h"
#include "engine/safe_math.h"
#include "k_bond.h"

namespace kbond::engine {

inline constexpr double kZeroDenominatorPrice = -100.0;
inline constexpr double kRefusedShapePrice = -999.9;
inline constexpr double kPerDay360 = 0.002777777777777778;      // 1 / 360
inline constexpr double kPerDay365 = 0.0027397260273972603;     // 1 / 365
inline constexpr double kPerDay36525 = 0.0027378507871321013;   // 1 / 365.25

enum class FlowKind { kNextCoupon, kCoupon, kLastCoupon, kRedemption };

struct CashFlow {
  FlowKind kind;
  int32_t date;        // unadjusted payment date
  double periods;      // nominal coupon periods after the next coupon date
  double amount;       // per unit of face, net of coupon tax
  bool at_maturity;    // paid on the maturity date
};

// Coupons still to be paid after the next one.
inline int32_t further_coupons(const bond_desc& desc) noexcept {
  return desc.whole_periods + desc.odd_first - 1;
}

// A broken last period follows the last whole coupon.
inline bool has_broken_last_period(const bond_desc& desc) noexcept {
  return desc.partial_period != 0 && desc.position != kNoGridDateLeft;
}

// The coupon grid dates after the next coupon date, by their index on the
// grid (anchor + j periods), so that a day clamped at a month's end does
// not drift from one coupon to the next.
class CouponGrid {
 public:
  explicit CouponGrid(const bond_desc& desc) noexcept : desc_(desc) {
    grid_on_or_before(desc, desc.next_coupon, &next_index_);
  }
  // The k-th grid date after the next coupon date.
  int32_t after_next_coupon(int32_t k) const noexcept { return grid_date(desc_, next_index_ + k); }

 private:
  const bond_desc& desc_;
  int32_t next_index_ = 0;
};

// Visits the remaining cash flows in payment order: the next coupon (not
// when settlement is ex-dividend), each further regular coupon at the rate
// in force for its period, the broken last coupon, and the redemption.
template <class Visit>
void for_each_cash_flow(const bond_desc& desc, Visit&& visit) {
  const double net_per_period = (1.0 - desc.coupon_tax) / desc.frequency;
  const int32_t m = further_coupons(desc);
  const bool broken_last = has_broken_last_period(desc);
  if (!desc.exdiv) {
    visit(CashFlow{FlowKind::kNextCoupon, desc.next_coupon, 0.0, desc.full_coupon,
                   m <= 0 && !broken_last});
  }
  int32_t period_start = desc.next_coupon;
  if (m > 0) {
    const CouponGrid grid(desc);
    for (int32_t k = 1; k <= m; ++k) {
      const bool last = k == m && !broken_last;
      const int32_t date = last ? desc.maturity : grid.after_next_coupon(k);
      visit(CashFlow{FlowKind::kCoupon, date, static_cast<double>(k),
                     rate_in_force(desc, period_start) * net_per_period, last});
      period_start = date;
    }
  }
  double periods = static_cast<double>(std::max(m, 0));
  if (broken_last) {
    periods += desc.last_discount;
    visit(CashFlow{FlowKind::kLastCoupon, desc.maturity, periods,
                   rate_in_force(desc, period_start) * desc.last_coupon * net_per_period, true});
  }
  visit(CashFlow{FlowKind::kRedemption, desc.maturity, periods, desc.redemption * 0.01, true});
}

// Payment dates move to business days when the caller asked for it.
inline bool pays_on_business_days(const bond_desc& desc) noexcept {
  return desc.yield_method_arg == 1;
}

// A single coupon rate on unadjusted dates makes the further coupons an
// annuity with a closed form; otherwise the evaluators walk them one by one.
inline bool annuity_applies(const bond_desc& desc) noexcept {
  return desc.n_coupons <= 1 && further_coupons(desc) >= 2 && !pays_on_business_days(desc);
}

// A coupon falling on a holiday or a non-working weekend day is paid on the
// following business day of the bond's calendar.
int32_t payment_date(const bond_desc& desc, int32_t date) noexcept;

// Day counts under which a payment moved to a business day is timed by its
// actual days from settlement over 365: the 365-day years except the
// Japanese act/365 (13), whose move counts as a shift of the nominal
// exponent as under the other day counts.
inline bool counts_payment_days_over_365(int32_t code) noexcept {
  return dates::has_365_day_year(code) && code != dates::kAct365Japanese;
}

// Discounting exponent in periods of a payment due on `date` whose nominal
// exponent is `nominal`, paid on the business day that `payment_date` gives:
// 365-day accruals count the actual days from settlement to the payment;
// the others add the shift in days, measured in days per period.
double business_day_periods(const bond_desc& desc, double nominal, int32_t date) noexcept;

// Periods from settlement to the next coupon, counting the business-day
// payment rule when it is in force.
double periods_to_next_coupon(const bond_desc& desc) noexcept;

// The capital-gains tax rate that applies to a bond priced below its
// redemption value: the discount tax, or the coupon tax when the bond
// matures before the horizon and a discount tax is set.
double capital_gains_rate(const bond_desc& desc) noexcept;

// Turns a dirty value per unit of face (and its derivative by yield) into a
// clean price per 100: subtracts the accrued interest and, below the
// redemption value, takes the capital-gains tax on the discount, which
// divides the price by 1 - g * redemption_df. A vanishing divisor gives
// error 401 and -100. `first_derivative` (may be null) receives the
// derivative of the clean price per unit of face.
double finish_price(const bond_desc& desc, double dirty, double dirty_derivative,
                    double redemption_df, double redemption_df_derivative,
                    double* first_derivative, int32_t* error) noexcept;

// Error 401 with its failure price.
inline double zero_denominator(int32_t* error) noexcept {
  *error = KVL_ERR_ZERO_DIVISOR;
  return kZeroDenominatorPrice;
}

// The compound-yield sum over the remaining cash flows: each flow is
// discounted by v^t with v = 1 / (1 + y/f) and t = exponent(flow) periods;
// the derivative of v^t is -t v^t v / f. The redemption's factor feeds the
// capital-gains tax.
template <class Exponent>
double discount_cash_flows(double yield, const bond_desc& desc, Exponent&& exponent,
                           double* first_derivative, int32_t* error) {
  const double f = desc.frequency;
  const double base = 1.0 + yield / f;
  if (base == 0.0) return zero_denominator(error);
  const double v = 1.0 / base;
  double value = 0.0, weighted = 0.0, redemption_df = 1.0, redemption_t = 0.0;
  double previous_t = 0.0, df = 1.0;
  bool first = true;
  for_each_cash_flow(desc, [&](const CashFlow& flow) {
    const double t = exponent(flow);
    // Coupons a whole period apart take one multiplication, not a power.
    if (first || std::fabs(t - previous_t - 1.0) > 1e-12) df = safe_pow(v, t);
    else df *= v;
    first = false;
    previous_t = t;
    if (flow.kind == FlowKind::kRedemption) {
      redemption_df = df;
      redemption_t = t;
    }
    value += flow.amount * df;
    weighted += flow.amount * df * t;
  });
  return finish_price(desc, value, -weighted * v / f, redemption_df,
                      -redemption_t * redemption_df * v / f, first_derivative, error);
}

}  // namespace kbond::engine
