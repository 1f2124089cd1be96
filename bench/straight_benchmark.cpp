// The straight-bond exports from raw arguments, as a caller pays for them:
// set-up of the description, then the yield solve, the duration or the
// cash-flow table.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "dates/date_serial.h"
#include "k_bond.h"

namespace {

struct Bond {
  double rate;
  int32_t maturity;
  int32_t settlement;
  int32_t type;
};

// A ten-year Treasury note and a thirty-year bond, settled mid-period.
const Bond kTenYear{0.04375, kbond::dates::date_to_serial(15, 5, 2034),
                    kbond::dates::date_to_serial(12, 3, 2024), 0};
const Bond kThirtyYear{0.0475, kbond::dates::date_to_serial(15, 11, 2053),
                       kbond::dates::date_to_serial(12, 3, 2024), 500};

double yield(const Bond& b, double price) {
  int32_t err = 0;
  return KVLbyld(&b.rate, 1, &b.maturity, 1, b.settlement, price, nullptr, nullptr, &b.type,
                 nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                 nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &err);
}

void BM_YieldTenYearTreasury(benchmark::State& state) {
  double price = 98.71875;
  for (auto _ : state) {
    benchmark::DoNotOptimize(price);
    benchmark::DoNotOptimize(yield(kTenYear, price));
  }
}
BENCHMARK(BM_YieldTenYearTreasury);

void BM_YieldThirtyYearBond(benchmark::State& state) {
  double price = 101.25;
  for (auto _ : state) {
    benchmark::DoNotOptimize(price);
    benchmark::DoNotOptimize(yield(kThirtyYear, price));
  }
}
BENCHMARK(BM_YieldThirtyYearBond);

// A thirty-year bond repaying equal parts of its face every month from
// January 2025: 348 bullets. With one coupon rate on unadjusted dates each
// bullet is an annuity; with payments on business days (or a coupon step)
// their coupons are walked, once for all of them.
void BM_YieldMonthlySinkingFund(benchmark::State& state) {
  const double rate = 0.05;
  const int32_t maturity = kbond::dates::date_to_serial(15, 1, 2054);
  const int32_t settlement = kbond::dates::date_to_serial(1, 3, 2024);
  const int32_t sink_from = kbond::dates::date_to_serial(15, 1, 2025);
  const int32_t type = 0, frequency[2] = {12, 12};
  const int32_t business_days = 1;
  const int32_t* method = state.range(0) != 0 ? &business_days : nullptr;
  const double factor = -1.0;
  double price = 98.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(price);
    int32_t err = 0;
    benchmark::DoNotOptimize(KVLbyld(&rate, 1, &maturity, 1, settlement, price, nullptr, nullptr,
                                     &type, frequency, 2, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, method, nullptr, nullptr, 0, &factor, &sink_from,
                                     1, nullptr, 0, nullptr, nullptr, nullptr, &err));
  }
}
BENCHMARK(BM_YieldMonthlySinkingFund)->Arg(0)->Arg(1)->ArgName("business_days");

void BM_ModifiedDuration(benchmark::State& state) {
  const Bond& b = kTenYear;
  double y = 0.0425;
  for (auto _ : state) {
    benchmark::DoNotOptimize(y);
    int32_t err = 0;
    benchmark::DoNotOptimize(KVLbdur(&b.rate, 1, &b.maturity, 1, b.settlement, y, nullptr,
                                     nullptr, &b.type, nullptr, 0, nullptr, nullptr, nullptr,
                                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                                     nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr,
                                     &err));
  }
}
BENCHMARK(BM_ModifiedDuration);

void BM_CashFlowTableThirtyYear(benchmark::State& state) {
  const Bond& b = kThirtyYear;
  const double price = 101.25;
  for (auto _ : state) {
    int32_t* dates = nullptr;
    double *coupons = nullptr, *principal = nullptr, *periods = nullptr;
    int32_t err = 0;
    const int32_t rows = KVLbcshflw(&dates, &coupons, &principal, &periods, &b.rate, 1,
                                    &b.maturity, 1, b.settlement, nullptr, nullptr, &b.type,
                                    nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                                    &price, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0,
                                    nullptr, 0, nullptr, nullptr, nullptr, &err);
    benchmark::DoNotOptimize(rows);
    benchmark::DoNotOptimize(coupons);
    KVLbcshflw_free(dates, coupons, principal, periods);
  }
}
BENCHMARK(BM_CashFlowTableThirtyYear);

}  // namespace

namespace {

// The description alone (the accrued interest needs nothing more): the part
// of every call above that is set-up.
void BM_SetUpOnly(benchmark::State& state) {
  const Bond& b = kTenYear;
  for (auto _ : state) {
    int32_t err = 0;
    benchmark::DoNotOptimize(KVLbai(&b.rate, 1, &b.maturity, 1, b.settlement, nullptr, nullptr,
                                    &b.type, nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr, 0,
                                    nullptr, nullptr, nullptr, &err));
  }
}
BENCHMARK(BM_SetUpOnly);

}  // namespace
