// Straight-bond exports from raw arguments, as a caller makes them: price,
// yield and accrued interest of a 10-year U.S. Treasury note and of a Gilt.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdint>

#include "dates/date_serial.h"
#include "k_bond.h"

namespace {

struct RawBond {
  double coupon;
  int32_t maturity;
  int32_t type;
  int32_t settlement;
  double yield;
};

// 4.25% Treasury note of 15 Nov 2034 settled 2 Dec 2024.
RawBond treasury() {
  return {0.0425, kbond::dates::date_to_serial(15, 11, 2034), 0,
          kbond::dates::date_to_serial(2, 12, 2024), 0.042};
}

// 4.5% Treasury Gilt of 7 Jun 2028 settled 3 Jun 2025, ex-dividend.
RawBond gilt() {
  return {0.045, kbond::dates::date_to_serial(7, 6, 2028), 40,
          kbond::dates::date_to_serial(3, 6, 2025), 0.041};
}

void price(benchmark::State& state, RawBond b) {
  int32_t error = 0;
  for (auto _ : state) {
    double p = KVLbpr(&b.coupon, 1, &b.maturity, 1, b.settlement, b.yield, nullptr, nullptr,
                      &b.type, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                      nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                      nullptr, &error);
    benchmark::DoNotOptimize(p);
  }
  if (error != 0) state.SkipWithError("KVLbpr failed");
}

// The yield back from the price at the bond's own yield: Newton from the
// current yield, as almost every caller's price takes it.
void yield(benchmark::State& state, RawBond b) {
  int32_t error = 0;
  const double clean = KVLbpr(&b.coupon, 1, &b.maturity, 1, b.settlement, b.yield, nullptr,
                              nullptr, &b.type, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr,
                              0, nullptr, nullptr, nullptr, &error);
  for (auto _ : state) {
    double y = KVLbyld(&b.coupon, 1, &b.maturity, 1, b.settlement, clean, nullptr, nullptr,
                       &b.type, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                       nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                       nullptr, &error);
    benchmark::DoNotOptimize(y);
  }
  if (error != 0) state.SkipWithError("KVLbyld failed");
}

void accrued(benchmark::State& state, RawBond b) {
  int32_t error = 0;
  for (auto _ : state) {
    double a = KVLbai(&b.coupon, 1, &b.maturity, 1, b.settlement, nullptr, nullptr, &b.type,
                      nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                      nullptr, &error);
    benchmark::DoNotOptimize(a);
  }
  if (error != 0) state.SkipWithError("KVLbai failed");
}

// The yardstick for the figures above: a price written by hand for this one
// convention (semiannual act/act bullet, coupon on a day every month has,
// no odd periods, no checks), from the same raw dates. Its time says how
// fast this machine is today.
double hand_written_price(double coupon, int32_t maturity, int32_t settlement, double yield) {
  using namespace std::chrono;
  const sys_days day_zero{year{1899} / December / 31};  // serial 0 for dates after February 1900
  const year_month_day end{day_zero + days{maturity}};
  const year_month_day settle{day_zero + days{settlement}};
  const int months_left = (static_cast<int>(end.year()) - static_cast<int>(settle.year())) * 12 +
                          static_cast<int>(static_cast<unsigned>(end.month())) -
                          static_cast<int>(static_cast<unsigned>(settle.month()));
  int periods = months_left / 6;  // coupons after the next one
  year_month_day next = end - months{6 * periods};
  if (sys_days{next} <= sys_days{settle}) next = end - months{6 * --periods};
  const year_month_day previous = next - months{6};
  const double e = (sys_days{next} - sys_days{previous}).count();
  const double a = (sys_days{settle} - sys_days{previous}).count();
  const double w = (e - a) / e;
  const double v = 1.0 / (1.0 + yield / 2.0);
  const double c = 100.0 * coupon / 2.0;
  const double vw = std::pow(v, w);
  const double vn = std::pow(v, periods);
  const double coupons = c * vw * (1.0 - vn * v) / (1.0 - v);
  return coupons + 100.0 * vw * vn - c * a / e;
}

void hand_written(benchmark::State& state, RawBond b) {
  for (auto _ : state) {
    double p = hand_written_price(b.coupon, b.maturity, b.settlement, b.yield);
    benchmark::DoNotOptimize(p);
  }
  int32_t error = 0;
  const double library = KVLbpr(&b.coupon, 1, &b.maturity, 1, b.settlement, b.yield, nullptr,
                                nullptr, &b.type, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr,
                                0, nullptr, nullptr, nullptr, &error);
  if (std::fabs(library - hand_written_price(b.coupon, b.maturity, b.settlement, b.yield)) > 1e-5)
    state.SkipWithError("the hand-written price disagrees with KVLbpr");
}

BENCHMARK_CAPTURE(hand_written, treasury_10y, treasury());
BENCHMARK_CAPTURE(price, treasury_10y, treasury());
BENCHMARK_CAPTURE(price, gilt_ex_dividend, gilt());
BENCHMARK_CAPTURE(yield, treasury_10y, treasury());
BENCHMARK_CAPTURE(yield, gilt_ex_dividend, gilt());
BENCHMARK_CAPTURE(accrued, treasury_10y, treasury());
BENCHMARK_CAPTURE(accrued, gilt_ex_dividend, gilt());

}  // namespace
