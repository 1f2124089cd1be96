// KVLbyld against published examples and hand computations, its closed
// forms, its quotation-frequency conversion, its rounding and its errors.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

// A spreadsheet's PRICE example: settlement 15 Feb 2008, maturity
// 15 Nov 2017, 5.75 % semiannual, 30/360, yield 6.5 % -> 94.63436162.
TEST(YieldToMaturity, SpreadsheetPriceExampleInverts) {
  QuotedBond bond;
  bond.type = 530;  // generic bond accruing 30/360, unrounded
  bond.coupon(0.0575).matures(civil_serial(2017, 11, 15)).settles(civil_serial(2008, 2, 15));
  int32_t err = -1;
  EXPECT_NEAR(bond.yield(94.63436162, &err), 0.065, 2e-9);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(bond.price(0.065), 94.63436162, 1e-8);
}

// On a coupon date a bond priced at par yields its coupon.
TEST(YieldToMaturity, ParBondOnACouponDateYieldsItsCoupon) {
  QuotedBond note;
  note.coupon(0.04).matures(civil_serial(2034, 5, 15)).settles(civil_serial(2024, 5, 15));
  EXPECT_DOUBLE_EQ(note.yield(100.0), 0.04);
}

// A Treasury in its last coupon period is quoted at simple interest:
//   1 + y T = (100 + 1) / (P + A)
// Last coupon 15 May 2024, maturity 15 Nov 2024 (184 days), settlement
// 16 Aug 2024: 93 days accrued, 91 to run, T = 91 / (2 x 184).
TEST(YieldToMaturity, LastPeriodMoneyMarketYield) {
  QuotedBond bill;
  bill.coupon(0.02).matures(civil_serial(2024, 11, 15)).settles(civil_serial(2024, 8, 16));
  const double accrued = 1.0 * 93.0 / 184.0;
  const double t = 91.0 / 368.0;
  const double expected = (101.0 / (99.5 + accrued) - 1.0) / t;
  EXPECT_NEAR(bill.accrued(), accrued, 1e-12);
  int32_t err = -1;
  EXPECT_NEAR(bill.yield(99.5, &err), expected, 1e-8);  // yields rounded to 1e-8
  EXPECT_EQ(err, 0);
}

// Japanese simple yield: y = (c + (100 - P) / T) / P. A 1 % JGB with five
// years to run (20 March 2024 to 20 March 2029: 1826 days, less 29 February
// 2028 = 1825, T = 5) at 99.00: (1 + 1.00 / 5) / 99 = 1.2121... %.
TEST(YieldToMaturity, JapaneseSimpleYield) {
  QuotedBond jgb;
  jgb.type = 200;
  jgb.coupon(0.01).matures(civil_serial(2029, 3, 20)).settles(civil_serial(2024, 3, 20));
  int32_t err = -1;
  EXPECT_NEAR(jgb.yield(99.0, &err), 1.2 / 99.0, 1e-12);
  EXPECT_EQ(err, 0);
}

// Eurobonds quoted annually: the semiannual yield re-expressed with annual
// compounding, (1 + y/2)^2 - 1.
TEST(YieldToMaturity, AnnualQuotationOfASemiannualBond) {
  QuotedBond semiannual;
  semiannual.type = 240;
  semiannual.frequency = 2;
  semiannual.coupon(0.05).matures(civil_serial(2033, 10, 1)).settles(civil_serial(2024, 3, 12));
  QuotedBond quoted_annually = semiannual;
  quoted_annually.type = 242;
  const double y2 = semiannual.yield(97.25);
  EXPECT_NEAR(quoted_annually.yield(97.25), (1 + y2 / 2) * (1 + y2 / 2) - 1, 1e-12);
}

TEST(YieldToMaturity, MunicipalYieldsRoundToFiveDecimals) {
  QuotedBond muni;
  muni.type = 2;
  muni.coupon(0.0425).matures(civil_serial(2041, 8, 1)).settles(civil_serial(2024, 3, 12));
  const double y = muni.yield(101.375);
  EXPECT_DOUBLE_EQ(y, std::floor(y * 1e5 + 0.5) * 1e-5);
  EXPECT_NEAR(y, 0.04137, 5e-5);
}

TEST(YieldToMaturity, BadPricesAndDescriptions) {
  QuotedBond bond;
  bond.coupon(0.05).matures(civil_serial(2034, 6, 15)).settles(civil_serial(2024, 3, 12));
  for (const double bad : {0.0, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
    int32_t err = 0;
    EXPECT_EQ(bond.yield(bad, &err), -1.0);
    EXPECT_EQ(err, 350);
  }
  // No yield above -90 % a period (v = 10, 10^20 x 100 after 20 periods)
  // reaches a price of 1e30.
  int32_t err = 0;
  EXPECT_EQ(bond.yield(1e30, &err), -999.0);
  EXPECT_EQ(err, 1);

  // A money-market bond whose clean price does not cover the negative
  // accrued interest of an ex-dividend Gilt: 7 business days before 7 March.
  QuotedBond gilt;
  gilt.type = 40;
  gilt.yield_method = 1;  // simple interest in the final period, as asked
  gilt.coupon(0.04).matures(civil_serial(2024, 3, 7)).settles(civil_serial(2024, 3, 1));
  const double accrued = gilt.accrued();
  ASSERT_LT(accrued, 0.0);
  EXPECT_EQ(gilt.yield(-accrued * 0.5, &err), -1.0);
  EXPECT_EQ(err, 350);

  QuotedBond after = bond;
  after.settles(civil_serial(2035, 1, 2));
  EXPECT_EQ(after.yield(99.0, &err), -1.0);
  EXPECT_EQ(err, 1);
  // NULL dates with a positive count; a NULL error pointer is allowed.
  const double rate = 0.05;
  const int32_t type = 0;
  EXPECT_EQ(KVLbyld(&rate, 1, nullptr, 1, civil_serial(2024, 3, 12), 99.0, nullptr, nullptr,
                    &type, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                    nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                    nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(KVLbyld(&rate, 1, nullptr, 1, civil_serial(2024, 3, 12), 99.0, nullptr, nullptr,
                    &type, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                    nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                    nullptr, nullptr),
            -1.0);
}

}  // namespace
}  // namespace kbond::testing
