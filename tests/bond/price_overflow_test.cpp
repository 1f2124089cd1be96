// Prices that overflow: a description can be valid and still have no price
// a double can hold (a redemption of 100 * b / a with a denormal a, a
// coupon of 1e300). The price is then error 1 with the failure value, never
// an infinity reported as success. Found by the bond fuzz harness.
#include <gtest/gtest.h>

#include <cmath>

#include "k_bond.h"

namespace {

// Serial of a civil date (1 = 1 January 1900), days-from-civil algorithm.
constexpr int32_t serial(int32_t y, int32_t m, int32_t d) {
  y -= m <= 2;
  const int32_t era = (y >= 0 ? y : y - 399) / 400;
  const int32_t yoe = y - era * 400;
  const int32_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int32_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468 + 25568;
}

constexpr int32_t kMaturity = serial(2030, 11, 15);
constexpr int32_t kSettlement = serial(2024, 3, 1);

double price(const double* coupons, int32_t n, int32_t type, int32_t* error) {
  return KVLbpr(coupons, n, &kMaturity, 1, kSettlement, 0.045, nullptr, nullptr, &type, nullptr, 0,
                nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, error);
}

TEST(PriceOverflow, RedemptionRatioWithDenormalDenominator) {
  // {rate, a, b}: redeemed at 100 * b / a = 4.7e305 per 100. No bond redeems
  // at anywhere near 1e100 times its face: the description is invalid, for
  // U.S. Treasuries (whose six-decimal rounding would overflow) and for
  // unrounded Gilts alike (whose sums overflow in other families, such as
  // the collateralised principal of a Brady bond).
  const double coupons[] = {0.05, 1.0684727529772892e-305, 0.05};
  for (int32_t type : {0, 40}) {
    int32_t error = 0;
    EXPECT_EQ(price(coupons, 3, type, &error), -1.0) << type;
    EXPECT_EQ(error, 1) << type;
  }
  // A real redemption form (102 per 100 of 100) prices.
  const double at_102[] = {0.05, 100.0, 102.0};
  int32_t error = -1;
  EXPECT_TRUE(std::isfinite(price(at_102, 3, 40, &error)));
  EXPECT_EQ(error, 0);
}

TEST(PriceOverflow, HugeCoupon) {
  // 1e308 per year: a semi-annual coupon of 5e309 per 100 is no double.
  const double coupon = 1e308;
  int32_t error = 0;
  EXPECT_EQ(price(&coupon, 1, 40, &error), -1.0);
  EXPECT_EQ(error, 1);
}

TEST(PriceOverflow, OrdinaryBondUnaffected) {
  // 5 % semi-annual bond, 4.5 % yield: the price stays finite and above par
  // (coupon above yield), error 0.
  const double coupon = 0.05;
  int32_t error = -1;
  const double p = price(&coupon, 1, 0, &error);
  EXPECT_EQ(error, 0);
  EXPECT_TRUE(std::isfinite(p));
  EXPECT_GT(p, 100.0);
}

}  // namespace

// Accrued interest of an absurd coupon: -7.6e307 a year accrues to an
// infinity per 100, which set-up refuses as an invalid description.
TEST(PriceOverflow, AbsurdCouponAccruesNoInfinity) {
  const double coupon = -7.6e307;
  int32_t type = 200, error = 0;
  const double ai = KVLbai(&coupon, 1, &kMaturity, 1, kSettlement, nullptr, nullptr, &type,
                           nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                           nullptr, &error);
  EXPECT_EQ(ai, -1.0);
  EXPECT_EQ(error, 1);
}

// A scheduled sinking fund whose outstanding fraction is a denormal: quoting
// per outstanding face would divide by it, so the bond counts as repaid.
TEST(PriceOverflow, DenormalOutstandingFactorIsRepaid) {
  const double coupon = 0.05, factor = 1.3813695267487486e-312, amount = 0.5;
  const int32_t sink = serial(2028, 11, 15);
  int32_t type = 0, error = 0;
  const double p = KVLbpr(&coupon, 1, &kMaturity, 1, kSettlement, 0.045, nullptr, nullptr, &type,
                          nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                          nullptr, nullptr, 0, &factor, &sink, 1, nullptr, 0, &amount, nullptr,
                          nullptr, &error);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(p, -1.0);
}
