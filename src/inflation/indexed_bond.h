// The part of a validated description that every inflation-linked family
// (index-linked gilts, TIPS, OATi) holds: the dates, the coupon grid around
// settlement, the payment calendar, the assumed inflation and the accrued.
#pragma once
#include <cstdint>

#include "dates/business_days.h"
#include "dates/date_serial.h"
#include "inflation/assumed_inflation.h"
#include "inflation/coupon_period.h"
#include "inflation/payment_calendar.h"

namespace kbond::inflation {

struct IndexedBond {
  int32_t maturity = 0;
  int32_t settlement = 0;
  CouponPeriod period;
  double inflation = kDefaultInflation;
  int32_t end_of_month = 0;
  bool pay_on_business_day = false;
  dates::BusinessCalendar calendar;
  double accrued_fraction = 0.0;  // accrued days over the year basis of the period
  double accrued = 0.0;           // per 100 (TIPS/OATi: inflation-adjusted), 6 decimals
};

// Fills the shared fields from an export's arguments; the coupon grid and the
// accrued are each family's own. A bond pays on business days when its flag
// is 1. False when the maturity would be paid after the last date the
// library knows (a maturity on its last day, falling on a holiday): no
// earlier coupon is paid later than the maturity.
inline bool set_indexed_bond(IndexedBond* bond, int32_t maturity, int32_t settlement, double inflation,
                             const int32_t* end_of_month, const int32_t* pay_on_business_day,
                             const int32_t* holiday_options, const int32_t* holidays,
                             int32_t holiday_count) noexcept {
  bond->maturity = maturity;
  bond->settlement = settlement;
  bond->inflation = inflation;
  bond->end_of_month = schedule_end_of_month(maturity, end_of_month);
  bond->pay_on_business_day = pay_on_business_day != nullptr && *pay_on_business_day == 1;
  bond->calendar = payment_calendar(holiday_options, holidays, holiday_count);
  return dates::valid_serial(payment_date(maturity, bond->pay_on_business_day, bond->calendar));
}

}  // namespace kbond::inflation
