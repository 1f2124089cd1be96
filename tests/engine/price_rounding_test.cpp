// Price rounding by bond type: municipals and corporates (types 2, 3, 16)
// are cleaned at 8 decimals and truncated to 3. A price that is already a
// whole number of thousandths must come back unchanged, the failure value
// -1.0 included. Found by the bond fuzz harness (-1.0 came back as -1.001).
#include <gtest/gtest.h>

#include "engine/call_frame.h"

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

}  // namespace
}  // namespace kbond::engine
