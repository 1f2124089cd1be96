// Custom bond types under concurrent use: readers holding the type lock
// while they look a custom code up in the catalogue must always see one
// whole definition, never a mix of two, while writers redefine the code.
// (Also run under ThreadSanitizer.)
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "engine/catalogue.h"
#include "engine/custom_types.h"
#include "engine/type_lock.h"
#include "k_bond.h"

namespace kbond::engine {
namespace {

constexpr int32_t kFrequencies[] = {1, 2, 3, 4, 6, 12};
constexpr int32_t kProbeCoupon = 40000;

// Every field of definition v is derived from v, so a reader can tell a
// torn slot from a whole one.
int32_t define_version(int32_t code, int32_t v) {
  const int32_t days = v, exdiv = -v, mm = 360 + v, freq = kFrequencies[v % 6];
  return KVLbcustom(code, nullptr, nullptr, nullptr, &freq, nullptr, nullptr, &days, nullptr, &mm,
                    &exdiv, &freq);
}

// Reads code's definition through the catalogue; true when consistent.
bool read_consistent(int32_t code) {
  const int32_t v = bond_type_mm_basis(code, 0) - 360;
  if (v < 0 || v > 1000) return false;
  double days = 0.0;
  bond_type_adjust_accrual_days(&days, code, 0, true, 2, 0.05);
  const int32_t exdiv = bond_type_exdiv_date(kProbeCoupon, code, dates::BusinessCalendar{}, nullptr);
  const int32_t freq = bond_type_frequency(code);
  return days == v && exdiv == kProbeCoupon - v && freq == kFrequencies[v % 6] &&
         bond_type_annual_yield(code, 0) == freq && bond_type_base(code) == code;
}

TEST(CustomTypeConcurrency, ReadersSeeWholeDefinitionsWhileWritersRedefine) {
  KVLbond_initMT();
  constexpr int32_t kFirst = 1040, kCodes = 4;
  for (int32_t c = 0; c < kCodes; ++c) ASSERT_EQ(define_version(kFirst + c, 0), kFirst + c);

  std::atomic<int> torn{0}, lock_failures{0}, write_failures{0}, reads{0};
  std::vector<std::thread> threads;
  for (int w = 0; w < 2; ++w) {
    threads.emplace_back([&, w] {
      for (int i = 0; i < 120; ++i) {
        const int32_t code = kFirst + i % kCodes;
        const int32_t v = (w * 500 + i) % 997 + 1;
        if (define_version(code, v) != code) write_failures.fetch_add(1);
        // Spread the writes over the readers' whole run.
        std::this_thread::sleep_for(std::chrono::microseconds(100));
      }
    });
  }
  for (int r = 0; r < 4; ++r) {
    threads.emplace_back([&, r] {
      for (int i = 0; i < 1500; ++i) {
        const int32_t code = kFirst + (i + r) % kCodes;
        {
          TypeReadGuard guard(&code);
          if (guard.failed()) {
            lock_failures.fetch_add(1);
            continue;
          }
          // Two reads with a pause between must agree: nobody may write
          // while a reader is inside.
          const int32_t before = bond_type_mm_basis(code, 0);
          if (!read_consistent(code)) torn.fetch_add(1);
          std::this_thread::yield();
          if (!read_consistent(code) || bond_type_mm_basis(code, 0) != before) torn.fetch_add(1);
          reads.fetch_add(1);
        }
        // Let the readers' count fall to zero now and then, as between
        // real analytic calls.
        std::this_thread::sleep_for(std::chrono::microseconds(20));
      }
    });
  }
  for (std::thread& t : threads) t.join();

  EXPECT_EQ(torn.load(), 0);
  EXPECT_EQ(lock_failures.load(), 0);
  EXPECT_EQ(write_failures.load(), 0);
  EXPECT_EQ(reads.load(), 4 * 1500);
}

}  // namespace
}  // namespace kbond::engine
