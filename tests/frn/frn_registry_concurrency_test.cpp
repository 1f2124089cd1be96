// The FRN type registry under several threads creating, using and freeing
// types at once (run under ThreadSanitizer as well).
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

#include "frn/frn_registry.h"
#include "frn_test_support.h"
#include "k_bond.h"

namespace kbond::frn {
namespace {

TEST(FrnRegistryConcurrency, CreateUseAndFreeFromManyThreads) {
  KVLbond_initMT();
  const int32_t before = registry_size();
  constexpr int kThreads = 6;
  constexpr int kRounds = 300;
  std::atomic<int> failures{0};
  std::vector<std::vector<int32_t>> kept(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t, &failures, &kept] {
      const int32_t frequency = (t % 2) ? 4 : 2;
      testing::Note note;
      for (int round = 0; round < kRounds; ++round) {
        int32_t err = 0;
        const int32_t handle = KVLfrntype(0, &frequency, nullptr, nullptr, nullptr, nullptr, nullptr,
                                          nullptr, nullptr, 0, 0, 0, 0, 0, 0, &err);
        if (handle == 0 || err != 0) ++failures;
        // A typed call registers and frees a temporary type of its own.
        note.type = handle;
        if (note.price(0.05, &err) <= 0.0 || err != 0) ++failures;
        if (round % 10 == 0) {
          kept[t].push_back(handle);  // freed by the main thread later
        } else {
          KVLfreefrntype(handle);
        }
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);

  std::set<int32_t> live;
  for (const auto& handles : kept) {
    for (int32_t h : handles) EXPECT_TRUE(live.insert(h).second) << "handle " << h << " given twice";
  }
  EXPECT_EQ(registry_size(), before + static_cast<int32_t>(live.size()));
  for (int32_t h : live) KVLfreefrntype(h);
  EXPECT_EQ(registry_size(), before) << "no node may be left behind";
}

TEST(FrnRegistryConcurrency, FreeingATypeDoesNotDisturbCallsUsingIt) {
  KVLbond_initMT();
  const int32_t quarterly = 4;
  std::atomic<bool> stop{false};
  std::atomic<int> unexpected{0};
  std::atomic<int32_t> current{0};
  std::thread user([&] {
    testing::Note note;
    while (!stop.load()) {
      note.type = current.load();
      int32_t err = 0;
      const double p = note.price(0.05, &err);
      // Either the type was live (a price) or already freed (901): nothing else.
      if (!((err == 0 && p > 0.0) || (err == 901 && p == -1.0))) ++unexpected;
    }
  });
  for (int i = 0; i < 500; ++i) {
    int32_t err = 0;
    const int32_t h = KVLfrntype(0, &quarterly, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, 0, 0, 0, 0, 0, 0, &err);
    current.store(h);
    KVLfreefrntype(h);
  }
  stop.store(true);
  user.join();
  EXPECT_EQ(unexpected.load(), 0);
}

}  // namespace
}  // namespace kbond::frn
