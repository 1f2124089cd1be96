// The library's critical sections and the reader/writer lock over the
// custom-type table.
//
// The lock is a pair of counts kept under critical section 2. Readers take a
// place in the reader count and leave the section before they compute; the
// writer keeps the section for its whole update, so new readers and a second
// writer queue on the mutex. Neither side waits on a condition: both poll
// with a growing sleep and give up after 800 tries (about 33 seconds).
#include "engine/type_lock.h"

#include <atomic>
#include <chrono>
#include <thread>

#include "engine/custom_types.h"

namespace kbond::engine {
namespace {

constexpr int kSectionCount = 4;
constexpr int kMaxTries = 800;

std::mutex g_sections[kSectionCount];
std::atomic<bool> g_initialised[kSectionCount];

// Guarded by section kCustomTypeSection.
int32_t g_readers = 0;
int32_t g_writers = 0;

void init_section(int index) noexcept {
  if (!g_initialised[index].load(std::memory_order_acquire))
    g_initialised[index].store(true, std::memory_order_release);
}

// After try n the thread sleeps (n + 10) / 10 ms: 1 ms for the first nine
// tries, then one more millisecond every ten tries.
void back_off(int tries) noexcept {
  std::this_thread::sleep_for(std::chrono::milliseconds((tries + 10) / 10));
}

}  // namespace

void init_critical_sections() noexcept {
  init_section(kFrnRegistrySection);
  init_section(kCustomTypeSection);
}

std::mutex* critical_section(int index) noexcept {
  if (index < 0 || index >= kSectionCount) return nullptr;
  return g_initialised[index].load(std::memory_order_acquire) ? &g_sections[index] : nullptr;
}

int reader_lock(const int32_t* type) noexcept {
  if (!type || *type < kFirstCustomCode) return 0;
  std::mutex* section = critical_section(kCustomTypeSection);
  if (!section) return 0;

  section->lock();
  int tries = 0;
  while (g_writers != 0) {
    // A writer is waiting for the readers inside to finish; joining them
    // does not delay it any further.
    if (g_readers != 0) break;
    section->unlock();
    if (++tries > kMaxTries) return -1;
    back_off(tries);
    section->lock();
  }
  ++g_readers;
  section->unlock();
  return 1;
}

void reader_unlock() noexcept {
  std::mutex* section = critical_section(kCustomTypeSection);
  if (!section) return;
  const std::lock_guard<std::mutex> hold(*section);
  --g_readers;
}

int writer_lock() noexcept {
  std::mutex* section = critical_section(kCustomTypeSection);
  if (!section) return 0;

  section->lock();
  ++g_writers;
  int tries = 0;
  while (g_readers != 0) {
    section->unlock();
    // On time-out the writer's count stays raised: later readers still join
    // readers already inside, but one that finds none waits and times out.
    if (++tries > kMaxTries) return -1;
    back_off(tries);
    section->lock();
  }
  return 1;
}

void writer_unlock() noexcept {
  std::mutex* section = critical_section(kCustomTypeSection);
  if (!section) return;
  --g_writers;
  section->unlock();
}

}  // namespace kbond::engine
