// Yield searches of the inflation-linked families: an index-linked gilt with
// 23 projected flows and a 3-year TIPS.
#include <benchmark/benchmark.h>

#include "k_bond.h"
#include "dates/date_serial.h"

namespace {

void BM_IlgYield(benchmark::State& state) {
  const int32_t maturity = kbond::dates::date_to_serial(26, 7, 2016);
  const int32_t settlement = kbond::dates::date_to_serial(15, 3, 2005);
  double inflation = 0.03;
  int32_t err = 0;
  for (auto _ : state) {
    const double y = KVLilgyld(0.025, 2.8952, 81.6, 188.9, maturity, settlement, 251.603567, nullptr, nullptr,
                               &inflation, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, &err);
    benchmark::DoNotOptimize(y);
  }
}
BENCHMARK(BM_IlgYield);

void BM_TipsYield(benchmark::State& state) {
  const int32_t maturity = kbond::dates::date_to_serial(15, 1, 2016);
  const int32_t settlement = kbond::dates::date_to_serial(2, 1, 2013);
  const double base[2] = {199.2, 197.6};
  const double settle[2] = {231.317, 230.221};
  int32_t err = 0;
  for (auto _ : state) {
    const double y = KVLtipsyld(2.0, base, 2, settle, 2, maturity, settlement, 110.911, nullptr, nullptr, 0,
                                nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, &err);
    benchmark::DoNotOptimize(y);
  }
}
BENCHMARK(BM_TipsYield);

}  // namespace
