// Threaded portfolio valuation (also run under ThreadSanitizer): two callers
// each run a four-thread batch over rows of base and custom types while
// another thread keeps redefining the custom type with the same conventions.
// Every result must equal the single-threaded batch, and no row may miss
// the custom-type lock.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "batch/batch_table.h"

namespace {

using namespace kbond_batch_test;

constexpr int32_t kCustom = 1085;

int32_t define_custom() {
  const int32_t basis = 5, frequency = 1;
  return KVLbcustom(kCustom, &basis, nullptr, nullptr, &frequency, nullptr, nullptr, nullptr,
                    nullptr, nullptr, nullptr, nullptr);
}

TEST(BatchConcurrency, ThreadedBatchesMatchOneThreadWhileTypesAreRedefined) {
  KVLbond_initMT();
  ASSERT_EQ(define_custom(), kCustom);
  Table t;
  const int32_t settle = serial(2025, 3, 17);
  for (int32_t i = 0; i < 300; ++i) {
    const int32_t type = i % 3 == 0 ? kCustom : (i % 3 == 1 ? 40 : 0);
    t.add(type, 0.02 + 0.0001 * i, serial(2027 + i % 25, 1 + i % 12, 15), settle, i % 2,
          i % 2 ? 90.0 + 0.05 * i : 0.035);
  }
  Results expected(t.rows());
  int32_t error = 0;
  ASSERT_EQ(run_batch(t, 1, expected, &error), 0);

  std::atomic<bool> done{false};
  std::atomic<int> redefinitions{0};
  std::thread writer([&] {
    while (!done.load()) {
      if (define_custom() == kCustom) redefinitions.fetch_add(1);
      std::this_thread::yield();
    }
  });
  std::vector<Results> got(2, Results(t.rows()));
  std::vector<int32_t> failures(2, -1);
  std::vector<std::thread> callers;
  for (int c = 0; c < 2; ++c)
    callers.emplace_back([&, c] {
      int32_t e = 0;
      for (int round = 0; round < 3; ++round) failures[c] = run_batch(t, 4, got[c], &e);
    });
  for (std::thread& c : callers) c.join();
  done.store(true);
  writer.join();
  for (int c = 0; c < 2; ++c) {
    EXPECT_EQ(failures[c], 0);
    EXPECT_TRUE(got[c] == expected);
  }
  EXPECT_GT(redefinitions.load(), 0);
}

}  // namespace
