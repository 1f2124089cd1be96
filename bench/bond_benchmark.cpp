// Straight-bond exports from raw arguments, as a caller makes them: price
// and accrued interest of a 10-year U.S. Treasury note and of a Gilt.
#include <benchmark/benchmark.h>

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

BENCHMARK_CAPTURE(price, treasury_10y, treasury());
BENCHMARK_CAPTURE(price, gilt_ex_dividend, gilt());
BENCHMARK_CAPTURE(accrued, treasury_10y, treasury());
BENCHMARK_CAPTURE(accrued, gilt_ex_dividend, gilt());

}  // namespace
