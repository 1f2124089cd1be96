// Floating-rate note timings: discount margin (48-step search), price from
// yield and yield from price of a five-year quarterly note, plain forms (each
// call registers and releases its temporary type).
// Medians over five runs:
//   ./build/release/frn_benchmark --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>

#include <cstdint>

#include "dates/date_serial.h"
#include "k_bond.h"

namespace {

using kbond::dates::date_to_serial;

struct QuarterlyNote {
  double rates[3] = {0.05, 0.052, 0.055};
  int32_t rate_dates[3] = {date_to_serial(15, 12, 2025), date_to_serial(15, 6, 2026),
                           date_to_serial(15, 6, 2027)};
  int32_t maturity = date_to_serial(15, 3, 2031);
  int32_t settlement = date_to_serial(1, 3, 2026);
  int32_t frequency = 4;
};

void BM_DiscountMargin(benchmark::State& state) {
  const QuarterlyNote note;
  int32_t err = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KVLfrndm(note.maturity, note.settlement, 0.0515, 99.4, 0.047, 0.045, 0.005,
                                      nullptr, nullptr, nullptr, &note.frequency, nullptr, &err));
  }
}
BENCHMARK(BM_DiscountMargin);

void BM_Price(benchmark::State& state) {
  const QuarterlyNote note;
  int32_t err = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KVLfrnpr(note.rates, note.rate_dates, 3, note.maturity, note.settlement, 0.051,
                                      nullptr, nullptr, 0, nullptr, &note.frequency, nullptr, nullptr,
                                      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &err));
  }
}
BENCHMARK(BM_Price);

void BM_Yield(benchmark::State& state) {
  const QuarterlyNote note;
  int32_t err = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KVLfrnyld(note.rates, note.rate_dates, 3, note.maturity, note.settlement, 99.2,
                                       nullptr, nullptr, 0, nullptr, &note.frequency, nullptr, nullptr,
                                       nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &err));
  }
}
BENCHMARK(BM_Yield);

}  // namespace
