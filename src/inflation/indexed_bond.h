// The part of a validated description that every inflation-linked family
// (index-linked gilts, TIPS, OATi) holds: the dates, the coupon grid around
// settlement, the payment calendar, the assumed inflation and the accrued.
#pragma once
#include <cstdint>

#include "dates/business_days.h"
#include "inflation/assumed_inflation.h"
#include "inflation/coupon_period.h"

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

}  // namespace kbond::inflation
