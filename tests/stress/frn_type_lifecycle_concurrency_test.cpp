// FRN types created, used and freed by many threads at once, through the
// exported functions: each thread's prices under its own types equal the
// single-threaded prices of the same conventions, a released handle is
// refused with 901, and other threads' handles are never disturbed.
// (Also run under ThreadSanitizer.)
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "k_bond.h"

namespace {

constexpr int32_t serial(int32_t y, int32_t m, int32_t d) {
  y -= m <= 2;
  const int32_t era = (y >= 0 ? y : y - 399) / 400;
  const int32_t yoe = y - era * 400;
  const int32_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int32_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468 + 25568;
}

// Conventions a thread registers: quarterly or semi-annual, act/360,
// act/365 or 30/360.
struct Conventions {
  int32_t frequency;
  int32_t day_count;
};
constexpr Conventions kConventions[] = {{4, 0}, {2, 1}, {4, 3}, {2, 0}, {12, 1}, {1, 3}};
constexpr int kKinds = sizeof kConventions / sizeof kConventions[0];

int32_t register_type(const Conventions& c, int32_t* error) {
  return KVLfrntype(0, &c.frequency, &c.day_count, nullptr, nullptr, nullptr, nullptr, nullptr,
                    nullptr, 0, 0, 0, 0, 0, 0, error);
}

const double kRate = 0.041;
const int32_t kRateDate = serial(2025, 12, 15);
const int32_t kMaturity = serial(2030, 6, 15);
const int32_t kSettlement = serial(2026, 3, 1);

double price(int32_t type, int32_t* error) {
  return KVLtfrnpr(type, &kRate, &kRateDate, 1, kMaturity, kSettlement, 0.043, nullptr, nullptr, 0,
                   nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                   nullptr, 0, error);
}

double accrued(int32_t type, int32_t* error) {
  return KVLtfrnai(type, &kRate, &kRateDate, 1, kMaturity, kSettlement, nullptr, nullptr, 0,
                   nullptr, nullptr, nullptr, nullptr, nullptr, 0, error);
}

TEST(FrnTypeLifecycleConcurrency, CreateUseFreeMatchesSingleThreaded) {
  KVLbond_initMT();
  double expected_price[kKinds], expected_accrued[kKinds];
  for (int k = 0; k < kKinds; ++k) {
    int32_t error = -1;
    const int32_t handle = register_type(kConventions[k], &error);
    ASSERT_NE(handle, 0);
    expected_price[k] = price(handle, &error);
    ASSERT_EQ(error, 0);
    expected_accrued[k] = accrued(handle, &error);
    ASSERT_EQ(error, 0);
    KVLfreefrntype(handle);
  }
  // A long-lived type that every thread uses while others churn.
  int32_t error = -1;
  const int32_t shared = register_type(kConventions[0], &error);
  ASSERT_NE(shared, 0);

  std::atomic<int> mismatches{0}, failures{0}, stale_accepted{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 150; ++i) {
        const int k = (i + t) % kKinds;
        int32_t err = -1;
        const int32_t handle = register_type(kConventions[k], &err);
        if (handle == 0 || err != 0) {
          failures.fetch_add(1);
          continue;
        }
        const double p = price(handle, &err);
        if (err != 0) failures.fetch_add(1);
        else if (p != expected_price[k]) mismatches.fetch_add(1);
        const double a = accrued(handle, &err);
        if (err != 0) failures.fetch_add(1);
        else if (a != expected_accrued[k]) mismatches.fetch_add(1);
        const double s = price(shared, &err);
        if (err != 0) failures.fetch_add(1);
        else if (s != expected_price[0]) mismatches.fetch_add(1);
        KVLfreefrntype(handle);
        // A released handle is refused (no other thread can have been given
        // the same number while this one was alive, but one may have it
        // now; only a result that is not 901 nor a clean price is wrong).
        const double after = price(handle, &err);
        if (err == 0 && after != expected_price[0] && after != expected_price[1] &&
            after != expected_price[2] && after != expected_price[3] &&
            after != expected_price[4] && after != expected_price[5])
          stale_accepted.fetch_add(1);
        else if (err != 0 && err != 901)
          failures.fetch_add(1);
      }
    });
  }
  for (std::thread& th : threads) th.join();
  EXPECT_EQ(mismatches.load(), 0);
  EXPECT_EQ(failures.load(), 0);
  EXPECT_EQ(stale_accepted.load(), 0);

  EXPECT_EQ(price(shared, &error), expected_price[0]);
  EXPECT_EQ(error, 0);
  KVLfreefrntype(shared);
  price(shared, &error);
  EXPECT_EQ(error, 901);
}

}  // namespace
