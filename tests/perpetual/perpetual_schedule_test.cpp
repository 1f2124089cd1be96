// The perpetual description: coupon dates of the cycle, coupon amount,
// inconsistent arguments and custom types.
#include <gtest/gtest.h>

#include <cmath>

#include "perpetual/perpetual_test_bond.h"

namespace kbond::testing {
namespace {

TEST(PerpetualSchedule, CouponDatesAroundSettlement) {
  const int32_t reference = civil_serial(2000, 3, 31);
  const int32_t settlement = civil_serial(2025, 5, 10);
  const int32_t type = 500;
  int32_t error = -1;
  const int32_t next = 1, previous = -1;
  // Quarterly on month ends (the 31st turns the end-of-month rule on).
  const int32_t quarterly = 4;
  EXPECT_EQ(KVLpbcpn(reference, settlement, nullptr, nullptr, &type, &quarterly, &error),
            civil_serial(2025, 3, 31));
  EXPECT_EQ(error, 0);
  EXPECT_EQ(KVLpbcpn(reference, settlement, &next, nullptr, &type, &quarterly, &error),
            civil_serial(2025, 6, 30));
  EXPECT_EQ(KVLpbcpn(reference, settlement, &previous, nullptr, &type, &quarterly, &error),
            civil_serial(2024, 12, 31));
  // A date before the first step date does not exist.
  const int32_t first_step = civil_serial(2025, 4, 1);
  EXPECT_EQ(KVLpbcpn(reference, settlement, nullptr, &first_step, &type, &quarterly, &error), -1);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(KVLpbcpn(reference, settlement, &next, &first_step, &type, &quarterly, &error),
            civil_serial(2025, 6, 30));
  EXPECT_EQ(error, 0);
  const int32_t unknown = 14;
  EXPECT_EQ(KVLpbcpn(reference, settlement, nullptr, nullptr, &unknown, nullptr, &error), -1);
  EXPECT_EQ(error, 1);
}

TEST(PerpetualSchedule, CouponAmountAtTheRateInForce) {
  PerpetualBond bond;
  const double tax = 0.2;
  bond.tax = &tax;
  EXPECT_NEAR(bond.coupon_amount(), 100.0 * 0.03 * 0.8, 1e-12);
  bond.coupons = {0.04, 0.06};
  bond.steps = {civil_serial(2025, 12, 15), civil_serial(2026, 6, 15)};
  EXPECT_NEAR(bond.coupon_amount(), 100.0 * 0.02 * 0.8, 1e-12);
  bond.settlement = civil_serial(2025, 12, 20);
  EXPECT_NEAR(bond.coupon_amount(), 100.0 * 0.03 * 0.8, 1e-12);
}

TEST(PerpetualSchedule, InconsistentArgumentsAreErrorOne) {
  struct Case {
    const char* what;
    void (*spoil)(PerpetualBond&);
  };
  static const int32_t frequency_five = 5;
  static const int32_t after_settlement = civil_serial(2025, 7, 1);
  const Case cases[] = {
      {"no coupon", [](PerpetualBond& b) { b.coupons.clear(); }},
      {"two rates, one step",
       [](PerpetualBond& b) {
         b.coupons = {0.04, 0.06};
         b.steps = {civil_serial(2030, 1, 1)};
       }},
      {"steps out of order",
       [](PerpetualBond& b) {
         b.coupons = {0.04, 0.06};
         b.steps = {civil_serial(2030, 1, 1), civil_serial(2029, 1, 1)};
       }},
      {"rate NaN", [](PerpetualBond& b) { b.coupons = {std::nan("")}; }},
      {"unknown type", [](PerpetualBond& b) { b.type = 23; }},
      {"frequency 5", [](PerpetualBond& b) { b.frequency = &frequency_five; }},
      {"dated date after settlement", [](PerpetualBond& b) { b.dated = &after_settlement; }},
      {"negative holiday count", [](PerpetualBond& b) { b.n_holidays = -1; }},
      {"holidays counted, none given", [](PerpetualBond& b) { b.n_holidays = 2; }},
      {"reference date invalid", [](PerpetualBond& b) { b.reference = 0; }},
      {"settlement invalid", [](PerpetualBond& b) { b.settlement = -5; }},
  };
  for (const Case& c : cases) {
    PerpetualBond bond;
    c.spoil(bond);
    EXPECT_EQ(bond.price(0.05), -1.0) << c.what;
    EXPECT_EQ(bond.error, 1) << c.what;
    EXPECT_EQ(bond.yield(100.0), -1.0) << c.what;
    EXPECT_EQ(bond.error, 1) << c.what;
    EXPECT_EQ(bond.carry(civil_serial(2025, 12, 1), 100.0, 0.04, nullptr), -1.0) << c.what;
    EXPECT_EQ(bond.error, 1) << c.what;
  }
  // Step dates counted without an array, and a NULL error pointer.
  const double rate = 0.05;
  EXPECT_EQ(KVLpbpr(&rate, 1, civil_serial(2020, 6, 15), civil_serial(2025, 6, 15), 0.05, nullptr,
                    2, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr),
            -1.0);
  EXPECT_EQ(KVLpbai(nullptr, 1, civil_serial(2020, 6, 15), civil_serial(2025, 6, 15), nullptr, 0,
                    nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr),
            -1.0);
}

TEST(PerpetualSchedule, CustomTypeFollowsItsDefinition) {
  // A custom annual 30E/360 type prices like the built-in annual 30E/360
  // type 540 at annual frequency.
  const int32_t code = 1077, basis = 2, annual = 1;
  ASSERT_EQ(KVLbcustom(code, &basis, nullptr, nullptr, &annual, nullptr, nullptr, nullptr,
                       nullptr, nullptr, nullptr, nullptr),
            code);
  PerpetualBond custom;
  custom.type = code;
  custom.settlement = civil_serial(2025, 9, 20);
  PerpetualBond generic = custom;
  generic.type = 540;
  generic.frequency = &annual;
  EXPECT_NEAR(custom.price(0.05), generic.price(0.05), 1e-12);
  EXPECT_EQ(custom.error, 0);
}

}  // namespace
}  // namespace kbond::testing
