#include "frn/frn_schedule.h"

#include "dates/date_serial.h"
#include "k_bond.h"

namespace kbond::frn {
namespace {

using dates::valid_serial;

// 0, or the code for a list that is missing, starts before day 0, or does
// not strictly increase.
int32_t check_ascending(const int32_t* list, int32_t count) noexcept {
  if (count < 0) return KVL_ERR_COUNT;
  if (count == 0) return 0;
  if (!list) return KVL_ERR_MISSING_ARRAY;
  if (list[0] < 0) return KVL_ERR_BAD_DATE;
  for (int32_t i = 1; i < count; ++i) {
    if (list[i] <= list[i - 1]) return KVL_ERR_DATE_ORDER;
  }
  return 0;
}

// The next coupon on the reset grid anchored at `anchor`, moved to a business
// day where the type adjusts dates, and never after maturity.
int32_t next_on_grid(FrnSchedule& s, const FrnType& type, int32_t anchor, bool from_maturity) noexcept {
  s.grid = FrnResetGrid(anchor, type);
  int32_t j = s.grid.index_after(s.settlement);
  // Stepping back from maturity: a reset date on or before settlement that
  // is paid on a later business day is still the next coupon.
  if (from_maturity && s.adjusts_dates() && s.adjust(s.grid.at(j - 1)) > s.settlement) --j;
  s.next_index = j;
  int32_t next = s.grid.at(j);
  if (next < s.maturity && s.adjusts_dates()) next = s.adjust(next);
  return next >= s.maturity ? s.maturity : next;
}

// The grid date before the next coupon, as paid (the one before it when the
// adjusted date falls after settlement).
int32_t previous_on_grid(const FrnSchedule& s) noexcept {
  const int32_t last = s.grid.at(s.next_index - 1);
  if (!s.adjusts_dates()) return last;
  const int32_t paid = s.adjust(last);
  return paid > s.settlement ? s.adjust(s.grid.at(s.next_index - 2)) : paid;
}

}  // namespace

int32_t FrnSchedule::adjust(int32_t date) const noexcept {
  return dates::adjust_business_day(date, type->business_day_rule, calendar());
}

int32_t frn_schedule_setup(FrnType* type, int32_t maturity, int32_t settlement,
                           const int32_t* previous_coupon, const int32_t* reset_dates,
                           int32_t reset_count, const int32_t* holidays, int32_t holiday_count,
                           FrnSchedule* schedule) noexcept {
  if (!type || !schedule) return KVL_ERR_MISSING_ARRAY;
  FrnSchedule& s = *schedule;
  s = FrnSchedule{};
  s.type = type;
  s.maturity = maturity;
  s.settlement = settlement;
  if (!valid_serial(settlement) || !valid_serial(maturity)) return KVL_ERR_BAD_DATE;

  if (int32_t code = check_ascending(holidays, holiday_count)) return code;
  if (holiday_count > 0) {
    s.holidays = holidays;
    s.holiday_count = holiday_count;
  }
  if (check_frequency(type->frequency)) return KVL_ERR_FRN_FREQUENCY;
  if (check_day_count(type->day_count)) return KVL_ERR_FRN_DAYCOUNT;

  // The caller's reset dates: k is the first one after settlement (or the
  // last one when none is). A list that ends on or before settlement gives
  // way to a later previous coupon date.
  if (int32_t code = check_ascending(reset_dates, reset_count)) return code;
  int32_t n = reset_count;
  const int32_t* list = reset_dates;
  bool previous_given = previous_coupon != nullptr;
  int32_t k = 0;
  if (n > 0) {
    if (list[n - 1] > maturity) return KVL_ERR_DATE_ORDER;
    while (k < n - 1 && list[k] <= settlement) ++k;
    if (list[k] <= settlement) {
      if (previous_given && *previous_coupon > list[k]) {
        n = 0;
      } else {
        previous_given = false;
      }
    }
  }
  const bool list_in_use = n > 0;
  const int32_t previous = previous_given ? *previous_coupon : 0;
  if (previous != 0 && !valid_serial(previous)) return KVL_ERR_BAD_DATE;

  // Next coupon date: a listed reset date exactly as given, or the grid
  // from the last listed reset, the previous coupon or maturity.
  int32_t next = 0;
  if (list_in_use && list[k] > settlement) {
    next = list[k];
    s.later_resets = list + k + 1;
    s.later_count = n - k - 1;
    s.grid = FrnResetGrid(next, *type);
    s.next_index = 0;
  } else {
    int32_t anchor = maturity;
    if (list_in_use) {
      anchor = list[k];
    } else if (previous != 0) {
      if (previous >= settlement) return KVL_ERR_DATE_ORDER;
      anchor = previous;
    } else if (maturity <= settlement) {
      return KVL_ERR_DATE_ORDER;
    }
    next = next_on_grid(s, *type, anchor, !list_in_use && previous == 0);
  }
  if (next <= settlement) return KVL_ERR_DATE_ORDER;
  s.next_coupon = next;
  s.anchor = s.grid.anchor();

  // Previous coupon date.
  if (previous != 0 && (!list_in_use || list[0] > settlement)) {
    if (previous >= next) return KVL_ERR_DATE_ORDER;
    s.previous_coupon = previous;
  } else if (list_in_use && n >= 2 && k > 0 && list[k] > settlement) {
    s.previous_coupon = list[k - 1];
  } else {
    s.previous_coupon = previous_on_grid(s);
  }

  if (type->year_length == 0.0) type->year_length = default_year_length(type->day_count);
  return 0;
}

}  // namespace kbond::frn
