// Brady bonds: the three parts priced by hand, the guarantee and collateral
// options, the stripped-yield search, the duration, and bad input
// (including the absurd redemption the fuzz harness found).
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace kbond::testing {
namespace {

// 6 % semi-annual generic bond (type 500), maturing 15 Jun 2028, settled on
// the 15 Jun 2025 coupon date: six flows at 1, 2, ..., 6 periods.
struct BradyBond {
  std::vector<double> coupons{0.06};
  std::vector<int32_t> dates{civil_serial(2028, 6, 15)};
  int32_t settlement = civil_serial(2025, 6, 15);
  int32_t type = 500;
  std::optional<int32_t> guaranteed, collateral, frequency;
  int32_t error = -12345;

  static const int32_t* opt(const std::optional<int32_t>& v) { return v ? &*v : nullptr; }
#define BRADY_ARGS(a, b, c)                                                                    \
  coupons.data(), static_cast<int32_t>(coupons.size()), dates.data(), 1, settlement, a, b, c, \
      opt(guaranteed), opt(collateral), nullptr, nullptr, &type, opt(frequency),               \
      frequency ? 1 : 0, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, \
      nullptr, 0, nullptr, nullptr, nullptr, &error
  double price(double yg, double yc, double ys) { return KVLbradypr(BRADY_ARGS(yg, yc, ys)); }
  double yield(double p, double yg, double yc) { return KVLbradyyld(BRADY_ARGS(p, yg, yc)); }
  double duration(double yg, double yc, double ys) { return KVLbradydur(BRADY_ARGS(yg, yc, ys)); }
#undef BRADY_ARGS
};

// By hand, flows at t0, t0 + 1, ..., t0 + 5 periods: the first g coupons of
// 3 discounted at the guarantee rate, the others at the stripped yield from
// the end of the guarantee and brought back over it; the bullet at the
// collateral rate, or (uncollateralised) at the stripped yield. Returns the
// dirty value and its present-value weighted time in periods.
std::pair<double, double> by_hand(int g, bool collateral, double coupon, double yg, double yc,
                                  double ys, double t0 = 1.0) {
  const double dg = 1.0 / (1.0 + yg / 2), dc = 1.0 / (1.0 + yc / 2), ds = 1.0 / (1.0 + ys / 2);
  const int guaranteed = std::min(g, 6);
  double value = 0.0, weighted = 0.0;
  for (int k = 0; k < 7; ++k) {
    const double t = t0 + std::min(k, 5);
    const double pv =
        k == 6 ? 100.0 * std::pow(collateral ? dc : ds, t)
               : 50.0 * coupon *
                     (k < guaranteed ? std::pow(dg, t)
                                     : std::pow(dg, guaranteed) * std::pow(ds, t - guaranteed));
    value += pv;
    weighted += pv * t;
  }
  return {value, weighted};
}

TEST(BradyPrice, ThreePartsByHand) {
  struct Case {
    std::optional<int32_t> guaranteed, collateral;
    double coupon, ys;
  };
  const Case cases[] = {
      {std::nullopt, std::nullopt, 0.06, 0.11},  // two coupons guaranteed by default
      {2, 1, 0.06, 0.11},
      {10, std::nullopt, 0.06, 0.40},  // more guarantees than flows: all of them
      {0, 0, 0.06, 0.08},              // a plain bond at the stripped yield
      {std::nullopt, std::nullopt, 0.0, 0.3},  // a zero-coupon bullet: its collateral
  };
  for (const Case& c : cases) {
    BradyBond bond;
    bond.guaranteed = c.guaranteed;
    bond.collateral = c.collateral;
    bond.coupons = {c.coupon};
    const int g = c.guaranteed.value_or(2);
    const auto [value, weighted] = by_hand(g, c.collateral.value_or(1), c.coupon, 0.05, 0.06, c.ys);
    SCOPED_TRACE(::testing::Message() << g << " guaranteed, stripped " << c.ys);
    EXPECT_NEAR(bond.price(0.05, 0.06, c.ys), value, 1e-9);
    EXPECT_EQ(bond.error, 0);
    // The duration weighs each part at its own rate, in years.
    EXPECT_NEAR(bond.duration(0.05, 0.06, c.ys), weighted / value / 2.0, 1e-12);
  }
  // Settled 15 Sep 2025, 92 days into the 183-day period: the flows lie
  // 91/183 of a period earlier than from 15 Jun and 3 x 92/183 has accrued.
  BradyBond later;
  later.settlement = civil_serial(2025, 9, 15);
  later.guaranteed = later.collateral = 0;
  const double value = by_hand(0, false, 0.06, 0.05, 0.05, 0.08, 91.0 / 183).first;
  EXPECT_NEAR(later.price(0.05, 0.05, 0.08), value - 3.0 * 92 / 183, 1e-9);
  // Annual coupons (type 540 asked for annual): the collateral factor per
  // period is (1 / (1 + yC/2))^2, so a zero-coupon bullet is still 100 / 1.03^6.
  BradyBond annual;
  annual.coupons = {0.0};
  annual.type = 540;
  annual.frequency = 1;
  EXPECT_NEAR(annual.price(0.05, 0.06, 0.09), 100.0 * std::pow(1.03, -6.0), 1e-9);
}

// A custom semi-annual actual/actual type prices like the generic 500.
TEST(BradyPrice, CustomTypeReadsItsDefinition) {
  const int32_t code = 1051, actual = 0, semi_annual = 2;
  ASSERT_EQ(KVLbcustom(code, &actual, nullptr, nullptr, &semi_annual, nullptr, nullptr, nullptr,
                       nullptr, nullptr, nullptr, nullptr),
            code);
  BradyBond generic, custom;
  custom.type = code;
  EXPECT_DOUBLE_EQ(custom.price(0.05, 0.045, 0.09), generic.price(0.05, 0.045, 0.09));
  EXPECT_EQ(custom.error, 0);
}

TEST(BradyYield, StrippedYieldRoundTrips) {
  for (const int32_t guaranteed : {0, 2, 4}) {
    for (const int32_t collateral : {0, 1}) {
      BradyBond bond;  // 15 years, 91 days into a period
      bond.settlement = civil_serial(2025, 9, 15);
      bond.dates = {civil_serial(2040, 6, 15)};
      bond.guaranteed = guaranteed;
      bond.collateral = collateral;
      for (const double ys : {0.0, 0.04, 0.12, 0.35}) {
        const double price = bond.price(0.05, 0.045, ys);
        ASSERT_EQ(bond.error, 0);
        EXPECT_NEAR(bond.yield(price, 0.05, 0.045), ys, 1e-9)
            << guaranteed << " " << collateral << " " << ys;
        EXPECT_EQ(bond.error, 0);
      }
    }
  }
  // A negative stripped yield, priced by hand (the price function refuses
  // negative rates), is found below the trial values.
  BradyBond plain;
  plain.guaranteed = plain.collateral = 0;
  EXPECT_NEAR(plain.yield(by_hand(0, false, 0.06, 0.05, 0.05, -0.03).first, 0.05, 0.05), -0.03,
              1e-9);
}

TEST(BradyErrors, EachExportReturnsItsFailureValueAndCode) {
  BradyBond bond, negative, unknown, after, all_guaranteed, absurd, at_102;
  negative.guaranteed = -1;
  unknown.type = 14;
  after.settlement = civil_serial(2028, 6, 16);
  all_guaranteed.guaranteed = 10;  // no stripped yield moves the price
  // The {rate, a, b} form redeems at b / a: a denormal a made that 6.8e305,
  // finite but absurd, and the price infinite.
  absurd.coupons = {0.05, 7.3343813807073023e-308, 0.05};
  struct Case {
    const char* what;
    std::function<double()> call;
    const BradyBond& bond;
    int32_t error;
  };
#define CALL(expr) [&] { return (expr); }
  const Case cases[] = {
      {"negative guarantee rate", CALL(bond.price(-0.01, 0.05, 0.08)), bond, 250},
      {"negative collateral rate", CALL(bond.price(0.05, -0.01, 0.08)), bond, 250},
      {"NaN stripped yield", CALL(bond.price(0.05, 0.05, std::nan(""))), bond, 250},
      {"negative guarantee count", CALL(negative.price(0.05, 0.05, 0.08)), negative, 460},
      {"duration, negative count", CALL(negative.duration(0.05, 0.05, 0.08)), negative, 460},
      {"unknown type", CALL(unknown.price(0.05, 0.05, 0.08)), unknown, 1},
      {"yield after maturity", CALL(after.yield(99.0, 0.05, 0.05)), after, 1},
      {"nothing stripped", CALL(all_guaranteed.yield(90.0, 0.05, 0.05)), all_guaranteed, 21},
      {"yield of price 0", CALL(bond.yield(0.0, 0.05, 0.05)), bond, 350},
      {"yield of price -1", CALL(bond.yield(-1.0, 0.05, 0.05)), bond, 350},
      {"yield, negative guarantee rate", CALL(bond.yield(99.0, -0.05, 0.05)), bond, 250},
      {"absurd redemption, price", CALL(absurd.price(0.045, 0.04, 0.09)), absurd, 1},
      {"absurd redemption, yield", CALL(absurd.yield(92.0, 0.045, 0.04)), absurd, 1},
      {"absurd redemption, duration", CALL(absurd.duration(0.045, 0.04, 0.09)), absurd, 1},
  };
#undef CALL
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(c.call(), -1.0);
    EXPECT_EQ(c.bond.error, c.error);
  }
  // A real redemption form, 102 / 100, has a larger collateralised
  // principal than par: a higher price at the same rates.
  at_102.coupons = {0.06, 100.0, 102.0};
  EXPECT_GT(at_102.price(0.045, 0.04, 0.09), bond.price(0.045, 0.04, 0.09));
  EXPECT_EQ(at_102.error, 0);
}

}  // namespace
}  // namespace kbond::testing
