// Stepping dates by months, counting whole months, and finding the dates of
// a periodic (coupon) schedule relative to a reference date.
//
// Adding a month to 31 January gives 28 (or 29) February: the day is clamped
// to the length of the new month. With the end-of-month flag, a date on the
// last day of its month moves to the last day of the new month, so
// 28 February 2001 + 1 month is 31 March 2001 with the flag, 28 March without.
#pragma once
#include <cstdint>

namespace kbond::dates {

int32_t add_months(int32_t serial, int32_t months, int32_t eom_flag) noexcept;

// Whole months from `from` to `to`, truncated toward zero. `exact` (may be
// null) receives 1 when no days remain.
int32_t months_between(int32_t from, int32_t to, int32_t eom_flag, int32_t* exact) noexcept;

// Date of the schedule reference + j * months_per_period months around
// `date`: k = 0 the last schedule date on or before `date`, k = 1 the next
// one after it, k = -1 the one before the last. `index` (may be null)
// receives j. months_per_period must not be 0.
int32_t schedule_date(int32_t date, int32_t k, int32_t months_per_period, int32_t reference,
                      int32_t eom_flag, int32_t* index) noexcept;

// A date split into its fields, with whether it is the last day of its month.
struct SplitDate {
  int32_t day;
  int32_t month;
  int32_t year;
  bool month_end;
};

// The same schedule with its reference date split once, for callers that
// look up several of its dates:
//
//   const MonthSchedule grid(maturity, 6, eom);
//   int32_t j = 0;
//   const int32_t previous = grid.around(settlement, 0, &j);
//   const int32_t next = grid.date(j + 1);
class MonthSchedule {
 public:
  MonthSchedule(int32_t reference, int32_t months_per_period, int32_t eom_flag) noexcept;

  // reference + j * months_per_period months (-1 when out of range).
  int32_t date(int32_t j) const noexcept;
  // As schedule_date(date, k, months_per_period, reference, eom_flag, index).
  int32_t around(int32_t date, int32_t k, int32_t* index) const noexcept;
  // The reference date split into its fields (zeros when it is invalid).
  const SplitDate& reference() const noexcept { return split_reference_; }
  // Changes the end-of-month flag the schedule was built with.
  void set_eom(int32_t eom_flag) noexcept {
    eom_ = (eom_flag && reference_ok_ && split_reference_.month_end) ? 1 : 0;
  }

 private:
  int32_t reference_;
  int32_t months_per_period_;
  int32_t eom_;  // the end-of-month rule in force: flag set and reference a month end
  bool reference_ok_;
  SplitDate split_reference_;
  int64_t reference_month_ = 0;  // year * 12 + month - 1 of the reference
};

// n-th `weekday` of the month (0 when there is none); see the holiday rules.
int32_t nth_weekday_of_month(int32_t n, int32_t weekday, int32_t month, int32_t year,
                             int32_t other_weekday) noexcept;
int32_t last_weekday_of_month(int32_t weekday, int32_t month, int32_t year,
                              int32_t other_weekday) noexcept;

}  // namespace kbond::dates
