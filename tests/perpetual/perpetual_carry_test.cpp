// Carry, forward price and implied repo of a perpetual: the identities that
// tie them, and a hand computation without coupons in the period.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "perpetual/perpetual_test_bond.h"

namespace kbond::testing {
namespace {

TEST(PerpetualCarry, NoCouponInThePeriodSimpleInterest) {
  // 20 Jul to 20 Sep 2025 (62 days, before the 15 Dec coupon), generic
  // type: 360-day money-market year. Forward = (P + AI_start) * (1 + r *
  // 62/360) - AI_end, accrued 35/183 and 97/183 of the 3% coupon.
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 7, 20);
  const int32_t end = civil_serial(2025, 9, 20);
  const double price = 98.5, repo = 0.04;
  const double ai_start = 3.0 * 35.0 / 183.0, ai_end = 3.0 * 97.0 / 183.0;
  const double expected = (price + ai_start) * (1.0 + repo * 62.0 / 360.0) - ai_end;
  EXPECT_NEAR(bond.forward(end, price, repo, nullptr, nullptr), expected, 1e-10);
  EXPECT_EQ(bond.error, 0);
  EXPECT_NEAR(bond.carry(end, price, repo, nullptr), price - expected, 1e-10);
}

TEST(PerpetualCarry, ForwardIsPriceLessCarryAndRepoInvertsIt) {
  // Over a coupon date, for each financing mode.
  PerpetualBond bond = PerpetualBond{};
  bond.coupons = {0.05, 0.065};
  bond.steps = {civil_serial(2025, 12, 15), civil_serial(2026, 6, 15)};
  bond.settlement = civil_serial(2025, 9, 2);
  const int32_t end = civil_serial(2026, 3, 2);
  const double price = 104.25;
  for (int32_t mode : {0, 1, 2, 3, 4, 5}) {
    const double repo = 0.037;
    const double carry = bond.carry(end, price, repo, &mode);
    ASSERT_EQ(bond.error, 0) << mode;
    const double forward = bond.forward(end, price, repo, nullptr, &mode);
    EXPECT_NEAR(forward, price - carry, 1e-10) << mode;
    EXPECT_NEAR(bond.implied_repo(price, forward, end, nullptr, &mode), repo, 1e-5) << mode;
    EXPECT_EQ(bond.error, 0) << mode;
  }
}

TEST(PerpetualCarry, CouponInThePeriodByHand) {
  // Simple interest, no reinvestment: the 15 Dec coupon of 2.5 (5% rate in
  // force on that date) is income; financing on price + accrued over 181
  // days at 360, restarting at the coupon date on the financed amount.
  PerpetualBond bond;
  bond.coupons = {0.05, 0.065};
  bond.steps = {civil_serial(2025, 12, 15), civil_serial(2026, 6, 15)};
  bond.settlement = civil_serial(2025, 9, 2);
  const int32_t end = civil_serial(2026, 3, 2);
  const double price = 104.25, repo = 0.037;
  // 15 Jun -> 2 Sep 2025: 79 of 183 days at 5%; 15 Dec -> 2 Mar: 77 of 182 at 6.5%.
  const double ai_start = 2.5 * 79.0 / 183.0, ai_end = 3.25 * 77.0 / 182.0;
  const double cash = price + ai_start;
  const double first = cash * repo * 104.0 / 360.0;           // 2 Sep -> 15 Dec
  const double second = (cash + first) * repo * 77.0 / 360.0;  // 15 Dec -> 2 Mar
  const double carry = ai_end - ai_start + 2.5 - first - second;
  EXPECT_NEAR(bond.carry(end, price, repo, nullptr), carry, 1e-10);
}

TEST(PerpetualCarry, ReinvestmentRateOfTheForward) {
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 9, 2);
  const int32_t end = civil_serial(2026, 3, 2);
  const int32_t reinvest_mode = 1;
  const double negative = -1.0, higher = 0.08;
  const double at_repo = bond.forward(end, 100.0, 0.04, nullptr, &reinvest_mode);
  EXPECT_DOUBLE_EQ(bond.forward(end, 100.0, 0.04, &negative, &reinvest_mode), at_repo);
  // Reinvesting the December coupon at 8% rather than 4% earns more.
  EXPECT_LT(bond.forward(end, 100.0, 0.04, &higher, &reinvest_mode), at_repo);
}

TEST(PerpetualCarry, EndNotAfterSettlementIs160) {
  PerpetualBond bond;
  EXPECT_EQ(bond.carry(bond.settlement, 100.0, 0.04, nullptr), -999.0);
  EXPECT_EQ(bond.error, 160);
  EXPECT_EQ(bond.forward(bond.settlement - 1, 100.0, 0.04, nullptr, nullptr), -999.0);
  EXPECT_EQ(bond.error, 160);
  EXPECT_EQ(bond.implied_repo(100.0, 99.0, bond.settlement, nullptr, nullptr), -999.0);
  EXPECT_EQ(bond.error, 160);
}

TEST(PerpetualCarry, EndBeyondTheCalendarIsRefused) {
  PerpetualBond bond;
  EXPECT_EQ(bond.carry(INT32_MAX, 100.0, 0.04, nullptr), -1.0);
  EXPECT_EQ(bond.error, 1);
}

TEST(PerpetualCarry, ImpossibleForwardFindsNoRepo) {
  PerpetualBond bond;
  bond.settlement = civil_serial(2025, 7, 20);
  EXPECT_EQ(bond.implied_repo(100.0, 1e6, civil_serial(2025, 9, 20), nullptr, nullptr), -999.0);
  EXPECT_EQ(bond.error, 1);
}

}  // namespace
}  // namespace kbond::testing
