// What a PIK description accepts: the rate counts (with their deliberate
// asymmetry), the PIK types, the call date, and bad input of every kind.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "pik/pik_test_bond.h"

namespace kbond::testing {
namespace {

PikBond three_step_bond() {
  PikBond bond;
  bond.dates = {civil_serial(2026, 6, 15), civil_serial(2028, 6, 15), civil_serial(2030, 6, 15)};
  return bond;
}

TEST(PikSetup, SingleInKindRateNeedsSteppedCashRates) {
  PikBond bond = three_step_bond();
  bond.cash = {0.08};
  bond.in_kind = {0.04};
  EXPECT_EQ(bond.price(0.09), -1.0);
  EXPECT_EQ(bond.error, 1);

  bond.cash = {0.06, 0.07, 0.08};
  bond.price(0.09);
  EXPECT_EQ(bond.error, 0);
}

TEST(PikSetup, SingleCashRateMayAccompanySteppedInKindRates) {
  PikBond bond = three_step_bond();
  bond.cash = {0.08};
  bond.in_kind = {0.02, 0.03, 0.04};
  bond.price(0.09);
  EXPECT_EQ(bond.error, 0);
  bond.cash = {0.06, 0.07, 0.08};
  bond.price(0.09);
  EXPECT_EQ(bond.error, 0);
}

TEST(PikSetup, OtherRateCountsAreRefused) {
  PikBond bond = three_step_bond();
  bond.cash = {0.06, 0.07};
  bond.in_kind = {0.02, 0.03, 0.04};
  EXPECT_EQ(bond.price(0.09), -1.0);
  EXPECT_EQ(bond.error, 1);
  PikBond single;  // one step date: both counts must be 1
  single.in_kind = {0.02, 0.03};
  EXPECT_EQ(single.price(0.09), -1.0);
  EXPECT_EQ(single.error, 1);
}

TEST(PikSetup, OnlyTheTreasuryCorporateAndGenericTypes) {
  PikBond bond;
  for (int32_t type : {0, 3, 13, 500, 501, 510, 511, 530, 531, 540, 541}) {
    bond.type = type;
    bond.price(0.09);
    EXPECT_EQ(bond.error, 0) << type;
  }
  for (int32_t type : {1, 2, 40, 60, 200, 502, 520, 1000, -1, 9999}) {
    bond.type = type;
    EXPECT_EQ(bond.price(0.09), -1.0) << type;
    EXPECT_EQ(bond.error, 1) << type;
  }
}

TEST(PikSetup, EndOfMonthVariantPricesAsItsBaseMidMonth) {
  // 501 is 500 with the end-of-month rule, which a 15th-of-month grid
  // switches off again.
  PikBond bond;
  const double base = bond.price(0.09);
  bond.type = 501;
  EXPECT_DOUBLE_EQ(bond.price(0.09), base);
}

TEST(PikSetup, NullTypeIsTreasuryConventions) {
  PikBond bond;
  bond.type = 0;
  const double treasury = bond.price(0.09);
  const double y = 0.09;
  EXPECT_DOUBLE_EQ(KVLpikpr(bond.cash.data(), 1, bond.in_kind.data(), 1, bond.dates.data(), 1,
                            bond.settlement, y, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr, 0, nullptr),
                   treasury);
}

TEST(PikSetup, CallDateMustLieBetweenSettlementOrFirstCouponAndMaturity) {
  PikBond bond;
  const int32_t after_maturity = civil_serial(2030, 6, 16);
  const int32_t before_settlement = civil_serial(2025, 3, 19);
  const int32_t at_settlement = civil_serial(2025, 3, 20);
  bond.call = &after_maturity;
  EXPECT_EQ(bond.price(0.09), -1.0);
  EXPECT_EQ(bond.error, 1);
  bond.call = &before_settlement;
  EXPECT_EQ(bond.price(0.09), -1.0);
  EXPECT_EQ(bond.error, 1);
  // A dated date in the future puts the first coupon after a call at settlement.
  const int32_t dated = civil_serial(2025, 3, 15);
  const int32_t first = civil_serial(2025, 9, 15);
  bond.dated = &dated;
  bond.first = &first;
  bond.dates = {civil_serial(2030, 9, 15)};
  bond.call = &at_settlement;
  EXPECT_EQ(bond.price(0.09), -1.0);
  EXPECT_EQ(bond.error, 1);
}

TEST(PikSetup, BadInputGivesErrorOneAndMinusOne) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  struct Case {
    const char* what;
    void (*spoil)(PikBond&);
  };
  static const int32_t frequency_five = 5;
  static const double negative_redemption = -1.0;
  static const int32_t bad_date = -7;
  const Case cases[] = {
      {"cash rate NaN", [](PikBond& b) { b.cash = {nan}; }},
      {"in-kind rate infinite",
       [](PikBond& b) { b.in_kind = {std::numeric_limits<double>::infinity()}; }},
      {"no cash rates", [](PikBond& b) { b.cash.clear(); }},
      {"no step dates", [](PikBond& b) { b.dates.clear(); }},
      {"settlement after maturity", [](PikBond& b) { b.settlement = civil_serial(2030, 6, 16); }},
      {"settlement not a date", [](PikBond& b) { b.settlement = -3; }},
      {"step dates out of order",
       [](PikBond& b) {
         b.dates = {civil_serial(2030, 6, 15), civil_serial(2028, 6, 15)};
         b.cash = {0.07, 0.08};
       }},
      {"frequency 5", [](PikBond& b) { b.frequency = &frequency_five; }},
      {"negative redemption", [](PikBond& b) { b.redemption = &negative_redemption; }},
      {"negative holiday count", [](PikBond& b) { b.n_holidays = -1; }},
      {"holidays counted but absent", [](PikBond& b) { b.n_holidays = 3; }},
      {"dated date not a date", [](PikBond& b) { b.dated = &bad_date; }},
  };
  for (const Case& c : cases) {
    PikBond bond;
    c.spoil(bond);
    EXPECT_EQ(bond.price(0.09), -1.0) << c.what;
    EXPECT_EQ(bond.error, 1) << c.what;
    EXPECT_EQ(bond.yield(95.0), -1.0) << c.what;
    EXPECT_EQ(bond.error, 1) << c.what;
    if (bond.redemption == nullptr && bond.n_holidays == 0) {
      EXPECT_EQ(bond.accrued(), -1.0) << c.what;
      EXPECT_EQ(bond.error, 1) << c.what;
    }
  }
}

TEST(PikSetup, NullArraysWithCountsAndNullErrorPointer) {
  const int32_t maturity = civil_serial(2030, 6, 15);
  const double rate = 0.05;
  EXPECT_EQ(KVLpikpr(nullptr, 1, &rate, 1, &maturity, 1, civil_serial(2025, 1, 1), 0.05, nullptr,
                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                     nullptr),
            -1.0);
  int32_t error = 0;
  EXPECT_EQ(KVLpikai(&rate, 1, nullptr, 1, &maturity, 1, civil_serial(2025, 1, 1), nullptr,
                     nullptr, nullptr, nullptr, &error),
            -1.0);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(KVLpikai(&rate, 1, &rate, 1, nullptr, 1, civil_serial(2025, 1, 1), nullptr, nullptr,
                     nullptr, nullptr, &error),
            -1.0);
  EXPECT_EQ(error, 1);
}

}  // namespace
}  // namespace kbond::testing
