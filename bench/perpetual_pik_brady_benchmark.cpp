// Yields of the special families through their exports: a perpetual (flat
// and stepped), a PIK bond (flat and stepped, many periods) and the stripped
// yield of a 15-year Brady bond.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "dates/date_serial.h"
#include "k_bond.h"

namespace {

int32_t serial(int32_t day, int32_t month, int32_t year) {
  return kbond::dates::date_to_serial(day, month, year);
}

void BM_PerpetualYieldFlat(benchmark::State& state) {
  const double coupon = 0.06;
  const int32_t type = 500;
  const int32_t reference = serial(15, 6, 2020), settlement = serial(20, 9, 2025);
  int32_t error = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KVLpbyld(&coupon, 1, reference, settlement, 93.5, nullptr, 0, &type,
                                      nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                                      &error));
  }
}
BENCHMARK(BM_PerpetualYieldFlat);

void BM_PerpetualYieldStepped(benchmark::State& state) {
  const double coupons[] = {0.02, 0.035, 0.05};
  const int32_t steps[] = {serial(15, 12, 2026), serial(15, 6, 2029), serial(15, 6, 2031)};
  const int32_t type = 500;
  const int32_t reference = serial(15, 6, 2020), settlement = serial(1, 8, 2025);
  int32_t error = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KVLpbyld(coupons, 3, reference, settlement, 88.0, steps, 3, &type,
                                      nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                                      &error));
  }
}
BENCHMARK(BM_PerpetualYieldStepped);

void BM_PikYieldFlat(benchmark::State& state) {
  const double cash = 0.08, in_kind = 0.04;
  const int32_t maturity = serial(15, 6, 2030);
  const int32_t type = 500;
  int32_t error = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KVLpikyld(&cash, 1, &in_kind, 1, &maturity, 1, serial(20, 3, 2025),
                                       104.0, nullptr, nullptr, &type, nullptr, nullptr, nullptr,
                                       nullptr, nullptr, nullptr, 0, &error));
  }
}
BENCHMARK(BM_PikYieldFlat);

void BM_PikYieldStepped(benchmark::State& state) {
  const double cash[] = {0.0, 0.04, 0.06};
  const double in_kind[] = {0.10, 0.06, 0.0};
  const int32_t dates[] = {serial(15, 6, 2026), serial(15, 6, 2028), serial(15, 6, 2032)};
  const int32_t type = 500;
  int32_t error = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KVLpikyld(cash, 3, in_kind, 3, dates, 3, serial(20, 3, 2025), 96.0,
                                       nullptr, nullptr, &type, nullptr, nullptr, nullptr,
                                       nullptr, nullptr, nullptr, 0, &error));
  }
}
BENCHMARK(BM_PikYieldStepped);

void BM_BradyStrippedYield(benchmark::State& state) {
  const double coupon = 0.065;
  const int32_t maturity = serial(15, 6, 2040);
  const int32_t type = 500;
  int32_t error = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KVLbradyyld(&coupon, 1, &maturity, 1, serial(15, 9, 2025), 92.0,
                                         0.05, 0.045, nullptr, nullptr, nullptr, nullptr, &type,
                                         nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                                         0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                                         nullptr, &error));
  }
}
BENCHMARK(BM_BradyStrippedYield);

}  // namespace

BENCHMARK_MAIN();
