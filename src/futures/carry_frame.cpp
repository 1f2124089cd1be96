#include "futures/carry_frame.h"

#include <cmath>

#include "dates/business_days.h"
#include "engine/call_frame.h"
#include "k_bond.h"

namespace kbond::futures {

double run_carry_frame(const double* coupons, int32_t n_coupons, const int32_t* dates,
                       int32_t n_dates, int32_t settlement, int32_t end_date,
                       const CarryBondTail& tail, const BusinessDayBlock& block,
                       bool keep_going_on_bad_rule, CarryCompute compute, const void* context,
                       int32_t* error) noexcept {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;
  int32_t rule = block.date_rule ? *block.date_rule : 0;
  bool roll_end = rule != 0;
  if (rule < 0 || rule > 2) {
    if (!keep_going_on_bad_rule) {
      *err = KVL_ERR_OUT_OF_SET;
      return -1.0;
    }
    // The implied repo carries on: set-up's code replaces this one and the
    // end date is rolled to a business day.
    *err = KVL_ERR_OUT_OF_SET;
    rule = 0;
    roll_end = true;
  }
  const int32_t flags = block.calendar_flags ? *block.calendar_flags : 0;
  const bool list_usable = block.holidays != nullptr && block.n_holidays > 0;
  const dates::BusinessCalendar calendar{list_usable ? block.holidays : nullptr,
                                         list_usable ? block.n_holidays : 0, flags & 1,
                                         (flags >> 1) & 1};
  if (rule == 2 && (!dates::is_business_day(settlement, calendar) ||
                    !dates::is_business_day(end_date, calendar))) {
    *err = KVL_ERR_DATE_ORDER;
    return -1.0;
  }
  if (rule == 1) settlement = dates::adjust_business_day(settlement, dates::kFollowing, calendar);
  if (dates && n_dates > 0 && end_date > dates[n_dates - 1]) {
    *err = KVL_ERR_DATE_ORDER;
    return -1.0;
  }

  CarryCall call;
  engine::bond_args& a = call.args;
  a.coupons = coupons;
  a.n_coupons = n_coupons;
  a.dates = dates;
  a.n_dates = n_dates;
  a.settlement = settlement;
  a.dated_date = tail.dated_date;
  a.first_coupon = tail.first_coupon;
  a.type = tail.type;
  a.frequency = tail.frequency;
  a.n_frequency = tail.n_frequency;
  a.coupon_tax = tail.coupon_tax;
  a.bd_flags = block.calendar_flags;
  a.holidays = block.holidays;
  a.n_holidays = block.n_holidays;
  a.factor = tail.factor;
  a.sink_dates = tail.sink_dates;
  a.n_sink = tail.n_sink;
  a.sink_ends = tail.sink_ends;
  a.n_sink_ends = tail.n_sink_ends;
  a.sink_amounts = tail.sink_amounts;
  a.sink_premium = tail.sink_premium;
  a.exdiv_days = tail.exdiv_days;
  call.terms.end_date = end_date;
  call.terms.basis = tail.basis;
  call.terms.days = tail.days;
  call.terms.mode = tail.mode;
  call.terms.date_rule = roll_end ? 1 : 0;

  // The engine's call frame: lock as reader for custom types, set-up (its
  // code replaces a tolerated 460), release on every path.
  engine::BondCall bond(a, err);
  if (!bond.ok()) return -1.0;
  const double result = compute(bond.desc(), call, context, err);
  // Extreme inputs (a denormal conversion factor) can overflow the
  // arithmetic; an infinite or undefined figure is a failure, never a result.
  if (*err == 0 && !std::isfinite(result)) {
    *err = KVL_ERR_INVALID;
    return -1.0;
  }
  return result;
}

}  // namespace kbond::futures
