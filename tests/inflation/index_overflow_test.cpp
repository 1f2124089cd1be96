// Index values so small (denormals) that the index ratio overflows: they
// are positive and finite, but no index, and the call is refused with error
// 1 and -1.0 rather than returning an infinite price or accrued interest.
// Found by the inflation fuzz harnesses.
#include <gtest/gtest.h>

#include "k_bond.h"
#include "dates/date_serial.h"

namespace {

using kbond::dates::date_to_serial;

// 2 % TIPS of January 2016 settling 2 January 2013 (Ref CPI 231.28165).
const int32_t kMaturity = date_to_serial(15, 1, 2016);
const int32_t kSettlement = date_to_serial(2, 1, 2013);
const double kDenormal = 1.6304166312761136e-322;
const double kSettleIndex = 231.28165;

TEST(IndexOverflow, OatiAndTipsRefuseADenormalBaseIndex) {
  int32_t error = 0;
  EXPECT_EQ(KVLoatiai(2.0, kMaturity, kSettlement, &kDenormal, 1, &kSettleIndex, 1, nullptr, nullptr,
                      nullptr, nullptr, 0, nullptr, &error),
            -1.0);
  EXPECT_EQ(error, 1);
  error = 0;
  EXPECT_EQ(KVLtipspr(2.0, &kDenormal, 1, &kSettleIndex, 1, kMaturity, kSettlement, 0.01, nullptr, nullptr, 0,
                      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, &error),
            -1.0);
  EXPECT_EQ(error, 1);
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  EXPECT_EQ(KVLtipscshflw(&dates, &amounts, 2.0, &kDenormal, 1, &kSettleIndex, 1, kMaturity, kSettlement,
                          nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                          nullptr, 0, &error),
            0);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(dates, nullptr);
  EXPECT_EQ(amounts, nullptr);
}

TEST(IndexOverflow, IndexLinkedGiltRefusesADenormalBaseIndex) {
  // 2½% Index-linked Treasury Stock 2016 with a base RPI of 3.4e-322.
  int32_t error = 0;
  const double inflation = 0.03;
  EXPECT_EQ(KVLilgpr(0.025, 2.8952, 3.3596463917204765e-322, 188.9, date_to_serial(26, 7, 2016),
                     date_to_serial(15, 3, 2005), 0.02, nullptr, nullptr, &inflation, nullptr, nullptr,
                     nullptr, 0, nullptr, nullptr, 0, &error),
            -1.0);
  EXPECT_EQ(error, 1);
}

TEST(IndexOverflow, IndexLinkedGiltTableRefusesAnOverflowingRedemption) {
  // 2½% Index-linked Treasury Stock 2016 with a base RPI of 3.56e-306:
  // 188.9 / 3.56e-306 = 5.3e307 is finite, the uplifted redemption (x 100,
  // and projected forward) is not. No table, error 1, outputs untouched.
  int32_t error = 0;
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  double redemption = -12345.0;
  EXPECT_EQ(KVLilgcshflw(&dates, &amounts, &redemption, 0.025, 2.8952, 3.5604468283196269e-306,
                         188.9, date_to_serial(26, 7, 2016), date_to_serial(15, 3, 2005), nullptr,
                         nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0,
                         &error),
            0);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(dates, nullptr);
  EXPECT_EQ(amounts, nullptr);
  EXPECT_EQ(redemption, -12345.0);
  // The real base RPI of the stock (81.6) gives the table.
  EXPECT_GT(KVLilgcshflw(&dates, &amounts, &redemption, 0.025, 2.8952, 81.6, 188.9,
                         date_to_serial(26, 7, 2016), date_to_serial(15, 3, 2005), nullptr, nullptr,
                         nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, &error),
            0);
  EXPECT_EQ(error, 0);
  EXPECT_GT(redemption, 100.0);
  KVLilgcshflw_free(dates, amounts);
}

TEST(IndexOverflow, TipsPriceRefusesOverflowingFlows) {
  // A TIPS with a coupon of 2.8e-306 percent but a next coupon amount of
  // 1.1653 given, maturing in 2258: the projected flows (the given amount
  // over a vanishing coupon) overflow the valuation sums. Error 1 and -1.0
  // rather than an infinite price.
  const double base = 198.47742, latest = 231.28165, next_amount = 1.1653;
  const int32_t first_coupon = date_to_serial(15, 1, 2006);
  int32_t error = 0;
  EXPECT_EQ(KVLtipspr(2.8135404507335763e-306, &base, 1, &latest, 1, 131072, kSettlement, -0.005,
                      nullptr, &next_amount, 0, nullptr, nullptr, nullptr, &first_coupon, nullptr,
                      nullptr, 0, nullptr, 0, &error),
            -1.0);
  EXPECT_EQ(error, 1);
  // The 2 % coupon of the real bond prices.
  EXPECT_GT(KVLtipspr(2.0, &base, 1, &latest, 1, kMaturity, kSettlement, -0.005, nullptr, nullptr,
                      0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0,
                      &error),
            100.0);
  EXPECT_EQ(error, 0);
}

}  // namespace
