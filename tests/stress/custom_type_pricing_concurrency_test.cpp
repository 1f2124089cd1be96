// Custom bond types under load, through the exported functions only: eight
// threads price and accrue bonds of custom types while two threads keep
// redefining those types. Every result must be one a single thread gets
// under one of the two definitions that can be in force, and no call may
// fail to get the custom-type lock. (Also run under ThreadSanitizer.)
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "k_bond.h"

namespace {

// Serial of a civil date (1 = 1 January 1900), days-from-civil algorithm.
constexpr int32_t serial(int32_t y, int32_t m, int32_t d) {
  y -= m <= 2;
  const int32_t era = (y >= 0 ? y : y - 399) / 400;
  const int32_t yoe = y - era * 400;
  const int32_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int32_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468 + 25568;
}

constexpr int32_t kFirstCode = 1070;
constexpr int kCodes = 3;

// Two definitions that price the same bond differently: A is a semi-annual
// act/act bond with compound yields, B an annual 30/360 one with Japanese
// simple yields and a seven-business-day ex-dividend period.
int32_t define(int32_t code, bool b) {
  const int32_t basis = b ? 1 : 0, frequency = b ? 1 : 2, method = b ? 1 : 0, exdiv = b ? 7 : 0,
                eom = 0;
  return KVLbcustom(code, &basis, nullptr, &eom, &frequency, nullptr, &method, nullptr, nullptr,
                    nullptr, &exdiv, nullptr);
}

struct Bond {
  double coupon;
  int32_t maturity;
  int32_t settlement;
};

constexpr Bond kBonds[] = {{0.05, serial(2031, 6, 15), serial(2024, 3, 1)},
                           {0.0325, serial(2027, 12, 1), serial(2024, 11, 25)},
                           {0.07, serial(2044, 2, 28), serial(2025, 2, 20)}};

double price(const Bond& bond, int32_t code, int32_t* error) {
  return KVLbpr(&bond.coupon, 1, &bond.maturity, 1, bond.settlement, 0.045, nullptr, nullptr, &code,
                nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0,
                nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, error);
}

double accrued(const Bond& bond, int32_t code, int32_t* error) {
  return KVLbai(&bond.coupon, 1, &bond.maturity, 1, bond.settlement, nullptr, nullptr, &code,
                nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr,
                error);
}

TEST(CustomTypePricingConcurrency, ResultsMatchOneDefinitionInForce) {
  KVLbond_initMT();
  // Single-threaded results under each definition.
  double expected_price[kCodes][2][3], expected_accrued[kCodes][2][3];
  for (int c = 0; c < kCodes; ++c) {
    for (int d = 0; d < 2; ++d) {
      ASSERT_EQ(define(kFirstCode + c, d == 1), kFirstCode + c);
      for (int k = 0; k < 3; ++k) {
        int32_t error = -1;
        expected_price[c][d][k] = price(kBonds[k], kFirstCode + c, &error);
        ASSERT_EQ(error, 0);
        expected_accrued[c][d][k] = accrued(kBonds[k], kFirstCode + c, &error);
        ASSERT_EQ(error, 0);
      }
    }
    // The two definitions must be told apart by the price of every bond.
    for (int k = 0; k < 3; ++k) ASSERT_NE(expected_price[c][0][k], expected_price[c][1][k]);
  }

  std::atomic<bool> writing{true};
  std::atomic<int> mismatches{0}, errors{0}, lock_failures{0}, write_failures{0}, calls{0};
  std::vector<std::thread> threads;
  for (int w = 0; w < 2; ++w) {
    threads.emplace_back([&, w] {
      for (int i = 0; i < 150; ++i) {
        const int32_t code = kFirstCode + (i + w) % kCodes;
        if (define(code, (i / kCodes + w) % 2 == 1) != code) write_failures.fetch_add(1);
        std::this_thread::yield();
      }
      writing.store(false);
    });
  }
  for (int r = 0; r < 8; ++r) {
    threads.emplace_back([&, r] {
      for (int i = 0; i < 400; ++i) {
        const int c = (i + r) % kCodes, k = (i / kCodes + r) % 3;
        int32_t error = -1;
        const double p = price(kBonds[k], kFirstCode + c, &error);
        if (error == -60) lock_failures.fetch_add(1);
        else if (error != 0) errors.fetch_add(1);
        else if (p != expected_price[c][0][k] && p != expected_price[c][1][k]) mismatches.fetch_add(1);
        const double a = accrued(kBonds[k], kFirstCode + c, &error);
        if (error == -60) lock_failures.fetch_add(1);
        else if (error != 0) errors.fetch_add(1);
        else if (a != expected_accrued[c][0][k] && a != expected_accrued[c][1][k]) mismatches.fetch_add(1);
        calls.fetch_add(2);
      }
    });
  }
  for (std::thread& t : threads) t.join();

  EXPECT_EQ(mismatches.load(), 0);
  EXPECT_EQ(errors.load(), 0);
  EXPECT_EQ(lock_failures.load(), 0);
  EXPECT_EQ(write_failures.load(), 0);
  EXPECT_EQ(calls.load(), 8 * 400 * 2);

  // Afterwards a single thread sees exactly the definition last written.
  for (int c = 0; c < kCodes; ++c) {
    ASSERT_EQ(define(kFirstCode + c, true), kFirstCode + c);
    int32_t error = -1;
    EXPECT_EQ(price(kBonds[0], kFirstCode + c, &error), expected_price[c][1][0]);
    EXPECT_EQ(error, 0);
  }
}

// Catalogue look-ups of custom codes read the lock as well: while a writer
// redefines a code, KVLbtype returns one definition's frequency or the
// other's, never an error.
TEST(CustomTypePricingConcurrency, TypeLookUpsDuringRedefinition) {
  KVLbond_initMT();
  const int32_t code = kFirstCode + kCodes;
  ASSERT_EQ(define(code, false), code);
  std::atomic<int> bad{0};
  std::thread writer([&] {
    for (int i = 0; i < 200; ++i) define(code, i % 2 == 1);
  });
  std::vector<std::thread> readers;
  for (int r = 0; r < 4; ++r) {
    readers.emplace_back([&] {
      for (int i = 0; i < 500; ++i) {
        int32_t frequency = 0, error = -1;
        KVLbtype(code, &frequency, nullptr, nullptr, nullptr, &error);
        if (error != 0 || (frequency != 1 && frequency != 2)) bad.fetch_add(1);
      }
    });
  }
  writer.join();
  for (std::thread& t : readers) t.join();
  EXPECT_EQ(bad.load(), 0);
}

}  // namespace
