// Conversion factor per rule family (one contract of each), the implied
// repo search and the carry over a long sinking fund.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "k_bond.h"

namespace {

// Serial of a civil date (1 = 1 January 1900), days-from-civil.
constexpr int32_t serial(int32_t y, int32_t m, int32_t d) {
  y -= m <= 2;
  const int32_t era = (y >= 0 ? y : y - 399) / 400;
  const int32_t yoe = y - era * 400;
  const int32_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  return era * 146097 + yoe * 365 + yoe / 4 - yoe / 100 + doy - 719468 + 25568;
}

struct FactorCase {
  int32_t contract;
  int32_t maturity;
  int32_t delivery;
};

// One deliverable bond per rule family, in family order 0..14.
constexpr FactorCase kCases[] = {
    {0, serial(2030, 11, 15), serial(2010, 3, 1)},  // CBOT bond
    {37, serial(2014, 6, 14), serial(2005, 6, 1)},  // MATIF notional (priced)
    {10, serial(2008, 7, 30), serial(1999, 7, 30)}, // MEFF 10 % bono
    {4, serial(2014, 3, 20), serial(2005, 3, 1)},   // TSE JGB
    {7, serial(2009, 12, 1), serial(2000, 6, 1)},   // Montreal CGB
    {8, serial(2014, 6, 16), serial(2005, 6, 1)},   // MEFF 10-year (priced)
    {15, serial(2014, 3, 10), serial(2005, 3, 1)},  // Eurex Bund (priced)
    {20, serial(2014, 3, 10), serial(2005, 3, 1)},  // 7 % contract on the 10th (priced)
    {25, serial(2014, 6, 30), serial(2005, 6, 1)},  // Belfox (priced)
    {40, serial(2012, 1, 15), serial(2003, 3, 3)},  // 7th of the month
    {45, serial(2007, 11, 1), serial(1998, 6, 1)},  // BTP closed form
    {50, serial(2013, 3, 22), serial(2004, 3, 1)},  // third-Wednesday annual
    {55, serial(2014, 6, 16), serial(2005, 6, 1)},  // Porto (priced)
    {42, serial(2014, 6, 14), serial(2004, 6, 2)},  // OM Stockholm
    {70, serial(2008, 2, 15), serial(1999, 9, 1)},  // 6.5 % CBOT note
};

void BM_ConversionFactor(benchmark::State& state) {
  const FactorCase& c = kCases[state.range(0)];
  int32_t error = 0;
  for (auto _ : state) {
    const double f = KVLbfact(0.05, c.maturity, c.delivery, &c.contract, nullptr, 0, nullptr,
                              nullptr, nullptr, nullptr, nullptr, &error);
    benchmark::DoNotOptimize(f);
  }
  if (error != 0) state.SkipWithError("factor failed");
}
BENCHMARK(BM_ConversionFactor)->DenseRange(0, 14)->ArgName("family");

void BM_ImpliedRepo(benchmark::State& state) {
  const double coupon = 0.05;
  const int32_t maturity = serial(2030, 11, 15);
  const int32_t type = 0;
  const int32_t settlement = serial(2010, 4, 1);
  const int32_t delivery = serial(2010, 6, 30);
  int32_t error = 0;
  for (auto _ : state) {
    const double r = KVLbirepo(&coupon, 1, &maturity, 1, settlement, 99.75, 108.5, 0.9123,
                               delivery, nullptr, nullptr, nullptr, &type, nullptr, 0, nullptr,
                               nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, &error);
    benchmark::DoNotOptimize(r);
  }
  if (error != 0) state.SkipWithError("implied repo failed");
}
BENCHMARK(BM_ImpliedRepo);

// A 40-year monthly-pay bond repaying 0.2 % of its face every month, carried
// over 34 years: the walk pays one coupon and one repayment a month, and the
// outstanding face must follow along rather than be recounted each month.
void BM_CarryMonthlySinkingFund(benchmark::State& state) {
  const double coupon = 0.06;
  const int32_t maturity = serial(2040, 1, 15);
  const int32_t type = 500;
  const int32_t frequency[2] = {12, 12};
  const double factor = 1.0;
  const int32_t sink_date = serial(2000, 2, 15);
  const double sink_amount = 0.002;
  const int32_t settlement = serial(2005, 3, 1);
  const int32_t end_date = serial(2039, 3, 1);
  int32_t error = 0;
  for (auto _ : state) {
    const double c = KVLbcarry(&coupon, 1, &maturity, 1, settlement, end_date, 99.5, 0.04,
                               nullptr, nullptr, &type, frequency, 2, nullptr, &factor,
                               &sink_date, 1, nullptr, 0, &sink_amount, nullptr, nullptr,
                               nullptr, nullptr, nullptr, &error);
    benchmark::DoNotOptimize(c);
  }
  if (error != 0) state.SkipWithError("carry failed");
}
BENCHMARK(BM_CarryMonthlySinkingFund);

}  // namespace
