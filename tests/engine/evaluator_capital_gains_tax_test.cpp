// The capital-gains tax on a discount: a bond bought below its redemption
// value pays tax g on the gain R - P at redemption, so the buyer pays
//
//   P = PV - g v^T (R - P)     i.e.  P = (PV - g R v^T) / (1 - g v^T)
//
// with PV the untaxed clean value and v^T the redemption's discount factor.
// At or above par there is no gain and no tax.
#include <gtest/gtest.h>

#include <cmath>

#include "engine/evaluator_test_bonds.h"

namespace kbond::engine {
namespace {

using testing::price;
using testing::serial;
using testing::TestBond;

constexpr double kTight = 1e-10;
constexpr double kItalianDiscountTax = 0.125;

TestBond taxed_bond(double discount_tax) {
  TestBond b;
  b.rates[0] = 0.05;
  b.settlement = serial(15, 2, 2025);
  b.maturity = serial(15, 11, 2034);
  b.discount_tax = discount_tax;
  return b;
}

// v^T of the redemption under the standard evaluator.
double redemption_factor(const bond_desc& d, double y) {
  return std::pow(1.0 + y / d.frequency, -(d.frequency * d.tn + d.whole_periods - 1));
}

TEST(CapitalGainsTax, NoTaxAtOrAbovePar) {
  TestBond untaxed = taxed_bond(0.0), taxed = taxed_bond(kItalianDiscountTax);
  const bond_desc a = untaxed.describe(), b = taxed.describe();
  for (double y : {0.0, 0.03, 0.049}) {
    ASSERT_GE(price(a, y), 100.0);
    EXPECT_DOUBLE_EQ(price(b, y), price(a, y)) << "y = " << y;
  }
}

TEST(CapitalGainsTax, BelowParTheBuyerPaysForTheTaxOnTheGain) {
  TestBond untaxed = taxed_bond(0.0), taxed = taxed_bond(kItalianDiscountTax);
  const bond_desc a = untaxed.describe(), b = taxed.describe();
  for (double y : {0.06, 0.08, 0.15}) {
    const double pv = price(a, y) / 100.0;
    const double p = price(b, y) / 100.0;
    const double vt = redemption_factor(b, y);
    ASSERT_LT(pv, 1.0);
    EXPECT_NEAR(p, pv - kItalianDiscountTax * vt * (1.0 - p), kTight) << "y = " << y;
    // The division lifts the price above PV - g R v^T, the tax itself
    // keeps it below the untaxed value.
    EXPECT_GT(p, pv - kItalianDiscountTax * vt);
    EXPECT_LT(p, pv);
  }
}

TEST(CapitalGainsTax, CouponTaxRateAppliesWhenMaturityFallsBeforeTheHorizon) {
  // 0.2 coupon tax, 0.125 discount tax; the bond matures before the
  // horizon, so the gain is taxed at 0.2.
  TestBond plain = taxed_bond(0.0);
  plain.coupon_tax = 0.2;
  TestBond taxed = plain;
  taxed.discount_tax = kItalianDiscountTax;
  bond_desc a = plain.describe(), b = taxed.describe();
  b.horizon_date = a.horizon_date = b.maturity + 1;
  const double y = 0.07;
  const double pv = price(a, y) / 100.0, p = price(b, y) / 100.0;
  EXPECT_NEAR(p, pv - 0.2 * redemption_factor(b, y) * (1.0 - p), kTight);
  // With the horizon before maturity the discount tax rate is used.
  b.horizon_date = b.maturity - 1;
  const double p2 = price(b, y) / 100.0;
  EXPECT_NEAR(p2, pv - kItalianDiscountTax * redemption_factor(b, y) * (1.0 - p2), kTight);
}

TEST(CapitalGainsTax, DerivativeFollowsTheTaxDivision) {
  TestBond taxed = taxed_bond(kItalianDiscountTax);
  const bond_desc d = taxed.describe();
  double slope = 0.0;
  price(d, 0.08, &slope);
  EXPECT_NEAR(slope, testing::price_slope(d, 0.08), 1e-6);
}

TEST(CapitalGainsTax, FullTaxAtZeroYieldCancelsTheDivisor) {
  // A zero-coupon bond with some accrued interest (so that it is below par
  // at a zero yield) and a tax of 100%: 1 - g v^T = 1 - 1 x 1 = 0.
  TestBond b = taxed_bond(1.0);
  b.rates[0] = 0.0;
  bond_desc d = b.describe();
  d.accrued = 0.001;
  int32_t error = 0;
  EXPECT_DOUBLE_EQ(price(d, 0.0, nullptr, nullptr, &error), -100.0);
  EXPECT_EQ(error, 401);
}

}  // namespace
}  // namespace kbond::engine
