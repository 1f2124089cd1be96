// Reference index interpolation and index ratio.
#include "inflation/reference_index.h"

#include <gtest/gtest.h>

#include "dates/date_serial.h"

namespace kbond::inflation {
namespace {

constexpr double kTol = 1e-9;

TEST(ReferenceIndex, TreasuryRefCpiOnTheFifteenthOfJanuary2006) {
  // TreasuryDirect's Ref CPI table for 2006: 1 January = October 2005 CPI
  // (199.2), 1 February = November 2005 CPI (197.6); 15 January 2006 is
  // 199.2 + 14/31 * (197.6 - 199.2) = 198.477419... published as 198.47742.
  const double values[2] = {199.2, 197.6};
  int32_t err = -1;
  EXPECT_NEAR(reference_index_at(dates::date_to_serial(15, 1, 2006), values, 2, &err), 198.47742, kTol);
  EXPECT_EQ(err, 0);
  // Same table, 2 January: 199.2 - 1/31 * 1.6 = 199.14839 (published).
  EXPECT_NEAR(reference_index_at(dates::date_to_serial(2, 1, 2006), values, 2, &err), 199.14839, kTol);
}

TEST(ReferenceIndex, FirstOfTheMonthUsesTheFirstValueExactly) {
  const double values[2] = {231.317, 230.221};
  int32_t err = -1;
  EXPECT_EQ(reference_index_at(dates::date_to_serial(1, 1, 2013), values, 2, &err), 231.317);
  EXPECT_EQ(err, 0);
}

TEST(ReferenceIndex, OneValueIsTheReferenceIndexItself) {
  const double value = 117.33;
  int32_t err = -1;
  EXPECT_EQ(reference_index_at(dates::date_to_serial(25, 7, 2003), &value, 1, &err), 117.33);
  EXPECT_EQ(err, 0);
}

TEST(ReferenceIndex, FrenchDailyIndexInAThirtyDayMonth) {
  // OATi daily index on 10 June: CPI(March) + 9/30 * (CPI(April) - CPI(March));
  // with 108.20 and 108.65: 108.20 + 0.3 * 0.45 = 108.335.
  const double values[2] = {108.20, 108.65};
  int32_t err = -1;
  EXPECT_NEAR(reference_index_at(dates::date_to_serial(10, 6, 2004), values, 2, &err), 108.335, kTol);
}

TEST(ReferenceIndex, IndexRatioOfTheJanuary2016Tips) {
  // TreasuryDirect: TIPS of January 2016 (Ref CPI on dated date 198.47742),
  // index ratio 1.16528 on 2 January 2013, whose Ref CPI is
  // 231.317 + 1/31 * (230.221 - 231.317) = 231.28165.
  const double values[2] = {231.317, 230.221};
  int32_t err = -1;
  const double ref = reference_index_at(dates::date_to_serial(2, 1, 2013), values, 2, &err);
  EXPECT_NEAR(ref, 231.28165, kTol);
  EXPECT_NEAR(index_ratio(ref, 198.47742), 1.16528, kTol);
  // 1 January 2013: 231.317 / 198.47742 = 1.1654613 -> 1.16546 (published).
  EXPECT_NEAR(index_ratio(231.317, 198.47742), 1.16546, kTol);
}

TEST(ReferenceIndex, MonthLengthChecksOfTheInterpolation) {
  int32_t err = 0;
  EXPECT_EQ(index_days_in_month(2, 4, &err), 29);  // year 4 is 1904, a leap year
  EXPECT_EQ(err, 0);
  EXPECT_EQ(index_days_in_month(2, 100, &err), 29);  // year 100 is 2000, a leap year
  err = 0;
  EXPECT_EQ(index_days_in_month(2, 1999, &err), 28);
  EXPECT_EQ(index_days_in_month(2, 1500, &err), 0);
  EXPECT_EQ(err, 153);
  err = 0;
  EXPECT_EQ(index_days_in_month(13, 2001, &err), 0);
  EXPECT_EQ(err, 152);
}

TEST(ReferenceIndex, RefusesBadValuesAndCounts) {
  const double bad[2] = {0.0, 100.0};
  const double good[2] = {100.0, -1.0};
  int32_t err = 0;
  reference_index_at(40000, bad, 1, &err);
  EXPECT_EQ(err, 1);
  reference_index_at(40000, good, 2, &err);
  EXPECT_EQ(err, 1);
  reference_index_at(40000, good, 3, &err);
  EXPECT_EQ(err, 1);
  reference_index_at(40000, nullptr, 1, &err);
  EXPECT_EQ(err, 1);
}

}  // namespace
}  // namespace kbond::inflation
