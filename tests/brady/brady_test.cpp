// Brady bonds: the three parts priced by hand on a bond settled on a coupon
// date, the guarantee and collateral options, the stripped-yield search and
// the duration.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace kbond::testing {
namespace {

constexpr double kTight = 1e-9;

// 6% semi-annual generic bond (type 500), maturing 15 Jun 2028, settled on
// the 15 Jun 2025 coupon date: six flows at 1, 2, ..., 6 periods.
struct BradyBond {
  std::vector<double> coupons{0.06};
  std::vector<int32_t> dates{civil_serial(2028, 6, 15)};
  int32_t settlement = civil_serial(2025, 6, 15);
  int32_t type = 500;
  const int32_t* guaranteed = nullptr;
  const int32_t* collateral = nullptr;
  int32_t error = -12345;

  double price(double yg, double yc, double ys) {
    return KVLbradypr(coupons.data(), 1, dates.data(), 1, settlement, yg, yc, ys, guaranteed,
                      collateral, nullptr, nullptr, &type, nullptr, 0, nullptr, nullptr, nullptr,
                      nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                      nullptr, &error);
  }
  double yield(double p, double yg, double yc) {
    return KVLbradyyld(coupons.data(), 1, dates.data(), 1, settlement, p, yg, yc, guaranteed,
                       collateral, nullptr, nullptr, &type, nullptr, 0, nullptr, nullptr, nullptr,
                       nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                       nullptr, &error);
  }
  double duration(double yg, double yc, double ys) {
    return KVLbradydur(coupons.data(), 1, dates.data(), 1, settlement, yg, yc, ys, guaranteed,
                       collateral, nullptr, nullptr, &type, nullptr, 0, nullptr, nullptr, nullptr,
                       nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                       nullptr, &error);
  }
};

// Per-period factors of the three rates, semi-annual coupons.
double guarantee_factor(double yg) { return 1.0 / (1.0 + yg / 2.0); }
double collateral_factor(double yc) { return 1.0 / (1.0 + yc / 2.0); }
double stripped_factor(double ys) { return 1.0 / (1.0 + ys / 2.0); }

TEST(BradyPrice, TwoGuaranteedCouponsByDefault) {
  // By hand: coupons 3 at t = 1..6; the first two at the guarantee rate,
  // the others at the stripped yield from t = 2 and brought back over the
  // two guaranteed periods; the bullet collateralised: 100 dC^6.
  BradyBond bond;
  const double yg = 0.05, yc = 0.06, ys = 0.11;
  const double dg = guarantee_factor(yg), dc = collateral_factor(yc), ds = stripped_factor(ys);
  double expected = 3.0 * dg + 3.0 * dg * dg;
  for (int t = 3; t <= 6; ++t) expected += dg * dg * 3.0 * std::pow(ds, t - 2);
  expected += 100.0 * std::pow(dc, 6);
  EXPECT_NEAR(bond.price(yg, yc, ys), expected, kTight);
  EXPECT_EQ(bond.error, 0);
  const int32_t two = 2;
  bond.guaranteed = &two;
  EXPECT_DOUBLE_EQ(bond.price(yg, yc, ys), expected);
}

TEST(BradyPrice, MoreGuaranteesThanFlowsGuaranteeEveryCoupon) {
  BradyBond bond;
  const int32_t ten = 10;
  bond.guaranteed = &ten;
  const double yg = 0.05, yc = 0.06;
  const double dg = guarantee_factor(yg), dc = collateral_factor(yc);
  double expected = 100.0 * std::pow(dc, 6);
  for (int t = 1; t <= 6; ++t) expected += 3.0 * std::pow(dg, t);
  // Nothing is left to the stripped yield.
  EXPECT_NEAR(bond.price(yg, yc, 0.02), expected, kTight);
  EXPECT_NEAR(bond.price(yg, yc, 0.40), expected, kTight);
}

TEST(BradyPrice, CollateralisedBulletIsWorthItsCollateralWhateverTheStrippedYield) {
  // A zero-coupon bullet: the whole price is 100 dC^T; with the collateral
  // dC = (1 / (1 + yC/2))^(2/f) for annual coupons too.
  BradyBond bond;
  bond.coupons = {0.0};
  for (double ys : {0.0, 0.07, 0.3}) {
    EXPECT_NEAR(bond.price(0.05, 0.06, ys), 100.0 * std::pow(1.03, -6.0), kTight);
  }
  const int32_t annual_type = 540;  // semi-annual by default; ask for annual
  bond.type = annual_type;
  const int32_t annual = 1;
  EXPECT_NEAR(KVLbradypr(bond.coupons.data(), 1, bond.dates.data(), 1, bond.settlement, 0.05,
                         0.06, 0.09, nullptr, nullptr, nullptr, nullptr, &bond.type, &annual, 1,
                         nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0,
                         nullptr, 0, nullptr, nullptr, nullptr, &bond.error),
              100.0 * std::pow(1.03, -6.0), kTight);
}

TEST(BradyPrice, UncollateralisedPrincipalAtTheStrippedYield) {
  BradyBond bond;
  const int32_t off = 0, none = 0;
  bond.collateral = &off;
  bond.guaranteed = &none;
  // No guarantee, no collateral: a plain bond at the stripped yield.
  const double ys = 0.08, ds = stripped_factor(ys);
  double expected = 100.0 * std::pow(ds, 6);
  for (int t = 1; t <= 6; ++t) expected += 3.0 * std::pow(ds, t);
  EXPECT_NEAR(bond.price(0.01, 0.02, ys), expected, kTight);
}

TEST(BradyPrice, AccruedInterestIsDeducted) {
  // Settled 15 Sep 2025, 92 days into the 183-day period: the flows lie
  // 91/183 of a period earlier than from 15 Jun and 3 * 92/183 has accrued.
  BradyBond bond;
  bond.settlement = civil_serial(2025, 9, 15);
  const int32_t none = 0, off = 0;
  bond.guaranteed = &none;
  bond.collateral = &off;
  const double ys = 0.08, ds = stripped_factor(ys), t0 = 91.0 / 183.0;
  double expected = 100.0 * std::pow(ds, t0 + 5) - 3.0 * 92.0 / 183.0;
  for (int k = 0; k < 6; ++k) expected += 3.0 * std::pow(ds, t0 + k);
  EXPECT_NEAR(bond.price(0.05, 0.05, ys), expected, kTight);
}

TEST(BradyPrice, BadRatesAndCounts) {
  BradyBond bond;
  EXPECT_EQ(bond.price(-0.01, 0.05, 0.08), -1.0);
  EXPECT_EQ(bond.error, 250);
  EXPECT_EQ(bond.price(0.05, -0.01, 0.08), -1.0);
  EXPECT_EQ(bond.error, 250);
  EXPECT_EQ(bond.price(0.05, 0.05, std::nan("")), -1.0);
  EXPECT_EQ(bond.error, 250);
  const int32_t negative = -1;
  bond.guaranteed = &negative;
  EXPECT_EQ(bond.price(0.05, 0.05, 0.08), -1.0);
  EXPECT_EQ(bond.error, 460);
  EXPECT_EQ(bond.duration(0.05, 0.05, 0.08), -1.0);
  EXPECT_EQ(bond.error, 460);
}

TEST(BradyPrice, CashFlowTableErrorsPassThrough) {
  BradyBond bond;
  bond.type = 14;  // unknown
  EXPECT_EQ(bond.price(0.05, 0.05, 0.08), -1.0);
  EXPECT_EQ(bond.error, 1);
  bond.type = 500;
  bond.settlement = civil_serial(2028, 6, 16);  // after maturity
  EXPECT_EQ(bond.yield(99.0, 0.05, 0.05), -1.0);
  EXPECT_EQ(bond.error, 1);
}

TEST(BradyPrice, CustomTypeReadsItsDefinition) {
  // A custom semi-annual actual/actual type prices like the generic 500.
  const int32_t code = 1051, actual = 0, semi_annual = 2;
  ASSERT_EQ(KVLbcustom(code, &actual, nullptr, nullptr, &semi_annual, nullptr, nullptr, nullptr,
                       nullptr, nullptr, nullptr, nullptr),
            code);
  BradyBond generic;
  generic.settlement = civil_serial(2025, 9, 15);
  BradyBond custom = generic;
  custom.type = code;
  EXPECT_DOUBLE_EQ(custom.price(0.05, 0.045, 0.09), generic.price(0.05, 0.045, 0.09));
  EXPECT_EQ(custom.error, 0);
}

TEST(BradyYield, StrippedYieldRoundTrips) {
  for (const int32_t guaranteed : {0, 2, 4}) {
    for (const int32_t collateral : {0, 1}) {
      BradyBond bond;
      bond.settlement = civil_serial(2025, 9, 15);
      bond.dates = {civil_serial(2040, 6, 15)};
      bond.guaranteed = &guaranteed;
      bond.collateral = &collateral;
      for (double ys : {0.0, 0.04, 0.12, 0.35}) {
        const double price = bond.price(0.05, 0.045, ys);
        ASSERT_EQ(bond.error, 0);
        EXPECT_NEAR(bond.yield(price, 0.05, 0.045), ys, 1e-9)
            << guaranteed << " " << collateral << " " << ys;
        EXPECT_EQ(bond.error, 0);
      }
    }
  }
}

TEST(BradyYield, NegativeStrippedYieldIsFoundBelowTheTrialValues) {
  BradyBond bond;
  const int32_t none = 0, off = 0;
  bond.guaranteed = &none;
  bond.collateral = &off;
  const double ys = -0.03;
  // Priced by hand (the price function refuses negative rates).
  const double ds = stripped_factor(ys);
  double price = 100.0 * std::pow(ds, 6);
  for (int t = 1; t <= 6; ++t) price += 3.0 * std::pow(ds, t);
  EXPECT_NEAR(bond.yield(price, 0.05, 0.05), ys, 1e-9);
}

TEST(BradyYield, NothingLeftToTheStrippedYieldDoesNotConverge) {
  // Every coupon guaranteed and the bullet collateralised: no stripped
  // yield moves the price.
  BradyBond bond;
  const int32_t ten = 10;
  bond.guaranteed = &ten;
  EXPECT_EQ(bond.yield(90.0, 0.05, 0.05), -1.0);
  EXPECT_EQ(bond.error, 21);
}

TEST(BradyYield, BadPriceAndRates) {
  BradyBond bond;
  EXPECT_EQ(bond.yield(0.0, 0.05, 0.05), -1.0);
  EXPECT_EQ(bond.error, 350);
  EXPECT_EQ(bond.yield(-1.0, 0.05, 0.05), -1.0);
  EXPECT_EQ(bond.error, 350);
  EXPECT_EQ(bond.yield(99.0, -0.05, 0.05), -1.0);
  EXPECT_EQ(bond.error, 250);
}

TEST(BradyDuration, PresentValueWeightedTimeInYears) {
  // Settled on a coupon date with the default guarantee and collateral:
  // the weights are the present values of the parts, each at its own rate.
  BradyBond bond;
  const double yg = 0.05, yc = 0.06, ys = 0.11;
  const double dg = guarantee_factor(yg), dc = collateral_factor(yc), ds = stripped_factor(ys);
  double value = 0.0, weighted = 0.0;
  for (int t = 1; t <= 6; ++t) {
    const double pv = t <= 2 ? 3.0 * std::pow(dg, t) : dg * dg * 3.0 * std::pow(ds, t - 2);
    value += pv;
    weighted += pv * t;
  }
  value += 100.0 * std::pow(dc, 6);
  weighted += 6.0 * 100.0 * std::pow(dc, 6);
  EXPECT_NEAR(bond.duration(yg, yc, ys), weighted / (2.0 * value), 1e-12);
  // A zero-coupon collateralised bullet lasts to maturity: 3 years.
  bond.coupons = {0.0};
  EXPECT_NEAR(bond.duration(yg, yc, ys), 3.0, 1e-12);
}

}  // namespace
}  // namespace kbond::testing
