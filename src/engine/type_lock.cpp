// The library's critical sections and the reader/writer lock over the
// custom-type table.
//
// The lock's state is kept under critical section 2 and waited on with a
// condition variable. Readers take a place in the reader count and leave the
// section before they compute. A writer first announces itself; from then on
// no new reader enters, the readers inside finish, and the writer updates
// the table alone. When a writer finishes, the readers that were waiting
// for it go in before the next writer, so neither side starves the other.
// A thread that already holds a reader place (an export that calls another
// export of its family) re-enters without waiting: it must not queue behind
// a writer that is waiting for it. Whoever gives up after the wait limit
// leaves the state exactly as it found it.
#include "engine/type_lock.h"

#include <atomic>
#include <chrono>
#include <condition_variable>

#include "engine/custom_types.h"

namespace kbond::engine {
namespace {

constexpr int kSectionCount = 4;

// The wait the library has always allowed: 800 polls with a growing sleep of
// (n + 10) / 10 ms after poll n, about 33 seconds in all.
constexpr std::chrono::milliseconds wait_limit() {
  int total = 0;
  for (int tries = 1; tries <= 800; ++tries) total += (tries + 10) / 10;
  return std::chrono::milliseconds(total);
}

std::mutex g_sections[kSectionCount];
std::atomic<bool> g_initialised[kSectionCount];

// Guarded by section kCustomTypeSection.
struct LockState {
  int32_t readers = 0;          // reader places held
  int32_t readers_waiting = 0;  // readers queued behind a writer
  int32_t writers_waiting = 0;  // writers announced but not yet in
  int32_t admitted = 0;         // waiting readers let in ahead of the next writer
  bool writing = false;
};
LockState g_state;
std::condition_variable g_changed;

// Reader places this thread holds (nested exports re-enter).
thread_local int32_t t_reader_depth = 0;

void init_section(int index) noexcept {
  if (!g_initialised[index].load(std::memory_order_acquire))
    g_initialised[index].store(true, std::memory_order_release);
}

bool reader_may_enter() noexcept {
  return !g_state.writing && (g_state.writers_waiting == 0 || g_state.admitted > 0);
}

bool writer_may_enter() noexcept {
  return !g_state.writing && g_state.readers == 0 && g_state.admitted == 0;
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
  if (t_reader_depth > 0) {
    ++t_reader_depth;
    return 1;
  }

  std::unique_lock<std::mutex> hold(*section);
  if (!reader_may_enter()) {
    ++g_state.readers_waiting;
    const bool entered = g_changed.wait_for(hold, wait_limit(), reader_may_enter);
    --g_state.readers_waiting;
    if (!entered) {
      // Places promised to waiting readers shrink with them.
      if (g_state.admitted > g_state.readers_waiting) {
        g_state.admitted = g_state.readers_waiting;
        g_changed.notify_all();
      }
      return -1;
    }
    // Only the readers that waited use up the places kept for them, so the
    // next writer waits for them and for no one else.
    if (g_state.admitted > 0) --g_state.admitted;
  }
  ++g_state.readers;
  t_reader_depth = 1;
  return 1;
}

void reader_unlock() noexcept {
  std::mutex* section = critical_section(kCustomTypeSection);
  if (!section) return;
  if (--t_reader_depth > 0) return;
  const std::lock_guard<std::mutex> hold(*section);
  if (--g_state.readers == 0) g_changed.notify_all();
}

int writer_lock() noexcept {
  std::mutex* section = critical_section(kCustomTypeSection);
  if (!section) return 0;

  std::unique_lock<std::mutex> hold(*section);
  ++g_state.writers_waiting;
  const bool entered = g_changed.wait_for(hold, wait_limit(), writer_may_enter);
  --g_state.writers_waiting;
  if (!entered) {
    // Readers held back for this writer may go in again.
    g_changed.notify_all();
    return -1;
  }
  g_state.writing = true;
  return 1;
}

void writer_unlock() noexcept {
  std::mutex* section = critical_section(kCustomTypeSection);
  if (!section) return;
  const std::lock_guard<std::mutex> hold(*section);
  g_state.writing = false;
  // The readers that queued behind this writer go in before the next one.
  g_state.admitted = g_state.readers_waiting;
  g_changed.notify_all();
}

}  // namespace kbond::engine
