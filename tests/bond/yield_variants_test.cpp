// Horizon yield, realized compound yield, yield to worst, yield to average
// life and remaining life, each against a hand computation whose yield is
// found here by bisection on the discounted cash flows.
#include <cmath>
#include <functional>

#include <gtest/gtest.h>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

// The semiannual yield at which `value(v)` (v = 1 / (1 + y/2)) equals the
// dirty price, by bisection: independent of the library's solvers.
double solve_semiannual(const std::function<double(double)>& value, double dirty) {
  double lo = -0.5, hi = 1.0;
  for (int i = 0; i < 200; ++i) {
    const double mid = 0.5 * (lo + hi);
    (value(1.0 / (1.0 + mid / 2.0)) > dirty ? lo : hi) = mid;
  }
  return 0.5 * (lo + hi);
}

// n semiannual coupons of c then `redemption`, settled on a coupon date.
double on_coupon_date(double v, int n, double c, double redemption) {
  double pv = 0.0;
  for (int k = 1; k <= n; ++k) pv += c * std::pow(v, k);
  return pv + redemption * std::pow(v, n);
}

// A 5 % note bought at 99 on its 15 May 2024 coupon date and sold at 101.
TEST(HorizonYield, SaleOnAndBetweenCouponDates) {
  const QuotedBond note(500, 0.05, ymd(2034, 5, 15), ymd(2024, 5, 15));
  int32_t err = -1;
  EXPECT_NEAR(note.horizon_yield(99.0, ymd(2026, 5, 15), 101.0, &err),
              solve_semiannual([](double v) { return on_coupon_date(v, 4, 2.5, 101.0); }, 99.0),
              1e-9);
  EXPECT_EQ(err, 0);
  // Sold on 1 August 2026 the buyer also pays 78 days of the 184-day coupon
  // (15 May .. 15 Nov 2026), received 78/184 of a period after 15 May.
  const double part = 78.0 / 184;
  const auto value = [&](double v) {
    return on_coupon_date(v, 4, 2.5, 0.0) + (101.0 + 2.5 * part) * std::pow(v, 4 + part);
  };
  EXPECT_NEAR(note.horizon_yield(99.0, ymd(2026, 8, 1), 101.0), solve_semiannual(value, 99.0),
              1e-9);
  // A horizon at maturity and redemption is the yield to maturity; one
  // outside the life is error 160.
  EXPECT_NEAR(note.horizon_yield(99.0, note.maturity(), 100.0), note.yield(99.0), 1e-8);
  for (const int32_t outside : {ymd(2034, 5, 16), note.settlement}) {
    EXPECT_EQ(note.horizon_yield(99.0, outside, 101.0, &err), -1.0);
    EXPECT_EQ(err, 160);
  }
}

// Two years of a 6 % note bought at par on a coupon date. Coupons
// reinvested at 4 % grow to 3 (1.02^3 + 1.02^2 + 1.02 + 1); with the
// redemption the 100 paid becomes that + 100 after four periods.
TEST(RealizedYield, CouponsReinvestedAtAnotherRate) {
  QuotedBond note(500, 0.06, ymd(2026, 5, 15), ymd(2024, 5, 15));
  const double future = 3.0 * (std::pow(1.02, 3) + std::pow(1.02, 2) + 1.02 + 1.0) + 100.0;
  int32_t err = -1;
  EXPECT_NEAR(note.realized_yield(100.0, 0.04, &err), (std::pow(future / 100, 0.25) - 1) * 2,
              1e-13);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(note.realized_yield(100.0, 0.06), 0.06, 1e-13);  // reinvested at the yield
  EXPECT_EQ(note.realized_yield(100.0, -2.0, &err), -1.0);
  EXPECT_EQ(err, 250);
  EXPECT_EQ(note.realized_yield(0.0, 0.04, &err), -1.0);
  EXPECT_EQ(err, 1);
  // Bought at 96 with a 25 % tax on the 4 point gain: 99 at maturity.
  note.discount_tax = 0.25;
  EXPECT_NEAR(note.realized_yield(96.0, 0.04), (std::pow((future - 1) / 96, 0.25) - 1) * 2, 1e-13);
}

// A 6 % ten-year bond at 104 on its 15 November 2024 coupon date, callable
// in 2027 at 102, 2029 at 101 and 2031 at 100: 6, 10, 14 and (maturity) 20
// periods. The worst is the lowest of the four.
TEST(YieldToWorst, CallScheduleByHand) {
  const QuotedBond callable(500, 0.06, ymd(2034, 11, 15), ymd(2024, 11, 15));
  const std::vector<int32_t> calls = {ymd(2027, 11, 15), ymd(2029, 11, 15), ymd(2031, 11, 15)};
  const std::vector<double> prices = {102.0, 101.0, 100.0};
  const int periods[] = {6, 10, 14, 20};
  const double redemption[] = {102.0, 101.0, 100.0, 100.0};
  double worst = 1.0;
  for (int i = 0; i < 4; ++i) {
    const auto value = [&](double v) { return on_coupon_date(v, periods[i], 3.0, redemption[i]); };
    worst = std::min(worst, solve_semiannual(value, 104.0));
  }
  int32_t err = -1;
  EXPECT_NEAR(callable.yield_to_worst(104.0, calls, prices, &err), worst, 1e-9);
  EXPECT_EQ(err, 0);
  EXPECT_LT(worst, callable.yield(104.0));  // the call matters at this premium
  // Below par, after the calls, or called at par on the maturity date: the
  // yield to maturity.
  EXPECT_NEAR(callable.yield_to_worst(95.0, calls, prices), callable.yield(95.0), 1e-12);
  const QuotedBond later = callable.at(ymd(2032, 1, 10));
  EXPECT_NEAR(later.yield_to_worst(104.0, calls, prices), later.yield(104.0), 1e-12);
  EXPECT_EQ(callable.yield_to_worst(95.0, {callable.maturity()}, {100.0}),
            callable.yield_to_worst(95.0, {}, {}));
}

TEST(YieldToWorst, BadCallSchedules) {
  const QuotedBond callable(0, 0.06, ymd(2034, 11, 15), ymd(2024, 11, 15));
  const int32_t a = ymd(2027, 11, 15), b = ymd(2029, 11, 15);
  struct Case {
    std::vector<int32_t> calls;
    std::vector<double> prices;
    int32_t error;
  };
  const Case cases[] = {
      {{a}, {101.0, 100.0, 99.0}, 70},      // more prices than dates
      {{b, a}, {101.0}, 160},               // dates out of order
      {{a, ymd(2035, 1, 1)}, {}, 160},      // after maturity
      {{0}, {}, 150},                       // no date
      {{a}, {0.0}, 460},                    // no price
  };
  for (const Case& c : cases) {
    int32_t err = 0;
    EXPECT_EQ(callable.yield_to_worst(104.0, c.calls, c.prices, &err), -1.0);
    EXPECT_EQ(err, c.error);
  }
  // A count without its array (50) and a negative count (60).
  int32_t err = 0;
  for (const auto& [dates, n, error] : {std::tuple{(const int32_t*)nullptr, 2, 50},
                                       std::tuple{&a, -1, 60}}) {
    EXPECT_EQ(KVLbyworst(callable.rates.data(), 1, callable.dates.data(), 1, callable.settlement,
                         104.0, nullptr, nullptr, nullptr, nullptr, 0, dates, n, nullptr, 0,
                         nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                         nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &err),
              -1.0);
    EXPECT_EQ(err, error);
  }
}

// The sinking fund repaid 10 % a year from 2026 has an average life of 6.4
// years from 15 June 2024 (AverageLife.SinkingFundByHand): with 0.4 x 365 =
// 146.5 -> 147 days, 9 November 2030. The bond is then a bullet to that
// date on its own June and December coupon grid.
TEST(YieldToAverageLife, BulletToTheAverageLifeDate) {
  const QuotedBond sinker = sinking_fund(ymd(2024, 6, 15));
  QuotedBond bullet(500, 0.06, ymd(2030, 11, 9), ymd(2024, 6, 15));
  bullet.dated = ymd(2024, 6, 15);
  bullet.first = ymd(2024, 12, 15);
  int32_t err = -1;
  EXPECT_NEAR(sinker.yield_to_average_life(97.0, &err), bullet.yield(97.0), 1e-12);
  EXPECT_EQ(err, 0);
  // On a 9 November grid the answer would differ.
  QuotedBond regridded = bullet;
  regridded.dated = regridded.first = std::nullopt;
  EXPECT_GT(std::fabs(regridded.yield(97.0) - bullet.yield(97.0)), 1e-6);
  // Without a sinking fund it is the yield to maturity.
  QuotedBond plain = sinker;
  plain.factor.reset();
  EXPECT_EQ(plain.yield_to_average_life(97.0), plain.yield(97.0));
  QuotedBond no_dates = sinker;  // a date count of 0
  no_dates.dates.clear();
  EXPECT_EQ(no_dates.yield_to_average_life(97.0, &err), -1.0);
  EXPECT_EQ(err, 60);
}

// A Treasury settled 12 March 2024 maturing 15 November 2034: 64/182 of a
// period to the May coupon and 21 more, whether given a yield or a price.
TEST(RemainingLife, TimeToMaturityInTheBondsConventions) {
  const QuotedBond note(0, 0.05, ymd(2034, 11, 15), ymd(2024, 3, 12));
  const double life = (64.0 / 182 + 21.0) / 2.0;
  int32_t err = -1;
  EXPECT_NEAR(note.remaining_life(0.05, &err), life, 1e-12);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(note.remaining_life(98.5), life, 1e-12);
  // 9.99 is a yield of 999 %, 10.0 a price of 10: both give the life.
  const QuotedBond short_note(0, 0.05, ymd(2024, 11, 15), ymd(2024, 3, 12));
  for (const double value : {9.99, 10.0}) {
    EXPECT_NEAR(short_note.remaining_life(value, &err), (64.0 / 182 + 1.0) / 2.0, 1e-12);
    EXPECT_EQ(err, 0);
  }
  EXPECT_EQ(note.remaining_life(1e30, &err), -1.0);  // no yield for that price
  EXPECT_EQ(err, 1);
}

}  // namespace
}  // namespace kbond::testing
