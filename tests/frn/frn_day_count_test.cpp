// FRN day spans and accrual years, including the deliberate leap rule of
// day count 2.
#include <gtest/gtest.h>

#include "frn/frn_day_count.h"
#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::ymd;

TEST(FrnAccrualYear, FixedYearsAndPeriodLength) {
  const int32_t a = ymd(2026, 1, 15), b = ymd(2026, 7, 15);
  EXPECT_EQ(frn_accrual_year(0, a, b, 2), 360.0);
  EXPECT_EQ(frn_accrual_year(3, a, b, 2), 360.0);
  EXPECT_EQ(frn_accrual_year(4, a, b, 2), 360.0);
  EXPECT_EQ(frn_accrual_year(1, a, b, 2), 365.0);
  EXPECT_EQ(frn_accrual_year(9, a, b, 2), 365.0);
  // Code 5: 181 days x 2 periods a year.
  EXPECT_EQ(frn_accrual_year(5, a, b, 2), 362.0);
}

TEST(FrnAccrualYear, ShortPeriodEndingInLeapYearIsAlways366) {
  // 15 August 2027 to 15 February 2028 contains no 29 February, yet ends in
  // a leap year: 366.
  EXPECT_EQ(frn_accrual_year(2, ymd(2027, 8, 15), ymd(2028, 2, 15), 2), 366.0);
  EXPECT_EQ(frn_accrual_year(2, ymd(2028, 3, 15), ymd(2028, 9, 15), 2), 366.0);
  // Containing 29 February 2028 but ending in 2028 as well: 366.
  EXPECT_EQ(frn_accrual_year(2, ymd(2027, 12, 15), ymd(2028, 6, 15), 2), 366.0);
  // Ending in a common year, even right after a leap day: 365.
  EXPECT_EQ(frn_accrual_year(2, ymd(2028, 9, 15), ymd(2029, 3, 15), 2), 365.0);
  EXPECT_EQ(frn_accrual_year(2, ymd(2026, 12, 15), ymd(2027, 6, 15), 2), 365.0);
}

TEST(FrnAccrualYear, AnnualPeriodLooksAtFebruary) {
  // Ends in a leap year after February: 366.
  EXPECT_EQ(frn_accrual_year(2, ymd(2027, 3, 1), ymd(2028, 3, 1), 1), 366.0);
  // Ends on 29 February: 366.
  EXPECT_EQ(frn_accrual_year(2, ymd(2027, 2, 28), ymd(2028, 2, 29), 1), 366.0);
  // Ends in January of a leap year, starts in a common year: 365.
  EXPECT_EQ(frn_accrual_year(2, ymd(2027, 1, 15), ymd(2028, 1, 15), 1), 365.0);
  // Starts in February of a leap year: 366.
  EXPECT_EQ(frn_accrual_year(2, ymd(2028, 2, 15), ymd(2029, 2, 15), 1), 366.0);
  // Starts in March of a leap year, ends in a common year: 365.
  EXPECT_EQ(frn_accrual_year(2, ymd(2028, 3, 15), ymd(2029, 3, 15), 1), 365.0);
}

TEST(FrnDaySpan, ThirtyDayCodesMeasureFromThePeriodStart) {
  const int32_t jan15 = ymd(2026, 1, 15), jan31 = ymd(2026, 1, 31), mar15 = ymd(2026, 3, 15);
  const int32_t mar31 = ymd(2026, 3, 31);
  // U.S. rule keeps the 31st when the start is not the 30th or 31st: 76;
  // the Eurobond rule makes it the 30th: 75.
  EXPECT_EQ(frn_day_span(jan15, jan15, mar31, 3), 76);
  EXPECT_EQ(frn_day_span(jan15, jan15, mar31, 4), 75);
  // Inside the period: 60 - 16 = 44 (actual days would be 43).
  EXPECT_EQ(frn_day_span(jan15, jan31, mar15, 3), 44);
  EXPECT_EQ(frn_day_span(jan15, jan31, mar15, 0), 43);
  // Period starting on the last day of February: the February forms, so
  // 28 February to 31 March 2027 is 30 days under both codes (actual 31).
  const int32_t feb28 = ymd(2027, 2, 28), mar31_27 = ymd(2027, 3, 31);
  EXPECT_EQ(frn_day_span(feb28, feb28, mar31_27, 3), 30);
  EXPECT_EQ(frn_day_span(feb28, feb28, mar31_27, 4), 30);
  EXPECT_EQ(frn_day_span(feb28, feb28, mar31_27, 1), 31);
  EXPECT_EQ(frn_day_span(feb28, feb28, mar31_27, 5), 31);
}

}  // namespace
}  // namespace kbond::frn
