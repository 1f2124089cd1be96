// Rows shared out among threads: the calling thread and up to `threads - 1`
// others take blocks of rows from a common counter until none is left, so a
// thread that meets slow rows (long schedules, solver fall-backs) does not
// hold the others up.
#pragma once
#include <cstdint>

namespace kbond::batch {

inline constexpr int32_t kMaxThreads = 256;
inline constexpr int64_t kMinRowsPerThread = 32;

// The threads a call uses: 0 asks for every hardware thread; never more
// than kMaxThreads nor one per kMinRowsPerThread rows; at least 1.
int32_t threads_for(int64_t rows, int32_t requested) noexcept;

// Calls row(i) once for every i in [0, rows) on `threads` threads (as
// threads_for gives). Threads that cannot be started leave their share to
// the others. Returns the sum of row()'s results.
int64_t for_each_row(int64_t rows, int32_t threads, int32_t (*row)(const void*, int64_t),
                     const void* context) noexcept;

}  // namespace kbond::batch
