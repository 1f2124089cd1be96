// Portfolios: the rows of bench/make_portfolio.py (sixteen markets, half
// priced, half given a yield) valued by KVLbbatch for the six measures of
// `kbond batch`, on one and two threads, and the plain loop of KVLbpr over
// the same bonds that the Python array functions are measured against
// (bench/batch_ratio.py).
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "k_bond.h"

namespace {

constexpr int32_t kTypes[] = {0, 40, 60, 81, 260, 200, 220, 3, 1, 100, 240, 280, 20, 380, 500, 530};
constexpr int32_t kSettlement = 45823;  // 16 June 2025

struct Book {
  std::vector<int32_t> types, maturities, settlements, kinds;
  std::vector<double> coupons, market, yields;

  explicit Book(int64_t n) {
    for (int64_t i = 0; i < n; ++i) {
      types.push_back(kTypes[i % 16]);
      coupons.push_back((0.5 + (i % 91) * 0.05) / 100.0);
      maturities.push_back(static_cast<int32_t>(kSettlement + 30 + (i * 7919) % 10950));
      settlements.push_back(kSettlement);
      yields.push_back((1.0 + (i % 61) * 0.1) / 100.0);
      kinds.push_back(i % 2 ? KVL_BATCH_GIVEN_PRICE : KVL_BATCH_GIVEN_YIELD);
      market.push_back(i % 2 ? 85.0 + (i % 37) * 0.75 : yields.back());
    }
  }
};

const Book& book() {
  static const Book b(1000000);
  return b;
}

void kvlbpr_loop(benchmark::State& state) {
  const Book& b = book();
  std::vector<double> out(b.types.size());
  for (auto _ : state) {
    for (size_t i = 0; i < out.size(); ++i) {
      int32_t error = 0;
      out[i] = KVLbpr(&b.coupons[i], 1, &b.maturities[i], 1, b.settlements[i], b.yields[i],
                      nullptr, nullptr, &b.types[i], nullptr, 0, nullptr, nullptr, nullptr,
                      nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr,
                      0, nullptr, nullptr, nullptr, &error);
    }
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(out.size()));
}
BENCHMARK(kvlbpr_loop)->Unit(benchmark::kMillisecond)->UseRealTime();

// The same prices as kvlbpr_loop through the batch entry point: the cost of
// the batch's own bookkeeping per row.
void batch_prices(benchmark::State& state) {
  const Book& b = book();
  const size_t n = b.types.size();
  std::vector<double> out(n);
  std::vector<int32_t> errors(n);
  for (auto _ : state) {
    int32_t error = 0;
    KVLbbatch(static_cast<int32_t>(n), b.types.data(), b.coupons.data(), b.maturities.data(),
              b.settlements.data(), b.yields.data(), KVL_BATCH_GIVEN_YIELD, nullptr, nullptr,
              nullptr, nullptr, nullptr, KVL_BATCH_PRICE, static_cast<int32_t>(state.range(0)),
              out.data(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, errors.data(),
              nullptr, &error);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(n));
}
BENCHMARK(batch_prices)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

void batch_six_measures(benchmark::State& state) {
  const Book& b = book();
  const size_t n = b.types.size();
  std::vector<std::vector<double>> out(6, std::vector<double>(n));
  std::vector<int32_t> errors(n);
  const int32_t measures = KVL_BATCH_PRICE | KVL_BATCH_YIELD | KVL_BATCH_ACCRUED |
                           KVL_BATCH_MODIFIED_DURATION | KVL_BATCH_CONVEXITY | KVL_BATCH_PVBP;
  for (auto _ : state) {
    int32_t error = 0;
    KVLbbatch(static_cast<int32_t>(n), b.types.data(), b.coupons.data(), b.maturities.data(),
              b.settlements.data(), b.market.data(), 0, b.kinds.data(), nullptr, nullptr, nullptr,
              nullptr, measures, static_cast<int32_t>(state.range(0)), out[0].data(),
              out[1].data(), out[2].data(), out[3].data(), nullptr, out[4].data(), out[5].data(),
              errors.data(), nullptr, &error);
    benchmark::DoNotOptimize(out[0].data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(n));
}
BENCHMARK(batch_six_measures)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
