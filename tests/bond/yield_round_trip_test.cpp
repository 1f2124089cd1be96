// Price to yield and back across the whole catalogue: for every base bond
// type, maturities from one month to fifty years, coupons from 0 to 15 %
// and yields from -1 % to 30 %, KVLbyld(KVLbpr(y)) must give y back.
//
// The only slack allowed is what the market's own rounding makes
// unavoidable: a price rounded to a tick of size p moves the yield by up to
// p / |dP/dy|, and a yield rounded to a tick q by q / 2. U.S. Treasuries
// (types 0, 1) quote prices to 1e-6 and yields to 1e-8; municipals and
// corporates (2, 3, 16) truncate prices to 1e-3 and round yields to 1e-5;
// South African bonds (380) round prices to 1e-5 and yields to 1e-7.
#include <cmath>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>
#include <algorithm>

#include <gtest/gtest.h>

#include "bond/quoted_bond.h"
#include "dates/month_arithmetic.h"
#include "engine/bond_desc.h"
#include "engine/price_from_yield.h"

namespace kbond::testing {
namespace {

constexpr int32_t kBaseTypes[] = {
    0,   1,   2,   3,   16,  20,  22,  40,  42,  60,  62,  80,  81,  100, 120, 122, 140,
    142, 160, 162, 170, 180, 190, 200, 202, 210, 220, 240, 242, 244, 246, 250, 260, 261,
    264, 266, 268, 270, 280, 281, 284, 286, 290, 292, 300, 302, 310, 320, 322, 330, 340,
    342, 350, 360, 370, 380, 390, 400, 500, 502, 510, 520, 530, 540, 700, 701, 810, 820, 830};

constexpr int32_t kMaturityMonths[] = {1, 5, 13, 29, 61, 122, 361, 600};
constexpr double kCoupons[] = {0.0, 0.02, 0.05, 0.10, 0.15};
constexpr double kYields[] = {-0.01, 0.0, 0.02, 0.05, 0.10, 0.30};

constexpr double kRoundTripTolerance = 1e-7;

double price_tick(int32_t type) {
  switch (type) {
    case 0: case 1: return 0.5e-6;
    case 2: case 3: case 16: return 1e-3;  // truncated: a whole tick
    case 380: return 0.5e-5;
    default: return 0.0;
  }
}

double yield_half_tick(int32_t type) {
  switch (type) {
    case 0: case 1: return 0.5e-8;
    case 2: case 3: case 16: return 0.5e-5;
    case 380: return 0.5e-7;
    default: return 0.0;
  }
}

// How far the unrounded price function strays, within 1e-9 of yield y
// (coupon frequency), from its tangent at y, per 100 of face. A smooth
// price function strays by about 1e-12; a jump or noise in the evaluator
// leaves the solver nothing to converge to.
double price_roughness(const QuotedBond& bond, double y) {
  const engine::bond_args args{.coupons = bond.rates.data(), .n_coupons = bond.n_rates(),
                               .dates = bond.dates.data(), .n_dates = bond.n_dates(),
                               .settlement = bond.settlement, .type = bond.p_type(),
                               .frequency = bond.p_freq(), .n_frequency = bond.n_freq()};
  engine::bond_desc desc;
  if (engine::bond_setup(args, desc) != 0) return 0.0;
  double slope = 0.0;
  int32_t err = 0;
  const double p0 = engine::price_from_yield(y, desc, &slope, nullptr, &err);
  double worst = 0.0;
  for (const double h : {-1e-9, -1e-10, -1e-11, -1e-12, 1e-12, 1e-11, 1e-10, 1e-9}) {
    const double p = engine::price_from_yield(y + h, desc, nullptr, nullptr, &err);
    worst = std::max(worst, std::fabs(p - p0 - 100.0 * slope * h));
  }
  engine::bond_release(desc);
  return worst;
}

constexpr double kRoughPrice = 1e-7;  // per 100 of face

struct Outcome {
  int priced = 0;
  std::map<int32_t, int> price_refused;  // error code -> cases KVLbpr refused
  int rounded_to_zero = 0;                 // quoted price rounds to 0.000
  std::vector<std::string> rough;          // the price function is not smooth there
  int round_trip_failures = 0;
  std::string first_failure;
};

TEST(YieldRoundTrip, EveryBaseTypeReturnsTheYieldItWasPricedAt) {
  // Settled mid-month so that no maturity lands on a month end.
  const int32_t settlement = civil_serial(2024, 3, 12);
  std::map<int32_t, Outcome> outcomes;
  for (const int32_t type : kBaseTypes) {
    Outcome& out = outcomes[type];
    for (const int32_t months : kMaturityMonths) {
      for (const double c : kCoupons) {
        QuotedBond bond;
        bond.type = type;
        bond.coupon(c).settles(settlement).matures(dates::add_months(settlement, months, 0) + 3);
        // The Yankee type has no default frequency: the caller gives it.
        if (type == 810) bond.frequency = 2;
        for (const double y : kYields) {
          int32_t err = 0;
          const double p = bond.price(y, &err);
          if (err != 0) {
            ++out.price_refused[err];
            continue;
          }
          if (p == 0.0) {
            // A zero price is no price: the yield is lost in the rounding.
            ++out.rounded_to_zero;
            continue;
          }
          ++out.priced;
          const double back = bond.yield(p, &err);
          // Slope of the quoted price by the quoted yield, for the slack
          // that a rounded price leaves.
          const double h = 1e-3;
          const double slope = std::fabs(bond.price(y - h) - bond.price(y + h)) / (2 * h);
          const double tolerance =
              kRoundTripTolerance + yield_half_tick(type) +
              (price_tick(type) > 0.0 ? 2.0 * price_tick(type) / slope : 0.0);
          if (err != 0 || !(std::fabs(back - y) <= tolerance)) {
            const double roughness = price_roughness(bond, y);
            if (roughness > kRoughPrice) {
              char text[160];
              std::snprintf(text, sizeof text, "%d months, coupon %.2f, yield %.4f: %.2e", months,
                            c, y, roughness);
              out.rough.push_back(text);
              continue;
            }
            if (out.round_trip_failures++ == 0) {
              char text[200];
              std::snprintf(text, sizeof text,
                            "%d months, coupon %.2f, yield %.4f: price %.8f -> %.10f (error %d)",
                            months, c, y, p, back, err);
              out.first_failure = text;
            }
          }
        }
      }
    }
  }

  // The types that cannot make the round trip, and why.
  std::set<int32_t> unpriceable;
  for (const auto& [type, out] : outcomes) {
    EXPECT_EQ(out.round_trip_failures, 0)
        << "type " << type << ": " << out.round_trip_failures << " failures, first "
        << out.first_failure;
    for (const std::string& where : out.rough) {
      std::printf("type %d: price function not smooth near the yield, %s per 100\n", type,
                  where.c_str());
      // Only ever seen at a yield of exactly zero, where the evaluators
      // switch formulas (see the report below).
      EXPECT_NE(where.find("yield 0.0000"), std::string::npos) << where;
    }
    if (out.rounded_to_zero > 0) {
      std::printf("type %d: %d cases whose quoted price rounds to zero\n", type,
                  out.rounded_to_zero);
    }
    if (!out.price_refused.empty()) {
      std::string why;
      for (const auto& [code, count] : out.price_refused)
        why += " error " + std::to_string(code) + " x" + std::to_string(count);
      std::printf("type %d: %d cases priced, KVLbpr refused%s\n", type, out.priced, why.c_str());
      unpriceable.insert(type);
    }
  }
  // The Yankee type (810) names no accrued day count, so no bond of that
  // type can be described and there is no price to invert.
  EXPECT_EQ(unpriceable, (std::set<int32_t>{810}));
  EXPECT_EQ(outcomes[810].priced, 0);
  // Municipal and corporate prices truncated to 1e-3 lose a fifty-year zero
  // at 30 % (100 / 1.15^100 = 8.6e-5) entirely; every other type keeps it.
  for (const int32_t type : {2, 3, 16}) EXPECT_EQ(outcomes[type].rounded_to_zero, 1);
  EXPECT_EQ(outcomes[0].rounded_to_zero, 0);
}

}  // namespace
}  // namespace kbond::testing

namespace kbond::testing {
namespace {

// Bond shapes the catalogue sweep does not reach: stepped coupons, odd
// first and last periods, ex-dividend trading, withholding and capital-gains
// taxes, a sinking fund quoted per outstanding face.
TEST(YieldRoundTrip, ShapesBeyondTheBulletBond) {
  const int32_t settle = civil_serial(2024, 3, 12);
  std::vector<QuotedBond> shapes;

  QuotedBond stepped;  // 3 % to 2027, then 4.5 % to 2036
  stepped.rates = {0.03, 0.045};
  stepped.dates = {civil_serial(2027, 6, 15), civil_serial(2036, 6, 15)};
  stepped.settles(settle);
  shapes.push_back(stepped);

  QuotedBond odd_first;  // issued 1 Feb 2024, long first coupon 15 Dec 2024
  odd_first.coupon(0.055).matures(civil_serial(2034, 6, 15)).settles(settle);
  odd_first.dated_date = civil_serial(2024, 2, 1);
  odd_first.first_coupon = civil_serial(2024, 12, 15);
  odd_first.type = 500;
  shapes.push_back(odd_first);

  QuotedBond odd_last = odd_first;  // grid from the first coupon, maturity off it
  odd_last.matures(civil_serial(2034, 8, 1));
  shapes.push_back(odd_last);

  QuotedBond gilt_ex_dividend;  // 7 March 2024 coupon: ex-dividend from 28 February
  gilt_ex_dividend.type = 40;
  gilt_ex_dividend.coupon(0.04125).matures(civil_serial(2029, 9, 7)).settles(civil_serial(2024, 3, 4));
  shapes.push_back(gilt_ex_dividend);

  QuotedBond taxed;  // Italian-style withholding and capital-gains tax
  taxed.type = 500;
  taxed.coupon(0.02).matures(civil_serial(2031, 9, 1)).settles(settle);
  taxed.has_coupon_tax = taxed.has_discount_tax = true;
  taxed.coupon_tax = 0.125;
  taxed.discount_tax = 0.125;
  shapes.push_back(taxed);

  QuotedBond sinking;  // 10 % of face repaid each 15 June from 2026
  sinking.type = 500;
  sinking.coupon(0.06).matures(civil_serial(2034, 6, 15)).settles(settle);
  sinking.factor = 1.0;
  sinking.sink_dates = {civil_serial(2026, 6, 15)};
  sinking.sink_amounts = {0.10};
  sinking.sink_frequency = 1;
  sinking.frequency = 2;
  shapes.push_back(sinking);

  QuotedBond sinking_started = sinking;  // two repayments already made
  sinking_started.settles(civil_serial(2027, 9, 20));
  shapes.push_back(sinking_started);

  for (std::size_t i = 0; i < shapes.size(); ++i) {
    for (const double y : {-0.005, 0.01, 0.0425, 0.09, 0.22}) {
      int32_t err = -1;
      const double p = shapes[i].price(y, &err);
      ASSERT_EQ(err, 0) << "shape " << i;
      const double back = shapes[i].yield(p, &err);
      EXPECT_EQ(err, 0) << "shape " << i;
      EXPECT_NEAR(back, y, kRoundTripTolerance) << "shape " << i << " at " << y;
    }
  }
}

}  // namespace
}  // namespace kbond::testing
