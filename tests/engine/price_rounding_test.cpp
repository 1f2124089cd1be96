// Price rounding by bond type: municipals and corporates (types 2, 3, 16)
// are cleaned at 8 decimals and truncated to 3. A price that is already a
// whole number of thousandths must come back unchanged, the failure value
// -1.0 included. Found by the bond fuzz harness (-1.0 came back as -1.001).
#include <gtest/gtest.h>

#include <cmath>

#include "engine/call_frame.h"
#include "k_bond.h"

namespace kbond::engine {
namespace {

TEST(PriceRounding, WholeThousandthsSurviveTruncation) {
  int failures = 0;
  for (int32_t k = -2000; k <= 200000; ++k) {
    const double price = k / 1000.0;
    for (int32_t type : {2, 3, 16})
      if (round_price_by_type(price, type) != price) ++failures;
  }
  EXPECT_EQ(failures, 0);
}

TEST(PriceRounding, EachMarketsQuotation) {
  EXPECT_DOUBLE_EQ(round_price_by_type(101.2345675, 1), 101.234568);  // US government: 6 decimals
  // Municipals and corporates: cleaned at the eighth decimal, then cut to three.
  EXPECT_EQ(round_price_by_type(101.12599, 2), 101.125);
  EXPECT_EQ(round_price_by_type(101.1259999999, 3), 101.126);
  EXPECT_DOUBLE_EQ(round_price_by_type(99.9999999996, 16), 100.0);
  EXPECT_DOUBLE_EQ(round_price_by_type(98.765432, 380), 98.76543);  // South Africa: 5
  EXPECT_EQ(round_price_by_type(101.23456789, 40), 101.23456789);  // everyone else: as computed
}

TEST(PriceRounding, FailureValueOfAMunicipalPrice) {
  // Serials of 15 November 2030 and 1 March 2024 (days-from-civil).
  const double coupon = 0.05;
  const int32_t maturity = 47801, type = 16;
  int32_t error = 0;
  EXPECT_EQ(KVLbpr(&coupon, 1, &maturity, 1, 45351, std::nan(""), nullptr, nullptr, &type, nullptr,
                   0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                   nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &error),
            -1.0);
  EXPECT_EQ(error, 1);
}

}  // namespace
}  // namespace kbond::engine
