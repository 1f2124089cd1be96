// Reference index of an inflation-linked bond at a date, and the index ratio.
//
// Index values are monthly. A caller gives either the reference index itself
// (one value) or the index values of two consecutive months, I0 for the month
// that applies on the 1st of the date's month and I1 for the next one; the
// reference index on day d of a month of D days is then
//
//   I0 + (d - 1) / D * (I1 - I0)
//
// (October 2005 CPI 199.2 and November 197.6 give 198.4774194 on 15 January
// 2006). Neither the reference index nor the index ratio is rounded: the
// U.S. Treasury's published tables round both to five decimals (198.47742),
// which moves a ratio by up to 5e-6 and an accrued interest or a price by a
// few millionths per 100.
#pragma once
#include <cstdint>

namespace kbond::inflation {

// Days of a month for index interpolation: years below 200 count as
// 1900 + year; years 200..1899 give error 153 and months outside 1..12 give
// error 152 (0 is returned with an error).
int32_t index_days_in_month(int32_t month, int32_t year, int32_t* error) noexcept;

// Reference index at `date` from `count` (1 or 2) monthly values. Error 1 for
// a bad count, a date that cannot be split or a value that is not positive;
// 152 or 153 from the month length. Returns 0.0 on failure.
double reference_index_at(int32_t date, const double* values, int32_t count, int32_t* error) noexcept;

// settlement reference / base reference, unrounded.
double index_ratio(double settlement_reference, double base_reference) noexcept;

}  // namespace kbond::inflation
