// Bad input to the PIK exports, and the extreme inputs the fuzz harness
// found reaching them as infinities or NaN: absurd rates are an invalid
// description, overflowing discount factors a vanishing denominator (401,
// -100.0), overflowing quotients error 401 or 460.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include "pik/pik_test_bond.h"

namespace kbond::testing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Each spoiled description is error 1 and -1.0 from price, yield and
// accrued interest (which takes no redemption or holidays).
TEST(PikErrors, EachSpoiledDescriptionIsError1) {
  const std::pair<const char*, std::function<void(PikBond&)>> cases[] = {
      {"cash rate NaN", [](PikBond& b) { b.cash = {kNaN}; }},
      {"no cash rates", [](PikBond& b) { b.cash.clear(); }},
      {"settlement after maturity", [](PikBond& b) { b.settlement = civil_serial(2030, 6, 16); }},
      {"step dates out of order",
       [](PikBond& b) {
         b.dates = {civil_serial(2030, 6, 15), civil_serial(2028, 6, 15)};
         b.cash = {0.07, 0.08};
       }},
      {"frequency 5", [](PikBond& b) { b.frequency = 5; }},
      {"negative redemption", [](PikBond& b) { b.redemption = -1.0; }},
      {"negative holiday count", [](PikBond& b) { b.n_holidays = -1; }},
      {"call before settlement", [](PikBond& b) { b.call = civil_serial(2025, 3, 19); }},
      // A dated date in the future puts the first coupon after a call at
      // settlement.
      {"call before the first coupon",
       [](PikBond& b) {
         b.dated = civil_serial(2025, 3, 15), b.first = civil_serial(2025, 9, 15);
         b.dates = {civil_serial(2030, 9, 15)}, b.call = b.settlement;
       }},
      // An in-kind rate of 1e300, a cash rate of -1e300, and an in-kind rate
      // of 1e30 that capitalises to (1 + 5e29)^11 (about 1e324) over the
      // eleven half-years to maturity.
      {"in-kind rate 1e300", [](PikBond& b) { b.in_kind = {1e300}; }},
      {"cash rate -1e300", [](PikBond& b) { b.cash = {-1e300}; }},
      {"in-kind rate 1e30", [](PikBond& b) { b.in_kind = {1e30}; }},
  };
  for (const auto& [what, spoil] : cases) {
    SCOPED_TRACE(what);
    PikBond bond;
    spoil(bond);
    EXPECT_EQ(bond.price(0.09), -1.0);
    EXPECT_EQ(bond.error, 1);
    EXPECT_EQ(bond.yield(95.0), -1.0);
    EXPECT_EQ(bond.error, 1);
    int32_t* dates = reinterpret_cast<int32_t*>(1);  // overwritten with NULL
    double* coupons = reinterpret_cast<double*>(1);
    EXPECT_EQ(bond.cash_flows(&dates, &coupons, nullptr, nullptr), 0);
    EXPECT_TRUE(bond.error == 1 && dates == nullptr && coupons == nullptr);
    if (!bond.redemption && !bond.n_holidays && !bond.call) {
      EXPECT_EQ(bond.accrued(), -1.0);
      EXPECT_EQ(bond.error, 1);
    }
  }
  // A holiday count without a list is an empty list.
  PikBond plain, counted;
  counted.n_holidays = 3;
  EXPECT_EQ(counted.price(0.09), plain.price(0.09));
  EXPECT_EQ(counted.error, 0);
  // A steep but real bond (40 % in kind) keeps its price.
  PikBond steep;
  steep.in_kind = {0.40};
  EXPECT_TRUE(std::isfinite(steep.price(0.09)));
  EXPECT_EQ(steep.error, 0);
}

TEST(PikErrors, EachExportReturnsItsFailureValueAndCode) {
  const auto with = [](int32_t settlement, int32_t type, int32_t maturity) {
    PikBond b;
    b.settlement = settlement, b.type = type, b.dates = {maturity};
    return b;
  };
  const int32_t june2030 = civil_serial(2030, 6, 15), june2050 = civil_serial(2050, 6, 15);
  PikBond bond, invalid = with(bond.settlement, 60, june2030);
  PikBond last = with(civil_serial(2030, 4, 15), 500, june2030);  // t = 61/364 years
  PikBond on_coupon = with(civil_serial(2029, 12, 15), 500, june2030);
  PikBond treasury = with(civil_serial(2029, 12, 15), 0, june2030);
  PikBond long_bond = with(bond.settlement, 500, june2050);
  // 162 half-years before 2030 (21 March 1949), a Treasury.
  PikBond from_1949 = with(17976, 0, june2030);
  PikBond early = with(civil_serial(2024, 12, 15), 500, june2030);
  PikBond at_maturity = with(june2030, 500, june2030);
  // 1 + y/2 = 2^-52: v^t = 2^(52 t) overflows after about 20 periods, and
  // the 2050 bond has 51 left.
  const double tiny_one_plus = -2.0 + std::ldexp(2.0, -52);
  const double zero = 0.0, minus_one = -1.0, nan = kNaN, denormal = 2e-311;
  struct Case {
    const char* what;
    std::function<double()> call;
    PikBond& bond;
    double value;
    int32_t error;
  };
#define CALL(expr) [&] { return (expr); }
  const Case cases[] = {
      {"duration, invalid", CALL(invalid.duration(0.08)), invalid, -1.0, 1},
      {"bp, invalid", CALL(invalid.value_of_bp(0.08)), invalid, -1.0, 1},
      {"bp per 0", CALL(bond.value_of_bp(0.08, &zero)), bond, -999.0, 310},
      {"32nd of -1", CALL(bond.value_of_32nd(0.08, &minus_one)), bond, -999.0, 310},
      {"bp at -500 %", CALL(bond.value_of_bp(-5.0)), bond, -999.0, 401},
      {"duration at -500 %", CALL(bond.duration(-5.0)), bond, -1.0, 401},
      {"price at -200 %", CALL(bond.price(-2.0)), bond, -100.0, 401},
      // 1 + t y = 0 over the last period, or NaN.
      {"simple interest at -1/t", CALL(last.price(-364.0 / 61)), last, -100.0, 401},
      {"simple interest at NaN", CALL(last.price(nan)), last, -100.0, 401},
      {"v^51 overflows", CALL(long_bond.price(tiny_one_plus)), long_bond, -100.0, 401},
      {"bp, v^51 overflows", CALL(long_bond.value_of_bp(tiny_one_plus)), long_bond, -999.0, 401},
      // v = 1 / 0.01375: v^162 is about 1e301, finite, but the Treasury's
      // six-decimal rounding multiplies it past the largest double.
      {"rounding overflows", CALL(from_1949.price(-1.9725)), from_1949, -100.0, 401},
      {"bp per denormal", CALL(bond.value_of_bp(0.09, &denormal)), bond, -999.0, 401},
      {"32nd of denormal", CALL(bond.value_of_32nd(0.09, &denormal)), bond, -999.0, 401},
      {"yield of price 0", CALL(bond.yield(0.0)), bond, -1.0, 460},
      {"yield of NaN", CALL(bond.yield(nan)), bond, -1.0, 460},
      // The one-period closed form divides the final amount by the price:
      // 1.06 / 5e-310 overflows; 1.06 / 7e-304 / 0.5 does not, but would
      // overflow a Treasury's eight-decimal rounding.
      {"one period, price 5e-310", CALL(on_coupon.yield(5e-310)), on_coupon, -1.0, 460},
      {"one period, Treasury 7e-304", CALL(treasury.yield(7e-304)), treasury, -1.0, 460},
      {"no time to maturity", CALL(at_maturity.yield(99.0)), at_maturity, -1.0, 460},
      // Even 2500 % leaves the next coupon alone worth 100 x 0.04 / 13.5.
      {"unreachable price", CALL(early.yield(0.001)), early, -999.0, 1},
  };
#undef CALL
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(c.call(), c.value);
    EXPECT_EQ(c.bond.error, c.error);
  }
  // Real yields still price and tick.
  EXPECT_TRUE(std::isfinite(from_1949.price(0.05)));
  EXPECT_EQ(from_1949.error, 0);
  EXPECT_GT(bond.value_of_32nd(0.09), 0.0);
  EXPECT_EQ(bond.error, 0);
}

}  // namespace
}  // namespace kbond::testing
