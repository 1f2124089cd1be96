// Price of a floating-rate note from one yield, compounded at the note's
// frequency, with its derivatives by the yield.
//
// The coupons are those of the rate schedule (fixings and the caller's
// projection). Each is discounted from its payment date in periods of
// year_length / frequency days counted from the previous coupon date. In the
// last coupon period the note is a money-market instrument and is priced with
// simple interest to maturity. Coupons and accrued interest are net of income
// tax; a price below redemption is reduced for the tax on the gain.
#pragma once
#include <cstdint>

#include "frn/frn_rate_schedule.h"
#include "frn/frn_schedule.h"
#include "frn/frn_tax.h"

namespace kbond::frn {

struct FrnValuation {
  const FrnSchedule* schedule;
  const FrnRateSchedule* rates;
  FrnTax tax;
  double redemption;  // per unit of par
  double accrued;     // accrued interest per unit, after income tax
};

FrnValuation make_frn_valuation(const FrnSchedule& schedule, const FrnRateSchedule& rates,
                                const FrnTax& tax, double redemption_per_100) noexcept;

struct FrnPrice {
  double clean = 0.0;   // per unit of par
  double first = 0.0;   // d clean / d yield
  double second = 0.0;  // d2 clean / d yield2, when asked for
};

// 0, or 1 when the yield leaves no discount factor (1 + y/f <= 0) or a
// denominator of the price vanishes.
int32_t frn_price_core(const FrnValuation& valuation, double yield, bool want_second,
                       FrnPrice* out) noexcept;

}  // namespace kbond::frn
