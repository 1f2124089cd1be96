// Reference index interpolation and index ratio against the Treasury's
// published Ref CPI values, which the tables round to five decimals.
#include "inflation/reference_index.h"

#include <gtest/gtest.h>

#include "dates/date_serial.h"

namespace kbond::inflation {
namespace {

using dates::date_to_serial;

TEST(ReferenceIndex, PublishedRefCpiAndIndexRatios) {
  int32_t err = -1;
  // TreasuryDirect's Ref CPI table for 2006: 2 January = October 2005 CPI
  // (199.2) + 1/31 of the step to November's (197.6) = 199.1483871, which
  // the table rounds to 199.14839.
  const double y2006[2] = {199.2, 197.6};
  EXPECT_NEAR(reference_index_at(date_to_serial(2, 1, 2006), y2006, 2, &err), 199.2 - 1.6 / 31,
              1e-12);
  // TIPS of January 2016 (Ref CPI on dated date 198.47742): on 2 January
  // 2013 the Ref CPI is 231.317 + 1/31 * (230.221 - 231.317) = 231.2816452
  // (published 231.28165) and the index ratio 1.1652794 (published
  // 1.16528); on 1 January the first value exactly, 231.317 / 198.47742 =
  // 1.1654575 (published 1.16546). Neither is rounded here.
  const double y2013[2] = {231.317, 230.221};
  const double ref = reference_index_at(date_to_serial(2, 1, 2013), y2013, 2, &err);
  EXPECT_NEAR(ref, 231.317 - 1.096 / 31, 1e-12);
  EXPECT_NEAR(index_ratio(ref, 198.47742), 1.1652794, 1e-7);
  EXPECT_EQ(reference_index_at(date_to_serial(1, 1, 2013), y2013, 2, &err), 231.317);
  EXPECT_NEAR(index_ratio(231.317, 198.47742), 1.1654575, 1e-7);
  // OATi daily index on 10 June, a 30-day month: CPI(March) + 9/30 *
  // (CPI(April) - CPI(March)) = 108.20 + 0.3 * 0.45 = 108.335.
  const double french[2] = {108.20, 108.65};
  EXPECT_NEAR(reference_index_at(date_to_serial(10, 6, 2004), french, 2, &err), 108.335, 1e-9);
  // One value is the reference index itself.
  const double one = 117.33;
  EXPECT_EQ(reference_index_at(date_to_serial(25, 7, 2003), &one, 1, &err), 117.33);
  EXPECT_EQ(err, 0);
}

TEST(ReferenceIndex, MonthLengthsAndRefusedValues) {
  int32_t err = 0;
  EXPECT_EQ(index_days_in_month(2, 4, &err), 29);    // year 4 is 1904, a leap year
  EXPECT_EQ(index_days_in_month(2, 100, &err), 29);  // year 100 is 2000, a leap year
  EXPECT_EQ(index_days_in_month(2, 1999, &err), 28);
  EXPECT_EQ(err, 0);
  EXPECT_EQ(index_days_in_month(2, 1500, &err), 0);
  EXPECT_EQ(err, 153);
  EXPECT_EQ(index_days_in_month(13, 2001, &err), 0);
  EXPECT_EQ(err, 152);
  const double zero_first[2] = {0.0, 100.0}, negative_second[2] = {100.0, -1.0};
  for (const auto& [values, count] : {std::pair{zero_first, 1}, {negative_second, 2}, {negative_second, 3},
                                      {static_cast<const double*>(nullptr), 1}}) {
    err = 0;
    reference_index_at(40000, values, count, &err);
    EXPECT_EQ(err, 1) << count;
  }
}

}  // namespace
}  // namespace kbond::inflation
