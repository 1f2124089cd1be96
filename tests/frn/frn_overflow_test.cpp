// FRN results that overflow: a registered year length of 0.0001 days is a
// valid type field (>= 0) yet turns every accrual fraction into an enormous
// number. The analytics then fail with error 1 and -1.0 instead of
// reporting NaN or infinity as success. Found by the FRN fuzz harness.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::Note;

class TinyYearLength : public ::testing::Test {
 protected:
  void SetUp() override {
    const double year_length = 0.0001;
    int32_t error = -1;
    note_.type = KVLfrntype(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &year_length,
                            nullptr, 0, 0, 0, 0, 0, 0, &error);
    ASSERT_EQ(error, 0);
    ASSERT_NE(note_.type, 0);
  }
  void TearDown() override { KVLfreefrntype(note_.type); }
  Note note_;
};

TEST_F(TinyYearLength, ConvexityAndPriceFailInsteadOfNaN) {
  int32_t error = 0;
  const double convexity =
      KVLtfrnconv(note_.type, note_.rates.data(), note_.rate_dates.data(), note_.rate_count(),
                  note_.maturity, note_.settlement, 0.052, nullptr, nullptr, 0, nullptr, nullptr,
                  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &error);
  if (error == 0) {
    EXPECT_TRUE(std::isfinite(convexity));
  } else {
    EXPECT_EQ(error, 1);
    EXPECT_EQ(convexity, -1.0);
  }
  const double price = note_.price(0.052, &error);
  if (error == 0) EXPECT_TRUE(std::isfinite(price));
  else EXPECT_EQ(price, -1.0);
}

TEST(FrnOverflow, ExtremeExtraAccrualDaysAddWithoutWrapping) {
  // Any int32 is a valid count of extra accrual days; near the limits the
  // count plus the days since the last coupon must not wrap (found by
  // fuzzing). Each extra day adds a day's interest at the rate in force.
  Note plain;
  int32_t error = -1;
  const double base = plain.accrued(&error);
  ASSERT_EQ(error, 0);
  for (const int32_t extra : {INT32_MAX - 1, INT32_MIN}) {
    Note note;
    note.type = KVLfrntype(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           &extra, 0, 0, 0, 0, 0, 0, &error);
    ASSERT_EQ(error, 0);
    const double accrued = note.accrued(&error);
    EXPECT_EQ(error, 0);
    EXPECT_NEAR(accrued, base + 0.05 * extra / 360.0 * 100.0, 1e-6 * std::fabs(accrued));
    KVLfreefrntype(note.type);
  }
}

TEST(FrnOverflow, MarginWithAHugeYearLengthFails) {
  // A year length of 1e300 days shrinks the note's life to a denormal; a
  // price far from par then gave a simple margin of minus infinity with
  // error 0 (found by fuzzing). The same type at par has a finite margin.
  const double year_length = 1e300;
  int32_t error = -1;
  const int32_t type = KVLfrntype(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  &year_length, nullptr, 0, 0, 0, 0, 0, 0, &error);
  ASSERT_EQ(error, 0);
  const int32_t maturity = testing::ymd(2030, 6, 15), settlement = testing::ymd(2026, 3, 1);
  const double far = KVLtfrnsm(type, maturity, settlement, 0.05, 1.2484450978421138e55, 0.048,
                               0.002, nullptr, nullptr, nullptr, nullptr, nullptr, &error);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(far, -1.0);
  const double at_par = KVLtfrnsm(type, maturity, settlement, 0.05, 100.0, 0.048, 0.002, nullptr,
                                  nullptr, nullptr, nullptr, nullptr, &error);
  EXPECT_EQ(error, 0);
  EXPECT_TRUE(std::isfinite(at_par));
  KVLfreefrntype(type);
}

TEST(FrnOverflow, DefaultTypeStillPrices) {
  // The default note at a 5.2 % yield against a 5 % coupon: finite, below par.
  Note note;
  int32_t error = -1;
  const double price = note.price(0.052, &error);
  EXPECT_EQ(error, 0);
  EXPECT_LT(price, 100.0);
  EXPECT_GT(price, 90.0);
}

}  // namespace
}  // namespace kbond::frn
