// Extreme inputs that reached the interface as infinities or shifted failure
// values (found by the fuzz harnesses): each is now a clean failure.
#include <gtest/gtest.h>

#include <cmath>

#include "bond/yield_from_price.h"
#include "k_bond.h"

namespace {

// Serials of 15 Nov 2030, 1 Mar 2024 and 15 Jun 2024 (1 = 1 January 1900).
constexpr int32_t kMaturity = 47801;
constexpr int32_t kSettlement = 45351;
constexpr int32_t kDelivery = 45457;

TEST(ExtremeInputs, YieldRoundingKeepsFailureValuesExact) {
  // -999.0 * 1e8 * 1e-8 is not -999.0 in doubles; the failure value must be.
  for (int32_t type : {0, 1, 2, 3, 16, 380, 40}) {
    EXPECT_EQ(kbond::bond::round_yield_by_type(-999.0, type), -999.0) << "type " << type;
    EXPECT_EQ(kbond::bond::round_yield_by_type(-1.0, type), -1.0) << "type " << type;
  }
  EXPECT_DOUBLE_EQ(kbond::bond::round_yield_by_type(0.0456789012345, 0), 0.04567890);
}

TEST(ExtremeInputs, DenormalConversionFactorIsAFailure) {
  // (price - carry) / 5e-324 overflows: error 1, not an infinite futures price.
  const double coupon = 0.05;
  int32_t error = 0;
  const double futures = KVLbifutp(&coupon, 1, &kMaturity, 1, kSettlement, 101.0, 0.04, 5e-324,
                                   kDelivery, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                                   nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                                   nullptr, nullptr, nullptr, nullptr, &error);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(futures, -1.0);
  // The same call with a real factor is an ordinary result.
  const double sane = KVLbifutp(&coupon, 1, &kMaturity, 1, kSettlement, 101.0, 0.04, 0.95,
                                kDelivery, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                                nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, &error);
  EXPECT_EQ(error, 0);
  EXPECT_TRUE(std::isfinite(sane));
}

TEST(ExtremeInputs, AbsurdInflationLinkedCoupons) {
  int32_t error = 0;
  // An index-linked gilt with a real coupon of 1e300 (a fraction of par).
  EXPECT_EQ(KVLilgpr(1e300, 1.5, 200.0, 250.0, kMaturity, kSettlement, 0.01, nullptr, nullptr,
                     nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, &error),
            -1.0);
  EXPECT_EQ(error, 1);
  // A TIPS with a denormal coupon (percent): no table, outputs NULL.
  const double base = 250.0, latest = 300.0;
  int32_t* dates = reinterpret_cast<int32_t*>(1);
  double* amounts = reinterpret_cast<double*>(1);
  EXPECT_EQ(KVLtipscshflw(&dates, &amounts, 5e-320, &base, 1, &latest, 1, kMaturity, kSettlement,
                          nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                          0, nullptr, 0, &error),
            0);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(dates, nullptr);
  EXPECT_EQ(amounts, nullptr);
  KVLtipscshflw_free(dates, amounts);
}

}  // namespace
