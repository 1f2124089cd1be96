// Perpetual exports on bad or extreme input: each fails with its code and
// failure value, or succeeds cleanly. Many rows come from the fuzz harness,
// where such inputs came back as infinities, NaN or a stale error code.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <utility>

#include "perpetual/perpetual_test_bond.h"

namespace kbond::testing {
namespace {

TEST(PerpetualFailures, InconsistentDescriptionsAreErrorOne) {
  static const int32_t frequency_five = 5, after_settlement = civil_serial(2025, 7, 1);
  struct Case { const char* what; void (*spoil)(PerpetualBond&); } const cases[] = {
      {"no coupon", [](PerpetualBond& b) { b.coupons.clear(); }},
      {"steps out of order",
       [](PerpetualBond& b) { b.coupons = {0.04, 0.06}, b.steps = {civil_serial(2030, 1, 1), civil_serial(2029, 1, 1)}; }},
      {"rate NaN", [](PerpetualBond& b) { b.coupons = {std::nan("")}; }},
      {"rate 1e300 a year", [](PerpetualBond& b) { b.coupons = {1e300}; }},
      {"unknown type", [](PerpetualBond& b) { b.type = 23; }},
      {"frequency 5", [](PerpetualBond& b) { b.frequency = &frequency_five; }},
      {"dated date after settlement", [](PerpetualBond& b) { b.dated = &after_settlement; }},
      {"negative holiday count", [](PerpetualBond& b) { b.n_holidays = -1; }},
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
  // A holiday count without a list is an empty list, as in every business-day rule.
  PerpetualBond plain, counted;
  counted.n_holidays = 2;
  EXPECT_EQ(counted.price(0.05), plain.price(0.05));
  EXPECT_EQ(counted.error, 0);
  // Step dates counted without an array, and a NULL error pointer.
  const double rate = 0.05;
  EXPECT_EQ(KVLpbpr(&rate, 1, civil_serial(2020, 6, 15), civil_serial(2025, 6, 15), 0.05, nullptr, 2, nullptr, nullptr,
                    nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr),
            -1.0);
  EXPECT_EQ(KVLpbai(nullptr, 1, civil_serial(2020, 6, 15), civil_serial(2025, 6, 15), nullptr, 0, nullptr, nullptr,
                    nullptr, nullptr, nullptr, 0, nullptr, nullptr),
            -1.0);
  const int32_t unknown = 14;
  int32_t error = 0;
  EXPECT_EQ(KVLpbcpn(civil_serial(2000, 3, 31), civil_serial(2025, 5, 10), nullptr, nullptr, &unknown, nullptr, &error),
            -1);
  EXPECT_EQ(error, 1);
  // Coupon numbers of +-2^31 from a reference date after or long before
  // settlement: no wrapped index, no date.
  for (const auto& [k, reference] : {std::pair{INT32_MIN, 45352}, {INT32_MAX, 45352}, {INT32_MAX, 60}, {INT32_MIN, 60}}) {
    EXPECT_EQ(KVLpbcpn(reference, 45351, &k, nullptr, nullptr, nullptr, &error), -1);
    EXPECT_EQ(error, 1);
  }
}

TEST(PerpetualFailures, EachExportReportsItsCode) {
  static const int32_t braess = -3, simple = -2;
  static const double zero = 0.0, negative = -2.0, nan = std::nan(""), denormal = 2e-311;
  static const double absurd_tax = -1.2301860863957261e308;
  static const int32_t issued = civil_serial(2025, 8, 15), sep20 = civil_serial(2025, 9, 20);
  using B = PerpetualBond;
  struct Case { const char* what; std::function<double(B&)> call; double value; int32_t code; } const cases[] = {
      {"Braess has no perpetual form", [](B& b) { b.rule = &braess; return b.price(0.05); }, -1.0, 460},
      {"zero yield", [](B& b) { return b.price(0.0); }, -1.0, 401},
      {"1 + y/f = 0", [](B& b) { return b.price(-2.0); }, -1.0, 401},
      // 100 c / y with y = 5e-320 overflows exactly as y = 0 divides by zero,
      // under the explicit sum and the perpetuity formula alike.
      {"denormal yield", [](B& b) { return b.price(5e-320); }, -1.0, 401},
      {"denormal yield, rule -2", [](B& b) { b.rule = &simple; return b.price(5e-320); }, -1.0, 401},
      {"denormal yield value of a bp", [](B& b) { return b.value_of_bp(5e-320, nullptr); }, -999.0, 401},
      // U.S. Treasury rounding to six decimals: 6e303 is finite, its millionths are not.
      {"Treasury rounding overflows",
       [](B& b) { b.type = 0, b.rule = &simple; return b.price(1e-303); }, -1.0, 401},
      {"price NaN", [](B& b) { return b.yield(nan); }, -1.0, 350},
      {"zero scale", [](B& b) { return b.value_of_bp(0.05, &zero); }, -999.0, 310},
      {"negative ticks", [](B& b) { return b.value_of_32nd(0.05, &negative); }, -999.0, 310},
      {"denormal scale", [](B& b) { return b.value_of_bp(0.05, &denormal); }, -999.0, 401},
      // A perpetual paying nothing: a tick is worth no finite yield change.
      {"tick without a price movement", [](B& b) { b.coupons = {0.0}; return b.value_of_32nd(0.05, nullptr); }, -999.0, 401},
      {"convexity at zero yield", [](B& b) { return b.convexity(0.0); }, -999.0, 401},
      {"convexity, unknown type", [](B& b) { b.type = 15; return b.convexity(0.05); }, -1.0, 1},
      {"settling before the issue date",
       [](B& b) { b.reference = civil_serial(2025, 12, 15), b.dated = &issued, b.settlement = civil_serial(2025, 8, 1);
                  return b.price(0.05); }, -1.0, 1},
      // A tax of -1.2e308 made the net coupon overflow with error 0.
      {"absurd tax, accrued", [](B& b) { b.tax = &absurd_tax; return b.accrued(); }, -1.0, 1},
      {"absurd tax, coupon amount", [](B& b) { b.tax = &absurd_tax; return b.coupon_amount(); }, -1.0, 1},
      {"carry end on settlement", [](B& b) { return b.carry(b.settlement, 100.0, 0.04, nullptr); }, -999.0, 160},
      {"repo end on settlement", [](B& b) { return b.implied_repo(100.0, 99.0, b.settlement, nullptr, nullptr); }, -999.0,
       160},
      {"end beyond the calendar", [](B& b) { return b.carry(INT32_MAX, 100.0, 0.04, nullptr); }, -1.0, 1},
      {"no repo reproduces the forward", [](B& b) { return b.implied_repo(100.0, 1e6, sep20, nullptr, nullptr); }, -999.0,
       1},
      // A repo rate or price that is not a number came back as a NaN carry
      // with error 0; overflowing ones as infinities.
      {"carry at a NaN repo", [](B& b) { return b.carry(sep20, 98.5, nan, nullptr); }, -1.0, 1},
      {"forward at a NaN repo", [](B& b) { return b.forward(sep20, 98.5, nan, nullptr, nullptr); }, -1.0, 1},
      {"forward overflowing", [](B& b) { return b.forward(sep20, 1.7e308, 1e300, nullptr, nullptr); }, -1.0, 1},
  };
  for (const Case& c : cases) {
    PerpetualBond bond;
    bond.settlement = civil_serial(2025, 7, 20);
    EXPECT_EQ(c.call(bond), c.value) << c.what;
    EXPECT_EQ(bond.error, c.code) << c.what;
  }
  // Next to those failures, sane inputs still succeed: 100 x 0.06 / 0.05
  // under Treasury rounding, and a zero basis-point value paying nothing.
  PerpetualBond treasury, zero_coupon;
  treasury.type = 0;
  treasury.rule = &simple;
  zero_coupon.coupons = {0.0};
  EXPECT_NEAR(treasury.price(0.05), 120.0, 1e-6);
  EXPECT_EQ(zero_coupon.value_of_bp(0.05, nullptr), 0.0);
  EXPECT_EQ(treasury.error + zero_coupon.error, 0);
}

}  // namespace
}  // namespace kbond::testing
