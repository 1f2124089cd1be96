// PIK bonds: prices against the plain bond and hand computations of the
// capitalised principal; price, yield, cash-flow table and risk measures
// that agree with each other; what a description accepts; rounding.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "pik/pik_test_bond.h"

namespace kbond::testing {
namespace {

constexpr double kTight = 1e-9;

PikBond stepped(std::vector<double> cash, std::vector<double> in_kind) {
  PikBond bond;
  bond.cash = std::move(cash);
  bond.in_kind = std::move(in_kind);
  bond.dates = {civil_serial(2026, 6, 15), civil_serial(2028, 6, 15), civil_serial(2030, 6, 15)};
  return bond;
}

// With every in-kind rate 0 the principal never grows: KVLbpr on the same
// cash coupons is an independent evaluation (its annuity closed form, and
// simple interest over the last period).
TEST(PikPrice, ZeroInKindRatesPriceAsThePlainBond) {
  std::vector<PikBond> bonds = {stepped({0.05, 0.065, 0.08}, {0.0, 0.0, 0.0})};
  for (const int32_t type : {510, 540}) {
    bonds.push_back(PikBond());
    bonds.back().type = type;
    bonds.back().in_kind = {0.0};
  }
  bonds.push_back(bonds.back());
  bonds.back().settlement = civil_serial(2030, 2, 10);
  for (PikBond& bond : bonds) {
    for (const double y : {0.0, 0.03, 0.08, 0.15}) {
      int32_t err = -1;
      const double plain = KVLbpr(
          bond.cash.data(), static_cast<int32_t>(bond.cash.size()), bond.dates.data(),
          static_cast<int32_t>(bond.dates.size()), bond.settlement, y, nullptr, nullptr,
          &bond.type, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
          nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &err);
      ASSERT_EQ(err, 0);
      EXPECT_NEAR(bond.price(y), plain, kTight) << "type " << bond.type << " at " << y;
    }
  }
}

// Settled 15 Dec 2024 on a coupon date, 6 % cash and 4 % in kind to 15 Jun
// 2026. Per unit of face, semi-annually: cash 0.03, then 0.03 x 1.02, then
// 0.03 x 1.02^2 with the grown principal 1.02^3 = 1.061208.
TEST(PikPrice, PrincipalGrowsByEachInKindCoupon) {
  PikBond bond;
  bond.cash = {0.06};
  bond.dates = {civil_serial(2026, 6, 15)};
  bond.settlement = civil_serial(2024, 12, 15);
  const double v = 1.0 / 1.05;  // 10 % yield
  EXPECT_NEAR(bond.price(0.10), 100.0 * (0.03 * v + 0.0306 * v * v + 1.092420 * v * v * v),
              kTight);
  // Called off the grid on 15 Mar 2026: a full coupon there and the grown
  // principal, at 0 % the plain sum of the flows.
  bond.call = civil_serial(2026, 3, 15);
  EXPECT_NEAR(bond.price(0.0), 100.0 * (0.03 + 0.0306 + 0.031212 + 1.061208), kTight);
  // Stepped in-kind rates: the period from 15 Dec 2025 (after the first
  // step date) earns the second rate, 6 %: 5 % cash on 1.01, 1.0201, and
  // the redemption 1.0201 x 1.03.
  PikBond steps;
  steps.cash = {0.05};
  steps.in_kind = {0.02, 0.06};
  steps.dates = {civil_serial(2025, 12, 15), civil_serial(2026, 6, 15)};
  steps.settlement = civil_serial(2024, 12, 15);
  EXPECT_NEAR(steps.price(0.0), 100.0 * (0.025 + 0.02525 + 0.0255025 + 1.050703), kTight);
}

// 15 Dec 2029 to 15 Jun 2030 is 182 days; on 15 Apr 2030 121 have run.
// Actual/actual semi-annual: t = 61/364 years, accrued 121/364 x 0.08, the
// final amount 1 + 0.04 cash + 0.02 in kind, paid at simple interest.
TEST(PikPrice, LastPeriodAtSimpleInterest) {
  PikBond bond;
  bond.settlement = civil_serial(2030, 4, 15);
  const double t = 61.0 / 364, accrued = 121.0 / 364 * 0.08;
  EXPECT_NEAR(bond.price(0.07), (1.06 / (1.0 + t * 0.07) - accrued) * 100.0, kTight);
  EXPECT_NEAR(bond.accrued(), accrued * 100.0, kTight);
  EXPECT_NEAR(bond.yield(99.5), (1.06 / (0.995 + accrued) - 1.0) / t, 1e-12);
  // From the last coupon date nothing has accrued: 106 paid for 106 is 0 %,
  // par is 6 % over half a year.
  bond.settlement = civil_serial(2029, 12, 15);
  EXPECT_EQ(bond.yield(106.0), 0.0);
  EXPECT_NEAR(bond.yield(100.0), 0.12, 1e-12);
}

// For each shape the yield gives back the yield priced at (the solver stops
// within 1e-6 of face), the table's rows at (1 + y/f)^-periods (at simple
// interest over a last period) less the accrued interest give back the
// price, the modified duration is the
// relative price slope, Macaulay that times 1 + y/f, and the value of a
// basis point the price slope x 1e-4 (a 32nd worth 1 / (32 x that) bp).
TEST(PikShapes, PriceYieldTableAndRiskAgree) {
  std::vector<PikBond> shapes = {PikBond(), stepped({0.0, 0.04, 0.06}, {0.10, 0.06, 0.0}),
                                 PikBond(), PikBond(), PikBond()};
  shapes[2].call = civil_serial(2029, 9, 1);
  shapes[3].business_days = 1;  // 15 Jun 2025 is a Sunday
  shapes[4].frequency = 4;      // quarterly, called off the grid
  shapes[4].call = civil_serial(2028, 8, 1);
  shapes.push_back(stepped({0.03, 0.07}, {0.06, 0.02}));
  shapes.back().dates = {civil_serial(2026, 6, 15), civil_serial(2030, 6, 15)};
  shapes.push_back(shapes.back());
  shapes.back().settlement = civil_serial(2030, 2, 1);  // one period left
  const int32_t macaulay = 1;
  for (PikBond& bond : shapes) {
    const double f = bond.frequency ? *bond.frequency : 2.0;
    for (const double y : {-0.02, 0.05, 0.12, 0.35}) {
      SCOPED_TRACE(::testing::Message() << "shape " << &bond - shapes.data() << " at " << y);
      const double price = bond.price(y), accrued = bond.accrued();
      ASSERT_EQ(bond.error, 0);
      EXPECT_NEAR(bond.yield(price), y, 1e-5);
      PikTable t(bond);
      double value = 0.0;
      for (int32_t i = 0; i < t.rows; ++i) {
        const double discount = t.rows == 1 ? 1.0 / (1.0 + y * t.periods[i] / f)
                                            : std::pow(1.0 + y / f, -t.periods[i]);
        value += (t.coupons[i] + t.principal[i]) * discount;
      }
      EXPECT_NEAR(value - accrued, price, kTight);
      const double h = 1e-6, slope = (bond.price(y + h) - bond.price(y - h)) / (2 * h);
      const double duration = bond.duration(y);
      EXPECT_NEAR(duration, -slope / (price + accrued), 1e-6);
      EXPECT_NEAR(bond.duration(y, &macaulay), duration * (1.0 + y / f), 1e-12);
      const double bp = bond.value_of_bp(y), scale = 50.0;
      EXPECT_NEAR(bp, -slope * 1e-4, 1e-8);
      EXPECT_NEAR(bond.value_of_bp(y, &scale), 2.0 * bp, 2e-8);
      EXPECT_DOUBLE_EQ(bond.value_of_32nd(y), 1.0 / (32.0 * bp));
    }
  }
}

// Treasury (0), corporate (3, 13) and generic (5xx) types only. Over three
// step dates a single in-kind rate needs stepped cash rates; a single cash
// rate may go with stepped in-kind rates; no other counts.
TEST(PikSetup, TypesAndRateCounts) {
  PikBond bond;
  for (const int32_t type : {0, 13, 511, 531, 541}) {
    bond.type = type;
    bond.price(0.09);
    EXPECT_EQ(bond.error, 0) << type;
  }
  for (const int32_t type : {2, 60, 502, 520, -1}) {
    bond.type = type;
    EXPECT_EQ(bond.price(0.09), -1.0) << type;
    EXPECT_EQ(bond.error, 1) << type;
  }
  struct Case {
    std::vector<double> cash, in_kind;
    int32_t error;
  };
  const std::vector<double> one = {0.08}, two = {0.06, 0.07}, three = {0.02, 0.03, 0.04};
  for (const Case& c : {Case{one, one, 1}, Case{three, one, 0}, Case{one, three, 0},
                        Case{two, three, 1}, Case{three, three, 0}}) {
    PikBond b = stepped(c.cash, c.in_kind);
    b.price(0.09);
    EXPECT_EQ(b.error, c.error) << c.cash.size() << " cash, " << c.in_kind.size() << " in kind";
  }
  // A NULL type is the Treasury's.
  bond.type = 0;
  EXPECT_DOUBLE_EQ(KVLpikpr(bond.cash.data(), 1, bond.in_kind.data(), 1, bond.dates.data(), 1,
                            bond.settlement, 0.09, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr, 0, nullptr),
                   bond.price(0.09));
}

// Corporate prices (3) are the 30/360 generic price (530) truncated to three
// decimals; Treasury yields (0) round to eight.
TEST(PikSetup, RoundingByType) {
  PikBond bond;
  bond.type = 530;
  const double corporate = bond.price(0.0917);
  bond.type = 3;
  EXPECT_DOUBLE_EQ(bond.price(0.0917), std::floor(std::floor(corporate * 1e8 + 0.5) * 1e-5) * 1e-3);
  bond.type = 0;
  const double y = bond.yield(97.25);
  EXPECT_DOUBLE_EQ(y, std::floor(y * 1e8 + 0.5) * 1e-8);
}

}  // namespace
}  // namespace kbond::testing
