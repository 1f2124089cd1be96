// Bad input to KVLbpr, KVLbai and KVLbai1: every malformed call returns
// error 1 and the failure value -1.0, never crashes, and a NULL error
// pointer is always allowed.
#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "straight_bond.h"

namespace kbond::testing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

const int32_t kSettle = ymd(2025, 3, 10);

StraightBond good_bond() { return StraightBond(0.05, ymd(2030, 6, 15), 0); }

// Each case spoils one argument of a good bond.
struct BadCase {
  const char* what;
  std::function<void(StraightBond&)> spoil;
};

std::vector<BadCase> bad_cases() {
  return {
      {"no coupons", [](StraightBond& b) { b.coupons.clear(); }},
      {"NaN coupon", [](StraightBond& b) { b.coupons = {kNaN}; }},
      {"infinite coupon", [](StraightBond& b) { b.coupons = {kInf}; }},
      {"no dates", [](StraightBond& b) { b.dates.clear(); }},
      {"maturity 0", [](StraightBond& b) { b.dates = {0}; }},
      {"maturity beyond the last serial", [](StraightBond& b) { b.dates = {1825001}; }},
      {"unknown type", [](StraightBond& b) { b.type = 10; }},
      {"undefined custom type", [](StraightBond& b) { b.type = 1077; }},
      {"frequency 5", [](StraightBond& b) { b.frequency = {5}; }},
      {"frequency 24", [](StraightBond& b) { b.frequency = {24}; }},
      {"dated date after first coupon",
       [](StraightBond& b) {
         b.dated = ymd(2025, 7, 1);
         b.first = ymd(2025, 6, 15);
       }},
      {"negative dated date", [](StraightBond& b) { b.dated = -3; }},
      {"factor above 1",
       [](StraightBond& b) {
         b.factor = 1.5;
         b.sink_dates = {ymd(2027, 6, 15)};
         b.sink_amounts = {0.1};
       }},
      {"factor without sinking dates", [](StraightBond& b) { b.factor = -1.0; }},
      {"NaN factor",
       [](StraightBond& b) {
         b.factor = kNaN;
         b.sink_dates = {ymd(2027, 6, 15)};
       }},
      {"NaN coupon tax", [](StraightBond& b) { b.coupon_tax = kNaN; }},
  };
}

TEST(PriceBadInput, EachSpoiledArgumentGivesError1AndMinusOne) {
  for (const auto& c : bad_cases()) {
    StraightBond b = good_bond();
    c.spoil(b);
    int32_t err = 0;
    EXPECT_EQ(b.price(kSettle, 0.05, &err), -1.0) << c.what;
    EXPECT_EQ(err, 1) << c.what;
    EXPECT_EQ(b.price(kSettle, 0.05, nullptr), -1.0) << c.what;
  }
}

TEST(AccruedBadInput, EachSpoiledArgumentGivesError1AndMinusOne) {
  for (const auto& c : bad_cases()) {
    StraightBond b = good_bond();
    c.spoil(b);
    int32_t err = 0, err1 = 0;
    EXPECT_EQ(b.accrued(kSettle, &err), -1.0) << c.what;
    EXPECT_EQ(err, 1) << c.what;
    EXPECT_EQ(b.accrued1(kSettle, &err1), -1.0) << c.what;
    EXPECT_EQ(err1, 1) << c.what;
    EXPECT_EQ(b.accrued(kSettle, nullptr), -1.0) << c.what;
  }
}

TEST(PriceBadInput, NonFiniteYieldAndBadSettlement) {
  const StraightBond b = good_bond();
  int32_t err = 0;
  EXPECT_EQ(b.price(kSettle, kNaN, &err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(b.price(kSettle, kInf, &err), -1.0);
  EXPECT_EQ(err, 1);
  for (int32_t settle : {0, -1, 1825001, ymd(2030, 6, 16)}) {
    err = 0;
    EXPECT_EQ(b.price(settle, 0.05, &err), -1.0) << settle;
    EXPECT_EQ(err, 1) << settle;
    err = 0;
    EXPECT_EQ(b.accrued(settle, &err), -1.0) << settle;
    EXPECT_EQ(err, 1) << settle;
  }
}

TEST(PriceBadInput, NegativeCountsAndMissingArrays) {
  const double coupon = 0.05;
  const int32_t maturity = ymd(2030, 6, 15);
  int32_t err = 0;
  // Negative coupon count.
  EXPECT_EQ(KVLbpr(&coupon, -1, &maturity, 1, kSettle, 0.05, nullptr, nullptr, nullptr, nullptr,
                   0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                   nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 1);
  // Frequency count without the array.
  err = 0;
  EXPECT_EQ(KVLbpr(&coupon, 1, &maturity, 1, kSettle, 0.05, nullptr, nullptr, nullptr, nullptr,
                   1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                   nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 1);
  // Negative holiday count and a holiday count without the list.
  for (int32_t n : {-1, 2}) {
    err = 0;
    EXPECT_EQ(KVLbai1(&coupon, 1, &maturity, 1, kSettle, nullptr, nullptr, nullptr, nullptr, 0,
                      nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                      nullptr, n, &err),
              -1.0);
    EXPECT_EQ(err, 1);
  }
  // Negative sinking counts.
  const double factor = -1.0;
  err = 0;
  EXPECT_EQ(KVLbai(&coupon, 1, &maturity, 1, kSettle, nullptr, nullptr, nullptr, nullptr, 0,
                   nullptr, &factor, &maturity, -1, nullptr, 0, nullptr, nullptr, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 1);
}

TEST(PriceBadInput, EveryOptionalPointerMayBeNull) {
  // With all optional arguments NULL the bond is a U.S. Treasury.
  const double coupon = 0.0425;
  const int32_t maturity = ymd(2034, 11, 15);
  int32_t err = -1;
  const double price =
      KVLbpr(&coupon, 1, &maturity, 1, ymd(2024, 12, 2), 0.042, nullptr, nullptr, nullptr, nullptr,
             0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
             nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &err);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(price, 100.401459, 1e-6);
  const double accrued = KVLbai(&coupon, 1, &maturity, 1, ymd(2024, 12, 2), nullptr, nullptr,
                                nullptr, nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr, 0,
                                nullptr, nullptr, nullptr, nullptr);
  EXPECT_NEAR(accrued, 2.125 * 17.0 / 181.0, 1e-12);
  // Successful calls reset a stale error code.
  err = 99;
  KVLbai1(&coupon, 1, &maturity, 1, ymd(2024, 12, 2), nullptr, nullptr, nullptr, nullptr, 0,
          nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
          &err);
  EXPECT_EQ(err, 0);
}

}  // namespace
}  // namespace kbond::testing
