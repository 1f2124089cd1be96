#include "frn/frn_day_count.h"

#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "frn/frn_type.h"

namespace kbond::frn {
namespace {

// The bond day count that counts FRN codes 3 and 4 (their February forms
// when the period starts on a month end). FRN code numbers are their own:
// FRN 0 is actual/360, bond 0 actual/actual.
int32_t thirty_360_code(int32_t start, int32_t day_count) noexcept {
  const bool month_end_start = dates::is_end_of_month(start) != 0;
  if (day_count == kFrnThirty360) return month_end_start ? dates::k30_360Feb : dates::k30_360;
  return month_end_start ? dates::k30E_360Feb : dates::k30E_360;
}

}  // namespace

int32_t frn_day_span(int32_t start, int32_t from, int32_t to, int32_t day_count) noexcept {
  if (day_count == kFrnThirty360 || day_count == kFrnThirtyE360) {
    const int32_t code = thirty_360_code(start, day_count);
    return dates::day_count(start, to, code, nullptr) - dates::day_count(start, from, code, nullptr);
  }
  return to - from;
}

double frn_accrual_year(int32_t day_count, int32_t previous, int32_t next, int32_t frequency) noexcept {
  switch (day_count) {
    case kFrnAct360: case kFrnThirty360: case kFrnThirtyE360:
      return 360.0;
    case kFrnActPeriod:
      return static_cast<double>(next - previous) * frequency;
    case kFrnActLeap:
      break;
    default:
      return 365.0;
  }
  int32_t end_day = 0, end_month = 0, end_year = 0;
  int32_t start_day = 0, start_month = 0, start_year = 0;
  dates::serial_to_date(next, &end_day, &end_month, &end_year);
  dates::serial_to_date(previous, &start_day, &start_month, &start_year);
  bool leap = false;
  if (next - previous < 360) {
    leap = dates::is_leap_year(end_year);
  } else if (dates::is_leap_year(end_year) && (end_month > 2 || (end_month == 2 && end_day == 29))) {
    leap = true;
  } else {
    leap = dates::is_leap_year(start_year) && start_month <= 2;
  }
  return leap ? 366.0 : 365.0;
}

}  // namespace kbond::frn
