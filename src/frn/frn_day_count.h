// Day and year counts of floating-rate notes.
//
// FRN day-count codes 3 and 4 count 30/360 days from the start of the coupon
// period, so that a span inside the period is the difference of two counts
// from the same start (the U.S. or Eurobond rule, in its February form when
// the period starts on the last day of a month). The other codes count
// actual days.
#pragma once
#include <cstdint>

namespace kbond::frn {

// Days from `from` to `to` in the period that starts at `start`.
int32_t frn_day_span(int32_t start, int32_t from, int32_t to, int32_t day_count) noexcept;

// Days in the year used to turn the days of the coupon period
// [previous, next] into a fraction of the period's coupon:
//   codes 0, 3, 4: 360; code 1 (and unknown codes): 365;
//   code 5: (next - previous) x frequency;
//   code 2: 366 when the leap rule holds, else 365.
// The code 2 leap rule: a period shorter than 360 days takes 366 whenever the
// year it ends in is a leap year, whether or not it contains 29 February (the
// convention such notes are documented with). A longer period takes 366 when
// it ends in a leap year after February (or on 29 February), or else starts
// in January or February of a leap year.
double frn_accrual_year(int32_t day_count, int32_t previous, int32_t next, int32_t frequency) noexcept;

}  // namespace kbond::frn
