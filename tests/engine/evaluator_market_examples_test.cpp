// Published and hand-checked prices through the whole engine: the bond
// described by bond_setup from its market's conventions, then priced.
#include <gtest/gtest.h>

#include "dates/date_serial.h"
#include "engine/bond_desc.h"
#include "engine/price_from_yield.h"

namespace kbond::engine {
namespace {

int32_t serial(int32_t d, int32_t m, int32_t y) { return dates::date_to_serial(d, m, y); }

// A single-step bullet of the given type; `rate` and `maturity` are kept in
// the fixture so that the description's borrowed pointers stay valid.
struct Bullet {
  double rate[1];
  int32_t maturity[1];
  int32_t type;
  bond_args args;
  bond_desc desc;

  Bullet(int32_t type_code, double coupon, int32_t maturity_date, int32_t settlement)
      : rate{coupon}, maturity{maturity_date}, type(type_code) {
    args.coupons = rate;
    args.n_coupons = 1;
    args.dates = maturity;
    args.n_dates = 1;
    args.settlement = settlement;
    args.type = &type;
  }
  double price(double yield) {
    if (bond_setup(args, desc) != 0) return -1.0;
    int32_t error = 0;
    const double p = price_from_yield(yield, desc, nullptr, nullptr, &error);
    bond_release(desc);
    return error == 0 ? p : -1.0;
  }
};

TEST(EvaluatorMarketExamples, SpreadsheetPriceAndYieldExamples) {
  // The PRICE function's documented example, 30/360 semi-annual:
  //   PRICE(15 Feb 2008, 15 Nov 2017, 5.75%, 6.5%, 100, 2, 0) = 94.63436
  Bullet corporate(3, 0.0575, serial(15, 11, 2017), serial(15, 2, 2008));
  EXPECT_NEAR(corporate.price(0.065), 94.63436, 5e-6);
  // The YIELD function's documented example: a price of 95.04287 for the
  // 15 Nov 2016 maturity yields 6.5%.
  Bullet shorter(3, 0.0575, serial(15, 11, 2016), serial(15, 2, 2008));
  EXPECT_NEAR(shorter.price(0.065), 95.04287, 5e-6);
}

TEST(EvaluatorMarketExamples, TreasuryAtItsCouponYieldOnACouponDateIsAtPar) {
  Bullet treasury(0, 0.04125, serial(15, 11, 2032), serial(15, 5, 2025));
  EXPECT_NEAR(treasury.price(0.04125), 100.0, 1e-10);
}

TEST(EvaluatorMarketExamples, JapaneseGovernmentBondSimpleYield) {
  // (100 + 1.5 x 5) / (1 + 0.012 x 5) = 101.41509433962264
  Bullet jgb(200, 0.015, serial(20, 3, 2030), serial(20, 3, 2025));
  EXPECT_NEAR(jgb.price(0.012), 101.41509433962264, 1e-10);
}

}  // namespace
}  // namespace kbond::engine
