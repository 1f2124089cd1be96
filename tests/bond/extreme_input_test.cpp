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

TEST(ExtremeInputs, OverflowingInvoicePriceIsNoNetBasis) {
  // Futures price 1e300 times a factor of 1e300: the invoice price is no
  // double, and the net basis is error 1, not minus infinity.
  const double coupon = 0.05;
  int32_t error = 0;
  const double absurd = KVLbnbasis(&coupon, 1, &kMaturity, 1, kSettlement, kDelivery, 98.5,
                                   0.03, 1e300, 1e300, nullptr, nullptr, nullptr, nullptr, 0,
                                   nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                                   nullptr, nullptr, nullptr, nullptr, &error);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(absurd, -1.0);
  // A real contract: forward price less 110 x 0.9, finite.
  const double sane = KVLbnbasis(&coupon, 1, &kMaturity, 1, kSettlement, kDelivery, 98.5, 0.03,
                                 110.0, 0.9, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                                 nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr,
                                 nullptr, nullptr, nullptr, &error);
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
  // A next coupon payment of 5.5e303 per 100: its accrued part overflows.
  EXPECT_EQ(KVLilgai(0.025, 5.4861240764577203e303, kMaturity, kSettlement, nullptr, nullptr,
                     nullptr, nullptr, 0, nullptr, nullptr, &error),
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

// The arguments of KVLbyld, KVLbpr, KVLbvalbp and KVLbval32 after the market
// input: every optional argument absent except the bond type and the
// scale (or ticks) where the function has one.
double yield_of(double price, int32_t type, int32_t* error) {
  const double coupon = 0.05;
  return KVLbyld(&coupon, 1, &kMaturity, 1, kSettlement, price, nullptr, nullptr, &type, nullptr,
                 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                 nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, error);
}

double price_of(double yield, int32_t type, int32_t* error) {
  const double coupon = 0.05;
  return KVLbpr(&coupon, 1, &kMaturity, 1, kSettlement, yield, nullptr, nullptr, &type, nullptr,
                0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, error);
}

double tick_value(double coupon, int32_t maturity, int32_t settlement, const double* ticks,
                  int32_t* error) {
  const int32_t treasury = 0;
  return KVLbval32(&coupon, 1, &maturity, 1, settlement, 0.05, nullptr, nullptr, &treasury,
                   nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, ticks, nullptr,
                   nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                   nullptr, error);
}

TEST(ExtremeInputs, YieldFromAPriceNearZeroIsFinite) {
  // The current yield 5 / 5e-310 overflows; the search starts at the top of
  // the bracket instead and stops where the clean price is within 1e-12 per
  // 100 of the target, so the yield is large but finite and prices back to
  // (almost) nothing.
  for (double price : {5e-310, 3.7e-306, 1e-20}) {
    for (int32_t type : {0, 40}) {
      int32_t error = -1;
      const double y = yield_of(price, type, &error);
      EXPECT_EQ(error, 0) << price << " type " << type;
      ASSERT_TRUE(std::isfinite(y)) << price << " type " << type;
      EXPECT_GT(y, 1.0);
      EXPECT_NEAR(price_of(y, type, &error), 0.0, 1e-6);
      EXPECT_EQ(error, 0);
    }
  }
}

TEST(ExtremeInputs, SimpleYieldOfAPriceNearZeroIsAFailure) {
  // JGBs quote a simple yield, (received / price - 1) / years: with a price
  // of 5e-310 per 100 the quotient overflows, which is no yield.
  int32_t error = 0;
  EXPECT_EQ(yield_of(5e-310, 200, &error), -1.0);
  EXPECT_EQ(error, 1);
  // A merely tiny price still has its (huge, finite) simple yield.
  EXPECT_TRUE(std::isfinite(yield_of(1e-10, 200, &error)));
  EXPECT_EQ(error, 0);
}

TEST(ExtremeInputs, TickValueWithoutAPriceMovement) {
  // Settling on the maturity date (1 January 1901, serial 366) the price no
  // longer depends on the yield: the basis-point value is 0 and a tick is
  // worth no finite yield change.
  const int32_t day = 366;
  int32_t error = 0;
  EXPECT_EQ(tick_value(0.05, day, day, nullptr, &error), -999.0);
  EXPECT_EQ(error, 401);
  EXPECT_EQ(tick_value(0.0, day, day, nullptr, &error), -999.0);
  EXPECT_EQ(error, 401);
  // A denormal tick size overflows the quotient in the same way.
  const double denormal = 2e-311;
  EXPECT_EQ(tick_value(0.05, kMaturity, kSettlement, &denormal, &error), -999.0);
  EXPECT_EQ(error, 401);
  // A real bond and tick size: 1 / (valbp x 32), positive and finite.
  const double value = tick_value(0.05, kMaturity, kSettlement, nullptr, &error);
  EXPECT_EQ(error, 0);
  EXPECT_GT(value, 0.0);
  EXPECT_TRUE(std::isfinite(value));
}

}  // namespace
