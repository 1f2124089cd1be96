// Day-count conventions on month ends, February, leap years and unknown codes; year bases,
// year fractions and stepping by convention days.
#include <gtest/gtest.h>

#include "dates/date_serial.h"
#include "dates/day_count.h"

namespace kbond::dates {
namespace {

int32_t S(int32_t d, int32_t m, int32_t y) { return date_to_serial(d, m, y); }

// Expected counts for one pair of dates under each 30/360 variant, computed
// by hand as 360*(Y2-Y1) + 30*(M2-M1) + (D2-D1) after the day adjustments:
//   us     (codes 1, 3)  31st start -> 30; 31st end -> 30 only when start is 30
//   eu     (codes 2, 6)  every 31st -> 30
//   us_feb (codes 7, 8)  as us, and last of February counts as 30 (end only if start too)
//   eu_feb (codes 9, 10) as eu, and every last of February counts as 30
//   eplus  (codes 11, 12) an end on the 31st becomes the 1st of the next month
//   no_leap (code 13)    actual days with 29 February left out
struct Pair {
  int32_t d1, m1, y1, d2, m2, y2;
  int32_t counts[7];  // actual, us, eu, us_feb, eu_feb, eplus, no_leap
};

constexpr Pair kPairs[] = {
    // 31 Jan -> 28 Feb 2001: start 30; eu_feb end 30 -> 30; others 30 + (28 - 30) = 28.
    {31, 1, 2001, 28, 2, 2001, {28, 28, 28, 28, 30, 28, 28}},
    // 28 Feb 2001 -> 31 Mar 2001: us keeps the 31st (30 + 3); eu 30 + 2; the February
    // variants start on the 30th (30 + 0); E+ ends on 1 April (60 - 27).
    {28, 2, 2001, 31, 3, 2001, {31, 33, 32, 30, 30, 33, 31}},
    // 28 Feb 2004 -> 29 Feb 2004: eu_feb counts the end as the 30th; no_leap drops the 29th.
    {28, 2, 2004, 29, 2, 2004, {1, 1, 1, 1, 2, 1, 0}},
    // 29 Feb 2004 -> 31 Mar 2004: us 30 + 2, eu 30 + 1, Feb variants 30, E+ 60 - 28.
    {29, 2, 2004, 31, 3, 2004, {31, 32, 31, 30, 30, 32, 31}},
    // 29 Feb 2004 -> 28 Feb 2005: one 30/360 year only when both ends are last of February.
    {29, 2, 2004, 28, 2, 2005, {365, 359, 359, 360, 360, 359, 365}},
    // 28 Feb 2003 -> 29 Feb 2004: us/eu 360 + 1; Feb variants 360; no_leap 365.
    {28, 2, 2003, 29, 2, 2004, {366, 361, 361, 360, 360, 361, 365}},
    // 31 Dec 2003 -> 31 Dec 2004 (leap year): 360, except E+ which ends on 1 Jan 2005.
    {31, 12, 2003, 31, 12, 2004, {366, 360, 360, 360, 360, 361, 365}},
    // 30 Jan -> 31 Mar 2001: 60 for every variant but E+ (1 April: 90 - 29).
    {30, 1, 2001, 31, 3, 2001, {60, 60, 60, 60, 60, 61, 60}},
    // 29 Jan -> 31 Mar 2001: the U.S. rule keeps the 31st (62); the E rule does not (61).
    {29, 1, 2001, 31, 3, 2001, {61, 62, 61, 62, 61, 62, 61}},
    // 28 Jan -> 31 Mar 2001 under 30E/360: 60 + 2 = 62.
    {28, 1, 2001, 31, 3, 2001, {62, 63, 62, 63, 62, 63, 62}},
    // 15 Jan -> 31 Jan 2001: E+ moves the end to 1 February, 16.
    {15, 1, 2001, 31, 1, 2001, {16, 16, 15, 16, 15, 16, 16}},
    // 1 Feb 2004 -> 1 Mar 2004: 29 actual days, 28 without the leap day.
    {1, 2, 2004, 1, 3, 2004, {29, 30, 30, 30, 30, 30, 28}},
    // 31 Mar -> 31 Jan 2001 runs backward: minus the count from 31 Jan to 31 Mar (E+: that
    // ends on 1 April, 61); no_leap stays positive.
    {31, 3, 2001, 31, 1, 2001, {-59, -60, -60, -60, -60, -61, 59}},
    // 31 Aug 2001 -> 28 Feb 2002: 180 days of 30/360 only where February's end is the 30th.
    {31, 8, 2001, 28, 2, 2002, {181, 178, 178, 178, 180, 178, 181}},
};

// The column of kPairs each day-count code follows.
constexpr int32_t kColumn[kDayCountCodes] = {0, 1, 2, 1, 0, 0, 2, 3, 3, 4, 4, 5, 5, 6, 0};

TEST(DayCount, EveryCodeOnMonthEndsLeapYearsAndUnknownCodes) {
  for (const Pair& p : kPairs) {
    const int32_t start = S(p.d1, p.m1, p.y1), end = S(p.d2, p.m2, p.y2);
    for (int32_t code = 0; code < kDayCountCodes; ++code) {
      int32_t err = -1;
      EXPECT_EQ(day_count(start, end, code, &err), p.counts[kColumn[code]])
          << p.d1 << "/" << p.m1 << "/" << p.y1 << " -> " << p.d2 << "/" << p.m2 << "/" << p.y2
          << " code " << code;
      EXPECT_EQ(err, 0);
    }
  }
  // Over whole years the no-leap count is 365 a year whatever the leap days.
  EXPECT_EQ(day_count(S(15, 6, 2001), S(15, 6, 2009), 13, nullptr), 8 * 365);
  EXPECT_EQ(day_count(S(29, 2, 2004), S(1, 3, 2004), 13, nullptr), 1);
  int32_t err = 0;  // unknown codes count actual days with an error
  EXPECT_EQ(day_count(S(1, 1, 2001), S(1, 3, 2001), 15, &err), 59);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(day_count(S(1, 1, 2001), S(1, 3, 2001), -1, &err), 59);
  EXPECT_EQ(err, 1);
}

// The 360 and 365 fractions are formed with the double reciprocals, so the
// expected values are built the same way and compared exactly.
TEST(YearFraction, WholeYearsPlusPartYear) {
  constexpr double k365 = 0.0027397260273972603, k360 = 0.002777777777777778;
  EXPECT_DOUBLE_EQ(year_basis(S(15, 1, 2001), S(15, 7, 2001), 2, 0), 362.0);  // 181-day period
  EXPECT_EQ(year_fraction(S(1, 1, 2000), S(1, 7, 2001), 5), 1.0 + 181 * k365);
  EXPECT_EQ(year_fraction(S(15, 7, 2003), S(15, 1, 2001), 4), -(2.0 + 181 * k360));
  // 31 August -> 28 February: the anniversary of 31 Aug in 2001 is 31 Aug 2001.
  EXPECT_EQ(year_fraction(S(31, 8, 2000), S(28, 2, 2002), 9), 1.0 + 180 * k360);
  // The anniversary of 29 February in a common year is 1 March.
  EXPECT_EQ(year_fraction(S(29, 2, 2004), S(1, 3, 2005), 5), 1.0);
  // Calendar year lengths (code 14); act/act and unknown codes use the end
  // year's length for the part year; the no-leap fraction is positive both ways.
  EXPECT_DOUBLE_EQ(year_fraction(S(1, 10, 2003), S(1, 3, 2004), 14), 92.0 / 365 + 60.0 / 366);
  EXPECT_DOUBLE_EQ(year_fraction(S(1, 10, 2003), S(1, 3, 2004), 0), 152.0 / 366);
  EXPECT_EQ(year_fraction(S(1, 3, 2004), S(1, 2, 2004), 13), 28 * k365);
}

TEST(AddConventionDays, MonthEndsAndUnusableInput) {
  EXPECT_EQ(add_convention_days(S(31, 1, 2001), 28, 1, 0), S(28, 2, 2001));
  EXPECT_EQ(add_convention_days(S(15, 1, 2001), 16, 11, 0), S(1, 2, 2001));  // E+ past the 30th
  // 30 convention days a month, across a year end either way.
  EXPECT_EQ(add_convention_days(S(15, 11, 2001), -330, 2, 0), S(15, 12, 2000));
  EXPECT_EQ(add_convention_days(S(15, 11, 2001), 60, 2, 0), S(15, 1, 2002));
  // From the end of February the February codes start on the 30th.
  EXPECT_EQ(add_convention_days(S(28, 2, 2001), 30, 1, 0), S(28, 3, 2001));
  EXPECT_EQ(add_convention_days(S(28, 2, 2001), 30, 1, 1), S(31, 3, 2001));
  EXPECT_EQ(add_convention_days(S(28, 2, 2001), 30, 7, 0), S(30, 3, 2001));
  EXPECT_EQ(add_convention_days(S(30, 1, 2001), 30, 2, 0), S(28, 2, 2001));  // clamped
  for (int32_t code : {0, 4, 5, 14}) {
    EXPECT_EQ(add_convention_days(S(1, 1, 2001), 45, code, 0), S(15, 2, 2001)) << code;
  }
  EXPECT_EQ(add_convention_days(S(1, 1, 2001), 45, 13, 0), 0);
  EXPECT_EQ(add_convention_days(-200000, 45, 1, 0), 0);
  EXPECT_EQ(add_convention_days(S(1, 1, 2001), INT32_MIN, 1, 0), 0);
  EXPECT_EQ(add_convention_days(S(1, 1, 2001), INT32_MAX, 5, 0), -1);
}

}  // namespace
}  // namespace kbond::dates
