// Perpetual bonds: coupons for ever, possibly with a schedule of coupon
// steps (the i-th rate holds until the i-th step date, the last rate for
// ever) and no redemption.
//
// `perpetual_setup` builds the description of one perpetual bond around a
// settlement date: the coupon cycle through a reference coupon date, the
// coupon period containing settlement (with a short or long first period
// when a dated date is given), the period fractions of the bond engine's
// schedule step, the accrued interest and the ex-coupon state, and the
// price function the bond type's convention selects.
//
//   perpetual_args args{...};
//   perpetual_desc bond;
//   if (perpetual_setup(args, bond) == 0)
//     price = perpetual_price(0.05, bond, nullptr, nullptr, &err);
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::perpetual {

// The arguments shared by the KVLpb... exports, in their order (the market
// input and each function's own arguments stand among them).
struct perpetual_args {
  const double* coupons = nullptr;        // rates per step (decimal per year)
  int32_t n_coupons = 0;
  int32_t reference_date = 0;             // any coupon date of the bond's cycle
  int32_t settlement = 0;
  const int32_t* step_dates = nullptr;    // dates the rates step at
  int32_t n_steps = 0;
  const int32_t* type = nullptr;          // NULL: 0 with its default rule
  const int32_t* frequency = nullptr;     // NULL or 0: the type's default
  const double* withholding_tax = nullptr;  // NULL: 0
  const int32_t* ex_coupon_rule = nullptr;  // NULL: 0 (see Convention)
  const int32_t* calendar_flags = nullptr;  // bit 0 Saturday, bit 1 Sunday works
  const int32_t* holidays = nullptr;
  int32_t n_holidays = 0;
  const int32_t* dated_date = nullptr;    // the last option word; NULL or 0: none
};

// The price function of a perpetual bond, chosen by the yield method of its
// type (or of the ex-coupon rule's override).
enum class Convention : int32_t {
  kPerpetuity,         // simple yield: 100 * c / y on the last rate
  kExplicitSum,        // compound yield: coupons through the steps, then a perpetuity
  kSimpleFirstPeriod,  // the explicit sum with simple interest to the next coupon
  kNone                // no perpetual price function (error 460)
};

struct perpetual_desc {
  // The bond engine's view of the current period: type, day counts,
  // frequency and grid (anchored at the reference date), period start and
  // next coupon, position, period fractions, calendar, coupon rates and step
  // dates, withholding tax (coupon_tax), accrued interest, ex-coupon flag,
  // full coupon of the current period. Its maturity is unused.
  engine::bond_desc grid;
  // Normalised ex-coupon rule: 0, 1, -1, -2, -3, -4 or -6.
  int32_t ex_coupon_rule = 0;
  Convention convention = Convention::kExplicitSum;
  // Coupons valued one by one before the perpetuity takes over (at least 1:
  // the next coupon, which may be a broken or an ex-coupon one).
  int32_t explicit_coupons = 1;
  // Exponents in actual days over 365 (Spanish and Portuguese actual/365
  // conventions) rather than whole periods.
  bool day_exponents = false;
  double last_rate = 0.0;       // the rate that holds for ever

  bool pays_on_business_days() const noexcept { return ex_coupon_rule == 1; }
};

// 0, or 1 for inconsistent arguments: no coupon rate, more than one rate but
// not one per step date, step dates counted without an array or out of
// order, non-finite rates or tax, an unknown bond type, a frequency outside
// 1, 2, 3, 4, 6, 12, invalid dates, a previous coupon date not before the
// next one or after settlement (a dated date after settlement), a negative
// holiday count or holidays counted without an array.
int32_t perpetual_setup(const perpetual_args& args, perpetual_desc& desc) noexcept;

// Rate in force on `date`: the i-th rate holds until the i-th step date
// (inclusive), the last one for ever.
double rate_on(const perpetual_desc& desc, int32_t date) noexcept;

}  // namespace kbond::perpetual
