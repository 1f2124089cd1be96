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
constexpr int32_t kLastSerial = 57840;

// Visits every serial of the range once, starting at a thread-specific offset
// and stepping by a stride coprime to the range length.
int32_t check_serials(int thread) {
  const int32_t span = kLastSerial - kFirstSerial + 1;
  const int32_t stride = 7919;  // prime, does not divide the span
  int32_t wrong = 0;
  int32_t offset = thread * 1237 % span;
  for (int32_t i = 0; i < span; ++i, offset = (offset + stride) % span) {
    const int32_t s = kFirstSerial + offset;
    int32_t d, m, y, rd, rm, ry;
    reference::date_of(s, &rd, &rm, &ry);
    if (serial_to_date(s, &d, &m, &y) != 0 || d != rd || m != rm || y != ry) ++wrong;
  }
  return wrong;
}

int32_t check_months(int thread) {
  int32_t wrong = 0;
  for (int32_t i = 0; i < 120 * 12; ++i) {
    const int32_t k = (i * 37 + thread * 101) % (120 * 12);  // 37 is coprime to 1440
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
      threads.emplace_back([t, &wrong] {
        wrong += check_serials(t);
        wrong += check_months(t);
      });
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
