// The two margin measures of a floating-rate note, on a placed schedule.
//
// Simple margin: the quoted margin plus the discount (or premium) to par
// spread evenly over the remaining life, with the current period's known
// coupon compared to the index. Discount margin: the margin over the index
// that discounts the note's projected coupons (index + quoted margin) and
// redemption, with the time to the next coupon discounted at the money-market
// rate plus margin, back to the dirty price.
#pragma once
#include <cstdint>

#include "frn/frn_schedule.h"

namespace kbond::frn {

struct MarginMarket {
  double current_coupon;  // rate fixed for the current period
  double price;           // clean, per 100
  double stub_rate;       // money-market rate to the next coupon date
  double index_rate;      // assumed index for the rest of the life
  double quoted_margin;   // contractual margin over the index
};

double simple_margin(const FrnSchedule& schedule, const MarginMarket& market, int32_t& err) noexcept;

// Dirty value per unit of par of the note at margin d (see frn_margins.cpp);
// false when a discount factor's denominator vanishes.
struct DiscountMarginTerms {
  double first_coupon;    // coupon paid at the next coupon date
  double periods_per_year;
  double later_coupon;    // each projected coupon after it
  double stub_time;       // settlement to next coupon, in accrual years
  double target;          // dirty price per unit
  int32_t periods;        // whole periods from the next coupon date to maturity
  double index_rate;
  double stub_rate;
  bool value(double margin, double* out) const noexcept;
};
DiscountMarginTerms discount_margin_terms(const FrnSchedule& schedule, const MarginMarket& market) noexcept;

inline constexpr int kDiscountMarginSteps = 48;

// The step search from `start`: a move up by the step while the value is
// above the target, down otherwise (equal included); the step of 0.1 halves
// after every move once the search has moved both ways. Error 400 stops it
// and returns the margin reached.
double search_discount_margin(const DiscountMarginTerms& terms, double start, int iterations,
                              int32_t& err) noexcept;

// Step search of 48 iterations from the quoted margin; error 400 stops it and
// returns the margin reached.
double discount_margin(const FrnSchedule& schedule, const MarginMarket& market, int32_t& err) noexcept;

}  // namespace kbond::frn
