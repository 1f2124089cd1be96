#include "cli_progress.h"

#include <cstdio>

#ifdef _WIN32
#include <io.h>
#define KBOND_ISATTY(fd) _isatty(fd)
#else
#include <unistd.h>
#define KBOND_ISATTY(fd) isatty(fd)
#endif

namespace kbond::cli {
namespace {

constexpr double kQuietSeconds = 1.0;   // no bar for work shorter than this
constexpr double kRedrawSeconds = 0.2;
constexpr int kBarWidth = 30;

}  // namespace

Progress::Progress(int64_t total_bytes)
    : enabled_(KBOND_ISATTY(2) != 0), total_bytes_(total_bytes), start_(Clock::now()),
      last_(start_) {}

void Progress::update(int64_t rows, int64_t bytes) {
  rows_ = rows;
  if (!enabled_) return;
  const Clock::time_point now = Clock::now();
  const double elapsed = std::chrono::duration<double>(now - start_).count();
  if (elapsed < kQuietSeconds || std::chrono::duration<double>(now - last_).count() < kRedrawSeconds)
    return;
  last_ = now;
  drawn_ = true;
  const double rate = rows / elapsed;
  if (total_bytes_ > 0) {
    const double done = bytes < total_bytes_ ? static_cast<double>(bytes) / total_bytes_ : 1.0;
    const int filled = static_cast<int>(done * kBarWidth);
    const double left = done > 0 ? elapsed * (1.0 - done) / done : 0.0;
    std::fprintf(stderr, "\r[%.*s%*s] %3.0f%%  %.0f rows/s  ETA %.0f s ", filled,
                 "##############################", kBarWidth - filled, "", done * 100.0, rate,
                 left);
  } else {
    std::fprintf(stderr, "\r%lld rows  %.0f rows/s ", static_cast<long long>(rows), rate);
  }
  std::fflush(stderr);
}

void Progress::finish() {
  if (!drawn_) return;
  const double elapsed = std::chrono::duration<double>(Clock::now() - start_).count();
  std::fprintf(stderr, "\r%lld rows in %.1f s (%.0f rows/s)%*s\n", static_cast<long long>(rows_),
               elapsed, elapsed > 0 ? rows_ / elapsed : 0.0, 20, "");
}

}  // namespace kbond::cli
