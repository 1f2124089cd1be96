// FRN types created, used and freed by many threads at once (also run under
// ThreadSanitizer): each thread's prices under its own types equal the
// single-threaded prices of the same conventions, a long-lived type keeps
// its price while others churn, no handle is given twice, a call on a type
// freed under it is a price or error 901, and no node is left behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <set>
#include <thread>
#include <vector>

#include "frn/frn_registry.h"
#include "frn_test_support.h"
#include "k_bond.h"

namespace kbond::frn {
namespace {

// {frequency, day count}: quarterly to annual, act/360, act/365 or 30/360.
constexpr int32_t kConventions[][2] = {{4, 0}, {2, 1}, {4, 3}, {2, 0}, {12, 1}, {1, 3}};
constexpr int kKinds = 6;

int32_t register_type(int kind, int32_t* error) {
  return KVLfrntype(0, &kConventions[kind][0], &kConventions[kind][1], nullptr, nullptr, nullptr,
                    nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, 0, error);
}

TEST(FrnRegistryConcurrency, CreateUseAndFreeMatchOneThread) {
  KVLbond_initMT();
  const int32_t before = registry_size();
  const testing::Note note;
  std::vector<double> price(kKinds), accrued(kKinds);
  for (int k = 0; k < kKinds; ++k) {
    int32_t error = -1;
    const int32_t handle = register_type(k, &error);
    ASSERT_NE(handle, 0);
    testing::Note typed = note;
    typed.type = handle;
    price[k] = typed.price(0.043, &error);
    accrued[k] = typed.accrued(&error);
    ASSERT_EQ(error, 0);
    KVLfreefrntype(handle);
  }
  int32_t error = -1;
  testing::Note shared = note;
  shared.type = register_type(0, &error);
  ASSERT_NE(shared.type, 0);

  constexpr int kThreads = 8, kRounds = 150;
  std::atomic<int> mismatches{0}, failures{0};
  std::vector<std::vector<int32_t>> kept(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      testing::Note mine = note;
      for (int i = 0; i < kRounds; ++i) {
        const int k = (i + t) % kKinds;
        int32_t err = -1;
        mine.type = register_type(k, &err);
        if (mine.type == 0 || err != 0) {
          ++failures;
          continue;
        }
        int32_t e1 = -1, e2 = -1, e3 = -1;
        const double p = mine.price(0.043, &e1), a = mine.accrued(&e2), s = shared.price(0.043, &e3);
        if (e1 != 0 || e2 != 0 || e3 != 0) ++failures;
        else if (p != price[k] || a != accrued[k] || s != price[0]) ++mismatches;
        if (i % 10 == 0) {
          kept[t].push_back(mine.type);  // freed by the main thread later
          continue;
        }
        KVLfreefrntype(mine.type);
        // Refused with 901, unless another thread has been given the number since.
        const double after = mine.price(0.043, &err);
        if (err == 0 ? std::find(price.begin(), price.end(), after) == price.end() : err != 901)
          ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(mismatches.load(), 0);
  EXPECT_EQ(failures.load(), 0);

  std::set<int32_t> live;
  for (const auto& handles : kept)
    for (int32_t h : handles) EXPECT_TRUE(live.insert(h).second) << "handle " << h << " given twice";
  EXPECT_EQ(registry_size(), before + 1 + static_cast<int32_t>(live.size()));
  EXPECT_EQ(shared.price(0.043, &error), price[0]);
  for (int32_t h : live) KVLfreefrntype(h);
  KVLfreefrntype(shared.type);
  shared.price(0.043, &error);
  EXPECT_EQ(error, 901);
  EXPECT_EQ(registry_size(), before) << "no node may be left behind";
}

TEST(FrnRegistryConcurrency, FreeingATypeDoesNotDisturbCallsUsingIt) {
  KVLbond_initMT();
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
    const int32_t h = register_type(0, &err);
    current.store(h);
    KVLfreefrntype(h);
  }
  stop.store(true);
  user.join();
  EXPECT_EQ(unexpected.load(), 0);
}

}  // namespace
}  // namespace kbond::frn
