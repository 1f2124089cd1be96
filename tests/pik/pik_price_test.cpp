// PIK prices: without in-kind coupons a PIK bond is a plain bond; with them
// the principal grows by each in-kind coupon; one period left is priced at
// simple interest; rounding by type.
#include <gtest/gtest.h>

#include <cmath>

#include "pik/pik_test_bond.h"

namespace kbond::testing {
namespace {

constexpr double kTight = 1e-9;

double straight_price(const std::vector<double>& coupons, const std::vector<int32_t>& dates,
                      int32_t settlement, double yield, int32_t type, int32_t* error) {
  return KVLbpr(coupons.data(), static_cast<int32_t>(coupons.size()), dates.data(),
                static_cast<int32_t>(dates.size()), settlement, yield, nullptr, nullptr, &type,
                nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, error);
}

TEST(PikPrice, ZeroInKindRatesPriceAsThePlainBond) {
  // With every in-kind rate 0 the principal never grows: KVLbpr on the same
  // cash coupons is an independent evaluation (its annuity closed form).
  for (int32_t type : {500, 510, 530, 540}) {
    PikBond bond;
    bond.type = type;
    bond.in_kind = {0.0};
    for (double y : {0.0, 0.03, 0.08, 0.15}) {
      int32_t straight_error = -1;
      const double expected =
          straight_price(bond.cash, bond.dates, bond.settlement, y, type, &straight_error);
      ASSERT_EQ(straight_error, 0);
      EXPECT_NEAR(bond.price(y), expected, kTight) << "type " << type << " yield " << y;
      EXPECT_EQ(bond.error, 0);
    }
  }
}

TEST(PikPrice, ZeroInKindRatesWithSteppedCashPriceAsTheSteppedBond) {
  PikBond bond;
  bond.cash = {0.05, 0.065, 0.08};
  bond.in_kind = {0.0, 0.0, 0.0};
  bond.dates = {civil_serial(2026, 6, 15), civil_serial(2028, 6, 15), civil_serial(2030, 6, 15)};
  int32_t straight_error = -1;
  const double expected =
      straight_price(bond.cash, bond.dates, bond.settlement, 0.07, 500, &straight_error);
  ASSERT_EQ(straight_error, 0);
  EXPECT_NEAR(bond.price(0.07), expected, kTight);
}

TEST(PikPrice, ZeroInKindRatesOnePeriodLeftPriceAsThePlainBond) {
  // KVLbpr prices the last period at simple interest as well.
  PikBond bond;
  bond.in_kind = {0.0};
  bond.settlement = civil_serial(2030, 2, 10);
  int32_t straight_error = -1;
  const double expected =
      straight_price(bond.cash, bond.dates, bond.settlement, 0.06, 500, &straight_error);
  ASSERT_EQ(straight_error, 0);
  EXPECT_NEAR(bond.price(0.06), expected, kTight);
}

TEST(PikPrice, PrincipalGrowsByEachInKindCoupon) {
  // Settled on a coupon date, three semi-annual periods left: 6% cash, 4% in
  // kind. By hand, per unit of face, with v = 1 / 1.05 (10% yield):
  //   t=1  cash 0.03                       principal then 1.02
  //   t=2  cash 0.03 * 1.02                principal then 1.02^2
  //   t=3  cash 0.03 * 1.02^2 + 1.02^3 (redemption of the grown principal)
  PikBond bond;
  bond.cash = {0.06};
  bond.in_kind = {0.04};
  bond.dates = {civil_serial(2026, 6, 15)};
  bond.settlement = civil_serial(2024, 12, 15);
  const double v = 1.0 / 1.05;
  const double expected =
      100.0 * (0.03 * v + 0.0306 * v * v + (0.030600 * 1.02 + 1.061208) * v * v * v);
  EXPECT_NEAR(bond.price(0.10), expected, kTight);
  EXPECT_EQ(bond.error, 0);

  int32_t* dates = nullptr;
  double *coupons = nullptr, *principal = nullptr, *periods = nullptr;
  ASSERT_EQ(bond.cash_flows(&dates, &coupons, &principal, &periods), 3);
  EXPECT_NEAR(coupons[0], 3.0, kTight);
  EXPECT_NEAR(coupons[1], 3.06, kTight);
  EXPECT_NEAR(coupons[2], 3.1212, kTight);
  EXPECT_EQ(principal[0], 0.0);
  EXPECT_EQ(principal[1], 0.0);
  EXPECT_NEAR(principal[2], 106.1208, kTight);
  EXPECT_EQ(dates[2], civil_serial(2026, 6, 15));
  EXPECT_NEAR(periods[0], 1.0, kTight);
  EXPECT_NEAR(periods[2], 3.0, kTight);
  KVLpikcshflw_free(dates, coupons, principal, periods);
}

TEST(PikPrice, SteppedInKindRatesCapitaliseTheRateOfEachPeriod) {
  // Step dates on the coupon grid: the period starting 15 Dec 2025 (after
  // the first step date) earns the second in-kind rate. Hand computation,
  // semi-annual, 0% yield so every flow counts in full:
  //   15 Jun 2025  cash 0.05/2 = 0.025          P = 1 + 0.02/2   = 1.01
  //   15 Dec 2025  cash 0.025 * 1.01 = 0.02525  P = 1.01 * 1.01  = 1.0201
  //   15 Jun 2026  cash 0.025 * 1.0201          P = 1.0201 * 1.03 (second rate 6%)
  //   redemption   P = 1.050703
  PikBond bond;
  bond.cash = {0.05};
  bond.in_kind = {0.02, 0.06};
  bond.dates = {civil_serial(2025, 12, 15), civil_serial(2026, 6, 15)};
  bond.settlement = civil_serial(2024, 12, 15);
  const double expected = 100.0 * (0.025 + 0.02525 + 0.0255025 + 1.050703);
  EXPECT_NEAR(bond.price(0.0), expected, kTight);
}

TEST(PikPrice, SinglePeriodDiscountsTheFinalAmountAtSimpleInterest) {
  // 15 Dec 2029 to 15 Jun 2030 is 182 days; settlement 15 Apr 2030 has run
  // 121 of them. Actual/actual semi-annual: tn = 61/364 years, accrued =
  // 121/364 * 0.08. Final amount 1 + 0.04 (cash) + 0.02 (in kind).
  PikBond bond;
  bond.settlement = civil_serial(2030, 4, 15);
  const double t = 61.0 / 364.0;
  const double accrued = 121.0 / 364.0 * 0.08;
  const double y = 0.07;
  EXPECT_NEAR(bond.price(y), (1.06 / (1.0 + t * y) - accrued) * 100.0, kTight);
  EXPECT_NEAR(bond.accrued(), accrued * 100.0, kTight);
}

TEST(PikPrice, VanishingSimpleInterestDenominatorIs401) {
  PikBond bond;
  bond.settlement = civil_serial(2030, 4, 15);
  const double t = 61.0 / 364.0;
  EXPECT_EQ(bond.price(-1.0 / t), -100.0);
  EXPECT_EQ(bond.error, 401);
  EXPECT_EQ(bond.price(std::nan("")), -100.0);
  EXPECT_EQ(bond.error, 401);
}

TEST(PikPrice, YieldOfMinusOnePeriodIs401) {
  PikBond bond;
  EXPECT_EQ(bond.price(-2.0), -100.0);
  EXPECT_EQ(bond.error, 401);
}

TEST(PikPrice, CallDateRedeemsAtTheCallDate) {
  // Called on a coupon date, the bond is the same bond maturing then.
  PikBond called;
  const int32_t call = civil_serial(2027, 12, 15);
  called.call = &call;
  PikBond shorter;
  shorter.dates = {call};
  EXPECT_NEAR(called.price(0.09), shorter.price(0.09), kTight);
  EXPECT_EQ(called.error, 0);
}

TEST(PikPrice, CallDateOffTheGridEndsWithABrokenPeriod) {
  // A full periodic coupon is paid at a call date inside a period, the
  // redemption discounted over the broken fraction: at 0% yield the price
  // is the sum of the flows.
  PikBond bond;
  bond.cash = {0.06};
  bond.in_kind = {0.04};
  bond.dates = {civil_serial(2026, 6, 15)};
  bond.settlement = civil_serial(2024, 12, 15);
  const int32_t call = civil_serial(2026, 3, 15);
  bond.call = &call;
  // 15 Jun 2025: 0.03, P 1.02; 15 Dec 2025: 0.0306, P 1.0404;
  // 15 Mar 2026: 0.031212 and redemption 1.0404 * 1.02.
  EXPECT_NEAR(bond.price(0.0), 100.0 * (0.03 + 0.0306 + 0.031212 + 1.061208), kTight);
}

TEST(PikPrice, BusinessDayPaymentMovesTheCouponToMonday) {
  // 15 Jun 2025 is a Sunday: paid Monday 16 Jun, one day of a 182-day
  // period later. Settled on 15 Dec 2024 the first flow's time grows from
  // 1 to 1 + 1/182 periods.
  PikBond bond;
  bond.dates = {civil_serial(2026, 6, 15)};
  bond.settlement = civil_serial(2024, 12, 15);
  const int32_t on = 1;
  bond.business_days = &on;
  int32_t* dates = nullptr;
  double* periods = nullptr;
  ASSERT_EQ(bond.cash_flows(&dates, nullptr, nullptr, &periods), 3);
  EXPECT_EQ(dates[0], civil_serial(2025, 6, 16));
  EXPECT_NEAR(periods[0], 1.0 + 1.0 / 182.0, kTight);
  KVLpikcshflw_free(dates, nullptr, nullptr, periods);
  const double moved = bond.price(0.09);
  bond.business_days = nullptr;
  EXPECT_LT(moved, bond.price(0.09));
}

TEST(PikPrice, RoundingByType) {
  // Type 3 accrues 30/360 like the generic type 530, which is unrounded:
  // corporate prices are truncated to three decimals, Treasury prices
  // (type 0, accruing like 500) rounded to six.
  PikBond corporate;
  corporate.type = 530;
  const double exact = corporate.price(0.0917);
  corporate.type = 3;
  EXPECT_DOUBLE_EQ(corporate.price(0.0917),
                   std::floor(std::floor(exact * 1e8 + 0.5) * 1e-5) * 0.001);
  PikBond treasury;
  const double generic = treasury.price(0.0917);
  treasury.type = 0;
  EXPECT_DOUBLE_EQ(treasury.price(0.0917), std::floor(generic * 1e6 + 0.5) * 1e-6);
}

}  // namespace
}  // namespace kbond::testing
