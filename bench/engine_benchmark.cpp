// The price-yield core on prepared descriptions: the annuity closed form of
// a single-step bond against the per-coupon loop of a stepped one.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "engine/bond_desc.h"
#include "engine/price_from_yield.h"

namespace {

using kbond::engine::bond_desc;

// A semi-annual actual/actual bond settled in a regular period, described
// the way the schedule step describes it.
bond_desc describe(const double* rates, const int32_t* steps, int32_t n_steps, int32_t settlement) {
  namespace dates = kbond::dates;
  const int32_t maturity = steps[n_steps - 1];
  bond_desc d;
  d.type = 500;
  d.frequency = 2;
  d.months_per_period = 6;
  d.coupons = rates;
  d.n_coupons = n_steps;
  d.dates = steps;
  d.n_dates = n_steps;
  d.maturity = maturity;
  d.anchor = maturity;
  d.settlement = settlement;
  d.horizon_date = dates::add_months(settlement, 12, 1);
  d.simple_final = 1;
  const int32_t start = dates::schedule_date(settlement, 0, 6, maturity, 0, nullptr);
  const int32_t next = dates::schedule_date(settlement, 1, 6, maturity, 0, nullptr);
  d.period_start = start;
  d.next_coupon = next;
  d.whole_periods = dates::months_between(start, maturity, 0, nullptr) / 6;
  d.basis = d.basis_accrual = (next - start) * 2.0;
  d.tn = (next - settlement) / d.basis_accrual;
  d.full_coupon = rates[0] / 2.0;
  d.accrued = rates[0] * (settlement - start) / d.basis;
  return d;
}

const int32_t kSettlement = kbond::dates::date_to_serial(15, 2, 2025);

void BM_PriceSingleStepTenYear(benchmark::State& state) {
  static const double rates[] = {0.05};
  static const int32_t steps[] = {kbond::dates::date_to_serial(15, 11, 2034)};
  const bond_desc d = describe(rates, steps, 1, kSettlement);
  double y = 0.05;
  for (auto _ : state) {
    int32_t error = 0;
    double first = 0.0;
    benchmark::DoNotOptimize(kbond::engine::price_from_yield(y, d, &first, nullptr, &error));
    benchmark::DoNotOptimize(first);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_PriceSingleStepTenYear);

void BM_PriceSingleStepThirtyYear(benchmark::State& state) {
  static const double rates[] = {0.05};
  static const int32_t steps[] = {kbond::dates::date_to_serial(15, 11, 2054)};
  const bond_desc d = describe(rates, steps, 1, kSettlement);
  double y = 0.05;
  for (auto _ : state) {
    int32_t error = 0;
    benchmark::DoNotOptimize(kbond::engine::price_from_yield(y, d, nullptr, nullptr, &error));
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_PriceSingleStepThirtyYear);

void BM_PriceSteppedTenYear(benchmark::State& state) {
  static const double rates[] = {0.03, 0.04, 0.05};
  static const int32_t steps[] = {kbond::dates::date_to_serial(15, 11, 2027),
                                  kbond::dates::date_to_serial(15, 11, 2030),
                                  kbond::dates::date_to_serial(15, 11, 2034)};
  const bond_desc d = describe(rates, steps, 3, kSettlement);
  double y = 0.05;
  for (auto _ : state) {
    int32_t error = 0;
    double first = 0.0;
    benchmark::DoNotOptimize(kbond::engine::price_from_yield(y, d, &first, nullptr, &error));
    benchmark::DoNotOptimize(first);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_PriceSteppedTenYear);

void BM_PriceWithSecondDerivative(benchmark::State& state) {
  static const double rates[] = {0.05};
  static const int32_t steps[] = {kbond::dates::date_to_serial(15, 11, 2034)};
  const bond_desc d = describe(rates, steps, 1, kSettlement);
  double y = 0.05;
  for (auto _ : state) {
    int32_t error = 0;
    double first = 0.0, second = 0.0;
    benchmark::DoNotOptimize(kbond::engine::price_from_yield(y, d, &first, &second, &error));
    benchmark::DoNotOptimize(second);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_PriceWithSecondDerivative);

}  // namespace
