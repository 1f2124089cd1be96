// Month arithmetic: adding months, whole months between dates, periodic
// schedule dates, and n-th / last weekdays of a month.
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
      {S(31, 1, 2001), 1, 0, S(28, 2, 2001)},  {S(31, 1, 2004), 1, 0, S(29, 2, 2004)},
      {S(31, 3, 2001), -1, 0, S(28, 2, 2001)}, {S(29, 2, 2004), 12, 0, S(28, 2, 2005)},
      {S(28, 2, 2001), 1, 0, S(28, 3, 2001)},  {S(28, 2, 2001), 1, 1, S(31, 3, 2001)},
      {S(30, 9, 2003), 5, 1, S(29, 2, 2004)},  {S(29, 4, 2001), 1, 1, S(29, 5, 2001)},
      {S(15, 1, 2001), -13, 0, S(15, 12, 1999)}, {S(15, 12, 2001), 1, 0, S(15, 1, 2002)},
      {-200000, 1, 0, -1}, {S(1, 1, 2001), INT32_MAX, 0, -1}, {S(1, 1, 2001), INT32_MIN, 0, -1},
  };
  for (const auto& r : rows) {
    EXPECT_EQ(add_months(r.from, r.months, r.eom), r.to) << r.from << " " << r.months;
  }
}

TEST(MonthsBetween, WholeMonthsTowardZeroAndExactness) {
  const struct {
    int32_t from, to, eom, months, exact;
  } rows[] = {
      {S(31, 1, 2001), S(28, 2, 2001), 0, 1, 1},  // month end matches
      {S(15, 1, 2001), S(14, 2, 2001), 0, 0, 0},  {S(15, 1, 2001), S(16, 2, 2001), 0, 1, 0},
      {S(15, 3, 2001), S(15, 1, 2001), 0, -2, 1}, {S(15, 3, 2001), S(16, 1, 2001), 0, -1, 0},
      {S(15, 3, 2001), S(10, 3, 2001), 0, 0, 0},
      // 30 April to 31 May: a month and a day, or exactly one with the flag.
      {S(30, 4, 2001), S(31, 5, 2001), 0, 1, 0},  {S(30, 4, 2001), S(31, 5, 2001), 1, 1, 1},
      // With the flag 28 February 2001 counts as the 31st.
      {S(28, 2, 2001), S(30, 3, 2001), 1, 0, 0},  {S(28, 2, 2001), S(31, 3, 2001), 1, 1, 1},
  };
  for (const auto& r : rows) {
    int32_t exact = -1;
    EXPECT_EQ(months_between(r.from, r.to, r.eom, &exact), r.months) << r.from << " " << r.to;
    EXPECT_EQ(exact, r.exact) << r.from << " " << r.to;
  }
}

// Property: the k = 0 date is the last schedule date on or before the date and
// the k = 1 date the first after it, checked against a brute-force walk over
// reference + j * period months, for mid-month and month-end references.
TEST(ScheduleDate, AgreesWithABruteForceWalk) {
  int32_t j = 0;  // the index counts periods from the reference
  EXPECT_EQ(schedule_date(S(10, 1, 2001), 0, 6, S(15, 3, 2001), 0, &j), S(15, 9, 2000));
  EXPECT_EQ(j, -1);
  EXPECT_EQ(schedule_date(S(1, 1, 2001), 0, 0, S(15, 3, 2001), 0, &j), -1);  // no period
  const int32_t refs[] = {S(15, 3, 2001), S(31, 8, 2000), S(30, 11, 1999), S(29, 2, 2004),
                          S(1, 1, 2002)};
  const int32_t periods[] = {1, 3, 6, 12};
  for (int32_t ref : refs) {
    for (int32_t p : periods) {
      for (int32_t eom = 0; eom <= 1; ++eom) {
        const int32_t use_eom = (eom && is_end_of_month(ref)) ? 1 : 0;
        for (int32_t date = S(1, 1, 1998); date <= S(31, 12, 2005); date += 3) {
          int32_t last_on_or_before = 0, first_after = 0;
          for (int32_t j = -120; j <= 120; ++j) {
            const int32_t s = add_months(ref, j * p, use_eom);
            if (s <= date) last_on_or_before = s;
            else if (first_after == 0) first_after = s;
          }
          ASSERT_EQ(schedule_date(date, 0, p, ref, eom, nullptr), last_on_or_before)
              << "ref " << ref << " period " << p << " eom " << eom << " date " << date;
          ASSERT_EQ(schedule_date(date, 1, p, ref, eom, nullptr), first_after)
              << "ref " << ref << " period " << p << " eom " << eom << " date " << date;
        }
      }
    }
  }
}

// 2001 calendar: 1 January was a Monday, 1 September a Saturday.
TEST(NthWeekday, MarketHolidayDates) {
  EXPECT_EQ(nth_weekday_of_month(3, kMonday, 1, 2001, 0), S(15, 1, 2001));      // MLK day
  EXPECT_EQ(nth_weekday_of_month(4, kThursday, 11, 2001, 0), S(22, 11, 2001));  // Thanksgiving
  EXPECT_EQ(nth_weekday_of_month(5, kFriday, 8, 2001, 0), S(31, 8, 2001));
  EXPECT_EQ(nth_weekday_of_month(5, kMonday, 2, 2001, 0), 0);  // no fifth Monday
  EXPECT_EQ(nth_weekday_of_month(1, 9, 2, 2001, 0), 0);
  // The first Monday after the first Saturday: 8 October, and 3 September
  // when the month starts on a Saturday.
  EXPECT_EQ(nth_weekday_of_month(1, kMonday, 10, 2001, kSaturday), S(8, 10, 2001));
  EXPECT_EQ(nth_weekday_of_month(1, kMonday, 9, 2001, kSaturday), S(3, 9, 2001));
  EXPECT_EQ(last_weekday_of_month(kMonday, 5, 2001, 0), S(28, 5, 2001));  // 31 May a Thursday
  // A last Monday that a Friday of the same month must follow.
  EXPECT_EQ(last_weekday_of_month(kMonday, 5, 2001, kFriday), S(21, 5, 2001));
  EXPECT_EQ(last_weekday_of_month(kMonday, 13, 2001, 0), -1);
}

}  // namespace
}  // namespace kbond::dates
