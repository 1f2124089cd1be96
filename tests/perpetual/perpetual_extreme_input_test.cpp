// Extreme inputs that reached the perpetual exports as infinities or as a
// stale error code (found by the fuzz harness): each now fails cleanly or
// succeeds cleanly.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "perpetual/perpetual_test_bond.h"

namespace kbond::testing {
namespace {

TEST(PerpetualExtremeInputs, DenormalYieldIsAVanishingDenominator) {
  // 100 c / y with y = 5e-320 overflows exactly as y = 0 divides by zero:
  // error 401, -1.0, under the perpetuity formula (simple yield, rule -2)
  // and the explicit sum alike.
  const int32_t simple = -2;
  for (const int32_t* rule : {static_cast<const int32_t*>(nullptr), &simple}) {
    PerpetualBond bond;
    bond.rule = rule;
    EXPECT_EQ(bond.price(5e-320), -1.0);
    EXPECT_EQ(bond.error, 401);
    EXPECT_EQ(bond.price(0.0), -1.0);
    EXPECT_EQ(bond.error, 401);
    EXPECT_EQ(bond.duration(5e-320, nullptr), -1.0);
    EXPECT_EQ(bond.error, 401);
    EXPECT_EQ(bond.value_of_bp(5e-320, nullptr), -999.0);
    EXPECT_EQ(bond.error, 401);
    // A real yield still prices: 6 / 0.05 = 120 under the perpetuity
    // formula, near it under the explicit sum.
    EXPECT_NEAR(bond.price(0.05), 120.0, 3.5);
    EXPECT_EQ(bond.error, 0);
  }
}

TEST(PerpetualExtremeInputs, AbsurdRateOrYieldThatOverflowsTheRounding) {
  // A coupon rate of 1e300 a year is no perpetual: error 1 from the
  // description, for the price and the accrued interest alike.
  PerpetualBond absurd;
  absurd.coupons = {1e300};
  EXPECT_EQ(absurd.price(0.055), -1.0);
  EXPECT_EQ(absurd.error, 1);
  EXPECT_EQ(absurd.accrued(), -1.0);
  EXPECT_EQ(absurd.error, 1);
  // U.S. Treasury rounding to six decimals: 100 x 0.06 / 1e-303 = 6e303 is
  // finite, its millionths are not. A yield that near zero is error 401.
  PerpetualBond treasury;
  treasury.type = 0;
  const int32_t simple = -2;
  treasury.rule = &simple;
  EXPECT_EQ(treasury.price(1e-303), -1.0);
  EXPECT_EQ(treasury.error, 401);
  EXPECT_NEAR(treasury.price(0.05), 120.0, 1e-6);  // 100 x 0.06 / 0.05
  EXPECT_EQ(treasury.error, 0);
}

TEST(PerpetualExtremeInputs, AbsurdWithholdingTaxIsAnInvalidDescription) {
  // A tax of -1.2e308 makes the net coupon overflow: the accrued interest
  // and the coupon amount were infinite with error 0 (found by fuzzing).
  const double absurd_tax = -1.2301860863957261e308;
  PerpetualBond bond;
  bond.tax = &absurd_tax;
  EXPECT_EQ(bond.accrued(), -1.0);
  EXPECT_EQ(bond.error, 1);
  EXPECT_EQ(bond.coupon_amount(), -1.0);
  EXPECT_EQ(bond.error, 1);
  // A real tax (or a subsidy, negative) still nets the coupon: 6 % less 20 %
  // on a semi-annual bond is 2.4 per 100.
  const double tax = 0.2;
  bond.tax = &tax;
  EXPECT_NEAR(bond.coupon_amount(), 2.4, 1e-12);
  EXPECT_EQ(bond.error, 0);
}

TEST(PerpetualExtremeInputs, TickValueWithoutAPriceMovement) {
  // A perpetual paying nothing is worth 0 at every yield: a basis point
  // moves nothing and a tick is worth no finite yield change.
  PerpetualBond bond;
  bond.coupons = {0.0};
  EXPECT_EQ(bond.value_of_bp(0.05, nullptr), 0.0);
  EXPECT_EQ(bond.error, 0);
  EXPECT_EQ(bond.value_of_32nd(0.05, nullptr), -999.0);
  EXPECT_EQ(bond.error, 401);
  // Denormal scale and tick size overflow the quotients.
  PerpetualBond paying;
  const double denormal = 2e-311;
  EXPECT_EQ(paying.value_of_bp(0.05, &denormal), -999.0);
  EXPECT_EQ(paying.error, 401);
  EXPECT_EQ(paying.value_of_32nd(0.05, &denormal), -999.0);
  EXPECT_EQ(paying.error, 401);
  EXPECT_GT(paying.value_of_32nd(0.05, nullptr), 0.0);
  EXPECT_EQ(paying.error, 0);
}

TEST(PerpetualExtremeInputs, ImpliedRepoFoundInALaterBracket) {
  // Repo rates of 600 % and -200 % lie outside the first bracket
  // [-0.99, 5]; the later brackets find them and the first one's failure
  // must not stay in the error code. The forward price at the rate is the
  // round trip's own target.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 7, 20);
  const int32_t end = civil_serial(2025, 9, 20);
  const double price = 98.5;
  for (double repo : {6.0, -2.0}) {
    const double forward = bond.forward(end, price, repo, nullptr, nullptr);
    ASSERT_EQ(bond.error, 0) << repo;
    EXPECT_NEAR(bond.implied_repo(price, forward, end, nullptr, nullptr), repo, 1e-4) << repo;
    EXPECT_EQ(bond.error, 0) << repo;
  }
}

TEST(PerpetualExtremeInputs, CarryOfANonNumberIsAFailure) {
  // A repo rate or a price that is not a number used to come back as a NaN
  // carry with error 0; overflowing ones as infinities.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 7, 20);
  const int32_t end = civil_serial(2025, 9, 20);
  const double nan = std::nan("");
  EXPECT_EQ(bond.carry(end, 98.5, nan, nullptr), -1.0);
  EXPECT_EQ(bond.error, 1);
  EXPECT_EQ(bond.carry(end, nan, 0.04, nullptr), -1.0);
  EXPECT_EQ(bond.error, 1);
  EXPECT_EQ(bond.forward(end, 98.5, nan, nullptr, nullptr), -1.0);
  EXPECT_EQ(bond.error, 1);
  EXPECT_EQ(bond.forward(end, 1.7e308, 1e300, nullptr, nullptr), -1.0);
  EXPECT_EQ(bond.error, 1);
  EXPECT_TRUE(std::isfinite(bond.carry(end, 98.5, 0.04, nullptr)));
  EXPECT_EQ(bond.error, 0);
}

}  // namespace
}  // namespace kbond::testing
