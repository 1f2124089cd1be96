// The date caches are filled lazily from many threads at once without a lock.
// Several threads convert the whole cached ranges in different orders from
// empty caches; every answer must match the independent civil-date reference
// (and ThreadSanitizer must stay silent).
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "dates/civil_reference.h"
#include "dates/date_serial.h"

namespace kbond::dates {
namespace {

constexpr int kThreads = 4;
constexpr int32_t kFirstSerial = 24900;  // a little either side of 25000..57740
constexpr int32_t kSpan = 57840 - kFirstSerial + 1;

// Each thread visits every serial of the range and every day (0..31) of every
// month of 1950..2069 once, from its own offset, with strides coprime to the
// lengths (7919 is prime, 37 and 1440 share no factor).
int32_t wrong_answers(int thread) {
  int32_t wrong = 0, offset = thread * 1237 % kSpan;
  for (int32_t i = 0; i < kSpan; ++i, offset = (offset + 7919) % kSpan) {
    int32_t d, m, y, rd, rm, ry;
    reference::date_of(kFirstSerial + offset, &rd, &rm, &ry);
    if (serial_to_date(kFirstSerial + offset, &d, &m, &y) != 0 || d != rd || m != rm || y != ry)
      ++wrong;
  }
  for (int32_t i = 0; i < 120 * 12; ++i) {
    const int32_t k = (i * 37 + thread * 101) % (120 * 12);
    const int32_t year = 1950 + k / 12, month = 1 + k % 12;
    for (int32_t day = 0; day <= 31; ++day)
      if (date_to_serial(day, month, year) != reference::serial_of(day, month, year)) ++wrong;
  }
  return wrong;
}

// In the last round one more thread keeps emptying the caches: readers
// must only recompute.
TEST(DateCacheConcurrency, ThreadsFillingEmptyCachesAgree) {
  for (int round = 0; round < 3; ++round) {
    forget_cached_dates();
    std::atomic<bool> done{false};
    std::atomic<int32_t> wrong{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
      threads.emplace_back([t, &wrong] { wrong += wrong_answers(t); });
    }
    std::thread forgetter([&done, round] {
      while (round == 2 && !done.load()) {
        forget_cached_dates();
        std::this_thread::yield();
      }
    });
    for (auto& th : threads) th.join();
    done = true;
    forgetter.join();
    EXPECT_EQ(wrong.load(), 0) << "round " << round;
  }
}

}  // namespace
}  // namespace kbond::dates
