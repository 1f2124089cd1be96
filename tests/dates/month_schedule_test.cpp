// MonthSchedule: a periodic schedule with its reference split once. It must
// bracket every date by consecutive schedule dates, clamp month ends the way
// add_months does, and its yearly dates must be the schedule dates whose
// index is a multiple of the periods per year (bond set-up derives first
// coupons that way).
#include <gtest/gtest.h>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"

namespace kbond::dates {
namespace {

int32_t S(int32_t d, int32_t m, int32_t y) { return date_to_serial(d, m, y); }

int32_t floor_div(int32_t a, int32_t b) {
  return a / b - ((a % b != 0 && a < 0) ? 1 : 0);
}

// Month ends of every length, a leap day and mid-month days.
const int32_t kAnchors[] = {S(31, 8, 2034), S(28, 2, 2035), S(29, 2, 2032), S(30, 6, 2030),
                            S(15, 11, 2034), S(30, 11, 2034), S(31, 1, 2031), S(20, 3, 2028)};
const int32_t kMonthsPerPeriod[] = {1, 2, 3, 4, 6, 12};

TEST(MonthSchedule, BracketsEveryDateByConsecutiveScheduleDates) {
  for (const int32_t anchor : kAnchors) {
    for (const int32_t months : kMonthsPerPeriod) {
      for (int32_t eom = 0; eom <= 1; ++eom) {
        const MonthSchedule grid(anchor, months, eom);
        for (int32_t d = anchor - 1500; d <= anchor + 100; ++d) {
          int32_t j0 = 0, j1 = 0;
          const int32_t before = grid.around(d, 0, &j0);
          const int32_t after = grid.around(d, 1, &j1);
          ASSERT_TRUE(before <= d && after > d) << anchor << " " << months << " " << eom << " " << d;
          ASSERT_EQ(j1, j0 + 1);
          ASSERT_EQ(grid.date(j0), before);
          ASSERT_EQ(grid.date(j1), after);
          ASSERT_EQ(before, schedule_date(d, 0, months, anchor, eom, nullptr));
        }
      }
    }
  }
}

TEST(MonthSchedule, YearlyDatesAreEveryFrequencyThScheduleDate) {
  for (const int32_t anchor : kAnchors) {
    for (const int32_t months : kMonthsPerPeriod) {
      const int32_t per_year = 12 / months;
      for (int32_t eom = 0; eom <= 1; ++eom) {
        const MonthSchedule grid(anchor, months, eom);
        for (int32_t d = anchor - 1500; d <= anchor + 100; d += 3) {
          int32_t j = 0, yearly_index = 0;
          grid.around(d, 0, &j);
          const int32_t yearly = schedule_date(d, 0, 12, anchor, eom, &yearly_index);
          ASSERT_EQ(yearly_index, floor_div(j, per_year)) << anchor << " " << months << " " << d;
          ASSERT_EQ(yearly, grid.date(floor_div(j, per_year) * per_year));
        }
      }
    }
  }
}

TEST(MonthSchedule, UnsplittableReferenceGivesNoDates) {
  const MonthSchedule bad(-200000, 6, 1);
  EXPECT_EQ(bad.date(1), -1);
  EXPECT_EQ(bad.date(0), -200000);  // no months to add: the reference itself
  int32_t j = 7;
  EXPECT_EQ(MonthSchedule(S(1, 1, 2030), 0, 0).around(S(1, 6, 2030), 0, &j), -1);
  EXPECT_EQ(j, 0);
}

}  // namespace
}  // namespace kbond::dates
