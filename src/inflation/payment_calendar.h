// The business-day calendar of an inflation-linked bond: the caller's holiday
// list plus the two weekend options of its holiday option code (bit 1:
// Saturday is a working day, bit 2: Sunday is).
#pragma once
#include <cstdint>

#include "dates/business_days.h"

namespace kbond::inflation {

inline dates::BusinessCalendar payment_calendar(const int32_t* holiday_options, const int32_t* holidays,
                                                int32_t holiday_count) noexcept {
  dates::BusinessCalendar cal;
  cal.holidays = holidays;
  cal.count = holiday_count;
  const int32_t options = holiday_options != nullptr ? *holiday_options : 0;
  cal.sat_works = (options & 1) != 0 ? 1 : 0;
  cal.sun_works = (options & 2) != 0 ? 1 : 0;
  return cal;
}

// A payment on a non-business day moves to the following business day when
// the bond pays on business days.
inline int32_t payment_date(int32_t date, bool pay_on_business_day,
                            const dates::BusinessCalendar& cal) noexcept {
  return pay_on_business_day ? dates::adjust_business_day(date, dates::kFollowing, cal) : date;
}

// The payment date of a flow of `desc`; a walk that needs no dates
// (valuation) passes kWithDates = false and receives 0.
template <bool kWithDates, class Desc>
int32_t flow_payment_date(int32_t date, const Desc& desc) noexcept {
  if constexpr (kWithDates) {
    return payment_date(date, desc.pay_on_business_day, desc.calendar);
  } else {
    return date & 0;
  }
}

}  // namespace kbond::inflation
