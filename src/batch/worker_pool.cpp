#include "batch/worker_pool.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace kbond::batch {
namespace {

// Rows per block taken from the counter: large enough that the counter is
// touched rarely, small enough to even out slow rows.
constexpr int64_t kBlockRows = 256;

struct SharedWork {
  int64_t rows;
  int32_t (*row)(const void*, int64_t);
  const void* context;
  std::atomic<int64_t> next{0};
  std::atomic<int64_t> failures{0};

  void run() noexcept {
    int64_t failed = 0;
    for (;;) {
      const int64_t begin = next.fetch_add(kBlockRows, std::memory_order_relaxed);
      if (begin >= rows) break;
      const int64_t end = std::min(rows, begin + kBlockRows);
      for (int64_t i = begin; i < end; ++i) failed += row(context, i) != 0 ? 1 : 0;
    }
    failures.fetch_add(failed, std::memory_order_relaxed);
  }
};

}  // namespace

int32_t threads_for(int64_t rows, int32_t requested) noexcept {
  int64_t threads = requested;
  if (threads == 0) threads = std::max(1u, std::thread::hardware_concurrency());
  threads = std::min<int64_t>(threads, kMaxThreads);
  threads = std::min<int64_t>(threads, (rows + kMinRowsPerThread - 1) / kMinRowsPerThread);
  return static_cast<int32_t>(std::max<int64_t>(threads, 1));
}

int64_t for_each_row(int64_t rows, int32_t threads, int32_t (*row)(const void*, int64_t),
                     const void* context) noexcept {
  SharedWork work{rows, row, context};
  std::vector<std::thread> helpers;
  try {
    helpers.reserve(static_cast<size_t>(threads - 1));
    for (int32_t t = 1; t < threads; ++t) helpers.emplace_back([&work] { work.run(); });
  } catch (...) {
    // Out of threads or memory: the threads already running and this one
    // share the rows.
  }
  work.run();
  for (std::thread& t : helpers) t.join();
  return work.failures.load(std::memory_order_relaxed);
}

}  // namespace kbond::batch
