// Horizon yield, realized compound yield, yield to worst, yield to average
// life and remaining life, each against a hand computation whose yield is
// found here by bisection on the discounted cash flows.
#include <cmath>
#include <functional>
#include <limits>

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

// n semiannual coupons of c then `redemption`, the next coupon a full
// period away: the value of a bond settled on a coupon date.
double on_coupon_date(double v, int n, double c, double redemption) {
  double pv = 0.0;
  for (int k = 1; k <= n; ++k) pv += c * std::pow(v, k);
  return pv + redemption * std::pow(v, n);
}

double horizon_yield(const QuotedBond& b, double price, int32_t date, double sale,
                     int32_t* error = nullptr) {
  return KVLbhyld(b.rates.data(), b.n_rates(), b.dates.data(), b.n_dates(), b.settlement, price,
                  date, sale, b.p_dated(), b.p_first(), b.p_type(), b.p_freq(), b.n_freq(),
                  b.p_coupon_tax(), b.p_discount_tax(), b.p_horizon(), nullptr, b.p_method(),
                  b.p_bd_flags(), b.p_holidays(), b.n_holidays(), b.p_factor(), b.p_sink_dates(),
                  b.n_sink(), b.p_sink_ends(), b.n_sink_ends(), b.p_sink_amounts(), nullptr,
                  b.p_exdiv(), error);
}

// A 5 % note bought at 99 on its 15 May 2024 coupon date and sold at 101.
TEST(HorizonYield, SaleOnACouponDate) {
  QuotedBond note;
  note.type = 500;
  note.coupon(0.05).matures(civil_serial(2034, 5, 15)).settles(civil_serial(2024, 5, 15));
  const double expected =
      solve_semiannual([](double v) { return on_coupon_date(v, 4, 2.5, 101.0); }, 99.0);
  int32_t err = -1;
  EXPECT_NEAR(horizon_yield(note, 99.0, civil_serial(2026, 5, 15), 101.0, &err), expected, 1e-9);
  EXPECT_EQ(err, 0);
}

// Sold on 1 August 2026 instead: the buyer also pays 78 days of the
// 184-day coupon (15 May .. 15 Nov 2026), received 78/184 of a period after
// the 15 May coupon.
TEST(HorizonYield, SaleBetweenCouponDatesEarnsTheAccruedInterest) {
  QuotedBond note;
  note.type = 500;
  note.coupon(0.05).matures(civil_serial(2034, 5, 15)).settles(civil_serial(2024, 5, 15));
  const double part = 78.0 / 184.0;
  const double expected = solve_semiannual(
      [&](double v) {
        return on_coupon_date(v, 4, 2.5, 0.0) + (101.0 + 2.5 * part) * std::pow(v, 4 + part);
      },
      99.0);
  EXPECT_NEAR(horizon_yield(note, 99.0, civil_serial(2026, 8, 1), 101.0), expected, 1e-9);
}

TEST(HorizonYield, HorizonOutsideTheLife) {
  QuotedBond note;
  note.coupon(0.05).matures(civil_serial(2034, 5, 15)).settles(civil_serial(2024, 5, 15));
  int32_t err = 0;
  EXPECT_EQ(horizon_yield(note, 99.0, civil_serial(2034, 5, 16), 101.0, &err), -1.0);
  EXPECT_EQ(err, 160);
  EXPECT_EQ(horizon_yield(note, 99.0, note.settlement, 101.0, &err), -1.0);
  EXPECT_EQ(err, 160);
  EXPECT_NEAR(horizon_yield(note, 99.0, note.maturity(), 100.0, &err), note.yield(99.0), 1e-8);
  EXPECT_EQ(err, 0);
}

double realized_yield(const QuotedBond& b, double price, double rate, int32_t* error = nullptr) {
  return KVLbryld(b.rates.data(), b.n_rates(), b.dates.data(), b.n_dates(), b.settlement, price,
                  rate, b.p_dated(), b.p_first(), b.p_type(), b.p_freq(), b.n_freq(),
                  b.p_redemption(), b.p_coupon_tax(), b.p_discount_tax(), b.p_horizon(), nullptr,
                  b.p_method(), b.p_bd_flags(), b.p_holidays(), b.n_holidays(), error);
}

// Two years of a 6 % note bought at par on a coupon date. Coupons
// reinvested at 4 % grow to 3 (1.02^3 + 1.02^2 + 1.02 + 1); with the
// redemption the 100 paid becomes that + 100 after four periods.
TEST(RealizedYield, CouponsReinvestedAtAnotherRate) {
  QuotedBond note;
  note.type = 500;
  note.coupon(0.06).matures(civil_serial(2026, 5, 15)).settles(civil_serial(2024, 5, 15));
  const double future = 3.0 * (std::pow(1.02, 3) + std::pow(1.02, 2) + 1.02 + 1.0) + 100.0;
  int32_t err = -1;
  EXPECT_NEAR(realized_yield(note, 100.0, 0.04, &err), (std::pow(future / 100.0, 0.25) - 1) * 2,
              1e-13);
  EXPECT_EQ(err, 0);
  // Reinvested at the yield itself, the realized yield is the yield.
  EXPECT_NEAR(realized_yield(note, 100.0, 0.06), 0.06, 1e-13);
  // Bought at 96 with a 25 % tax on the 4 point gain: 99 at maturity.
  QuotedBond taxed = note;
  taxed.has_discount_tax = true;
  taxed.discount_tax = 0.25;
  const double taxed_future = future - 100.0 + 99.0;
  EXPECT_NEAR(realized_yield(taxed, 96.0, 0.04), (std::pow(taxed_future / 96.0, 0.25) - 1) * 2,
              1e-13);
  EXPECT_EQ(realized_yield(note, 100.0, -2.0, &err), -1.0);
  EXPECT_EQ(err, 250);
  EXPECT_EQ(realized_yield(note, 0.0, 0.04, &err), -1.0);
  EXPECT_EQ(err, 1);
}

double yield_to_worst(const QuotedBond& b, double price, const std::vector<int32_t>& calls,
                      const std::vector<double>& prices, int32_t* error = nullptr) {
  return KVLbyworst(b.rates.data(), b.n_rates(), b.dates.data(), b.n_dates(), b.settlement, price,
                    b.p_dated(), b.p_first(), b.p_type(), b.p_freq(), b.n_freq(),
                    calls.empty() ? nullptr : calls.data(), static_cast<int32_t>(calls.size()),
                    prices.empty() ? nullptr : prices.data(), static_cast<int32_t>(prices.size()),
                    b.p_coupon_tax(), b.p_discount_tax(), b.p_horizon(), b.p_method(),
                    b.p_bd_flags(), b.p_holidays(), b.n_holidays(), b.p_factor(),
                    b.p_sink_dates(), b.n_sink(), b.p_sink_ends(), b.n_sink_ends(),
                    b.p_sink_amounts(), nullptr, b.p_exdiv(), error);
}

// A 6 % ten-year bond at 104 on its 15 November 2024 coupon date, callable
// in 2027 at 102, 2029 at 101 and 2031 at 100 (and redeemed at 100):
//   to 2027: 6 periods to 102; 2029: 10 to 101; 2031: 14 to 100;
//   maturity: 20 to 100. The worst is the lowest of the four.
TEST(YieldToWorst, CallScheduleByHand) {
  QuotedBond callable;
  callable.type = 500;
  callable.coupon(0.06).matures(civil_serial(2034, 11, 15)).settles(civil_serial(2024, 11, 15));
  const std::vector<int32_t> calls = {civil_serial(2027, 11, 15), civil_serial(2029, 11, 15),
                                      civil_serial(2031, 11, 15)};
  const std::vector<double> prices = {102.0, 101.0, 100.0};
  const int periods[] = {6, 10, 14, 20};
  const double redemption[] = {102.0, 101.0, 100.0, 100.0};
  double worst = 1.0;
  for (int i = 0; i < 4; ++i) {
    worst = std::min(worst, solve_semiannual(
                                [&](double v) {
                                  return on_coupon_date(v, periods[i], 3.0, redemption[i]);
                                },
                                104.0));
  }
  int32_t err = -1;
  EXPECT_NEAR(yield_to_worst(callable, 104.0, calls, prices, &err), worst, 1e-9);
  EXPECT_EQ(err, 0);
  EXPECT_LT(worst, callable.yield(104.0));  // the call matters at this premium
  // Below par the issuer would not call: the worst is to maturity.
  EXPECT_NEAR(yield_to_worst(callable, 95.0, calls, prices), callable.yield(95.0), 1e-12);
  // Calls already passed leave the yield to maturity.
  QuotedBond later = callable;
  later.settles(civil_serial(2032, 1, 10));
  EXPECT_NEAR(yield_to_worst(later, 104.0, calls, prices), later.yield(104.0), 1e-12);
  // A call at the redemption price on the maturity date ties with the
  // maturity and changes nothing.
  EXPECT_EQ(yield_to_worst(callable, 95.0, {callable.maturity()}, {100.0}),
            yield_to_worst(callable, 95.0, {}, {}));
}

TEST(YieldToWorst, BadCallSchedules) {
  QuotedBond callable;
  callable.coupon(0.06).matures(civil_serial(2034, 11, 15)).settles(civil_serial(2024, 11, 15));
  const int32_t a = civil_serial(2027, 11, 15), b = civil_serial(2029, 11, 15);
  int32_t err = 0;
  EXPECT_EQ(yield_to_worst(callable, 104.0, {a}, {101.0, 100.0, 99.0}, &err), -1.0);
  EXPECT_EQ(err, 70);
  EXPECT_EQ(yield_to_worst(callable, 104.0, {b, a}, {101.0}, &err), -1.0);
  EXPECT_EQ(err, 160);
  EXPECT_EQ(yield_to_worst(callable, 104.0, {a, civil_serial(2035, 1, 1)}, {}, &err), -1.0);
  EXPECT_EQ(err, 160);
  EXPECT_EQ(yield_to_worst(callable, 104.0, {0}, {}, &err), -1.0);
  EXPECT_EQ(err, 150);
  EXPECT_EQ(yield_to_worst(callable, 104.0, {a}, {0.0}, &err), -1.0);
  EXPECT_EQ(err, 460);
  EXPECT_EQ(KVLbyworst(callable.rates.data(), 1, callable.dates.data(), 1, callable.settlement,
                       104.0, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 2, nullptr, 0,
                       nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr,
                       0, nullptr, 0, nullptr, nullptr, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 50);
  EXPECT_EQ(KVLbyworst(callable.rates.data(), 1, callable.dates.data(), 1, callable.settlement,
                       104.0, nullptr, nullptr, nullptr, nullptr, 0, &a, -1, nullptr, 0, nullptr,
                       nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0,
                       nullptr, 0, nullptr, nullptr, nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 60);
}

double yield_to_average_life(const QuotedBond& b, double price, int32_t* error = nullptr) {
  return KVLbyldal(b.rates.data(), b.n_rates(), b.dates.data(), b.n_dates(), b.settlement, price,
                   b.p_dated(), b.p_first(), b.p_type(), b.p_freq(), b.n_freq(), b.p_redemption(),
                   b.p_coupon_tax(), b.p_discount_tax(), b.p_horizon(), nullptr, b.p_method(),
                   b.p_factor(), b.p_sink_dates(), b.n_sink(), b.p_sink_ends(), b.n_sink_ends(),
                   b.p_sink_amounts(), nullptr, error);
}

// The sinking fund of the average-life tests: 6.4 years from 15 June 2024
// (plus half a day) is 15 June 2030 and 0.40139 x 365 = 146.5 -> 147 days:
// 9 November 2030. The bond is then a bullet to that date on its June and
// December coupon grid.
TEST(YieldToAverageLife, BulletToTheAverageLifeDate) {
  QuotedBond sinker;
  sinker.type = 500;
  sinker.coupon(0.06).matures(civil_serial(2034, 6, 15)).settles(civil_serial(2024, 6, 15));
  sinker.factor = 1.0;
  sinker.sink_dates = {civil_serial(2026, 6, 15)};
  sinker.sink_amounts = {0.10};
  sinker.frequency = 2;
  sinker.sink_frequency = 1;
  QuotedBond bullet;
  bullet.type = 500;
  bullet.coupon(0.06).matures(civil_serial(2030, 11, 9)).settles(civil_serial(2024, 6, 15));
  bullet.dated_date = civil_serial(2024, 6, 15);
  bullet.first_coupon = civil_serial(2024, 12, 15);
  int32_t err = -1;
  EXPECT_NEAR(yield_to_average_life(sinker, 97.0, &err), bullet.yield(97.0), 1e-12);
  EXPECT_EQ(err, 0);
  // With a 9 November 2030 coupon grid the answer would differ: the grid
  // is the bond's own.
  QuotedBond regridded = bullet;
  regridded.dated_date = regridded.first_coupon = 0;
  EXPECT_GT(std::fabs(regridded.yield(97.0) - bullet.yield(97.0)), 1e-6);
  // Without a sinking fund it is the yield to maturity.
  QuotedBond plain = sinker;
  plain.factor = 0.0;
  EXPECT_EQ(yield_to_average_life(plain, 97.0), plain.yield(97.0));
  EXPECT_EQ(KVLbyldal(sinker.rates.data(), 1, nullptr, 1, sinker.settlement, 97.0, nullptr,
                      nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                      nullptr, &sinker.factor, sinker.sink_dates.data(), 1, nullptr, 0,
                      sinker.sink_amounts.data(), nullptr, &err),
            -1.0);
  EXPECT_EQ(err, 50);
}

double remaining_life(const QuotedBond& b, double value, int32_t* error = nullptr) {
  return KVLbel(b.rates.data(), b.n_rates(), b.dates.data(), b.n_dates(), b.settlement, value,
                b.p_dated(), b.p_first(), b.p_type(), b.p_freq(), b.n_freq(), b.p_redemption(),
                b.p_coupon_tax(), b.p_discount_tax(), b.p_horizon(), nullptr, b.p_method(),
                b.p_bd_flags(), b.p_holidays(), b.n_holidays(), b.p_factor(), b.p_sink_dates(),
                b.n_sink(), b.p_sink_ends(), b.n_sink_ends(), b.p_sink_amounts(), nullptr,
                b.p_exdiv(), error);
}

// A Treasury settled 12 March 2024 maturing 15 November 2034: 64/182 of a
// period to the May coupon and 21 more, at any yield.
TEST(RemainingLife, TimeToMaturityInTheBondsConventions) {
  QuotedBond note;
  note.coupon(0.05).matures(civil_serial(2034, 11, 15)).settles(civil_serial(2024, 3, 12));
  const double life = (64.0 / 182.0 + 21.0) / 2.0;
  int32_t err = -1;
  EXPECT_NEAR(remaining_life(note, 0.05, &err), life, 1e-12);
  EXPECT_EQ(err, 0);
  // 9.99 is a yield of 999 %, 10.0 a price of 10: both give the life.
  QuotedBond short_note;
  short_note.coupon(0.05).matures(civil_serial(2024, 11, 15)).settles(civil_serial(2024, 3, 12));
  const double short_life = (64.0 / 182.0 + 1.0) / 2.0;
  EXPECT_NEAR(remaining_life(short_note, 9.99, &err), short_life, 1e-12);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(remaining_life(short_note, 10.0, &err), short_life, 1e-12);
  EXPECT_EQ(err, 0);
  EXPECT_NEAR(remaining_life(note, 98.5), life, 1e-12);
  EXPECT_EQ(remaining_life(note, 1e30, &err), -1.0);      // no yield for that price
  EXPECT_EQ(err, 1);
}

}  // namespace
}  // namespace kbond::testing
