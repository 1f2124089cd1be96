// The library's critical sections and the custom-type reader/writer lock.
//
// KVLbond_initMT initialises critical sections 3 (FRN type registry) and 2
// (custom-type table). Before that call every lock operation succeeds at once
// without locking (single-threaded use). Readers hold only a place in the
// reader count while they compute; a writer holds section 2 for its whole
// update. Waiting is by back-off: after try n the thread sleeps (n + 10) / 10
// milliseconds, giving up after 800 tries.
#pragma once
#include <cstdint>
#include <mutex>

namespace kbond::engine {

inline constexpr int kCustomTypeSection = 2;
inline constexpr int kFrnRegistrySection = 3;

// Initialises sections 3 then 2, each only once.
void init_critical_sections() noexcept;

// The section's mutex, or null when it has not been initialised.
std::mutex* critical_section(int index) noexcept;

// 1 when a reader place is held, 0 when nothing was needed (NULL type, code
// below 1000, lock not initialised), -1 when the lock could not be had.
int reader_lock(const int32_t* type) noexcept;
void reader_unlock() noexcept;  // only after reader_lock returned 1

// 1 when held (section 2 entered), 0 when not initialised, -1 on time-out.
int writer_lock() noexcept;
void writer_unlock() noexcept;  // only after writer_lock returned 1

// Scoped reader lock for the call frame of every analytic export.
class TypeReadGuard {
 public:
  explicit TypeReadGuard(const int32_t* type) noexcept : state_(reader_lock(type)) {}
  ~TypeReadGuard() { release(); }
  TypeReadGuard(const TypeReadGuard&) = delete;
  TypeReadGuard& operator=(const TypeReadGuard&) = delete;
  bool failed() const noexcept { return state_ < 0; }
  // Releases early (some functions drop the lock right after set-up).
  void release() noexcept {
    if (state_ == 1) reader_unlock();
    state_ = 0;
  }

 private:
  int state_;
};

}  // namespace kbond::engine
