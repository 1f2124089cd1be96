// Month arithmetic: adding months, periodic schedule dates, and n-th / last
// weekdays of a month.
#include <gtest/gtest.h>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"

namespace kbond::dates {
namespace {

int32_t S(int32_t d, int32_t m, int32_t y) { return date_to_serial(d, m, y); }

TEST(AddMonths, ClampsKeepsMonthEndsAndCrossesYears) {
  const struct {
    int32_t from, months, eom, to;
  } rows[] = {
      {S(31, 1, 2004), 1, 0, S(29, 2, 2004)},  {S(29, 2, 2004), 12, 0, S(28, 2, 2005)},
      {S(28, 2, 2001), 1, 1, S(31, 3, 2001)},  {S(29, 4, 2001), 1, 1, S(29, 5, 2001)},
      {S(15, 1, 2001), -13, 0, S(15, 12, 1999)}, {S(1, 1, 2001), INT32_MIN, 0, -1},
  };
  for (const auto& r : rows) {
    EXPECT_EQ(add_months(r.from, r.months, r.eom), r.to) << r.from << " " << r.months;
  }
}

// Schedule dates count whole periods from the reference, back or forward:
// 10 Jan 2001 lies in the period from 15 Sep 2000 on a 15 Mar 2001 grid.
TEST(ScheduleDate, PeriodAroundADateAndItsIndex) {
  int32_t j = 0;
  EXPECT_EQ(schedule_date(S(10, 1, 2001), 0, 6, S(15, 3, 2001), 0, &j), S(15, 9, 2000));
  EXPECT_EQ(j, -1);
  EXPECT_EQ(schedule_date(S(10, 1, 2001), 1, 6, S(30, 11, 1999), 1, &j), S(31, 5, 2001));
  EXPECT_EQ(schedule_date(S(1, 1, 2001), 0, 0, S(15, 3, 2001), 0, &j), -1);  // no period
}

// 2001 calendar: 1 September was a Saturday. Plain n-th and last weekdays
// (Martin Luther King Day, Thanksgiving, Memorial Day) are checked by the
// published Federal Reserve holidays.
TEST(NthWeekday, MonthEndsAndQualifiedWeekdays) {
  EXPECT_EQ(nth_weekday_of_month(5, kFriday, 8, 2001, 0), S(31, 8, 2001));
  EXPECT_EQ(nth_weekday_of_month(5, kMonday, 2, 2001, 0), 0);  // no fifth Monday
  EXPECT_EQ(nth_weekday_of_month(1, 9, 2, 2001, 0), 0);
  // The first Monday after the first Saturday: 8 October, and 3 September
  // when the month starts on a Saturday.
  EXPECT_EQ(nth_weekday_of_month(1, kMonday, 10, 2001, kSaturday), S(8, 10, 2001));
  EXPECT_EQ(nth_weekday_of_month(1, kMonday, 9, 2001, kSaturday), S(3, 9, 2001));
  // A last Monday that a Friday of the same month must follow.
  EXPECT_EQ(last_weekday_of_month(kMonday, 5, 2001, kFriday), S(21, 5, 2001));
  EXPECT_EQ(last_weekday_of_month(kMonday, 13, 2001, 0), -1);
}

}  // namespace
}  // namespace kbond::dates
