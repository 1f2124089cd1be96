// Custom bond types under load, through the exports only (also run under
// ThreadSanitizer). Two writers keep switching three custom codes between
// two definitions and redefining a fourth with its own conventions, while
// eight threads price, accrue and look up bonds of the three and two callers
// run four-thread batches over a portfolio holding the fourth. Every single
// result must be the one a single thread gets under a definition that can be
// in force, every batch the single-threaded batch byte for byte, and no call
// may miss the custom-type lock.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "batch/batch_table.h"
#include "bond/quoted_bond.h"

namespace {

using kbond::testing::QuotedBond;
using namespace kbond_batch_test;

constexpr int32_t kFirstCode = 1070, kBatchCode = 1085;
constexpr int kCodes = 3;

// A is a semi-annual act/act bond with compound yields, B an annual 30/360
// one with Japanese simple yields and a seven-business-day ex-dividend period.
int32_t define(int32_t code, bool b) {
  const int32_t basis = b ? 1 : 0, frequency = b ? 1 : 2, method = b ? 1 : 0, exdiv = b ? 7 : 0,
                eom = 0;
  return KVLbcustom(code, &basis, nullptr, &eom, &frequency, nullptr, &method, nullptr, nullptr,
                    nullptr, &exdiv, nullptr);
}

int32_t define_batch_code() {
  const int32_t basis = 5, frequency = 1;
  return KVLbcustom(kBatchCode, &basis, nullptr, nullptr, &frequency, nullptr, nullptr, nullptr,
                    nullptr, nullptr, nullptr, nullptr);
}

TEST(CustomTypePricingConcurrency, ResultsMatchADefinitionInForce) {
  KVLbond_initMT();
  const QuotedBond bonds[] = {QuotedBond(0, 0.05, serial(2031, 6, 15), serial(2024, 3, 1)),
                              QuotedBond(0, 0.0325, serial(2027, 12, 1), serial(2024, 11, 25)),
                              QuotedBond(0, 0.07, serial(2044, 2, 28), serial(2025, 2, 20))};
  const auto bond = [&](int k, int c) {
    QuotedBond b = bonds[k];
    b.type = kFirstCode + c;
    return b;
  };
  // Single-threaded results under each definition, told apart by every price.
  double price[kCodes][2][3], accrued[kCodes][2][3];
  for (int c = 0; c < kCodes; ++c) {
    for (int d = 0; d < 2; ++d) {
      ASSERT_EQ(define(kFirstCode + c, d == 1), kFirstCode + c);
      for (int k = 0; k < 3; ++k) {
        int32_t e1 = -1, e2 = -1;
        price[c][d][k] = bond(k, c).price(0.045, &e1);
        accrued[c][d][k] = bond(k, c).accrued(&e2);
        ASSERT_TRUE(e1 == 0 && e2 == 0);
      }
    }
    for (int k = 0; k < 3; ++k) ASSERT_NE(price[c][0][k], price[c][1][k]);
  }
  ASSERT_EQ(define_batch_code(), kBatchCode);
  Table t;
  for (int32_t i = 0; i < 300; ++i) {
    const int32_t type = i % 3 == 0 ? kBatchCode : (i % 3 == 1 ? 40 : 0);
    t.add(type, 0.02 + 0.0001 * i, serial(2027 + i % 25, 1 + i % 12, 15), serial(2025, 3, 17),
          i % 2, i % 2 ? 90.0 + 0.05 * i : 0.035);
  }
  Results expected(t.rows());
  int32_t error = 0;
  ASSERT_EQ(run_batch(t, 1, expected, &error), 0);

  std::atomic<int> finished{0}, mismatches{0}, errors{0}, lock_failures{0}, write_failures{0};
  const auto check = [&](int32_t e, double got, double a, double b) {
    if (e == KVL_ERR_LOCK) ++lock_failures;
    else if (e != 0) ++errors;
    else if (got != a && got != b) ++mismatches;
  };
  std::vector<std::thread> threads;
  for (int w = 0; w < 2; ++w) {
    threads.emplace_back([&, w] {
      for (int i = 0; i < 150 || finished.load() < 10; ++i) {
        const int32_t code = kFirstCode + (i + w) % kCodes;
        if (define(code, (i / kCodes + w) % 2 == 1) != code) ++write_failures;
        if (define_batch_code() != kBatchCode) ++write_failures;
        std::this_thread::yield();
      }
    });
  }
  for (int r = 0; r < 8; ++r) {
    threads.emplace_back([&, r] {
      for (int i = 0; i < 400; ++i) {
        const int c = (i + r) % kCodes, k = (i / kCodes + r) % 3;
        int32_t e1 = -1, e2 = -1, e3 = -1, frequency = 0;
        const double p = bond(k, c).price(0.045, &e1), a = bond(k, c).accrued(&e2);
        KVLbtype(kFirstCode + c, &frequency, nullptr, nullptr, nullptr, &e3);
        check(e1, p, price[c][0][k], price[c][1][k]);
        check(e2, a, accrued[c][0][k], accrued[c][1][k]);
        check(e3, frequency, 2, 1);
      }
      ++finished;
    });
  }
  std::vector<Results> got(2, Results(t.rows()));
  std::vector<int32_t> failures(2, -1);
  for (int c = 0; c < 2; ++c) {
    threads.emplace_back([&, c] {
      int32_t e = 0;
      for (int round = 0; round < 3; ++round) failures[c] = run_batch(t, 4, got[c], &e);
      ++finished;
    });
  }
  for (std::thread& thread : threads) thread.join();

  EXPECT_EQ(mismatches.load(), 0);
  EXPECT_EQ(errors.load(), 0);
  EXPECT_EQ(lock_failures.load(), 0);
  EXPECT_EQ(write_failures.load(), 0);
  for (int c = 0; c < 2; ++c) {
    EXPECT_EQ(failures[c], 0);
    EXPECT_TRUE(got[c] == expected);
  }
  // Afterwards a single thread sees exactly the definition last written.
  for (int c = 0; c < kCodes; ++c) {
    ASSERT_EQ(define(kFirstCode + c, true), kFirstCode + c);
    EXPECT_EQ(bond(0, c).price(0.045), price[c][1][0]);
  }
}

}  // namespace
